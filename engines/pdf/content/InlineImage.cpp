#include "engines/pdf/content/InlineImage.h"

#include "engines/pdf/syntax/Lexer.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace quillow::pdf {

namespace {

/// Bytes behind an EI that must look like content.
constexpr std::size_t kProbe = 24;
/// Sides of an image whose length is computed. Larger ones are searched for their end.
constexpr double kLargestSide = 1 << 15;

/// A value of the header by its abbreviated or its full key; null if it is not there.
const Operand* valueOf(const Operands& header, std::string_view shortKey, std::string_view longKey) {
    for (std::size_t i = 0; i + 1 < header.size(); i += 2)
        if (header[i].isName() && (header[i].view() == shortKey || header[i].view() == longKey)) return &header[i + 1];
    return nullptr;
}

std::optional<std::size_t> numberOf(const Operand* operand) {
    if (operand == nullptr || !operand->isNumber() || !(operand->number >= 0) || operand->number > kLargestSide)
        return std::nullopt;
    return static_cast<std::size_t>(operand->number);
}

/// Numbers a pixel; 0 if the colour space does not say.
std::size_t componentsOf(const Operand* space) {
    if (space == nullptr) return 1; // an image mask
    if (!space->isName()) return 0;
    const std::string_view name = space->view();
    if (name == "G" || name == "DeviceGray" || name == "CalGray") return 1;
    if (name == "RGB" || name == "DeviceRGB" || name == "CalRGB") return 3;
    if (name == "CMYK" || name == "DeviceCMYK") return 4;
    return 0;
}

/// The bytes of an image without a filter.
std::optional<std::size_t> plainLength(const Operands& header) {
    if (valueOf(header, "F", "Filter") != nullptr) return std::nullopt;
    const auto width = numberOf(valueOf(header, "W", "Width"));
    const auto height = numberOf(valueOf(header, "H", "Height"));
    const Operand* const bits = valueOf(header, "BPC", "BitsPerComponent");
    const auto bitCount = bits == nullptr ? std::size_t{1} : numberOf(bits);
    const std::size_t components = componentsOf(valueOf(header, "CS", "ColorSpace"));
    if (!width || !height || !bitCount || *bitCount > 16 || components == 0) return std::nullopt;
    return (*width * components * *bitCount + 7) / 8 * *height;
}

bool isEndAt(const char* p, const char* end) {
    return end - p >= 2 && p[0] == 'E' && p[1] == 'I' && (end - p == 2 || !isRegular(p[2]));
}

/// Behind the EI that follows data which ends at `p`, perhaps after white space; null if none is there.
const char* endAfter(const char* p, const char* end) {
    while (p < end && isWhiteSpace(*p))
        ++p;
    return isEndAt(p, end) ? p + 2 : nullptr;
}

bool looksLikeContent(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) {
        const auto value = static_cast<std::uint8_t>(byte);
        return (value >= ' ' && value < 0x7F) || value == '\n' || value == '\r' || value == '\t';
    });
}

/// The first EI between white space before something that looks like content; else the first one between white space.
const char* searchEnd(std::string_view data) {
    const char* const end = data.data() + data.size();
    const char* doubtful = end;
    for (const char* p = data.data(); p < end; ++p) {
        p = static_cast<const char*>(std::memchr(p, 'E', static_cast<std::size_t>(end - p)));
        if (p == nullptr) break;
        if (!isEndAt(p, end) || (p > data.data() && !isWhiteSpace(p[-1]))) continue;
        const std::string_view rest(p + 2, static_cast<std::size_t>(end - p - 2));
        if (looksLikeContent(rest.substr(0, kProbe))) return p + 2;
        if (doubtful == end) doubtful = p + 2;
    }
    return doubtful;
}

} // namespace

const char* skipInlineImage(const Operands& header, std::string_view rest) {
    if (!rest.empty() && isWhiteSpace(rest.front())) rest.remove_prefix(1); // the one byte between ID and the data
    const std::optional<std::size_t> length = plainLength(header);
    if (length && *length <= rest.size()) {
        const char* const behind = endAfter(rest.data() + *length, rest.data() + rest.size());
        if (behind != nullptr) return behind;
    }
    return searchEnd(rest);
}

} // namespace quillow::pdf
