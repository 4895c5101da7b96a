// The operands of one operator of a content stream (ISO 32000-2, 7.8.2).
#pragma once

#include "text/ByteBuffer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// A value of 16 bytes. Its bytes are views of the content, not yet decoded, or of the operands' own decoded bytes.
struct Operand {
    enum class Kind : std::uint8_t {
        number,
        name,          ///< without its slash, #xx not yet replaced
        plainString,   ///< the string itself
        escapedString, ///< between the parentheses, with escapes or line ends
        array,         ///< `size` of the operands' items
        dictionary,    ///< between the double angle brackets
        other,         ///< true, false, null
    };

    Kind kind = Kind::other;
    std::uint32_t size = 0; ///< of the bytes or the array
    union {
        double number = 0;
        const char* bytes;
        std::size_t first; ///< of an array: index of its first item
    };

    [[nodiscard]] static Operand ofNumber(double value) {
        Operand operand;
        operand.kind = Kind::number;
        operand.number = value;
        return operand;
    }
    [[nodiscard]] static Operand ofBytes(Kind kind, std::string_view bytes) {
        Operand operand;
        operand.kind = kind;
        operand.size = static_cast<std::uint32_t>(bytes.size());
        operand.bytes = bytes.data();
        return operand;
    }
    [[nodiscard]] static Operand ofArray(std::size_t first, std::size_t size) {
        Operand operand;
        operand.kind = Kind::array;
        operand.size = static_cast<std::uint32_t>(size);
        operand.first = first;
        return operand;
    }

    [[nodiscard]] bool isNumber() const { return kind == Kind::number; }
    [[nodiscard]] bool isName() const { return kind == Kind::name; }
    [[nodiscard]] bool isString() const { return kind == Kind::plainString || kind == Kind::escapedString; }
    /// Not of a number or an array.
    [[nodiscard]] std::string_view view() const { return {bytes, size}; }
};

/// Operators take their operands from the end, so that what a damaged file has before them does no harm.
class Operands {
public:
    /// More than any operator takes; the colours of DeviceN have up to 32 components.
    static constexpr std::size_t kCapacity = 64;
    /// Items of the arrays of one operator. The longest TJ of real files has some thousand.
    static constexpr std::size_t kMaximumItems = std::size_t{1} << 20;

    void clear() {
        size_ = 0;
        itemCount_ = 0;
        decodedSize_ = 0;
        stringBytes_ = 0;
    }

    void push(const Operand& operand) {
        if (size_ == kCapacity) forgetOldest();
        stack_[size_++] = operand;
    }

    /// Room for items. An array's items are written before the array itself is pushed.
    struct ItemRoom {
        Operand* next;
        Operand* end;
    };
    /// Room behind the items so far.
    [[nodiscard]] ItemRoom itemRoom() { return {items_.data() + itemCount_, items_.data() + items_.size()}; }
    /// More room behind `end`, up to which items have been written. Those past kMaximumItems are left out: their room
    /// is always the same.
    [[nodiscard]] ItemRoom moreItemRoom(const Operand* end) {
        setItemsEnd(end);
        if (itemCount_ == items_.size()) items_.resize(std::min(kMaximumItems + 1, 2 * itemCount_ + kCapacity));
        return itemRoom();
    }
    /// The items that have been written end there.
    void setItemsEnd(const Operand* end) {
        itemCount_ = std::min(static_cast<std::size_t>(end - items_.data()), kMaximumItems);
    }
    [[nodiscard]] std::size_t itemCount() const { return itemCount_; }
    [[nodiscard]] std::span<const Operand> itemsOf(const Operand& array) const {
        return std::span(items_).subspan(array.first, array.size);
    }

    /// Room for the decoded bytes of a string: at most so many come until `clear`. They stay in their place until then.
    [[nodiscard]] char* roomForDecoded(std::size_t most) {
        if (decodedSize_ == 0) decoded_.reserve(most);
        return decoded_.data() + decodedSize_;
    }
    /// The end of what was written into that room.
    void setDecodedEnd(const char* end) { decodedSize_ = static_cast<std::size_t>(end - decoded_.data()); }

    /// The bytes of all strings as they are in the content, for the budget.
    [[nodiscard]] std::size_t stringBytes() const { return stringBytes_; }
    void addStringBytes(std::size_t count) { stringBytes_ += count; }

    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] const Operand& operator[](std::size_t index) const { return stack_[index]; }
    /// The operand so many places before the last one. Must be there.
    [[nodiscard]] const Operand& fromEnd(std::size_t index) const { return stack_[size_ - 1 - index]; }

    /// Takes the last operands if they are all numbers.
    template <std::size_t count>
    [[nodiscard]] bool take(std::array<double, count>& numbers) const {
        if (size_ < count) return false;
        for (std::size_t i = 0; i < count; ++i) {
            const Operand& operand = stack_[size_ - count + i];
            if (!operand.isNumber()) return false;
            numbers[i] = operand.number;
        }
        return true;
    }

private:
    void forgetOldest() {
        for (std::size_t i = 0; i < kCapacity / 2; ++i)
            stack_[i] = stack_[i + kCapacity / 2];
        size_ = kCapacity / 2;
    }

    std::array<Operand, kCapacity> stack_;
    std::size_t size_ = 0;
    std::vector<Operand> items_; ///< the memory of itemCount_ items
    std::size_t itemCount_ = 0;
    text::ByteBuffer decoded_; ///< the memory of decodedSize_ bytes
    std::size_t decodedSize_ = 0;
    std::size_t stringBytes_ = 0;
};

} // namespace quillow::pdf
