// Selectors Level 4, as far as documents use them to show and hide: compounds of type, class, id, attribute and
// structural pseudo-classes, joined by combinators.
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
    attribute, ///< compared by `match`
    nthChild,  ///< an+b with `a` and `b`; uses `fromEnd` and `ofType`
    only,      ///< :only-child, :only-of-type
    root,
    empty,
    link,
    checked,
    disabled,
    enabled,
    open,
    isList,  ///< :is() and :where() with lists[list]
    notList, ///< :not() with lists[list]
    nesting, ///< "&": lists[list] of the outer rule. Without an outer rule "&" becomes root, as :scope does
    never,   ///< dynamic pseudo-classes and most pseudo-elements: valid, but they match no element
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
    AttributeName attribute = AttributeName::unknown; ///< attribute selectors only: the name if it is a known one
    std::string_view name;                            ///< lower case for types and attributes
    std::string_view value;
    int a = 0;
    int b = 0;
    std::uint32_t list = 0;
};

/// A range in one of the pool's vectors.
struct PoolRange {
    std::uint32_t first = 0;
    std::uint32_t size = 0;
};

struct CompoundSelector {
    PoolRange simples;
    Combinator toLeft = Combinator::none; ///< how the compound to the left is related to this one
};

/// What a selector is about: the element itself, or the content generated at its start or end.
enum class PseudoElement : std::uint8_t { none, before, after };

/// A selector's compounds, from right to left.
struct ComplexSelector {
    PoolRange compounds;
    PseudoElement pseudo = PseudoElement::none;
    std::uint32_t specificity = 0; ///< ids, classes, types in ten bits each
};

using SelectorList = PoolRange;

/// Limits: a selector with deeper nested pseudo-classes, with more compounds, or with a compound of more simple
/// selectors matches nothing.
inline constexpr int kMaxSelectorNesting = 4;
inline constexpr std::size_t kMaxCompounds = 32;
inline constexpr std::size_t kMaxSimpleSelectors = 32;

/// All selectors of a document's style sheets, with their parts in one vector per kind. The lists inside
/// pseudo-classes are referred to by index.
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

    /// The selectors that are being parsed, one entry for each level of nesting.
    struct Unfinished {
        std::vector<SimpleSelector> simples;
        std::vector<CompoundSelector> compounds; ///< from left to right; their ranges are in the `simples` above
        std::vector<ComplexSelector> selectors;
    };
    std::array<Unfinished, kMaxSelectorNesting + 1> unfinished;
};

/// Parses a selector list. std::nullopt if any selector in it is not valid. `outer` is the list that "&" refers
/// to inside a nested rule; there, a selector without "&" is relative to that list. Parts that have been added to
/// the pool stay there.
[[nodiscard]] std::optional<SelectorList> parseSelectors(std::string_view text, SelectorPool& pool,
                                                         std::optional<std::uint32_t> outer);

} // namespace quillow::html
