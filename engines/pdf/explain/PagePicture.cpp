#include "engines/pdf/explain/PagePicture.h"

#include "engines/pdf/explain/NotePanel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace quillow::pdf {

namespace {

/// Pages are drawn at most so large, in points: PDF allows 14,400 units, with any UserUnit.
constexpr float kLargestPage = 20'000;
/// The height of a page of usual size; margins and notes grow with larger ones. In points.
constexpr float kUsualHeight = 842;
/// Around the page, in units.
constexpr float kMargin = 24;
/// The panel has room of its own, so that it can say what has been left out. In bytes.
constexpr std::size_t kPanelBytes = std::size_t{1} << 20;
/// The share of the letters' height that is below the baseline, as spans are made.
constexpr float kDepth = 0.2F / 0.9F;

struct Layer {
    Topic topic;
    std::string_view heading; ///< of its notes
    std::string_view colour;
};
constexpr std::string_view kRunColour = "#8a8a8a";
constexpr std::string_view kWordColour = "#4a90d9";
constexpr std::string_view kBlankColour = "#1a9850";
constexpr std::string_view kNoBlankColour = "#e31a1c";
constexpr std::string_view kLineColour = "#1f3fbf";
constexpr std::string_view kRulingColour = "#7a5230";
constexpr std::string_view kColumnColour = "#e67e00";
constexpr std::string_view kTableColour = "#8e24aa";
constexpr std::string_view kBlockColour = "#00897b";
constexpr std::string_view kOrderColour = "#d81b60";
constexpr std::string_view kDroppedColour = "#b71c1c";

/// The topics whose decisions are numbered notes.
constexpr std::array kNoted = {
    Layer{Topic::gutter, "Columns: free stripes, and whether they separate text", kColumnColour},
    Layer{Topic::table, "Tables, accepted and refused", kTableColour},
    Layer{Topic::order, "Reading order", kOrderColour},
    Layer{Topic::paragraph, "Paragraphs begin", kBlockColour},
    Layer{Topic::dropped, "Characters that are not written", kDroppedColour},
};

class PagePicture {
public:
    PagePicture(const Page& page, const PageLayout& layout, const Evidence& evidence, std::size_t mostBytes)
        : page_(page)
        , layout_(layout)
        , evidence_(evidence)
        , svg_(mostBytes)
        , width_(shown(page.cropBox.width()))
        , height_(shown(page.cropBox.height()))
        , unit_(std::max(1.0F, std::max(width_, height_) / kUsualHeight)) {}

    std::string draw(std::string_view title) && {
        drawPaper();
        drawRulings();
        drawRuns();
        drawWords();
        drawGaps();
        drawAreas("lines", Topic::line, kLineColour, "0.35");
        drawAreas("columns", Topic::region, kColumnColour, "1.2");
        drawTables();
        drawBlocks();
        drawOrder();
        drawNotes(title);
        const float height = std::max(height_ + 2 * kMargin * unit_, panelHeight_ + 2 * kMargin * unit_);
        return std::move(svg_).finish(width_ + (3 * kMargin + NotePanel::kWidth) * unit_, height);
    }

private:
    using SvgCorners = std::array<SvgPoint, 4>;

    static float shown(float length) { return length > 1 ? std::min(length, kLargestPage) : 1; }

    [[nodiscard]] SvgPoint placeOf(Point p) const { return {p.x + kMargin * unit_, height_ - p.y + kMargin * unit_}; }
    [[nodiscard]] SvgCorners svgCornersOf(const Corners& corners) const {
        return {placeOf(corners[0]), placeOf(corners[1]), placeOf(corners[2]), placeOf(corners[3])};
    }
    [[nodiscard]] SvgCorners svgCornersOf(const TextRow& row) const {
        return svgCornersOf(cornersOf(layout_.orientations[row.orientation].frame, row));
    }
    [[nodiscard]] std::string sized(float units) const { return SvgWriter::number(units * unit_); }

    void drawPaper() {
        const SvgPoint from = placeOf({0, height_});
        const SvgPoint to = placeOf({width_, 0});
        svg_.beginLayer("page");
        svg_.polygon(SvgCorners{from, {to.x, from.y}, to, {from.x, to.y}}, {},
                     {{"fill", "#ffffff"}, {"stroke", "#555555"}, {"stroke-width", sized(0.5F)}});
        svg_.endLayer();
    }

    void drawRulings() {
        svg_.beginLayer("rulings", {{"stroke", kRulingColour}, {"stroke-width", "0.8"}});
        for (const Mark& mark : evidence_.marks())
            if (mark.topic == Topic::ruling) svg_.line(placeOf(mark.corners[0]), placeOf(mark.corners[2]));
        svg_.endLayer();
    }

    /// A run's box, an arrow in its direction, and the size of its font.
    void drawRuns() {
        svg_.beginLayer("runs", {{"fill", "none"}, {"stroke", kRunColour}, {"stroke-width", "0.2"}});
        for (std::size_t i = 0; i < page_.runs.size(); ++i)
            drawRun(i);
        svg_.endLayer();
    }

    void drawRun(std::size_t index) {
        const Run& run = page_.runs[index];
        if (run.glyphCount == 0) return;
        float from = page_.glyphs[run.firstGlyph].offset;
        float to = from;
        for (std::uint32_t i = run.firstGlyph; i < run.firstGlyph + run.glyphCount; ++i) {
            const Glyph& glyph = page_.glyphs[i];
            from = std::min({from, glyph.offset, glyph.offset + glyph.width});
            to = std::max({to, glyph.offset, glyph.offset + glyph.width});
        }
        const auto at = [this, &run](float along, float up) {
            return placeOf({run.origin.x + along * run.direction.x - up * run.direction.y,
                            run.origin.y + along * run.direction.y + up * run.direction.x});
        };
        std::string title = "run " + std::to_string(index) + ": " + SvgWriter::number(run.fontSize) + " pt";
        if (run.font != Run::kNoFont) title += ", font " + std::to_string(run.font);
        const float degrees = std::atan2(run.direction.y, run.direction.x) * 57.29578F;
        title += ", direction " + SvgWriter::number(std::round(degrees)) + " degrees";
        if (run.markedContent != Run::kNoMark) title += ", mark " + std::to_string(run.markedContent);
        using Name = std::pair<RunFlag, std::string_view>;
        for (const auto& [flag, name] :
             {Name{kInvisible, ", invisible"}, Name{kRunning, ", running"}, Name{kActualText, ", ActualText"},
              Name{kVertical, ", vertical"}, Name{kFromAnnotation, ", from an annotation"}})
            if ((run.flags & flag) != 0) title += name;
        svg_.polygon(SvgCorners{at(from, -run.descent), at(to, -run.descent), at(to, run.ascent), at(from, run.ascent)},
                     title, {{"stroke-dasharray", (run.flags & kInvisible) != 0 ? "0.6 0.6" : "none"}});
        const float arrow = run.fontSize / 8;
        svg_.polyline(std::array{at(0, arrow), at(arrow, 0), at(0, -arrow)}, {{"stroke-width", "0.4"}});
        svg_.text(at(from, -run.descent), SvgWriter::number(run.fontSize),
                  {{"font-size", SvgWriter::number(run.fontSize / 5)}, {"fill", kRunColour}, {"stroke", "none"}});
    }

    void drawWords() {
        svg_.beginLayer("words", {{"fill", kWordColour}, {"fill-opacity", "0.13"}});
        for (const Mark& mark : evidence_.marks())
            if (mark.topic == Topic::word) svg_.polygon(svgCornersOf(mark.corners));
        svg_.endLayer();
        svg_.beginLayer("text",
                        {{"fill", "#333333"}, {"font-family", "Liberation Serif, Times New Roman, Times, serif"}});
        for (const Mark& mark : evidence_.marks())
            if (mark.topic == Topic::word) drawText(mark);
        svg_.endLayer();
    }

    void drawText(const Mark& mark) {
        const SvgCorners corners = svgCornersOf(mark.corners);
        const SvgPoint along{corners[1].x - corners[0].x, corners[1].y - corners[0].y};
        const SvgPoint up{corners[3].x - corners[0].x, corners[3].y - corners[0].y};
        const float width = std::hypot(along.x, along.y);
        const float size = std::hypot(up.x, up.y) / 0.9F;
        const SvgPoint at{corners[0].x + kDepth * up.x, corners[0].y + kDepth * up.y};
        const std::string shownSize = SvgWriter::number(size);
        if (!(width > 0) || !(size > 0)) return;
        if (along.y == 0 && along.x > 0)
            svg_.text(at, mark.text, {{"font-size", shownSize}}, width);
        else
            svg_.turnedText(at, {along.x / width, along.y / width}, mark.text, {{"font-size", shownSize}}, width);
    }

    /// A gap's width in ems, green if it is a blank. Drawn blanks are not gaps.
    void drawGaps() {
        svg_.beginLayer("gaps", {{"font-size", "1.8"}, {"fill-opacity", "0.5"}});
        for (const Mark& mark : evidence_.marks()) {
            if (mark.topic != Topic::gap) continue;
            const SvgCorners corners = svgCornersOf(mark.corners);
            const std::string_view colour = mark.verdict == Verdict::accepted ? kBlankColour : kNoBlankColour;
            svg_.polygon(corners, mark.text, {{"fill", colour}});
            const std::size_t begin = mark.text.find(": em ");
            if (begin == std::string::npos) continue;
            const std::string_view number = std::string_view(mark.text).substr(begin + 5);
            svg_.text({corners[0].x, corners[0].y + 1.5F}, number.substr(0, number.find(',')),
                      {{"fill", colour}, {"fill-opacity", "1"}});
        }
        svg_.endLayer();
    }

    void drawAreas(std::string_view name, Topic topic, std::string_view colour, std::string_view width,
                   std::string_view dashes = "none") {
        svg_.beginLayer(name,
                        {{"fill", "none"}, {"stroke", colour}, {"stroke-width", width}, {"stroke-dasharray", dashes}});
        for (const Mark& mark : evidence_.marks())
            if (mark.topic == topic) svg_.polygon(svgCornersOf(mark.corners), mark.text);
        svg_.endLayer();
    }

    void drawTables() {
        drawAreas("table cells", Topic::cell, kTableColour, "0.5", "1.5 1");
        svg_.beginLayer("table rows", {{"fill", "none"}, {"stroke", kTableColour}, {"stroke-width", "0.6"}});
        for (const TextRow& row : layout_.rows)
            if (row.isTableRow) svg_.polygon(svgCornersOf(row));
        svg_.endLayer();
        svg_.beginLayer("tables", {{"fill", kTableColour}, {"fill-opacity", "0.07"}, {"stroke", kTableColour}});
        for (const Mark& mark : evidence_.marks())
            if (mark.topic == Topic::table && mark.verdict == Verdict::accepted)
                svg_.polygon(svgCornersOf(mark.corners), mark.text, {{"stroke-width", "1.4"}});
        svg_.endLayer();
    }

    /// Rows without a blank line between them that are one below the other.
    struct Block {
        std::size_t begin = 0; ///< indices in PageLayout::rows
        std::size_t end = 0;
    };

    [[nodiscard]] std::vector<Block> blocks() const {
        std::vector<Block> blocks;
        for (std::size_t i = 0; i < layout_.rows.size(); ++i) {
            if (i == 0 || beginsBlock(layout_.rows[i - 1], layout_.rows[i])) blocks.push_back({i, i});
            blocks.back().end = i + 1;
        }
        return blocks;
    }

    static bool beginsBlock(const TextRow& before, const TextRow& row) {
        if (row.continuesTable) return false;
        return row.beginsParagraph || row.orientation != before.orientation || row.isTableRow || before.isTableRow ||
               row.bottom >= before.bottom;
    }

    void drawBlocks() {
        svg_.beginLayer("paragraphs", {{"fill", "none"}, {"stroke", kBlockColour}, {"stroke-width", "0.9"}});
        for (const Block& block : blocks()) {
            TextRow area = layout_.rows[block.begin];
            for (std::size_t i = block.begin + 1; i < block.end; ++i) {
                const TextRow& row = layout_.rows[i];
                area.left = std::min(area.left, row.left);
                area.right = std::max(area.right, row.right);
                area.bottom = std::min(area.bottom, row.bottom);
                area.top = std::max(area.top, row.top);
            }
            svg_.polygon(svgCornersOf(area));
        }
        svg_.endLayer();
    }

    /// A path from row to row, and the numbers of the blocks at their beginnings.
    void drawOrder() {
        svg_.beginLayer("reading order", {{"stroke", kOrderColour}, {"fill", kOrderColour}});
        std::vector<SvgPoint> path;
        for (const TextRow& row : layout_.rows) {
            const SvgCorners corners = svgCornersOf(row);
            const bool isFromTheRight = layout_.orientations[row.orientation].isFromTheRight;
            const SvgPoint below = corners[isFromTheRight ? 1 : 0];
            const SvgPoint above = corners[isFromTheRight ? 2 : 3];
            path.push_back({(below.x + above.x) / 2, (below.y + above.y) / 2});
        }
        if (path.size() > 1) svg_.polyline(path, {{"stroke-width", "0.8"}, {"stroke-opacity", "0.5"}});
        std::size_t number = 0;
        for (const Block& block : blocks()) {
            const SvgPoint place = path[block.begin];
            const bool isFromTheRight = layout_.orientations[layout_.rows[block.begin].orientation].isFromTheRight;
            const SvgPoint centre{place.x + (isFromTheRight ? 6 : -6) * unit_, place.y};
            svg_.circle(centre, 4.4F * unit_, {}, {{"stroke", "none"}});
            svg_.text({centre.x, centre.y + 1.9F * unit_}, std::to_string(++number),
                      {{"font-size", sized(5.2F)}, {"fill", "#ffffff"}, {"stroke", "none"}, {"text-anchor", "middle"}});
        }
        svg_.endLayer();
    }

    void drawNotes(std::string_view title) {
        NotePanel panel;
        panel.addTitle(title);
        addKeys(panel);
        svg_.beginLayer(
            "notes",
            {{"font-family", "Helvetica, Arial, sans-serif"}, {"font-size", sized(5.5F)}, {"font-weight", "bold"}});
        for (const Layer& layer : kNoted) {
            panel.beginSection(layer.heading, layer.colour);
            const Mark* refused = nullptr;
            for (const Mark& mark : evidence_.marks()) {
                if (mark.topic != layer.topic) continue;
                // The search for tables begins at each line, so what is refused once is refused again a line below.
                if (mark.verdict == Verdict::refused && refused != nullptr && isPartOf(mark, *refused)) continue;
                if (mark.verdict == Verdict::refused) refused = &mark;
                drawNote(panel, layer, mark);
            }
        }
        svg_.endLayer();
        svg_.beginLayer("panel", {{"font-family", "Helvetica, Arial, sans-serif"}, {"fill", "#222222"}});
        if (svg_.leftOut() > 0)
            panel.addTitle(std::to_string(svg_.leftOut()) +
                           " elements are left out: the picture is too large (kMostBytes)");
        if (evidence_.leftOut() > 0)
            panel.addTitle(std::to_string(evidence_.leftOut()) +
                           " marks are left out: the page has too many (kMostMarks)");
        svg_.makeRoom(kPanelBytes);
        panelHeight_ = panel.draw(svg_, {width_ + 2 * kMargin * unit_, kMargin * unit_}, unit_);
        svg_.endLayer();
    }

    /// The note's text in the panel, its number at the area, and the area itself if no other layer shows it.
    void drawNote(NotePanel& panel, const Layer& layer, const Mark& mark) {
        const bool isRefused = mark.verdict == Verdict::refused;
        const std::size_t number = panel.addNote((isRefused ? "not " : "") + mark.text);
        if (number == 0) return;
        const SvgCorners corners = svgCornersOf(mark.corners);
        const bool isDrawn = layer.topic == Topic::paragraph || (layer.topic == Topic::table && !isRefused);
        if (!isDrawn)
            svg_.polygon(corners, mark.text,
                         {{"fill", layer.topic == Topic::gutter ? layer.colour : "none"},
                          {"fill-opacity", isRefused ? "0.04" : "0.18"},
                          {"stroke", layer.colour},
                          {"stroke-width", "0.6"},
                          {"stroke-dasharray", isRefused ? "1 2" : "4 2"}});
        // The numbers of different topics are beside different corners.
        const SvgPoint corner =
            layer.topic == Topic::paragraph || layer.topic == Topic::order ? corners[3] : corners[2];
        const bool isAtLeft = layer.topic == Topic::paragraph || layer.topic == Topic::order;
        svg_.text(
            {corner.x + (isAtLeft ? -1 : 1) * unit_, corner.y + (layer.topic == Topic::order ? -1.5F : 4) * unit_},
            std::to_string(number), {{"fill", layer.colour}, {"text-anchor", isAtLeft ? "end" : "start"}});
    }

    static void addKeys(NotePanel& panel) {
        panel.addKey("run (font size, direction)", kRunColour);
        panel.addKey("word", "#cfe2f5");
        panel.addKey("line", kLineColour);
        panel.addKey("gap that is a blank (em)", kBlankColour);
        panel.addKey("gap that is no blank", kNoBlankColour);
        panel.addKey("ruling", kRulingColour);
        panel.addKey("column, gutter", kColumnColour);
        panel.addKey("table, row, cell", kTableColour);
        panel.addKey("paragraph", kBlockColour);
        panel.addKey("reading order", kOrderColour);
        panel.addKey("not written", kDroppedColour);
    }

    /// The reason without its numbers.
    static std::string_view reasonOf(const Mark& mark) {
        return std::string_view(mark.text).substr(0, mark.text.find(": "));
    }

    static bool isPartOf(const Mark& part, const Mark& whole) {
        const auto contains = [&whole](Point p) {
            const auto [left, right] = std::minmax(whole.corners[0].x, whole.corners[2].x);
            const auto [bottom, top] = std::minmax(whole.corners[0].y, whole.corners[2].y);
            return p.x >= left && p.x <= right && p.y >= bottom && p.y <= top;
        };
        return reasonOf(part) == reasonOf(whole) && contains(part.corners[0]) && contains(part.corners[2]);
    }

    const Page& page_;
    const PageLayout& layout_;
    const Evidence& evidence_;
    SvgWriter svg_;
    float width_;
    float height_;
    float unit_;
    float panelHeight_ = 0;
};

} // namespace

std::string pictureOf(const Page& page, const PageLayout& layout, const Evidence& evidence, std::string_view title,
                      std::size_t mostBytes) {
    return PagePicture(page, layout, evidence, mostBytes).draw(title);
}

} // namespace quillow::pdf
