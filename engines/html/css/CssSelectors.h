// Selectors Level 4, as far as style sheets of documents use them to show and hide: compounds of type, class, id, attribute
// and structural pseudo-classes, joined by combinators.
#pragma once

#include "engines/html/css/CssTokenizer.h"
#include "engines/html/tree/Attributes.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace quillow::html {

enum class SelectorKind : std::uint8_t {
    type,
    id,
    className,
    attribute, ///< with `match`
    nthChild,  ///< an+b in `a` and `b`; `fromEnd`, `ofType`
    only,      ///< :only-child, :only-of-type
    root,
    empty,
    link,
    checked,
    disabled,
    enabled,
    open,
    isList,
    notList, ///< lists[list]; :is() and :where(), :not()
    nesting, ///< "&": lists[list] of the outer rule; :scope and & without an outer rule are :root
    never,   ///< dynamic pseudo-classes and most pseudo-elements: valid, and no element is ever it
};
enum class AttributeMatch : std::uint8_t { present, equals, includes, dash, prefix, suffix, substring };
enum class Combinator : std::uint8_t { none, descendant, child, nextSibling, laterSibling };
enum class LetterCase : std::uint8_t { asWritten, ignored };

struct SimpleSelector {
    SelectorKind kind = SelectorKind::never;
    AttributeMatch match = AttributeMatch::present;
    LetterCase letterCase = LetterCase::asWritten;
    bool fromEnd = false;
    bool ofType = false;
    AttributeName attribute = AttributeName::unknown; ///< of an attribute, where its name is a known one
    std::string_view name;                            ///< lower case for types and attributes
    std::string_view value;
    int a = 0;
    int b = 0;
    std::uint32_t list = 0;
};

/// A part of one of the pool's vectors.
struct PoolRange {
    std::uint32_t first = 0;
    std::uint32_t size = 0;
};

struct CompoundSelector {
    PoolRange simples;
    Combinator toLeft = Combinator::none; ///< how the compound before this one is related
};

/// What of an element a selector is about: itself, or the content that is generated at its start or end.
enum class PseudoElement : std::uint8_t { none, before, after };

/// Compounds from right to left.
struct ComplexSelector {
    PoolRange compounds;
    PseudoElement pseudo = PseudoElement::none;
    std::uint32_t specificity = 0; ///< ids, classes, types in ten bits each
};

using SelectorList = PoolRange;

/// Selectors nested in pseudo-classes deeper than this, and with more compounds or simple selectors than these, match nothing.
inline constexpr int kMaxSelectorNesting = 4;
inline constexpr std::size_t kMaxCompounds = 32;
inline constexpr std::size_t kMaxSimpleSelectors = 32;

/// Every selector of a document's style sheets, part by part; the lists inside pseudo-classes are referred to by index.
struct SelectorPool {
    CssStrings strings;
    std::vector<SimpleSelector> simples;
    std::vector<CompoundSelector> compounds;
    std::vector<ComplexSelector> selectors;
    std::vector<SelectorList> lists;

    [[nodiscard]] std::span<const ComplexSelector> list(std::uint32_t index) const {
        return std::span(selectors).subspan(lists[index].first, lists[index].size);
    }
    [[nodiscard]] std::span<const CompoundSelector> compoundsOf(const ComplexSelector& selector) const {
        return std::span(compounds).subspan(selector.compounds.first, selector.compounds.size);
    }
    [[nodiscard]] std::span<const SimpleSelector> simplesOf(const CompoundSelector& compound) const {
        return std::span(simples).subspan(compound.simples.first, compound.simples.size);
    }

    /// What is being read, at each level of nesting.
    struct Unfinished {
        std::vector<SimpleSelector> simples;
        std::vector<CompoundSelector> compounds; ///< of those, from left to right
        std::vector<ComplexSelector> selectors;
    };
    std::array<Unfinished, kMaxSelectorNesting + 1> unfinished;
};

/// Parses a selector list; one that is not valid makes the whole list nothing. `outer` is the list that "&" stands for inside
/// a nested rule: there, a selector without "&" is relative to it. What is added to the pool stays there.
[[nodiscard]] std::optional<SelectorList> parseSelectors(std::string_view text, SelectorPool& pool,
                                                         std::optional<std::uint32_t> outer);

} // namespace quillow::html
