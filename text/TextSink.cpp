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

#ifdef __SSE2__
/// Writes code points that are printable ASCII or line ends, up to the first other one, as long as there are sixteen.
/// Returns the place behind the last one. `to` needs room for a byte for each code point.
const char32_t* writeAscii(const char32_t* p, const char32_t* end, char*& to) {
    const auto four = [](const char32_t* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); };
    for (; end - p >= 16; p += 16, to += 16) {
        // What does not fit into a byte becomes 0 or 255.
        const __m128i bytes =
            _mm_packus_epi16(_mm_packs_epi32(four(p), four(p + 4)), _mm_packs_epi32(four(p + 8), four(p + 12)));
        const __m128i printable =
            _mm_andnot_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(0x7F)), _mm_cmpgt_epi8(bytes, _mm_set1_epi8(0x1F)));
        const __m128i written = _mm_or_si128(printable, _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n')));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
        const int count = std::countr_one(static_cast<unsigned>(_mm_movemask_epi8(written)));
        if (count == 16) continue;
        to += count;
        return p + count;
    }
    return p;
}
#else
const char32_t* writeAscii(const char32_t* p, const char32_t* /*end*/, char*& /*to*/) {
    return p;
}
#endif

} // namespace

void TextSink::append(std::u32string_view codePoints) {
    constexpr std::size_t kBatch = 256;
    constexpr std::size_t kLongest = 2; // bytes of what is written here
    while (!codePoints.empty()) {
        const std::size_t at = out_.size();
        const std::u32string_view batch = codePoints.substr(0, kBatch);
        out_.resize(at + kLongest * batch.size());
        char* to = out_.data() + at;
        const char32_t* p = batch.data();
        const char32_t* const end = p + batch.size();
        bool afterOther = false; // than ASCII
        for (; p < end; ++p) {
            const char32_t c = *p;
            if ((c >= 0x20 && c < 0x7F) || c == '\n') {
                *to++ = static_cast<char>(c);
                if (std::exchange(afterOther, false)) continue;
                p = writeAscii(p + 1, end, to) - 1;
            } else if (c >= 0xA0 && c < 0x800) {
                *to++ = static_cast<char>(0xC0 | (c >> 6));
                *to++ = static_cast<char>(0x80 | (c & 0x3F));
                afterOther = true;
            } else {
                break;
            }
        }
        out_.resize(static_cast<std::size_t>(to - out_.data()));
        if (p < end) append(*p++);
        codePoints.remove_prefix(static_cast<std::size_t>(p - batch.data()));
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
