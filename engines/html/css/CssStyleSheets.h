// The author's style sheets of a document: the rules that matter, in order of appearance.
#pragma once

#include "engines/html/css/CssSelectors.h"
#include "engines/html/css/CssValues.h"

namespace quillow::html {

struct CssRule {
    std::uint32_t list = 0; ///< index of its selectors in SelectorPool::lists
    bool layered = false;   ///< inside an @layer: weaker than rules outside of one
    std::vector<CssDeclaration> declarations;
};

/// The viewport that media queries are evaluated for, in CSS pixels.
inline constexpr double kViewportWidth = 1280;
inline constexpr double kViewportHeight = 720;

/// At-rules and style rules nest no deeper than this; deeper ones are skipped.
inline constexpr int kMaxRuleNesting = 32;
/// Rules beyond this number are dropped. Rules without declarations of interest do not count.
inline constexpr std::size_t kMaxRules = 50'000;

class CssStyleSheets {
public:
    /// Adds the rules of one sheet. Its text must outlive this object. `media` is the value of the style
    /// element's media attribute.
    void add(std::string_view css, std::string_view media);

    [[nodiscard]] bool empty() const { return rules_.empty(); }
    [[nodiscard]] const std::vector<CssRule>& rules() const { return rules_; }
    [[nodiscard]] const SelectorPool& selectors() const { return pool_; }

private:
    friend class CssParser;
    SelectorPool pool_;
    std::vector<CssRule> rules_;
};

/// CSS Conditional Rules 3, section 6: whether the condition of "@supports" holds.
[[nodiscard]] bool supportsHolds(std::string_view condition);

/// Media Queries 4: whether at least one query of the list holds for the viewport above. An empty list holds.
[[nodiscard]] bool mediaMatches(std::string_view queries);

} // namespace quillow::html
