#include "cli/RequestServer.h"

#include "cli/Input.h"
#include "cli/Messages.h"
#include "cli/Result.h"
#include "engines/ContentSniffer.h"
#include "posix/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <span>
#include <string_view>
#include <vector>

namespace quillow::cli {

namespace {

constexpr std::size_t kSizesLength = 12; ///< four bytes for the first part of a message, eight for the second
constexpr std::size_t kFirstRead = std::size_t{64} << 10;
constexpr std::string_view kEndsEarly = "the input ends in the middle of a request";

std::uint64_t numberOf(std::span<const unsigned char> bigEndian) {
    std::uint64_t number = 0;
    for (const unsigned char byte : bigEndian)
        number = number << 8 | byte;
    return number;
}

void appendNumber(std::string& out, std::uint64_t number, unsigned bytes) {
    for (unsigned i = bytes; i-- > 0;)
        out.push_back(static_cast<char>(number >> (8 * i) & 0xFF));
}

/// The number of bytes read; less than the view's size only at the end of the input.
std::size_t readInto(int input, std::span<std::byte> view) {
    std::size_t size = 0;
    while (size < view.size()) {
        const ssize_t got = ::read(input, view.data() + size, view.size() - size);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        size += static_cast<std::size_t>(got);
    }
    return size;
}

void appendQuoted(std::string& out, std::string_view text) {
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    out.push_back('"');
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20) {
            out += "\\u00";
            out.push_back(kHexDigits[byte >> 4]);
            out.push_back(kHexDigits[byte & 0xF]);
            continue;
        }
        if (c == '"' || c == '\\') out.push_back('\\');
        out.push_back(c);
    }
    out.push_back('"');
}

/// The JSON object of an answer (RFC 8259).
std::string describe(const Extraction& extraction) {
    std::string object = "{\"reason\": ";
    appendQuoted(object, reasonName(extraction.reason));
    object += ", \"detail\": ";
    appendQuoted(object, extraction.detail);
    object += extraction.text ? ", \"has_text\": true" : ", \"has_text\": false";
    const auto append = [&object](std::string_view name, std::uint64_t value) {
        object += ", ";
        appendQuoted(object, name);
        object += ": " + std::to_string(value);
    };
    append("pages", extraction.pages);
    append("characters_decoded", extraction.loss.charactersDecoded);
    append("characters_without_unicode", extraction.loss.charactersWithoutUnicode);
    append("pages_without_text", extraction.loss.pagesWithoutText);
    append("parts_skipped", extraction.loss.partsSkipped);
    return object + "}";
}

std::string answerOf(const Extraction& extraction) {
    const std::string object = describe(extraction);
    std::string answer;
    answer.reserve(kSizesLength + object.size() + (extraction.text ? extraction.text->size() : 0));
    appendNumber(answer, object.size(), 4);
    appendNumber(answer, extraction.text ? extraction.text->size() : 0, 8);
    answer += object;
    if (extraction.text) answer += *extraction.text;
    return answer;
}

/// The options of a request are separated by NUL bytes.
std::vector<std::string_view> wordsOf(std::string_view options) {
    std::vector<std::string_view> words;
    while (!options.empty()) {
        const std::size_t end = std::min(options.find('\0'), options.size());
        words.push_back(options.substr(0, end));
        options.remove_prefix(std::min(end + 1, options.size()));
    }
    return words;
}

class RequestServer {
public:
    RequestServer(int input, int output, const Arguments& arguments, DocumentReader& reader)
        : input_(input)
        , output_(output)
        , arguments_(arguments)
        , reader_(reader) {}

    std::optional<std::string> serve() {
        for (;;) {
            std::array<unsigned char, kSizesLength> sizes{};
            const std::size_t got = readInto(input_, std::as_writable_bytes(std::span(sizes)));
            if (got == 0) return std::nullopt;
            if (got < sizes.size()) return std::string(kEndsEarly);
            const auto optionsSize = static_cast<std::size_t>(numberOf(std::span(sizes).first(4)));
            if (optionsSize > kMaximumRequestOptions) return "the options of a request are too long";
            std::string options(optionsSize, '\0');
            if (readInto(input_, std::as_writable_bytes(std::span(options))) < optionsSize)
                return std::string(kEndsEarly);
            const auto extraction = answer(options, numberOf(std::span(sizes).subspan(4)));
            if (!extraction) return std::string(kEndsEarly);
            if (!writeAll(output_, answerOf(*extraction))) return "an answer cannot be written: " + lastError();
        }
    }

private:
    /// std::nullopt if the input ends before the document does.
    std::optional<Extraction> answer(std::string_view options, std::uint64_t size) {
        if (size > kMaximumInput) {
            if (!skip(size)) return std::nullopt;
            return failed(Reason::tooLarge, "over " + std::to_string(kMaximumInput >> 20) + " MiB");
        }
        Bytes bytes;
        // Memory grows with what arrives: the size is only a promise.
        while (bytes.view().size() < size) {
            const std::size_t left = static_cast<std::size_t>(size) - bytes.view().size();
            if (!bytes.grow(bytes.view().size() + std::min(left, std::max(kFirstRead, bytes.view().size())))) {
                if (!skip(left)) return std::nullopt;
                return failed(Reason::outOfMemory, "no memory to read it");
            }
            const std::span<std::byte> room = bytes.room();
            const std::size_t got = readInto(input_, room);
            bytes.added(got);
            if (got < room.size()) return std::nullopt;
        }
        return extraction(options, bytes);
    }

    Extraction extraction(std::string_view options, Bytes& bytes) {
        Arguments arguments = arguments_;
        if (const std::string mistake = addDocumentOptions(arguments, wordsOf(options)); !mistake.empty())
            return failed(Reason::unreadable, printable(mistake));
        const auto kind = arguments.type ? arguments.type : sniffDocumentKind(bytes.view());
        if (!kind) return failed(Reason::wrongType, "the content is not that of an RTF, HTML or PDF document");
        try {
            Extraction extraction = reader_.read(bytes, {*kind, arguments.options});
            if (!hasText(extraction.reason)) extraction.text.reset();
            return extraction;
        } catch (const std::bad_alloc&) {
            return failed(Reason::outOfMemory, {});
        }
    }

    bool skip(std::uint64_t size) {
        std::vector<std::byte> piece(kFirstRead);
        while (size > 0) {
            const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, piece.size()));
            if (readInto(input_, std::span(piece).first(wanted)) < wanted) return false;
            size -= wanted;
        }
        return true;
    }

    const int input_;
    const int output_;
    const Arguments& arguments_;
    DocumentReader& reader_;
};

} // namespace

std::optional<std::string> serveRequests(int input, int output, const Arguments& arguments, DocumentReader& reader) {
    return RequestServer(input, output, arguments, reader).serve();
}

} // namespace quillow::cli
