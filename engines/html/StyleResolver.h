// The computed style of an element: the user agent's style sheet, then the author's.
#pragma once

#include "engines/html/CssMatcher.h"
#include "engines/html/UserAgentStyle.h"

#include <deque>
#include <memory>

namespace quillow::html {

class StyleResolver {
public:
    /// With `withAuthor` false neither sheets nor style attributes are looked at.
    StyleResolver(const HtmlTree& tree, bool withAuthor);

    /// The style of an element. Its ancestors, and no others, have been entered and not left.
    void resolve(NodeId element, const Style& parent, Style& style);
    /// The generated content of the element that was resolved last, whose style says that there may be some.
    [[nodiscard]] GeneratedContent generated(PseudoElement pseudo, const Style& style) const;
    void enter(NodeId node) {
        if (matcher_) matcher_->enter(node);
    }
    /// Leaves what was entered last.
    void leave() {
        if (matcher_) matcher_->leave();
    }

    /// True when a declaration of the author's applied to any element so far.
    [[nodiscard]] bool authorStylesApplied() const { return applied_; }

private:
    void collectSheets();

    const HtmlTree& tree_;
    std::deque<std::string> joined_; ///< sheets that several text nodes make up
    CssStyleSheets sheets_;
    std::unique_ptr<CssMatcher> matcher_; ///< nullptr without author styles
    bool applied_ = false;
};

} // namespace quillow::html
