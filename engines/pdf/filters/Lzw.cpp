#include "engines/pdf/filters/Lzw.h"

#include <array>
#include <cstdint>

namespace quillow::pdf {

namespace {

using text::ByteBuffer;

constexpr unsigned kClear = 256;
constexpr unsigned kEndOfData = 257;
constexpr unsigned kFirstFree = 258;
constexpr unsigned kTableSize = 4096;
constexpr unsigned kShortestCode = 9;
constexpr unsigned kLongestCode = 12;

/// Codes of 9 to 12 bits, the highest bit first.
class CodeReader {
public:
    explicit CodeReader(std::string_view bytes)
        : bytes_(bytes) {}

    /// The next code; the end-of-data code if there are too few bits left.
    unsigned next(unsigned width) {
        while (count_ < width) {
            if (at_ == bytes_.size()) return kEndOfData;
            bits_ = bits_ << 8 | static_cast<std::uint8_t>(bytes_[at_++]);
            count_ += 8;
        }
        count_ -= width;
        return bits_ >> count_ & ((1U << width) - 1);
    }

private:
    std::string_view bytes_;
    std::size_t at_ = 0;
    std::uint32_t bits_ = 0;
    unsigned count_ = 0;
};

/// The sequence of a new code is the one of the code before it and one byte more. Both were written to the output one
/// after the other, so the table holds places of the output instead of bytes.
class LzwDecoder {
public:
    LzwDecoder(std::string_view encoded, bool earlyChange, std::size_t limit, ByteBuffer& out)
        : codes_(encoded)
        , early_(earlyChange ? 1 : 0)
        , begin_(out.size())
        , limit_(limit)
        , out_(out) {}

    Decoding run() {
        const Decoding decoding = decode();
        if (out_.size() - begin_ <= limit_) return decoding;
        out_.resize(begin_ + limit_);
        return Decoding::tooLong;
    }

private:
    struct Sequence {
        std::size_t begin; ///< in the output
        std::size_t size;
    };

    /// Ends with the sequence that passes the limit.
    Decoding decode() {
        while (out_.size() - begin_ <= limit_) {
            const unsigned code = codes_.next(width_);
            if (code == kEndOfData) return Decoding::complete;
            if (code == kClear) {
                clear();
                continue;
            }
            const std::size_t begin = out_.size();
            if (code < kClear)
                out_.append(static_cast<char>(code));
            else if (!writeSequence(code))
                return Decoding::cut;
            addSequence(begin);
        }
        return Decoding::tooLong;
    }

    void clear() {
        next_ = kFirstFree;
        width_ = kShortestCode;
        previousSize_ = 0;
    }

    /// False if the code means nothing yet.
    bool writeSequence(unsigned code) {
        const bool isNext = code == next_ && previousSize_ > 0;
        if (code >= next_ && !isNext) return false;
        const std::size_t end = out_.size();
        const Sequence sequence = isNext ? Sequence{end - previousSize_, previousSize_ + 1} : table_[code];
        out_.resize(end + sequence.size);
        const char* const from = out_.data() + sequence.begin;
        char* const to = out_.data() + end;
        for (std::size_t i = 0; i < sequence.size; ++i) // byte by byte: the next sequence repeats its own first byte
            to[i] = from[i];
        return true;
    }

    /// Adds to the table the sequence before the one that was just written at `begin`, with the first byte of that.
    void addSequence(std::size_t begin) {
        if (previousSize_ > 0 && next_ < kTableSize) {
            table_[next_++] = {begin - previousSize_, previousSize_ + 1};
            if (next_ + early_ >= 1U << width_ && width_ < kLongestCode) ++width_;
        }
        previousSize_ = out_.size() - begin;
    }

    CodeReader codes_;
    unsigned early_; ///< codes by which the width grows too early
    std::size_t begin_;
    std::size_t limit_;
    ByteBuffer& out_;
    unsigned next_ = kFirstFree;
    unsigned width_ = kShortestCode;
    std::size_t previousSize_ = 0; ///< of the last sequence written; 0 after a clear code
    std::array<Sequence, kTableSize> table_;
};

} // namespace

Decoding decodeLzw(std::string_view encoded, bool earlyChange, std::size_t limit, ByteBuffer& out) {
    return LzwDecoder(encoded, earlyChange, limit, out).run();
}

} // namespace quillow::pdf
