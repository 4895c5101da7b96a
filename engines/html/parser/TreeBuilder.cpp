#include "engines/html/parser/TreeBuilder.h"

#include "text/Ascii.h"

namespace quillow::html {

namespace {

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
    selectedContent_.noteClosedElements();
}

/// Keeps the stack below kMaxTreeDepth: closes elements, so that the next one becomes a sibling.
void TreeBuilder::boundDepth() {
    while (open_.size() >= kMaxTreeDepth) {
        const OpenElement last = open_.current();
        if (last.tag == Tag::template_ && last.space == Namespace::html && !templateModes_.empty())
            templateModes_.pop_back();
        if (last.space == Namespace::html && kMarkerElements.contains(last.tag)) formatting_.clearToMarker();
        formatting_.remove(last.id);
        open_.pop();
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

void TreeBuilder::openHtml(NodeId html) {
    html_ = html;
    open_.push({html, Tag::html, Namespace::html, Tree::kDocument});
}

/// 13.2.4.1 "Reset the insertion mode appropriately".
void TreeBuilder::resetInsertionMode() {
    for (std::size_t i = open_.size(); i-- > 0;) {
        ++steps_;
        const bool last = i == 0;
        const OpenElement& node = last && isFragment() ? context_ : open_[i];
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

/// Inserts an element without opening it.
OpenElement TreeBuilder::addElement(const Token& token, Namespace space) {
    if (inserter_.fosters()) {
        const NodeId element = tree_.createElement(token.tag, token.name, space, token.attributes);
        return inserter_.insert(inserter_.appropriatePlace(), {element, token.tag, space});
    }
    OpenElement& parent = open_.current();
    const NodeId previous = parent.lastChild;
    parent.lastChild = tree_.appendElement(parent.id, previous, token.tag, token.name, space, token.attributes);
    return {parent.lastChild, token.tag, space, parent.id, previous};
}

NodeId TreeBuilder::insertElement(const Token& token, Namespace space) {
    if (space != Namespace::html) sawUncommon_ = true;
    if (inserter_.fosters()) {
        open_.push(addElement(token, space));
        return open_.current().id;
    }
    const NodeId parent = open_.current().id;
    const NodeId previous = open_.current().lastChild;
    const NodeId id = tree_.appendElement(parent, previous, token.tag, token.name, space, token.attributes);
    open_.current().lastChild = id;
    open_.push({id, token.tag, space, parent, previous});
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
    if (inserter_.fosters()) return insertFosteredText(text);
    OpenElement& parent = open_.current();
    parent.lastChild = tree_.appendText(parent.id, parent.lastChild, text);
}

void TreeBuilder::insertFosteredText(std::string_view text) {
    inserter_.insert(inserter_.appropriatePlace(), {tree_.createText(text)});
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
