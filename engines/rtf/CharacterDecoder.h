// Decodes the characters of a document (RTF 1.9.1, "Character Set", "Unicode RTF"): raw bytes, \'hh, pairs, UTF-8, and
// \u with its fallback. It reads bytes and returns code points; which of them become text is up to the caller.
#pragma once

#include "engines/rtf/Charset.h"
#include "engines/rtf/Output.h"
#include "engines/rtf/Scanner.h"

#include <cstdint>
#include <optional>

namespace quillow::rtf {

class CharacterDecoder {
public:
    enum class RawBytes : std::uint8_t { unknown, byFont, utf8 };

    /// Reads at the position of `scanner`, which must outlive the object. `rawBytes` says how raw bytes are encoded, if
    /// that is known already.
    CharacterDecoder(Scanner& scanner, RawBytes rawBytes)
        : scanner_(scanner)
        , rawBytes_(rawBytes) {}

    /// Copies the raw bytes and \'hh that are one printable character each, up to the first that is not. Returns false
    /// if neither a raw byte nor a \' follows.
    bool copyBytes(const Charset& charset, Output& output);
    /// Reads the character that begins with the raw byte or the \'hh at the scanner's position. Returns std::nullopt if
    /// there is neither. Code points below 0x20 are control characters; a carriage return is returned as a line feed,
    /// together with a line feed after it.
    [[nodiscard]] std::optional<char32_t> takeByte(const Charset& charset);

    /// Copies the \uN that are printable characters, each with a fallback of one plain character, up to the first that
    /// is not.
    void copyUnicode(Output& output);
    /// Reads the \uN at the scanner's position. Returns its number, or std::nullopt if there is no \u with a number.
    [[nodiscard]] std::optional<std::int32_t> takeUnicode() {
        if (scanner_.peek(0) != '\\' || scanner_.peek(1) != 'u') return std::nullopt;
        return readUnicode();
    }
    /// Skips the text after \u that is meant for readers without Unicode. `length` is that of \uc: a byte, a \'hh (even
    /// without valid digits), a control word, a control symbol, and \bin with its data count as one each. A brace, an
    /// escaped line end or a word that carries the structure of the text ends it early. Returns cutShort if the file
    /// ends inside the data of \bin.
    Scanner::Completeness skipFallback(unsigned length) {
        const bool isUsual = length == 1 && !scanner_.atEnd() && isPlainText(scanner_.current());
        if (!isUsual) return skipAnyFallback(length);
        scanner_.advance();
        return Scanner::Completeness::whole;
    }

    /// True if all bytes over 0x7F in the file, except binary data, are well-formed UTF-8. Raw bytes are then UTF-8,
    /// whatever the fonts say. Computed at the first call.
    [[nodiscard]] bool rawIsUtf8();
    /// The double-byte code page of raw bytes in a charset, or nullptr.
    [[nodiscard]] const text::CodePage* rawPairs(const Charset& charset);

    /// \u words copied and bytes scanned so far (see Interpreter::work()).
    [[nodiscard]] std::uint64_t work() const { return work_; }

private:
    [[nodiscard]] std::optional<std::int32_t> readUnicode();
    Scanner::Completeness skipAnyFallback(unsigned length);
    void copyHex(const Charset& charset, Output& output);
    [[nodiscard]] char32_t takePair(const text::CodePage& pairs, std::uint8_t lead, bool isRaw);
    [[nodiscard]] char32_t takeUtf8Sequence(std::uint8_t lead);
    [[nodiscard]] char32_t takeRawUtf8();
    [[nodiscard]] bool scanRawBytes();

    Scanner& scanner_;
    RawBytes rawBytes_;
    std::uint64_t work_ = 0;
};

/// The code point that \uN writes; 0, which writes nothing, for \u0. Negative numbers are 16-bit values (RTF 1.9.1,
/// "Unicode RTF"). The result may be a surrogate or beyond the last code point.
[[nodiscard]] constexpr char32_t codePointOfUnicode(std::int32_t number) {
    constexpr std::int32_t kWraps = 0x10000;
    if (number < -kWraps) return text::kReplacementCharacter;
    return static_cast<char32_t>(number < 0 ? number + kWraps : number);
}

} // namespace quillow::rtf
