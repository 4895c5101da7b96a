#include "text/DetectorSample.h"

#include "text/Ascii.h"

#include <array>

namespace quillow::text {

namespace {

constexpr char kSeparator = ' ';

bool isHigh(char byte) {
    return static_cast<std::uint8_t>(byte) >= 0x80;
}

bool mayBeTrail(char byte) {
    return byte >= '0' && byte <= '~' && byte != '<' && byte != '>';
}

/// Walks over markup and text and collects the words of the text.
class Gatherer {
public:
    Gatherer(std::string_view bytes, std::size_t mostBytes, std::string& words)
        : bytes_(bytes)
        , mostBytes_(mostBytes)
        , words_(words) {}

    void skipMarkupAndGather() {
        while (at_ < bytes_.size() && words_.size() < mostBytes_) {
            if (bytes_[at_] == '<' && skipMarkup()) continue;
            takeWordOrByte();
        }
    }

    void gatherAll() {
        while (at_ < bytes_.size() && words_.size() < mostBytes_)
            takeWordOrByte();
    }

private:
    /// At a "<": skips the markup that it begins. Returns false if it begins none.
    bool skipMarkup() {
        const std::string_view rest = bytes_.substr(at_);
        if (rest.size() < 2) return false;
        const char next = rest[1];
        if (!isLetter(next) && next != '/' && next != '!' && next != '?') return false;
        if (rest.substr(0, 4) == "<!--") return skipPast("-->", commentsEnd_);
        const bool script = startsWithIgnoringCase(rest, "<script");
        const bool style = startsWithIgnoringCase(rest, "<style");
        if (!skipPast(">", tagsEnd_)) return false;
        if (script) skipToEndTag("</script");
        if (style) skipToEndTag("</style");
        return true;
    }

    /// Skips to the end of the next `mark`. Returns false if there is none; `known` then becomes false too, so that
    /// it is not searched for again.
    bool skipPast(std::string_view mark, bool& known) {
        if (!known) return false;
        const std::size_t found = bytes_.find(mark, at_);
        known = found != std::string_view::npos;
        if (!known) return false;
        at_ = found + mark.size();
        return true;
    }

    void skipToEndTag(std::string_view endTag) {
        while (at_ < bytes_.size() && !startsWithIgnoringCase(bytes_.substr(at_), endTag)) {
            const std::size_t next = bytes_.find('<', at_ + 1);
            at_ = next == std::string_view::npos ? bytes_.size() : next;
        }
    }

    void takeWordOrByte() {
        const std::size_t start = at_;
        bool high = false;
        while (at_ < bytes_.size() && at_ - start < mostBytes_) {
            const char byte = bytes_[at_];
            if (isHigh(byte)) {
                high = true;
            } else if (!isLetter(byte) && !(at_ > start && isHigh(bytes_[at_ - 1]) && mayBeTrail(byte))) {
                break;
            }
            ++at_;
        }
        if (high) {
            words_.append(bytes_.substr(start, at_ - start));
            words_.push_back(kSeparator);
        }
        if (at_ == start) ++at_;
    }

    std::string_view bytes_;
    std::size_t mostBytes_;
    std::string& words_;
    std::size_t at_ = 0;
    bool commentsEnd_ = true;
    bool tagsEnd_ = true;
};

} // namespace

DetectorSample::DetectorSample(std::string_view bytes, std::size_t mostBytes)
    : words(1, kSeparator) {
    Gatherer(bytes, mostBytes, words).skipMarkupAndGather();
    if (words.size() == 1) Gatherer(bytes, mostBytes, words).gatherAll();
}

BytePairCounts::BytePairCounts(const DetectorSample& sample) {
    std::vector<std::uint32_t> counts(0x10000);
    std::array<bool, 0x100> occurs{};
    for (const char byte : sample.words)
        occurs[static_cast<std::uint8_t>(byte)] = true;
    for (std::size_t byte = 0; byte < occurs.size(); ++byte)
        if (occurs[byte]) bytes.push_back(static_cast<std::uint8_t>(byte));
    for (std::size_t i = 1; i < sample.words.size(); ++i) {
        const auto first = static_cast<std::uint8_t>(sample.words[i - 1]);
        const auto second = static_cast<std::uint8_t>(sample.words[i]);
        ++counts[static_cast<std::size_t>(first << 8 | second)];
    }
    for (std::size_t pair = 0; pair < counts.size(); ++pair) {
        if (counts[pair] == 0) continue;
        entries.push_back({static_cast<std::uint8_t>(pair >> 8), static_cast<std::uint8_t>(pair & 0xFF), counts[pair]});
    }
}

} // namespace quillow::text
