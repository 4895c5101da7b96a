// Insertion modes before, after and instead of the body: 13.2.6.4.1 to 13.2.6.4.6, 13.2.6.4.8, 13.2.6.4.16 and the
// sections after it.
#include "engines/html/parser/Quirks.h"
#include "engines/html/parser/TreeBuilder.h"
#include "text/Ascii.h"

#include <algorithm>

namespace quillow::html {

namespace {

/// Removes the leading white space from a token of characters and returns it.
std::string_view takeLeadingWhiteSpace(Token& token) {
    const std::string_view space = leadingWhiteSpace(token.text);
    token.text.remove_prefix(space.size());
    return space;
}

/// Removes the leading white space from a token of characters. Returns true if nothing is left of the token.
bool isOnlyWhiteSpace(Token& token) {
    if (token.type != TokenType::characters) return false;
    takeLeadingWhiteSpace(token);
    return token.text.empty();
}

} // namespace

TreeBuilder::Next TreeBuilder::initial(Token& token) {
    if (isOnlyWhiteSpace(token)) return Next::token;
    mode_ = Mode::beforeHtml;
    if (token.type == TokenType::doctype) {
        if (isQuirksDoctype(token)) tree_.setQuirky();
        return Next::token;
    }
    tree_.setQuirky();
    return Next::reprocess;
}

TreeBuilder::Next TreeBuilder::beforeHtml(Token& token) {
    if (token.type == TokenType::doctype || isOnlyWhiteSpace(token)) return Next::token;
    constexpr TagSet kActedUpon{Tag::head, Tag::body, Tag::html, Tag::br};
    if (token.type == TokenType::endTag && !kActedUpon.contains(token.tag)) return Next::token;
    mode_ = Mode::beforeHead;
    const bool isHtml = token.type == TokenType::startTag && token.tag == Tag::html;
    openHtml(tree_.appendElement(Tree::kDocument, kNoNode, Tag::html, tagName(Tag::html), Namespace::html,
                                 isHtml ? std::span<const Attribute>(token.attributes) : std::span<const Attribute>()));
    return isHtml ? Next::token : Next::reprocess;
}

TreeBuilder::Next TreeBuilder::beforeHead(Token& token) {
    if (token.type == TokenType::doctype || isOnlyWhiteSpace(token)) return Next::token;
    if (token.type == TokenType::startTag && token.tag == Tag::html) return inBody(token);
    constexpr TagSet kActedUpon{Tag::head, Tag::body, Tag::html, Tag::br};
    if (token.type == TokenType::endTag && !kActedUpon.contains(token.tag)) return Next::token;
    mode_ = Mode::inHead;
    if (token.type == TokenType::startTag && token.tag == Tag::head) {
        head_.id = insertElement(token);
        return Next::token;
    }
    head_.id = insertImplied(Tag::head);
    return Next::reprocess;
}

TreeBuilder::Next TreeBuilder::inHead(Token& token) {
    if (token.type == TokenType::doctype) return Next::token;
    if (token.type == TokenType::characters) {
        insertCharacters(takeLeadingWhiteSpace(token));
        if (token.text.empty()) return Next::token;
    } else if (token.type == TokenType::startTag) {
        switch (token.tag) {
        case Tag::html: return inBody(token);
        case Tag::base:
        case Tag::basefont:
        case Tag::bgsound:
        case Tag::link:
        case Tag::meta: insertVoid(token); return Next::token;
        case Tag::title: parseRawText(token, Tokenizer::State::rcdata); return Next::token;
        case Tag::noframes:
        case Tag::style: parseRawText(token, Tokenizer::State::rawtext); return Next::token;
        case Tag::noscript:
            insertElement(token);
            mode_ = Mode::inHeadNoscript;
            return Next::token;
        case Tag::script: parseRawText(token, Tokenizer::State::scriptData); return Next::token;
        case Tag::template_:
            insertElement(token);
            formatting_.insertMarker();
            framesetOk_ = false;
            mode_ = Mode::inTemplate;
            templateModes_.push_back(Mode::inTemplate);
            return Next::token;
        case Tag::head: return Next::token;
        default: break;
        }
    } else if (token.type == TokenType::endTag) {
        switch (token.tag) {
        case Tag::head:
            removeHead(open_.size() - 1);
            mode_ = Mode::afterHead;
            return Next::token;
        case Tag::body:
        case Tag::html:
        case Tag::br: break;
        case Tag::template_: endTemplate(); return Next::token;
        default: return Next::token;
        }
    }
    // Anything else.
    removeHead(open_.size() - 1);
    mode_ = Mode::afterHead;
    return Next::reprocess;
}

void TreeBuilder::removeHead(std::size_t place) {
    head_ = open_[place];
    open_.removeAt(place);
}

void TreeBuilder::endTemplate() {
    if (!open_.isOpen(Tag::template_)) return;
    open_.generateAllImpliedEndTags();
    open_.popUntil({Tag::template_});
    formatting_.clearToMarker();
    if (!templateModes_.empty()) templateModes_.pop_back();
    resetInsertionMode();
}

TreeBuilder::Next TreeBuilder::inHeadNoscript(Token& token) {
    if (token.type == TokenType::doctype) return Next::token;
    if (token.type == TokenType::characters) {
        insertCharacters(takeLeadingWhiteSpace(token));
        if (token.text.empty()) return Next::token;
    } else if (token.type == TokenType::startTag) {
        constexpr TagSet kAsInHead{Tag::basefont, Tag::bgsound, Tag::link, Tag::meta, Tag::noframes, Tag::style};
        if (token.tag == Tag::html) return inBody(token);
        if (kAsInHead.contains(token.tag)) return inHead(token);
        if (token.tag == Tag::head || token.tag == Tag::noscript) return Next::token;
    } else if (token.type == TokenType::endTag) {
        if (token.tag == Tag::noscript) {
            open_.pop();
            mode_ = Mode::inHead;
            return Next::token;
        }
        if (token.tag != Tag::br) return Next::token;
    }
    open_.pop();
    mode_ = Mode::inHead;
    return Next::reprocess;
}

TreeBuilder::Next TreeBuilder::afterHead(Token& token) {
    if (token.type == TokenType::doctype) return Next::token;
    if (token.type == TokenType::characters) {
        insertCharacters(takeLeadingWhiteSpace(token));
        if (token.text.empty()) return Next::token;
    } else if (token.type == TokenType::startTag) {
        constexpr TagSet kBelongInHead{Tag::base,     Tag::basefont, Tag::bgsound, Tag::link,      Tag::meta,
                                       Tag::noframes, Tag::script,   Tag::style,   Tag::template_, Tag::title};
        if (token.tag == Tag::html) return inBody(token);
        if (token.tag == Tag::head) return Next::token;
        if (token.tag == Tag::body || token.tag == Tag::frameset) {
            insertElement(token);
            if (token.tag == Tag::body) framesetOk_ = false;
            mode_ = token.tag == Tag::body ? Mode::inBody : Mode::inFrameset;
            return Next::token;
        }
        if (kBelongInHead.contains(token.tag)) {
            open_.push(head_);
            const std::size_t place = open_.size() - 1;
            const Next next = inHead(token);
            removeHead(place);
            return next;
        }
    } else if (token.type == TokenType::endTag) {
        if (token.tag == Tag::template_) return inHead(token);
        if (token.tag != Tag::body && token.tag != Tag::html && token.tag != Tag::br) return Next::token;
    }
    insertImplied(Tag::body);
    mode_ = Mode::inBody;
    return Next::reprocess;
}

TreeBuilder::Next TreeBuilder::text(Token& token) {
    if (token.type == TokenType::characters) {
        insertCharacters(token.text);
        return Next::token;
    }
    open_.pop();
    mode_ = originalMode_;
    return token.type == TokenType::endOfFile ? Next::reprocess : Next::token;
}

TreeBuilder::Next TreeBuilder::inTemplate(Token& token) {
    const auto switchTo = [&](Mode mode) {
        if (!templateModes_.empty()) templateModes_.back() = mode;
        mode_ = mode;
        return Next::reprocess;
    };
    switch (token.type) {
    case TokenType::characters:
    case TokenType::comment:
    case TokenType::doctype: return inBody(token);
    case TokenType::startTag:
        switch (token.tag) {
        case Tag::base:
        case Tag::basefont:
        case Tag::bgsound:
        case Tag::link:
        case Tag::meta:
        case Tag::noframes:
        case Tag::script:
        case Tag::style:
        case Tag::template_:
        case Tag::title: return inHead(token);
        case Tag::caption:
        case Tag::colgroup:
        case Tag::tbody:
        case Tag::tfoot:
        case Tag::thead: return switchTo(Mode::inTable);
        case Tag::col: return switchTo(Mode::inColumnGroup);
        case Tag::tr: return switchTo(Mode::inTableBody);
        case Tag::td:
        case Tag::th: return switchTo(Mode::inRow);
        default: return switchTo(Mode::inBody);
        }
    case TokenType::endTag: return token.tag == Tag::template_ ? inHead(token) : Next::token;
    case TokenType::endOfFile: break;
    }
    if (!open_.isOpen(Tag::template_)) {
        finished_ = true;
        return Next::token;
    }
    open_.popUntil({Tag::template_});
    formatting_.clearToMarker();
    if (!templateModes_.empty()) templateModes_.pop_back();
    resetInsertionMode();
    return Next::reprocess;
}

TreeBuilder::Next TreeBuilder::afterBody(Token& token) {
    if (token.type == TokenType::doctype) return Next::token;
    if (token.type == TokenType::characters && leadingWhiteSpace(token.text).size() == token.text.size())
        return inBody(token);
    if (token.type == TokenType::startTag && token.tag == Tag::html) return inBody(token);
    if (token.type == TokenType::endTag && token.tag == Tag::html) {
        if (!isFragment()) mode_ = Mode::afterAfterBody;
        return Next::token;
    }
    if (token.type == TokenType::endOfFile) {
        finished_ = true;
        return Next::token;
    }
    mode_ = Mode::inBody;
    return Next::reprocess;
}

/// In and after framesets, only the white space of a token of characters is kept.
void TreeBuilder::insertWhiteSpaceOf(const Token& token) {
    if (token.type != TokenType::characters) return;
    for (std::string_view rest = token.text; !rest.empty();) {
        const std::string_view space = leadingWhiteSpace(rest);
        insertCharacters(space);
        rest.remove_prefix(space.size());
        while (!rest.empty() && !text::isBlank(rest.front()))
            rest.remove_prefix(1);
    }
}

TreeBuilder::Next TreeBuilder::inFrameset(Token& token) {
    switch (token.type) {
    case TokenType::startTag:
        if (token.tag == Tag::html) return inBody(token);
        if (token.tag == Tag::noframes) return inHead(token);
        if (token.tag == Tag::frameset) insertElement(token);
        if (token.tag == Tag::frame) insertVoid(token);
        return Next::token;
    case TokenType::endTag:
        if (token.tag == Tag::frameset && open_.size() > 1) {
            open_.pop();
            if (!isFragment() && !open_.currentIs(Tag::frameset)) mode_ = Mode::afterFrameset;
        }
        return Next::token;
    case TokenType::endOfFile: finished_ = true; return Next::token;
    default: insertWhiteSpaceOf(token); return Next::token;
    }
}

TreeBuilder::Next TreeBuilder::afterFrameset(Token& token) {
    if (token.type == TokenType::startTag && token.tag == Tag::html) return inBody(token);
    if (token.type == TokenType::startTag && token.tag == Tag::noframes) return inHead(token);
    if (token.type == TokenType::endTag && token.tag == Tag::html) mode_ = Mode::afterAfterFrameset;
    insertWhiteSpaceOf(token);
    finished_ = token.type == TokenType::endOfFile;
    return Next::token;
}

TreeBuilder::Next TreeBuilder::afterAfterBody(Token& token) {
    if (token.type == TokenType::doctype) return inBody(token);
    if (token.type == TokenType::characters && leadingWhiteSpace(token.text).size() == token.text.size())
        return inBody(token);
    if (token.type == TokenType::startTag && token.tag == Tag::html) return inBody(token);
    if (token.type == TokenType::endOfFile) {
        finished_ = true;
        return Next::token;
    }
    mode_ = Mode::inBody;
    return Next::reprocess;
}

TreeBuilder::Next TreeBuilder::afterAfterFrameset(Token& token) {
    if (token.type == TokenType::startTag && token.tag == Tag::html) return inBody(token);
    if (token.type == TokenType::startTag && token.tag == Tag::noframes) return inHead(token);
    insertWhiteSpaceOf(token);
    finished_ = token.type == TokenType::endOfFile;
    return Next::token;
}

} // namespace quillow::html
