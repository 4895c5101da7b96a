#include "engines/html/parser/TreeBuilder.h"

#include "text/Ascii.h"

#include <algorithm>

namespace quillow::html {

namespace {

constexpr TagSet kImpliedEnd{Tag::dd, Tag::dt, Tag::li, Tag::optgroup, Tag::option,
                             Tag::p,  Tag::rb, Tag::rp, Tag::rt,       Tag::rtc};
constexpr TagSet kImpliedEndThoroughly =
    kImpliedEnd.with({Tag::caption, Tag::colgroup, Tag::tbody, Tag::td, Tag::tfoot, Tag::th, Tag::thead, Tag::tr});
constexpr TagSet kScopeEnds{Tag::applet, Tag::caption, Tag::html,   Tag::table,  Tag::td,
                            Tag::th,     Tag::marquee, Tag::object, Tag::select, Tag::template_};
constexpr TagSet kTableScopeEnds{Tag::html, Tag::table, Tag::template_};
constexpr TagSet kMathScopeEnds{Tag::mi, Tag::mo, Tag::mn, Tag::ms, Tag::mtext, Tag::annotationXml};
constexpr TagSet kSvgScopeEnds{Tag::foreignObject, Tag::desc, Tag::title};
/// Elements whose end changes the insertion mode.
constexpr TagSet kModeElements{Tag::table, Tag::tbody,   Tag::tfoot,    Tag::thead,     Tag::tr,       Tag::td,
                               Tag::th,    Tag::caption, Tag::colgroup, Tag::template_, Tag::frameset, Tag::head};

/// Elements that put a marker into the list of active formatting elements.
constexpr TagSet kMarkerElements{Tag::td,     Tag::th,      Tag::caption,  Tag::applet,
                                 Tag::object, Tag::marquee, Tag::template_};

} // namespace

std::string_view leadingWhiteSpace(std::string_view text) {
    std::size_t end = 0;
    while (end < text.size() && text::isBlank(text[end]))
        ++end;
    return text.substr(0, end);
}

void TreeBuilder::runFragment(NodeId context) {
    const Node& node = tree_.node(context);
    context_.id = context;
    context_.tag = node.tag;
    context_.space = node.space;
    sawUncommon_ = node.space != Namespace::html;
    const Tag tag = node.space == Namespace::html ? node.tag : Tag::unknown;
    // 4. The tokenizer's state. Such content has no start tag, so no end tag matches, and most of it is plain text.
    constexpr TagSet kPlain{Tag::style,    Tag::xmp,    Tag::iframe,   Tag::noembed,
                            Tag::noframes, Tag::script, Tag::plaintext};
    if (tag == Tag::title || tag == Tag::textarea) tokenizer_.switchTo(Tokenizer::State::rcdata);
    if (kPlain.contains(tag)) tokenizer_.switchTo(Tokenizer::State::plaintext);
    // 5. to 7. The root.
    openHtml(tree_.appendElement(Tree::kDocument, kNoNode, Tag::html, tagName(Tag::html), Namespace::html, {}));
    // 8. and the steps after it.
    if (tag == Tag::template_) templateModes_.push_back(Mode::inTemplate);
    resetInsertionMode();
    if (tag == Tag::form) form_ = context;
    readTokens();
}

void TreeBuilder::readTokens() {
    Token token;
    while (!finished_) {
        if (sawUncommon_) beforeUncommonToken();
        tokenizer_.next(token);
        if (skipLineFeed_) {
            skipLineFeed_ = false;
            if (token.type == TokenType::characters && token.text.front() == '\n') token.text.remove_prefix(1);
            if (token.type == TokenType::characters && token.text.empty()) continue;
        }
        if (token.type == TokenType::comment) {
            // A comment makes no node, but it ends the pending table characters.
            if (mode_ == Mode::inTableText) inTableText(token);
            continue;
        }
        if (token.type == TokenType::startTag) {
            ++startTags_;
            if (open_.size() >= kMaxTreeDepth) boundDepth();
        }
        while (dispatch(token) == Next::reprocess) {
        }
    }
    // "Stop parsing": all elements are popped off the stack.
    open_.clear();
    noteClosedOption();
}

/// Keeps the stack below kMaxTreeDepth: closes elements, so that the next one becomes a sibling.
void TreeBuilder::boundDepth() {
    while (open_.size() >= kMaxTreeDepth) {
        const OpenElement last = current();
        if (last.tag == Tag::template_ && last.space == Namespace::html && !templateModes_.empty())
            templateModes_.pop_back();
        if (last.space == Namespace::html && kMarkerElements.contains(last.tag)) clearFormattingToMarker();
        removeFormatting(last.id);
        pop();
        if (last.space == Namespace::html && kModeElements.contains(last.tag)) resetInsertionMode();
    }
}

/// 13.2.6, the tree construction dispatcher.
bool TreeBuilder::usesForeignRules(const Token& token) const {
    if (!sawUncommon_ || open_.empty() || token.type == TokenType::endOfFile) return false;
    const OpenElement& node = adjustedCurrent();
    if (node.space == Namespace::html) return false;
    const bool startTag = token.type == TokenType::startTag;
    const bool characters = token.type == TokenType::characters;
    if (isMathTextIntegrationPoint(node)) {
        if (characters) return false;
        if (startTag && token.tag != Tag::mglyph && token.tag != Tag::malignmark) return false;
    }
    if (node.space == Namespace::mathMl && node.tag == Tag::annotationXml && startTag && token.tag == Tag::svg)
        return false;
    return !(isHtmlIntegrationPoint(node) && (startTag || characters));
}

/// Applies the rules of the current insertion mode.
TreeBuilder::Next TreeBuilder::dispatchByMode(Token& token) {
    switch (mode_) {
    case Mode::initial: return initial(token);
    case Mode::beforeHtml: return beforeHtml(token);
    case Mode::beforeHead: return beforeHead(token);
    case Mode::inHead: return inHead(token);
    case Mode::inHeadNoscript: return inHeadNoscript(token);
    case Mode::afterHead: return afterHead(token);
    case Mode::inBody: return inBody(token);
    case Mode::text: return text(token);
    case Mode::inTable: return inTable(token);
    case Mode::inTableText: return inTableText(token);
    case Mode::inCaption: return inCaption(token);
    case Mode::inColumnGroup: return inColumnGroup(token);
    case Mode::inTableBody: return inTableBody(token);
    case Mode::inRow: return inRow(token);
    case Mode::inCell: return inCell(token);
    case Mode::inTemplate: return inTemplate(token);
    case Mode::afterBody: return afterBody(token);
    case Mode::inFrameset: return inFrameset(token);
    case Mode::afterFrameset: return afterFrameset(token);
    case Mode::afterAfterBody: return afterAfterBody(token);
    case Mode::afterAfterFrameset: return afterAfterFrameset(token);
    }
    return Next::token;
}

bool TreeBuilder::isOpen(Tag tag) const {
    return counted(std::find_if(open_.rbegin(), open_.rend(), [tag](const OpenElement& element) {
               return element.space == Namespace::html && element.tag == tag;
           })) != open_.rend();
}

bool TreeBuilder::isInStack(NodeId id) const {
    return counted(std::find_if(open_.rbegin(), open_.rend(),
                                [id](const OpenElement& element) { return element.id == id; })) != open_.rend();
}

/// Whether an element is open. `place` is its index in the stack at the last search, and is updated.
bool TreeBuilder::isStillOpen(NodeId id, std::size_t& place) const {
    if (place < open_.size() && open_[place].id == id) return true;
    const auto found = counted(
        std::find_if(open_.rbegin(), open_.rend(), [id](const OpenElement& element) { return element.id == id; }));
    place = static_cast<std::size_t>(open_.rend() - found) - 1;
    return found != open_.rend();
}

/// 13.2.4.2: whether a scope ends at this element.
bool TreeBuilder::endsScope(const OpenElement& element, Scope scope) {
    if (scope == Scope::table) return element.space == Namespace::html && kTableScopeEnds.contains(element.tag);
    if (element.space == Namespace::mathMl) return kMathScopeEnds.contains(element.tag);
    if (element.space == Namespace::svg) return kSvgScopeEnds.contains(element.tag);
    if (kScopeEnds.contains(element.tag)) return true;
    if (scope == Scope::listItem) return element.tag == Tag::ol || element.tag == Tag::ul;
    return scope == Scope::button && element.tag == Tag::button;
}

bool TreeBuilder::hasInScope(const TagSet& tags, Scope scope) const {
    const auto isOne = [&](const OpenElement& element) {
        return element.space == Namespace::html && tags.contains(element.tag);
    };
    const auto found = counted(std::find_if(open_.rbegin(), open_.rend(), [&](const OpenElement& element) {
        return isOne(element) || endsScope(element, scope);
    }));
    return found != open_.rend() && isOne(*found);
}

void TreeBuilder::push(const OpenElement& element) {
    if (element.tag == Tag::p) ++openParagraphs_;
    open_.push_back(element);
}

void TreeBuilder::openHtml(NodeId html) {
    html_ = html;
    push({html, Tag::html, Namespace::html, Tree::kDocument});
}

void TreeBuilder::pop() {
    if (open_.back().tag == Tag::p) --openParagraphs_;
    open_.pop_back();
}

void TreeBuilder::popUntil(const TagSet& tags) {
    while (open_.size() > 1) {
        const OpenElement element = current();
        pop();
        if (element.space == Namespace::html && tags.contains(element.tag)) return;
    }
}

void TreeBuilder::removeFromStack(NodeId id) {
    for (std::size_t i = open_.size(); i-- > 0;) {
        ++steps_;
        if (open_[i].id != id) continue;
        if (open_[i].tag == Tag::p) --openParagraphs_;
        open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(i));
        return;
    }
}

/// "Clear the stack back to a table (body, row) context".
void TreeBuilder::clearStackBackTo(const TagSet& tags) {
    const TagSet context = tags.with({Tag::template_, Tag::html});
    while (!currentIsIn(context))
        pop();
}

/// 13.2.6.3 Closing elements that have implied end tags.
void TreeBuilder::generateImpliedEndTags(Tag except) {
    while (currentIsIn(kImpliedEnd) && current().tag != except)
        pop();
}

void TreeBuilder::generateAllImpliedEndTags() {
    while (currentIsIn(kImpliedEndThoroughly))
        pop();
}

void TreeBuilder::closeParagraph() {
    generateImpliedEndTags(Tag::p);
    popUntil({Tag::p});
}

/// 13.2.4.1 "Reset the insertion mode appropriately".
void TreeBuilder::resetInsertionMode() {
    for (auto element = open_.rbegin(); element != open_.rend(); ++element) {
        ++steps_;
        const bool last = element + 1 == open_.rend();
        const OpenElement& node = last && isFragment() ? context_ : *element;
        if (node.space != Namespace::html) continue;
        switch (node.tag) {
        case Tag::td:
        case Tag::th: mode_ = last ? Mode::inBody : Mode::inCell; return;
        case Tag::tr: mode_ = Mode::inRow; return;
        case Tag::tbody:
        case Tag::thead:
        case Tag::tfoot: mode_ = Mode::inTableBody; return;
        case Tag::caption: mode_ = Mode::inCaption; return;
        case Tag::colgroup: mode_ = Mode::inColumnGroup; return;
        case Tag::table: mode_ = Mode::inTable; return;
        case Tag::template_: mode_ = templateModes_.empty() ? Mode::inBody : templateModes_.back(); return;
        case Tag::head: mode_ = last ? Mode::inBody : Mode::inHead; return;
        case Tag::body: mode_ = Mode::inBody; return;
        case Tag::frameset: mode_ = Mode::inFrameset; return;
        case Tag::html: mode_ = head_.id == kNoNode ? Mode::beforeHead : Mode::afterHead; return;
        default: break;
        }
    }
    mode_ = Mode::inBody;
}

/// 13.2.6.1 "Appropriate place for inserting a node", with foster parenting.
TreeBuilder::Place TreeBuilder::appropriatePlace(OpenElement& target) {
    if (!fosterParenting_ || target.space != Namespace::html || !kTableContext.contains(target.tag)) return {&target};
    for (std::size_t i = open_.size(); i-- > 0;) {
        ++steps_;
        if (open_[i].space != Namespace::html) continue;
        if (open_[i].tag == Tag::template_) return {&open_[i]};
        if (open_[i].tag != Tag::table) continue;
        if (open_[i].parent != kNoNode) return {nullptr, &open_[i]};
        return {&open_[i - 1]};
    }
    return {&open_.front()};
}

OpenElement TreeBuilder::insertAt(const Place& place, OpenElement node) {
    node.parent = place.parentId();
    node.previous = place.previous();
    tree_.insert(node.parent, node.previous, node.id);
    place.fill(node.id);
    return node;
}

/// Inserts an element without opening it.
OpenElement TreeBuilder::addElement(const Token& token, Namespace space) {
    if (fosterParenting_) {
        const NodeId element = tree_.createElement(token.tag, token.name, space, token.attributes);
        return insertAt(appropriatePlace(), {element, token.tag, space});
    }
    OpenElement& parent = current();
    const NodeId previous = parent.lastChild;
    parent.lastChild = tree_.appendElement(parent.id, previous, token.tag, token.name, space, token.attributes);
    return {parent.lastChild, token.tag, space, parent.id, previous};
}

NodeId TreeBuilder::insertElement(const Token& token, Namespace space) {
    if (space != Namespace::html) sawUncommon_ = true;
    if (token.tag == Tag::p) ++openParagraphs_;
    if (fosterParenting_) {
        open_.push_back(addElement(token, space));
        return current().id;
    }
    const NodeId parent = current().id;
    const NodeId previous = current().lastChild;
    const NodeId id = tree_.appendElement(parent, previous, token.tag, token.name, space, token.attributes);
    current().lastChild = id;
    open_.push_back({id, token.tag, space, parent, previous});
    return id;
}

void TreeBuilder::insertVoid(const Token& token) {
    addElement(token, Namespace::html);
}

NodeId TreeBuilder::insertImplied(Tag tag) {
    Token token;
    token.tag = tag;
    token.name = tagName(tag);
    return insertElement(token);
}

void TreeBuilder::insertCharacters(std::string_view text) {
    if (text.empty()) return;
    if (fosterParenting_) return insertFosteredText(text);
    OpenElement& parent = current();
    parent.lastChild = tree_.appendText(parent.id, parent.lastChild, text);
}

void TreeBuilder::insertFosteredText(std::string_view text) {
    insertAt(appropriatePlace(), {tree_.createText(text)});
}

/// Inserts characters without U+0000, which is a parse error and is ignored.
void TreeBuilder::insertWithoutNul(std::string_view text) {
    while (!text.empty()) {
        const std::size_t nul = text.find('\0');
        insertCharacters(text.substr(0, nul));
        if (nul == std::string_view::npos) return;
        text.remove_prefix(nul + 1);
    }
}

/// 13.2.6.2 Parsing elements that contain only text.
void TreeBuilder::parseRawText(const Token& token, Tokenizer::State state) {
    insertElement(token);
    tokenizer_.switchTo(state);
    originalMode_ = mode_;
    mode_ = Mode::text;
}

void TreeBuilder::mergeAttributes(NodeId element, const Token& token) {
    if (token.attributes.empty() || ++attributeMerges_ > kMaxAttributeMerges) return;
    steps_ += (tree_.attributes(element).size() + token.attributes.size()) * token.attributes.size();
    tree_.addMissingAttributes(element, token.attributes);
}

} // namespace quillow::html
