#include "engines/html/css/StyleResolver.h"

#include "text/Ascii.h"

namespace quillow::html {

namespace {

/// The computed value of a property. `cascaded` is the cascade's result, `own` the user agent's value.
template <typename Value>
Value computed(std::optional<std::uint8_t> cascaded, Value own, Value inherited, Value initial, bool inherits) {
    if (!cascaded || *cascaded == kRevert) return own;
    if (*cascaded == kInherit || (*cascaded == kUnset && inherits)) return inherited;
    if (*cascaded == kInitial || *cascaded == kUnset) return initial;
    return static_cast<Value>(*cascaded);
}

GeneratedContent generatedContent(const CascadedValues& values, const Style& style) {
    GeneratedContent result;
    const auto content = values.value(CssProperty::content);
    if (!content || *content >= kInherit) return result;
    const auto take = [&](CssProperty property, auto inherited, auto initial, bool inherits) {
        return computed(values.value(property), inherits ? inherited : initial, inherited, initial, inherits);
    };
    result.content = *content;
    result.display = take(CssProperty::display, style.display, Display::inline_, false);
    result.whiteSpace = take(CssProperty::whiteSpace, style.whiteSpace, WhiteSpace::normal, true);
    const Flow floating = take(CssProperty::floating, style.floating, Flow::inFlow, false);
    const Flow positioned = take(CssProperty::position, style.positioned, Flow::inFlow, false);
    result.flow = floating == Flow::outOfFlow ? floating : positioned;
    return result;
}

} // namespace

StyleResolver::StyleResolver(const Tree& tree, bool withAuthor)
    : tree_(tree) {
    if (!withAuthor) return;
    collectSheets();
    matcher_ = std::make_unique<CssMatcher>(tree_, sheets_);
}

void StyleResolver::collectSheets() {
    for (const NodeId id : tree_.notedElements()) {
        const Node& node = tree_.node(id);
        const NodeId first = tree_.firstChild(id);
        if (node.tag != Tag::style || first == kNoNode) continue;
        // HTML, 4.2.6: a style element of another type than text/css is not a style sheet.
        const auto type = tree_.attribute(id, AttributeName::type);
        if (type && !type->empty() && !text::equalsIgnoringCase(*type, "text/css")) continue;
        const auto media = tree_.attribute(id, AttributeName::media);
        std::string_view css = tree_.text(first);
        if (!tree_.node(first).isLast()) {
            std::string& whole = joined_.emplace_back();
            for (NodeId child = first; child != kNoNode; child = tree_.next(child))
                if (tree_.node(child).kind == NodeKind::text) whole += tree_.text(child);
            css = whole;
        }
        sheets_.add(css, media.value_or(std::string_view()));
    }
}

void StyleResolver::resolve(NodeId element, const Style& parent, bool isAlternative, Style& style) {
    userAgentStyle(tree_, element, parent, style);
    if (isAlternative) style.display = Display::none;
    if (!matcher_ || (sheets_.empty() && !tree_.has(element, AttributeName::style))) return;
    CascadedValues values;
    matcher_->cascade(element, values);
    style.generatesContent = matcher_->generatesContent();
    if (!values.any()) return;
    applied_ = true;
    const auto take = [&](CssProperty property, auto& own, auto inherited, auto initial, bool inherits) {
        own = computed(values.value(property), own, inherited, initial, inherits);
    };
    take(CssProperty::display, style.display, parent.display, Display::inline_, false);
    take(CssProperty::visibility, style.visibility, parent.visibility, Visibility::visible, true);
    take(CssProperty::whiteSpace, style.whiteSpace, parent.whiteSpace, WhiteSpace::normal, true);
    take(CssProperty::listStyle, style.listStyle, parent.listStyle, ListStyle::bullet, true);
    take(CssProperty::floating, style.floating, parent.floating, Flow::inFlow, false);
    take(CssProperty::position, style.positioned, parent.positioned, Flow::inFlow, false);
    take(CssProperty::boxOrient, style.boxOrient, parent.boxOrient, BoxOrient::horizontal, false);
    take(CssProperty::lineClamp, style.lineClamp, parent.lineClamp, LineClamp::none, false);
    // CSS Overflow 4, section 4.1: lines are clamped in a block container.
    if (style.lineClamp == LineClamp::some && style.boxOrient == BoxOrient::vertical) {
        if (style.display == Display::box) style.display = Display::block;
        if (style.display == Display::inlineBox) style.display = Display::inlineBlock;
    }
}

GeneratedContent StyleResolver::generated(PseudoElement pseudo, const Style& style) const {
    CascadedValues values;
    matcher_->cascadeGenerated(pseudo, values);
    return values.any() ? generatedContent(values, style) : GeneratedContent{};
}

} // namespace quillow::html
