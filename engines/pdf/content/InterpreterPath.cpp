// The operators of path construction, painting and clipping (ISO 32000-2, 8.5).
#include "engines/pdf/content/Interpreter.h"

#include <optional>
#include <utility>

namespace quillow::pdf {

bool Interpreter::executePath(std::uint32_t place) {
    std::array<double, 2> end{};
    std::array<double, 4> n{};
    switch (place) {
    case placeOf("m"):
        if (operands_.take(end)) path_.moveTo(state_.toPage, end[0], end[1]);
        return true;
    case placeOf("l"):
        if (operands_.take(end)) path_.lineTo(state_.toPage, end[0], end[1]);
        return true;
    case placeOf("c"):
    case placeOf("v"):
    case placeOf("y"):
        if (operands_.take(end)) path_.curveTo(state_.toPage, end[0], end[1]);
        return true;
    case placeOf("re"):
        if (operands_.take(n)) path_.rectangle(state_.toPage, n[0], n[1], n[2], n[3]);
        return true;
    case placeOf("h"): path_.close(); return true;
    case placeOf("s"): path_.close(); [[fallthrough]];
    case placeOf("S"): paint(PathCollector::Painting::stroke); return true;
    case placeOf("f"):
    case placeOf("F"):
    case placeOf("f*"): paint(PathCollector::Painting::fill); return true;
    case placeOf("b"):
    case placeOf("b*"): path_.close(); [[fallthrough]];
    case placeOf("B"):
    case placeOf("B*"): paint(PathCollector::Painting::both); return true;
    case placeOf("n"): endPath(); return true;
    case placeOf("W"):
    case placeOf("W*"): clipsAtPaint_ = true; return true;
    default: return false;
    }
}

void Interpreter::paint(PathCollector::Painting painting) {
    const std::optional<Box> clip = takeClip();
    if (!marks_.current().isHidden) path_.paint(painting, state_.clip, *page_);
    path_.clear();
    if (clip) state_.clip = intersectionOf(state_.clip, *clip);
}

void Interpreter::endPath() {
    const std::optional<Box> clip = takeClip();
    path_.clear();
    if (clip) state_.clip = intersectionOf(state_.clip, *clip);
}

/// The box to which W or W* clips after the path is painted (8.5.4), if it is an upright rectangle. Other paths do not
/// clip: text is left out only where it is plain that nobody sees it.
std::optional<Box> Interpreter::takeClip() {
    if (!std::exchange(clipsAtPaint_, false)) return std::nullopt;
    return path_.onlyRectangle();
}

} // namespace quillow::pdf
