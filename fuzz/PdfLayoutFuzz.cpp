// Fuzzes the layout with pages that no file has: each record of twelve bytes places a run or a rule. Whatever the page
// looks like, its text ends with a line end, the same page gives the same text, also if somebody asks why, and its
// picture is an SVG file.
#include "engines/pdf/explain/PagePicture.h"
#include "engines/pdf/layout/HiddenText.h"
#include "engines/pdf/layout/PageLayout.h"
#include "engines/pdf/layout/PageText.h"
#include "fuzz/SvgCheck.h"
#include "text/Bytes.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using namespace quillow::pdf;

constexpr std::size_t kRecord = 12;
constexpr std::size_t kMostRecords = 4096;
/// Letters of every kind that the layout treats in its own way.
constexpr std::array<char32_t, 24> kLetters = {U'a',   U'B',  U'7',   U'.',   U' ',   0xA0,   0xAD,   U'-',
                                               U'(',   0x5D0, 0x628,  0x64E,  0x661,  0x301,  0xA8,   0x4E2D,
                                               0x3042, 0xE01, 0xFB03, 0xFEFB, 0x2022, 0xFFFD, 0xAC00, 0x1F600};
constexpr std::array<Point, 5> kDirections = {Point{1, 0}, Point{0, 1}, Point{-1, 0}, Point{0, -1}, Point{0.8F, 0.6F}};

/// A coordinate; the highest values are absurd on purpose.
float coordinate(std::uint16_t value) {
    constexpr std::uint16_t kAbsurd = 0xFFF0;
    return value >= kAbsurd ? std::ldexp(1.0F, value - kAbsurd + 20) : static_cast<float>(value) / 32;
}

void addRule(quillow::text::ByteCursor& record, Page& page) {
    const float x = coordinate(record.u16());
    const float y = coordinate(record.u16());
    page.rules.push_back({Rule::Kind::rectangle, {x, y, x + record.u8() * 4.0F, y + record.u8() / 2.0F}});
}

void addRun(quillow::text::ByteCursor& record, Page& page) {
    Run run;
    run.origin = {coordinate(record.u16()), coordinate(record.u16())};
    run.fontSize = static_cast<float>(record.u8()) / 8;
    run.direction = kDirections[record.u8() % kDirections.size()];
    run.flags = record.u8();
    run.firstGlyph = static_cast<std::uint32_t>(page.glyphs.size());
    run.glyphCount = record.u8() % 16U;
    const float step = static_cast<float>(record.i8()) / 16;
    std::uint8_t letter = record.u8();
    const std::uint8_t own = record.u8();
    const float width = own == 0 ? run.fontSize / 2 : static_cast<float>(own) / 16;
    for (std::uint32_t i = 0; i < run.glyphCount; ++i) {
        page.glyphs.push_back({static_cast<std::uint32_t>(page.text.size()), static_cast<float>(i) * step, width});
        if (letter != 0) page.text.push_back(kLetters[letter++ % kLetters.size()]);
    }
    page.runs.push_back(run);
}

Page pageOf(std::string_view bytes) {
    Page page;
    page.cropBox = {0, 0, 612, 792};
    for (std::size_t i = 0; i < kMostRecords && bytes.size() >= kRecord; ++i) {
        quillow::text::ByteCursor record(bytes.substr(0, kRecord));
        bytes.remove_prefix(kRecord);
        if (record.u8() % 8 == 0)
            addRule(record, page);
        else
            addRun(record, page);
    }
    return page;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Page page = pageOf({reinterpret_cast<const char*>(data), size});
    std::u32string text;
    appendPageText(page, text);
    std::u32string again;
    appendPageText(page, again);
    if (text != again || (!text.empty() && text.back() != U'\n')) std::abort();
    Evidence evidence;
    static_cast<void>(repeatedHiddenRuns(page, &evidence));
    PageLayout layout;
    layOut(page, layout, &evidence);
    if (text != layout.text) std::abort();
    checkSvg(pictureOf(page, layout, evidence, "<page>"));
    return 0;
}
