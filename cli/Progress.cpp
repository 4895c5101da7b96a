#include "cli/Progress.h"

#include "posix/FileDescriptor.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>

namespace quillow::cli {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// People see no more than a few changes a second.
constexpr milliseconds kRedrawEvery{200};
constexpr seconds kGuessing{2};
constexpr std::size_t kLongestBar = 40;
constexpr std::size_t kShortestBar = 8;
/// If the terminal does not say how wide it is.
constexpr std::size_t kUsualColumns = 80;
/// Returns to the line's begin and erases to its end (ECMA-48, CR and EL).
constexpr std::string_view kErase = "\r\x1b[K";

std::string twoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string timeText(seconds time) {
    const std::int64_t count = time.count();
    const std::int64_t hours = count / 3600;
    const std::int64_t minutes = count / 60 % 60;
    if (hours == 0) return std::to_string(minutes) + ":" + twoDigits(count % 60);
    return std::to_string(hours) + ":" + twoDigits(minutes) + ":" + twoDigits(count % 60);
}

std::string numbersOf(const ProgressState& state) {
    std::string text = std::to_string(state.done) + " of " + std::to_string(state.documents);
    if (state.failed > 0) text += ", " + std::to_string(state.failed) + " failed";
    if (state.done == 0 || state.elapsed < kGuessing) return text;
    const double perDocument = static_cast<double>(state.elapsed.count()) / static_cast<double>(state.done);
    const milliseconds left{static_cast<std::int64_t>(perDocument * static_cast<double>(state.documents - state.done))};
    return text + ", " + timeText(std::chrono::ceil<seconds>(left)) + " left";
}

/// Whether a bar is visible: an interrupted program removes it.
std::atomic<bool> isBarVisible = false;

std::size_t columnsOfTerminal() {
    winsize size{};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualColumns;
}

} // namespace

std::string progressLine(const ProgressState& state, std::size_t columns) {
    const std::string numbers = numbersOf(state);
    constexpr std::size_t kBrackets = 3; // and a blank
    if (columns < numbers.size() + kBrackets + kShortestBar) return numbers.substr(0, columns);
    const std::size_t width = std::min(columns - numbers.size() - kBrackets, kLongestBar);
    const std::size_t full = width * state.done / state.documents;
    return "[" + std::string(full, '#') + std::string(width - full, ' ') + "] " + numbers;
}

Progress::Progress(std::size_t documents, Shown shown)
    : isOnTerminal_(shown == Shown::onTerminal && documents > 1 && ::isatty(STDERR_FILENO) == 1) {
    state_.documents = documents;
}

void Progress::advance(bool hasFailed) {
    ++state_.done;
    if (hasFailed) ++state_.failed;
    if (!isOnTerminal_) return;
    const Clock::time_point now = Clock::now();
    if (drawn_ && now - *drawn_ < kRedrawEvery) return;
    state_.elapsed = std::chrono::duration_cast<milliseconds>(now - begin_);
    // A line of full width would move the cursor to the next one.
    static_cast<void>(writeAll(STDERR_FILENO, std::string(kErase) + progressLine(state_, columnsOfTerminal() - 1)));
    drawn_ = now;
    isBarVisible = true;
}

void Progress::clear() {
    if (!drawn_) return;
    static_cast<void>(writeAll(STDERR_FILENO, kErase));
    drawn_.reset();
    isBarVisible = false;
}

void Progress::abandon() {
    if (isBarVisible) static_cast<void>(writeAll(STDERR_FILENO, kErase));
}

} // namespace quillow::cli
