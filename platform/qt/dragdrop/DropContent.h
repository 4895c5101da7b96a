// Where the glyph and the texts of the drop area go. The area's height is fixed and the font is not, so a large font
// breaks the hint into two lines, then leaves out the glyph, then makes the texts smaller.
#pragma once

#include <QRectF>
#include <QSizeF>

#include <functional>
#include <optional>
#include <vector>

namespace quillow {

/// Sizes of the texts, each on one line.
struct DropTextSizes {
    QSizeF title;
    QSizeF hint;
    std::vector<QSizeF> hintLines; ///< the lines that the hint may be broken into
};

/// Scales of the texts' fonts relative to the area's font.
struct DropTextScales {
    qreal title = 1;
    qreal hint = 1;
    friend bool operator==(const DropTextScales&, const DropTextScales&) = default;
};

struct DropContent {
    static constexpr qreal kGlyphHeight = 48;
    static constexpr qreal kGlyphGap = 26;
    static constexpr qreal kLineGap = 2; ///< between the title and the hint

    using Measure = std::function<DropTextSizes(const DropTextScales& scales)>;

    std::optional<QRectF> glyph;
    QRectF title;
    std::vector<QRectF> hint; ///< one place, or one for each line of the broken hint
    DropTextScales scales;
    bool isCentred = false; ///< each line by itself; without a glyph

    /// The first arrangement that fits into the room, else the smallest. Places are those of a layout from left to
    /// right.
    [[nodiscard]] static DropContent arranged(const QRectF& room, qreal glyphWidth, const Measure& measure);
};

} // namespace quillow
