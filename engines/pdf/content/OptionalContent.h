// Which optional content the default configuration of a document shows (ISO 32000-2, 8.11).
#pragma once

#include "engines/pdf/syntax/Document.h"

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

namespace quillow::pdf {

class OptionalContent {
public:
    /// The document must outlive it.
    explicit OptionalContent(Document& document);

    /// `entry` is a group or a membership dictionary, as a rule by reference. What is neither is shown.
    [[nodiscard]] bool isShown(const Object& entry);

private:
    enum class Policy { anyOn, allOn, anyOff, allOff };

    void readConfiguration();
    [[nodiscard]] bool evaluate(const Object& entry);
    [[nodiscard]] bool isGroupOn(const Object& group) const;
    [[nodiscard]] bool isMembershipShown(const Dictionary& membership);
    [[nodiscard]] bool isExpressionTrue(const Object& expression, int depth);
    [[nodiscard]] static Policy policyOf(std::string_view name);

    Document& document_;
    bool isKnown_ = false; ///< whether the configuration has been read
    bool isBaseOn_ = true;
    std::unordered_set<std::uint32_t> exceptions_;  ///< groups whose state is not the base state, by their number
    std::unordered_map<std::uint32_t, bool> shown_; ///< by the number of the entry
    std::size_t steps_ = 0;                         ///< of the expression that is being evaluated
};

} // namespace quillow::pdf
