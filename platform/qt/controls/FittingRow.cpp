#include "platform/qt/controls/FittingRow.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace quillow {

FittingRow::FittingRow(int gap)
    : gap_(gap) {
    setContentsMargins(0, 0, 0, 0);
}

FittingRow::~FittingRow() = default;

void FittingRow::addFixed(QWidget* widget) {
    addWidget(widget);
}

void FittingRow::addElided(QWidget* widget, int order, int comfortableCharacters) {
    addWidget(widget);
    parts_.back().order = order;
    parts_.back().comfortableCharacters = comfortableCharacters;
}

void FittingRow::addWholeOrNot(QWidget* widget, int order) {
    addWidget(widget);
    parts_.back().order = order;
    parts_.back().mayVanish = true;
}

void FittingRow::addItem(QLayoutItem* item) {
    parts_.push_back({std::unique_ptr<QLayoutItem>(item), 0, std::nullopt, false});
}

QLayoutItem* FittingRow::itemAt(int index) const {
    return index >= 0 && index < count() ? parts_[static_cast<std::size_t>(index)].item.get() : nullptr;
}

QLayoutItem* FittingRow::takeAt(int index) {
    if (!itemAt(index)) return nullptr;
    const auto place = parts_.begin() + index;
    QLayoutItem* item = place->item.release();
    parts_.erase(place);
    return item;
}

std::vector<RowPart> FittingRow::rowParts() const {
    std::vector<RowPart> parts;
    for (const Part& part : parts_) {
        const int whole = part.item->isEmpty() ? 0 : part.item->sizeHint().width();
        int comfortable = whole;
        int least = whole;
        if (part.comfortableCharacters && whole > 0) {
            const int character = part.item->widget()->fontMetrics().averageCharWidth();
            comfortable = std::min(whole, *part.comfortableCharacters * character);
            least = std::min(comfortable, part.item->minimumSize().width());
        }
        parts.push_back({whole, comfortable, least, part.order, part.mayVanish});
    }
    return parts;
}

int FittingRow::height() const {
    int height = 0;
    for (const Part& part : parts_)
        height = std::max(height, part.item->sizeHint().height());
    return height;
}

QSize FittingRow::sizeHint() const {
    int width = 0;
    for (const RowPart& part : rowParts())
        width += part.whole + (width > 0 ? gap_ : 0);
    return QSize(width, height()).grownBy(contentsMargins());
}

QSize FittingRow::minimumSize() const {
    int width = 0;
    for (const int part : rowWidths(rowParts(), gap_, 0))
        if (part > 0) width += part + (width > 0 ? gap_ : 0);
    return QSize(width, height()).grownBy(contentsMargins());
}

void FittingRow::setGeometry(const QRect& place) {
    QLayout::setGeometry(place);
    const QRect room = inner(place);
    const Qt::LayoutDirection direction = parentWidget() ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    const std::vector<int> widths = rowWidths(rowParts(), gap_, room.width());
    const auto put = [&](std::size_t i, int x) {
        const int partHeight = std::min(parts_[i].item->sizeHint().height(), room.height());
        const QRect logical(x, room.y() + (room.height() - partHeight) / 2, widths[i], partHeight);
        parts_[i].item->setGeometry(QStyle::visualRect(direction, room, logical));
    };
    int x = room.x();
    for (std::size_t i = 0; i < std::min(farEnd_, parts_.size()); ++i) {
        put(i, x);
        if (widths[i] > 0) x += widths[i] + gap_;
    }
    int end = room.x() + room.width();
    for (std::size_t i = parts_.size(); i > std::min(farEnd_, parts_.size()); --i) {
        put(i - 1, end - widths[i - 1]);
        if (widths[i - 1] > 0) end -= widths[i - 1] + gap_;
    }
}

} // namespace quillow
