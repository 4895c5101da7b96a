#include "engines/pdf/content/TextWriter.h"

#include "engines/pdf/content/InlineDictionary.h"
#include "engines/pdf/content/RunFilter.h"

#include <algorithm>
#include <cmath>

namespace quillow::pdf {

namespace {

/// Points to which places and sizes that are kept are limited. The largest page of ISO 32000-2 has 14 400 units.
constexpr double kLargestPlace = 1e7;

/// False also for what is not a number.
bool isSane(double value) {
    return std::abs(value) <= kLargestPlace;
}

Point pointOf(Vector v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y)};
}

} // namespace

void TextWriter::beginPage(Page& page) {
    page_ = &page;
    flags_ = 0;
    clipping_ = Clipping::on;
    isFull_ = false;
    isOpen_ = false;
    frameIsCurrent_ = false;
    setMatrix({});
}

void TextWriter::setFlags(std::uint8_t flags, Clipping clipping) {
    endRun();
    flags_ = flags;
    clipping_ = clipping;
}

void TextWriter::setMatrix(const Matrix& matrix) {
    line_ = matrix;
    moved_ = {};
    frameIsCurrent_ = false;
}

void TextWriter::setPlace(const Place& place) {
    line_ = place.line;
    moved_ = place.moved;
    frameIsCurrent_ = false;
}

/// Moves both matrices, so that the frame stays current.
void TextWriter::moveLine(double x, double y) {
    line_.translate(x, y);
    textToPage_.translate(x, y);
    moved_ = {};
}

void TextWriter::updateFrame() {
    textToPage_ = line_ * state_->toPage;
    frame_ = frameOf(state_->text, textToPage_);
    frameIsCurrent_ = true;
}

/// Whether the open run can go on with the current state, wherever on its line.
bool TextWriter::isOnOpenLine(Vector start) const {
    if (!isOpen_ || runFont_ != state_->text.font || !(runMarks_ == marks_->current()) || !(runClip_ == state_->clip) ||
        ((run_.flags & kInvisible) != 0) != (state_->text.mode == kInvisibleMode) || !frame_.continues(runFrame_))
        return false;
    const double side = frame_.direction.x * (start.y - lineOrigin_.y) - frame_.direction.y * (start.x - lineOrigin_.x);
    return std::abs(side) <= kSideJump * frame_.fontSize;
}

bool TextWriter::beginShow(const GraphicsState& state, MarkedContent& marks) {
    if (state.text.font == nullptr) return false;
    state_ = &state;
    marks_ = &marks;
    if (!frameIsCurrent_) updateFrame();
    const Vector start = textToPage_.apply(moved_.x, moved_.y + state.text.rise);
    if (isOnOpenLine(start)) {
        along_ = (start.x - lineOrigin_.x) * frame_.direction.x + (start.y - lineOrigin_.y) * frame_.direction.y;
    } else {
        endRun();
        lineOrigin_ = start;
        along_ = 0;
    }
    showStart_ = along_;
    characterStep_ = state.text.characterSpacing * frame_.spacing;
    wordStep_ = state.text.wordSpacing * frame_.spacing;
    forwardJump_ = kForwardJump * frame_.fontSize;
    backwardJump_ = -kBackwardJump * frame_.fontSize;
    return true;
}

void TextWriter::show(const GraphicsState& state, MarkedContent& marks, std::span<const Operand> items) {
    if (!beginShow(state, marks)) return;
    const Font::Codes codes = state.text.font->codes();
    if (codes == Font::Codes::bytes)
        showItems<false, Font::Codes::bytes>(items);
    else if (frame_.isVertical)
        showItems<true, Font::Codes::mixed>(items);
    else if (codes == Font::Codes::pairs)
        showItems<false, Font::Codes::pairs>(items);
    else
        showItems<false, Font::Codes::mixed>(items);
    endShow();
}

/// Strings that go on with the run and fit into the batch need no look at anything else. Some producers write a string
/// for each letter, so everything that the loop changes is in the pen.
template <bool isVertical, Font::Codes codes>
void TextWriter::showItems(std::span<const Operand> items) {
    Font& font = *state_->text.font;
    const double adjustment = frame_.adjustment;
    const double forwardJump = forwardJump_;
    const double backwardJump = backwardJump_;
    Pen pen = takePen();
    for (const Operand& item : items) {
        if (item.isNumber()) {
            pen.along += item.number * adjustment;
            continue;
        }
        const bool isPlain = item.kind == Operand::Kind::plainString;
        const std::string_view bytes = isPlain ? item.view() : decoded(item);
        const double jump = pen.along - pen.stringEnd;
        const bool goesOn = jump <= forwardJump && jump >= backwardJump;
        if (bytes.empty()) continue;
        if (pen.glyph + bytes.size() <= pen.limit && goesOn) [[likely]] {
            const char* const end = bytes.data() + bytes.size();
            writeGlyphs<isVertical, codes>(font, bytes.data(), end, end, pen);
        } else {
            putPen(pen);
            showString<isVertical, codes>(bytes);
            pen = takePen();
        }
    }
    putPen(pen);
}

std::string_view TextWriter::decoded(const Operand& string) {
    string_.clear();
    appendString(string, string_);
    return string_.view();
}

void TextWriter::endShow() {
    const double moved = (along_ - showStart_) * frame_.toText;
    (frame_.isVertical ? moved_.y : moved_.x) += moved;
}

/// Whether the next string belongs to the open run.
bool TextWriter::goesOn() const {
    const double jump = along_ - stringEnd_;
    return isOpen_ && jump <= forwardJump_ && jump >= backwardJump_;
}

bool TextWriter::hasRoom(std::size_t codes) {
    const bool room = glyphsOfPage_ + glyphCount_ + codes <= kMaximumGlyphs &&
                      charactersOfPage_ + characterCount_ <= kMaximumCharacters;
    if (!room) isFull_ = true;
    return room;
}

/// A string of any length, which may begin a run.
template <bool isVertical, Font::Codes codes>
void TextWriter::showString(std::string_view bytes) {
    if (!hasRoom(bytes.size())) return;
    if (!goesOn()) openRun();
    if (runMarks_.actualText != 0)
        showActualText<isVertical, codes>(bytes);
    else
        showGlyphs<isVertical, codes>(bytes);
}

TextWriter::Pen TextWriter::takePen() const {
    Pen pen;
    pen.along = along_;
    pen.stringEnd = stringEnd_;
    pen.glyph = glyphCount_;
    pen.character = characterCount_;
    const bool isFree = isOpen_ && runMarks_.actualText == 0 && glyphsOfPage_ + kBatch <= kMaximumGlyphs &&
                        charactersOfPage_ + characters_.size() <= kMaximumCharacters;
    pen.limit = isFree ? kBatch : 0;
    return pen;
}

void TextWriter::putPen(Pen pen) {
    along_ = pen.along;
    stringEnd_ = pen.stringEnd;
    glyphCount_ = pen.glyph;
    characterCount_ = pen.character;
}

void TextWriter::countPage() {
    glyphsOfPage_ = page_->glyphs.size();
    charactersOfPage_ = page_->text.size();
}

void TextWriter::flush() {
    page_->text.append(characters_.data(), characterCount_);
    page_->glyphs.insert(page_->glyphs.end(), glyphs_.data(), glyphs_.data() + glyphCount_);
    characterCount_ = 0;
    glyphCount_ = 0;
    countPage();
}

/// Adds the characters of the last glyph, which are not just one.
void TextWriter::addCharacters(std::u32string_view text) {
    if (characterCount_ + text.size() > glyphCount_ + kMoreCharacters) {
        flush();
        if (text.size() > kMoreCharacters) {
            page_->text.append(text);
            charactersOfPage_ += text.size();
            return;
        }
    }
    characterCount_ = static_cast<std::size_t>(
        std::copy(text.begin(), text.end(), characters_.data() + characterCount_) - characters_.data());
}

/// Adds the glyphs of the codes that begin in [p, stop), for which the batch has room. The string ends at `end`.
/// Returns the place behind the last code.
template <bool isVertical, Font::Codes codes>
[[gnu::always_inline]] inline const char* TextWriter::writeGlyphs(Font& font, const char* p, const char* stop,
                                                                  const char* end, Pen& pen) {
    const double advance = frame_.advance;
    const double runStart = runStart_;
    const double characterStep = characterStep_;
    const double wordStep = wordStep_;
    auto textBefore = static_cast<std::uint32_t>(charactersOfPage_);
    while (p < stop) {
        const FontGlyph& glyph = font.next<codes>(p, end);
        const double width = (isVertical ? glyph.verticalAdvance : glyph.width) * advance;
        glyphs_[pen.glyph++] = {textBefore + static_cast<std::uint32_t>(pen.character),
                                static_cast<float>(pen.along - runStart), static_cast<float>(width)};
        pen.along += width + characterStep;
        if (glyph.isWordSpace) pen.along += wordStep;
        if (glyph.text.size() == 1) [[likely]] {
            characters_[pen.character++] = glyph.text[0];
        } else {
            pen = withCharacters(pen, glyph.text);
            textBefore = static_cast<std::uint32_t>(charactersOfPage_);
        }
    }
    pen.stringEnd = pen.along;
    return p;
}

/// The pen behind the characters of the last glyph, which are not just one.
TextWriter::Pen TextWriter::withCharacters(Pen pen, std::u32string_view text) {
    putPen(pen);
    addCharacters(text);
    return takePen();
}

template <bool isVertical, Font::Codes codes>
void TextWriter::showGlyphs(std::string_view bytes) {
    Font& font = *state_->text.font;
    const char* p = bytes.data();
    const char* const end = p + bytes.size();
    while (p < end) {
        if (glyphCount_ == kBatch) flush();
        const auto room = static_cast<std::ptrdiff_t>(kBatch - glyphCount_); // a code gives one glyph
        Pen pen = takePen();
        p = writeGlyphs<isVertical, codes>(font, p, p + std::min(room, end - p), end, pen);
        putPen(pen);
    }
}

/// The first glyph of the span has all of its characters (14.9.4), and the others have none.
template <bool isVertical, Font::Codes codes>
void TextWriter::showActualText(std::string_view bytes) {
    flush();
    const std::size_t firstGlyph = page_->glyphs.size();
    const std::size_t textBegin = page_->text.size();
    showGlyphs<isVertical, codes>(bytes);
    flush();
    page_->text.resize(textBegin);
    page_->text += marks_->takeActualText();
    for (std::size_t i = firstGlyph + 1; i < page_->glyphs.size(); ++i)
        page_->glyphs[i].text = static_cast<std::uint32_t>(page_->text.size());
    countPage();
}

void TextWriter::openRun() {
    endRun();
    countPage();
    isOpen_ = true;
    runStart_ = along_;
    runFrame_ = frame_;
    runFont_ = state_->text.font;
    runMarks_ = marks_->current();
    runClip_ = state_->clip;
    run_ = {};
    run_.firstGlyph = static_cast<std::uint32_t>(page_->glyphs.size());
    run_.origin = pointOf({lineOrigin_.x + along_ * frame_.direction.x, lineOrigin_.y + along_ * frame_.direction.y});
    run_.direction = pointOf(frame_.direction);
    run_.fontSize = static_cast<float>(frame_.fontSize);
    run_.ascent = static_cast<float>(frame_.ascent);
    run_.descent = static_cast<float>(frame_.descent);
    run_.font = runFont_->number();
    run_.markedContent = runMarks_.id;
    run_.flags = runMarks_.flags | flags_;
    if (state_->text.mode == kInvisibleMode) run_.flags |= kInvisible;
    if (frame_.isVertical) run_.flags |= kVertical;
}

/// Adds the run to the page if somebody can see it.
void TextWriter::endRun() {
    if (!isOpen_) return;
    isOpen_ = false;
    flush();
    run_.glyphCount = static_cast<std::uint32_t>(page_->glyphs.size()) - run_.firstGlyph;
    const bool isNowhere =
        !isSane(run_.origin.x) || !isSane(run_.origin.y) || !isSane(run_.fontSize) || !isSane(stringEnd_ - runStart_);
    if (runMarks_.isHidden || isNowhere) {
        page_->text.resize(page_->glyphs[run_.firstGlyph].text);
        page_->glyphs.resize(run_.firstGlyph);
        return;
    }
    dropUnseenGlyphs(*page_, run_, clipping_ == Clipping::on ? runClip_ : kEverything);
    if (run_.glyphCount > 0) page_->runs.push_back(run_);
}

} // namespace quillow::pdf
