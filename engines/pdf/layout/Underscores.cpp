#include "engines/pdf/layout/Underscores.h"

#include <algorithm>
#include <tuple>

namespace quillow::pdf {

namespace {

/// TeX draws its underscore as a line 0.3 em wide with free space of 0.06 em; those of fonts are up to half an em wide.
/// Wider lines are places to write on.
constexpr float kLeastWidth = 0.2F;
constexpr float kMostWidth = 0.6F;
/// It is at most so far below the baseline or above it. In ems.
constexpr float kMostBelow = 0.25F;
constexpr float kMostAbove = 0.06F;
/// A letter is at most so far from an underscore beside it. In ems.
constexpr float kBeside = 0.12F;
/// It may begin so far below the end of its letter. In ems.
constexpr float kBelowLetter = 0.05F;
/// Lines that are nearer than this are parts of one. In points; the longest and the thickest underscore in points.
constexpr float kTouching = 0.3F;
constexpr float kLongest = 24;
constexpr float kThickest = 2;
/// More lines between two letters are a dotted line to write on.
constexpr std::ptrdiff_t kMostInGap = 3;
/// So many rulings at the height of a line are looked at: those of a line of text, not of a drawing.
constexpr std::size_t kMostChosen = 256;

} // namespace

Underscores::Underscores(const Page& page, const Frame& frame) {
    for (const Rule& rule : page.rules) {
        const Point a{rule.box.left, rule.box.bottom};
        const Point b{rule.box.right, rule.box.top};
        const auto [left, right] = std::minmax({frame.alongOf(a), frame.alongOf(b)});
        const auto [bottom, top] = std::minmax({frame.upOf(a), frame.upOf(b)});
        if (top - bottom > kThickest || right <= left) continue;
        rulings_.push_back({(bottom + top) / 2, left, right});
    }
    const auto mayBeUnderscore = [](const Ruling& r) { return r.right - r.left <= kLongest; };
    if (std::none_of(rulings_.begin(), rulings_.end(), mayBeUnderscore)) rulings_.clear();
    const auto key = [](const Ruling& r) { return std::tuple(r.y, r.left, r.right); };
    std::sort(rulings_.begin(), rulings_.end(), [key](const Ruling& a, const Ruling& b) { return key(a) < key(b); });
    std::size_t kept = 0;
    for (const Ruling& ruling : rulings_) {
        if (kept > 0 && rulings_[kept - 1].y == ruling.y && ruling.left - rulings_[kept - 1].right < kTouching)
            rulings_[kept - 1].right = std::max(rulings_[kept - 1].right, ruling.right);
        else
            rulings_[kept++] = ruling;
    }
    rulings_.resize(kept);
    std::erase_if(rulings_, [mayBeUnderscore](const Ruling& r) { return !mayBeUnderscore(r); });
}

void Underscores::choose(const Orientation& orientation, std::span<const std::uint32_t> line) {
    chosen_.clear();
    if (rulings_.empty()) return;
    float last = 0;
    bool isFirst = true;
    for (const std::uint32_t index : line) {
        const Span& span = orientation.spans[index];
        if (!isFirst && span.baseline == last) continue;
        isFirst = false;
        last = span.baseline;
        const auto low = std::lower_bound(rulings_.begin(), rulings_.end(), last - kMostBelow * span.size,
                                          [](const Ruling& r, float y) { return r.y < y; });
        for (auto found = low; found != rulings_.end() && found->y <= last + kMostAbove * span.size; ++found) {
            if (chosen_.size() == kMostChosen) break;
            chosen_.push_back(*found);
        }
    }
    std::sort(chosen_.begin(), chosen_.end(), [](const Ruling& a, const Ruling& b) { return a.left < b.left; });
}

bool Underscores::append(float left, float right, float size, std::u32string& out) const {
    if (chosen_.empty()) return false;
    const auto first = std::lower_bound(chosen_.begin(), chosen_.end(), left - kBelowLetter * size,
                                        [](const Ruling& r, float x) { return r.left < x; });
    const auto last =
        std::find_if(first, chosen_.end(), [&](const Ruling& r) { return r.right > right + kBelowLetter * size; });
    if (last - first > kMostInGap) return false;
    bool any = false;
    float end = left;
    for (auto found = first; found != last; ++found) {
        const float width = found->right - found->left;
        const bool isBesideLetter = found->left - end < kBeside * size || right - found->right < kBeside * size;
        if (width < kLeastWidth * size || width > kMostWidth * size || !isBesideLetter || found->left < end - kTouching)
            continue;
        if (found->left - end >= kBeside * size) out.push_back(U' ');
        out.push_back(U'_');
        end = found->right;
        any = true;
    }
    if (any && right - end >= kBeside * size) out.push_back(U' ');
    return any;
}

} // namespace quillow::pdf
