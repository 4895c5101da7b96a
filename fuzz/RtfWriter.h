// A small RTF writer for round-trip tests: writes a text in one of the many ways that mean the same.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace quillow::fuzz {

/// True for characters that a round trip through RTF keeps, TAB and LF included. It keeps none that the text form
/// excludes.
[[nodiscard]] constexpr bool survivesRtf(char32_t c) {
    if (c == '\t' || c == '\n') return true;
    if (c < 0x20 || (c >= 0x7F && c < 0xA0) || c >= 0xF0000) return false;
    if (c >= 0xD800 && c <= 0xF8FF) return false;                             // surrogates, private use
    if ((c >= 0xFDD0 && c <= 0xFDEF) || (c & 0xFFFE) == 0xFFFE) return false; // noncharacters
    return c != 0x2028 && c != 0x2029 && c != 0xFEFF && c != 0xFFFD;
}

/// `Choose` is called with a number of ways and returns the index of the one to take.
template <typename Choose>
class RtfWriter {
public:
    explicit RtfWriter(Choose choose)
        : choose_(std::move(choose)) {}

    /// The RTF document of a text. survivesRtf() must be true for all its characters.
    [[nodiscard]] std::string write(std::u32string_view text) {
        out_ = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss A;}{\\f1\\froman\\fcharset0 B;}}\\pard ";
        depth_ = 0;
        for (const char32_t c : text) {
            writeSomethingWithoutText();
            writeCharacter(c);
        }
        out_.append(depth_ + 1, '}');
        return std::move(out_);
    }

private:
    void writeSomethingWithoutText() {
        constexpr unsigned kKinds = 24; // most of them write nothing
        switch (choose_(kKinds)) {
        case 0: out_ += "\r\n"; break;
        case 1: out_ += "\n"; break;
        case 2: open("{"); break;
        case 3: open("{\\b "); break;
        case 4: open("{\\rtlch\\fcs1 \\af0 \\ltrch\\fcs0 \\f1\\fs24\\insrsid1000 "); break;
        case 5:
        case 6:
            if (depth_ == 0) break;
            out_ += '}';
            --depth_;
            break;
        case 7: out_ += "\\i0\\fs20\\cf1 "; break;
        case 8: out_ += "{\\*\\unheard of{\\par}\\'}}"; break;
        case 9: out_ += "{\\v hidden}"; break;
        case 10: out_ += "{\\pict\\wmetafile8 00ff\r\n7d}"; break;
        case 11: out_ += "{\\pict\\bin3 {}}}"; break;
        case 12: out_ += "\\:"; break;
        default: break;
        }
    }

    void open(std::string_view opening) {
        out_ += opening;
        ++depth_;
    }

    void writeCharacter(char32_t c) {
        if (c == '\n') {
            constexpr std::string_view kBreaks[] = {"\\par ", "\\\n", "\\line ", "\\'0a", "\\'0d\\'0a", "\\par\r\n"};
            out_ += kBreaks[choose_(6)];
        } else if (c == '\t') {
            constexpr std::string_view kTabs[] = {"\\tab ", "\t", "\\'09"};
            out_ += kTabs[choose_(3)];
        } else if (c < 0x7F && choose_(8) != 0) {
            if (c == '\\' || c == '{' || c == '}') out_ += '\\';
            out_ += static_cast<char>(c);
        } else if ((c < 0x7F || (c >= 0xA0 && c <= 0xFF)) && choose_(2) == 0) {
            writeHex(static_cast<std::uint8_t>(c));
        } else if (c == 0xA0 && choose_(2) == 0) {
            out_ += "\\~";
        } else if (c < 0x10000) {
            writeUnit(c);
        } else if (choose_(2) == 0) {
            out_ += "\\u" + std::to_string(static_cast<std::uint32_t>(c)) + " ?";
        } else {
            writeUnit(0xD800 + ((c - 0x10000) >> 10));
            writeUnit(0xDC00 + ((c - 0x10000) & 0x3FF));
        }
    }

    void writeHex(std::uint8_t byte) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        out_ += "\\'";
        out_ += kDigits[byte >> 4];
        out_ += kDigits[byte & 15];
    }

    /// Writes one \u with a fallback for readers without Unicode.
    void writeUnit(char32_t unit) {
        const std::int32_t number = static_cast<std::int32_t>(unit) - (unit >= 0x8000 && choose_(2) == 0 ? 0x10000 : 0);
        const std::string word = "\\u" + std::to_string(number);
        switch (choose_(6)) {
        case 0: out_ += word + "?"; break;
        case 1: out_ += word + " ?"; break;
        case 2: out_ += word + "\\'3f"; break;
        case 3: out_ += "{\\uc0" + word + " }"; break;
        case 4: out_ += "{\\uc2" + word + " ab}"; break;
        default: out_ += word + "\r\n?"; break;
        }
    }

    Choose choose_;
    std::string out_;
    std::size_t depth_ = 0;
};

} // namespace quillow::fuzz
