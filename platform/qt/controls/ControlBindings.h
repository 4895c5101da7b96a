// Binds controls to the properties of an object: a control shows its property, and the user's changes are stored in
// it. All bindings end together, so no control reaches an object that was destroyed.
#pragma once

#include "base/KVObject.h"

#include <QList>
#include <QMetaObject>

#include <functional>
#include <vector>

class QAbstractButton;
class QAction;
class QComboBox;
class QLineEdit;

namespace quillow {

class ControlBindings {
public:
    ControlBindings() = default;
    ControlBindings(const ControlBindings&) = delete;
    ControlBindings& operator=(const ControlBindings&) = delete;
    ~ControlBindings() { clear(); }

    /// Binds a string property. An absent value is shown as the empty text.
    void bindText(QLineEdit* field, KVObject& object, const QString& key);
    /// Binds a property to a switch. The user's changes are stored as booleans, whatever type the value had before.
    void bindSwitch(QAbstractButton* button, KVObject& object, const QString& key);
    /// Binds a number to a list: each item's data is its number. If no item has the number, none is selected.
    /// `chosen` is called after a change by the user is stored.
    void bindChoice(QComboBox* list, KVObject& object, const QString& key, std::function<void()> chosen);
    void bindClick(QAbstractButton* button, std::function<void()> action);
    void bindAction(QAction* menuItem, std::function<void()> action);
    void clear();

private:
    void show(KVObject& object, const QString& key, const std::function<void(const Boxed& value)>& show);

    QList<QMetaObject::Connection> connections_;
    std::vector<Observation> observations_;
};

} // namespace quillow
