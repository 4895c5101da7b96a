// An application menu that has two items at the start.
#pragma once

#include "platform/Menus.h"
#include "tests/fakes/Journal.h"

#include <QList>

namespace quillow {

class FakeMenus final : public Menus, public Recorded {
public:
    void insertIntoApplicationMenu(const MenuItem& item, int atIndex) override {
        record(QStringLiteral("menu item '") + item.title + u'\'');
        items_.insert(atIndex, item);
    }
    [[nodiscard]] const QList<MenuItem>& applicationMenu() const { return items_; }

private:
    QList<MenuItem> items_{{QStringLiteral("About"), QString(), {}}, {QStringLiteral("Quit"), QString(), {}}};
};

} // namespace quillow
