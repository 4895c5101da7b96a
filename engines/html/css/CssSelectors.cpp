#include "engines/html/css/CssSelectors.h"

#include "engines/html/css/CssPseudoClasses.h"
#include "text/Ascii.h"

#include <algorithm>

namespace quillow::html {

namespace {

constexpr std::uint32_t kSpecificityLimit = 1023;
constexpr std::uint32_t kIdWeight = 1U << 20;
constexpr std::uint32_t kClassWeight = 1U << 10;
constexpr std::uint32_t kTypeWeight = 1;

/// Adds two specificities. Each of the three counts is limited to its ten bits.
std::uint32_t addSpecificity(std::uint32_t x, std::uint32_t y) {
    std::uint32_t sum = 0;
    for (int shift = 0; shift <= 20; shift += 10)
        sum |= std::min(((x >> shift) & kSpecificityLimit) + ((y >> shift) & kSpecificityLimit), kSpecificityLimit)
               << shift;
    return sum;
}

std::string_view lowered(std::string_view name, SelectorPool& pool) {
    if (std::none_of(name.begin(), name.end(), [](char c) { return c >= 'A' && c <= 'Z'; })) return name;
    std::string& kept = pool.strings.emplace_back(name);
    std::transform(kept.begin(), kept.end(), kept.begin(), text::toLower);
    return kept;
}

/// The range of the next `size` parts to be appended to a vector.
template <typename Part>
PoolRange rangeAtEnd(const std::vector<Part>& parts, std::size_t size) {
    return {static_cast<std::uint32_t>(parts.size()), static_cast<std::uint32_t>(size)};
}

class SelectorParser {
public:
    SelectorParser(std::string_view text, SelectorPool& pool, std::optional<std::uint32_t> outer, int nesting)
        : tokens_(text, pool.strings)
        , pool_(pool)
        , unfinished_(pool.unfinished[static_cast<std::size_t>(nesting)])
        , outer_(outer)
        , nesting_(nesting) {
        unfinished_.selectors.clear();
        advance();
    }

    std::optional<SelectorList> parseList();

private:
    void advance() { token_ = tokens_.next(); }
    void skipWhiteSpace() {
        while (token_.type == CssTokenType::whiteSpace)
            advance();
    }
    [[nodiscard]] bool isDelimiter(char c) const {
        return token_.type == CssTokenType::delimiter && token_.delimiter == c;
    }
    [[nodiscard]] bool parseComplex();
    void finishComplex();
    CompoundSelector& addCompound(std::size_t place, Combinator toLeft);
    Combinator parseCombinator();
    bool parseCompound(CompoundSelector& compound);
    bool parseSimple(CompoundSelector& compound);
    bool parseType(CompoundSelector& compound);
    bool parseAttribute(CompoundSelector& compound);
    bool parsePseudo(CompoundSelector& compound);
    bool parsePseudoElement(CompoundSelector& compound);
    bool parsePseudoFunction(CompoundSelector& compound, std::string_view name);
    bool parseNestedList(CompoundSelector& compound, SelectorKind kind, std::string_view arguments);
    std::string_view takeArguments();
    void add(CompoundSelector& compound, SimpleSelector simple, std::uint32_t weight);

    CssTokenizer tokens_;
    SelectorPool& pool_;
    SelectorPool::Unfinished& unfinished_;
    std::optional<std::uint32_t> outer_;
    int nesting_;
    CssToken token_;
    std::uint32_t specificity_ = 0;
    bool sawNesting_ = false;
    PseudoElement pseudo_ = PseudoElement::none; ///< of the selector being read
};

std::optional<SelectorList> SelectorParser::parseList() {
    for (;;) {
        if (!parseComplex()) return std::nullopt;
        if (token_.type == CssTokenType::end) break;
        if (token_.type != CssTokenType::comma) return std::nullopt;
        advance();
    }
    const SelectorList list = rangeAtEnd(pool_.selectors, unfinished_.selectors.size());
    pool_.selectors.insert(pool_.selectors.end(), unfinished_.selectors.begin(), unfinished_.selectors.end());
    return list;
}

/// Inserts a compound without simple selectors. Those that are added next belong to it.
CompoundSelector& SelectorParser::addCompound(std::size_t place, Combinator toLeft) {
    auto& compounds = unfinished_.compounds;
    return *compounds.insert(compounds.begin() + static_cast<std::ptrdiff_t>(place),
                             {rangeAtEnd(unfinished_.simples, 0), toLeft});
}

bool SelectorParser::parseComplex() {
    specificity_ = 0;
    sawNesting_ = false;
    pseudo_ = PseudoElement::none;
    unfinished_.simples.clear();
    unfinished_.compounds.clear();
    skipWhiteSpace();
    Combinator combinator = Combinator::none;
    if (outer_ && nesting_ == 0 && token_.type == CssTokenType::delimiter && token_.delimiter != '&' &&
        token_.delimiter != '.' && token_.delimiter != '*' && token_.delimiter != '#')
        combinator = parseCombinator(); // a relative selector, such as "> b"
    const Combinator leading = combinator;
    for (;;) {
        if (!parseCompound(addCompound(unfinished_.compounds.size(), combinator))) return false;
        combinator = parseCombinator();
        if (combinator == Combinator::none) break;
        if (token_.type == CssTokenType::end || token_.type == CssTokenType::comma) {
            if (combinator != Combinator::descendant) return false;
            break;
        }
    }
    if (outer_ && nesting_ == 0 && (!sawNesting_ || leading != Combinator::none)) {
        unfinished_.compounds.front().toLeft = leading == Combinator::none ? Combinator::descendant : leading;
        SimpleSelector simple;
        simple.kind = SelectorKind::nesting;
        add(addCompound(0, Combinator::none), simple, 0);
    }
    finishComplex();
    return true;
}

/// Moves the parts of the selector that was read into the pool.
void SelectorParser::finishComplex() {
    if (unfinished_.compounds.size() > kMaxCompounds) {
        unfinished_.simples.assign(1, {});
        unfinished_.compounds.assign(1, {{0, 1}, Combinator::none});
    }
    ComplexSelector selector;
    selector.specificity = specificity_;
    selector.pseudo = pseudo_;
    selector.compounds = rangeAtEnd(pool_.compounds, unfinished_.compounds.size());
    for (auto compound = unfinished_.compounds.rbegin(); compound != unfinished_.compounds.rend(); ++compound) {
        const auto first = unfinished_.simples.begin() + compound->simples.first;
        pool_.compounds.push_back({rangeAtEnd(pool_.simples, compound->simples.size), compound->toLeft});
        pool_.simples.insert(pool_.simples.end(), first, first + compound->simples.size);
    }
    unfinished_.selectors.push_back(selector);
}

Combinator SelectorParser::parseCombinator() {
    Combinator combinator = token_.type == CssTokenType::whiteSpace ? Combinator::descendant : Combinator::none;
    skipWhiteSpace();
    if (isDelimiter('>')) {
        combinator = Combinator::child;
    } else if (isDelimiter('+')) {
        combinator = Combinator::nextSibling;
    } else if (isDelimiter('~')) {
        combinator = Combinator::laterSibling;
    } else {
        return combinator;
    }
    advance();
    skipWhiteSpace();
    return combinator;
}

void SelectorParser::add(CompoundSelector& compound, SimpleSelector simple, std::uint32_t weight) {
    if (pseudo_ != PseudoElement::none)
        simple = SimpleSelector{}; // a simple selector after a pseudo-element never matches
    if (simple.kind == SelectorKind::nesting) {
        sawNesting_ = true;
        if (outer_) {
            simple.list = *outer_;
            for (const ComplexSelector& selector : pool_.list(*outer_))
                weight = std::max(weight, selector.specificity);
        } else {
            simple.kind = SelectorKind::root;
        }
    }
    specificity_ = addSpecificity(specificity_, weight);
    if (compound.simples.size >= kMaxSimpleSelectors) simple = SimpleSelector{};
    if (compound.simples.size > kMaxSimpleSelectors) return;
    unfinished_.simples.push_back(simple);
    ++compound.simples.size;
}

bool SelectorParser::parseCompound(CompoundSelector& compound) {
    bool any = false;
    for (;;) {
        switch (token_.type) {
        case CssTokenType::end:
        case CssTokenType::whiteSpace:
        case CssTokenType::comma: return any;
        case CssTokenType::delimiter:
            if (token_.delimiter == '>' || token_.delimiter == '+' || token_.delimiter == '~') return any;
            break;
        default: break;
        }
        if (any && (token_.type == CssTokenType::ident || isDelimiter('*'))) return false; // a type must be first
        if (!parseSimple(compound)) return false;
        any = true;
    }
}

bool SelectorParser::parseSimple(CompoundSelector& compound) {
    SimpleSelector simple;
    switch (token_.type) {
    case CssTokenType::ident: return parseType(compound);
    case CssTokenType::hash:
        simple.kind = SelectorKind::id;
        simple.name = token_.text;
        advance();
        add(compound, simple, kIdWeight);
        return true;
    case CssTokenType::openSquare: return parseAttribute(compound);
    case CssTokenType::colon: return parsePseudo(compound);
    case CssTokenType::delimiter: break;
    default: return false;
    }
    if (token_.delimiter == '*' || token_.delimiter == '|') return parseType(compound);
    if (token_.delimiter == '&') {
        simple.kind = SelectorKind::nesting;
        advance();
        add(compound, simple, 0);
        return true;
    }
    if (token_.delimiter != '.') return false;
    advance();
    if (token_.type != CssTokenType::ident) return false;
    simple.kind = SelectorKind::className;
    simple.name = token_.text;
    advance();
    add(compound, simple, kClassWeight);
    return true;
}

/// A type or universal selector. An optional namespace prefix is read and ignored.
bool SelectorParser::parseType(CompoundSelector& compound) {
    std::string_view name;
    if (token_.type == CssTokenType::ident) name = token_.text;
    if (!isDelimiter('|')) advance();
    if (isDelimiter('|')) {
        advance();
        if (token_.type != CssTokenType::ident && !isDelimiter('*')) return false;
        name = token_.type == CssTokenType::ident ? token_.text : std::string_view();
        advance();
    }
    if (name.empty()) return true;
    SimpleSelector simple;
    simple.kind = SelectorKind::type;
    simple.name = lowered(name, pool_);
    add(compound, simple, kTypeWeight);
    return true;
}

bool SelectorParser::parseAttribute(CompoundSelector& compound) {
    advance();
    skipWhiteSpace();
    SimpleSelector simple;
    simple.kind = SelectorKind::attribute;
    if (token_.type != CssTokenType::ident) return false;
    simple.name = lowered(token_.text, pool_);
    simple.attribute = attributeNameForKey(keyOf(simple.name));
    advance();
    skipWhiteSpace();
    if (token_.type == CssTokenType::delimiter) {
        switch (token_.delimiter) {
        case '=': simple.match = AttributeMatch::equals; break;
        case '~': simple.match = AttributeMatch::includes; break;
        case '|': simple.match = AttributeMatch::dash; break;
        case '^': simple.match = AttributeMatch::prefix; break;
        case '$': simple.match = AttributeMatch::suffix; break;
        case '*': simple.match = AttributeMatch::substring; break;
        default: return false;
        }
        advance();
        if (simple.match != AttributeMatch::equals) {
            if (!isDelimiter('=')) return false;
            advance();
        }
        skipWhiteSpace();
        if (token_.type != CssTokenType::ident && token_.type != CssTokenType::string) return false;
        simple.value = token_.text;
        advance();
        skipWhiteSpace();
        if (token_.type == CssTokenType::ident) {
            simple.letterCase =
                text::equalsIgnoringCase(token_.text, "i") ? LetterCase::ignored : LetterCase::asWritten;
            advance();
            skipWhiteSpace();
        }
    }
    if (token_.type != CssTokenType::closeSquare) return false;
    // HTML, 4.16.2: the values of these attributes are compared without regard to case.
    if (simple.name == "type" || simple.name == "lang" || simple.name == "dir" || simple.name == "align")
        simple.letterCase = LetterCase::ignored;
    advance();
    add(compound, simple, kClassWeight);
    return true;
}

bool SelectorParser::parsePseudo(CompoundSelector& compound) {
    advance();
    if (token_.type == CssTokenType::colon) {
        advance();
        return parsePseudoElement(compound);
    }
    const std::string_view name = lowered(token_.text, pool_);
    if (name == "before" || name == "after") return parsePseudoElement(compound); // the spelling of CSS 2
    if (token_.type == CssTokenType::function) return parsePseudoFunction(compound, name);
    if (token_.type != CssTokenType::ident) return false;
    const std::optional<SimpleSelector> simple = pseudoClass(name);
    if (!simple) return false;
    advance();
    add(compound, *simple, kClassWeight);
    return true;
}

/// Only the pseudo-elements of generated content matter; the others have no text of their own.
bool SelectorParser::parsePseudoElement(CompoundSelector& compound) {
    PseudoElement pseudo = PseudoElement::none;
    if (token_.type == CssTokenType::function) {
        takeArguments();
    } else if (token_.type != CssTokenType::ident) {
        return false;
    } else if (nesting_ == 0 && text::equalsIgnoringCase(token_.text, "before")) {
        pseudo = PseudoElement::before;
    } else if (nesting_ == 0 && text::equalsIgnoringCase(token_.text, "after")) {
        pseudo = PseudoElement::after;
    }
    advance();
    if (pseudo == PseudoElement::none || pseudo_ != PseudoElement::none) {
        add(compound, SimpleSelector{}, kTypeWeight);
        return true;
    }
    specificity_ = addSpecificity(specificity_, kTypeWeight);
    pseudo_ = pseudo;
    return true;
}

/// Consumes the text up to the parenthesis that closes the current function, and returns it. The current token is
/// then that parenthesis.
std::string_view SelectorParser::takeArguments() {
    const std::size_t start = tokens_.position();
    std::size_t depth = 1;
    for (;;) {
        advance();
        if (token_.type == CssTokenType::end) break;
        if (token_.type == CssTokenType::function || token_.type == CssTokenType::openParenthesis) ++depth;
        if (token_.type == CssTokenType::closeParenthesis && --depth == 0) break;
    }
    return tokens_.input().substr(start, token_.start - start);
}

bool SelectorParser::parsePseudoFunction(CompoundSelector& compound, std::string_view name) {
    const std::string_view arguments = takeArguments();
    advance();
    if (name == "not") return parseNestedList(compound, SelectorKind::notList, arguments);
    if (name == "is" || name == "where" || name == "matches" || name == "-webkit-any" || name == "any") {
        const std::uint32_t before = specificity_;
        const bool valid = parseNestedList(compound, SelectorKind::isList, arguments);
        if (name == "where") specificity_ = before; // section 16: :where() adds no specificity
        return valid;
    }
    const std::optional<SimpleSelector> simple = functionalPseudoClass(name, arguments);
    if (!simple) return false;
    add(compound, *simple, kClassWeight);
    return true;
}

bool SelectorParser::parseNestedList(CompoundSelector& compound, SelectorKind kind, std::string_view arguments) {
    SimpleSelector simple;
    std::uint32_t weight = 0;
    if (nesting_ < kMaxSelectorNesting) {
        SelectorParser inner(arguments, pool_, outer_, nesting_ + 1);
        auto list = inner.parseList();
        sawNesting_ = sawNesting_ || inner.sawNesting_;
        if (!list) {
            if (kind == SelectorKind::notList) return false;
            list.emplace(); // a forgiving list becomes empty
        }
        simple.kind = kind;
        simple.list = static_cast<std::uint32_t>(pool_.lists.size());
        pool_.lists.push_back(*list);
        for (const ComplexSelector& selector : pool_.list(simple.list))
            weight = std::max(weight, selector.specificity);
    }
    add(compound, simple, weight);
    return true;
}

} // namespace

std::optional<SelectorList> parseSelectors(std::string_view text, SelectorPool& pool,
                                           std::optional<std::uint32_t> outer) {
    return SelectorParser(text::trimBlanks(text), pool, outer, 0).parseList();
}

} // namespace quillow::html
