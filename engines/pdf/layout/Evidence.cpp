#include "engines/pdf/layout/Evidence.h"

#include "text/Utf8.h"

#include <charconv>
#include <cmath>

namespace quillow::pdf {

namespace {

/// Characters of one mark, at most.
constexpr std::size_t kMostCharacters = 400;

/// With at most two decimals.
void appendNumber(std::string& out, float value) {
    constexpr float kShown = 1e9F;
    if (!(std::abs(value) < kShown)) {
        out += "very large";
        return;
    }
    std::array<char, 32> digits{};
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, 2);
    std::string_view shown(digits.data(), static_cast<std::size_t>(end - digits.data()));
    while (shown.ends_with('0'))
        shown.remove_suffix(1);
    if (shown.ends_with('.')) shown.remove_suffix(1);
    out += shown == "-0" ? "0" : shown;
}

} // namespace

Mark* Evidence::add(Topic topic, Verdict verdict, const Corners& corners) {
    if (marks_.size() == kMostMarks) {
        ++leftOut_;
        return nullptr;
    }
    Mark& mark = marks_.emplace_back();
    mark.topic = topic;
    mark.verdict = verdict;
    mark.corners = corners;
    return &mark;
}

void Evidence::addCharacters(Topic topic, const Corners& corners, std::u32string_view characters) {
    Mark* const mark = add(topic, Verdict::accepted, corners);
    if (mark == nullptr) return;
    for (const char32_t c : characters.substr(0, kMostCharacters))
        text::appendUtf8(mark->text, c);
}

void Evidence::addReason(Topic topic, Verdict verdict, const Corners& corners, std::string_view reason,
                         std::initializer_list<Fact> facts) {
    Mark* const mark = add(topic, verdict, corners);
    if (mark == nullptr) return;
    mark->text = reason;
    std::string_view separator = ": ";
    for (const Fact& fact : facts) {
        mark->text += separator;
        mark->text += fact.name;
        mark->text += ' ';
        appendNumber(mark->text, fact.value);
        separator = ", ";
    }
}

} // namespace quillow::pdf
