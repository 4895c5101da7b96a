// The author's style sheets of a document: the rules that matter, in the cascade's order.
#pragma once

#include "engines/html/css/CssSelectors.h"
#include "engines/html/css/CssValues.h"

namespace quillow::html {

struct CssRule {
    std::uint32_t list = 0; ///< its selectors, in SelectorPool::lists
    bool layered = false;   ///< inside an @layer: weaker than rules outside of one
    std::vector<CssDeclaration> declarations;
};

/// The screen that media queries are asked about.
inline constexpr double kViewportWidth = 1280;
inline constexpr double kViewportHeight = 720;

/// At-rules and style rules nest no deeper than this; deeper ones are skipped.
inline constexpr int kMaxRuleNesting = 32;
/// Rules with declarations of interest beyond this number are dropped.
inline constexpr std::size_t kMaxRules = 50'000;

class CssStyleSheets {
public:
    /// Adds the rules of one sheet. Its text outlives this object. `media` is the style element's attribute.
    void add(std::string_view css, std::string_view media);

    [[nodiscard]] bool empty() const { return rules_.empty(); }
    [[nodiscard]] const std::vector<CssRule>& rules() const { return rules_; }
    [[nodiscard]] const SelectorPool& selectors() const { return pool_; }

private:
    friend class CssParser;
    SelectorPool pool_;
    std::vector<CssRule> rules_;
};

/// CSS Conditional Rules 3, section 6: the condition of "@supports".
[[nodiscard]] bool supportsHolds(std::string_view condition);

/// Media Queries 4: true when one query of the list holds for the screen of this size.
[[nodiscard]] bool mediaMatches(std::string_view queries);

} // namespace quillow::html
