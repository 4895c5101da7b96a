#include "engines/pdf/filters/RunLength.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace quillow::pdf {

namespace {

using text::ByteBuffer;

constexpr std::size_t kEndOfData = 128;

void appendRepeated(char byte, std::size_t count, ByteBuffer& out) {
    const std::size_t before = out.size();
    out.resize(before + count);
    if (count > 0) std::memset(out.data() + before, byte, count);
}

} // namespace

Decoding decodeRunLength(std::string_view encoded, std::size_t limit, ByteBuffer& out) {
    std::size_t left = limit;
    while (!encoded.empty()) {
        const std::size_t length = static_cast<std::uint8_t>(encoded.front());
        encoded.remove_prefix(1);
        if (length == kEndOfData) return Decoding::complete;
        const bool isCopied = length < kEndOfData;
        const std::size_t count = isCopied ? length + 1 : 257 - length;
        const std::string_view source = encoded.substr(0, isCopied ? count : 1);
        encoded.remove_prefix(source.size());
        const std::size_t written = std::min(isCopied ? source.size() : count, left);
        left -= written;
        if (isCopied)
            out.append(source.substr(0, written));
        else if (!source.empty())
            appendRepeated(source.front(), written, out);
        if (source.size() < (isCopied ? count : 1)) return Decoding::cut;
        if (written < count) return Decoding::tooLong;
    }
    return Decoding::complete;
}

} // namespace quillow::pdf
