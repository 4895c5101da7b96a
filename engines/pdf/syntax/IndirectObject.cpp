#include "engines/pdf/syntax/IndirectObject.h"

#include "engines/pdf/syntax/Lexer.h"

#include <algorithm>

namespace quillow::pdf {
namespace {

constexpr std::string_view kStream = "stream";
constexpr std::string_view kEndStream = "endstream";
constexpr std::string_view kEndObject = "endobj";
constexpr std::size_t kMostSpace = 32; ///< white space between the data of a stream and the keyword that ends it

bool startsWith(std::string_view bytes, std::string_view word) {
    return bytes.substr(0, word.size()) == word;
}

/// The line end before the keyword is not part of the data.
std::size_t withoutLineEnd(std::string_view file, std::size_t data, std::size_t end) {
    if (end > data && file[end - 1] == '\n') --end;
    if (end > data && file[end - 1] == '\r') --end;
    return end;
}

struct Extent {
    std::size_t end = 0;
    bool isWhole = false;
};

/// The end of data whose length is not known.
Extent searchEnd(std::string_view file, std::size_t data, const Keywords& keywords) {
    const std::optional<std::size_t> next = keywords.firstAfter(data);
    if (!next) return {file.size(), false};
    const bool isEnd = startsWith(file.substr(*next), kEndStream) || startsWith(file.substr(*next), kEndObject);
    return {withoutLineEnd(file, data, *next), isEnd};
}

Extent extentOf(std::string_view file, std::size_t data, const Dictionary& dictionary, StreamLengths& lengths) {
    const Object entry = dictionary.find("Length");
    const bool isReference = entry.type() == Object::Type::reference;
    const std::int64_t length = isReference ? lengths.lengthOf(entry.reference()) : entry.integerOr(-1);
    if (endsStream(file, data, length)) return {data + static_cast<std::size_t>(length), true};
    return searchEnd(file, data, lengths.keywords());
}

} // namespace

std::optional<std::size_t> streamDataAt(std::string_view file, std::size_t offset) {
    const char* const end = file.data() + file.size();
    const char* p = skipWhiteSpace(file.data() + offset, end);
    if (!startsWith({p, static_cast<std::size_t>(end - p)}, kStream)) return std::nullopt;
    p += kStream.size();
    // Blanks may follow the keyword. CR LF or LF ends the line; some producers write CR alone.
    const char* lineEnd = std::find_if(p, end, [](char byte) { return byte != ' '; });
    if (lineEnd == end || (*lineEnd != '\r' && *lineEnd != '\n')) return static_cast<std::size_t>(p - file.data());
    if (*lineEnd == '\r' && lineEnd + 1 < end && lineEnd[1] == '\n') ++lineEnd;
    return static_cast<std::size_t>(lineEnd + 1 - file.data());
}

bool endsStream(std::string_view file, std::size_t data, std::int64_t length) {
    if (length < 0 || static_cast<std::uint64_t>(length) > file.size() - data) return false;
    std::size_t at = data + static_cast<std::size_t>(length);
    const std::size_t most = std::min(file.size(), at + kMostSpace);
    while (at < most && isWhiteSpace(file[at]))
        ++at;
    return startsWith(file.substr(at), kEndStream) || startsWith(file.substr(at), kEndObject);
}

IndirectObject readIndirectObject(std::string_view file, const ObjectHeader& header, ObjectParser& parser, Arena& arena,
                                  StreamLengths& lengths, const Decryption* decryption) {
    const char* const end = file.data() + file.size();
    const ParsedObject parsed = parser.parse(file.data() + header.body, end, {decryption, header.id});
    const auto parsedEnd = static_cast<std::size_t>(parsed.end - file.data());
    IndirectObject result{header.id, parsed.object, parsedEnd - header.body};
    if (parsed.object.type() != Object::Type::dictionary) return result;
    const std::optional<std::size_t> data = streamDataAt(file, parsedEnd);
    if (!data) return result;
    const Dictionary dictionary = parsed.object.dictionary();
    const Extent extent = extentOf(file, *data, dictionary, lengths);
    StreamContent& stream = arena.make<StreamContent>(1).front();
    new (&stream) StreamContent{dictionary, file.substr(*data, extent.end - *data), header.id, !extent.isWhole};
    result.object = Object::ofStream(stream);
    return result;
}

} // namespace quillow::pdf
