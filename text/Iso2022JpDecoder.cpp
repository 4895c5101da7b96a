// The ISO-2022-JP decoder, section 12.2.1 of the Encoding Standard: the only one that keeps a state.
#include "text/EastAsianDecoders.h"
#include "text/PairTable.h"

namespace quillow::text {

namespace {

class Iso2022JpDecoder {
public:
    Iso2022JpDecoder(std::string_view bytes, DecoderOutput& out)
        : bytes_(bytes)
        , out_(out) {}

    void run() {
        while (at_ < bytes_.size()) {
            const auto byte = static_cast<std::uint8_t>(bytes_[at_]);
            if (byte == 0x1B) {
                ++at_;
                escape();
            } else {
                character(byte);
            }
        }
    }

private:
    enum class Set { ascii, roman, katakana, pairs };
    enum class LastOutput { escapeSequence, other };

    /// The states "escape start" and "escape", after 0x1B. The next two bytes are consumed only if they
    /// select a character set.
    void escape() {
        const std::string_view sequence = bytes_.substr(at_, 2);
        Set next = Set::ascii;
        if (sequence == "(B") {
            next = Set::ascii;
        } else if (sequence == "(J") {
            next = Set::roman;
        } else if (sequence == "(I") {
            next = Set::katakana;
        } else if (sequence == "$@" || sequence == "$B") {
            next = Set::pairs;
        } else {
            lastOutput_ = LastOutput::other;
            out_.putError();
            return;
        }
        at_ += 2;
        set_ = next;
        // Two escape sequences with nothing between them are an error.
        if (lastOutput_ == LastOutput::escapeSequence) out_.putError();
        lastOutput_ = LastOutput::escapeSequence;
    }

    void character(std::uint8_t byte) {
        lastOutput_ = LastOutput::other;
        switch (set_) {
        case Set::ascii:
        case Set::roman: ++at_; return asciiOrRoman(byte);
        case Set::katakana:
            ++at_;
            if (byte >= 0x21 && byte <= 0x5F) return out_.put(0xFF61 + (byte - 0x21U));
            return out_.putError();
        case Set::pairs: return pair(byte);
        }
    }

    void asciiOrRoman(std::uint8_t byte) {
        if (byte >= 0x80 || byte == 0x0E || byte == 0x0F) return out_.putError();
        if (set_ == Set::roman && byte == 0x5C) return out_.put(0x00A5);
        if (set_ == Set::roman && byte == 0x7E) return out_.put(0x203E);
        out_.put(byte);
    }

    /// The states "lead byte" and "trail byte".
    void pair(std::uint8_t lead) {
        ++at_;
        if (lead < 0x21 || lead > 0x7E || at_ == bytes_.size()) return out_.putError();
        const auto trail = static_cast<std::uint8_t>(bytes_[at_]);
        if (trail == 0x1B) return out_.putError(); // the escape sequence is not consumed
        ++at_;
        if (trail < 0x21 || trail > 0x7E) return out_.putError();
        const char32_t codePoint =
            kEucJpPairs.decode(static_cast<std::uint8_t>(lead | 0x80), static_cast<std::uint8_t>(trail | 0x80));
        if (codePoint == 0) return out_.putError();
        out_.put(codePoint);
    }

    std::string_view bytes_;
    DecoderOutput& out_;
    std::size_t at_ = 0;
    Set set_ = Set::ascii;
    LastOutput lastOutput_ = LastOutput::other;
};

} // namespace

void decodeIso2022Jp(std::string_view bytes, DecoderOutput& out) {
    Iso2022JpDecoder(bytes, out).run();
}

} // namespace quillow::text
