#include "base/KVObject.h"

#include <algorithm>
#include <cassert>

namespace quillow {

Observation& Observation::operator=(Observation&& other) noexcept {
    if (this != &other) {
        end();
        entry_ = std::move(other.entry_);
        entries_ = std::move(other.entries_);
    }
    return *this;
}

void Observation::end() {
    if (!entry_) return;
    entry_->active = false;
    if (const auto entries = entries_.lock()) std::erase(*entries, entry_);
    entry_.reset();
}

void KVObject::setValue(const Boxed& value, const QString& forKey) {
    KVSlot* const property = slotForKey(forKey);
    assert(property && "no property of this key");
    if (property) property->setBoxed(value);
}

Boxed KVObject::valueForKey(const QString& key) const {
    const KVSlot* const property = slotForKey(key);
    assert(property && "no property of this key");
    return property ? property->boxed() : Boxed();
}

Observation KVObject::addObserver(const QString& forKeyPath, Observer observer) {
    auto entry = std::make_shared<Observation::Entry>();
    entry->key = forKeyPath;
    entry->call = std::move(observer);
    observers_->push_back(entry);
    return Observation(entry, observers_);
}

void KVObject::notify(const QString& key, const Change& change) const {
    // A copy, because observers may add and end observations.
    const Observation::Entries running = *observers_;
    for (const auto& entry : running) {
        if (entry->active && entry->key == key) entry->call(key, *this, change);
    }
}

KVSlot* KVObject::slotForKey(const QString& key) const {
    const auto found =
        std::find_if(slots_.begin(), slots_.end(), [&](const KVSlot* slot) { return slot->key_ == key; });
    return found == slots_.end() ? nullptr : *found;
}

namespace {

Boxed box(const Boxed& value) {
    return value;
}
Boxed box(const std::optional<QString>& value) {
    return value;
}
Boxed box(const std::optional<QByteArray>& value) {
    return value;
}
Boxed box(const QStringList& value) {
    Boxed::Array array;
    for (const QString& item : value)
        array.append(item);
    return array;
}
Boxed box(const Boxed::Array& value) {
    return value;
}

void unbox(const Boxed& boxed, Boxed& value) {
    value = boxed;
}
void unbox(const Boxed& boxed, std::optional<QString>& value) {
    value = boxed.string();
}
void unbox(const Boxed& boxed, std::optional<QByteArray>& value) {
    value = boxed.data();
}
void unbox(const Boxed& boxed, QStringList& value) {
    for (const Boxed& item : boxed.array().value_or(Boxed::Array())) {
        if (const auto text = item.string()) value.append(*text);
    }
}
void unbox(const Boxed& boxed, Boxed::Array& value) {
    value = boxed.array().value_or(Boxed::Array());
}

} // namespace

template <class T>
Boxed KVProperty<T>::boxed() const {
    return box(value_);
}

template <class T>
void KVProperty<T>::setBoxed(const Boxed& value) {
    T unboxed;
    unbox(value, unboxed);
    set(std::move(unboxed));
}

template class KVProperty<Boxed>;
template class KVProperty<std::optional<QString>>;
template class KVProperty<std::optional<QByteArray>>;
template class KVProperty<QStringList>;
template class KVProperty<Boxed::Array>;

} // namespace quillow
