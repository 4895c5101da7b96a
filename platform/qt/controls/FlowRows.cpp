#include "platform/qt/controls/FlowRows.h"

#include "platform/qt/controls/RowFitting.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>
#include <numeric>

namespace quillow {

FlowRows::FlowRows(int gap)
    : gap_(gap) {
    setContentsMargins(0, 0, 0, 0);
}

FlowRows::~FlowRows() = default;

void FlowRows::addItem(QLayoutItem* item) {
    items_.emplace_back(item);
}

QLayoutItem* FlowRows::itemAt(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowRows::takeAt(int index) {
    if (!itemAt(index)) return nullptr;
    const auto place = items_.begin() + index;
    QLayoutItem* item = place->release();
    items_.erase(place);
    return item;
}

std::vector<int> FlowRows::widths() const {
    std::vector<int> widths;
    for (const auto& item : items_)
        widths.push_back(item->sizeHint().width());
    return widths;
}

int FlowRows::rowHeight() const {
    int height = 0;
    for (const auto& item : items_)
        height = std::max(height, item->sizeHint().height());
    return height;
}

int FlowRows::heightOfRows(std::size_t rows) const {
    const int count = static_cast<int>(rows);
    return count * rowHeight() + (count > 0 ? count - 1 : 0) * gap_;
}

QSize FlowRows::sizeHint() const {
    const std::vector<int> all = widths();
    const int gaps = gap_ * (static_cast<int>(all.size()) - 1);
    return {std::accumulate(all.begin(), all.end(), std::max(gaps, 0)), rowHeight()};
}

QSize FlowRows::minimumSize() const {
    const std::vector<int> all = widths();
    return {all.empty() ? 0 : *std::max_element(all.begin(), all.end()), rowHeight()};
}

int FlowRows::heightForWidth(int width) const {
    return heightOfRows(rowStarts(widths(), gap_, width).size());
}

void FlowRows::setGeometry(const QRect& place) {
    QLayout::setGeometry(place);
    const Qt::LayoutDirection direction = parentWidget() ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    const std::vector<int> all = widths();
    const std::vector<std::size_t> starts = rowStarts(all, gap_, place.width());
    int x = place.x();
    int y = place.y() - rowHeight() - gap_;
    for (std::size_t i = 0; i < items_.size(); ++i) {
        if (std::binary_search(starts.begin(), starts.end(), i)) {
            x = place.x();
            y += rowHeight() + gap_;
        }
        const bool isAtFarEnd = lastIsAtFarEnd_ && i + 1 == items_.size();
        const QRect logical(isAtFarEnd ? place.x() + place.width() - all[i] : x, y, all[i], rowHeight());
        items_[i]->setGeometry(QStyle::visualRect(direction, place, logical));
        x += all[i] + gap_;
    }
}

} // namespace quillow
