// The menu bar and its menus, for the items that the logic adds.
#pragma once

#include "platform/Menus.h"
#include "platform/qt/controls/TitleDirection.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>

namespace quillow {

class QtMenu final : public Menu {
public:
    explicit QtMenu(QMenu& menu)
        : menu_(menu) {}

    void insertItem(const MenuItem& item, int atIndex) override {
        auto* action = new QAction(directed(item.title), &menu_);
        if (!item.keyEquivalent.isEmpty())
            action->setShortcut(QKeySequence(QStringLiteral("Ctrl+") + item.keyEquivalent));
        QObject::connect(action, &QAction::triggered, action, [run = item.action] {
            const ActionSender sender;
            if (run) run(&sender);
        });
        menu_.insertAction(menu_.actions().value(atIndex), action);
    }

private:
    QMenu& menu_;
};

class QtMenus final : public Menus {
public:
    explicit QtMenus(QMenu& applicationMenu)
        : applicationMenu_(applicationMenu) {}

    void insertIntoApplicationMenu(const MenuItem& item, int atIndex) override {
        applicationMenu_.insertItem(item, atIndex);
    }

private:
    QtMenu applicationMenu_;
};

} // namespace quillow
