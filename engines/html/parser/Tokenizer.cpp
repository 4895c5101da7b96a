#include "engines/html/parser/Tokenizer.h"

#include "engines/html/parser/CharacterReferences.h"
#include "text/Ascii.h"
#include "text/ByteScan.h"

#include <algorithm>
#include <cstring>

namespace quillow::html {

namespace {

bool endsTagName(char c) {
    return text::isBlank(c) || c == '/' || c == '>';
}

} // namespace

Tokenizer::Tokenizer(Tree& tree)
    : tree_(tree)
    , source_(tree.source())
    , data_(source_.data())
    , size_(source_.size()) {}

bool Tokenizer::startsWith(std::size_t position, std::string_view lowerCase) const {
    return position + lowerCase.size() <= size_ &&
           text::equalsIgnoringCase({data_ + position, lowerCase.size()}, lowerCase);
}

std::size_t Tokenizer::find(char character, std::size_t from) const {
    if (from >= size_) return size_;
    const void* const found = std::memchr(data_ + from, character, size_ - from);
    return found == nullptr ? size_ : static_cast<std::size_t>(static_cast<const char*>(found) - data_);
}

std::size_t Tokenizer::find(std::string_view text, std::size_t from) const {
    const std::size_t found = source_.find(text, from);
    return found == std::string_view::npos ? size_ : found;
}

void Tokenizer::next(Token& token) {
    while (position_ < size_)
        if (state_ == State::data ? data(token) : rawText(token)) return;
    token.type = TokenType::endOfFile;
}

/// 13.2.5.1 Data state: a run of characters up to the next markup, or the markup.
bool Tokenizer::data(Token& token) {
    if (data_[position_] == '<') {
        const char following = at(position_ + 1);
        if (text::isLetter(following)) return tag(token, TokenType::startTag, position_ + 1);
        if (following == '/' && text::isLetter(at(position_ + 2))) return tag(token, TokenType::endTag, position_ + 2);
        if (opensMarkup(position_ + 1)) return markup(token);
    }
    characters(token);
    return true;
}

/// Reads the characters up to the next markup. No markup opens at the current position.
void Tokenizer::characters(Token& token) {
    const std::size_t start = position_;
    Found found;
    std::size_t end = start;
    for (;; ++end) {
        end = text::findFirstOf<'<', '&', '\0'>(source_, end);
        if (end == size_) break;
        if (data_[end] != '<') {
            found.add(data_[end]);
        } else if (opensMarkup(end + 1)) {
            break;
        }
    }
    emitText(token, start, end, found);
}

/// 13.2.5.6 Tag open state: whether a "<" opens markup, given the position of the character after it.
bool Tokenizer::opensMarkup(std::size_t position) const {
    const char following = at(position);
    return text::isLetter(following) || following == '!' || following == '?' ||
           (following == '/' && position + 1 < size_);
}

void Tokenizer::emitText(Token& token, std::size_t start, std::size_t end, Found found) {
    position_ = end;
    token.type = TokenType::characters;
    token.text = {data_ + start, end - start};
    token.holdsNul = found.nul;
    if (!found.reference) return;
    scratch_.clear();
    appendResolvingReferences(scratch_, token.text, ReferencePlace::text);
    token.text = tree_.keep(scratch_);
}

/// 13.2.5.2 to 13.2.5.5 RCDATA, RAWTEXT, script data and PLAINTEXT: characters up to the end tag that matches the
/// start tag. Not inlined into `next`, which would then save more registers for every token.
[[gnu::noinline]] bool Tokenizer::rawText(Token& token) {
    const std::size_t start = position_;
    std::size_t end = size_;
    if (state_ == State::scriptData) end = scriptEndPosition(start);
    if (state_ == State::rcdata || state_ == State::rawtext) end = endTagPosition(start);
    if (end == start && end < size_) {
        state_ = State::data;
        return markup(token);
    }
    Found found;
    found.reference = state_ == State::rcdata && source_.substr(start, end - start).find('&') != std::string_view::npos;
    emitText(token, start, end, found);
    token.text = tree_.withReplacements(token.text);
    return true;
}

bool Tokenizer::isTagAt(std::size_t position, std::string_view name) const {
    return startsWith(position, name) && position + name.size() < size_ && endsTagName(data_[position + name.size()]);
}

std::size_t Tokenizer::endTagPosition(std::size_t from) const {
    if (lastStartTag_.empty()) return size_; // a fragment has no start tag
    for (std::size_t open = find('<', from); open < size_; open = find('<', open + 1))
        if (at(open + 1) == '/' && isTagAt(open + 2, lastStartTag_)) return open;
    return size_;
}

/// 13.2.5.4 and 13.2.5.15 to 13.2.5.31: inside "<!--" a script element may contain another one, whose end tag does
/// not end the outer one.
std::size_t Tokenizer::scriptEndPosition(std::size_t from) const {
    enum class Escape { none, escaped, doubleEscaped };
    constexpr std::string_view kCommentEnd = "-->";
    constexpr std::string_view kScript = "script";
    Escape escape = Escape::none;
    std::size_t position = from;
    while (position < size_) {
        const char c = data_[position];
        if (c == '-' && escape != Escape::none && startsWith(position, kCommentEnd)) {
            escape = Escape::none;
            position += kCommentEnd.size();
        } else if (c != '<') {
            position = escape == Escape::none ? find('<', position + 1) : position + 1;
        } else if (escape == Escape::doubleEscaped && at(position + 1) == '/' && isTagAt(position + 2, kScript)) {
            escape = Escape::escaped;
            position += 2 + kScript.size();
        } else if (escape != Escape::doubleEscaped && at(position + 1) == '/' && isTagAt(position + 2, lastStartTag_)) {
            return position;
        } else if (escape == Escape::none && startsWith(position, "<!--")) {
            escape = Escape::escaped;
            position += 2; // its dashes may also belong to "-->"
        } else if (escape == Escape::escaped && isTagAt(position + 1, kScript)) {
            escape = Escape::doubleEscaped;
            position += 1 + kScript.size();
        } else {
            ++position;
        }
    }
    return size_;
}

/// 13.2.5.6 Tag open state and 13.2.5.7 End tag open state, at a "<" that opens markup. Returns false if
/// no token results.
bool Tokenizer::markup(Token& token) {
    constexpr std::string_view kComment = "--";
    constexpr std::string_view kDoctype = "doctype";
    constexpr std::string_view kCdata = "[CDATA[";
    const char following = at(position_ + 1);
    if (text::isLetter(following)) return tag(token, TokenType::startTag, position_ + 1);
    if (following == '/') {
        if (text::isLetter(at(position_ + 2))) return tag(token, TokenType::endTag, position_ + 2);
        position_ += 2;
        if (at(position_) == '>') {
            ++position_; // "</>" gives no token
            return false;
        }
        bogusComment(token);
        return true;
    }
    if (following == '?') {
        ++position_;
        bogusComment(token);
        return true;
    }
    position_ += 2;
    if (startsWith(position_, kComment)) {
        position_ += kComment.size();
        comment(token);
        return true;
    }
    if (startsWith(position_, kDoctype)) {
        position_ += kDoctype.size();
        doctype(token);
        return true;
    }
    if (cdataAllowed_ && source_.substr(position_).starts_with(kCdata)) {
        position_ += kCdata.size();
        return cdataSection(token);
    }
    bogusComment(token);
    return true;
}

void Tokenizer::emitComment(Token& token, std::size_t start, std::size_t end, std::size_t next) {
    token.type = TokenType::comment;
    token.text = {data_ + start, end - start};
    position_ = std::min(next, size_);
}

/// 13.2.5.41 Bogus comment state.
void Tokenizer::bogusComment(Token& token) {
    const std::size_t end = find('>', position_);
    emitComment(token, position_, end, end + 1);
}

/// 13.2.5.43 to 13.2.5.52: "-->" and "--!>" end a comment, and so do ">" and "->" right at its start.
void Tokenizer::comment(Token& token) {
    const std::size_t start = position_;
    if (at(start) == '>') return emitComment(token, start, start, start + 1);
    if (startsWith(start, "->")) return emitComment(token, start, start, start + 2);
    for (std::size_t dashes = find("--", start); dashes < size_; dashes = find("--", dashes + 1)) {
        if (at(dashes + 2) == '>') return emitComment(token, start, dashes, dashes + 3);
        if (at(dashes + 2) == '!' && at(dashes + 3) == '>') return emitComment(token, start, dashes, dashes + 4);
    }
    // A comment end that the end of the file truncates is not part of the comment's text.
    const std::string_view text(data_ + start, size_ - start);
    std::size_t cut = 0;
    for (const std::string_view end : {"-", "--", "--!"})
        if (text.ends_with(end)) cut = end.size();
    emitComment(token, start, size_ - cut, size_);
}

/// 13.2.5.69 CDATA section state.
bool Tokenizer::cdataSection(Token& token) {
    constexpr std::string_view kEnd = "]]>";
    const std::size_t start = position_;
    const std::size_t end = find(kEnd, start);
    if (end > start) {
        emitText(token, start, end, {});
        token.holdsNul = true; // not checked
    }
    position_ = std::min(end + kEnd.size(), size_);
    return end > start;
}

/// Consumes the name that was scanned at the current position. Returns it in lower case and with U+FFFD for U+0000.
std::string_view Tokenizer::takeName(ScannedName& name) {
    const std::string_view written(data_ + position_, name.length);
    position_ += name.length;
    return name.asWritten ? written : rewrittenName(name, written);
}

std::string_view Tokenizer::rewrittenName(ScannedName& name, std::string_view written) {
    std::string lower(written);
    std::transform(lower.begin(), lower.end(), lower.begin(), text::toLower);
    const std::string_view kept = tree_.withReplacements(tree_.keep(lower));
    name.key = keyOf(kept);
    return kept;
}

/// 13.2.5.8 Tag name state to 13.2.5.40. Returns false at the end of the file, which drops the tag.
bool Tokenizer::tag(Token& token, TokenType type, std::size_t start) {
    token.attributes.clear();
    position_ = start;
    ScannedName name = scanName<NameEnd::tag>(source_, start);
    token.type = type;
    token.tag = tagForKey(name.key);
    if (token.tag != Tag::unknown) {
        token.name = tagName(token.tag);
        position_ += name.length;
    } else {
        token.name = takeName(name);
    }
    token.selfClosing = false;
    while (position_ < size_ && data_[position_] != '>')
        attribute(token);
    if (position_ >= size_) return false;
    ++position_; // ">"
    if (type == TokenType::startTag) lastStartTag_ = token.name;
    return true;
}

/// 13.2.5.32 Before attribute name state: reads one attribute, unless the tag's ">" or the end of the
/// file comes first.
void Tokenizer::attribute(Token& token) {
    if (data_[position_] == ' ') ++position_;
    for (;; ++position_) {
        if (position_ >= size_ || data_[position_] == '>') return;
        const char c = data_[position_];
        if (c > '/' || (!text::isBlank(c) && c != '/')) break;
        token.selfClosing = c == '/' && at(position_ + 1) == '>';
    }
    ScannedName scanned =
        data_[position_] == '=' ? attributeNameFromEqualsSign() : scanName<NameEnd::attribute>(source_, position_);
    const std::string_view name = takeName(scanned);
    const std::string_view value = attributeValue();
    if (token.attributes.size() < kMaxAttributes)
        token.attributes.emplace_back(attributeNameForKey(scanned.key), name, value);
}

/// 13.2.5.32: a "=" at the start of a name belongs to the name.
ScannedName Tokenizer::attributeNameFromEqualsSign() const {
    ScannedName name;
    name.length = 1 + scanName<NameEnd::attribute>(source_, position_ + 1).length;
    name.asWritten = false; // not checked
    return name;
}

/// 13.2.5.34 After attribute name state and 13.2.5.35 Before attribute value state.
std::string_view Tokenizer::attributeValue() {
    if (at(position_) != '=') {
        skipWhiteSpace();
        if (at(position_) != '=') return {};
    }
    ++position_;
    if (at(position_) == '"') return quotedValue<'"'>();
    skipWhiteSpace();
    switch (at(position_)) {
    case '"': return quotedValue<'"'>();
    case '\'': return quotedValue<'\''>();
    case '>': return {};
    default: return unquotedValue();
    }
}

/// 13.2.5.36 Attribute value (double-quoted) state and 13.2.5.37, the same with single quotes.
template <char quote>
std::string_view Tokenizer::quotedValue() {
    const std::size_t start = position_ + 1;
    const std::size_t end = text::findFirstOf<quote, '&', '\0'>(source_, start);
    if (at(end) != quote) return quotedValue<quote>(start, end);
    position_ = end + 1;
    return {data_ + start, end - start};
}

/// The same for a value that needs replacements, the first of them at `end`, or that has no closing quote.
template <char quote>
std::string_view Tokenizer::quotedValue(std::size_t start, std::size_t end) {
    Found found;
    while (end < size_ && data_[end] != quote) {
        found.add(data_[end]);
        end = text::findFirstOf<quote, '&', '\0'>(source_, end + 1);
    }
    position_ = std::min(end + 1, size_);
    return finishedValue(start, end, found);
}

/// 13.2.5.38 Attribute value (unquoted) state.
std::string_view Tokenizer::unquotedValue() {
    const std::size_t start = position_;
    Found found;
    for (; position_ < size_ && !text::isBlank(data_[position_]) && data_[position_] != '>'; ++position_)
        found.add(data_[position_]);
    return finishedValue(start, position_, found);
}

std::string_view Tokenizer::replacedValue(std::string_view value, Found found) {
    if (found.nul) value = tree_.withReplacements(value);
    if (!found.reference) return value;
    scratch_.clear();
    appendResolvingReferences(scratch_, value, ReferencePlace::attribute);
    return tree_.keep(scratch_);
}

void Tokenizer::skipWhiteSpace() {
    while (position_ < size_ && text::isBlank(data_[position_]))
        ++position_;
}

/// 13.2.5.53 to 13.2.5.68: a doctype. One that is broken forces quirks mode.
void Tokenizer::doctype(Token& token) {
    token.type = TokenType::doctype;
    token.hasPublicId = token.hasSystemId = false;
    token.publicId = token.systemId = {};
    skipWhiteSpace();
    ScannedName name;
    name.asWritten = false; // not checked
    while (position_ + name.length < size_ && !text::isBlank(data_[position_ + name.length]) &&
           data_[position_ + name.length] != '>')
        ++name.length;
    token.name = takeName(name);
    token.forceQuirks = token.name.empty() || !doctypeIds(token);
    position_ = std::min(find('>', position_) + 1, size_);
}

/// 13.2.5.56 to 13.2.5.67: reads from the end of the name to ">" or to bogus text. Returns false if that
/// forces quirks mode.
bool Tokenizer::doctypeIds(Token& token) {
    const auto isEnd = [this] {
        skipWhiteSpace();
        return at(position_) == '>';
    };
    if (isEnd()) return true;
    constexpr std::string_view kPublic = "public";
    constexpr std::string_view kSystem = "system";
    const bool isPublic = startsWith(position_, kPublic);
    if (!isPublic && !startsWith(position_, kSystem)) return false;
    position_ += (isPublic ? kPublic : kSystem).size();
    if (isPublic) {
        if (!quotedId(token.hasPublicId, token.publicId)) return false;
        if (isEnd()) return true;
    }
    if (!quotedId(token.hasSystemId, token.systemId)) return false;
    skipWhiteSpace();
    return position_ < size_; // bogus text does not force quirks mode, the end of the file does
}

/// Reads an identifier in quotes. Returns false if there is none or if its closing quote is missing.
bool Tokenizer::quotedId(bool& has, std::string_view& id) {
    skipWhiteSpace();
    const char quote = at(position_);
    if (quote != '"' && quote != '\'') return false;
    const std::size_t start = ++position_;
    while (position_ < size_ && data_[position_] != quote && data_[position_] != '>')
        ++position_;
    has = true;
    id = {data_ + start, position_ - start};
    if (at(position_) != quote) return false;
    ++position_;
    return true;
}

} // namespace quillow::html
