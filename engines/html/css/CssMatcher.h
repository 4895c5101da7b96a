// Which declarations of the author's style sheets apply to an element: selector matching and the cascade.
#pragma once

#include "engines/html/css/CssStyleSheets.h"
#include "engines/html/css/ElementTrail.h"
#include "engines/html/tree/Tree.h"
#include "text/Ascii.h"

#include <array>
#include <unordered_map>

namespace quillow::html {

/// The winning declaration of each property so far. A declaration wins over those whose priority is not greater.
class CascadedValues {
public:
    void apply(const CssDeclaration& declaration, std::uint64_t priority) {
        if (declaration.property == CssProperty::all) {
            for (std::size_t i = 0; i < entries_.size(); ++i)
                apply(i, declaration.value, priority);
        } else {
            apply(static_cast<std::size_t>(declaration.property), declaration.value, priority);
        }
    }
    /// True if any declaration applied.
    [[nodiscard]] bool any() const { return set_ != 0; }
    /// The value of a property, or std::nullopt if no declaration applies.
    [[nodiscard]] std::optional<std::uint8_t> value(CssProperty property) const {
        const auto index = static_cast<std::size_t>(property);
        return isSet(index) ? std::optional(entries_[index].value) : std::nullopt;
    }

private:
    struct Entry {
        std::uint64_t priority;
        std::uint8_t value;
    };
    [[nodiscard]] bool isSet(std::size_t index) const { return (set_ >> index & 1U) != 0; }
    void apply(std::size_t index, std::uint8_t value, std::uint64_t priority) {
        if (isSet(index) && entries_[index].priority > priority) return;
        set_ |= 1U << index;
        entries_[index] = {priority, value};
    }

    unsigned set_ = 0; ///< one bit for each entry that is set
    std::array<Entry, static_cast<std::size_t>(CssProperty::count)> entries_;
};

/// The names, classes and ids of an element's ancestors: a counting Bloom filter. It counts so that entries can be
/// removed. It may report names that no ancestor has.
class AncestorFilter {
public:
    /// Announces that this name will be looked up. Other names need not be added.
    void expect(std::uint32_t hash) { expected_[hash % kSlots / 64] |= std::uint64_t{1} << (hash % 64); }
    [[nodiscard]] bool isExpected(std::uint32_t hash) const {
        return (expected_[hash % kSlots / 64] >> (hash % 64) & 1) != 0;
    }
    void add(std::uint32_t hash) {
        if (counts_[hash % kSlots] < kFull) ++counts_[hash % kSlots];
    }
    void remove(std::uint32_t hash) {
        if (counts_[hash % kSlots] < kFull) --counts_[hash % kSlots];
    }
    [[nodiscard]] bool mayHold(std::uint32_t hash) const { return counts_[hash % kSlots] != 0; }

private:
    static constexpr std::size_t kSlots = 4096;
    static constexpr std::uint8_t kFull = 0xFF; ///< a full counter stays full
    std::array<std::uint8_t, kSlots> counts_{};
    std::array<std::uint64_t, kSlots / 64> expected_{};
};

/// Limit for the elementary steps of selector matching in one document. Beyond it no rule of a sheet applies to the
/// remaining elements, so that no sheet can cost more than this.
inline constexpr std::uint64_t kMaxMatchSteps = 30'000'000;
/// Compared bytes of an attribute's value that count as one step.
inline constexpr std::size_t kBytesPerStep = 16;

class CssMatcher {
public:
    CssMatcher(const Tree& tree, const CssStyleSheets& sheets);

    /// Applies the sheets and the style attribute to one element. Its ancestors, and no other elements, must have
    /// been entered and not left. Its previous siblings must have been passed to `cascade`.
    void cascade(NodeId element, CascadedValues& values);
    /// Whether a rule matches the generated content of the element that was cascaded last.
    [[nodiscard]] bool generatesContent() const { return !generated_.empty(); }
    /// Applies the declarations for that generated content. The style attribute contributes none.
    void cascadeGenerated(PseudoElement pseudo, CascadedValues& values) const;
    /// Enters the element that was cascaded last. Needed only if it contains elements.
    void enter(NodeId element) {
        if (looksAround_) trail_.enter();
        if (watchesAncestors_) watchNames(element);
    }
    /// Leaves the element that was entered last.
    void leave() {
        if (looksAround_) trail_.leave();
        if (watchesAncestors_) unwatchNames();
    }

    [[nodiscard]] std::uint64_t steps() const { return steps_; }

private:
    struct Candidate {
        std::uint32_t rule;
        const ComplexSelector* selector;
        /// Hashes of names, classes and ids that its ancestors must have, for AncestorFilter; 0 after the last one.
        std::array<std::uint32_t, 3> ancestors;
    };
    using Bucket = std::vector<Candidate>;
    /// Buckets by class or id, ignoring letter case. Most names that are looked up have no bucket.
    class Buckets {
    public:
        Bucket& operator[](std::string_view name);
        [[nodiscard]] const Bucket* find(std::string_view name, std::uint32_t hash) const;
        [[nodiscard]] bool empty() const { return byName_.empty(); }

    private:
        static constexpr std::size_t kBits = 1024;
        std::array<std::uint64_t, kBits / 64> mayHold_{};
        struct Hash {
            std::size_t operator()(std::string_view name) const;
        };
        struct Equal {
            bool operator()(std::string_view a, std::string_view b) const { return text::equalsIgnoringCase(a, b); }
        };
        std::unordered_map<std::string_view, Bucket, Hash, Equal> byName_;
    };
    /// An element that selectors are matched against. `place` is not set if no selector looks at other elements.
    struct Subject {
        NodeId element = kNoNode;
        ElementTrail::Place place;
    };
    /// The outcome of matching from one compound to the left. `never` means that trying another
    /// ancestor cannot help.
    enum class Outcome { matches, fails, never };

    void file(std::uint32_t rule, const ComplexSelector& selector);
    void watchAncestors(const ComplexSelector& selector, Candidate& candidate);
    [[nodiscard]] bool ancestorsMayFit(const Candidate& candidate) const;
    void watchNames(NodeId element);
    void unwatchNames();
    void readNames(NodeId element);
    void apply(const Candidate& candidate, CascadedValues& values) const;
    void applyBucket(const Bucket& bucket, const Subject& subject, CascadedValues& values);
    Outcome matchFrom(const ComplexSelector& selector, std::size_t compound, const Subject& subject);
    bool matches(const ComplexSelector& selector, const Subject& subject) {
        return matchFrom(selector, 0, subject) == Outcome::matches;
    }
    bool matchesAny(std::uint32_t list, const Subject& subject);
    bool matchesSimple(const SimpleSelector& simple, const Subject& subject);
    bool matchesAttribute(const SimpleSelector& simple, NodeId element);
    bool matchesNth(const SimpleSelector& simple, const Subject& subject);
    bool countSiblings(const Subject& subject);
    bool isOnly(const SimpleSelector& simple, const Subject& subject);
    bool hasClass(NodeId element, std::string_view name);
    bool isEmpty(NodeId element);
    [[nodiscard]] Subject subjectAt(const std::optional<ElementTrail::Place>& place) const;
    [[nodiscard]] Subject parentOf(const Subject& subject) const { return subjectAt(trail_.parent(subject.place)); }
    [[nodiscard]] Subject previousOf(const Subject& subject) const { return subjectAt(trail_.previous(subject.place)); }
    [[nodiscard]] NodeId nextElement(NodeId element) const;
    bool spend(std::uint64_t steps) {
        if (steps_ <= kMaxMatchSteps) steps_ += steps;
        return steps_ <= kMaxMatchSteps;
    }

    const Tree& tree_;
    const CssStyleSheets& sheets_;
    /// Letter case of classes and ids: ignored in quirks mode (Selectors 4, sections 6.6 and 6.7).
    LetterCase nameCase_;
    Buckets byId_;
    Buckets byClass_;
    /// All unknown names share the bucket of Tag::unknown.
    std::array<Bucket, static_cast<std::size_t>(Tag::count)> byTag_;
    Bucket others_;
    /// Those that match the generated content of the element that was cascaded last.
    std::vector<const Candidate*> generated_;
    struct Name {
        std::string_view text;
        std::uint32_t hash;
    };
    NodeId named_ = kNoNode; ///< the element whose classes and id `names_` holds
    std::vector<Name> names_;
    std::size_t classes_ = 0; ///< number of classes, which are at the start of `names_`
    AncestorFilter ancestors_;
    std::vector<std::uint32_t> watched_;      ///< the hashes in the filter, grouped by element
    std::vector<std::uint32_t> watchedStart_; ///< index in `watched_` of the first hash of each entered element
    bool watchesAncestors_ = false;           ///< whether any selector asks about ancestors by name, class or id
    bool looksAround_ = false;                ///< whether any selector looks at elements other than its subject
    ElementTrail trail_;
    std::uint64_t steps_ = 0;
};

} // namespace quillow::html
