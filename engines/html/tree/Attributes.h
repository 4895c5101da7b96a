// The attribute names that tree construction, style and rendering look up, as small numbers, and the form in which
// the tree stores attributes.
#pragma once

#include "engines/html/tree/KeyTable.h"

#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace quillow::html {

/// Names that are C++ keywords end in an underscore.
enum class AttributeName : std::uint8_t {
    unknown,
    align,
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
    nowrap,
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

/// Maps a name's key to its AttributeName; AttributeName::unknown for any other name.
extern const KeyTable<7, static_cast<std::size_t>(AttributeName::count)> kAttributeTable;
[[nodiscard]] inline AttributeName attributeNameForKey(const NameKey& key) {
    return static_cast<AttributeName>(kAttributeTable.find(key));
}

/// The lower-case name; empty for AttributeName::unknown.
[[nodiscard]] std::string_view attributeName(AttributeName known);

/// A set of attribute names, one bit each.
class AttributeNames {
public:
    constexpr AttributeNames() = default;
    constexpr AttributeNames(std::initializer_list<AttributeName> names) {
        for (const AttributeName name : names)
            add(name);
    }
    constexpr void add(AttributeName name) { bits_ |= std::uint32_t{1} << static_cast<unsigned>(name); }
    [[nodiscard]] constexpr std::uint32_t bits() const { return bits_; }

private:
    static_assert(static_cast<unsigned>(AttributeName::count) <= 32);
    std::uint32_t bits_ = 0;
};

/// One word about an attribute: its AttributeName, the size of its name (at most kMaxNameLength) and the size of
/// its value (kLongValue for every size that does not fit).
class AttributeHead {
public:
    static constexpr std::uint32_t kMaxNameLength = 0x7FF;
    static constexpr std::uint32_t kLongValue = 0xFFFF;

    AttributeHead() = default;
    explicit AttributeHead(std::uint32_t word)
        : word_(word) {}
    AttributeHead(AttributeName known, std::size_t nameSize, std::size_t valueSize)
        : word_(static_cast<std::uint32_t>(known) |
                static_cast<std::uint32_t>(nameSize < kMaxNameLength ? nameSize : kMaxNameLength) << kNameShift |
                static_cast<std::uint32_t>(valueSize < kLongValue ? valueSize : kLongValue) << kValueShift) {}

    [[nodiscard]] std::uint32_t word() const { return word_; }
    [[nodiscard]] AttributeName known() const { return static_cast<AttributeName>(word_ & kKnownMask); }
    [[nodiscard]] bool isKnown() const { return known() != AttributeName::unknown; }
    [[nodiscard]] std::size_t nameSize() const { return word_ >> kNameShift & kMaxNameLength; }
    [[nodiscard]] bool hasLongValue() const { return word_ >= kLongValue << kValueShift; }
    /// Valid only if hasLongValue() is false.
    [[nodiscard]] std::size_t valueSize() const { return word_ >> kValueShift; }

private:
    static constexpr std::uint32_t kKnownMask = 0x1F;
    static constexpr unsigned kNameShift = 5;
    static constexpr unsigned kValueShift = 16;
    static_assert(static_cast<std::uint32_t>(AttributeName::count) <= kKnownMask + 1);
    std::uint32_t word_ = 0;
};

/// One attribute of an element. Its strings live as long as the tree.
class Attribute {
public:
    Attribute() = default;
    /// Names longer than AttributeHead::kMaxNameLength are cut off.
    Attribute(AttributeName known, std::string_view name, std::string_view value)
        : name_(name.data())
        , value_(value.data())
        , valueSize_(static_cast<std::uint32_t>(value.size()))
        , head_(known, name.size(), value.size()) {}

    [[nodiscard]] AttributeHead head() const { return head_; }
    [[nodiscard]] AttributeName known() const { return head_.known(); }
    [[nodiscard]] std::string_view name() const { return {name_, head_.nameSize()}; } ///< ASCII lower case
    [[nodiscard]] std::string_view value() const { return {value_, valueSize_}; }
    [[nodiscard]] bool hasNameOf(const Attribute& other) const {
        return known() == other.known() && (head_.isKnown() || name() == other.name());
    }

private:
    const char* name_ = nullptr;
    const char* value_ = nullptr;
    std::uint32_t valueSize_ = 0;
    AttributeHead head_;
};

} // namespace quillow::html
