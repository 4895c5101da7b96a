#include "engines/pdf/RunningLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>

namespace quillow::pdf {

namespace {

/// So many lines of an edge are looked at: a head of two lines over a rule's text, a foot with a line of copyright.
constexpr std::size_t kDepth = 4;
/// Lines at one place differ by less. In points.
constexpr float kSamePlace = 3;
/// The pages before and behind with which one is compared: left and right pages differ.
constexpr std::size_t kReach = 2;

struct EdgeLine {
    std::uint32_t row = 0;
    float baseline = 0;
    std::string words; ///< with "#" for each number
    bool isRunning = false;
};

struct Edges {
    std::vector<EdgeLine> top; ///< the outermost first
    std::vector<EdgeLine> bottom;
};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isRoman(std::string_view word) {
    constexpr std::size_t kLongest = 7; // xxxviii
    return !word.empty() && word.size() <= kLongest &&
           (word.find_first_not_of("ivxlc") == std::string_view::npos ||
            word.find_first_not_of("IVXLC") == std::string_view::npos);
}

std::string wordsOf(std::string_view text) {
    constexpr std::size_t kLongest = 200; // bytes: a line of a head
    text = text.substr(0, kLongest);
    std::string words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
        const std::string_view word = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!words.empty()) words.push_back(' ');
        if (isRoman(word)) {
            words.push_back('#');
            continue;
        }
        for (const char c : word) {
            if (!isDigit(c))
                words.push_back(c);
            else if (words.empty() || words.back() != '#')
                words.push_back('#');
        }
    }
    return words;
}

Edges edgesOf(const PageOutcome& page) {
    std::vector<std::uint32_t> rows;
    for (std::uint32_t i = 0; i < page.rows.size(); ++i)
        if (page.rows[i].is(kMainText)) rows.push_back(i);
    const auto isHigher = [&page](std::uint32_t a, std::uint32_t b) {
        return page.rows[a].baseline != page.rows[b].baseline ? page.rows[a].baseline > page.rows[b].baseline : a < b;
    };
    const auto isLower = [&isHigher](std::uint32_t a, std::uint32_t b) { return isHigher(b, a); };
    const std::size_t depth = std::min(kDepth, rows.size());
    const auto middle = rows.begin() + static_cast<std::ptrdiff_t>(depth);
    Edges edges;
    const auto collect = [&](std::vector<EdgeLine>& edge) {
        for (std::size_t i = 0; i < depth; ++i) {
            const OutcomeRow& row = page.rows[rows[i]];
            edge.push_back({rows[i], row.baseline, wordsOf(page.textOf(row))});
        }
    };
    std::partial_sort(rows.begin(), middle, rows.end(), isHigher);
    collect(edges.top);
    std::partial_sort(rows.begin(), middle, rows.end(), isLower);
    collect(edges.bottom);
    return edges;
}

using Edge = std::vector<EdgeLine> Edges::*;

bool hasLike(const std::vector<EdgeLine>& edge, const EdgeLine& line) {
    return std::any_of(edge.begin(), edge.end(), [&line](const EdgeLine& other) {
        return std::abs(other.baseline - line.baseline) < kSamePlace && other.words == line.words;
    });
}

/// Pages that have nothing but lines like those of their neighbours are numbered tickets, cards or slides, unless a
/// neighbour has text of its own: then they are the empty pages of a book.
void keepPagesOfNothingElse(std::span<const PageOutcome> pages, std::vector<std::vector<std::uint32_t>>& running) {
    std::vector<bool> hasText(pages.size());
    for (std::size_t i = 0; i < pages.size(); ++i)
        hasText[i] = pages[i].rows.size() > running[i].size();
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const std::size_t first = i - std::min(i, kReach);
        const std::size_t last = std::min(i + kReach, pages.size() - 1);
        bool isAmongText = false;
        for (std::size_t page = first; page <= last; ++page)
            isAmongText = isAmongText || hasText[page];
        if (!isAmongText) running[i].clear();
    }
}

} // namespace

std::vector<std::vector<std::uint32_t>> runningLines(std::span<const PageOutcome> pages) {
    // A window of pages is enough, so the edges of a long document are not kept.
    std::array<Edges, 2 * kReach + 1> window;
    const auto at = [&window](std::size_t page) -> Edges& { return window[page % window.size()]; };
    std::vector<std::vector<std::uint32_t>> running(pages.size());
    for (std::size_t i = 0; i < std::min(kReach, pages.size()); ++i)
        at(i) = edgesOf(pages[i]);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        if (i + kReach < pages.size()) at(i + kReach) = edgesOf(pages[i + kReach]);
        for (const Edge edge : {&Edges::top, &Edges::bottom}) {
            for (const EdgeLine& line : at(i).*edge) {
                bool isRunning = false;
                for (std::size_t step = 1; step <= kReach && !isRunning; ++step)
                    isRunning = (i >= step && hasLike(at(i - step).*edge, line)) ||
                                (i + step < pages.size() && hasLike(at(i + step).*edge, line));
                if (!isRunning || pages[i].rows[line.row].is(kTableRow)) break; // the page's own text begins
                running[i].push_back(line.row);
            }
        }
        std::sort(running[i].begin(), running[i].end());
        running[i].erase(std::unique(running[i].begin(), running[i].end()), running[i].end());
    }
    keepPagesOfNothingElse(pages, running);
    return running;
}

} // namespace quillow::pdf
