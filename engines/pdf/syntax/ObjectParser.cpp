#include "engines/pdf/syntax/ObjectParser.h"

#include "engines/pdf/syntax/Lexer.h"
#include "text/Ascii.h"

#include <algorithm>
#include <array>
#include <limits>

namespace quillow::pdf {
namespace {

/// Keywords that no object contains. An object that meets one was cut.
constexpr std::array<std::string_view, 7> kEndingKeywords = {"endobj", "obj",     "stream",   "endstream",
                                                             "xref",   "trailer", "startxref"};

bool startsNumber(char byte) {
    return text::isDigit(byte) || byte == '-' || byte == '+' || byte == '.';
}

/// The integer if it has at most nine digits and nothing else, as most have; p stays where it is if not.
bool readShortInteger(const char*& p, const char* end, std::int64_t& value) {
    constexpr std::ptrdiff_t kDigits = 9;
    const char* digit = p;
    std::uint32_t sum = 0;
    for (; digit < end && text::isDigit(*digit); ++digit) {
        if (digit - p == kDigits) return false;
        sum = sum * 10 + static_cast<std::uint32_t>(*digit - '0');
    }
    if (digit == p || (digit < end && isRegular(*digit))) return false;
    p = digit;
    value = sum;
    return true;
}

/// PDF has no exponents (7.3.3). One that a producer wrote all the same is dropped.
const char* skipExponent(const char* p, const char* end) {
    if (end - p < 2 || (*p != 'e' && *p != 'E') || !startsNumber(p[1])) return p;
    return std::find_if_not(p + 1, end, startsNumber);
}

Object numberAt(const char*& p, const char* end) {
    std::int64_t value = 0;
    if (readShortInteger(p, end, value)) return Object::ofInteger(value);
    const NumberToken number = readNumber(p, end);
    p = skipExponent(number.end, end);
    const Object real = Object::ofReal(number.value);
    return number.isInteger ? Object::ofInteger(real.integerOr(0)) : real;
}

bool isIntegerUpTo(const Object& object, std::int64_t most) {
    return object.type() == Object::Type::integer && object.integerOr(-1) >= 0 && object.integerOr(-1) <= most;
}

bool isReferenceTo(const Object& number, const Object& generation) {
    return isIntegerUpTo(number, std::numeric_limits<std::uint32_t>::max()) &&
           isIntegerUpTo(generation, std::numeric_limits<std::int64_t>::max());
}

Object referenceTo(const Object& number, const Object& generation) {
    constexpr std::int64_t kMostGenerations = std::numeric_limits<std::uint16_t>::max();
    return Object::ofReference({static_cast<std::uint32_t>(number.integerOr(0)),
                                static_cast<std::uint16_t>(std::min(generation.integerOr(0), kMostGenerations))});
}

/// The entries sorted by key, each key with its last value. Returns how many are left.
std::size_t sortEntries(std::span<DictionaryEntry> entries) {
    std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
    std::size_t kept = 0;
    for (const DictionaryEntry& entry : entries) {
        if (kept > 0 && entries[kept - 1].key == entry.key) --kept;
        entries[kept++] = entry;
    }
    return kept;
}

} // namespace

ParsedObject ObjectParser::parse(const char* p, const char* end, const StringCipher& cipher) {
    p_ = p;
    end_ = end;
    cipher_ = cipher;
    items_.clear();
    frames_.clear();
    Step step = Step::next;
    do
        step = readToken();
    while (step == Step::next && (!frames_.empty() || items_.empty()));
    while (!frames_.empty())
        closeFrame();
    return {items_.empty() ? Object() : items_.front(), p_, step == Step::next};
}

ObjectParser::Step ObjectParser::readToken() {
    p_ = skipWhiteSpace(p_, end_);
    if (p_ == end_) return Step::stop;
    switch (*p_) {
    case '/': readName(); return Step::next;
    case '(': readLiteral(); return Step::next;
    case '[': return open(Container::array, 1);
    case ']': closeArray(); return Step::next;
    case '<':
        if (at("<<")) return open(Container::dictionary, 2);
        readLiteral();
        return Step::next;
    case '>':
        if (at(">>")) {
            closeDictionaries();
        } else {
            ++p_;
        }
        return Step::next;
    case ')':
    case '{':
    case '}': ++p_; return Step::next;
    default: return readWord();
    }
}

ObjectParser::Step ObjectParser::readWord() {
    if (startsNumber(*p_)) {
        readNumberOrReference();
        return Step::next;
    }
    const std::string_view word = readRawName(p_, end_);
    if (std::find(kEndingKeywords.begin(), kEndingKeywords.end(), word) != kEndingKeywords.end()) return Step::stop;
    p_ += word.size();
    if (word == "R" && items_.size() >= firstItem() + 2) {
        makeReference();
    } else {
        add(word == "true" || word == "false" ? Object::ofBoolean(word == "true") : Object());
    }
    return Step::next;
}

/// Inside an array or a dictionary the two numbers of a reference are items until its R comes. Outside, the bytes after
/// an integer are looked at.
void ObjectParser::readNumberOrReference() {
    const Object number = numberAt(p_, end_);
    if (!frames_.empty()) return add(number);
    const char* next = skipWhiteSpace(p_, end_);
    if (next < end_ && text::isDigit(*next)) {
        const Object generation = numberAt(next, end_);
        next = skipWhiteSpace(next, end_);
        if (isReferenceTo(number, generation) && readRawName(next, end_) == "R") {
            p_ = next + 1;
            return add(referenceTo(number, generation));
        }
    }
    add(number);
}

void ObjectParser::makeReference() {
    const Object generation = items_.back();
    const Object number = items_[items_.size() - 2];
    if (!isReferenceTo(number, generation)) return add(Object());
    items_.pop_back();
    items_.back() = referenceTo(number, generation);
}

void ObjectParser::readName() {
    const std::string_view raw = readRawName(p_ + 1, end_);
    p_ = raw.data() + raw.size();
    add(Object::ofName(raw.find('#') == std::string_view::npos ? raw : unescapeName(raw)));
}

/// 7.3.5: # and two hexadecimal digits are one byte. Any other # is itself.
std::string_view ObjectParser::unescapeName(std::string_view raw) {
    const std::span<char> name = arena_->make<char>(raw.size());
    std::size_t size = 0;
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const bool isEscape =
            raw[i] == '#' && i + 2 < raw.size() && text::hexValue(raw[i + 1]) >= 0 && text::hexValue(raw[i + 2]) >= 0;
        name[size++] =
            isEscape ? static_cast<char>(text::hexValue(raw[i + 1]) << 4 | text::hexValue(raw[i + 2])) : raw[i];
        if (isEscape) i += 2;
    }
    return {name.data(), size};
}

void ObjectParser::readLiteral() {
    const StringToken token = readString(p_, end_);
    std::string_view bytes = token.raw;
    if (!token.isPlain) {
        unescaped_.clear();
        unescapeString(token.raw, *p_, unescaped_);
        bytes = unescaped_.view();
    }
    if (cipher_.decryption != nullptr) {
        decrypted_.clear();
        cipher_.decryption->decryptString(cipher_.id.number, cipher_.id.generation, bytes, decrypted_);
        bytes = decrypted_.view();
    }
    p_ = token.end;
    add(Object::ofString(bytes.data() == token.raw.data() ? bytes : arena_->keep(bytes)));
}

ObjectParser::Step ObjectParser::open(Container container, std::size_t length) {
    if (frames_.size() == kMaximumNesting) return Step::stop;
    p_ += length;
    frames_.push_back({items_.size(), container});
    return Step::next;
}

/// A bracket that closes nothing is passed over.
void ObjectParser::closeArray() {
    ++p_;
    if (!frames_.empty() && frames_.back().container == Container::array) closeFrame();
}

/// Closes the innermost dictionary and the arrays in it that have no end.
void ObjectParser::closeDictionaries() {
    p_ += 2;
    const auto isDictionary = [](const Frame& frame) { return frame.container == Container::dictionary; };
    if (std::none_of(frames_.begin(), frames_.end(), isDictionary)) return;
    while (!isDictionary(frames_.back()))
        closeFrame();
    closeFrame();
}

void ObjectParser::closeFrame() {
    const Frame frame = frames_.back();
    frames_.pop_back();
    const std::span<const Object> items = std::span(items_).subspan(frame.firstItem);
    const Object object =
        frame.container == Container::array ? Object::ofArray(arena_->keep(items)) : makeDictionary(items);
    items_.resize(frame.firstItem);
    add(object);
}

/// Whatever is at the place of a key and is not a name is passed over. "<< <<...>> >>" is the inner dictionary.
Object ObjectParser::makeDictionary(std::span<const Object> items) {
    if (items.size() == 1 && items.front().type() == Object::Type::dictionary) return items.front();
    const std::span<DictionaryEntry> entries = arena_->make<DictionaryEntry>((items.size() + 1) / 2);
    std::size_t size = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].type() != Object::Type::name) continue;
        const Object value = i + 1 < items.size() ? items[i + 1] : Object();
        new (&entries[size++]) DictionaryEntry{items[i].name(), value};
        ++i;
    }
    if (size <= kUnsortedEntries) return Object::ofDictionary(entries.first(size));
    return Object::ofDictionary(entries.first(sortEntries(entries.first(size))), EntryOrder::sorted);
}

void ObjectParser::add(Object object) {
    if (items_.size() - firstItem() < kMaximumItems) items_.push_back(object);
}

} // namespace quillow::pdf
