// The menu bar as the logic adds to it.
#pragma once

#include "platform/Menus.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>

namespace quillow {

class QtMenus final : public Menus {
public:
    explicit QtMenus(QMenu& applicationMenu)
        : applicationMenu_(applicationMenu) {}

    void insertIntoApplicationMenu(const MenuItem& item, int atIndex) override {
        auto* action = new QAction(item.title, &applicationMenu_);
        if (!item.keyEquivalent.isEmpty())
            action->setShortcut(QKeySequence(QStringLiteral("Ctrl+") + item.keyEquivalent));
        QObject::connect(action, &QAction::triggered, action, [run = item.action] {
            const ActionSender sender;
            if (run) run(&sender);
        });
        applicationMenu_.insertAction(applicationMenu_.actions().value(atIndex), action);
    }

private:
    QMenu& applicationMenu_;
};

} // namespace quillow
