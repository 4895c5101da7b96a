// The operators of path construction, painting and clipping (ISO 32000-2, 8.5).
#include "engines/pdf/content/Interpreter.h"

#include <optional>
#include <utility>

namespace quillow::pdf {

bool Interpreter::executePath(Operator word) {
    std::array<double, 2> end{};
    std::array<double, 4> n{};
    switch (word) {
    case operatorOf("m"):
        if (operands_.take(end)) path_.moveTo(state_.toPage, end[0], end[1]);
        return true;
    case operatorOf("l"):
        if (operands_.take(end)) path_.lineTo(state_.toPage, end[0], end[1]);
        return true;
    case operatorOf("c"):
    case operatorOf("v"):
    case operatorOf("y"):
        if (operands_.take(end)) path_.curveTo(state_.toPage, end[0], end[1]);
        return true;
    case operatorOf("re"):
        if (operands_.take(n)) path_.rectangle(state_.toPage, n[0], n[1], n[2], n[3]);
        return true;
    case operatorOf("h"): path_.close(); return true;
    case operatorOf("s"): path_.close(); [[fallthrough]];
    case operatorOf("S"): paint(PathCollector::Painting::stroke); return true;
    case operatorOf("f"):
    case operatorOf("F"):
    case operatorOf("f*"): paint(PathCollector::Painting::fill); return true;
    case operatorOf("b"):
    case operatorOf("b*"): path_.close(); [[fallthrough]];
    case operatorOf("B"):
    case operatorOf("B*"): paint(PathCollector::Painting::both); return true;
    case operatorOf("n"): endPath(); return true;
    case operatorOf("W"):
    case operatorOf("W*"): clipsAtPaint_ = true; return true;
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
