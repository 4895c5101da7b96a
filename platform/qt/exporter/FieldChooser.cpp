#include "platform/qt/exporter/FieldChooser.h"

#include "platform/qt/exporter/KeyList.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quillow {
namespace {

constexpr int kGap = 8;

} // namespace

FieldChooser::FieldChooser(const ExporterOwner& owner)
    : owner_(owner)
    , leftTable_(new KeyList(owner.leftKeyArrayController))
    , rightTable_(new KeyList(owner.rightKeyArrayController)) {
    leftTable_->setObjectName(QStringLiteral("leftTable"));
    leftTable_->setAccessibleName(QStringLiteral("Available fields"));
    rightTable_->setObjectName(QStringLiteral("rightTable"));
    rightTable_->setAccessibleName(QStringLiteral("Exported fields"));

    auto* columns = new QHBoxLayout(this);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(kGap);
    columns->addLayout(makeColumn(QStringLiteral("A&vailable fields"), leftTable_), 1);
    columns->addLayout(makeMoving());
    columns->addLayout(makeColumn(QStringLiteral("&Exported fields"), rightTable_), 1);
    columns->addLayout(makeOrdering());

    leftTable_->setChangeHandler([this] { enableButtons(); });
    rightTable_->setChangeHandler([this] { enableButtons(); });
    // A double click moves one field.
    connect(leftTable_, &QListWidget::itemDoubleClicked, add_, &QPushButton::click);
    connect(rightTable_, &QListWidget::itemDoubleClicked, remove_, &QPushButton::click);
    enableButtons();
}

void FieldChooser::unbind() {
    bindings_.clear();
    leftTable_->unbind();
    rightTable_->unbind();
}

QLayout* FieldChooser::makeColumn(const QString& title, KeyList* list) {
    auto* label = new QLabel(title);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    label->setBuddy(list);
    auto* column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(label);
    column->addWidget(list, 1);
    return column;
}

QLayout* FieldChooser::makeMoving() {
    auto* column = new QVBoxLayout;
    column->addStretch(1);
    add_ = addButton(*column, QStringLiteral("&Add \u2192"), QStringLiteral("Export the selected available fields"),
                     &ExporterActions::addSelectedToRight);
    addAll_ = addButton(*column, QStringLiteral("Add A&ll"), QStringLiteral("Export all fields"),
                        &ExporterActions::addAllToRight);
    column->addSpacing(kGap);
    remove_ = addButton(*column, QStringLiteral("\u2190 &Remove"),
                        QStringLiteral("Do not export the selected exported fields"),
                        &ExporterActions::removeSelectedFromRight);
    removeAll_ = addButton(*column, QStringLiteral("Re&move All"), QStringLiteral("Export no field"),
                           &ExporterActions::removeAllFromRight);
    column->addStretch(1);
    return column;
}

QLayout* FieldChooser::makeOrdering() {
    auto* column = new QVBoxLayout;
    column->addStretch(1);
    up_ = addButton(*column, QStringLiteral("&Up"), QStringLiteral("Move the selected exported field up"),
                    &ExporterActions::moveUp);
    down_ = addButton(*column, QStringLiteral("&Down"), QStringLiteral("Move the selected exported field down"),
                      &ExporterActions::moveDown);
    column->addStretch(1);
    return column;
}

QPushButton* FieldChooser::addButton(QVBoxLayout& column, const QString& title, const QString& description,
                                     ExporterActions::Action ExporterActions::*action) {
    auto* button = new QPushButton(title);
    // Assistive tools need not read the arrows.
    button->setAccessibleName(title.simplified().remove(u'&').remove(u'\u2192').remove(u'\u2190').trimmed());
    button->setAccessibleDescription(description);
    button->setToolTip(description);
    // Return exports, even if one of these buttons has the keyboard focus. The space bar presses them.
    button->setAutoDefault(false);
    column.addWidget(button);
    bindings_.bindClick(button, [this, action] {
        const ActionSender sender;
        (owner_.actions.*action)(&sender);
    });
    return button;
}

void FieldChooser::enableButtons() {
    const ArrayController& left = owner_.leftKeyArrayController;
    const ArrayController& right = owner_.rightKeyArrayController;
    add_->setEnabled(!left.selectionIndexes().isEmpty());
    addAll_->setEnabled(!left.arrangedObjects().isEmpty());
    remove_->setEnabled(!right.selectionIndexes().isEmpty());
    removeAll_->setEnabled(!right.arrangedObjects().isEmpty());
    const qsizetype last = right.selectionIndexes().isEmpty() ? -1 : right.selectionIndexes().constLast();
    up_->setEnabled(last > 0);
    down_->setEnabled(last >= 0 && last < right.arrangedObjects().size() - 1);
}

} // namespace quillow
