// The bar that shows on a terminal how far a run is.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace quillow::cli {

struct ProgressState {
    std::size_t documents = 0; ///< of the whole run, at least 1
    std::size_t done = 0;
    std::size_t failed = 0; ///< among those done
    std::chrono::milliseconds elapsed{0};
};

/// One line of at most `columns` characters (ASCII), such as "[#####     ] 1200 of 2400, 3 failed, 0:42 left". A narrow
/// terminal gets the numbers without the bar. The time left is shown after two seconds, when it is no mere guess.
[[nodiscard]] std::string progressLine(const ProgressState& state, std::size_t columns);

/// Draws the bar on standard error if that is a terminal, and on none otherwise.
class Progress {
public:
    enum class Shown { onTerminal, never };

    /// Nothing is drawn for a run of one document.
    Progress(std::size_t documents, Shown shown);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { clear(); }

    /// Counts a document. Draws the bar again if the last time was long enough ago.
    void advance(bool hasFailed);
    /// Removes the bar, so that a message can be written in its place.
    void clear();
    /// Removes the bar of the process, if there is one. Call it before an interrupted process ends.
    static void abandon();

private:
    using Clock = std::chrono::steady_clock;

    ProgressState state_;
    Clock::time_point begin_ = Clock::now();
    std::optional<Clock::time_point> drawn_; ///< when the bar that is visible was drawn
    bool isOnTerminal_;
};

} // namespace quillow::cli
