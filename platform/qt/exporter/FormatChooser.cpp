#include "platform/qt/exporter/FormatChooser.h"

#include <QComboBox>

namespace quillow {

QString FormatChooser::title() const {
    return QStringLiteral("&Format:");
}

QWidget* FormatChooser::makeControl(QWidget* parent) {
    auto* list = new QComboBox(parent);
    list->setObjectName(QStringLiteral("fileFormatToSave"));
    list->setAccessibleName(QStringLiteral("Format"));
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    list->addItem(QStringLiteral("Tab-separated text (.tsv)"), 1);
    list->addItem(QStringLiteral("Comma-separated values (.csv)"), 2);
    list->addItem(QStringLiteral("HTML table (.txt)"), 3);
    list->addItem(QStringLiteral("HTML page (.html)"), 4);
    list->addItem(QStringLiteral("Custom layout (.txt)"), 0);
    bindings_.clear();
    bindings_.bindChoice(list, owner_.properties, QStringLiteral("fileFormatToSave"), [this] {
        const ActionSender sender;
        owner_.actions.adjustFileType(&sender);
    });
    return list;
}

} // namespace quillow
