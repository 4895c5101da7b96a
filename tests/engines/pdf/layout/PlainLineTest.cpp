// Plain lines are written by runs of letters, others letter by letter: both ways give the same text.
#include "engines/pdf/layout/GlyphScan.h"
#include "engines/pdf/layout/LineText.h"
#include "tests/engines/pdf/layout/PageBuilder.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>
#include <vector>

namespace quillow::pdf {
namespace {

struct Piece {
    std::u32string text;
    float gap = 0; ///< before it, in ems
    float letter = PageBuilder::kLetter;
    float spacing = 0; ///< between letters, in ems
    float size = 10;
};

Page lineOf(const std::vector<Piece>& pieces) {
    PageBuilder builder;
    float x = 10;
    for (const Piece& piece : pieces) {
        x += piece.gap * piece.size;
        builder.size(piece.size).letter(piece.letter).text(x, 700, piece.text, piece.spacing);
        const auto letters = static_cast<float>(piece.text.size());
        x += (letters * piece.letter + (letters - 1) * piece.spacing) * piece.size;
    }
    return builder.page();
}

/// The text of all spans of a page as one line.
std::u32string written(const Page& page, const Orientation& orientation, Evidence* evidence = nullptr) {
    std::vector<std::uint32_t> spans(orientation.spans.size());
    std::iota(spans.begin(), spans.end(), 0U);
    std::u32string text;
    LineWriter(page, orientation, false, evidence).append(spans, text);
    return text;
}

/// What is written by runs, letter by letter, and by the writer of lines that are not plain, which evidence needs.
void expectOneText(const Page& page, std::string_view what) {
    std::vector<Orientation> orientations = orientationsOf(page);
    ASSERT_EQ(orientations.size(), 1U) << what;
    const std::u32string byRuns = written(page, orientations[0]);
    for (Span& span : orientations[0].spans)
        span.letters = {};
    EXPECT_EQ(byRuns, written(page, orientations[0])) << what;
    Evidence evidence;
    EXPECT_EQ(byRuns, written(page, orientations[0], &evidence)) << what;
}

TEST(PdfPlainLine, linesAreWrittenByRunsAsLetterByLetter) {
    const struct {
        const char* what;
        std::vector<Piece> pieces;
    } cases[] = {
        {"drawn blanks", {{U"plain words, as most lines have"}}},
        {"blanks at both ends", {{U" a line "}}},
        {"one blank", {{U" "}}},
        {"two blanks", {{U"two  blanks in a row"}}},
        {"blanks at the ends of runs", {{U"one "}, {U" two "}, {U"three", 0.3F}}},
        {"a run of blanks", {{U"one"}, {U" "}, {U"two"}, {U"   "}, {U"three"}}},
        {"gaps instead of blanks", {{U"one"}, {U"two", 0.25F}, {U"three", 0.3F}, {U"four", 0.02F}}},
        {"gaps beside drawn blanks", {{U"one two."}, {U"Three four", 0.22F}, {U", five six", 0.21F}}},
        {"letter-spaced", {{U"letterspaced", 0, 0.5F, 0.2F}, {U"words", 0.6F, 0.5F, 0.2F}}},
        {"kerned letters", {{U"AVATAR To", 0, 0.5F, -0.12F}}},
        {"kerned accents", {{U"a^b`c~d", 0, 0.5F, -0.15F}}},
        {"accents over letters", {{U"a"}, {U"\u00A8", -0.5F}, {U"b"}}},
        {"overlapping letters", {{U"overlapping", 0, 0.5F, -0.25F}}},
        {"letters at one place", {{U"twice"}, {U"twice", -2.5F}}},
        {"narrow blanks", {{U"nar row blan ks", 0, 0.5F, -0.23F}}},
        {"without a width", {{U"marks", 0, 0}, {U"behind"}}},
        {"Cyrillic and quotes", {{U"\u201CПравда\u201D \u2014 газета"}}},
        {"ideographs", {{U"\u4E00\u4E8C\u4E09", 0, 1}, {U"abc", 0.25F}, {U"\u56DB", 0.35F, 1}}},
        {"ligatures", {{U"\uFB01ve of\uFB01ces"}, {U"\uFB02y", 0.3F}}},
        {"other presentation forms", {{U"a\uFB29b \uFB06"}}},
        {"soft hyphens", {{U"co\u00ADop"}, {U"end\u00AD", 0.3F}}},
        {"no-break spaces", {{U"\u00A0in\u00A0side\u00A0"}}},
        {"other blanks", {{U"em\u2003quad\u3000wide\ttab"}}},
        {"controls", {{U"a\u0001b\u0085c\u007F"}}},
        {"superscripts", {{U"m"}, {U"2", 0.05F, 0.5F, 0, 6}, {U"and more", 0.3F}}},
    };
    for (const auto& [what, pieces] : cases)
        expectOneText(lineOf(pieces), what);
}

TEST(PdfPlainLine, anyLinesAreWrittenByRunsAsLetterByLetter) {
    constexpr std::u32string_view kCharacters = U"abcdefgABCxyz.,;()12 ^\u00B4\u00E9\u2019\u4E00\uFB01\u00A0\u00AD";
    constexpr float kGaps[] = {0, 0, 0, 0.03F, 0.06F, 0.15F, 0.25F, 0.4F, 1.1F, 1.5F, -0.05F, -0.15F, -0.3F};
    std::mt19937 random(7);
    const auto below = [&random](std::size_t end) { return random() % end; };
    for (int round = 0; round < 3000; ++round) {
        std::vector<Piece> pieces(1 + below(5));
        for (Piece& piece : pieces) {
            const std::size_t common = below(3) == 0 ? kCharacters.size() : 20; // most pieces are of usual letters
            for (std::size_t n = 1 + below(14); n > 0; --n)
                piece.text.push_back(kCharacters[below(common)]);
            piece.gap = kGaps[below(std::size(kGaps))];
            piece.spacing = below(4) == 0 ? kGaps[below(std::size(kGaps))] : 0;
            piece.size = below(5) == 0 ? 7.0F : 10.0F;
        }
        expectOneText(lineOf(pieces), "round " + std::to_string(round));
    }
}

/// Scans a run of 10 points with an optional change.
template <class Change>
GlyphScan scanned(std::u32string_view text, Change change) {
    Page page = PageBuilder().text(10, 700, text).page();
    change(page);
    return scanGlyphs(page, page.runs[0], 10, 10, 12);
}

TEST(PdfGlyphScan, oneLetterAnywhereChangesWhatARunIs) {
    for (std::size_t length = 2; length < 14; ++length) {
        const std::u32string text(length, U'a');
        const auto whole = scanned(text, [](Page&) {});
        EXPECT_TRUE(whole.isWhole && whole.letters.isPlain && !whole.letters.hasBlanks && !whole.letters.hasGaps);
        EXPECT_FLOAT_EQ(whole.right, 10 + 5 * static_cast<float>(length));
        for (std::size_t at = 0; at < length; ++at) {
            const auto with = [&text, at](char32_t c) {
                std::u32string changed = text;
                changed[at] = c;
                return scanned(changed, [](Page&) {});
            };
            const auto moved = [&text, at](float by) {
                return scanned(text, [at, by](Page& page) {
                    for (std::size_t i = at; i < page.glyphs.size(); ++i)
                        page.glyphs[i].offset += by;
                });
            };
            const std::string place = std::to_string(at) + " of " + std::to_string(length);
            EXPECT_TRUE(with(U' ').letters.isPlain && with(U' ').letters.hasBlanks) << place;
            EXPECT_TRUE(with(U'\u2019').letters.isPlain) << place;
            EXPECT_TRUE(with(U'\uFB01').letters.isPlain && with(U'\uFB01').letters.hasLigatures) << place;
            for (const char32_t c : {U'\u00AD', U'\u00A0', U'\t', U'\u05D0', U'\uFE8D', U'\u3000'})
                EXPECT_TRUE(with(c).isWhole && !with(c).letters.isPlain) << place;
            EXPECT_FALSE(scanned(text, [at](Page& page) { page.glyphs[at].width = 0; }).isWhole) << place;
            if (at == 0) continue;
            EXPECT_TRUE(moved(0.6F).letters.isPlain && moved(0.6F).letters.hasGaps) << place;
            EXPECT_FALSE(moved(12.5F).isWhole) << place;
            EXPECT_FALSE(moved(-2.5F).isWhole) << place;
            EXPECT_FALSE(moved(-6).isWhole) << place;
            const auto twoCharacters = scanned(text, [at](Page& page) { ++page.glyphs[at].text; });
            EXPECT_FALSE(twoCharacters.isWhole) << place;
            std::u32string blanks = text;
            blanks[at - 1] = blanks[at] = U' ';
            EXPECT_FALSE(scanned(blanks, [](Page&) {}).letters.isPlain) << place;
        }
    }
}

TEST(PdfGlyphScan, anAccentOverALetterIsNotPlain) {
    for (std::size_t at = 1; at < 9; ++at) {
        const auto accented = [at](float back) {
            std::u32string text(10, U'a');
            text[at] = U'^';
            return scanned(text, [at, back](Page& page) {
                page.glyphs[at].width = 2;
                page.glyphs[at].offset -= back;
            });
        };
        EXPECT_FALSE(accented(1.5F).letters.isPlain) << at;
        EXPECT_TRUE(accented(0.5F).letters.isPlain) << at;
    }
}

TEST(PdfGlyphScan, aBlankIsSeenOnlyIfItsLettersAreApart) {
    for (std::size_t at = 1; at < 9; ++at) {
        std::u32string text(10, U'a');
        text[at] = U' ';
        const auto narrow = [at](float width) {
            return [at, width](Page& page) {
                page.glyphs[at].width = width;
                for (std::size_t i = at + 1; i < page.glyphs.size(); ++i)
                    page.glyphs[i].offset -= 5 - width;
            };
        };
        EXPECT_TRUE(scanned(text, narrow(0.5F)).letters.isPlain) << at;
        EXPECT_FALSE(scanned(text, narrow(0.3F)).letters.isPlain) << at;
    }
}

} // namespace
} // namespace quillow::pdf
