// The attribute names that tree construction, style and rendering ask for, as small numbers.
#pragma once

#include "engines/html/KeyTable.h"

#include <cstdint>
#include <string_view>

namespace quillow::html {

/// Names that are C++ keywords end in an underscore.
enum class AttributeName : std::uint8_t {
    unknown,
    checked,
    class_,
    color,
    controls,
    disabled,
    display,
    encoding,
    face,
    hidden,
    href,
    id,
    media,
    open,
    popover,
    reversed,
    selected,
    size,
    start,
    style,
    type,
    value,
    count,
};

/// The number of a name; AttributeName::unknown for any other.
extern const KeyTable<7, static_cast<std::size_t>(AttributeName::count)> kAttributeTable;
[[nodiscard]] inline AttributeName attributeNameForKey(const NameKey& key) {
    return static_cast<AttributeName>(kAttributeTable.find(key));
}

/// One attribute of an element. Its strings live as long as the tree.
class Attribute {
public:
    /// Longer names than this are cut off.
    static constexpr std::size_t kMaxNameLength = 0xFFFF;

    Attribute() = default;
    Attribute(AttributeName known, std::string_view name, std::string_view value)
        : name_(name.data())
        , value_(value.data())
        , valueSize_(static_cast<std::uint32_t>(value.size()))
        , nameSize_(static_cast<std::uint16_t>(name.size() < kMaxNameLength ? name.size() : kMaxNameLength))
        , known_(known) {}

    [[nodiscard]] AttributeName known() const { return known_; }
    [[nodiscard]] std::string_view name() const { return {name_, nameSize_}; } ///< ASCII lower case
    [[nodiscard]] std::string_view value() const { return {value_, valueSize_}; }
    [[nodiscard]] bool hasNameOf(const Attribute& other) const {
        return known_ == other.known_ && (known_ != AttributeName::unknown || name() == other.name());
    }

private:
    const char* name_ = nullptr;
    const char* value_ = nullptr;
    std::uint32_t valueSize_ = 0;
    std::uint16_t nameSize_ = 0;
    AttributeName known_ = AttributeName::unknown;
};

} // namespace quillow::html
