// The exporter's field chooser: a list of fields that are not exported, a list of fields that are, and buttons that
// move fields.
#pragma once

#include "platform/ExporterInterface.h"
#include "platform/qt/controls/ControlBindings.h"

#include <QWidget>

class QPushButton;
class QVBoxLayout;

namespace quillow {

class KeyList;

class FieldChooser final : public QWidget {
public:
    explicit FieldChooser(const ExporterOwner& owner);
    /// After this call the widget no longer accesses the exporter.
    void unbind();

private:
    [[nodiscard]] QLayout* makeColumn(const QString& title, KeyList* list);
    [[nodiscard]] QLayout* makeMoving();
    [[nodiscard]] QLayout* makeOrdering();
    QPushButton* addButton(QVBoxLayout& column, const QString& title, const QString& description,
                           ExporterActions::Action ExporterActions::*action);
    void enableButtons();

    const ExporterOwner& owner_;
    ControlBindings bindings_;
    KeyList* leftTable_;
    KeyList* rightTable_;
    QPushButton* add_ = nullptr;
    QPushButton* addAll_ = nullptr;
    QPushButton* remove_ = nullptr;
    QPushButton* removeAll_ = nullptr;
    QPushButton* up_ = nullptr;
    QPushButton* down_ = nullptr;
};

} // namespace quillow
