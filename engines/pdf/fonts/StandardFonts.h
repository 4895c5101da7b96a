// The fourteen standard fonts, which a file need not describe (ISO 32000-2, 9.6.2.2), and the other names that files
// use for them.
#pragma once

#include "engines/pdf/fonts/Encodings.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillow::pdf {

/// The order matters: within a family + 1 is bold, + 2 is italic.
enum class StandardFont : std::uint8_t {
    Courier,
    CourierBold,
    CourierOblique,
    CourierBoldOblique,
    Helvetica,
    HelveticaBold,
    HelveticaOblique,
    HelveticaBoldOblique,
    TimesRoman,
    TimesBold,
    TimesItalic,
    TimesBoldItalic,
    Symbol,
    ZapfDingbats,
};
inline constexpr std::size_t kStandardFontCount = 14;

/// By their names and the usual other ones, without a subset's prefix: "Arial,Bold", "TimesNewRomanPS-BoldItalicMT",
/// "CourierNew".
[[nodiscard]] std::optional<StandardFont> standardFontOfName(std::string_view name);

/// The font that is most like one that a font descriptor describes.
[[nodiscard]] constexpr StandardFont standardFontLike(bool isFixedPitch, bool isSerif, bool isBold, bool isItalic) {
    const int family = isFixedPitch ? 0 : isSerif ? 8 : 4;
    return static_cast<StandardFont>(family + (isBold ? 1 : 0) + (isItalic ? 2 : 0));
}

/// The encoding that is built into the font: Standard, Symbol or ZapfDingbats.
[[nodiscard]] Encoding builtInEncodingOf(StandardFont font);

/// For a font size of 1000; nothing if the font has no glyph of the name.
[[nodiscard]] std::optional<std::uint16_t> widthOfGlyph(StandardFont font, std::string_view glyphName);

/// For a font size of 1000. `descent` is negative.
struct StandardFontMetrics {
    std::int16_t ascent;
    std::int16_t descent;
};
[[nodiscard]] StandardFontMetrics metricsOf(StandardFont font);

} // namespace quillow::pdf
