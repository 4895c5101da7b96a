// The text of paragraphs: its characters, what is pending before them (a lone surrogate, a list label), and the marks
// that end paragraphs, lines, cells and rows.
#include "engines/rtf/Interpreter.h"
#include "text/Ascii.h"
#include "text/Unicode.h"
#include "text/Utf8.h"

#include <optional>

namespace quillow::rtf {

namespace {

std::uint64_t countReplacements(std::string_view text) {
    constexpr std::string_view kReplacement = "\uFFFD";
    std::uint64_t count = 0;
    for (std::size_t at = text.find(kReplacement); at != std::string_view::npos; at = text.find(kReplacement, at + 1))
        ++count;
    return count;
}

} // namespace

void Interpreter::takePlainText() {
    const char* p = scanner_.position();
    if ((state_.flags | pending_) == 0) {
        // Line ends in the source have no meaning.
        while (true) {
            p = output_.copyText(p, scanner_.end());
            scanner_.moveTo(p);
            if (scanner_.atEnd() || !text::isLineEnd(*p)) return;
            scanner_.skipLineEnds();
            p = scanner_.position();
        }
    }
    const char* textEnd = findTextEnd(p, scanner_.end());
    scanner_.moveTo(textEnd);
    if (!prepareText()) return;
    if ((state_.flags & kSymbolFont) == 0) {
        output_.append(std::string_view(p, static_cast<std::size_t>(textEnd - p)));
        return;
    }
    for (; p != textEnd; ++p)
        writeCodePoint(state_.charset->decodeByte(static_cast<std::uint8_t>(*p)));
}

/// Reads bytes over 0x7F and \'hh. They may be paragraph marks and tabs too.
void Interpreter::takeBytes() {
    const bool isShown = (state_.flags & kSuppressed) == 0;
    const std::size_t mark = output_.size();
    const std::uint64_t lost = loss_.charactersWithoutUnicode;
    while (true) {
        if (pending_ == 0 && !decoder_.copyBytes(*state_.charset, output_)) break;
        const std::optional<char32_t> c = decoder_.takeByte(*state_.charset);
        if (!c) break;
        if (*c >= 0x20) {
            writeCodePoint(*c);
        } else if (*c == '\t') {
            writeTab();
        } else if (*c == '\n') {
            endParagraph();
        }
    }
    if (isShown) return;
    output_.truncate(mark);
    loss_.charactersWithoutUnicode = lost;
}

/// Handles \uN and every \uN that directly follows its fallback.
void Interpreter::takeUnicode(std::int32_t number) {
    for (std::optional<std::int32_t> next = number; next; next = decoder_.takeUnicode()) {
        if (const char32_t c = codePointOfUnicode(*next); c != 0) writeCodePoint(c);
        if (decoder_.skipFallback(state_.unicodeSkip) == Scanner::Completeness::cutShort) truncated_ = true;
        const bool isUsual = state_.unicodeSkip == 1 && ((state_.flags & kSuppressed) | pending_) == 0;
        if (isUsual) decoder_.copyUnicode(output_);
    }
}

/// Call before text is written. Returns false if the text is hidden. Otherwise writes what is pending before the
/// text: a lone surrogate, a list label.
bool Interpreter::prepareText() {
    if ((state_.flags & kSuppressed) != 0) return false;
    if (pending_ == 0) return true;
    if ((pending_ & kSurrogate) != 0) writeReplacement();
    pending_ &= static_cast<std::uint8_t>(~kSurrogate);
    if ((pending_ & kLabel) != 0) writeLabel();
    return true;
}

/// An empty paragraph in a list gets its label too, without the tab.
void Interpreter::settlePending() {
    const bool isEmpty = (pending_ & kLabel) != 0;
    (void)prepareText();
    if (isEmpty && output_.size() > paragraph_.start && output_.back() == '\t') output_.truncate(output_.size() - 1);
}

void Interpreter::writeReplacement() {
    ++loss_.charactersWithoutUnicode;
    output_.appendCodePoint(text::kReplacementCharacter);
}

void Interpreter::writeCodePoint(char32_t c) {
    if (text::isSurrogate(c)) return writeSurrogate(c);
    if (((state_.flags & kSuppressed) | pending_) != 0 && !prepareText()) return;
    if (c >= 0x20 && c < 0x7F) return output_.append(static_cast<char>(c));
    if (c < 0xA0) {
        if (c == '\t') output_.append('\t');
        if (c == '\n' || c == '\r') endParagraph();
        return; // no other control character is text
    }
    if (text::isSymbolSign(c)) c = state_.charset->decodeSign(c);
    if (c == 0x2028 || c == 0x2029) return output_.append('\n'); // line and paragraph separator
    if (c == 0xFEFF && output_.empty()) return;
    if (c == text::kReplacementCharacter || !text::isInterchangeable(c)) return writeReplacement();
    output_.appendCodePoint(c);
}

/// The halves of a surrogate pair may be in different groups. Text between them breaks the pair.
void Interpreter::writeSurrogate(char32_t c) {
    if ((state_.flags & kSuppressed) != 0) return;
    const bool isLow = text::isLowSurrogate(c);
    if (isLow && (pending_ & kSurrogate) != 0) {
        pending_ &= static_cast<std::uint8_t>(~kSurrogate);
        return writeCodePoint(text::combineSurrogates(highSurrogate_, c));
    }
    if (isLow) return writeCodePoint(text::kReplacementCharacter);
    if ((pending_ & kSurrogate) != 0) (void)prepareText();
    highSurrogate_ = c;
    pending_ |= kSurrogate;
}

void Interpreter::writeLabel() {
    pending_ &= static_cast<std::uint8_t>(~kLabel);
    if (options_.listMarkers == ListMarkers::off || labelBudget_ == 0) return;
    std::u32string label;
    if (lists_.knows(state_.listOverride)) {
        label = lists_.nextLabel(state_.listOverride, state_.listLevel);
    } else if (state_.hasOldNumbering) {
        label = lists_.nextLabel(oldNumbering_);
        countsOldNumbers_ = true;
        paragraph_.keepsOldNumbers = true;
    }
    constexpr std::size_t kBytesPerCharacter = 4;
    const std::size_t cost = label.size() * kBytesPerCharacter;
    if (paragraph_.labelled || label.empty()) return;
    if (cost > labelBudget_) {
        labelBudget_ = 0;
        ++loss_.partsSkipped;
        return;
    }
    labelBudget_ -= cost;
    if (output_.size() == paragraph_.start && label.find_first_not_of(U" \t") != std::u32string::npos) {
        loss_.charactersWithoutUnicode -= countReplacements(output_.view(paragraph_.listText));
        output_.truncate(paragraph_.listText);
        paragraph_.start = paragraph_.listText;
    }
    for (const char32_t c : label) {
        if (c == '\t') {
            output_.append('\t');
        } else {
            writeCodePoint(c);
        }
    }
    if ((pending_ & kSurrogate) != 0) (void)prepareText();
}

void Interpreter::startParagraph() {
    // A paragraph of the body that has none ends old-style numbering.
    if (countsOldNumbers_ && !paragraph_.keepsOldNumbers && frames_.empty()) {
        lists_.endOldNumbering();
        countsOldNumbers_ = false;
    }
    paragraph_.keepsOldNumbers = false;
    paragraph_.start = output_.size();
    paragraph_.listText = paragraph_.start;
    paragraph_.labelled = false;
    armLabel();
}

void Interpreter::endParagraph(char mark) {
    if ((state_.flags & kSuppressed) != 0) return; // a hidden paragraph mark joins two paragraphs
    settle();
    output_.append(mark);
    if (!paragraph_.boxes.empty() && paragraph_.cellEnd == 0) {
        output_.append(paragraph_.boxes);
        paragraph_.boxes.clear();
    }
    startParagraph();
}

void Interpreter::endLine() {
    if (options_.reflow == Reflow::off) {
        if (!prepareText()) return;
        output_.append('\n');
        return;
    }
    if (!prepareText() || output_.atLineStart()) return;
    // A hyphen between a letter and a lower-case letter on the next line divides a word.
    const std::string_view written = output_.view(paragraph_.start);
    scanner_.skipLineEnds();
    const char next = scanner_.peek(0);
    const bool goesOnSmall = (next >= 'a' && next <= 'z') || isHigh(next) || next == '\\';
    const bool endsWithHyphen = written.size() >= 2 && written.back() == '-' &&
                                (text::isLetter(written[written.size() - 2]) || isHigh(written[written.size() - 2]));
    if (endsWithHyphen && goesOnSmall) {
        output_.truncate(output_.size() - 1);
    } else if (written.size() >= 2 && written.substr(written.size() - 2) == "\u00AD") {
        output_.truncate(output_.size() - 2);
    } else if (written.empty() || written.back() != ' ') {
        output_.append(' ');
    }
}

void Interpreter::endCell() {
    settle();
    output_.append(cellMark_);
    paragraph_.cellEnd = output_.size();
    startParagraph();
}

void Interpreter::endRow() {
    settle();
    if (paragraph_.cellEnd != 0 && paragraph_.cellEnd == output_.size()) output_.truncate(output_.size() - 1);
    paragraph_.cellEnd = 0;
    output_.append('\n');
    output_.append(paragraph_.boxes);
    paragraph_.boxes.clear();
    startParagraph();
}

void Interpreter::writeTab() {
    if (prepareText()) output_.append('\t');
}

} // namespace quillow::rtf
