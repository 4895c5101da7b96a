#include "platform/qt/windows/PreferencesWindow.h"

#include "platform/qt/windows/GeneralPane.h"
#include "platform/qt/windows/UpdatePane.h"

#include <QAction>
#include <QLayout>

namespace quillow {

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

    // The user does not resize the window: its width is that of the widest pane, its height that of the pane shown.
    layout()->setSizeConstraint(QLayout::SetNoConstraint);
    setFixedSize(tabView_->minimumSizeHint().width(), kToolbarHeight + tabView_->sizeHint().height());

    auto* closing = new QAction(QStringLiteral("Close"), this);
    closing->setShortcuts({QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)});
    connect(closing, &QAction::triggered, this, &QWidget::close);
    addAction(closing);
}

} // namespace quillow
