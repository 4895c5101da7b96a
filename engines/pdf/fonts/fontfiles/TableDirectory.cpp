#include "engines/pdf/fonts/fontfiles/TableDirectory.h"

#include "text/Bytes.h"

#include <algorithm>
#include <array>

namespace quillow::pdf {
namespace {

using text::ByteCursor;

constexpr std::size_t kHeader = 12;
constexpr std::size_t kEntry = 16;
constexpr std::size_t kTag = 4;
/// Fonts have some thirty.
constexpr std::size_t kMostTables = 256;

constexpr std::array<std::string_view, 4> kVersions{std::string_view("\0\1\0\0", kTag),
                                                    std::string_view("\0\2\0\0", kTag), "true", "OTTO"};
constexpr std::string_view kCollection = "ttcf";
/// Tables that embedded fonts begin with: directories are sorted by tag.
constexpr std::array<std::string_view, 10> kFirstTables{"BASE", "CFF ", "DSIG", "EBDT", "FFTM",
                                                        "GDEF", "GSUB", "OS/2", "cmap", "cvt "};

bool hasVersion(std::string_view bytes) {
    return std::find(kVersions.begin(), kVersions.end(), bytes.substr(0, kTag)) != kVersions.end();
}

/// Some producers leave the version empty or damage it.
bool hasFirstTable(std::string_view bytes) {
    if (bytes.size() < kHeader + kEntry) return false;
    const std::string_view tag = bytes.substr(kHeader, kTag);
    return std::find(kFirstTables.begin(), kFirstTables.end(), tag) != kFirstTables.end();
}

std::size_t offsetOfFont(std::string_view bytes) {
    if (!bytes.starts_with(kCollection)) return 0;
    return ByteCursor(bytes).at(kHeader).u32();
}

} // namespace

bool TableDirectory::isAt(std::string_view bytes) {
    return hasVersion(bytes) || bytes.starts_with(kCollection) || hasFirstTable(bytes);
}

TableDirectory::TableDirectory(std::string_view bytes)
    : bytes_(bytes) {
    ByteCursor cursor = ByteCursor(bytes).at(offsetOfFont(bytes));
    cursor.skip(kTag);
    const std::size_t count = cursor.u16();
    cursor.skip(kHeader - kTag - sizeof(std::uint16_t));
    entries_ = cursor.take(std::min({count, cursor.remaining() / kEntry, kMostTables}) * kEntry);
}

std::string_view TableDirectory::table(std::string_view tag) const {
    for (std::size_t at = 0; at < entries_.size(); at += kEntry) {
        const std::string_view entry = entries_.substr(at, kEntry);
        if (!entry.starts_with(tag)) continue;
        ByteCursor numbers = ByteCursor(entry).at(kTag + sizeof(std::uint32_t));
        const std::size_t offset = numbers.u32();
        const std::size_t length = numbers.u32();
        if (offset < bytes_.size()) return bytes_.substr(offset, length);
    }
    return {};
}

} // namespace quillow::pdf
