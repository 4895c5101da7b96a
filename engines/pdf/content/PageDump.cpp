#include "engines/pdf/content/PageDump.h"

#include "text/Utf8.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace quillow::pdf {

namespace {

/// With at most two decimals, without zeros at the end and without the sign of zero.
std::string shown(double value) {
    constexpr double kLargest = 1e9;
    if (!(std::abs(value) < kLargest)) return "?";
    std::array<char, 32> digits{};
    static_cast<void>(std::snprintf(digits.data(), digits.size(), "%.2f", value));
    std::string text = digits.data();
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string shown(Point p) {
    return shown(p.x) + ',' + shown(p.y);
}

std::string directionOf(Point direction) {
    const std::string vector = shown(direction);
    if (vector == "1,0") return "";
    if (vector == "0,1") return " up";
    if (vector == "0,-1") return " down";
    if (vector == "-1,0") return " left";
    return " towards " + vector;
}

std::string flagsOf(std::uint8_t flags) {
    constexpr std::array<std::string_view, 5> kNames{"invisible", "running", "actual", "vertical", "annotation"};
    std::string names;
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        if ((flags >> i & 1) == 0) continue;
        names += names.empty() ? ' ' : ',';
        names += kNames[i];
    }
    return names;
}

bool isPlain(char32_t c) {
    return c >= ' ' && c != 0x7F && !(c >= 0x80 && c < 0xA0) && c != 0xA0 && c != 0xAD && c != '"' && c != '\\';
}

/// In quotation marks; what cannot be seen is written as \{hexadecimal}.
std::string quoted(std::u32string_view text) {
    std::string out = "\"";
    for (const char32_t c : text) {
        if (isPlain(c)) {
            text::appendUtf8(out, c);
        } else {
            std::array<char, 16> code{};
            static_cast<void>(std::snprintf(code.data(), code.size(), "\\{%X}", static_cast<unsigned>(c)));
            out += code.data();
        }
    }
    return out + '"';
}

std::string lineOf(const Page& page, const Run& run) {
    std::string line =
        shown(run.origin) + directionOf(run.direction) + " f" + std::to_string(run.font) + ' ' + shown(run.fontSize);
    if (run.markedContent != Run::kNoMark) line += " #" + std::to_string(run.markedContent);
    return line + flagsOf(run.flags) + ' ' + quoted(page.textOf(run)) + '\n';
}

std::string lineOf(const Page& page, const Glyph& glyph) {
    return "    " + shown(glyph.offset) + " +" + shown(glyph.width) + ' ' + quoted(page.textOf(glyph)) + '\n';
}

std::string lineOf(const Rule& rule) {
    return std::string(rule.kind == Rule::Kind::line ? "line " : "rectangle ") +
           shown(Point{rule.box.left, rule.box.bottom}) + ' ' + shown(Point{rule.box.right, rule.box.top}) + '\n';
}

} // namespace

std::string dumpOf(const Page& page, DumpDetail detail) {
    std::string out = "page " + shown(page.cropBox.width()) + 'x' + shown(page.cropBox.height()) + '\n';
    for (const Run& run : page.runs) {
        out += lineOf(page, run);
        if (detail != DumpDetail::glyphs) continue;
        for (std::size_t i = 0; i < run.glyphCount; ++i)
            out += lineOf(page, page.glyphs[run.firstGlyph + i]);
    }
    for (const Rule& rule : page.rules)
        out += lineOf(rule);
    return out;
}

} // namespace quillow::pdf
