#include "engines/pdf/content/PathCollector.h"

#include "engines/pdf/content/GraphicsState.h"

#include <algorithm>
#include <cmath>

namespace quillow::pdf {

namespace {

Point pointOf(const Matrix& toPage, double x, double y) {
    const Vector v = toPage.apply(x, y);
    return {static_cast<float>(v.x), static_cast<float>(v.y)};
}

Box boxOf(Point a, Point b) {
    Box box{a.x, a.y, a.x, a.y};
    box.extendTo(b);
    return box;
}

bool isHorizontal(Point a, Point b) {
    return std::abs(a.y - b.y) <= kSlant;
}

bool isVertical(Point a, Point b) {
    return std::abs(a.x - b.x) <= kSlant;
}

bool isLongEnough(const Box& box) {
    return std::max(box.width(), box.height()) >= kShortestRule;
}

/// A line without the slant that was allowed.
Box straightened(Box box) {
    if (box.width() > box.height())
        box.bottom = box.top = (box.bottom + box.top) / 2;
    else
        box.left = box.right = (box.left + box.right) / 2;
    return box;
}

/// Adds `next` to the line before it if it goes on where that one ends.
bool extends(Box& line, const Box& next) {
    const bool horizontal = line.height() == 0 && next.height() == 0 && std::abs(line.top - next.top) <= kSlant;
    const bool vertical = line.width() == 0 && next.width() == 0 && std::abs(line.left - next.left) <= kSlant;
    if (horizontal && next.left <= line.right + kSlant && next.right >= line.left - kSlant) {
        line.left = std::min(line.left, next.left);
        line.right = std::max(line.right, next.right);
        return true;
    }
    if (vertical && next.bottom <= line.top + kSlant && next.top >= line.bottom - kSlant) {
        line.bottom = std::min(line.bottom, next.bottom);
        line.top = std::max(line.top, next.top);
        return true;
    }
    return false;
}

void addRule(Page& page, const Box& seen, Rule::Kind kind, const Box& whole) {
    const Box box = intersectionOf(whole, seen);
    if (box.width() < 0 || box.height() < 0 || !isLongEnough(box)) return;
    if (!page.rules.empty() && page.rules.back().kind == kind) {
        Rule& last = page.rules.back();
        if (last.box == box || (kind == Rule::Kind::line && extends(last.box, box))) return;
    }
    if (page.rules.size() < kMaximumRules) page.rules.push_back({kind, box});
}

} // namespace

void PathCollector::moveTo(const Matrix& toPage, double x, double y) {
    endSubpath();
    start_ = current_ = pointOf(toPage, x, y);
    hasCurrent_ = true;
    corners_[0] = start_;
    cornerCount_ = 1;
}

void PathCollector::lineTo(const Matrix& toPage, double x, double y) {
    if (!hasCurrent_) return moveTo(toPage, x, y);
    const Point to = pointOf(toPage, x, y);
    addLine(to);
    addCorner(to);
    current_ = to;
}

void PathCollector::curveTo(const Matrix& toPage, double x, double y) {
    if (!hasCurrent_) return moveTo(toPage, x, y);
    current_ = pointOf(toPage, x, y);
    cornerCount_ = kCorners + 1;
}

void PathCollector::rectangle(const Matrix& toPage, double x, double y, double width, double height) {
    endSubpath();
    ++subpaths_;
    start_ = current_ = pointOf(toPage, x, y);
    hasCurrent_ = true;
    const Point beside = pointOf(toPage, x + width, y);
    const bool isUpright = isHorizontal(start_, beside) || isVertical(start_, beside);
    if (isUpright && rectangles_.size() < kMaximumRules)
        rectangles_.push_back(boxOf(start_, pointOf(toPage, x + width, y + height)));
}

void PathCollector::close() {
    if (!hasCurrent_) return;
    addLine(start_);
    if (cornerCount_ == kCorners - 1) addCorner(start_);
    current_ = start_;
}

void PathCollector::addCorner(Point p) {
    if (cornerCount_ < kCorners) corners_[cornerCount_] = p;
    if (cornerCount_ <= kCorners) ++cornerCount_;
}

void PathCollector::addLine(Point to) {
    if (!isHorizontal(current_, to) && !isVertical(current_, to)) return;
    const Box box = boxOf(current_, to);
    if (isLongEnough(box) && lines_.size() < kMaximumRules) lines_.push_back(straightened(box));
}

/// Four or five corners with upright sides between them are a rectangle: filling closes a path (8.5.3.1).
void PathCollector::endSubpath() {
    const std::size_t count = cornerCount_;
    cornerCount_ = 0;
    if (count > 1) ++subpaths_;
    if (count < kCorners - 1 || count > kCorners) return;
    if (count == kCorners && !(isHorizontal(corners_[0], corners_[4]) && isVertical(corners_[0], corners_[4]))) return;
    const bool acrossFirst = isHorizontal(corners_[0], corners_[1]) && isVertical(corners_[1], corners_[2]) &&
                             isHorizontal(corners_[2], corners_[3]) && isVertical(corners_[3], corners_[0]);
    const bool upFirst = isVertical(corners_[0], corners_[1]) && isHorizontal(corners_[1], corners_[2]) &&
                         isVertical(corners_[2], corners_[3]) && isHorizontal(corners_[3], corners_[0]);
    if ((acrossFirst || upFirst) && polygons_.size() < kMaximumRules)
        polygons_.push_back(boxOf(corners_[0], corners_[2]));
}

void PathCollector::paint(Painting painting, const Box& clip, Page& page) {
    endSubpath();
    addRules(painting, intersectionOf(clip, page.cropBox), page);
    clear();
}

void PathCollector::addRules(Painting painting, const Box& seen, Page& page) const {
    const bool fills = painting != Painting::stroke;
    const bool strokes = painting != Painting::fill;
    for (const Box& box : rectangles_)
        addRule(page, seen, Rule::Kind::rectangle, box);
    if (fills)
        for (const Box& box : polygons_)
            addRule(page, seen, Rule::Kind::rectangle, box);
    if (strokes && (!fills || polygons_.empty()))
        for (const Box& box : lines_)
            addRule(page, seen, Rule::Kind::line, box);
}

void PathCollector::clear() {
    hasCurrent_ = false;
    cornerCount_ = 0;
    subpaths_ = 0;
    lines_.clear();
    rectangles_.clear();
    polygons_.clear();
}

std::optional<Box> PathCollector::onlyRectangle() {
    endSubpath();
    if (subpaths_ != 1) return std::nullopt;
    if (!rectangles_.empty()) return rectangles_.front();
    if (!polygons_.empty()) return polygons_.front();
    return std::nullopt;
}

} // namespace quillow::pdf
