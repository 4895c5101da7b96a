#include "platform/qt/windows/ScrolledPane.h"

#include <QEvent>
#include <QLayout>
#include <QScrollBar>

namespace quillow {

ScrolledPane::ScrolledPane(QWidget* parent)
    : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setWidget(new QWidget);
    // The window's background, not that of a list.
    viewport()->setAutoFillBackground(false);
    contents().setAutoFillBackground(false);
}

void ScrolledPane::arrange(const QSize& room) {
    const QLayout* layout = contents().layout();
    const int contentsWidth = layout->minimumSize().width();
    const int height =
        layout->hasHeightForWidth() ? layout->minimumHeightForWidth(contentsWidth) : layout->minimumSize().height();
    const int bar = height > room.height() ? verticalScrollBar()->sizeHint().width() : 0;
    leastWidth_ = qMin(contentsWidth + bar, room.width());
    updateGeometry();
}

/// A scroll area asks its contents for a least size, but not for the height at a given width, which broken texts need.
void ScrolledPane::keepHeightForWidth() {
    const QLayout* layout = contents().layout();
    if (!layout || !layout->hasHeightForWidth()) return;
    const int width = qMax(viewport()->width(), layout->minimumSize().width());
    contents().setMinimumHeight(layout->minimumHeightForWidth(width));
}

bool ScrolledPane::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) keepHeightForWidth();
    return QScrollArea::eventFilter(watched, event);
}

void ScrolledPane::resizeEvent(QResizeEvent* event) {
    keepHeightForWidth();
    QScrollArea::resizeEvent(event);
}

QSize ScrolledPane::sizeHint() const {
    const QLayout* layout = contents().layout();
    return {leastWidth_, layout ? layout->sizeHint().height() : 0};
}

} // namespace quillow
