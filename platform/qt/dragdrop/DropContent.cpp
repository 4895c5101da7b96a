#include "platform/qt/dragdrop/DropContent.h"

namespace quillow {
namespace {

enum class Glyph { no, yes };
enum class Hint { whole, broken };

struct Arrangement {
    Glyph glyph;
    Hint hint;
    DropTextScales scales;
};

constexpr qreal kTitleScale = 1.2;

/// In the order of preference. Texts are made smaller only where the font is so large that they stay as large as those
/// of an ordinary one.
constexpr Arrangement kArrangements[] = {
    {Glyph::yes, Hint::whole, {kTitleScale, 1}}, {Glyph::yes, Hint::broken, {kTitleScale, 1}},
    {Glyph::no, Hint::whole, {kTitleScale, 1}},  {Glyph::no, Hint::broken, {kTitleScale, 1}},
    {Glyph::no, Hint::broken, {1, 0.9}},         {Glyph::no, Hint::broken, {0.9, 0.75}},
    {Glyph::no, Hint::broken, {0.75, 0.6}},      {Glyph::no, Hint::broken, {0.6, 0.5}},
};

/// The texts without the glyph, at the origin.
struct Block {
    std::vector<QSizeF> lines; ///< the title first
    QSizeF size;
};

Block blockOf(const DropTextSizes& sizes, Hint hint) {
    Block block;
    block.lines.push_back(sizes.title);
    if (hint == Hint::whole)
        block.lines.push_back(sizes.hint);
    else
        block.lines.insert(block.lines.end(), sizes.hintLines.begin(), sizes.hintLines.end());
    block.size = {0, DropContent::kLineGap};
    for (const QSizeF& line : block.lines)
        block.size = {qMax(block.size.width(), line.width()), block.size.height() + line.height()};
    return block;
}

DropContent placed(const QRectF& room, qreal glyphWidth, const Arrangement& arrangement, const Block& block) {
    DropContent content;
    content.scales = arrangement.scales;
    content.isCentred = arrangement.glyph == Glyph::no;
    const qreal indent = content.isCentred ? 0 : glyphWidth + DropContent::kGlyphGap;
    const qreal left = room.center().x() - (indent + block.size.width()) / 2;
    if (!content.isCentred)
        content.glyph =
            QRectF(left, room.center().y() - DropContent::kGlyphHeight / 2, glyphWidth, DropContent::kGlyphHeight);
    qreal y = room.center().y() - block.size.height() / 2;
    for (std::size_t i = 0; i < block.lines.size(); ++i) {
        const QSizeF& line = block.lines[i];
        const qreal x = content.isCentred ? room.center().x() - line.width() / 2 : left + indent;
        (i == 0 ? content.title : content.hint.emplace_back()) = QRectF(QPointF(x, y), line);
        y += line.height() + (i == 0 ? DropContent::kLineGap : 0);
    }
    return content;
}

} // namespace

DropContent DropContent::arranged(const QRectF& room, qreal glyphWidth, const Measure& measure) {
    const Arrangement* last = std::end(kArrangements) - 1;
    for (const Arrangement& arrangement : kArrangements) {
        const Block block = blockOf(measure(arrangement.scales), arrangement.hint);
        const bool hasGlyph = arrangement.glyph == Glyph::yes;
        const qreal width = block.size.width() + (hasGlyph ? glyphWidth + kGlyphGap : 0);
        const qreal height = qMax(block.size.height(), hasGlyph ? kGlyphHeight : 0);
        if ((width <= room.width() && height <= room.height()) || &arrangement == last)
            return placed(room, glyphWidth, arrangement, block);
    }
    return {};
}

} // namespace quillow
