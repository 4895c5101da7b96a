#include "engines/pdf/filters/Flate.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <new>

namespace quillow::pdf {

namespace {

using text::ByteBuffer;

constexpr std::size_t kZlibHeader = 2;
/// The first guess of a stream's size: content streams are compressed to a fourth or so.
constexpr std::size_t kUsualRatio = 4;
constexpr std::size_t kLeastRoom = 4096;

/// RFC 1950, 2.2: method 8, and a number that 31 divides.
bool hasZlibHeader(std::string_view encoded) {
    if (encoded.size() < kZlibHeader) return false;
    const unsigned first = static_cast<std::uint8_t>(encoded[0]);
    const unsigned second = static_cast<std::uint8_t>(encoded[1]);
    return (first & 0x0F) == 8 && (first << 8 | second) % 31 == 0;
}

/// Raw deflate data, decompressed piece by piece.
class Inflation {
public:
    explicit Inflation(std::string_view deflated)
        : rest_(deflated) {
        constexpr int kRawWithLargestWindow = -15;
        if (inflateInit2(&stream_, kRawWithLargestWindow) != Z_OK) throw std::bad_alloc();
    }
    ~Inflation() { inflateEnd(&stream_); }
    Inflation(const Inflation&) = delete;
    Inflation& operator=(const Inflation&) = delete;

    Decoding run(std::size_t limit, ByteBuffer& out) {
        const std::size_t before = out.size();
        for (;;) {
            const std::size_t room = roomFor(out, out.size() - before, limit);
            const int state = inflateInto(out, room);
            if (state == Z_MEM_ERROR) throw std::bad_alloc();
            if (out.size() - before > limit) {
                out.resize(before + limit);
                return Decoding::tooLong;
            }
            if (state == Z_STREAM_END) return Decoding::complete;
            const bool needsInput = stream_.avail_out > 0 && rest_.empty();
            if ((state != Z_OK && state != Z_BUF_ERROR) || needsInput) return Decoding::cut;
        }
    }

private:
    static constexpr std::size_t kMostAtOnce = std::numeric_limits<uInt>::max();

    /// Bytes to decompress next: twice as many as before, and one beyond the limit, which tells that it was passed.
    static std::size_t roomFor(ByteBuffer& out, std::size_t done, std::size_t limit) {
        const std::size_t room = std::min({std::max(done, kLeastRoom), limit - done, kMostAtOnce - 1}) + 1;
        out.reserve(out.size() + room);
        return room;
    }

    int inflateInto(ByteBuffer& out, std::size_t room) {
        if (stream_.avail_in == 0) takeInput();
        const std::size_t before = out.size();
        stream_.next_out = reinterpret_cast<Bytef*>(out.data() + before);
        stream_.avail_out = static_cast<uInt>(room);
        const int state = inflate(&stream_, Z_NO_FLUSH);
        out.resize(before + room - stream_.avail_out);
        return state;
    }

    void takeInput() {
        const std::size_t size = std::min(rest_.size(), kMostAtOnce);
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(rest_.data())); // zlib does not write to it
        stream_.avail_in = static_cast<uInt>(size);
        rest_.remove_prefix(size);
    }

    z_stream stream_{};
    std::string_view rest_; ///< not yet given to the library
};

Decoding inflateFrom(std::size_t start, std::string_view encoded, std::size_t limit, ByteBuffer& out) {
    if (start > encoded.size()) return Decoding::cut;
    return Inflation(encoded.substr(start)).run(limit, out);
}

/// Decompresses data without a sound header from the start that gives most: behind two bytes that should be a header,
/// at once, or behind a line end of one or two bytes and a header.
Decoding inflateFromBestStart(std::string_view encoded, std::size_t limit, ByteBuffer& out) {
    constexpr std::array<std::size_t, 4> kStarts{kZlibHeader, 0, 1 + kZlibHeader, 2 + kZlibHeader};
    const std::size_t before = out.size();
    std::size_t best = kStarts.front();
    std::size_t most = 0;
    for (const std::size_t start : kStarts) {
        const Decoding decoding = inflateFrom(start, encoded, limit, out);
        const std::size_t size = out.size() - before;
        if (decoding != Decoding::cut && size > 0) return decoding;
        if (size > most) best = start;
        most = std::max(most, size);
        out.resize(before);
    }
    return inflateFrom(best, encoded, limit, out);
}

} // namespace

void FlateDecoder::Free::operator()(libdeflate_decompressor* decompressor) const {
    libdeflate_free_decompressor(decompressor);
}

Decoding FlateDecoder::decode(std::string_view encoded, std::size_t limit, ByteBuffer& out) {
    if (encoded.empty()) return Decoding::complete;
    if (limit == 0) return Decoding::tooLong;
    if (!hasZlibHeader(encoded)) return inflateFromBestStart(encoded, limit, out);
    if (decodeWhole(encoded.substr(kZlibHeader), limit, out)) return Decoding::complete;
    const std::size_t before = out.size();
    const Decoding decoding = inflateFrom(kZlibHeader, encoded, limit, out);
    return out.size() > before ? decoding : inflateFromBestStart(encoded, limit, out);
}

/// Appends the data if it is sound and within the limit; nothing otherwise.
bool FlateDecoder::decodeWhole(std::string_view deflated, std::size_t limit, ByteBuffer& out) {
    if (!decompressor_) decompressor_.reset(libdeflate_alloc_decompressor());
    if (!decompressor_) throw std::bad_alloc();
    const std::size_t before = out.size();
    const std::size_t guess = std::max(kLeastRoom, deflated.size() * kUsualRatio);
    std::size_t room = std::min(limit, std::max(guess, out.capacity() - before));
    for (;;) {
        out.reserve(before + room);
        std::size_t taken = 0; // unlike without it, bytes behind the end are no error
        std::size_t given = 0;
        const libdeflate_result result = libdeflate_deflate_decompress_ex(
            decompressor_.get(), deflated.data(), deflated.size(), out.data() + before, room, &taken, &given);
        if (result == LIBDEFLATE_SUCCESS) {
            out.resize(before + given);
            return true;
        }
        if (result != LIBDEFLATE_INSUFFICIENT_SPACE || room == limit) return false;
        room = room > limit / 2 ? limit : 2 * room;
    }
}

} // namespace quillow::pdf
