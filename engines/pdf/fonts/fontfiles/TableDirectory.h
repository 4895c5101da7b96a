// The directory of tables with which TrueType and OpenType fonts begin (OpenType 1.9, "Organization of an OpenType
// Font").
#pragma once

#include <cstdint>
#include <string_view>

namespace quillow::pdf {

class TableDirectory {
public:
    /// Whether the bytes begin with such a directory, or are a collection of fonts.
    [[nodiscard]] static bool isAt(std::string_view bytes);

    /// Of a collection, the first font.
    explicit TableDirectory(std::string_view bytes);

    /// The table with a tag of four letters, as far as the file has its bytes. Empty if there is none.
    [[nodiscard]] std::string_view table(std::string_view tag) const;

private:
    std::string_view bytes_;
    std::string_view entries_;
};

} // namespace quillow::pdf
