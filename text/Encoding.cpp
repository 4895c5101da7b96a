#include "text/Encoding.h"

#include "text/DecoderOutput.h"
#include "text/EastAsianDecoders.h"
#include "text/EncodingTables.h"

#include <array>

namespace quillow::text {

namespace {

constexpr std::array<std::string_view, 40> kNames = {
    "UTF-8",          "IBM866",       "ISO-8859-2",   "ISO-8859-3",   "ISO-8859-4",     "ISO-8859-5",   "ISO-8859-6",
    "ISO-8859-7",     "ISO-8859-8",   "ISO-8859-8-I", "ISO-8859-10",  "ISO-8859-13",    "ISO-8859-14",  "ISO-8859-15",
    "ISO-8859-16",    "KOI8-R",       "KOI8-U",       "macintosh",    "windows-874",    "windows-1250", "windows-1251",
    "windows-1252",   "windows-1253", "windows-1254", "windows-1255", "windows-1256",   "windows-1257", "windows-1258",
    "x-mac-cyrillic", "GBK",          "gb18030",      "Big5",         "EUC-JP",         "ISO-2022-JP",  "Shift_JIS",
    "EUC-KR",         "replacement",  "UTF-16BE",     "UTF-16LE",     "x-user-defined",
};
static_assert(static_cast<std::size_t>(Encoding::xUserDefined) + 1 == kNames.size());

// Section 9.1.1. A table with the UTF-8 of every byte, built for each call, avoids a branch per byte.
void decodeSingleByte(std::string_view bytes, const std::uint16_t* index, DecoderOutput& out) {
    struct Sequence {
        std::array<char, 3> utf8{};
        std::uint8_t lengthAndError = 0; ///< length; kError is set if the index has no character for the byte
    };
    constexpr std::uint8_t kError = 0x80;
    std::array<Sequence, 0x100> sequences;
    for (std::size_t byte = 0; byte < sequences.size(); ++byte) {
        const char32_t codePoint = byte < 0x80 ? static_cast<char32_t>(byte) : index[byte - 0x80];
        std::string utf8;
        appendUtf8(utf8, codePoint == 0 && byte != 0 ? kReplacementCharacter : codePoint);
        utf8.copy(sequences[byte].utf8.data(), utf8.size());
        sequences[byte].lengthAndError = static_cast<std::uint8_t>(utf8.size());
        if (codePoint == 0 && byte != 0) sequences[byte].lengthAndError |= kError;
    }
    constexpr std::size_t kLongAsciiRun = 32;
    constexpr std::size_t kStep = 512;
    static_assert(kStep * 3 + sizeof(Sequence) <= DecoderOutput::kMostRoom);
    while (!bytes.empty()) {
        const std::size_t ascii = asciiPrefixLength(bytes);
        if (ascii >= kLongAsciiRun || ascii == bytes.size()) {
            out.putUtf8(bytes.substr(0, ascii));
            bytes.remove_prefix(ascii);
            continue;
        }
        const std::string_view step = bytes.substr(0, kStep);
        char* const room = out.room(kStep * 3 + sizeof(Sequence));
        char* at = room;
        std::size_t errors = 0;
        for (const char byte : step) {
            const Sequence& sequence = sequences[static_cast<std::uint8_t>(byte)];
            std::memcpy(at, &sequence, sizeof sequence);
            at += sequence.lengthAndError & ~kError;
            errors += sequence.lengthAndError / kError;
        }
        out.commit(static_cast<std::size_t>(at - room), errors);
        bytes.remove_prefix(step.size());
    }
}

// Section 8.1.1: each maximal subpart of an ill-formed sequence is one error.
void decodeUtf8Text(std::string_view bytes, DecoderOutput& out) {
    while (true) {
        const std::size_t valid = validUtf8PrefixLength(bytes);
        out.putUtf8(bytes.substr(0, valid));
        bytes.remove_prefix(valid);
        if (bytes.empty()) return;
        out.putError();
        bytes.remove_prefix(decodeUtf8(bytes).length);
    }
}

// Section 14.2.1, the shared UTF-16 decoder.
template <std::size_t HighByte>
void decodeUtf16(std::string_view bytes, DecoderOutput& out) {
    const auto unitAt = [bytes](std::size_t at) {
        const auto high = static_cast<std::uint8_t>(bytes[at + HighByte]);
        const auto low = static_cast<std::uint8_t>(bytes[at + 1 - HighByte]);
        return static_cast<char32_t>(high << 8 | low);
    };
    std::size_t at = 0;
    while (bytes.size() - at >= 2) {
        const char32_t unit = unitAt(at);
        at += 2;
        if (unit < 0xD800 || unit > 0xDFFF) {
            out.put(unit);
        } else if (unit > 0xDBFF) {
            out.putError();
        } else if (bytes.size() - at < 2) {
            out.putError(); // a lead surrogate, with or without half a code unit after it, at the end: one error
            return;
        } else if (const char32_t trail = unitAt(at); trail >= 0xDC00 && trail <= 0xDFFF) {
            out.put(0x10000 + ((unit - 0xD800) << 10) + (trail - 0xDC00));
            at += 2;
        } else {
            out.putError();
        }
    }
    if (at < bytes.size()) out.putError();
}

// Section 14.5.1, the x-user-defined decoder.
void decodeUserDefined(std::string_view bytes, DecoderOutput& out) {
    for (const char byte : bytes) {
        const auto value = static_cast<std::uint8_t>(byte);
        out.put(value < 0x80 ? char32_t{value} : 0xF780 + (value - 0x80U));
    }
}

} // namespace

const std::uint16_t* singleByteIndex(Encoding encoding) {
    auto row = static_cast<std::size_t>(encoding) - static_cast<std::size_t>(Encoding::ibm866);
    if (encoding >= Encoding::iso8859_8i) --row;
    return kSingleByteIndexes[row];
}

std::string_view encodingName(Encoding encoding) {
    return kNames[static_cast<std::size_t>(encoding)];
}

std::optional<ByteOrderMark> byteOrderMark(std::string_view bytes) {
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") return ByteOrderMark{Encoding::utf8, 3};
    if (bytes.substr(0, 2) == "\xFE\xFF") return ByteOrderMark{Encoding::utf16be, 2};
    if (bytes.substr(0, 2) == "\xFF\xFE") return ByteOrderMark{Encoding::utf16le, 2};
    return std::nullopt;
}

DecodedText decode(std::string_view bytes, Encoding encoding) {
    DecodedText text;
    // Most texts fit into this. Reserved bytes that are never used cost no memory.
    text.utf8.reserve(2 * bytes.size());
    {
        DecoderOutput out(text);
        switch (encoding) {
        case Encoding::utf8: decodeUtf8Text(bytes, out); break;
        case Encoding::gbk:
        case Encoding::gb18030: decodeGb18030(bytes, out); break;
        case Encoding::big5: decodeBig5(bytes, out); break;
        case Encoding::eucJp: decodeEucJp(bytes, out); break;
        case Encoding::iso2022Jp: decodeIso2022Jp(bytes, out); break;
        case Encoding::shiftJis: decodeShiftJis(bytes, out); break;
        case Encoding::eucKr: decodeEucKr(bytes, out); break;
        case Encoding::replacement:
            if (!bytes.empty()) out.putError(); // section 14.1.1: the whole input is one error
            break;
        case Encoding::utf16be: decodeUtf16<0>(bytes, out); break;
        case Encoding::utf16le: decodeUtf16<1>(bytes, out); break;
        case Encoding::xUserDefined: decodeUserDefined(bytes, out); break;
        default: decodeSingleByte(bytes, singleByteIndex(encoding), out); break;
        }
    }
    return text;
}

} // namespace quillow::text
