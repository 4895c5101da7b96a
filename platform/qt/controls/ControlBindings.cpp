#include "platform/qt/controls/ControlBindings.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>

#include <utility>

namespace quillow {

void ControlBindings::show(KVObject& object, const QString& key, const std::function<void(const Boxed& value)>& show) {
    observations_.push_back(object.addObserver(
        key, [show](const QString&, const KVObject&, const Change& change) { show(change.newValue); }));
    show(object.valueForKey(key));
}

void ControlBindings::bindText(QLineEdit* field, KVObject& object, const QString& key) {
    show(object, key, [field = QPointer(field)](const Boxed& value) {
        const QString text = value.string().value_or(QString());
        // Setting an equal text would move the cursor.
        if (field && field->text() != text) field->setText(text);
    });
    // textChanged(), not textEdited(): assistive tools set the text.
    connections_.append(QObject::connect(field, &QLineEdit::textChanged, field, [&object, key](const QString& text) {
        if (object.valueForKey(key).string() != text) object.setValue(text, key);
    }));
}

void ControlBindings::bindSwitch(QAbstractButton* button, KVObject& object, const QString& key) {
    show(object, key, [button = QPointer(button)](const Boxed& value) {
        if (button) button->setChecked(value.boolValue());
    });
    connections_.append(QObject::connect(button, &QAbstractButton::toggled, button, [&object, key](bool isOn) {
        if (object.valueForKey(key).boolValue() != isOn) object.setValue(isOn, key);
    }));
}

void ControlBindings::bindChoice(QComboBox* list, KVObject& object, const QString& key, std::function<void()> chosen) {
    show(object, key, [list = QPointer(list)](const Boxed& value) {
        if (list) list->setCurrentIndex(list->findData(value.intValue()));
    });
    const auto store = [&object, key, list, chosen = std::move(chosen)](int index) {
        if (index < 0 || object.valueForKey(key).intValue() == list->itemData(index).toInt()) return;
        object.setValue(list->itemData(index).toInt(), key);
        chosen();
    };
    connections_.append(QObject::connect(list, &QComboBox::currentIndexChanged, list, store));
}

void ControlBindings::bindClick(QAbstractButton* button, std::function<void()> action) {
    connections_.append(QObject::connect(button, &QAbstractButton::clicked, button, std::move(action)));
}

void ControlBindings::bindAction(QAction* menuItem, std::function<void()> action) {
    connections_.append(QObject::connect(menuItem, &QAction::triggered, menuItem, std::move(action)));
}

void ControlBindings::clear() {
    for (const QMetaObject::Connection& connection : connections_)
        QObject::disconnect(connection);
    connections_.clear();
    observations_.clear();
}

} // namespace quillow
