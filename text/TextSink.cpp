#include "text/TextSink.h"

#include "text/Utf8.h"

#include <bit>
#include <cassert>
#include <cstdint>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace quillow::text {

namespace {

bool isControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c <= 0x9F);
}

constexpr char32_t kByteOrderMark = 0xFEFF;
constexpr std::string_view kByteOrderMarkUtf8 = "\xEF\xBB\xBF";

/// True for bytes that begin a character which may have to be dropped: C0 controls, DEL, and 0xC2, the lead
/// byte of C1 controls.
bool needsLook(char byte) {
    const auto value = static_cast<std::uint8_t>(byte);
    return (value < 0x20 && value != '\t' && value != '\n') || value == 0x7F || value == 0xC2;
}

/// The number of bytes at the start of the view that need no look.
std::size_t plainPrefixLength(std::string_view bytes) {
    std::size_t at = 0;
#ifdef __SSE2__
    for (; bytes.size() - at >= 16; at += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes.data() + at));
        const __m128i belowSpace = _mm_cmpeq_epi8(_mm_min_epu8(block, _mm_set1_epi8(0x1F)), block);
        const __m128i kept =
            _mm_or_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8('\t')), _mm_cmpeq_epi8(block, _mm_set1_epi8('\n')));
        const __m128i others = _mm_or_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8(0x7F)),
                                            _mm_cmpeq_epi8(block, _mm_set1_epi8(static_cast<char>(0xC2))));
        const auto look =
            static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(_mm_andnot_si128(kept, belowSpace), others)));
        if (look != 0) return at + static_cast<std::size_t>(std::countr_zero(look));
    }
#endif
    while (at < bytes.size() && !needsLook(bytes[at]))
        ++at;
    return at;
}

/// Writes the code points at the start of the view that are printable ASCII or line ends, 16 at a time, and returns how
/// many these are. May write up to 16 bytes.
std::size_t writeBlock(std::u32string_view codePoints, char* to) {
#ifdef __SSE2__
    constexpr std::size_t kBlock = 16;
    if (codePoints.size() < kBlock) return 0;
    const auto* const from = reinterpret_cast<const __m128i*>(codePoints.data());
    const __m128i first = _mm_packs_epi32(_mm_loadu_si128(from), _mm_loadu_si128(from + 1));
    const __m128i second = _mm_packs_epi32(_mm_loadu_si128(from + 2), _mm_loadu_si128(from + 3));
    const __m128i bytes = _mm_packus_epi16(first, second); // larger ones are 0xFF now, or 0
    const __m128i isPrintable =
        _mm_and_si128(_mm_cmpgt_epi8(bytes, _mm_set1_epi8(0x1F)), _mm_cmplt_epi8(bytes, _mm_set1_epi8(0x7F)));
    const __m128i isLineEnd = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n'));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
    return static_cast<std::size_t>(
        std::countr_one(static_cast<std::uint16_t>(_mm_movemask_epi8(_mm_or_si128(isPrintable, isLineEnd)))));
#else
    static_cast<void>(codePoints);
    static_cast<void>(to);
    return 0;
#endif
}

} // namespace

void TextSink::append(std::u32string_view codePoints) {
    constexpr std::size_t kBatch = 256;
    constexpr std::size_t kLongest = 3; // bytes of what is written here
    constexpr char32_t kFirstSurrogate = 0xD800;
    while (!codePoints.empty()) {
        const std::size_t at = out_.size();
        const std::u32string_view batch = codePoints.substr(0, kBatch);
        out_.resize(at + kLongest * batch.size());
        char* to = out_.data() + at;
        std::size_t done = 0;
        while (done < batch.size()) {
            const char32_t c = batch[done];
            if ((c >= 0x20 && c < 0x7F) || c == '\n') {
                std::size_t plain = writeBlock(batch.substr(done), to);
                if (plain == 0) to[plain++] = static_cast<char>(c); // not enough for a block
                to += plain;
                done += plain;
            } else if (c >= 0xA0 && c < 0x800) {
                *to++ = static_cast<char>(0xC0 | (c >> 6));
                *to++ = static_cast<char>(0x80 | (c & 0x3F));
                ++done;
            } else if (c >= 0x800 && c < kFirstSurrogate) {
                *to++ = static_cast<char>(0xE0 | (c >> 12));
                *to++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
                *to++ = static_cast<char>(0x80 | (c & 0x3F));
                ++done;
            } else {
                break;
            }
        }
        out_.resize(static_cast<std::size_t>(to - out_.data()));
        if (done < batch.size()) append(batch[done++]);
        codePoints.remove_prefix(done);
    }
}

void TextSink::appendOther(char32_t codePoint) {
    if (isControl(codePoint) && codePoint != '\t' && codePoint != '\n' &&
        !(codePoint == '\f' && formFeeds_ == FormFeeds::keep))
        return;
    if (codePoint == kByteOrderMark && out_.empty()) return;
    text::appendUtf8(out_, codePoint);
}

void TextSink::appendUtf8(std::string_view utf8) {
    assert(isValidUtf8(utf8));
    while (!utf8.empty()) {
        if (out_.empty() && utf8.front() == kByteOrderMarkUtf8.front() &&
            utf8.substr(0, kByteOrderMarkUtf8.size()) == kByteOrderMarkUtf8) {
            utf8.remove_prefix(kByteOrderMarkUtf8.size());
            continue;
        }
        const std::size_t plain = plainPrefixLength(utf8);
        out_.append(utf8.data(), plain);
        utf8.remove_prefix(plain);
        if (utf8.empty()) break;
        const DecodedCodePoint decoded = decodeUtf8(utf8);
        append(decoded.codePoint);
        utf8.remove_prefix(decoded.length);
    }
}

std::string TextSink::finish() && {
    std::size_t end = out_.size();
    while (end > 0 && out_[end - 1] == '\n')
        --end;
    out_.resize(end);
    if (!out_.empty()) out_.push_back('\n');
    return std::move(out_);
}

} // namespace quillow::text
