#include "platform/qt/windows/PreferencesWindow.h"

#include "platform/qt/windows/GeneralPane.h"
#include "platform/qt/windows/UpdatePane.h"

#include <QAction>
#include <QEvent>
#include <QLayout>
#include <QScreen>
#include <QShowEvent>

namespace quillow {
namespace {

// The heights that the toolbar's delegate gives the panes.
constexpr int kGeneralHeight = 200;
constexpr int kUpdateHeight = 160;
/// For the window's frame.
constexpr int kFrameRoom = 16;

} // namespace

PreferencesWindow::PreferencesWindow(UpdateCheck updateCheck)
    : QMainWindow(nullptr, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint)
    , tabView_(new QtTabView)
    , generalPane_(new GeneralPane)
    , updatePane_(new UpdatePane(updateCheck)) {
    setWindowTitle(QStringLiteral("Preferences"));
    // Whether the program ends with its last window does not depend on this window.
    setAttribute(Qt::WA_QuitOnClose, false);
    tabView_->addWidget(generalPane_);
    tabView_->addWidget(updatePane_);
    setCentralWidget(tabView_);

    layout()->setSizeConstraint(QLayout::SetNoConstraint);
    fitPanes();

    auto* closing = new QAction(QStringLiteral("Close"), this);
    closing->setShortcuts({QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)});
    connect(closing, &QAction::triggered, this, &QWidget::close);
    addAction(closing);
}

/// The user does not resize the window: its width is that of the widest pane, its height that of the pane shown.
void PreferencesWindow::fitPanes() {
    const int room = screen()->availableGeometry().width() - kFrameRoom;
    generalPane_->arrange({room, kGeneralHeight});
    updatePane_->arrange({qMin(room, generalPane_->leastWidth()), kUpdateHeight});
    const int width = tabView_->minimumSizeHint().width();
    const int height = isVisible() ? this->height() : kToolbarHeight + kGeneralHeight;
    setFixedSize(width, height);
}

void PreferencesWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (!event->spontaneous()) static_cast<ScrolledPane*>(tabView_->currentWidget())->focusFirst();
}

void PreferencesWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) fitPanes();
}

} // namespace quillow
