#include "engines/pdf/LineEndHyphens.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace quillow::pdf {

namespace {

/// Longer ones are not words; the search for them would cost time.
constexpr std::size_t kLongestWord = 80;

bool isLetter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || (byte >= '0' && byte <= '9') || ((byte | 0x20U) >= 'a' && (byte | 0x20U) <= 'z');
}

bool isCapitalOrDigit(std::string_view text) {
    if (text.empty()) return false;
    const auto first = static_cast<unsigned char>(text[0]);
    if ((first >= '0' && first <= '9') || (first >= 'A' && first <= 'Z')) return true;
    if (text.size() < 2) return false;
    const auto second = static_cast<unsigned char>(text[1]);
    if (first == 0xC3) return second >= 0x80 && second <= 0x9E; // À to Þ
    if (first == 0xCE) return second >= 0x86 && second <= 0xA9; // Greek
    return (first == 0xD0 && second >= 0x80 && second <= 0xAF); // Cyrillic
}

enum class Decision { stays, goes, unknown };

struct Hyphen {
    std::size_t at = 0; ///< of kJoint
    std::string whole;  ///< the word without the hyphen; empty if it stays
    std::string parted; ///< with it
};

Hyphen hyphenAt(std::string_view text, std::size_t joint) {
    Hyphen hyphen;
    hyphen.at = joint;
    std::size_t begin = joint - 1; // the hyphen, which is one byte
    const std::size_t first = begin > kLongestWord ? begin - kLongestWord : 0;
    while (begin > first && isLetter(text[begin - 1]))
        --begin;
    std::size_t end = joint + 1;
    const std::size_t last = std::min(text.size(), end + kLongestWord);
    while (end < last && isLetter(text[end]))
        ++end;
    const std::string_view before = text.substr(begin, joint - 1 - begin);
    const std::string_view after = text.substr(joint + 1, end - joint - 1);
    if (before.empty() || after.empty() || isCapitalOrDigit(after)) return hyphen;
    hyphen.whole = std::string(before) + std::string(after);
    hyphen.parted = std::string(before) + "-" + std::string(after);
    return hyphen;
}

} // namespace

std::string withoutLineEndHyphens(std::string_view text) {
    std::vector<Hyphen> hyphens;
    std::unordered_map<std::string, std::uint64_t> counts;
    for (std::size_t at = text.find(kJoint); at != std::string_view::npos; at = text.find(kJoint, at + 1)) {
        if (at == 0) continue;
        hyphens.push_back(hyphenAt(text, at));
        if (hyphens.back().whole.empty()) continue;
        counts.try_emplace(hyphens.back().whole, 0);
        counts.try_emplace(hyphens.back().parted, 0);
    }
    // The words of the text; those around a joint are not among them.
    std::string word;
    const auto count = [&counts, &word](std::string_view found) {
        if (found.empty() || found.size() > 2 * kLongestWord) return;
        word = found;
        if (const auto known = counts.find(word); known != counts.end()) ++known->second;
    };
    if (!counts.empty()) {
        std::size_t begin = 0;
        std::size_t part = 0; // the part of a word with hyphens
        for (std::size_t i = 0; i <= text.size(); ++i) {
            if (i < text.size() && isLetter(text[i])) continue;
            if (i < text.size() && text[i] == '-' && i > begin) {
                count(text.substr(part, i - part));
                part = i + 1;
                continue;
            }
            count(text.substr(begin, i - begin));
            if (part != begin) count(text.substr(part, i - part));
            begin = part = i + 1;
        }
    }
    const auto decisionOf = [&counts](const Hyphen& hyphen) {
        if (hyphen.whole.empty()) return Decision::stays;
        const std::uint64_t whole = counts.at(hyphen.whole);
        const std::uint64_t parted = counts.at(hyphen.parted);
        if (whole == 0 && parted == 0) return Decision::unknown;
        return parted > whole ? Decision::stays : Decision::goes;
    };
    std::size_t going = 0;
    std::size_t staying = 0;
    for (const Hyphen& hyphen : hyphens) {
        const Decision decision = decisionOf(hyphen);
        if (decision == Decision::goes) ++going;
        if (decision == Decision::stays && !hyphen.whole.empty()) ++staying;
    }
    const bool othersGo = going > 0 && going >= staying;
    std::string result;
    result.reserve(text.size());
    std::size_t begin = 0;
    for (const Hyphen& hyphen : hyphens) {
        const Decision decision = decisionOf(hyphen);
        const bool goes = decision == Decision::goes || (decision == Decision::unknown && othersGo);
        result.append(text.substr(begin, hyphen.at - begin - (goes ? 1 : 0)));
        begin = hyphen.at + 1;
    }
    result.append(text.substr(begin));
    return result;
}

} // namespace quillow::pdf
