// Damaged documents: which closing braces are strays, and where the body begins in a group that has swallowed it. All
// that reads bytes a second time is counted here and limited.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::rtf {

inline constexpr int kMaxRecoveries = 8; ///< how often the walk goes back into a group that it has read or skipped

/// The offset of the body in a group that has swallowed it: that of the first \sectd or \pard, or npos.
[[nodiscard]] std::size_t findBody(std::string_view swallowed);

/// The same for a table. Without \sectd and \pard, the body begins after the last entry that closes before the
/// first \par.
[[nodiscard]] std::size_t findBodyAfterEntries(std::string_view table);

/// Whether a paragraph ends in a table. None can, so the table's closing brace is missing before it.
[[nodiscard]] bool holdsParagraph(std::string_view table);

class Recovery {
public:
    /// `input` is the whole document. The braces of a fragment do not close it.
    Recovery(std::string_view input, bool isFragment);

    /// Whether the brace before `position` is the document's last one.
    [[nodiscard]] bool isAfterLastBrace(const char* position) const { return position == lastBrace_; }

    /// Call at a brace that closes the document's own group, with the bytes after it. Returns whether it is a stray,
    /// after which the text goes on. The number of strays is that of the closing braces without an opening one in the
    /// bytes of the first call.
    [[nodiscard]] bool isStrayClose(std::string_view rest);

    /// Call before going back to bytes that were read already. Returns false after kMaxRecoveries times.
    [[nodiscard]] bool mayGoBack() { return countUp(recoveries_); }
    /// The same for a table that is read again because of its raw pairs.
    [[nodiscard]] bool mayReadTableAgain() { return countUp(tablePasses_); }

    /// Bytes scanned so far (see Interpreter::work()).
    [[nodiscard]] std::uint64_t work() const { return work_; }

private:
    [[nodiscard]] static bool countUp(int& times) {
        if (times >= kMaxRecoveries) return false;
        ++times;
        return true;
    }

    const char* lastBrace_; ///< the byte after it, or nullptr
    bool straysCounted_ = false;
    std::size_t strays_ = 0;
    int recoveries_ = 0;
    int tablePasses_ = 0;
    std::uint64_t work_ = 0;
};

} // namespace quillow::rtf
