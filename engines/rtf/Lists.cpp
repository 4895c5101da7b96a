#include "engines/rtf/Lists.h"

#include "engines/rtf/CharacterDecoder.h"
#include "text/Utf8.h"

#include <algorithm>

namespace quillow::rtf {

namespace {

/// Reads the destination word after an opening brace. An unknown \* destination is Destination::skipped.
Destination readDestination(Scanner& scanner) {
    scanner.skipLineEnds();
    const bool isStarred = scanner.peek(0) == '\\' && scanner.peek(1) == '*';
    if (isStarred) {
        scanner.moveTo(scanner.position() + 2);
        scanner.skipLineEnds();
    }
    const Destination otherwise = isStarred ? Destination::skipped : Destination::body;
    if (!scanner.atWord()) return otherwise;
    const ControlWord word = scanner.readWord();
    return word.action() == Action::destination ? word.keyword.destination() : otherwise;
}

/// What to do with a group inside a table's group.
enum class Inside : std::uint8_t {
    read,    ///< it has been read
    entered, ///< its words and groups are those of the group around it
    skipped,
};

/// What to do with a group that has no meaning of its own here.
Inside otherGroup(Destination destination) {
    return destination == Destination::body ? Inside::entered : Inside::skipped;
}

/// Reads the rest of a group, closing brace included. Calls `takeGroup` with the destination of each group inside,
/// which says what to do with it, and `takeWord` with each control word and the number of open groups.
template <typename TakeGroup, typename TakeWord>
Scanner::Completeness readGroup(Scanner& scanner, TakeGroup takeGroup, TakeWord takeWord) {
    for (std::size_t depth = 1; depth > 0;) {
        const Token token = scanner.nextToken();
        if (token.kind == Token::Kind::end) return Scanner::Completeness::cutShort;
        if (token.kind == Token::Kind::close) --depth;
        if (token.kind == Token::Kind::word) takeWord(token.word, depth);
        if (token.kind != Token::Kind::open) continue;
        const Inside inside = takeGroup(readDestination(scanner));
        if (inside == Inside::entered) ++depth;
        if (inside == Inside::skipped) (void)scanner.skipGroup(nullptr);
    }
    return Scanner::Completeness::whole;
}

std::uint32_t clampStart(std::int32_t start) {
    return static_cast<std::uint32_t>(std::clamp<std::int32_t>(start, 0, Lists::kMaxStart));
}

} // namespace

std::u32string LabelTemplate::decode(const Charset& charset) const {
    std::u32string decoded;
    for (std::size_t i = 0; i < units_.size(); ++i) {
        if ((units_[i] & kByteFlag) == 0) {
            const char32_t c = units_[i];
            decoded.push_back(text::isSymbolSign(c) ? charset.decodeSign(c) : c);
            continue;
        }
        const auto byte = static_cast<std::uint8_t>(units_[i]);
        const text::CodePage* pairs = charset.pairs();
        if (byte < kListLevels) {
            decoded.push_back(byte);
        } else if (pairs != nullptr && pairs->isLeadByte(byte) && i + 1 < units_.size()) {
            decoded.push_back(pairs->decodePair(byte, static_cast<std::uint8_t>(units_[++i])));
        } else {
            decoded.push_back(charset.decodeByte(byte));
        }
    }
    return decoded;
}

struct Lists::PendingLevel {
    Level level;
    LabelTemplate text;
    const Charset* charset = nullptr;
};

void Lists::reset() {
    lists_.clear();
    counters_.clear();
    listOfId_ = {};
    overrides_ = {};
    endOldNumbering();
}

Scanner::Completeness Lists::readListTable(Scanner& scanner) {
    const auto takeGroup = [&](Destination destination) {
        switch (destination) {
        case Destination::list:
            if (lists_.size() == kMaxLists) return Inside::skipped;
            lists_.push_back({{}, counters_.size()});
            counters_.emplace_back().fill(kNotStarted);
            return Inside::entered;
        case Destination::listLevel:
            if (lists_.empty() || lists_.back().levels.size() == kListLevels) return Inside::skipped;
            readLevel(scanner, lists_.back());
            return Inside::read;
        default: return otherGroup(destination);
        }
    };
    const auto takeWord = [&](const ControlWord& word, std::size_t depth) {
        if (word.action() == Action::listId && !lists_.empty() && depth == 2)
            listOfId_[word.parameter] = lists_.size() - 1;
    };
    return readGroup(scanner, takeGroup, takeWord);
}

void Lists::readLevel(Scanner& scanner, List& list) {
    PendingLevel pending;
    bool hasFormat = false;
    const auto takeGroup = [&](Destination destination) {
        if (destination != Destination::levelText) return otherGroup(destination);
        readTemplate(scanner, pending.text);
        return Inside::read;
    };
    const auto takeWord = [&](const ControlWord& word, std::size_t) {
        const std::int32_t parameter = word.parameter;
        switch (word.action()) {
        case Action::numberFormat:
            if (!hasFormat) pending.level.format = NumberFormat{parameter};
            hasFormat = true;
            break;
        case Action::levelStart: pending.level.start = clampStart(parameter); break;
        case Action::levelFollow:
            if (parameter >= 0 && parameter <= 2) pending.level.follow = static_cast<Follow>(parameter);
            break;
        case Action::levelLegal: pending.level.legal = word.isOn(); break;
        case Action::levelNoRestart: pending.level.neverRestarts = word.isOn(); break;
        case Action::font: pending.charset = fonts_.charset(parameter); break;
        default: break;
        }
    };
    (void)readGroup(scanner, takeGroup, takeWord);
    finishLevel(list, pending);
}

void Lists::finishLevel(List& list, const PendingLevel& pending) const {
    const Charset& charset = pending.charset != nullptr ? *pending.charset : *fonts_.documentCharset();
    // The first character of a \leveltext is the number of characters that follow; a semicolon ends it.
    std::u32string text = pending.text.decode(charset);
    if (!text.empty()) {
        const std::size_t length = text.front();
        text.erase(0, 1);
        if (!text.empty() && text.back() == U';' && text.size() > length) text.pop_back();
        if (text.size() > length) text.resize(length);
    }
    list.levels.push_back(pending.level);
    list.levels.back().text = std::move(text);
}

void Lists::readTemplate(Scanner& scanner, LabelTemplate& text) const {
    int fallback = 0; // bytes still to skip after \u
    int unicodeSkip = unicodeSkip_;
    for (std::size_t depth = 1; depth > 0;) {
        const Token token = scanner.nextToken();
        switch (token.kind) {
        case Token::Kind::end: return;
        case Token::Kind::open:
            if (readDestination(scanner) == Destination::body) {
                ++depth;
            } else {
                (void)scanner.skipGroup(nullptr);
            }
            fallback = 0;
            break;
        case Token::Kind::close:
            --depth;
            fallback = 0;
            break;
        case Token::Kind::word:
            if (token.word.action() == Action::unicode && token.word.hasParameter) {
                // deliberate: \u0 is a character here, the placeholder of the first level.
                text.addUnicode(codePointOfUnicode(token.word.parameter));
                fallback = unicodeSkip;
            } else if (token.word.action() == Action::unicodeSkip) {
                unicodeSkip = std::clamp<std::int32_t>(token.word.parameter, 0, 0xFFFF);
            } else if (token.word.action() == Action::character) {
                text.addUnicode(token.word.keyword.value);
            }
            break;
        case Token::Kind::symbol:
            if (token.byte == '~') text.addUnicode(U'\u00A0');
            if (token.byte == '_') text.addUnicode(U'\u2011');
            break;
        case Token::Kind::byte:
            if (fallback > 0) {
                --fallback;
            } else {
                text.addByte(static_cast<std::uint8_t>(token.byte));
            }
            break;
        }
    }
}

Scanner::Completeness Lists::readOverrideTable(Scanner& scanner) {
    const auto takeGroup = [&](Destination destination) {
        if (destination != Destination::listOverride) return otherGroup(destination);
        readOverride(scanner);
        return Inside::read;
    };
    return readGroup(scanner, takeGroup, [](const ControlWord&, std::size_t) {});
}

void Lists::readOverride(Scanner& scanner) {
    Override entry;
    entry.starts.fill(kNotStarted);
    int number = -1;
    std::size_t level = 0;
    const auto takeGroup = [&](Destination destination) {
        if (destination != Destination::overrideLevel) return otherGroup(destination);
        if (level == kListLevels) return Inside::skipped;
        readOverrideLevel(scanner, entry, level++);
        return Inside::read;
    };
    const auto takeWord = [&](const ControlWord& word, std::size_t) {
        if (word.action() == Action::listId) {
            const auto found = listOfId_.find(word.parameter);
            if (found != listOfId_.end()) entry.list = found->second;
        } else if (word.action() == Action::listOverride) {
            number = word.parameter;
        }
    };
    (void)readGroup(scanner, takeGroup, takeWord);
    if (number >= 0 && overrides_.size() < kMaxOverrides) overrides_[number] = entry;
}

void Lists::readOverrideLevel(Scanner& scanner, Override& entry, std::size_t level) {
    bool hasStart = false;
    std::uint32_t start = 1;
    List own; // holds the level of an overriding format, if there is one
    const auto takeGroup = [&](Destination destination) {
        if (destination != Destination::listLevel || !own.levels.empty()) return otherGroup(destination);
        readLevel(scanner, own);
        return Inside::read;
    };
    const auto takeWord = [&](const ControlWord& word, std::size_t) {
        if (word.action() == Action::overrideStart) hasStart = word.isOn();
        if (word.action() == Action::levelStart) start = clampStart(word.parameter);
    };
    (void)readGroup(scanner, takeGroup, takeWord);
    if (!own.levels.empty() && entry.list != Override::kNoList && lists_.size() < kMaxLists) {
        if (hasStart) start = own.levels.front().start;
        // The override gets a copy of the list with its own level. The copy shares the counters of the original.
        List copy = lists_[entry.list];
        if (copy.levels.size() <= level) copy.levels.resize(level + 1);
        copy.levels[level] = std::move(own.levels.front());
        lists_.push_back(std::move(copy));
        entry.list = lists_.size() - 1;
    }
    if (hasStart) {
        entry.starts[level] = start;
        entry.startsPending = true;
    }
}

std::u32string Lists::nextLabel(int ls, int level) {
    const auto found = overrides_.find(ls);
    if (found == overrides_.end() || found->second.list == Override::kNoList) return {};
    Override& entry = found->second;
    const List& list = lists_[entry.list];
    if (list.levels.empty()) return {};
    const std::size_t at = std::min(static_cast<std::size_t>(std::max(level, 0)), list.levels.size() - 1);
    Counters& counters = counters_[list.counters];
    const auto startOf = [&](std::size_t l) {
        return entry.starts[l] != kNotStarted ? entry.starts[l] : list.levels[l].start;
    };
    if (entry.startsPending) {
        for (std::size_t l = 0; l < kListLevels; ++l)
            if (entry.starts[l] != kNotStarted) counters[l] = kNotStarted;
        entry.startsPending = false;
    }
    // The level counts up. Deeper levels restart. Outer levels that have not started show their start.
    counters[at] = counters[at] == kNotStarted ? startOf(at) : std::min(counters[at] + 1, kMaxStart);
    for (std::size_t l = at + 1; l < list.levels.size(); ++l)
        if (!list.levels[l].neverRestarts) counters[l] = kNotStarted;
    for (std::size_t l = 0; l < at; ++l)
        if (counters[l] == kNotStarted) counters[l] = startOf(l);

    const Level& shown = list.levels[at];
    std::u32string label;
    for (const char32_t c : shown.text) {
        if (c >= kListLevels) {
            label.push_back(c);
        } else if (c <= at) {
            const NumberFormat format = list.levels[c].format;
            appendNumber(label, shown.legal && format != NumberFormat::none ? NumberFormat::arabic : format,
                         counters[c]);
        }
    }
    if (label.empty() || shown.format == NumberFormat::none) return label;
    if (shown.follow == Follow::tab) label.push_back(U'\t');
    if (shown.follow == Follow::space) label.push_back(U' ');
    return label;
}

Scanner::Completeness Lists::readOldNumbering(Scanner& scanner, OldNumbering& numbering) {
    numbering = {};
    LabelTemplate before;
    LabelTemplate after;
    const Charset* charset = fonts_.defaultCharset();
    bool hasNumber = false;
    bool hasKind = false;
    const auto takeGroup = [&](Destination destination) {
        switch (destination) {
        case Destination::oldNumberingBefore: readTemplate(scanner, before); return Inside::read;
        case Destination::oldNumberingAfter: readTemplate(scanner, after); return Inside::read;
        default: return otherGroup(destination);
        }
    };
    const auto takeWord = [&](const ControlWord& word, std::size_t) {
        switch (word.action()) {
        case Action::pnLevel:
            numbering.kind = OldNumbering::Kind::numbered;
            numbering.level = std::clamp<std::int32_t>(word.parameter, 1, OldNumbering::kMaxLevel);
            hasKind = true;
            break;
        case Action::pnBody:
            numbering.kind = OldNumbering::Kind::numbered;
            hasKind = true;
            break;
        case Action::pnBullet:
            numbering.kind = OldNumbering::Kind::bullet;
            hasKind = true;
            break;
        case Action::pnContinue:
            numbering.kind = OldNumbering::Kind::none;
            numbering.goesOn = true;
            hasKind = true;
            break;
        case Action::pnFormat:
            numbering.format = NumberFormat{word.keyword.value};
            hasNumber = true;
            break;
        case Action::pnStart:
            numbering.start = clampStart(word.parameter);
            hasNumber = true;
            break;
        case Action::font: charset = fonts_.charset(word.parameter); break;
        default: break;
        }
    };
    const Scanner::Completeness completeness = readGroup(scanner, takeGroup, takeWord);
    if (!hasKind && hasNumber) numbering.kind = OldNumbering::Kind::numbered;
    numbering.before = before.decode(*charset);
    numbering.after = after.decode(*charset);
    return completeness;
}

std::u32string Lists::nextLabel(const OldNumbering& numbering) {
    std::u32string label = numbering.before;
    if (numbering.kind == OldNumbering::Kind::numbered) {
        const auto level = static_cast<std::size_t>(numbering.level);
        std::uint32_t& counter = oldCounters_[level];
        counter = counter == kNotStarted ? numbering.start : std::min(counter + 1, kMaxStart);
        std::fill(oldCounters_.begin() + static_cast<std::ptrdiff_t>(level) + 1, oldCounters_.end(), kNotStarted);
        appendNumber(label, numbering.format, counter);
    }
    label += numbering.after;
    if (!label.empty()) label.push_back(U'\t');
    return label;
}

} // namespace quillow::rtf
