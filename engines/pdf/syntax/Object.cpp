#include "engines/pdf/syntax/Object.h"

#include <algorithm>
#include <limits>

namespace quillow::pdf {
namespace {

/// Keys differ in their length or their first byte as a rule, which is cheaper to see than to call a comparison.
bool isKey(std::string_view key, std::string_view wanted) {
    return key.size() == wanted.size() && (key.empty() || key.front() == wanted.front()) && key == wanted;
}

std::int64_t integerOf(double value) {
    constexpr auto kBound = 9223372036854775808.0; // 2^63
    if (value >= kBound) return std::numeric_limits<std::int64_t>::max();
    if (value < -kBound) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

} // namespace

Object Dictionary::find(std::string_view key) const {
    const std::span<const DictionaryEntry> all = entries();
    if (order_ == EntryOrder::sorted) {
        const auto at = std::lower_bound(all.begin(), all.end(), key,
                                         [](const auto& entry, auto wanted) { return entry.key < wanted; });
        return at != all.end() && at->key == key ? at->value : Object();
    }
    for (auto entry = all.rbegin(); entry != all.rend(); ++entry)
        if (isKey(entry->key, key)) return entry->value;
    return {};
}

Object Object::ofBoolean(bool value) {
    Object object;
    object.type_ = Type::boolean;
    object.integer_ = value ? 1 : 0;
    return object;
}

Object Object::ofInteger(std::int64_t value) {
    Object object;
    object.type_ = Type::integer;
    object.integer_ = value;
    return object;
}

Object Object::ofReal(double value) {
    Object object;
    object.type_ = Type::real;
    object.real_ = value;
    return object;
}

Object Object::ofName(std::string_view name) {
    Object object = ofString(name);
    object.type_ = Type::name;
    return object;
}

Object Object::ofString(std::string_view bytes) {
    Object object;
    object.type_ = Type::string;
    object.size_ = static_cast<std::uint32_t>(bytes.size());
    object.bytes_ = bytes.data();
    return object;
}

Object Object::ofArray(std::span<const Object> items) {
    Object object;
    object.type_ = Type::array;
    object.size_ = static_cast<std::uint32_t>(items.size());
    object.items_ = items.data();
    return object;
}

Object Object::ofDictionary(std::span<const DictionaryEntry> entries, EntryOrder order) {
    Object object;
    object.type_ = Type::dictionary;
    object.order_ = order;
    object.size_ = static_cast<std::uint32_t>(entries.size());
    object.entries_ = entries.data();
    return object;
}

Object Object::ofStream(const StreamContent& stream) {
    Object object;
    object.type_ = Type::stream;
    object.stream_ = &stream;
    return object;
}

Object Object::ofReference(Reference reference) {
    Object object;
    object.type_ = Type::reference;
    object.generation_ = reference.generation;
    object.size_ = reference.number;
    return object;
}

bool Object::booleanOr(bool fallback) const {
    return type_ == Type::boolean ? integer_ != 0 : fallback;
}

std::int64_t Object::integerOr(std::int64_t fallback) const {
    if (type_ == Type::integer) return integer_;
    return type_ == Type::real ? integerOf(real_) : fallback;
}

double Object::numberOr(double fallback) const {
    if (type_ == Type::integer) return static_cast<double>(integer_);
    return type_ == Type::real ? real_ : fallback;
}

std::string_view Object::name() const {
    return type_ == Type::name ? std::string_view(bytes_, size_) : std::string_view();
}

std::string_view Object::string() const {
    return type_ == Type::string ? std::string_view(bytes_, size_) : std::string_view();
}

std::span<const Object> Object::array() const {
    return type_ == Type::array ? std::span<const Object>(items_, size_) : std::span<const Object>();
}

Dictionary Object::dictionary() const {
    if (type_ == Type::stream) return stream_->dictionary;
    return type_ == Type::dictionary ? Dictionary({entries_, size_}, order_) : Dictionary();
}

const StreamContent* Object::stream() const {
    return type_ == Type::stream ? stream_ : nullptr;
}

Reference Object::reference() const {
    return type_ == Type::reference ? Reference{size_, generation_} : Reference{};
}

} // namespace quillow::pdf
