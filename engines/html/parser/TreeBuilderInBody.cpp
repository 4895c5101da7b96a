// 13.2.6.4.7 The "in body" insertion mode.
#include "engines/html/parser/TreeBuilder.h"
#include "text/Ascii.h"

#include <algorithm>

namespace quillow::html {

namespace {

constexpr TagSet kAsInHead{Tag::base,     Tag::basefont, Tag::bgsound, Tag::link,      Tag::meta,
                           Tag::noframes, Tag::script,   Tag::style,   Tag::template_, Tag::title};
constexpr TagSet kBlocks{Tag::address,  Tag::article,    Tag::aside,   Tag::blockquote, Tag::center,
                         Tag::details,  Tag::dialog,     Tag::dir,     Tag::div,        Tag::dl,
                         Tag::fieldset, Tag::figcaption, Tag::figure,  Tag::footer,     Tag::header,
                         Tag::hgroup,   Tag::main,       Tag::menu,    Tag::nav,        Tag::ol,
                         Tag::p,        Tag::search,     Tag::section, Tag::summary,    Tag::ul};
constexpr TagSet kBlocksWithEnd{
    Tag::address, Tag::article, Tag::aside,  Tag::blockquote, Tag::button,   Tag::center,     Tag::details,
    Tag::dialog,  Tag::dir,     Tag::div,    Tag::dl,         Tag::fieldset, Tag::figcaption, Tag::figure,
    Tag::footer,  Tag::header,  Tag::hgroup, Tag::listing,    Tag::main,     Tag::menu,       Tag::nav,
    Tag::ol,      Tag::pre,     Tag::search, Tag::section,    Tag::select,   Tag::summary,    Tag::ul};
constexpr TagSet kFormatting{Tag::b, Tag::big,   Tag::code,   Tag::em,     Tag::font, Tag::i,
                             Tag::s, Tag::small, Tag::strike, Tag::strong, Tag::tt,   Tag::u};
constexpr TagSet kMarked{Tag::applet, Tag::marquee, Tag::object};
constexpr TagSet kIgnoredStarts{Tag::caption, Tag::col,   Tag::colgroup, Tag::frame, Tag::head, Tag::tbody,
                                Tag::td,      Tag::tfoot, Tag::th,       Tag::thead, Tag::tr};

const Attribute* findAttribute(const Token& token, AttributeName name) {
    const auto found = std::find_if(token.attributes.begin(), token.attributes.end(),
                                    [&](const Attribute& attribute) { return attribute.known() == name; });
    return found == token.attributes.end() ? nullptr : &*found;
}

} // namespace

TreeBuilder::Next TreeBuilder::inBody(Token& token) {
    switch (token.type) {
    case TokenType::characters: inBodyCharacters(token); return Next::token;
    case TokenType::doctype:
    case TokenType::comment: return Next::token;
    case TokenType::startTag: return inBodyStartTag(token);
    case TokenType::endTag: return inBodyEndTag(token);
    case TokenType::endOfFile:
        if (!templateModes_.empty()) return inTemplate(token);
        finished_ = true;
        return Next::token;
    }
    return Next::token;
}

void TreeBuilder::inBodyCharacters(const Token& token) {
    if (token.holdsNul && std::all_of(token.text.begin(), token.text.end(), [](char c) { return c == '\0'; })) return;
    reconstructFormatting();
    if (token.holdsNul) {
        insertWithoutNul(token.text);
    } else {
        insertCharacters(token.text);
    }
    if (framesetOk_)
        framesetOk_ =
            std::all_of(token.text.begin(), token.text.end(), [](char c) { return text::isBlank(c) || c == '\0'; });
}

TreeBuilder::Next TreeBuilder::inBodyStartTag(Token& token) {
    if (kBlocks.contains(token.tag)) {
        open_.closeParagraphInButtonScope();
        insertElement(token);
        return Next::token;
    }
    if (kFormatting.contains(token.tag)) {
        reconstructFormatting();
        formatting_.push(insertElement(token));
        return Next::token;
    }
    if (kAsInHead.contains(token.tag)) return inHead(token);
    if (kHeadings.contains(token.tag)) {
        open_.closeParagraphInButtonScope();
        if (open_.currentIsIn(kHeadings)) open_.pop();
        insertElement(token);
        return Next::token;
    }
    if (kMarked.contains(token.tag)) {
        reconstructFormatting();
        insertElement(token);
        formatting_.insertMarker();
        framesetOk_ = false;
        return Next::token;
    }
    if (kIgnoredStarts.contains(token.tag)) return Next::token;
    return inBodyOtherStartTag(token);
}

TreeBuilder::Next TreeBuilder::inBodyOtherStartTag(Token& token) {
    switch (token.tag) {
    case Tag::html:
        if (!open_.isOpen(Tag::template_)) mergeAttributes(html_, token);
        break;
    case Tag::body:
        if (open_.size() < 2 || open_[1].tag != Tag::body || open_.isOpen(Tag::template_)) break;
        framesetOk_ = false;
        mergeAttributes(open_[1].id, token);
        break;
    case Tag::frameset: startFrameset(token); break;
    case Tag::pre:
    case Tag::listing:
        open_.closeParagraphInButtonScope();
        insertElement(token);
        skipLineFeed_ = true;
        framesetOk_ = false;
        break;
    case Tag::form: startForm(token); break;
    case Tag::li: startListItem(token, {Tag::li}); break;
    case Tag::dd:
    case Tag::dt: startListItem(token, {Tag::dd, Tag::dt}); break;
    case Tag::plaintext:
        open_.closeParagraphInButtonScope();
        insertElement(token);
        tokenizer_.switchTo(Tokenizer::State::plaintext);
        break;
    case Tag::button:
        if (open_.hasInScope({Tag::button})) {
            open_.generateImpliedEndTags();
            open_.popUntil({Tag::button});
        }
        reconstructFormatting();
        insertElement(token);
        framesetOk_ = false;
        break;
    case Tag::a:
        if (const std::size_t listed = formatting_.findLast(Tag::a); listed != ActiveFormattingElements::kNotListed) {
            const NodeId element = formatting_[listed].id;
            adoptionAgency(token);
            formatting_.remove(element);
            open_.remove(element);
        }
        reconstructFormatting();
        formatting_.push(insertElement(token));
        break;
    case Tag::nobr:
        reconstructFormatting();
        if (open_.hasInScope({Tag::nobr})) {
            adoptionAgency(token);
            reconstructFormatting();
        }
        formatting_.push(insertElement(token));
        break;
    case Tag::table:
        if (!tree_.isQuirky()) open_.closeParagraphInButtonScope();
        insertElement(token);
        framesetOk_ = false;
        mode_ = Mode::inTable;
        break;
    case Tag::area:
    case Tag::br:
    case Tag::embed:
    case Tag::img:
    case Tag::keygen:
    case Tag::wbr:
        reconstructFormatting();
        insertVoid(token);
        framesetOk_ = false;
        break;
    case Tag::input: startInput(token); break;
    case Tag::param:
    case Tag::source:
    case Tag::track: insertVoid(token); break;
    case Tag::hr:
        open_.closeParagraphInButtonScope();
        if (open_.hasInScope({Tag::select})) open_.generateImpliedEndTags();
        insertVoid(token);
        framesetOk_ = false;
        break;
    case Tag::image:
        token.tag = Tag::img;
        token.name = tagName(Tag::img);
        return Next::reprocess;
    case Tag::textarea:
        parseRawText(token, Tokenizer::State::rcdata);
        skipLineFeed_ = true;
        framesetOk_ = false;
        break;
    case Tag::xmp:
        open_.closeParagraphInButtonScope();
        reconstructFormatting();
        framesetOk_ = false;
        parseRawText(token, Tokenizer::State::rawtext);
        break;
    case Tag::iframe:
        framesetOk_ = false;
        parseRawText(token, Tokenizer::State::rawtext);
        break;
    case Tag::noembed: parseRawText(token, Tokenizer::State::rawtext); break;
    case Tag::select:
    case Tag::optgroup:
    case Tag::option: startSelectPart(token); break;
    case Tag::selectedcontent: startSelectedContent(token); break;
    case Tag::rb:
    case Tag::rtc:
        if (open_.hasInScope({Tag::ruby})) open_.generateImpliedEndTags();
        insertElement(token);
        break;
    case Tag::rp:
    case Tag::rt:
        if (open_.hasInScope({Tag::ruby})) open_.generateImpliedEndTags(Tag::rtc);
        insertElement(token);
        break;
    case Tag::math:
    case Tag::svg:
        reconstructFormatting();
        insertElement(token, token.tag == Tag::svg ? Namespace::svg : Namespace::mathMl);
        if (token.selfClosing) open_.pop();
        break;
    default:
        reconstructFormatting();
        insertElement(token);
        break;
    }
    return Next::token;
}

void TreeBuilder::startFrameset(const Token& token) {
    if (open_.size() < 2 || open_[1].tag != Tag::body || !framesetOk_) return;
    takeOut(open_[1]);
    open_.popTo(1);
    insertElement(token);
    mode_ = Mode::inFrameset;
}

void TreeBuilder::startForm(const Token& token) {
    const bool inTemplate = open_.isOpen(Tag::template_);
    if (form_ != kNoNode && !inTemplate) return;
    open_.closeParagraphInButtonScope();
    const NodeId element = insertElement(token);
    if (!inTemplate) form_ = element;
}

/// The start tags "li", "dd" and "dt". Each closes an open element of its kind.
void TreeBuilder::startListItem(const Token& token, const TagSet& closes) {
    framesetOk_ = false;
    for (std::size_t i = open_.size(); i-- > 0;) {
        ++steps_;
        const OpenElement element = open_[i];
        if (element.space == Namespace::html && closes.contains(element.tag)) {
            open_.generateImpliedEndTags(element.tag);
            open_.popUntil(TagSet{element.tag});
            break;
        }
        if (isSpecial(element) && element.tag != Tag::address && element.tag != Tag::div && element.tag != Tag::p)
            break;
    }
    open_.closeParagraphInButtonScope();
    insertElement(token);
}

void TreeBuilder::startInput(const Token& token) {
    if (isSelectFragment()) return;
    if (open_.hasInScope({Tag::select})) open_.popUntil({Tag::select});
    reconstructFormatting();
    insertVoid(token);
    const Attribute* const type = findAttribute(token, AttributeName::type);
    if (type == nullptr || !text::equalsIgnoringCase(type->value(), "hidden")) framesetOk_ = false;
}

void TreeBuilder::startSelectPart(const Token& token) {
    const bool inSelect = open_.hasInScope({Tag::select});
    if (token.tag == Tag::select) {
        if (isSelectFragment()) return;
        if (inSelect) {
            open_.popUntil({Tag::select});
            return;
        }
        framesetOk_ = false;
    } else if (inSelect) {
        open_.generateImpliedEndTags(token.tag == Tag::option ? Tag::optgroup : Tag::unknown);
    } else if (open_.currentIs(Tag::option)) {
        open_.pop();
    }
    if (sawUncommon_) selectedContent_.noteClosedElements();
    reconstructFormatting();
    insertElement(token);
    if (sawUncommon_ && token.tag == Tag::option) selectedContent_.optionInserted();
}

void TreeBuilder::startSelectedContent(const Token& token) {
    reconstructFormatting();
    insertElement(token);
    selectedContent_.contentInserted();
    sawUncommon_ = true;
}

/// The end tag of a block: closes the element if it is in scope.
void TreeBuilder::endBlock(const TagSet& tags, Tag except, Scope scope) {
    if (!open_.hasInScope(tags, scope)) return;
    open_.generateImpliedEndTags(except);
    open_.popUntil(tags);
}

void TreeBuilder::endForm() {
    if (open_.isOpen(Tag::template_)) {
        endBlock({Tag::form}, Tag::unknown, Scope::standard);
        return;
    }
    const NodeId form = form_;
    form_ = kNoNode;
    if (form == kNoNode || !open_.isOpen(form) || !open_.hasInScope({Tag::form})) return;
    open_.generateImpliedEndTags();
    open_.remove(form);
}

TreeBuilder::Next TreeBuilder::inBodyEndTag(Token& token) {
    if (kBlocksWithEnd.contains(token.tag)) {
        endBlock(TagSet{token.tag}, Tag::unknown, Scope::standard);
        return Next::token;
    }
    if (kFormatting.contains(token.tag) || token.tag == Tag::a || token.tag == Tag::nobr) {
        adoptionAgency(token);
        return Next::token;
    }
    if (kMarked.contains(token.tag)) {
        if (!open_.hasInScope(TagSet{token.tag})) return Next::token;
        open_.generateImpliedEndTags();
        open_.popUntil(TagSet{token.tag});
        formatting_.clearToMarker();
        return Next::token;
    }
    if (kHeadings.contains(token.tag)) {
        endBlock(kHeadings, Tag::unknown, Scope::standard);
        return Next::token;
    }
    switch (token.tag) {
    case Tag::template_: return inHead(token);
    case Tag::body:
    case Tag::html:
        if (!open_.hasInScope({Tag::body})) break;
        mode_ = Mode::afterBody;
        return token.tag == Tag::html ? Next::reprocess : Next::token;
    case Tag::form: endForm(); break;
    case Tag::p:
        if (!open_.hasParagraphInButtonScope()) insertImplied(Tag::p);
        open_.closeParagraph();
        break;
    case Tag::li: endBlock({Tag::li}, Tag::li, Scope::listItem); break;
    case Tag::dd:
    case Tag::dt: endBlock(TagSet{token.tag}, token.tag, Scope::standard); break;
    case Tag::br:
        token.type = TokenType::startTag;
        token.attributes.clear();
        return inBodyStartTag(token);
    default: anyOtherEndTag(token); break;
    }
    return Next::token;
}

} // namespace quillow::html
