#include "engines/pdf/syntax/ObjectStream.h"

#include "engines/pdf/syntax/Lexer.h"
#include "text/Ascii.h"

#include <algorithm>
#include <limits>

namespace quillow::pdf {
namespace {

/// The next integer of the index; std::nullopt where it ends.
std::optional<std::uint32_t> readInteger(const char*& p, const char* end) {
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
    p = skipWhiteSpace(p, end);
    if (p == end || !text::isDigit(*p)) return std::nullopt;
    std::uint64_t value = 0;
    for (; p < end && text::isDigit(*p); ++p)
        value = std::min(kMost, value * 10 + static_cast<std::uint64_t>(*p - '0'));
    return static_cast<std::uint32_t>(value);
}

} // namespace

ObjectStream::ObjectStream(std::string_view bytes, std::int64_t count, std::int64_t first)
    : bytes_(bytes) {
    if (first < 0 || static_cast<std::uint64_t>(first) > bytes.size()) return;
    const char* p = bytes.data();
    const char* const end = p + first;
    for (; count > 0; --count) {
        const auto number = readInteger(p, end);
        const auto offset = readInteger(p, end);
        if (!number || !offset) return;
        const std::uint64_t begin = static_cast<std::uint64_t>(first) + *offset;
        if (begin < bytes.size()) items_.push_back({*number, static_cast<std::uint32_t>(begin)});
    }
}

std::optional<std::string_view> ObjectStream::find(std::uint32_t number, std::size_t index) {
    if (index < items_.size() && items_[index].number == number) return bytes_.substr(items_[index].begin);
    const auto isLess = [](const Item& a, const Item& b) { return a.number < b.number; };
    if (byNumber_.empty()) {
        byNumber_ = items_;
        std::stable_sort(byNumber_.begin(), byNumber_.end(), isLess);
    }
    const auto item = std::lower_bound(byNumber_.begin(), byNumber_.end(), Item{number, 0}, isLess);
    if (item == byNumber_.end() || item->number != number) return std::nullopt;
    return bytes_.substr(item->begin);
}

} // namespace quillow::pdf
