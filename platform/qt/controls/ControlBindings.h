// Ties controls to the properties of an object: a control shows its property, and what the user makes of the control is stored in
// it. All ties end together, so that no control reaches an object that is gone.
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

    /// A text; an absent one is shown as the empty text.
    void bindText(QLineEdit* field, KVObject& object, const QString& key);
    /// A boolean, stored as one whatever it was before.
    void bindSwitch(QAbstractButton* button, KVObject& object, const QString& key);
    /// A number: the data of one of the list's items. None is chosen for a number that is no item's.
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
