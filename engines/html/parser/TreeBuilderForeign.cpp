// 13.2.6.5 The rules for parsing tokens in foreign content: SVG and MathML.
#include "engines/html/parser/TreeBuilder.h"
#include "text/Ascii.h"

namespace quillow::html {

namespace {

/// Start tags that end foreign content.
constexpr TagSet kBreakouts{
    Tag::b,      Tag::big,  Tag::blockquote, Tag::body,  Tag::br,   Tag::center, Tag::code,    Tag::dd,   Tag::div,
    Tag::dl,     Tag::dt,   Tag::em,         Tag::embed, Tag::h1,   Tag::h2,     Tag::h3,      Tag::h4,   Tag::h5,
    Tag::h6,     Tag::head, Tag::hr,         Tag::i,     Tag::img,  Tag::li,     Tag::listing, Tag::menu, Tag::meta,
    Tag::nobr,   Tag::ol,   Tag::p,          Tag::pre,   Tag::ruby, Tag::s,      Tag::small,   Tag::span, Tag::strong,
    Tag::strike, Tag::sub,  Tag::sup,        Tag::table, Tag::tt,   Tag::u,      Tag::ul,      Tag::var};

bool hasFontAttribute(const Token& token) {
    for (const Attribute& attribute : token.attributes)
        if (attribute.known() == AttributeName::color || attribute.known() == AttributeName::face ||
            attribute.known() == AttributeName::size)
            return true;
    return false;
}

} // namespace

bool TreeBuilder::isMathTextIntegrationPoint(const OpenElement& element) {
    constexpr TagSet kPoints{Tag::mi, Tag::mo, Tag::mn, Tag::ms, Tag::mtext};
    return element.space == Namespace::mathMl && kPoints.contains(element.tag);
}

bool TreeBuilder::isHtmlIntegrationPoint(const OpenElement& element) const {
    if (element.space == Namespace::svg)
        return element.tag == Tag::foreignObject || element.tag == Tag::desc || element.tag == Tag::title;
    if (element.space != Namespace::mathMl || element.tag != Tag::annotationXml) return false;
    const auto encoding = tree_.attribute(tree_.resolved(element.id), AttributeName::encoding);
    return encoding && (text::equalsIgnoringCase(*encoding, "text/html") ||
                        text::equalsIgnoringCase(*encoding, "application/xhtml+xml"));
}

TreeBuilder::Next TreeBuilder::inForeignContent(Token& token) {
    switch (token.type) {
    case TokenType::characters:
        for (const char c : token.text)
            if (c != '\0' && !text::isBlank(c)) framesetOk_ = false;
        insertCharacters(tree_.withReplacements(token.text));
        return Next::token;
    case TokenType::startTag: return foreignStartTag(token);
    case TokenType::endTag: return foreignEndTag(token);
    default: return Next::token;
    }
}

TreeBuilder::Next TreeBuilder::foreignStartTag(Token& token) {
    if (kBreakouts.contains(token.tag) || (token.tag == Tag::font && hasFontAttribute(token))) {
        // Back to HTML, by the rules of the current insertion mode.
        while (open_.current().space != Namespace::html && !isMathTextIntegrationPoint(open_.current()) &&
               !isHtmlIntegrationPoint(open_.current()))
            open_.pop();
        return dispatchByMode(token);
    }
    insertElement(token, adjustedCurrent().space);
    if (token.selfClosing) open_.pop();
    return Next::token;
}

TreeBuilder::Next TreeBuilder::foreignEndTag(Token& token) {
    if (token.tag == Tag::br || token.tag == Tag::p) {
        while (open_.current().space != Namespace::html && !isMathTextIntegrationPoint(open_.current()) &&
               !isHtmlIntegrationPoint(open_.current()))
            open_.pop();
        return dispatchByMode(token);
    }
    for (std::size_t i = open_.size(); i-- > 1;) {
        if (open_[i].space == Namespace::html) return dispatchByMode(token);
        if (tree_.text(tree_.resolved(open_[i].id)) == token.name) {
            open_.popTo(i);
            return Next::token;
        }
    }
    return Next::token;
}

} // namespace quillow::html
