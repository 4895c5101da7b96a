#include "platform/qt/exporter/ExportSettingsDialog.h"

#include "platform/qt/controls/TitleDirection.h"
#include "platform/qt/exporter/CustomLayoutBox.h"
#include "platform/qt/exporter/FieldChooser.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace quillow {
namespace {

constexpr int kMargin = 14;
constexpr int kGap = 12;

} // namespace

ExportSettingsDialog::ExportSettingsDialog(const ExporterOwner& owner, QWidget* parent)
    : QDialog(parent)
    , owner_(owner)
    , fields_(new FieldChooser(owner))
    , customLayout_(new CustomLayoutBox(owner)) {
    setWindowTitle(QStringLiteral("Export"));
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    rows->setSpacing(kGap);
    rows->addWidget(fields_, 1);
    rows->addWidget(makeHeaderSwitch());
    rows->addWidget(customLayout_);
    rows->addWidget(makeButtons());
    if (auto* first = findChild<QWidget*>(QStringLiteral("leftTable"))) first->setFocus();
}

void ExportSettingsDialog::done(int result) {
    isDone_ = true;
    bindings_.clear();
    fields_->unbind();
    customLayout_->unbind();
    QDialog::done(result);
}

void ExportSettingsDialog::reject() {
    if (isDone_) return;
    const ActionSender sender;
    owner_.actions.CancelExportSetting(&sender);
}

QWidget* ExportSettingsDialog::makeHeaderSwitch() {
    auto* box = new QCheckBox(QStringLiteral("&Write the fields' names as the first row"));
    box->setObjectName(QStringLiteral("useFieldNamesAsFirstRow"));
    bindings_.bindSwitch(box, owner_.properties, box->objectName());
    return box;
}

QWidget* ExportSettingsDialog::makeButtons() {
    auto* buttons = new QDialogButtonBox;
    auto* exporting = buttons->addButton(directed(QStringLiteral("E&xport\u2026")), QDialogButtonBox::AcceptRole);
    exporting->setDefault(true);
    exporting->setAccessibleDescription(QStringLiteral("Name the file and choose its format"));
    auto* cancelling = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    cancelling->setAutoDefault(false);
    bindings_.bindClick(exporting, [this] {
        const ActionSender sender;
        owner_.actions.DoExportSetting(&sender);
    });
    bindings_.bindClick(cancelling, [this] { reject(); });
    return buttons;
}

} // namespace quillow
