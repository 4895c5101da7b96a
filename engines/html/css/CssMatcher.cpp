#include "engines/html/css/CssMatcher.h"

#include "text/ByteScan.h"

#include <cstring>

namespace quillow::html {

namespace {

constexpr int kImportantShift = 63;
constexpr int kInlineShift = 62;
constexpr int kLayerShift = 61;
constexpr int kSpecificityShift = 30;

constexpr std::size_t kHashesPerStep = 4; // comparisons of hashes that count as one step of matching

/// CSS Cascading 5, section 6.1: importance, then the style attribute, then layers (in reverse order for important
/// declarations), then specificity, then the order of appearance. Never 0.
std::uint64_t priorityOf(const CssDeclaration& declaration, bool layered, std::uint32_t specificity,
                         std::uint32_t order) {
    const bool important = declaration.importance == Importance::important;
    return (std::uint64_t{important} << kImportantShift) | (std::uint64_t{layered == important} << kLayerShift) |
           (std::uint64_t{specificity} << kSpecificityShift) | (std::uint64_t{order} + 1);
}

bool equals(std::string_view a, std::string_view b, LetterCase letterCase) {
    return letterCase == LetterCase::ignored ? text::equalsIgnoringCase(a, b) : a == b;
}

/// Calls `each` with every white-space separated word of a text until it returns true. Returns whether it did.
template <typename Function>
bool anyWord(std::string_view text, Function each) {
    for (std::size_t at = text::skipBlanksPortable(text, 0); at < text.size();
         at = text::skipBlanksPortable(text, at)) {
        const std::size_t end = text::findBlank(text, at);
        if (each(text.substr(at, end - at))) return true;
        at = end;
    }
    return false;
}

/// Whether `word` is one of the white-space separated words of a text, in the same letter case. `word`
/// contains no white space.
bool holdsWord(std::string_view text, std::string_view word) {
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || text::isBlank(text[at - 1])) && (end == text.size() || text::isBlank(text[end]))) return true;
    }
    return false;
}

/// How much a simple selector narrows down the elements that it may match. 0 for kinds that have no buckets.
int rank(const SimpleSelector& simple) {
    switch (simple.kind) {
    case SelectorKind::id: return 3;
    case SelectorKind::className: return 2;
    case SelectorKind::type: return 1;
    default: return 0;
    }
}

/// A hash of a name's size, first bytes and last bytes, independent of the case of ASCII letters. Never 0.
std::uint32_t hashOf(std::string_view name) {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    if (name.size() >= sizeof first) {
        std::memcpy(&first, name.data(), sizeof first);
        std::memcpy(&last, name.data() + name.size() - sizeof last, sizeof last);
    } else {
        for (const char c : name)
            first = first << 8 | static_cast<unsigned char>(c);
    }
    constexpr std::uint32_t kLowerCase = 0x20202020;
    first |= kLowerCase;
    last |= kLowerCase;
    constexpr std::uint32_t kOdd = 0x9E3779B1; // 2 to the power of 32 divided by the golden ratio
    return (((first * kOdd + last) * kOdd + static_cast<std::uint32_t>(name.size())) * kOdd >> 12) + 1;
}

/// The hash of an element's name: its tag's number if the tag is known.
std::uint32_t hashOfType(Tag tag, std::string_view name) {
    return tag == Tag::unknown ? hashOf(name) : static_cast<std::uint32_t>(tag);
}

/// Whether any rule could generate content that takes part in a line.
bool anyContent(const CssStyleSheets& sheets) {
    return std::any_of(sheets.rules().begin(), sheets.rules().end(), [](const CssRule& rule) {
        return std::any_of(rule.declarations.begin(), rule.declarations.end(), [](const CssDeclaration& declaration) {
            return declaration.property == CssProperty::content && declaration.value != 0;
        });
    });
}

/// Whether any selector looks at elements other than its subject.
bool anyLooksAround(const SelectorPool& pool) {
    return std::any_of(pool.compounds.begin(), pool.compounds.end(),
                       [](const CompoundSelector& compound) { return compound.toLeft != Combinator::none; }) ||
           std::any_of(pool.simples.begin(), pool.simples.end(), [](const SimpleSelector& simple) {
               return simple.kind == SelectorKind::nthChild || simple.kind == SelectorKind::only;
           });
}

} // namespace

/// A hash of all bytes, independent of the case of ASCII letters. For a map, hashOf uses too little of the name.
std::size_t CssMatcher::Buckets::Hash::operator()(std::string_view name) const {
    constexpr std::uint64_t kLowerCase = 0x2020202020202020;
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15; // 2 to the power of 64 divided by the golden ratio
    std::uint64_t hash = name.size();
    while (!name.empty()) {
        std::uint64_t bytes = 0;
        const std::size_t size = std::min(name.size(), sizeof bytes);
        std::memcpy(&bytes, name.data(), size);
        hash = (hash ^ (bytes | kLowerCase)) * kOdd;
        hash ^= hash >> 32;
        name.remove_prefix(size);
    }
    return hash;
}

CssMatcher::Bucket& CssMatcher::Buckets::operator[](std::string_view name) {
    const std::uint32_t hash = hashOf(name) % kBits;
    mayHold_[hash / 64] |= std::uint64_t{1} << (hash % 64);
    return byName_[name];
}

const CssMatcher::Bucket* CssMatcher::Buckets::find(std::string_view name, std::uint32_t hash) const {
    hash %= kBits;
    if ((mayHold_[hash / 64] >> (hash % 64) & 1) == 0) return nullptr;
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : &found->second;
}

CssMatcher::CssMatcher(const Tree& tree, const CssStyleSheets& sheets)
    : tree_(tree)
    , sheets_(sheets)
    , nameCase_(tree.isQuirky() ? LetterCase::ignored : LetterCase::asWritten)
    , looksAround_(anyLooksAround(sheets.selectors())) {
    const bool generates = anyContent(sheets);
    for (std::uint32_t rule = 0; rule < sheets.rules().size(); ++rule)
        for (const ComplexSelector& selector : sheets.selectors().list(sheets.rules()[rule].list))
            if (generates || selector.pseudo == PseudoElement::none) file(rule, selector);
}

/// Files a selector under the most specific simple selector of its rightmost compound.
void CssMatcher::file(std::uint32_t rule, const ComplexSelector& selector) {
    const SimpleSelector* best = nullptr;
    const SelectorPool& pool = sheets_.selectors();
    for (const SimpleSelector& simple : pool.simplesOf(pool.compoundsOf(selector).front())) {
        if (simple.kind == SelectorKind::never) return;
        if (rank(simple) > (best == nullptr ? 0 : rank(*best))) best = &simple;
    }
    Candidate candidate{rule, &selector, {}};
    watchAncestors(selector, candidate);
    if (best == nullptr) {
        others_.push_back(candidate);
    } else if (best->kind == SelectorKind::id) {
        byId_[best->name].push_back(candidate);
    } else if (best->kind == SelectorKind::className) {
        byClass_[best->name].push_back(candidate);
    } else {
        byTag_[static_cast<std::size_t>(tagForKey(keyOf(best->name)))].push_back(candidate);
    }
}

/// A compound to the left of a descendant or child combinator must match an ancestor of the element, whatever other
/// combinators are between them.
void CssMatcher::watchAncestors(const ComplexSelector& selector, Candidate& candidate) {
    std::size_t watched = 0;
    const auto compounds = sheets_.selectors().compoundsOf(selector);
    for (std::size_t i = 1; i < compounds.size(); ++i) {
        const Combinator combinator = compounds[i - 1].toLeft;
        if (combinator != Combinator::descendant && combinator != Combinator::child) continue;
        for (const SimpleSelector& simple : sheets_.selectors().simplesOf(compounds[i])) {
            if (rank(simple) == 0 || watched == candidate.ancestors.size()) continue;
            candidate.ancestors[watched] = simple.kind == SelectorKind::type
                                               ? hashOfType(tagForKey(keyOf(simple.name)), simple.name)
                                               : hashOf(simple.name);
            ancestors_.expect(candidate.ancestors[watched++]);
            watchesAncestors_ = true;
        }
    }
}

bool CssMatcher::ancestorsMayFit(const Candidate& candidate) const {
    for (const std::uint32_t hash : candidate.ancestors) {
        if (hash == 0) return true;
        if (!ancestors_.mayHold(hash)) return false;
    }
    return true;
}

void CssMatcher::readNames(NodeId element) {
    named_ = element;
    names_.clear();
    if (const auto classes = tree_.attribute(element, AttributeName::class_))
        for (std::size_t at = text::skipBlanksPortable(*classes, 0); at < classes->size();) {
            const std::size_t end = text::findBlank(*classes, at);
            const std::string_view name = classes->substr(at, end - at);
            names_.push_back({name, hashOf(name)});
            at = std::min(end + 1, classes->size());
            if (at < classes->size() && text::isBlank((*classes)[at])) at = text::skipBlanksPortable(*classes, at);
        }
    classes_ = names_.size();
    if (const auto id = tree_.attribute(element, AttributeName::id)) names_.push_back({*id, hashOf(*id)});
}

void CssMatcher::watchNames(NodeId element) {
    watchedStart_.push_back(static_cast<std::uint32_t>(watched_.size()));
    if (named_ != element) readNames(element);
    const auto watch = [this](std::uint32_t hash) {
        if (!ancestors_.isExpected(hash)) return;
        watched_.push_back(hash);
        ancestors_.add(hash);
    };
    for (const Name& name : names_)
        watch(name.hash);
    watch(hashOfType(tree_.node(element).tag, tree_.text(element)));
}

void CssMatcher::unwatchNames() {
    for (const std::uint32_t start = watchedStart_.back(); watched_.size() > start; watched_.pop_back())
        ancestors_.remove(watched_.back());
    watchedStart_.pop_back();
}

void CssMatcher::cascade(NodeId element, CascadedValues& values) {
    generated_.clear();
    Subject subject{element, {}};
    if (looksAround_) {
        trail_.add(element);
        subject.place = trail_.here();
    }
    if (!sheets_.empty() && steps_ <= kMaxMatchSteps) {
        readNames(element);
        for (std::size_t i = 0; i < names_.size(); ++i)
            if (const Bucket* const bucket = (i < classes_ ? byClass_ : byId_).find(names_[i].text, names_[i].hash))
                applyBucket(*bucket, subject, values);
        const Bucket& ofTag = byTag_[static_cast<std::size_t>(tree_.node(element).tag)];
        if (!ofTag.empty()) applyBucket(ofTag, subject, values);
        if (!others_.empty()) applyBucket(others_, subject, values);
    }
    if (const auto style = tree_.attribute(element, AttributeName::style))
        for (const CssDeclaration& declaration : parseStyleAttribute(*style))
            values.apply(declaration, priorityOf(declaration, declaration.importance == Importance::important, 0, 0) |
                                          (std::uint64_t{1} << kInlineShift));
}

void CssMatcher::cascadeGenerated(PseudoElement pseudo, CascadedValues& values) const {
    for (const Candidate* const candidate : generated_)
        if (candidate->selector->pseudo == pseudo) apply(*candidate, values);
}

void CssMatcher::apply(const Candidate& candidate, CascadedValues& values) const {
    const CssRule& rule = sheets_.rules()[candidate.rule];
    for (const CssDeclaration& declaration : rule.declarations)
        values.apply(declaration,
                     priorityOf(declaration, rule.layered, candidate.selector->specificity, candidate.rule));
}

void CssMatcher::applyBucket(const Bucket& bucket, const Subject& subject, CascadedValues& values) {
    for (const Candidate& candidate : bucket) {
        if (steps_ > kMaxMatchSteps) return;
        ++steps_;
        if (!ancestorsMayFit(candidate)) continue;
        if (!matches(*candidate.selector, subject)) continue;
        if (candidate.selector->pseudo == PseudoElement::none) {
            apply(candidate, values);
        } else {
            generated_.push_back(&candidate);
        }
    }
}

/// The subject at a place; without an element if there is no place.
CssMatcher::Subject CssMatcher::subjectAt(const std::optional<ElementTrail::Place>& place) const {
    return place ? Subject{trail_.element(*place), *place} : Subject{};
}

NodeId CssMatcher::nextElement(NodeId element) const {
    NodeId node = tree_.next(element);
    while (node != kNoNode && tree_.node(node).kind != NodeKind::element)
        node = tree_.next(node);
    return node;
}

/// Selectors 4, section 17, from right to left. Recurses once per compound, at most kMaxCompounds times.
CssMatcher::Outcome CssMatcher::matchFrom(const ComplexSelector& selector, std::size_t index, const Subject& subject) {
    const CompoundSelector& compound = sheets_.selectors().compoundsOf(selector)[index];
    if (!spend(compound.simples.size + 1)) return Outcome::never;
    for (const SimpleSelector& simple : sheets_.selectors().simplesOf(compound))
        if (!matchesSimple(simple, subject)) return Outcome::fails;
    if (index + 1 == selector.compounds.size) return Outcome::matches;
    const bool siblings = compound.toLeft == Combinator::nextSibling || compound.toLeft == Combinator::laterSibling;
    const bool repeats = compound.toLeft == Combinator::descendant || compound.toLeft == Combinator::laterSibling;
    for (Subject other = siblings ? previousOf(subject) : parentOf(subject); other.element != kNoNode;
         other = siblings ? previousOf(other) : parentOf(other)) {
        const Outcome outcome = matchFrom(selector, index + 1, other);
        if (outcome != Outcome::fails) return outcome;
        if (!repeats) return Outcome::fails;
    }
    // If no ancestor matches from here, none matches from further up. That does not hold for siblings: an
    // ancestor has other ones.
    return siblings ? Outcome::fails : Outcome::never;
}

bool CssMatcher::matchesAny(std::uint32_t list, const Subject& subject) {
    for (const ComplexSelector& selector : sheets_.selectors().list(list))
        if (matches(selector, subject)) return true;
    return false;
}

bool CssMatcher::hasClass(NodeId element, std::string_view name) {
    if (element == named_) {
        spend(classes_ / kHashesPerStep);
        const std::uint32_t hash = hashOf(name);
        return std::any_of(names_.begin(), names_.begin() + static_cast<std::ptrdiff_t>(classes_),
                           [&](const Name& own) { return own.hash == hash && equals(own.text, name, nameCase_); });
    }
    const auto classes = tree_.attribute(element, AttributeName::class_);
    if (!classes || classes->size() < name.size()) return false;
    spend(classes->size() / kBytesPerStep);
    if (nameCase_ == LetterCase::asWritten) return holdsWord(*classes, name);
    return anyWord(*classes, [&](std::string_view word) { return text::equalsIgnoringCase(word, name); });
}

bool CssMatcher::isEmpty(NodeId element) {
    for (NodeId child = tree_.firstChild(element); child != kNoNode; child = tree_.next(child)) {
        spend(1);
        if (tree_.node(child).kind == NodeKind::element || !tree_.text(child).empty()) return false;
    }
    return true;
}

bool CssMatcher::matchesSimple(const SimpleSelector& simple, const Subject& subject) {
    const NodeId element = subject.element;
    const Node& node = tree_.node(element);
    switch (simple.kind) {
    case SelectorKind::type: return tree_.text(element) == simple.name;
    case SelectorKind::id: {
        const auto id = tree_.attribute(element, AttributeName::id);
        return id && equals(*id, simple.name, nameCase_);
    }
    case SelectorKind::className: return hasClass(element, simple.name);
    case SelectorKind::attribute: return matchesAttribute(simple, element);
    case SelectorKind::nthChild: return matchesNth(simple, subject);
    case SelectorKind::only: return isOnly(simple, subject);
    case SelectorKind::root: return node.tag == Tag::html;
    case SelectorKind::empty: return isEmpty(element);
    case SelectorKind::link:
        return (node.tag == Tag::a || node.tag == Tag::area) && tree_.attribute(element, AttributeName::href);
    case SelectorKind::checked:
        return tree_.attribute(element, AttributeName::checked) || tree_.attribute(element, AttributeName::selected);
    case SelectorKind::disabled: return tree_.attribute(element, AttributeName::disabled).has_value();
    case SelectorKind::enabled:
        return (node.tag == Tag::input || node.tag == Tag::button || node.tag == Tag::select ||
                node.tag == Tag::textarea || node.tag == Tag::option) &&
               !tree_.attribute(element, AttributeName::disabled);
    case SelectorKind::open: return tree_.attribute(element, AttributeName::open).has_value();
    case SelectorKind::isList:
    case SelectorKind::nesting: return matchesAny(simple.list, subject);
    case SelectorKind::notList: return !matchesAny(simple.list, subject);
    case SelectorKind::never: return false;
    }
    return false;
}

bool CssMatcher::matchesAttribute(const SimpleSelector& simple, NodeId element) {
    spend(tree_.attributes(element).size());
    const bool known = simple.attribute != AttributeName::unknown;
    const auto found = known ? tree_.attribute(element, simple.attribute) : tree_.attribute(element, simple.name);
    if (!found) return false;
    const std::string_view value = *found;
    const std::string_view wanted = simple.value;
    if (simple.match != AttributeMatch::present) spend(value.size() / kBytesPerStep);
    switch (simple.match) {
    case AttributeMatch::present: return true;
    case AttributeMatch::equals: return equals(value, wanted, simple.letterCase);
    case AttributeMatch::includes:
        return anyWord(value, [&](std::string_view word) { return equals(word, wanted, simple.letterCase); });
    case AttributeMatch::dash:
        return equals(value.substr(0, wanted.size()), wanted, simple.letterCase) &&
               (value.size() == wanted.size() || value[wanted.size()] == '-');
    case AttributeMatch::prefix:
        return !wanted.empty() && equals(value.substr(0, wanted.size()), wanted, simple.letterCase);
    case AttributeMatch::suffix:
        return !wanted.empty() && value.size() >= wanted.size() &&
               equals(value.substr(value.size() - wanted.size()), wanted, simple.letterCase);
    case AttributeMatch::substring:
        if (wanted.empty()) return false;
        if (simple.letterCase == LetterCase::asWritten) return value.find(wanted) != std::string_view::npos;
        for (std::size_t at = 0; at + wanted.size() <= value.size(); ++at)
            if (text::equalsIgnoringCase(value.substr(at, wanted.size()), wanted)) return true;
        return false;
    }
    return false;
}

/// Counts all siblings of an element and stores the number in the trail. Returns false if the steps run out.
bool CssMatcher::countSiblings(const Subject& subject) {
    if (trail_.siblings(subject.place) != 0) return true;
    std::uint32_t number = trail_.position(subject.place);
    for (NodeId other = nextElement(subject.element); other != kNoNode; other = nextElement(other)) {
        if (!spend(1)) return false;
        ++number;
    }
    trail_.setSiblings(subject.place, number);
    return true;
}

bool CssMatcher::matchesNth(const SimpleSelector& simple, const Subject& subject) {
    const auto fits = [&simple](std::int64_t position) {
        const std::int64_t distance = position - simple.b;
        if (simple.a == 0) return distance == 0;
        return distance % simple.a == 0 && distance / simple.a >= 0;
    };
    if (!simple.ofType) {
        const std::uint32_t position = trail_.position(subject.place);
        if (!simple.fromEnd) return fits(position);
        if (simple.a != 0) return countSiblings(subject) && fits(trail_.siblings(subject.place) - position + 1);
    }
    const Tag tag = tree_.node(subject.element).tag;
    const std::string_view type = tree_.text(subject.element);
    const auto isOfType = [&](NodeId other) {
        return tag != Tag::unknown ? tree_.node(other).tag == tag : tree_.text(other) == type;
    };
    int position = 1;
    const auto neighbour = [&](const Subject& of) {
        return simple.fromEnd ? Subject{nextElement(of.element), {}} : previousOf(of);
    };
    for (Subject other = neighbour(subject); other.element != kNoNode; other = neighbour(other)) {
        if (!spend(1)) return false;
        if (!simple.ofType || isOfType(other.element)) ++position;
        if (simple.a == 0 && position > simple.b) return false;
    }
    return fits(position);
}

bool CssMatcher::isOnly(const SimpleSelector& simple, const Subject& subject) {
    SimpleSelector end = simple;
    end.a = 0;
    end.b = 1;
    end.fromEnd = false;
    if (!matchesNth(end, subject)) return false;
    end.fromEnd = true;
    return matchesNth(end, subject);
}

} // namespace quillow::html
