#include "engines/pdf/layout/HiddenText.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <unordered_set>

namespace quillow::pdf {

namespace {

/// Recognisers place a letter within about half a letter of where it is. A place is looked for in its own square of the
/// page, with sides of so many points, and in the squares around it.
constexpr float kSquare = 6;
/// A hidden run repeats the page if so many of its letters do. Recognisers err, most often in a few letters of a word.
constexpr float kRepeatedShare = 0.6F;

/// A letter and the square of the page that it is in.
class Places {
public:
    void add(Point place, char32_t letter) { keys_.insert(keyOf(columnOf(place.x), columnOf(place.y), letter)); }

    [[nodiscard]] bool hasNear(Point place, char32_t letter) const {
        const std::int64_t x = columnOf(place.x);
        const std::int64_t y = columnOf(place.y);
        for (std::int64_t dx = -1; dx <= 1; ++dx)
            for (std::int64_t dy = -1; dy <= 1; ++dy)
                if (keys_.contains(keyOf(x + dx, y + dy, letter))) return true;
        return false;
    }

private:
    static std::int64_t columnOf(float at) {
        constexpr float kFarthest = 1e5F;
        return static_cast<std::int64_t>(std::floor(std::clamp(at, -kFarthest, kFarthest) / kSquare));
    }

    static std::uint64_t keyOf(std::int64_t x, std::int64_t y, char32_t letter) {
        constexpr std::int64_t kOffset = 1 << 20; // squares have positive numbers of 21 bits
        return (static_cast<std::uint64_t>(x + kOffset) << 42) | (static_cast<std::uint64_t>(y + kOffset) << 21) |
               letter;
    }

    std::unordered_set<std::uint64_t> keys_;
};

/// Calls `use` with the place and the first character of each letter of a run.
template <class Use>
void forEachLetter(const Page& page, const Run& run, Use use) {
    for (std::uint32_t i = 0; i < run.glyphCount; ++i) {
        const Glyph& glyph = page.glyphs[run.firstGlyph + i];
        const std::u32string_view text = page.textOf(glyph);
        if (text.empty() || text.front() == U' ') continue;
        const float along = glyph.offset + glyph.width / 2;
        use(Point{run.origin.x + along * run.direction.x, run.origin.y + along * run.direction.y}, text.front());
    }
}

} // namespace

std::vector<bool> repeatedHiddenRuns(const Page& page, Evidence* evidence) {
    const auto isHidden = [](const Run& run) { return (run.flags & kInvisible) != 0; };
    const auto hidden = std::count_if(page.runs.begin(), page.runs.end(), isHidden);
    if (hidden == 0 || hidden == static_cast<std::ptrdiff_t>(page.runs.size())) return {};
    Places visible;
    for (const Run& run : page.runs)
        if (!isHidden(run))
            forEachLetter(page, run, [&visible](Point place, char32_t letter) { visible.add(place, letter); });
    std::vector<bool> repeated(page.runs.size());
    for (std::size_t i = 0; i < page.runs.size(); ++i) {
        if (!isHidden(page.runs[i])) continue;
        std::size_t letters = 0;
        std::size_t found = 0;
        forEachLetter(page, page.runs[i], [&](Point place, char32_t letter) {
            ++letters;
            found += visible.hasNear(place, letter) ? 1 : 0;
        });
        repeated[i] = letters > 0 && static_cast<float>(found) >= kRepeatedShare * static_cast<float>(letters);
        if (evidence != nullptr && letters > 0)
            evidence->note(Topic::dropped, repeated[i] ? Verdict::accepted : Verdict::refused,
                           boundsOf(page, page.runs[i]), "dropped: invisible text that repeats what is seen",
                           {{"letters", static_cast<float>(letters)},
                            {"seen", static_cast<float>(found)},
                            {"kRepeatedShare", kRepeatedShare}});
    }
    return repeated;
}

} // namespace quillow::pdf
