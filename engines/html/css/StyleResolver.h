// The computed style of an element: the user agent's style sheet, then the author's.
#pragma once

#include "engines/html/css/CssMatcher.h"
#include "engines/html/css/UserAgentStyle.h"

#include <deque>
#include <memory>

namespace quillow::html {

class StyleResolver {
public:
    /// If `withAuthor` is false, the author's sheets and style attributes are ignored.
    StyleResolver(const Tree& tree, bool withAuthor);

    /// Computes the style of an element. `style` must be the initial style. The element's ancestors, and no other
    /// elements, must have been entered and not left. Its previous siblings must have been resolved.
    /// `isAlternative` is for a child of "semantics" that is not the first element.
    void resolve(NodeId element, const Style& parent, bool isAlternative, Style& style);
    /// The generated content of the element that was resolved last. Requires that its style has `generatesContent`.
    [[nodiscard]] GeneratedContent generated(PseudoElement pseudo, const Style& style) const;
    /// Enters the element that was resolved last. Needed only if it contains elements.
    void enter(NodeId element) {
        if (matcher_) matcher_->enter(element);
    }
    /// Leaves the element that was entered last.
    void leave() {
        if (matcher_) matcher_->leave();
    }

    /// True if a declaration of the author's applied to any element so far.
    [[nodiscard]] bool authorStylesApplied() const { return applied_; }

private:
    void collectSheets();

    const Tree& tree_;
    std::deque<std::string> joined_; ///< the texts of sheets that consist of several text nodes
    CssStyleSheets sheets_;
    std::unique_ptr<CssMatcher> matcher_; ///< nullptr without author styles
    bool applied_ = false;
};

} // namespace quillow::html
