#include "engines/rtf/Reader.h"

#include "engines/rtf/Bytes.h"
#include "engines/rtf/Header.h"
#include "engines/rtf/Interpreter.h"
#include "text/CodePage.h"
#include "text/TextSink.h"
#include "text/Utf8.h"

#include <algorithm>
#include <utility>

namespace quillow::rtf {

namespace {

/// Reads a file without RTF as plain text: UTF-8 if it is well-formed, else windows-1252, with the line ends of
/// any system.
std::string readPlainText(std::string_view bytes, const Options& options, LossAccount& loss) {
    text::TextSink sink(options.pageMarks == PageMarks::formFeed ? text::TextSink::FormFeeds::keep
                                                                 : text::TextSink::FormFeeds::drop);
    const text::CodePage* latin = text::isValidUtf8(bytes) ? nullptr : text::CodePage::forNumber(text::kWindowsLatin);
    sink.reserve(bytes.size() + 1);
    while (!bytes.empty()) {
        const std::size_t special = std::min(bytes.find('\r'), bytes.size());
        const std::string_view run = bytes.substr(0, special);
        if (latin == nullptr) {
            sink.appendUtf8(run);
        } else {
            for (const char byte : run) {
                const char32_t c = latin->decodeByte(static_cast<std::uint8_t>(byte));
                if (c == text::kReplacementCharacter) ++loss.charactersWithoutUnicode;
                sink.append(c);
            }
        }
        bytes.remove_prefix(special);
        if (bytes.empty()) break;
        sink.appendAscii('\n');
        bytes.remove_prefix(bytes.substr(0, 2) == "\r\n" ? 2 : 1);
    }
    return std::move(sink).finish();
}

void giveText(Extraction& extraction, std::string text) {
    extraction.loss.charactersDecoded = countCodePoints(text.data(), text.data() + text.size());
    extraction.reason = text.empty() ? Reason::okEmpty : Reason::ok;
    extraction.text = std::move(text);
}

Extraction readDocument(const Source& source, const Options& options) {
    Interpreter interpreter(source, options);
    interpreter.run();
    std::string text = interpreter.takeText();
    Extraction extraction;
    extraction.loss = interpreter.loss();
    if (interpreter.isTruncated() && text.empty()) {
        extraction.detail = "the file ends before its text";
        return extraction;
    }
    giveText(extraction, std::move(text));
    if (interpreter.isTruncated()) {
        extraction.reason = Reason::partial;
        extraction.detail = "the file ends inside a group";
    }
    return extraction;
}

} // namespace

Extraction readRtf(std::span<const std::byte> bytes, const Options& options, const BytesDone& bytesDone) {
    Source source;
    findDocument({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, source);
    if (source.isUtf8 && bytesDone) bytesDone();
    if (source.isRtf) return readDocument(source, options);
    Extraction extraction;
    giveText(extraction, readPlainText(source.bytes, options, extraction.loss));
    return extraction;
}

} // namespace quillow::rtf
