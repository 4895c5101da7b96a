// Ranges of codes with a number for each code, as CMaps define them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quillow::pdf {

/// The codes from `low` to `high`. `low` has the value `value`, and each further code the next number.
struct CodeRange {
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    std::uint32_t value = 0;

    [[nodiscard]] std::uint32_t valueOf(std::uint32_t code) const { return value + (code - low); }
    /// How many codes. 64 bits: a range may have all codes of four bytes.
    [[nodiscard]] std::uint64_t size() const { return std::uint64_t{high} - low + 1; }

    friend bool operator==(const CodeRange&, const CodeRange&) = default;
};

/// Ranges are added in any order. After `close` they are sorted and disjoint: a code that several ranges define has the
/// value of the one that was added last.
class CodeRanges {
public:
    /// Ranges that are kept: more than the codes of two bytes, which are all that fonts use.
    static constexpr std::size_t kMaximum = std::size_t{1} << 17;

    /// A range with `low` over `high` has no code. Ranges over the limit are left out.
    void add(CodeRange range);
    void close();

    [[nodiscard]] bool empty() const { return ranges_.empty(); }
    [[nodiscard]] std::span<const CodeRange> all() const { return ranges_; }
    /// The value of a code. Call it only after `close`.
    [[nodiscard]] std::optional<std::uint32_t> find(std::uint32_t code) const;

private:
    void resolveOverlaps();

    std::vector<CodeRange> ranges_;
    bool isSorted_ = true; ///< each range so far begins behind the one before
};

} // namespace quillow::pdf
