// Insertion modes in tables: 13.2.6.4.9 to 13.2.6.4.15.
#include "engines/html/parser/TreeBuilder.h"
#include "text/Ascii.h"

#include <algorithm>

namespace quillow::html {

namespace {

constexpr TagSet kTable{Tag::table};
constexpr TagSet kRow{Tag::tr};
constexpr TagSet kTableParts{Tag::caption, Tag::col, Tag::colgroup, Tag::tbody, Tag::td,
                             Tag::tfoot,   Tag::th,  Tag::thead,    Tag::tr};
constexpr TagSet kNeverClosedInTable{Tag::body, Tag::caption, Tag::col, Tag::colgroup, Tag::html, Tag::tbody,
                                     Tag::td,   Tag::tfoot,   Tag::th,  Tag::thead,    Tag::tr};

} // namespace

/// Closes the table in scope. Returns false if there is none.
bool TreeBuilder::closeTable() {
    if (!open_.hasInScope(kTable, Scope::table)) return false;
    open_.popUntil(kTable);
    resetInsertionMode();
    return true;
}

TreeBuilder::Next TreeBuilder::inTable(Token& token) {
    switch (token.type) {
    case TokenType::characters:
        if (!open_.currentIsIn(kTableContext.with({Tag::template_}))) break;
        tableText_.clear();
        originalMode_ = mode_;
        mode_ = Mode::inTableText;
        return Next::reprocess;
    case TokenType::doctype:
    case TokenType::comment: return Next::token;
    case TokenType::endOfFile: return inBody(token);
    case TokenType::startTag:
        switch (token.tag) {
        case Tag::caption:
            open_.clearBackTo(kTable);
            formatting_.insertMarker();
            insertElement(token);
            mode_ = Mode::inCaption;
            return Next::token;
        case Tag::colgroup:
            open_.clearBackTo(kTable);
            insertElement(token);
            mode_ = Mode::inColumnGroup;
            return Next::token;
        case Tag::col:
            open_.clearBackTo(kTable);
            insertImplied(Tag::colgroup);
            mode_ = Mode::inColumnGroup;
            return Next::reprocess;
        case Tag::tbody:
        case Tag::tfoot:
        case Tag::thead:
            open_.clearBackTo(kTable);
            insertElement(token);
            mode_ = Mode::inTableBody;
            return Next::token;
        case Tag::td:
        case Tag::th:
        case Tag::tr:
            open_.clearBackTo(kTable);
            insertImplied(Tag::tbody);
            mode_ = Mode::inTableBody;
            return Next::reprocess;
        case Tag::table: return closeTable() ? Next::reprocess : Next::token;
        case Tag::style:
        case Tag::script:
        case Tag::template_: return inHead(token);
        case Tag::input: {
            const auto type =
                std::find_if(token.attributes.begin(), token.attributes.end(),
                             [](const Attribute& attribute) { return attribute.known() == AttributeName::type; });
            if (type == token.attributes.end() || !text::equalsIgnoringCase(type->value(), "hidden")) break;
            insertVoid(token);
            return Next::token;
        }
        case Tag::form:
            if (form_ != kNoNode || open_.isOpen(Tag::template_)) return Next::token;
            form_ = insertElement(token);
            open_.pop();
            return Next::token;
        default: break;
        }
        break;
    case TokenType::endTag:
        if (token.tag == Tag::table) {
            closeTable();
            return Next::token;
        }
        if (kNeverClosedInTable.contains(token.tag)) return Next::token;
        if (token.tag == Tag::template_) return inHead(token);
        break;
    }
    return inTableAnythingElse(token);
}

TreeBuilder::Next TreeBuilder::inTableAnythingElse(Token& token) {
    inserter_.setFosters(true);
    const Next next = inBody(token);
    inserter_.setFosters(false);
    return next;
}

TreeBuilder::Next TreeBuilder::inTableText(Token& token) {
    if (token.type == TokenType::characters) {
        tableText_.push_back(token.text);
        return Next::token;
    }
    const bool onlyWhiteSpace = std::all_of(tableText_.begin(), tableText_.end(), [](std::string_view text) {
        return std::all_of(text.begin(), text.end(), [](char c) { return text::isBlank(c) || c == '\0'; });
    });
    Token characters;
    characters.type = TokenType::characters;
    for (const std::string_view text : tableText_) {
        characters.text = text;
        if (onlyWhiteSpace) {
            insertWithoutNul(text);
        } else {
            inTableAnythingElse(characters);
        }
    }
    tableText_.clear();
    mode_ = originalMode_;
    return Next::reprocess;
}

TreeBuilder::Next TreeBuilder::inCaption(Token& token) {
    const auto closeCaption = [&] {
        if (!open_.hasInScope({Tag::caption}, Scope::table)) return false;
        open_.generateImpliedEndTags();
        open_.popUntil({Tag::caption});
        formatting_.clearToMarker();
        mode_ = Mode::inTable;
        return true;
    };
    if (token.type == TokenType::endTag) {
        if (token.tag == Tag::caption) {
            closeCaption();
            return Next::token;
        }
        if (token.tag == Tag::table) return closeCaption() ? Next::reprocess : Next::token;
        if (kNeverClosedInTable.contains(token.tag)) return Next::token;
    }
    if (token.type == TokenType::startTag && kTableParts.contains(token.tag))
        return closeCaption() ? Next::reprocess : Next::token;
    return inBody(token);
}

TreeBuilder::Next TreeBuilder::inColumnGroup(Token& token) {
    switch (token.type) {
    case TokenType::characters: {
        const std::string_view space = leadingWhiteSpace(token.text);
        insertCharacters(space);
        token.text.remove_prefix(space.size());
        if (token.text.empty()) return Next::token;
        break;
    }
    case TokenType::doctype:
    case TokenType::comment: return Next::token;
    case TokenType::endOfFile: return inBody(token);
    case TokenType::startTag:
        if (token.tag == Tag::html) return inBody(token);
        if (token.tag == Tag::template_) return inHead(token);
        if (token.tag != Tag::col) break;
        insertVoid(token);
        return Next::token;
    case TokenType::endTag:
        if (token.tag == Tag::template_) return inHead(token);
        if (token.tag == Tag::col) return Next::token;
        if (token.tag != Tag::colgroup) break;
        if (!open_.currentIs(Tag::colgroup)) return Next::token;
        open_.pop();
        mode_ = Mode::inTable;
        return Next::token;
    }
    if (!open_.currentIs(Tag::colgroup)) return Next::token;
    open_.pop();
    mode_ = Mode::inTable;
    return Next::reprocess;
}

TreeBuilder::Next TreeBuilder::inTableBody(Token& token) {
    const auto closeSection = [&] {
        if (!open_.hasInScope(kTableSections, Scope::table)) return Next::token;
        open_.clearBackTo(kTableSections);
        open_.pop();
        mode_ = Mode::inTable;
        return Next::reprocess;
    };
    constexpr TagSet kEndsSection{Tag::caption, Tag::col, Tag::colgroup, Tag::tbody, Tag::tfoot, Tag::thead};
    constexpr TagSet kIgnoredEnds{Tag::body, Tag::caption, Tag::col, Tag::colgroup,
                                  Tag::html, Tag::td,      Tag::th,  Tag::tr};
    if (token.type == TokenType::startTag) {
        if (token.tag == Tag::tr) {
            open_.clearBackTo(kTableSections);
            insertElement(token);
            mode_ = Mode::inRow;
            return Next::token;
        }
        if (kCells.contains(token.tag)) {
            open_.clearBackTo(kTableSections);
            insertImplied(Tag::tr);
            mode_ = Mode::inRow;
            return Next::reprocess;
        }
        if (kEndsSection.contains(token.tag)) return closeSection();
    } else if (token.type == TokenType::endTag) {
        if (kTableSections.contains(token.tag)) {
            if (!open_.hasInScope(TagSet{token.tag}, Scope::table)) return Next::token;
            open_.clearBackTo(kTableSections);
            open_.pop();
            mode_ = Mode::inTable;
            return Next::token;
        }
        if (token.tag == Tag::table) return closeSection();
        if (kIgnoredEnds.contains(token.tag)) return Next::token;
    }
    return inTable(token);
}

TreeBuilder::Next TreeBuilder::inRow(Token& token) {
    const auto closeRow = [&](Next next) {
        if (!open_.hasInScope(kRow, Scope::table)) return Next::token;
        open_.clearBackTo(kRow);
        open_.pop();
        mode_ = Mode::inTableBody;
        return next;
    };
    constexpr TagSet kEndsRow{Tag::caption, Tag::col, Tag::colgroup, Tag::tbody, Tag::tfoot, Tag::thead, Tag::tr};
    constexpr TagSet kIgnoredEnds{Tag::body, Tag::caption, Tag::col, Tag::colgroup, Tag::html, Tag::td, Tag::th};
    if (token.type == TokenType::startTag) {
        if (kCells.contains(token.tag)) {
            open_.clearBackTo(kRow);
            insertElement(token);
            mode_ = Mode::inCell;
            formatting_.insertMarker();
            return Next::token;
        }
        if (kEndsRow.contains(token.tag)) return closeRow(Next::reprocess);
    } else if (token.type == TokenType::endTag) {
        if (token.tag == Tag::tr) return closeRow(Next::token);
        if (token.tag == Tag::table) return closeRow(Next::reprocess);
        if (kTableSections.contains(token.tag))
            return open_.hasInScope(TagSet{token.tag}, Scope::table) ? closeRow(Next::reprocess) : Next::token;
        if (kIgnoredEnds.contains(token.tag)) return Next::token;
    }
    return inTable(token);
}

/// "Close the cell".
void TreeBuilder::closeCell() {
    open_.generateImpliedEndTags();
    open_.popUntil(kCells);
    formatting_.clearToMarker();
    mode_ = Mode::inRow;
}

TreeBuilder::Next TreeBuilder::inCell(Token& token) {
    constexpr TagSet kIgnoredEnds{Tag::body, Tag::caption, Tag::col, Tag::colgroup, Tag::html};
    if (token.type == TokenType::endTag) {
        if (kCells.contains(token.tag)) {
            if (!open_.hasInScope(TagSet{token.tag}, Scope::table)) return Next::token;
            open_.generateImpliedEndTags();
            open_.popUntil(TagSet{token.tag});
            formatting_.clearToMarker();
            mode_ = Mode::inRow;
            return Next::token;
        }
        if (kIgnoredEnds.contains(token.tag)) return Next::token;
        if (kTableContext.contains(token.tag)) {
            if (!open_.hasInScope(TagSet{token.tag}, Scope::table)) return Next::token;
            closeCell();
            return Next::reprocess;
        }
    }
    if (token.type == TokenType::startTag && kTableParts.contains(token.tag)) {
        if (!open_.hasInScope(kCells, Scope::table)) return Next::token;
        closeCell();
        return Next::reprocess;
    }
    return inBody(token);
}

} // namespace quillow::html
