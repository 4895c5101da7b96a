// Which declarations of the author's style sheets apply to an element: selector matching and the cascade.
#pragma once

#include "engines/html/CssStyleSheets.h"
#include "engines/html/HtmlTree.h"

#include <array>
#include <unordered_map>

namespace quillow::html {

/// The winning declaration of each property so far. A declaration wins over those whose priority is not greater.
class CascadedValues {
public:
    void apply(const CssDeclaration& declaration, std::uint64_t priority) {
        Entry& entry = entries_[static_cast<std::size_t>(declaration.property)];
        if (entry.priority > priority) return;
        entry = {priority, declaration.value};
    }
    /// The value of a property, or nothing where no declaration applies.
    [[nodiscard]] std::optional<std::uint8_t> value(CssProperty property) const {
        const Entry& entry = entries_[static_cast<std::size_t>(property)];
        return entry.priority == 0 ? std::nullopt : std::optional(entry.value);
    }

private:
    struct Entry {
        std::uint64_t priority = 0;
        std::uint8_t value = 0;
    };
    std::array<Entry, static_cast<std::size_t>(CssProperty::count)> entries_{};
};

/// Elementary steps of selector matching in one document. Beyond them no rule of a sheet applies to the elements that follow,
/// so that no sheet, however it is made, costs more than this.
inline constexpr std::uint64_t kMaxMatchSteps = 30'000'000;

class CssMatcher {
public:
    CssMatcher(const HtmlTree& tree, const CssStyleSheets& sheets);

    /// Applies the sheets and the style attribute of one element.
    void cascade(NodeId element, CascadedValues& values);

    [[nodiscard]] std::uint64_t steps() const { return steps_; }

private:
    struct Candidate {
        std::uint32_t rule;
        const ComplexSelector* selector;
    };
    using Bucket = std::vector<Candidate>;
    using Buckets = std::unordered_map<std::string_view, Bucket>;
    /// The outcome of matching from one compound leftwards: `never` means that no other ancestor can help either.
    enum class Outcome { matches, fails, never };

    void file(std::uint32_t rule, const ComplexSelector& selector);
    void applyBucket(const Bucket& bucket, NodeId element, CascadedValues& values);
    Outcome matchFrom(const ComplexSelector& selector, std::size_t compound, NodeId element);
    bool matches(const ComplexSelector& selector, NodeId element) {
        return matchFrom(selector, 0, element) == Outcome::matches;
    }
    bool matchesAny(const SelectorList& list, NodeId element);
    bool matchesSimple(const SimpleSelector& simple, NodeId element);
    bool matchesAttribute(const SimpleSelector& simple, NodeId element);
    bool matchesNth(const SimpleSelector& simple, NodeId element);
    bool isOnly(const SimpleSelector& simple, NodeId element);
    bool hasClass(NodeId element, std::string_view name);
    bool isEmpty(NodeId element);
    [[nodiscard]] NodeId parentElement(NodeId element) const;
    [[nodiscard]] NodeId previousElement(NodeId element) const;
    [[nodiscard]] NodeId nextElement(NodeId element) const;
    bool spend(std::uint64_t steps) {
        steps_ += steps;
        return steps_ <= kMaxMatchSteps;
    }

    const HtmlTree& tree_;
    const CssStyleSheets& sheets_;
    Buckets byId_;
    Buckets byClass_;
    Buckets byType_;
    Bucket others_;
    std::uint64_t steps_ = 0;
};

} // namespace quillow::html
