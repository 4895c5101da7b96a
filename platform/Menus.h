// Port: the program's menu bar and its menus.
#pragma once

#include "base/ActionSender.h"

#include <QString>

#include <functional>

namespace quillow {

struct MenuItem {
    QString title;
    QString keyEquivalent; ///< empty for none
    std::function<void(Sender sender)> action;
};

class Menu {
public:
    virtual ~Menu() = default;
    /// Inserts the item before the item at that index; 0 is the first.
    virtual void insertItem(const MenuItem& item, int atIndex) = 0;
};

class Menus {
public:
    virtual ~Menus() = default;
    /// Inserts the item into the application menu, which is the first of the menu bar, before the item at that index
    /// (0 is the first).
    virtual void insertIntoApplicationMenu(const MenuItem& item, int atIndex) = 0;
};

} // namespace quillow
