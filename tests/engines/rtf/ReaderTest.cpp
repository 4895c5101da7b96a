// The entry of the engine: reasons, the loss account, limits, and pairs of documents that must give the same text.
#include "engines/rtf/Reader.h"

#include "engines/Extract.h"
#include "engines/rtf/Interpreter.h"
#include "tests/engines/DataFiles.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::rtf {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

Extraction read(std::string_view document, const Options& options = {}) {
    return extract(test::asBytes(document), DocumentKind::rtf, options);
}

std::string textOf(std::string_view document) {
    return read(document).text.value_or("(no text)");
}

std::string repeated(std::string_view piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}

struct ReasonCase {
    std::string_view document;
    Reason reason;
    std::optional<std::string_view> text;
};

TEST(Reader, everyDocumentHasItsReason) {
    const ReasonCase kCases[] = {
        {"", Reason::damaged, std::nullopt},
        {"{\\rtf1 a}", Reason::ok, "a\n"},
        {"{\\rtf1}", Reason::okEmpty, ""},
        {"{\\rtf1\\par\\par}", Reason::okEmpty, ""},
        {"{", Reason::ok, "{\n"},
        {"\xEF\xBB\xBF", Reason::okEmpty, ""},
        // A document that lacks only its last brace is whole if it ends at the end of a paragraph, a row or a group.
        {"{\\rtf1 a\\par\r\n", Reason::ok, "a\n"},
        {"{\\rtf1 a{\\b b}", Reason::ok, "ab\n"},
        {"{\\rtf1 a", Reason::partial, "a\n"},
        {"{\\rtf1 a{\\b b\\par ", Reason::partial, "ab\n"},
        {"{\\rtf1 a{\\pict 00", Reason::partial, "a\n"},
        {"{\\rtf1{\\stylesheet{Style;}\\pard a\\par} b}", Reason::partial, "a\n b\n"},
        {"{\\rtf1{\\stylesheet{\\pard Style;}} b}", Reason::ok, " b\n"},
        {"{\\rtf1 a\\bin9 b}", Reason::partial, "a\n"},
        {"{\\rtf1 a \\u12", Reason::partial, "a \n"},
        {"{\\rtf1 a \\'e", Reason::partial, "a e\n"},
        {"{\\rtf1 a {\\field{\\fldinst SYMBOL 65", Reason::partial, "a A\n"},
        {"{\\rtf1\\ansi", Reason::damaged, std::nullopt},
        {"%PDF-1.7 {\\rtf1 a}", Reason::wrongType, std::nullopt},
        {"<!DOCTYPE html><p>{\\rtf1 a}", Reason::wrongType, std::nullopt},
        {"<?xml version=\"1.0\"?><a/>", Reason::wrongType, std::nullopt},
        {"PK\x03\x04\x00\x00{\\rtf1 a}"sv, Reason::wrongType, std::nullopt},
        {"abc\0def"sv, Reason::wrongType, std::nullopt},
    };
    for (const ReasonCase& reasonCase : kCases) {
        const Extraction extraction = read(reasonCase.document);
        EXPECT_EQ(extraction.reason, reasonCase.reason) << reasonCase.document;
        EXPECT_EQ(extraction.text, reasonCase.text) << reasonCase.document;
    }
}

TEST(Reader, secondHalvesOfRawPairsInNamesAreNoBraces) {
    const std::string open = "\x96{";  // U+672C in code page 932
    const std::string close = "\x83}"; // U+30DE
    const std::string font = "{\\fonttbl{\\f0 Serif;}{\\f1\\fnil\\fcharset128 ";
    const std::string styles = "{\\stylesheet{\\s0 Normal;}{\\s1\\f1\\snext0 ";
    const std::string plainFont = font + "Mincho;}}";
    for (const std::string& codePage : {"\\ansicpg932"s, "\\ansicpg1252"s}) {
        for (const std::string& name : {open, close, open + open + close, close + "\x83\\" + open}) {
            for (const std::string& tables : {font + name + ";}}", plainFont + styles + name + ";}}",
                                              font + name + ";}}" + styles + name + ";}}"}) {
                const std::string header = "{\\rtf1\\ansi" + codePage + tables;
                const Extraction empty = read(header + "}");
                EXPECT_EQ(empty.reason, Reason::okEmpty) << header;
                EXPECT_EQ(empty.text, "") << header;
                const Extraction extraction = read(header + "\\pard\\f1 a" + open + "b\\par c\\par}");
                EXPECT_EQ(extraction.reason, Reason::ok) << header;
                EXPECT_EQ(extraction.text, "a\u672Cb\nc\n") << header;
            }
        }
    }
}

TEST(Reader, namesInSingleBytesBesideDoubleByteFontsKeepTheirBraces) {
    // In code page 932 the last letter would take the brace with it.
    const Extraction extraction =
        read("{\\rtf1\\ansi{\\fonttbl{\\f0 Caf\xE9}{\\f1\\fcharset128 M;}}{\\stylesheet{\\s0 Caf\xE9}}\\pard a\\par}");
    EXPECT_EQ(extraction.reason, Reason::ok);
    EXPECT_EQ(extraction.text, "a\n");
}

TEST(Reader, aFragmentIsReadAsTheBodyOfADocument) {
    const std::pair<std::string_view, std::string_view> kFragments[] = {
        {"{\\pard \\ql \\f0 \\sa180 Hello {\\b bold} world\\par}\n{\\pard Second \\u8217 ?s\\par}",
         "Hello bold world\nSecond \u2019s\n"},
        {"\\pard Hello\\par World", "Hello\nWorld\n"},
        {"{\\*\\generator X;}Hello\\par", "Hello\n"},
        {"\xEF\xBB\xBF\n {\\pard \xC3\xA9\\par}", "\u00E9\n"},
        {"{{\\pard a\\par}}", "a\n"},
        {"{\\pard A\\par}}{\\pard B\\par}", "A\nB\n"},
        {"\\fs24 Hello", "Hello\n"},
        {"\\trowd\\cellx100 a\\cell b\\cell\\row", "a\tb\n"},
        {"{\\colortbl;\\red0;}a", "a\n"},
        {"{\\info{\\title X}}{\\pard a\\par}", "a\n"},
        {"{\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt Go}}\\par", "Go\n"},
        {"\\u8226\\tab First\\par", "\u2022\tFirst\n"},
        {"\\b Bold\\b0  text", "Bold text\n"},
        {"{\\i Hello} world", "Hello world\n"},
        {"\\tab Indented", "\tIndented\n"},
        {"\\emdash a", "\u2014a\n"},
        {"\\ansi\\deff0 a", "a\n"},
    };
    for (const auto& [fragment, text] : kFragments) {
        EXPECT_EQ(read(fragment).reason, Reason::ok) << fragment;
        EXPECT_EQ(textOf(fragment), text) << fragment;
    }
    EXPECT_EQ(read("{\\pard a\\par {\\b b").reason, Reason::partial);
}

TEST(Reader, otherTextThatBeginsWithABackslashStaysText) {
    constexpr std::string_view kTexts[] = {
        "\\documentclass{article}\n\\begin{document}Hi\\par\\end{document}",
        "\\title{My paper}\n\\author{X}\\par\\line",
        "\\magnification=1200\n\\par",
        "\\input macros\n\\par\\line",
        "\\par\\noindent Hello \\TeX\\ x\\par\\bigskip\\vskip 3pt",
        "\\footnote{x}",
        "{\\bf Hello} \\par",
        "{\\sl Hello} \\par",
        "{\\b o}",
        "{\\i}",
        "\\\\server\\share\\file.txt",
        "\\bin\\bash",
        "\\page\\index.html",
        "\\Users\\b\\page\\x.txt",
        "\\d+\\w*",
        "\\b(a|b)\\b",
        "\\b\\w+\\b",
        "\\*\\w+",
        "\\u0041\\u0042",
        "\\n\\t",
        "{\\*}",
        "{}",
        "\\f",
        "\\",
        "{",
    };
    for (const std::string_view text : kTexts)
        EXPECT_EQ(textOf(text), std::string(text) + "\n");
}

TEST(Reader, foreignContentIsNamed) {
    EXPECT_EQ(read("%PDF-1.7").detail, "the content is a PDF");
    EXPECT_EQ(read("<html>").detail, "the content is an HTML page");
    EXPECT_EQ(read("a\0b"sv).detail, "the content is binary data");
}

TEST(Reader, lossesAreCounted) {
    const Extraction extraction =
        read("{\\rtf1{\\fonttbl{\\f1\\fcharset128 M;}}\\f1 a\\'93{}\\u57344?\\u55357?{\\pict");
    EXPECT_EQ(extraction.text, "a\uFFFD\uFFFD\uFFFD\n");
    EXPECT_EQ(extraction.loss.charactersWithoutUnicode, 3U);
    EXPECT_EQ(extraction.loss.charactersDecoded, 5U);
    EXPECT_EQ(extraction.loss.partsSkipped, 1U);
}

TEST(Reader, unreadableListTextThatTheTablesReplaceIsNoLoss) {
    const Extraction extraction =
        read("{\\rtf1{\\*\\listtable{\\list{\\listlevel\\levelnfc23{\\leveltext\\'01-;}}\\listid1}}"
             "{\\*\\listoverridetable{\\listoverride\\listid1\\ls1}}{\\listtext\\u57344?\\tab}\\ls1 a\\u57344?}");
    EXPECT_EQ(extraction.text, "-\ta\uFFFD\n");
    EXPECT_EQ(extraction.loss.charactersWithoutUnicode, 1U);
}

TEST(Reader, hiddenTextLosesNothing) {
    EXPECT_EQ(read("{\\rtf1 a{\\v\\u57344?\\'81}}").loss.charactersWithoutUnicode, 0U);
}

TEST(Reader, noByteOrderMarkBeginsTheText) {
    EXPECT_EQ(textOf("{\\rtf1 \\u-257?a\\u-257?}"), "a\uFEFF\n");
    // A mark that is cut out of an instruction or a box can become the first character.
    EXPECT_EQ(textOf("{\\rtf1{\\field{\\*\\fldinst EQ \\\\o\\\\ad(\\u-257?\\u-257?a)}{\\fldrslt b}}}"), "a\n");
    EXPECT_EQ(textOf("{\\rtf1{\\field{\\*\\fldinst EQ \\\\o\\\\ad(\\u-257?)}{\\fldrslt b}}}"), "");
}

TEST(Reader, everyPrintableCharacterIsTextWhereverItStands) {
    for (char c = 0x20; c < 0x7F; ++c) {
        if (isSyntax(c)) continue;
        for (std::size_t before = 0; before < 70; ++before) {
            const std::string line = std::string(before, 'x') + c + std::string(70, 'y') + c + c;
            EXPECT_EQ(textOf("{\\rtf1 " + line + "\\tab " + line + "}"), line + "\t" + line + "\n") << before;
        }
    }
}

TEST(Reader, halvesOfASurrogatePairBelongToTheTextThatTheyAreIn) {
    // U+1F600 is \u-10179\u-8704, U+1D11E is \u-10188\u-8930.
    Options withFooters;
    withFooters.headersFooters = HeadersFooters::on;
    EXPECT_EQ(read("{\\rtf1 a\\u-10179?{\\footer f\\u-10188?}\\u-8704? b}", withFooters).text,
              "a\U0001F600 b\nf\uFFFD\n");
    EXPECT_EQ(textOf("{\\rtf1 a\\u-10179?{\\shptxt t\\u-10188?}\\u-8704? b}"), "a\U0001F600 b\nt\uFFFD\n");
    EXPECT_EQ(read("{\\rtf1 a{\\footer f\\u-10179?}\\u-8704? b}", withFooters).text, "a\uFFFD b\nf\uFFFD\n");
}

TEST(Reader, charactersAreCountedByCodePoint) {
    for (const std::size_t count : {std::size_t{1}, std::size_t{63}, std::size_t{64}, std::size_t{5000}}) {
        const Extraction extraction = read("{\\rtf1 " + repeated("a\\u233?\\u8364?\\u-10179?\\u-8704?", count) + "}");
        EXPECT_EQ(extraction.loss.charactersDecoded, 4 * count + 1) << count;
    }
}

TEST(Reader, groupsDeeperThanTheLimitAreCountedAndTheirTextTaken) {
    const std::size_t depth = kMaxDepth + 5000;
    const std::string document =
        "{\\rtf1 a" + repeated("{", depth) + "deep{\\pict 00}\\'e9{\\footnote n}" + repeated("}", depth) + " end}";
    EXPECT_EQ(read(document).reason, Reason::ok);
    EXPECT_EQ(textOf(document), "adeepén end\n");
}

TEST(Reader, formattingInsideTheLimitDoesNotLeakOut) {
    const std::string document =
        "{\\rtf1 a" + repeated("{", kMaxDepth - 1) + "{{\\v hidden}" + repeated("}", kMaxDepth - 1) + "} shown}";
    EXPECT_EQ(textOf(document), "a shown\n");
}

TEST(Reader, destinationsNestedBeyondTheLimitAreText) {
    const std::size_t count = kMaxFrames + 10;
    const std::string text = textOf("{\\rtf1 a" + repeated("{\\footnote x", count) + repeated("}", count) + "}");
    EXPECT_EQ(static_cast<std::size_t>(std::count(text.begin(), text.end(), 'x')), count);
}

TEST(Reader, computedLabelsStopAtTheirBudget) {
    const std::string table = "{\\*\\listtable{\\list{\\listlevel{\\leveltext\\'40" + std::string(64, 'x') +
                              ";}}\\listid1}}{\\*\\listoverridetable{\\listoverride\\listid1\\ls1}}";
    const std::string document = "{\\rtf1" + table + "\\ls1 " + repeated("\\\n", 20000) + "end}";
    const Extraction extraction = read(document);
    ASSERT_TRUE(extraction.text.has_value());
    EXPECT_LT(extraction.text->size(), document.size() * (kLabelBytesPerInputByte + 1));
    EXPECT_EQ(extraction.loss.partsSkipped, 1U);
}

TEST(Reader, unclosedTablesAreLeftAtTheBodyOnlySoOften) {
    const std::string_view unclosed = "{\\stylesheet x\\pard y";
    EXPECT_EQ(textOf("{\\rtf1 " + repeated(unclosed, 3)), "yyy\n");
    const std::string text = textOf("{\\rtf1 " + repeated(unclosed, 100));
    EXPECT_EQ(text.size(), static_cast<std::size_t>(kMaxRecoveries) + 1);
}

/// Each piece consists of whole tokens, so line ends may be between any two of them.
const std::vector<std::string_view> kPieces = {
    "abc",
    "x y",
    "\\'e9",
    "\\'93",
    "\\'fa",
    "\\u233?",
    "\\u-10179?",
    "\\u-8704?",
    "\\par ",
    "\\tab ",
    "\\f1 ",
    "\\f0 ",
    "\\f2 ",
    "\\b ",
    "\\plain ",
    "{\\b x}",
    "{\\v h}",
    "\\emdash ",
    "\\~",
    "\\cell ",
    "\\row ",
    "\\pard ",
    "\\ls1 ",
    "{\\pict 00}",
    "{\\*\\q z}",
    "{\\footnote n}",
    "\\line ",
    "\\'0d\\'0a",
    "\\'cf\\'f0",
    "\\{",
    "{\\shptxt box}",
    "{\\upr{a}{\\*\\ud\\u300?}}",
};

constexpr std::string_view kProlog = "{\\rtf1\\ansi{\\fonttbl{\\f0 A;}{\\f1\\fcharset128 M;}{\\f2\\fcharset2 Symbol;}}"
                                     "{\\*\\listtable{\\list{\\listlevel{\\leveltext\\'02\\'00.;}}\\listid1}}"
                                     "{\\*\\listoverridetable{\\listoverride\\listid1\\ls1}}";

std::vector<std::string_view> randomPieces(std::mt19937& random) {
    std::vector<std::string_view> pieces;
    for (int i = 0; i < 40; ++i)
        pieces.push_back(kPieces[random() % kPieces.size()]);
    return pieces;
}

TEST(Reader, lineEndsBetweenTokensChangeNothing) {
    std::mt19937 random(7);
    for (int round = 0; round < 500; ++round) {
        std::string plain(kProlog);
        std::string broken(kProlog);
        for (const std::string_view piece : randomPieces(random)) {
            plain += piece;
            broken += piece;
            broken += "\r\n";
        }
        EXPECT_EQ(textOf(plain + "}"), textOf(broken + "}")) << plain;
    }
}

TEST(Reader, runsSplitIntoGroupsGiveTheSameText) {
    std::mt19937 random(11);
    for (int round = 0; round < 500; ++round) {
        std::string whole = std::string(kProlog) + "\\ls1 ";
        std::string split = whole;
        for (int run = 0; run < 20; ++run) {
            const bool endsParagraph = random() % 4 == 0;
            const std::string words(1 + random() % 40, static_cast<char>('a' + random() % 26));
            const std::size_t at = random() % words.size();
            whole += words + (endsParagraph ? "\\par " : "");
            split += "{\\b " + words.substr(0, at) + "}{{\\i\\insrsid5 " + words.substr(at) + "}}";
            split += endsParagraph ? "\\par " : "";
        }
        EXPECT_EQ(textOf(whole + "}"), textOf(split + "}"));
    }
}

TEST(Reader, everyTruncationGivesWellFormedText) {
    std::string document(kProlog);
    for (const std::string_view piece : kPieces)
        document += piece;
    document += "}";
    for (std::size_t length = 1; length < document.size(); ++length) {
        const Extraction extraction = read(std::string_view(document).substr(0, length));
        if (extraction.text) {
            EXPECT_TRUE(text::isValidUtf8(*extraction.text)) << length;
        } else {
            EXPECT_EQ(extraction.reason, Reason::damaged) << length;
        }
    }
}

} // namespace
} // namespace quillow::rtf
