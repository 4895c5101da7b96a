#include "platform/qt/controls/QtTabView.h"

namespace quillow {

void QtTabView::selectTabViewItemAtIndex(int index) {
    setCurrentIndex(index);
}

QSize QtTabView::minimumSizeHint() const {
    return {QStackedWidget::minimumSizeHint().width(), 0};
}

QSize QtTabView::sizeHint() const {
    const QWidget* shown = currentWidget();
    return {QStackedWidget::sizeHint().width(), shown ? shown->sizeHint().height() : 0};
}

} // namespace quillow
