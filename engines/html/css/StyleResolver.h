// The computed style of an element: the user agent's style sheet, then the author's.
#pragma once

#include "engines/html/css/CssMatcher.h"
#include "engines/html/css/UserAgentStyle.h"

#include <deque>
#include <memory>

namespace quillow::html {

class StyleResolver {
public:
    /// With `withAuthor` false neither sheets nor style attributes are looked at.
    StyleResolver(const Tree& tree, bool withAuthor);

    /// The style of an element, which is the initial one. Its ancestors, and no others, have been entered and not left, and those
    /// before it in its parent have been resolved. `isAlternative` for an element of "semantics" that is not the first one.
    void resolve(NodeId element, const Style& parent, bool isAlternative, Style& style);
    /// The generated content of the element that was resolved last, whose style says that there may be some.
    [[nodiscard]] GeneratedContent generated(PseudoElement pseudo, const Style& style) const;
    /// Enters the element that was resolved last, if there are elements in it.
    void enter(NodeId element) {
        if (matcher_) matcher_->enter(element);
    }
    /// Leaves what was entered last.
    void leave() {
        if (matcher_) matcher_->leave();
    }

    /// True when a declaration of the author's applied to any element so far.
    [[nodiscard]] bool authorStylesApplied() const { return applied_; }

private:
    void collectSheets();

    const Tree& tree_;
    std::deque<std::string> joined_; ///< sheets that several text nodes make up
    CssStyleSheets sheets_;
    std::unique_ptr<CssMatcher> matcher_; ///< nullptr without author styles
    bool applied_ = false;
};

} // namespace quillow::html
