// Groups and destinations (RTF 1.9.1, "Groups", "Destinations"): which groups are read, which are skipped, and
// what happens to a group's text when the group closes.
#include "engines/rtf/Interpreter.h"
#include "text/Utf8.h"

#include <algorithm>

namespace quillow::rtf {

namespace {

constexpr std::size_t npos = std::string_view::npos;
constexpr std::string_view kBlanks = " \t\n";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// True if the text has anything but blanks and replacement characters.
bool isReadable(std::string_view text) {
    constexpr std::string_view kReplacement = "\uFFFD";
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
        if (text.substr(0, kReplacement.size()) != kReplacement) return !text.empty();
        text.remove_prefix(kReplacement.size());
    }
}

/// A note's text without the blanks between it and its mark. Some writers use a no-break space there.
std::string_view noteText(std::string_view text) {
    constexpr std::string_view kNoBreakSpace = "\u00A0";
    text = trimmed(text);
    if (text.substr(0, kNoBreakSpace.size()) != kNoBreakSpace) return text;
    return trimmed(text.substr(kNoBreakSpace.size()));
}

std::string noteMark(std::uint32_t number) {
    std::string mark(1, '[');
    mark += std::to_string(number);
    mark += ']';
    return mark;
}

} // namespace

/// Call after an opening brace was consumed.
void Interpreter::openGroup() {
    if (stack_.size() < kMaxDepth) {
        stack_.push_back(state_);
        state_.closing = Closing::nothing;
    } else {
        ++overflow_;
    }
    scanner_.skipLineEnds();
    if (scanner_.peek(0) != '\\') return;
    if (scanner_.peek(1) == '*') {
        scanner_.moveTo(scanner_.position() + 2);
        scanner_.skipLineEnds();
        if (!scanner_.atWord()) return;
        const ControlWord word = scanner_.readWord();
        if (word.action() == Action::destination) {
            openDestination(word.keyword.destination());
        } else if (word.action() == Action::binary) {
            skipBinary(word.parameter);
        } else {
            skipRestOfGroup();
        }
        return;
    }
    const Keyword keyword = scanner_.readName();
    if (keyword.action == Action::notAWord) return;
    const ControlWord word = scanner_.readParameter(keyword);
    if (word.action() == Action::destination) {
        openDestination(word.keyword.destination());
    } else if (word.action() != Action::none) {
        handleWord(word);
    }
}

/// Call after the closing brace of the current group was consumed.
void Interpreter::leaveGroup() {
    if (overflow_ > 0) {
        --overflow_;
        return;
    }
    if (stack_.size() <= 1) {
        if (!isFragment_) endDocument();
        return;
    }
    const Closing closing = state_.closing;
    state_ = stack_.back();
    stack_.pop_back();
    if (closing != Closing::nothing) finishDestination(closing);
}

/// Handles the brace that closes the document, unless it is a stray. Another document may follow.
void Interpreter::endDocument() {
    if (recovery_.isStrayClose(scanner_.rest())) return;
    if (!stack_.empty()) {
        state_ = stack_.front();
        stack_.clear();
    }
    const std::size_t next = findRtfGroup(scanner_.rest(), 0);
    work_ += std::min(next, scanner_.remaining());
    if (next == npos) {
        scanner_.moveToEnd();
    } else {
        scanner_.moveTo(scanner_.position() + next);
    }
}

/// \rtf: a document begins. An appended document has its own tables.
void Interpreter::startDocument() {
    if (stack_.size() <= 1) {
        fonts_.reset();
        lists_.reset();
        const Closing closing = state_.closing;
        state_ = {};
        state_.closing = closing;
        setCharset(fonts_.defaultCharset());
    }
    settle();
    output_.ensureLineStart();
    startParagraph();
}

void Interpreter::skipRestOfGroup() {
    const char* start = scanner_.position();
    leaveData(start, scanner_.skipGroup(decoder_.rawPairs(*state_.charset)));
}

/// True if the group that was just read or skipped lacks its closing brace: it reached the end of the file, or
/// closed with the document's last brace.
bool Interpreter::lacksBrace(Scanner::Completeness completeness) const {
    return completeness == Scanner::Completeness::cutShort ||
           (stack_.size() > 1 && recovery_.isAfterLastBrace(scanner_.position()));
}

/// Call after a group of data was read or skipped from `start` on. A group without its closing brace has swallowed
/// the body.
void Interpreter::leaveData(const char* start, Scanner::Completeness completeness) {
    const std::string_view swallowed(start, static_cast<std::size_t>(scanner_.position() - start));
    leaveSwallowed(swallowed, completeness, lacksBrace(completeness) ? findBody(swallowed) : npos);
}

/// The first pass takes each byte by itself. Only a table that may contain raw pairs is read again, because that needs
/// a scan of the whole file's bytes.
void Interpreter::readFontTable() {
    const char* start = scanner_.position();
    Scanner::Completeness completeness = fonts_.read(scanner_, FontTable::RawPairs::ignored);
    if (mayHoldPairs({start, static_cast<std::size_t>(scanner_.position() - start)})) {
        work_ += static_cast<std::size_t>(scanner_.position() - start);
        scanner_.moveTo(start);
        completeness = fonts_.read(scanner_, FontTable::RawPairs::decoded);
    }
    leaveTable(start, completeness);
}

/// Whether a table's raw bytes can be pairs in a code page of its fonts. Returns true only a few times for a document,
/// because each time costs another pass.
bool Interpreter::mayHoldPairs(std::string_view table) {
    const char* end = table.data() + table.size();
    if (findHighByte(table.data(), end) == end) return false;
    return !fonts_.pairPages().empty() && !decoder_.rawIsUtf8() && recovery_.mayReadTableAgain();
}

/// The name of a style does not say its font, and most names have one byte per letter. So the first code page with
/// which the table ends as it should is taken.
Scanner::Completeness Interpreter::skipTable() {
    const char* start = scanner_.position();
    const Scanner::Completeness completeness = scanner_.skipGroup(decoder_.rawPairs(*state_.charset));
    const char* end = scanner_.position();
    if (!mayHoldPairs({start, static_cast<std::size_t>(end - start)})) return completeness;
    for (const text::CodePage* pairs : fonts_.pairPages()) {
        scanner_.moveTo(start);
        const bool isOpen = lacksBrace(scanner_.skipGroup(pairs));
        const std::string_view table(start, static_cast<std::size_t>(scanner_.position() - start));
        work_ += table.size();
        if (!isOpen && !holdsParagraph(table)) return Scanner::Completeness::whole;
    }
    scanner_.moveTo(end);
    return completeness;
}

/// The same for a table. If a paragraph ends in it, a later brace than its own has closed the table.
void Interpreter::leaveTable(const char* start, Scanner::Completeness completeness) {
    const std::string_view table(start, static_cast<std::size_t>(scanner_.position() - start));
    std::size_t body = npos;
    if (lacksBrace(completeness)) {
        body = findBodyAfterEntries(table);
    } else if (holdsParagraph(table)) {
        body = findBody(table);
    }
    leaveSwallowed(table, completeness, body);
}

/// Continues at offset `body` of the group that has swallowed the body. Continues after the group if `body` is npos or
/// kMaxRecoveries is reached.
void Interpreter::leaveSwallowed(std::string_view swallowed, Scanner::Completeness completeness, std::size_t body) {
    work_ += swallowed.size();
    const bool isCutShort = completeness == Scanner::Completeness::cutShort;
    if (isCutShort) truncated_ = true;
    if (body == npos || !recovery_.mayGoBack()) {
        if (!isCutShort) leaveGroup();
        return;
    }
    work_ += body;
    ++loss_.partsSkipped;
    truncated_ = true;
    scanner_.moveTo(swallowed.data() + body);
    if (overflow_ > 0 || stack_.size() > 1) leaveGroup();
}

Interpreter::Frame* Interpreter::innermost(Closing kind) {
    const auto found =
        std::find_if(frames_.rbegin(), frames_.rend(), [kind](const Frame& f) { return f.kind == kind; });
    return found != frames_.rend() ? &*found : nullptr;
}

bool Interpreter::pushFrame(Closing kind) {
    if (overflow_ > 0 || frames_.size() >= kMaxFrames) return false;
    frames_.emplace_back().kind = kind;
    state_.closing = kind;
    return true;
}

/// From here on the text belongs to the frame. It begins a paragraph of its own, outside lists.
void Interpreter::divert(Frame& frame) {
    frame.pending = pending_;
    frame.highSurrogate = highSurrogate_;
    frame.paragraph = std::move(paragraph_);
    frame.mark = output_.size();
    pending_ = 0;
    paragraph_ = {};
    paragraph_.start = frame.mark;
    paragraph_.listText = frame.mark;
    state_.listOverride = 0;
    state_.hasOldNumbering = false;
}

std::string Interpreter::endDiversion(Frame& frame) {
    pending_ &= static_cast<std::uint8_t>(~kLabel);
    settle();
    if (!paragraph_.boxes.empty()) {
        output_.ensureLineStart();
        output_.append(paragraph_.boxes);
    }
    std::string text = output_.cut(frame.mark);
    paragraph_ = std::move(frame.paragraph);
    pending_ = frame.pending;
    highSurrogate_ = frame.highSurrogate;
    return text;
}

void Interpreter::openDestination(Destination destination) {
    const bool isSuppressed = (state_.flags & kSuppressed) != 0;
    const char* start = scanner_.position();
    switch (destination) {
    case Destination::body: return;
    case Destination::table: return leaveTable(start, skipTable());
    case Destination::fontTable: readFontTable(); return setCharset(fonts_.defaultCharset());
    case Destination::listTable: return leaveTable(start, lists_.readListTable(scanner_));
    case Destination::overrideTable: return leaveTable(start, lists_.readOverrideTable(scanner_));
    case Destination::oldNumbering:
        leaveData(start, lists_.readOldNumbering(scanner_, oldNumbering_));
        state_.hasOldNumbering = oldNumbering_.kind != OldNumbering::Kind::none;
        if (oldNumbering_.goesOn) paragraph_.keepsOldNumbers = true;
        return armLabel();
    case Destination::listText:
        if (options_.listMarkers == ListMarkers::off) return skipRestOfGroup();
        if (!pushFrame(Closing::listText)) return;
        // The computed label waits until the group closes: the paragraph must be counted even if the file has its
        // label.
        frames_.back().pending = pending_ & kLabel;
        pending_ &= static_cast<std::uint8_t>(~kLabel);
        frames_.back().mark = output_.size();
        if (isSuppressed) paragraph_.labelled = true;
        return;
    case Destination::note:
        if (isSuppressed) return skipRestOfGroup();
        if (!prepareText() || !pushFrame(Closing::note)) return;
        frames_.back().noteNumber = ++noteCount_;
        output_.append(noteMark(noteCount_));
        return divert(frames_.back());
    case Destination::header:
    case Destination::footer:
        if (options_.headersFooters == HeadersFooters::off) return skipRestOfGroup();
        if (pushFrame(destination == Destination::header ? Closing::header : Closing::footer)) divert(frames_.back());
        return;
    case Destination::textBox:
        if (pushFrame(Closing::textBox)) divert(frames_.back());
        return;
    case Destination::shape: (void)pushFrame(Closing::shape); return;
    case Destination::shapeResult: {
        // The same shape again, for readers that do not know shapes.
        const Frame* shape = innermost(Closing::shape);
        return shape != nullptr && shape->hasText ? skipRestOfGroup() : void();
    }
    case Destination::field:
        partButtonFromField();
        (void)pushFrame(Closing::field);
        return;
    case Destination::fieldInstruction:
        if (!pushFrame(Closing::fieldInstruction)) return skipRestOfGroup();
        return divert(frames_.back());
    case Destination::fieldResult:
        if (frames_.empty() || frames_.back().kind != Closing::field) return;
        if (frames_.back().skipsResult) return skipRestOfGroup();
        if (overflow_ == 0) state_.closing = Closing::fieldResult;
        return;
    case Destination::unicodePair: return skipAnsiHalf();
    case Destination::attachment: return skipAttachment();
    default: return skipRestOfGroup(); // also parts of tables outside their table
    }
}

void Interpreter::finishDestination(Closing closing) {
    if (closing == Closing::fieldResult) {
        const Frame* field = innermost(Closing::field);
        if (field == nullptr || field->target.empty() || options_.links == LinkTargets::off || !prepareText()) return;
        output_.append(" <");
        output_.append(field->target);
        output_.append('>');
        return;
    }
    Frame frame = std::move(frames_.back());
    frames_.pop_back();
    switch (closing) {
    case Closing::listText:
        settle();
        pending_ |= frame.pending;
        // Blanks alone are not a label: some writers leave the label to the list tables. Unreadable text is not
        // one either.
        if (isReadable(output_.view(frame.mark))) paragraph_.labelled = true;
        paragraph_.listText = std::max(frame.mark, paragraph_.start);
        paragraph_.start = output_.size();
        armLabel(); // counts the paragraph; is written only in place of blanks
        break;
    case Closing::note: {
        const std::string text = endDiversion(frame);
        notes_ += noteMark(frame.noteNumber);
        notes_ += ' ';
        notes_ += noteText(text);
        notes_ += '\n';
        break;
    }
    case Closing::header: {
        const std::string text = endDiversion(frame);
        if (trimmed(text).empty()) break;
        settle();
        output_.ensureLineStart();
        output_.append(trimmed(text));
        output_.append('\n');
        startParagraph();
        break;
    }
    case Closing::footer: {
        const std::string text = endDiversion(frame);
        if (trimmed(text).empty()) break;
        footers_ += trimmed(text);
        footers_ += '\n';
        break;
    }
    case Closing::textBox: {
        const std::string text = endDiversion(frame);
        if (trimmed(text).empty()) break;
        for (Frame& outer : frames_)
            if (outer.kind == Closing::shape) outer.hasText = true;
        if ((state_.flags & kSuppressed) != 0) break;
        const Frame* shape = innermost(Closing::shape);
        const bool isAbove = shape != nullptr && shape->partsText && output_.size() == paragraph_.start &&
                             output_.atLineStart() && (pending_ & kSurrogate) == 0;
        if (isAbove) {
            output_.append(trimmed(text));
            output_.append('\n');
            paragraph_.start = output_.size();
            paragraph_.listText = paragraph_.start;
        } else {
            paragraph_.boxes += trimmed(text);
            paragraph_.boxes += '\n';
        }
        break;
    }
    case Closing::fieldInstruction: finishInstruction(frame); break;
    default: break; // shapes and fields have nothing to write
    }
}

/// What a button shows may be a field, directly after the place to go to or after a blank.
void Interpreter::partButtonFromField() {
    if (frames_.empty() || frames_.back().kind != Closing::fieldInstruction) return;
    if (endsWithButtonTarget(output_.view(frames_.back().mark))) output_.append(' ');
}

void Interpreter::finishInstruction(Frame& frame) {
    FieldInstruction instruction = readFieldInstruction(endDiversion(frame));
    Frame* field = frames_.empty() || frames_.back().kind != Closing::field ? nullptr : &frames_.back();
    switch (instruction.kind) {
    case FieldInstruction::Kind::other: break;
    case FieldInstruction::Kind::character:
        if (field != nullptr) field->skipsResult = true;
        writeCodePoint(text::decodeUtf8(instruction.text).codePoint);
        break;
    case FieldInstruction::Kind::text:
        if (field != nullptr) field->skipsResult = true;
        if (prepareText()) output_.append(instruction.text);
        break;
    case FieldInstruction::Kind::link:
        if (field != nullptr) field->target = std::move(instruction.text);
        break;
    }
}

/// {\upr{ansi}{\*\ud{unicode}}}: skips the first half, which is for readers without Unicode. Keeps it if there is
/// no second half.
void Interpreter::skipAnsiHalf() {
    scanner_.skipLineEnds();
    if (scanner_.peek(0) != '{') return;
    const char* ansiHalf = scanner_.position();
    scanner_.advance();
    const Scanner::Completeness completeness = scanner_.skipGroup(decoder_.rawPairs(*state_.charset));
    work_ += static_cast<std::size_t>(scanner_.position() - ansiHalf);
    if (completeness == Scanner::Completeness::whole) {
        scanner_.skipLineEnds();
        const std::string_view rest = scanner_.rest();
        if (rest.substr(0, 6) == "{\\*\\ud" || rest.substr(0, 4) == "{\\ud") return;
    }
    // Going back reads the group twice, so the number of times is limited.
    if (recovery_.mayGoBack()) scanner_.moveTo(ansiHalf);
}

/// Skips an entry of the font table or the style sheet that is outside its table because of an extra or a missing
/// brace. Its name, which ends with a semicolon, is not text.
void Interpreter::skipStrayEntry() {
    constexpr std::size_t kLongestEntry = 256;
    if (stack_.size() <= 1 || state_.closing != Closing::nothing) return;
    Scanner entry(scanner_.rest().substr(0, kLongestEntry));
    if (entry.skipGroup(nullptr) == Scanner::Completeness::whole && entry.position()[-2] == ';') skipRestOfGroup();
}

/// Skips {\NeXTGraphic name ...} and the byte 0xAC after it, the attachment's placeholder in the text.
void Interpreter::skipAttachment() {
    constexpr std::uint8_t kPlaceholder = 0xAC;
    skipRestOfGroup();
    scanner_.skipLineEnds();
    const char* p = scanner_.position();
    if (scanner_.hexByteAt(p) == kPlaceholder) {
        scanner_.moveTo(p + 4);
    } else if (static_cast<std::uint8_t>(scanner_.peek(0)) == kPlaceholder) {
        scanner_.advance();
    } else if (scanner_.rest().substr(0, 2) == "\u00AC") {
        scanner_.moveTo(p + 2);
    }
}

} // namespace quillow::rtf
