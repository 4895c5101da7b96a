// Key-value observing without an event loop. Every write of an observed property notifies its observers, even if
// the value does not change. The observers have run when the write returns.
#pragma once

#include "base/KeyValueLookup.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace quillow {

class KVObject;

struct Change {
    Boxed oldValue;
    Boxed newValue;
};

using Observer = std::function<void(const QString& keyPath, const KVObject& object, const Change& change)>;

/// An observation ends with end() or with its destruction. It may outlive the observed object. It may end during a
/// notification: the observer of an ended observation is never called again.
class [[nodiscard]] Observation { // selector: none
public:
    Observation() = default;
    Observation(Observation&& other) noexcept = default;
    Observation& operator=(Observation&& other) noexcept;
    ~Observation() { end(); }
    void end();
    [[nodiscard]] bool isActive() const { return entry_ != nullptr; }

private:
    friend class KVObject;
    struct Entry {
        QString key;
        Observer call;
        bool active = true;
    };
    using Entries = std::vector<std::shared_ptr<Entry>>;
    Observation(std::shared_ptr<Entry> entry, const std::shared_ptr<Entries>& entries)
        : entry_(std::move(entry))
        , entries_(entries) {}

    std::shared_ptr<Entry> entry_;
    std::weak_ptr<Entries> entries_;
};

class KVObject : public KeyValueLookup {
public:
    // The key must be that of a declared property. Any other is a programming error: asserted, and without effect in
    // builds without asserts.
    void setValue(const Boxed& value, const QString& forKey);
    [[nodiscard]] Boxed valueForKey(const QString& key) const override;

    /// Observers are called in the order in which they were added. One that is added during a notification is
    /// first called at the next notification.
    [[nodiscard]] Observation addObserver(const QString& forKeyPath, Observer observer); // selector: none

private:
    friend class KVSlot;
    void notify(const QString& key, const Change& change) const;
    [[nodiscard]] class KVSlot* slotForKey(const QString& key) const;

    std::vector<class KVSlot*> slots_;
    std::shared_ptr<Observation::Entries> observers_ = std::make_shared<Observation::Entries>();
};

/// The interface of one declared property to its KVObject.
class KVSlot { // selector: none
public:
    KVSlot(const KVSlot&) = delete;
    KVSlot& operator=(const KVSlot&) = delete;
    virtual ~KVSlot() = default;

protected:
    KVSlot(KVObject& owner, QString key)
        : owner_(owner)
        , key_(std::move(key)) {
        owner.slots_.push_back(this);
    }
    void notify(const Change& change) const { owner_.notify(key_, change); }

private:
    friend class KVObject;
    [[nodiscard]] virtual Boxed boxed() const = 0;
    virtual void setBoxed(const Boxed& value) = 0;

    KVObject& owner_;
    QString key_;
};

/// The field of an observed property. T is Boxed, std::optional<QString>, std::optional<QByteArray>, QStringList or
/// Boxed::Array; for the last two, nil is the empty list.
template <class T>
class KVProperty final : public KVSlot { // selector: none
public:
    KVProperty(KVObject& owner, const char16_t* key, T initial = {})
        : KVSlot(owner, QString::fromUtf16(key))
        , value_(std::move(initial)) {}

    [[nodiscard]] const T& get() const { return value_; }
    void set(T value) {
        const Boxed oldValue = boxed();
        value_ = std::move(value);
        notify({oldValue, boxed()});
    }

private:
    [[nodiscard]] Boxed boxed() const override;
    void setBoxed(const Boxed& value) override;

    T value_;
};

extern template class KVProperty<Boxed>;
extern template class KVProperty<std::optional<QString>>;
extern template class KVProperty<std::optional<QByteArray>>;
extern template class KVProperty<QStringList>;
extern template class KVProperty<Boxed::Array>;

} // namespace quillow
