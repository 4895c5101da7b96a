#include "engines/rtf/Interpreter.h"

#include "text/Ascii.h"

#include <algorithm>

namespace quillow::rtf {

namespace {

constexpr std::size_t kNoLabelsBelow = 4096; // bytes; the labels of a short file may be longer than the file

} // namespace

Interpreter::Interpreter(const Source& source, const Options& options)
    : options_(options)
    , scanner_(source.bytes)
    , isFragment_(source.isFragment)
    , fonts_(pool_)
    , lists_(fonts_, 1)
    , decoder_(scanner_, source.isUtf8 ? CharacterDecoder::RawBytes::utf8 : CharacterDecoder::RawBytes::unknown)
    , recovery_(source.bytes, isFragment_)
    , output_(scanner_)
    , cellMark_(options.cells == CellSeparator::line ? '\n' : '\t')
    , labelBudget_(source.bytes.size() * kLabelBytesPerInputByte + kNoLabelsBelow) {
    state_.charset = fonts_.defaultCharset();
    lists_.reset();
    if (source.lostOpening || isFragment_) stack_.push_back(state_);
}

void Interpreter::run() {
    while (!scanner_.atEnd()) {
        ++work_;
        const char c = scanner_.current();
        if (c == '\\') {
            const Keyword keyword = scanner_.readName();
            if (keyword.action == Action::none) {
                scanner_.skipParameter();
            } else if (keyword.action == Action::notAWord) {
                takeSymbol();
            } else {
                handleWord(scanner_.readParameter(keyword));
            }
        } else if (isPlainText(c)) {
            takePlainText();
        } else if (text::isLineEnd(c)) {
            scanner_.skipLineEnds();
        } else {
            takeOther(c);
        }
    }
    finishAtEnd();
}

/// Handles braces, bytes over 0x7F and control characters.
void Interpreter::takeOther(char c) {
    if (isHigh(c)) return takeBytes();
    scanner_.advance();
    switch (c) {
    case '{': openGroup(); break;
    case '}': leaveGroup(); break;
    case '\t': writeTab(); break;
    default: break; // other control characters mean nothing
    }
}

void Interpreter::handleWord(ControlWord word) {
    switch (word.action()) {
    case Action::character: writeCodePoint(word.keyword.value); break;
    case Action::unicode:
        if (word.hasParameter) takeUnicode(word.parameter);
        break;
    case Action::binary: skipBinary(word.parameter); break;
    case Action::destination:
        // Not the group's first word. It is ignored in the document's own group; elsewhere it applies to the rest
        // of the group.
        if (stack_.size() > 1 && state_.closing == Closing::nothing) openDestination(word.keyword.destination());
        break;
    case Action::paragraph: endParagraph(); break;
    case Action::line: endLine(); break;
    case Action::page: endParagraph(options_.pageMarks == PageMarks::formFeed ? '\f' : '\n'); break;
    case Action::section:
        endParagraph();
        if (!footers_.empty() && frames_.empty()) {
            output_.append(footers_);
            footers_.clear();
            startParagraph();
        }
        break;
    case Action::column: endParagraph(); break;
    case Action::cell: endCell(); break;
    case Action::row: endRow(); break;
    case Action::tab: writeTab(); break;
    case Action::font: setCharset(fonts_.charset(word.parameter)); break;
    case Action::plain:
        setCharset(fonts_.defaultCharset());
        setFlag(kHidden, false);
        setFlag(kDeleted, false);
        break;
    case Action::hidden: setFlag(kHidden, word.isOn()); break;
    case Action::deleted: setFlag(kDeleted, word.isOn()); break;
    case Action::unicodeSkip:
        state_.unicodeSkip = static_cast<std::uint16_t>(std::clamp<std::int32_t>(word.parameter, 0, 0xFFFF));
        break;
    case Action::paragraphDefaults:
        state_.listOverride = 0;
        state_.listLevel = 0;
        state_.hasOldNumbering = false;
        break;
    case Action::listOverride:
        state_.listOverride = std::max<std::int32_t>(word.parameter, 0);
        armLabel();
        break;
    case Action::listLevel:
        state_.listLevel = static_cast<std::uint8_t>(std::clamp<std::int32_t>(word.parameter, 0, kListLevels - 1));
        break;
    case Action::shapeWrap:
        if (Frame* shape = innermost(Closing::shape)) shape->partsText = word.parameter == 1;
        break;
    case Action::fontCharset:
    case Action::styleRelation: skipStrayEntry(); break;
    case Action::rtf: startDocument(); break;
    case Action::defaultFont:
        fonts_.setDefaultFont(word.parameter);
        setCharset(fonts_.defaultCharset());
        break;
    case Action::ansiCodePage:
        fonts_.setAnsiCodePage(word.parameter);
        setCharset(fonts_.defaultCharset());
        break;
    case Action::documentCharset:
        fonts_.setDocumentCharset(word.keyword.value);
        setCharset(fonts_.defaultCharset());
        break;
    default: break; // words of the tables mean nothing outside them
    }
}

void Interpreter::takeSymbol() {
    const char symbol = scanner_.peek(1);
    if (symbol == '\'') {
        if (scanner_.hexByteAt(scanner_.position())) {
            takeBytes();
        } else {
            scanner_.moveTo(scanner_.position() + 2); // what follows is not a number: it is text
        }
        return;
    }
    scanner_.advance();
    if (scanner_.atEnd()) return;
    if (isHigh(symbol)) return; // the backslash means nothing, the byte is text
    scanner_.advance();
    switch (symbol) {
    case '\\':
    case '{':
    case '}': writeCodePoint(static_cast<char32_t>(symbol)); break;
    case '~': writeCodePoint(U'\u00A0'); break;
    case '-': writeCodePoint(U'\u00AD'); break;
    case '_': writeCodePoint(U'\u2011'); break;
    case '\t': writeTab(); break;
    case '\r':
        if (scanner_.peek(0) == '\n') scanner_.advance();
        endParagraph();
        break;
    case '\n': endParagraph(); break;
    default: break;
    }
}

void Interpreter::skipBinary(std::int32_t length) {
    if (scanner_.skipBinary(length) == Scanner::Completeness::cutShort) truncated_ = true;
}

void Interpreter::setFlag(Flag flag, bool on) {
    if (options_.hiddenText == HiddenText::on) return;
    state_.flags = static_cast<std::uint8_t>(on ? state_.flags | flag : state_.flags & ~flag);
}

void Interpreter::setCharset(const Charset* charset) {
    state_.charset = charset;
    const unsigned symbols = charset->isSymbolFont() ? unsigned{kSymbolFont} : 0U;
    state_.flags = static_cast<std::uint8_t>((state_.flags & ~kSymbolFont) | symbols);
}

/// A document that lacks only its last brace counts as whole if it ends at the end of a paragraph, a row or a group.
bool Interpreter::endsAtBoundary() const {
    std::string_view input = scanner_.input();
    while (!input.empty() && (text::isLineEnd(input.back()) || input.back() == ' ' || input.back() == '\0'))
        input.remove_suffix(1);
    constexpr std::string_view kBoundaries[] = {"\\par", "\\row", "\\sect", "\\page", "\\cell", "\\line", "}", "\\"};
    return std::any_of(std::begin(kBoundaries), std::end(kBoundaries), [input](std::string_view boundary) {
        return input.size() >= boundary.size() && input.substr(input.size() - boundary.size()) == boundary;
    });
}

void Interpreter::finishAtEnd() {
    const bool lacksLastBrace = stack_.size() == 1 && !isFragment_;
    if (overflow_ > 0 || stack_.size() > 1 || (lacksLastBrace && !endsAtBoundary())) truncated_ = true;
    overflow_ = 0;
    while (!stack_.empty()) {
        const Closing closing = state_.closing;
        state_ = stack_.back();
        stack_.pop_back();
        if (closing != Closing::nothing) finishDestination(closing);
    }
    pending_ &= static_cast<std::uint8_t>(~kLabel); // no paragraph follows the last mark
    settle();
    if (!paragraph_.boxes.empty() || !footers_.empty() || !notes_.empty()) output_.ensureLineStart();
    output_.append(paragraph_.boxes);
    output_.append(footers_);
    output_.append(notes_);
    if (truncated_) ++loss_.partsSkipped;
}

std::string Interpreter::takeText() {
    std::string_view text = output_.view();
    while (!text.empty() && text.back() == '\n')
        text.remove_suffix(1);
    // A byte-order mark can become the first character because the text before it was cut off.
    constexpr std::string_view kByteOrderMark = "\uFEFF";
    std::size_t start = 0;
    while (text.substr(start).starts_with(kByteOrderMark))
        start += kByteOrderMark.size();
    if (start == text.size()) return {};
    output_.truncate(text.size());
    output_.append('\n');
    std::string taken = output_.take();
    taken.erase(0, start);
    return taken;
}

} // namespace quillow::rtf
