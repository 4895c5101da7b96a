// Reads pages by several threads at once and hands them on in their order.
#pragma once

#include "engines/pdf/PageJoiner.h"

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace quillow::pdf {

/// What one thread reads pages with.
class PageSource {
public:
    virtual ~PageSource() = default;
    [[nodiscard]] virtual PageOutcome read(std::size_t page) = 0;
    /// How much of the limits that hold for a whole document has been used, as a share of them. If the shares of all
    /// sources add up to less than 1, a single source would not have reached a limit either.
    [[nodiscard]] virtual double usedShare() const = 0;
};

/// A thread is started for each so many pages: what it has to find out about the document first, fonts above all, takes
/// the time of several.
inline constexpr std::size_t kPagesAThread = 16;
/// The number of threads, at most `wanted`, that are worth starting for so many pages. At least 1.
[[nodiscard]] unsigned threadsFor(std::size_t pages, unsigned wanted);

class PageThreads {
public:
    /// `makeSource` is called once by each thread, `add` with one page after another, not at the same time. If it
    /// returns false, no more pages are read.
    PageThreads(std::size_t pages, std::function<std::unique_ptr<PageSource>()> makeSource,
                std::function<bool(const PageOutcome&)> add)
        : pages_(pages)
        , makeSource_(std::move(makeSource))
        , add_(std::move(add)) {}

    /// Reads all pages; the calling thread is one of the threads, and the only one if there are no others. They are
    /// those of `runTogether`; if it is empty, they are started.
    /// Returns false if a part of a page was left out, or the shares reach 1 with `share`: what is left out may depend
    /// on which pages a thread has read before, so the pages must be read again by a single source. Throws
    /// std::bad_alloc only.
    [[nodiscard]] bool read(unsigned threads, double share, const RunTogether& runTogether = {});

private:
    /// Pages, for each thread, that are read before all pages before them are.
    static constexpr std::size_t kWindow = 8;

    void workTogether(unsigned threads);
    void work();
    void readPages();
    [[nodiscard]] std::optional<std::size_t> begin();
    void end(std::size_t page, PageOutcome outcome, double share);
    void stop();
    void fail();

    const std::size_t pages_;
    const std::function<std::unique_ptr<PageSource>()> makeSource_;
    const std::function<bool(const PageOutcome&)> add_;
    std::mutex mutex_;
    std::condition_variable mayBegin_;
    std::vector<std::optional<PageOutcome>> waiting_; ///< page n is at n modulo the size
    std::size_t begun_ = 0;
    std::size_t added_ = 0;
    double share_ = 0;
    bool isStopped_ = false;
    bool isVoid_ = false;
    std::exception_ptr failure_;
};

} // namespace quillow::pdf
