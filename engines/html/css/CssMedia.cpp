// Media Queries Level 4, for one desktop screen of a fixed size.
#include "engines/html/css/CssStyleSheets.h"
#include "text/Ascii.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace quillow::html {

namespace {

constexpr double kPixelsPerEm = 16;
// CSS Values 4, section 6.2: the absolute lengths.
constexpr double kPixelsPerInch = 96;
constexpr double kPointsPerInch = 72;
constexpr double kCentimetresPerInch = 2.54;
constexpr double kMillimetresPerInch = 25.4;

/// Groups in parentheses that nest deeper do not hold.
constexpr int kMaxGroupNesting = 8;

/// A length in CSS pixels, or std::nullopt.
std::optional<double> pixels(std::string_view text) {
    text = text::trimBlanks(text);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) return std::nullopt;
    const std::string_view unit(end, static_cast<std::size_t>(text.data() + text.size() - end));
    if (text::equalsIgnoringCase(unit, "em") || text::equalsIgnoringCase(unit, "rem")) return value * kPixelsPerEm;
    if (unit.empty() || text::equalsIgnoringCase(unit, "px")) return value;
    if (text::equalsIgnoringCase(unit, "cm")) return value * kPixelsPerInch / kCentimetresPerInch;
    if (text::equalsIgnoringCase(unit, "mm")) return value * kPixelsPerInch / kMillimetresPerInch;
    if (text::equalsIgnoringCase(unit, "in")) return value * kPixelsPerInch;
    if (text::equalsIgnoringCase(unit, "pt")) return value * kPixelsPerInch / kPointsPerInch;
    return std::nullopt;
}

bool rangeFeature(std::string_view name, std::string_view value, double actual) {
    const auto length = pixels(value);
    if (!length) return false;
    if (name.starts_with("min-")) return actual >= *length;
    if (name.starts_with("max-")) return actual <= *length;
    return actual == *length;
}

/// A range such as "400px <= width < 900px", or one half of it.
bool rangeExpression(std::string_view feature) {
    const auto resolve = [](std::string_view side) -> std::optional<double> {
        side = text::trimBlanks(side);
        if (text::equalsIgnoringCase(side, "width")) return kViewportWidth;
        if (text::equalsIgnoringCase(side, "height")) return kViewportHeight;
        return pixels(side);
    };
    std::size_t at = feature.find_first_of("<>=");
    std::optional<double> left = resolve(feature.substr(0, at));
    while (at != std::string_view::npos) {
        const char sign = feature[at];
        const bool orEqual = sign == '=' || (at + 1 < feature.size() && feature[at + 1] == '=');
        const std::size_t after = at + (sign != '=' && orEqual ? 2 : 1);
        at = feature.find_first_of("<>=", after);
        const auto right = resolve(feature.substr(after, at == std::string_view::npos ? at : at - after));
        if (!left || !right) return false;
        const bool holds =
            (sign == '<' && *left < *right) || (sign == '>' && *left > *right) || (orEqual && *left == *right);
        if (!holds) return false;
        left = right;
    }
    return true;
}

struct DiscreteFeature {
    std::string_view name;
    std::string_view value;
};
constexpr std::array kDiscrete = {
    DiscreteFeature{"orientation", "landscape"},
    DiscreteFeature{"hover", "hover"},
    DiscreteFeature{"any-hover", "hover"},
    DiscreteFeature{"pointer", "fine"},
    DiscreteFeature{"any-pointer", "fine"},
    DiscreteFeature{"prefers-color-scheme", "light"},
    DiscreteFeature{"prefers-reduced-motion", "no-preference"},
    DiscreteFeature{"scripting", "none"},
    DiscreteFeature{"update", "fast"},
    DiscreteFeature{"display-mode", "browser"},
    DiscreteFeature{"forced-colors", "none"},
    DiscreteFeature{"prefers-contrast", "no-preference"},
};

bool featureHolds(std::string_view feature) {
    feature = text::trimBlanks(feature);
    const std::size_t colon = feature.find(':');
    std::string name(text::trimBlanks(feature.substr(0, colon)));
    for (char& c : name)
        c = text::toLower(c);
    if (colon == std::string_view::npos) {
        if (feature.find_first_of("<>=") != std::string_view::npos) return rangeExpression(feature);
        return name == "width" || name == "height" || name == "color" || name == "hover" || name == "pointer" ||
               name == "any-hover" || name == "any-pointer";
    }
    const std::string_view value = text::trimBlanks(feature.substr(colon + 1));
    if (name.ends_with("-device-pixel-ratio")) {
        // The vendor prefix comes first: `-webkit-min-device-pixel-ratio`.
        constexpr std::string_view kPrefix = "-webkit-";
        std::string_view bare = name;
        if (bare.find('m') == kPrefix.size()) bare.remove_prefix(kPrefix.size());
        return rangeFeature(bare, value, 1);
    }
    if (name == "width" || name == "min-width" || name == "max-width" || name.ends_with("device-width"))
        return rangeFeature(name, value, kViewportWidth);
    if (name == "height" || name == "min-height" || name == "max-height" || name.ends_with("device-height"))
        return rangeFeature(name, value, kViewportHeight);
    for (const DiscreteFeature& known : kDiscrete)
        if (name == known.name) return text::equalsIgnoringCase(value, known.value);
    return false;
}

/// Whether a current browser supports a declaration, as far as can be known here. A property that CssValues.h knows
/// is judged by its value, any other property by its vendor prefix.
bool isSupportedFeature(std::string_view feature) {
    constexpr std::string_view kOfOthers[] = {"-ms-", "-moz-", "-o-", "-webkit-touch-callout",
                                              "-webkit-overflow-scrolling"};
    const bool ofOthers = std::any_of(std::begin(kOfOthers), std::end(kOfOthers), [feature](std::string_view name) {
        return text::equalsIgnoringCase(feature.substr(0, name.size()), name);
    });
    CssStrings strings;
    return !ofOthers && (!isKnownProperty(feature.substr(0, feature.find(':'))) || parseDeclaration(feature, strings));
}

/// Splits off the next word or parenthesised group.
std::string_view takePart(std::string_view& rest) {
    rest = text::trimBlanks(rest);
    std::size_t end = 0;
    std::size_t depth = 0;
    while (end < rest.size()) {
        const char c = rest[end];
        if (depth == 0 && end > 0 && (text::isBlank(c) || c == '(')) break;
        ++end;
        if (c == '(') ++depth;
        if (c == ')' && depth > 0 && --depth == 0) break;
    }
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(end);
    return part;
}

/// Decides whether a group in parentheses holds: a media feature, or a declaration.
using FeatureTest = bool (*)(std::string_view feature);

bool conditionHolds(std::string_view condition, FeatureTest test, int nesting);

bool groupHolds(std::string_view group, FeatureTest test, int nesting) {
    constexpr std::string_view kNot = "not ";
    std::string_view inside = group.substr(1, group.size() - (group.back() == ')' ? 2 : 1));
    inside = text::trimBlanks(inside);
    if (inside.starts_with("(") ||
        (inside.size() > kNot.size() && text::equalsIgnoringCase(inside.substr(0, kNot.size()), kNot)))
        return nesting < kMaxGroupNesting && conditionHolds(inside, test, nesting + 1);
    return test(inside);
}

/// Evaluates one media query or condition: words and groups joined by "and" or "or", with optional
/// "not" before them.
bool conditionHolds(std::string_view condition, FeatureTest test, int nesting) {
    bool result = true;
    bool negated = false;
    bool negatesAll = false;
    bool disjunction = false;
    bool first = true;
    while (!text::trimBlanks(condition).empty()) {
        const std::string_view part = takePart(condition);
        if (text::equalsIgnoringCase(part, "only") || text::equalsIgnoringCase(part, "and")) continue;
        if (test == isSupportedFeature && text::equalsIgnoringCase(part, "selector"))
            continue; // `selector(...)`: the next part is its argument
        if (text::equalsIgnoringCase(part, "or")) {
            disjunction = true;
            continue;
        }
        if (text::equalsIgnoringCase(part, "not")) {
            negated = true;
            continue;
        }
        bool holds = false;
        if (part.front() == '(') {
            holds = groupHolds(part, test, nesting) != negated;
            negated = false;
        } else {
            // A media type: "not" before it negates the whole query.
            holds = text::equalsIgnoringCase(part, "all") || text::equalsIgnoringCase(part, "screen");
            negatesAll = negated;
            negated = false;
        }
        result = first ? holds : disjunction ? result || holds : result && holds;
        first = false;
    }
    return result != negatesAll;
}

} // namespace

bool mediaMatches(std::string_view queries) {
    if (text::trimBlanks(queries).empty()) return true;
    while (!queries.empty()) {
        std::size_t comma = 0;
        std::size_t depth = 0;
        while (comma < queries.size() && (queries[comma] != ',' || depth > 0)) {
            if (queries[comma] == '(') ++depth;
            if (queries[comma] == ')' && depth > 0) --depth;
            ++comma;
        }
        const std::string_view query = text::trimBlanks(queries.substr(0, comma));
        if (!query.empty() && conditionHolds(query, featureHolds, 0)) return true;
        queries.remove_prefix(std::min(comma + 1, queries.size()));
    }
    return false;
}

bool supportsHolds(std::string_view condition) {
    return conditionHolds(condition, isSupportedFeature, 0);
}

} // namespace quillow::html
