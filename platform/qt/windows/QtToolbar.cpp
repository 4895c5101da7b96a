#include "platform/qt/windows/QtToolbar.h"

#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/windows/PaneButton.h"

#include <QAction>
#include <QMainWindow>
#include <QToolBar>

#include <utility>

namespace quillow {

QtToolbar::QtToolbar(QString identifier, int height)
    : identifier_(std::move(identifier))
    , height_(height)
    , bar_(new QToolBar) {
    bar_->setObjectName(identifier_);
    bar_->setAccessibleName(QStringLiteral("Panes"));
    bar_->setMovable(false);
    bar_->setFloatable(false);
    bar_->setFixedHeight(height_);
}

QtToolbar::~QtToolbar() {
    delete bar_.data();
}

void QtToolbar::setAllowsUserCustomization(bool allows) {
    // The only customisation of a toolbar is the context menu that its window provides.
    bar_->setContextMenuPolicy(allows ? Qt::DefaultContextMenu : Qt::PreventContextMenu);
}

void QtToolbar::attachToWindow(Window& window) {
    auto* mainWindow = qobject_cast<QMainWindow*>(WidgetWindow::of(&window));
    Q_ASSERT(mainWindow && delegate_);
    const QStringList selectable = delegate_->toolbarSelectableItemIdentifiers(*this);
    for (const QString& identifier : delegate_->toolbarDefaultItemIdentifiers(*this)) {
        if (auto item = delegate_->itemForItemIdentifier(*this, identifier, true))
            addItem(std::move(item), selectable.contains(identifier));
    }
    mainWindow->addToolBar(Qt::TopToolBarArea, bar_);
}

void QtToolbar::addItem(std::unique_ptr<ToolbarItem> item, bool isSelectable) {
    auto* button = new PaneButton(*item, isSelectable ? PaneButton::Selectable::yes : PaneButton::Selectable::no,
                                  [chosen = item.get()] {
                                      if (chosen->action) chosen->action(chosen);
                                  });
    bar_->addWidget(button);
    buttons_[item->itemIdentifier] = button;
    items_.push_back(std::move(item));
}

void QtToolbar::setShowsToolbarButton(bool shows) {
    bar_->toggleViewAction()->setVisible(shows);
}

QList<const ToolbarItem*> QtToolbar::items() const {
    QList<const ToolbarItem*> items;
    for (const auto& item : items_)
        items.append(item.get());
    return items;
}

void QtToolbar::setSelectedItemIdentifier(const QString& identifier) {
    const auto found = buttons_.find(identifier);
    if (found != buttons_.end() && found->second) found->second->select();
}

std::unique_ptr<Toolbar> QtToolbarFactory::makeToolbar(const QString& identifier) {
    return std::make_unique<QtToolbar>(identifier, height_);
}

} // namespace quillow
