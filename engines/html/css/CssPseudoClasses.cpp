#include "engines/html/css/CssPseudoClasses.h"

#include "text/Ascii.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace quillow::html {

namespace {

/// Section 18 and the pseudo-elements: valid in a browser, but taken here to match nothing. Most of them really
/// match nothing in a page without user interaction.
constexpr std::string_view kNeverTrue[] = {"hover",
                                           "focus",
                                           "active",
                                           "visited",
                                           "target",
                                           "focus-within",
                                           "focus-visible",
                                           "first-line",
                                           "first-letter",
                                           "lang",
                                           "dir",
                                           "has",
                                           "host",
                                           "host-context",
                                           "fullscreen",
                                           "autofill",
                                           "invalid",
                                           "user-invalid",
                                           "user-valid",
                                           "indeterminate",
                                           "placeholder-shown",
                                           "read-only",
                                           "out-of-range",
                                           "playing",
                                           "popover-open",
                                           "modal",
                                           "picture-in-picture",
                                           "target-within",
                                           "current",
                                           "past",
                                           "future",
                                           "-webkit-autofill",
                                           "-webkit-any-link",
                                           "state",
                                           "local-link",
                                           "blank",
                                           "-webkit-full-screen",
                                           "default",
                                           "paused",
                                           "muted",
                                           "buffering",
                                           "stalled",
                                           "seeking",
                                           "active-view-transition"};

/// Pseudo-classes that match some elements even without user interaction, but that style sheets do not use to hide
/// or show content: taken to match nothing.
constexpr std::string_view kTakenAsNever[] = {"valid", "required", "optional", "read-write", "in-range", "defined"};

template <std::size_t Size>
bool contains(const std::string_view (&names)[Size], std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

SimpleSelector ofKind(SelectorKind kind) {
    SimpleSelector simple;
    simple.kind = kind;
    return simple;
}

enum class Side : std::uint8_t { start, end };
enum class Siblings : std::uint8_t { all, ofType };

/// The first or last child, :nth-child(1) and its variants.
SimpleSelector firstFrom(Side side, Siblings siblings) {
    SimpleSelector simple = ofKind(SelectorKind::nthChild);
    simple.b = 1;
    simple.fromEnd = side == Side::end;
    simple.ofType = siblings == Siblings::ofType;
    return simple;
}

bool parseInteger(std::string_view text, int& value) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

/// CSS Syntax, section 6: the an+b microsyntax. "of S" is not supported: such a selector matches nothing.
bool parseNth(std::string_view text, SimpleSelector& simple) {
    std::string compact;
    for (const char c : text)
        if (!text::isBlank(c)) compact.push_back(text::toLower(c));
    if (compact == "odd") compact = "2n+1";
    if (compact == "even") compact = "2n";
    const std::size_t n = compact.find('n');
    if (n == std::string::npos) return parseInteger(compact, simple.b);
    const std::string_view factor = std::string_view(compact).substr(0, n);
    if (factor.empty() || factor == "+") {
        simple.a = 1;
    } else if (factor == "-") {
        simple.a = -1;
    } else if (!parseInteger(factor, simple.a)) {
        return false;
    }
    const std::string_view rest = std::string_view(compact).substr(n + 1);
    return rest.empty() || parseInteger(rest, simple.b);
}

} // namespace

std::optional<SimpleSelector> pseudoClass(std::string_view name) {
    if (name == "first-child") return firstFrom(Side::start, Siblings::all);
    if (name == "last-child") return firstFrom(Side::end, Siblings::all);
    if (name == "first-of-type") return firstFrom(Side::start, Siblings::ofType);
    if (name == "last-of-type") return firstFrom(Side::end, Siblings::ofType);
    if (name == "only-child" || name == "only-of-type") {
        SimpleSelector simple = ofKind(SelectorKind::only);
        simple.ofType = name == "only-of-type";
        return simple;
    }
    if (name == "root" || name == "scope") return ofKind(SelectorKind::root);
    if (name == "empty") return ofKind(SelectorKind::empty);
    if (name == "link" || name == "any-link") return ofKind(SelectorKind::link);
    if (name == "checked") return ofKind(SelectorKind::checked);
    if (name == "disabled") return ofKind(SelectorKind::disabled);
    if (name == "enabled") return ofKind(SelectorKind::enabled);
    if (name == "open") return ofKind(SelectorKind::open);
    if (contains(kNeverTrue, name) || contains(kTakenAsNever, name)) return ofKind(SelectorKind::never);
    return std::nullopt;
}

std::optional<SimpleSelector> functionalPseudoClass(std::string_view name, std::string_view arguments) {
    if (name == "nth-child" || name == "nth-last-child" || name == "nth-of-type" || name == "nth-last-of-type") {
        SimpleSelector simple = ofKind(SelectorKind::nthChild);
        simple.fromEnd = name.find("last") != std::string_view::npos;
        simple.ofType = name.find("type") != std::string_view::npos;
        if (!parseNth(arguments, simple)) simple.kind = SelectorKind::never;
        return simple;
    }
    return contains(kNeverTrue, name) ? std::optional(ofKind(SelectorKind::never)) : std::nullopt;
}

} // namespace quillow::html
