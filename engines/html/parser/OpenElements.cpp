#include "engines/html/parser/OpenElements.h"

#include <algorithm>

namespace quillow::html {

namespace {

constexpr TagSet kSpecial{
    Tag::address, Tag::applet,     Tag::area,      Tag::article,    Tag::aside,     Tag::base,     Tag::basefont,
    Tag::bgsound, Tag::blockquote, Tag::body,      Tag::br,         Tag::button,    Tag::caption,  Tag::center,
    Tag::col,     Tag::colgroup,   Tag::dd,        Tag::details,    Tag::dir,       Tag::div,      Tag::dl,
    Tag::dt,      Tag::embed,      Tag::fieldset,  Tag::figcaption, Tag::figure,    Tag::footer,   Tag::form,
    Tag::frame,   Tag::frameset,   Tag::h1,        Tag::h2,         Tag::h3,        Tag::h4,       Tag::h5,
    Tag::h6,      Tag::head,       Tag::header,    Tag::hgroup,     Tag::hr,        Tag::html,     Tag::iframe,
    Tag::img,     Tag::input,      Tag::keygen,    Tag::li,         Tag::link,      Tag::listing,  Tag::main,
    Tag::marquee, Tag::menu,       Tag::meta,      Tag::nav,        Tag::noembed,   Tag::noframes, Tag::noscript,
    Tag::object,  Tag::ol,         Tag::p,         Tag::param,      Tag::plaintext, Tag::pre,      Tag::script,
    Tag::search,  Tag::section,    Tag::select,    Tag::source,     Tag::style,     Tag::summary,  Tag::table,
    Tag::tbody,   Tag::td,         Tag::template_, Tag::textarea,   Tag::tfoot,     Tag::th,       Tag::thead,
    Tag::title,   Tag::tr,         Tag::track,     Tag::ul,         Tag::wbr,       Tag::xmp};
constexpr TagSet kSpecialMath{Tag::mi, Tag::mo, Tag::mn, Tag::ms, Tag::mtext, Tag::annotationXml};
constexpr TagSet kSpecialSvg{Tag::foreignObject, Tag::desc, Tag::title};

constexpr TagSet kImpliedEnd{Tag::dd, Tag::dt, Tag::li, Tag::optgroup, Tag::option,
                             Tag::p,  Tag::rb, Tag::rp, Tag::rt,       Tag::rtc};
constexpr TagSet kImpliedEndThoroughly =
    kImpliedEnd.with({Tag::caption, Tag::colgroup, Tag::tbody, Tag::td, Tag::tfoot, Tag::th, Tag::thead, Tag::tr});
constexpr TagSet kScopeEnds{Tag::applet, Tag::caption, Tag::html,   Tag::table,  Tag::td,
                            Tag::th,     Tag::marquee, Tag::object, Tag::select, Tag::template_};
constexpr TagSet kTableScopeEnds{Tag::html, Tag::table, Tag::template_};
constexpr TagSet kMathScopeEnds{Tag::mi, Tag::mo, Tag::mn, Tag::ms, Tag::mtext, Tag::annotationXml};
constexpr TagSet kSvgScopeEnds{Tag::foreignObject, Tag::desc, Tag::title};

bool endsScope(const OpenElement& element, Scope scope) {
    if (scope == Scope::table) return element.space == Namespace::html && kTableScopeEnds.contains(element.tag);
    if (element.space == Namespace::mathMl) return kMathScopeEnds.contains(element.tag);
    if (element.space == Namespace::svg) return kSvgScopeEnds.contains(element.tag);
    if (kScopeEnds.contains(element.tag)) return true;
    if (scope == Scope::listItem) return element.tag == Tag::ol || element.tag == Tag::ul;
    return scope == Scope::button && element.tag == Tag::button;
}

} // namespace

bool isSpecial(const OpenElement& element) {
    if (element.space == Namespace::html) return kSpecial.contains(element.tag);
    return (element.space == Namespace::svg ? kSpecialSvg : kSpecialMath).contains(element.tag);
}

bool OpenElements::isOpen(Tag tag) const {
    return counted(std::find_if(elements_.rbegin(), elements_.rend(), [tag](const OpenElement& element) {
               return element.space == Namespace::html && element.tag == tag;
           })) != elements_.rend();
}

std::size_t OpenElements::find(NodeId id) const {
    const auto found = counted(std::find_if(elements_.rbegin(), elements_.rend(),
                                            [id](const OpenElement& element) { return element.id == id; }));
    return static_cast<std::size_t>(elements_.rend() - found) - 1; // kNotOpen if found is the end
}

bool OpenElements::hasInScope(const TagSet& tags, Scope scope) const {
    const auto isOne = [&](const OpenElement& element) {
        return element.space == Namespace::html && tags.contains(element.tag);
    };
    const auto found = counted(std::find_if(elements_.rbegin(), elements_.rend(), [&](const OpenElement& element) {
        return isOne(element) || endsScope(element, scope);
    }));
    return found != elements_.rend() && isOne(*found);
}

bool OpenElements::isInScope(std::size_t index) const {
    return std::none_of(elements_.begin() + static_cast<std::ptrdiff_t>(index) + 1, elements_.end(),
                        [](const OpenElement& element) { return endsScope(element, Scope::standard); });
}

std::size_t OpenElements::furthestBlock(std::size_t index) const {
    const auto found =
        std::find_if(elements_.begin() + static_cast<std::ptrdiff_t>(index) + 1, elements_.end(), isSpecial);
    return found == elements_.end() ? kNotOpen : static_cast<std::size_t>(found - elements_.begin());
}

void OpenElements::popUntil(const TagSet& tags) {
    while (size() > 1) {
        const OpenElement element = current();
        pop();
        if (element.space == Namespace::html && tags.contains(element.tag)) return;
    }
}

void OpenElements::clear() {
    elements_.clear();
    openParagraphs_ = 0;
}

void OpenElements::insert(std::size_t index, const OpenElement& element) {
    if (element.tag == Tag::p) ++openParagraphs_;
    elements_.insert(elements_.begin() + static_cast<std::ptrdiff_t>(index), element);
}

void OpenElements::remove(NodeId id) {
    if (const std::size_t index = find(id); index != kNotOpen) removeAt(index);
}

void OpenElements::removeAt(std::size_t index) {
    if (elements_[index].tag == Tag::p) --openParagraphs_;
    elements_.erase(elements_.begin() + static_cast<std::ptrdiff_t>(index));
}

void OpenElements::clearBackTo(const TagSet& tags) {
    const TagSet context = tags.with({Tag::template_, Tag::html});
    while (!currentIsIn(context))
        pop();
}

void OpenElements::generateImpliedEndTags(Tag except) {
    while (currentIsIn(kImpliedEnd) && current().tag != except)
        pop();
}

void OpenElements::generateAllImpliedEndTags() {
    while (currentIsIn(kImpliedEndThoroughly))
        pop();
}

void OpenElements::closeParagraph() {
    generateImpliedEndTags(Tag::p);
    popUntil({Tag::p});
}

void OpenElements::unlink(const OpenElement& element) {
    for (OpenElement& other : elements_) {
        if (other.id == element.parent && other.lastChild == element.id) other.lastChild = element.previous;
        if (other.previous == element.id) other.previous = element.previous;
    }
    steps_ += size();
}

void OpenElements::changeParent(std::size_t index, NodeId from, NodeId to) {
    for (std::size_t i = index; i < size(); ++i) {
        if (elements_[i].parent != from) continue;
        elements_[i].parent = to;
        if (to == kNoNode) elements_[i].previous = kNoNode;
    }
    steps_ += size() - index;
}

} // namespace quillow::html
