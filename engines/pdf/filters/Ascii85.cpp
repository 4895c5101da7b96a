#include "engines/pdf/filters/Ascii85.h"

#include "engines/pdf/filters/WhiteSpace.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace quillow::pdf {

namespace {

using text::ByteBuffer;

constexpr std::size_t kGroup = 5;
constexpr std::size_t kGroupBytes = 4;
constexpr char kFirstDigit = '!';
constexpr char kLastDigit = 'u';

/// The digits of a group, as far as they have come.
class Group {
public:
    void add(char digit) {
        value_ = value_ * 85 + static_cast<std::uint64_t>(digit - kFirstDigit);
        ++count_;
    }
    [[nodiscard]] std::size_t count() const { return count_; }

    /// Appends the bytes of the group. A short one is filled with the highest digit and gives a byte less than it has
    /// digits. False if no bytes have these digits.
    bool finish(ByteBuffer& out) {
        const std::size_t bytes = count_ - 1;
        while (count_ < kGroup)
            add(kLastDigit);
        const std::uint64_t value = value_;
        value_ = 0;
        count_ = 0;
        if (bytes == 0 || value > 0xFFFFFFFF) return false;
        const std::array<char, kGroupBytes> all{static_cast<char>(value >> 24), static_cast<char>(value >> 16),
                                                static_cast<char>(value >> 8), static_cast<char>(value)};
        out.append({all.data(), bytes});
        return true;
    }

private:
    std::uint64_t value_ = 0;
    std::size_t count_ = 0;
};

/// The text without white space before it and without `<~`.
std::string_view withoutStart(std::string_view encoded) {
    while (!encoded.empty() && isFilterWhiteSpace(encoded.front()))
        encoded.remove_prefix(1);
    if (encoded.starts_with("<~")) encoded.remove_prefix(2);
    return encoded;
}

Decoding decodeGroups(std::string_view digits, std::size_t limit, ByteBuffer& out) {
    const std::size_t before = out.size();
    Group group;
    for (const char c : digits) {
        if (c >= kFirstDigit && c <= kLastDigit) {
            group.add(c);
            if (group.count() == kGroup && !group.finish(out)) return Decoding::cut;
        } else if (c == 'z' && group.count() == 0) {
            out.append(std::string_view("\0\0\0\0", kGroupBytes));
        } else if (c == '~') {
            break;
        } else if (!isFilterWhiteSpace(c)) {
            return Decoding::cut;
        }
        if (out.size() - before > limit) return Decoding::tooLong;
    }
    return group.count() == 0 || group.finish(out) ? Decoding::complete : Decoding::cut;
}

} // namespace

Decoding decodeAscii85(std::string_view encoded, std::size_t limit, ByteBuffer& out) {
    const std::size_t before = out.size();
    const Decoding decoding = decodeGroups(withoutStart(encoded), limit, out);
    if (out.size() - before <= limit) return decoding;
    out.resize(before + limit);
    return Decoding::tooLong;
}

} // namespace quillow::pdf
