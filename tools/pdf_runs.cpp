// pdf_runs [--text | --glyphs | --count] FILE [PAGE]: prints what the content of a PDF's pages, or of one page counted
// from 1, shows.
//
//     (nothing)   the runs and rules of each page, see engines/pdf/content/PageDump.h
//     --glyphs    the same with every glyph
//     --text      the characters alone, joined by position only: a line where the baseline changes, a blank where a gap
//                 is over a quarter of the font size
//     --count     pages, runs, glyphs, characters, characters without Unicode, rules, parts skipped
#include "engines/pdf/content/PageDump.h"
#include "engines/pdf/content/PageReader.h"
#include "text/Utf8.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>

namespace {

using namespace quillow;
using namespace quillow::pdf;

constexpr float kBlank = 0.25F;     // of the font size
constexpr float kSameLine = 0.3F;   // of the font size: sub- and superscripts are on the line
constexpr float kSameAngle = 0.99F; // cosine

enum class Output { runs, glyphs, text, count };

struct Arguments {
    Output output = Output::runs;
    std::string file;
    std::size_t page = 0; ///< 0: all pages
};

std::optional<Arguments> argumentsOf(int count, char** values) {
    Arguments arguments;
    int i = 1;
    for (; i < count && values[i][0] == '-'; ++i) {
        const std::string option = values[i];
        if (option == "--text")
            arguments.output = Output::text;
        else if (option == "--glyphs")
            arguments.output = Output::glyphs;
        else if (option == "--count")
            arguments.output = Output::count;
        else
            return std::nullopt;
    }
    if (i >= count) return std::nullopt;
    arguments.file = values[i++];
    if (i < count) arguments.page = std::strtoul(values[i], nullptr, 10);
    return arguments;
}

/// Joins the runs of a page by their places.
class Joiner {
public:
    explicit Joiner(const Page& page)
        : page_(page) {}

    std::string text() {
        for (const Run& run : page_.runs)
            add(run);
        if (!text_.empty()) text_ += '\n';
        return std::move(text_);
    }

private:
    void add(const Run& run) {
        float end = 0;
        if (last_ != nullptr) {
            if (!isOnLine(run))
                text_ += '\n';
            else if (isBlank(along(*last_, run.origin) - end_, run))
                text_ += ' ';
        }
        for (std::size_t i = 0; i < run.glyphCount; ++i) {
            const Glyph& glyph = page_.glyphs[run.firstGlyph + i];
            if (i > 0 && isBlank(glyph.offset - end, run)) text_ += ' ';
            for (const char32_t c : page_.textOf(glyph))
                text::appendUtf8(text_, c);
            end = glyph.offset + glyph.width;
        }
        last_ = &run;
        end_ = end;
    }

    [[nodiscard]] static float along(const Run& run, Point p) {
        return (p.x - run.origin.x) * run.direction.x + (p.y - run.origin.y) * run.direction.y;
    }
    [[nodiscard]] bool isOnLine(const Run& run) const {
        const float side = (run.origin.y - last_->origin.y) * last_->direction.x -
                           (run.origin.x - last_->origin.x) * last_->direction.y;
        const float cosine = run.direction.x * last_->direction.x + run.direction.y * last_->direction.y;
        return cosine > kSameAngle && std::abs(side) <= kSameLine * std::max(run.fontSize, last_->fontSize);
    }
    [[nodiscard]] bool isBlank(float gap, const Run& run) const {
        const bool isThere = text_.empty() || text_.back() == ' ' || text_.back() == '\n';
        return !isThere && std::abs(gap) > kBlank * run.fontSize;
    }

    const Page& page_;
    const Run* last_ = nullptr;
    float end_ = 0;
    std::string text_;
};

struct Counts {
    std::size_t pages = 0;
    std::size_t runs = 0;
    std::size_t glyphs = 0;
    std::size_t characters = 0;
    std::size_t unknown = 0;
    std::size_t rules = 0;
    std::size_t skipped = 0;

    void add(const Page& page, const PageLoss& loss) {
        ++pages;
        runs += page.runs.size();
        glyphs += page.glyphs.size();
        characters += page.text.size();
        unknown += page.charactersWithoutUnicode;
        rules += page.rules.size();
        skipped += loss.partsSkipped;
    }
};

void print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

int show(const Arguments& arguments, std::string_view bytes) {
    auto opened = Document::open(bytes);
    if (!opened) {
        std::fprintf(stderr, "pdf_runs: %s: %s\n", arguments.file.c_str(), opened.failure().detail.c_str());
        return 1;
    }
    Document& document = *opened.value();
    FontCache fonts(document);
    PageReader reader(document, fonts);
    Page page;
    Counts counts;
    std::size_t number = 0;
    for (const PageNode& node : pagesOf(document)) {
        if (++number != arguments.page && arguments.page != 0) continue;
        counts.add(page, reader.read(node, page));
        if (arguments.output == Output::text) print(Joiner(page).text());
        if (arguments.output == Output::runs) print(dumpOf(page));
        if (arguments.output == Output::glyphs) print(dumpOf(page, DumpDetail::glyphs));
    }
    if (arguments.output == Output::count)
        std::printf("pages %zu runs %zu glyphs %zu characters %zu unknown %zu rules %zu skipped %zu\n", counts.pages,
                    counts.runs, counts.glyphs, counts.characters, counts.unknown, counts.rules, counts.skipped);
    return 0;
}

} // namespace

int main(int count, char** values) {
    const std::optional<Arguments> arguments = argumentsOf(count, values);
    if (!arguments) {
        std::fputs("usage: pdf_runs [--text | --glyphs | --count] FILE [PAGE]\n", stderr);
        return 2;
    }
    std::ifstream file(arguments->file, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "pdf_runs: %s: cannot be read\n", arguments->file.c_str());
        return 1;
    }
    std::string bytes(static_cast<std::size_t>(file.seekg(0, std::ios::end).tellg()), '\0');
    file.seekg(0).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return show(*arguments, bytes);
}
