// The exporter's settings sheet: fields, header row and custom layout.
#pragma once

#include "platform/ExporterInterface.h"
#include "platform/qt/controls/ControlBindings.h"

#include <QDialog>

namespace quillow {

class CustomLayoutBox;
class FieldChooser;

class ExportSettingsDialog final : public QDialog {
public:
    /// The owner is used until the dialog is done.
    ExportSettingsDialog(const ExporterOwner& owner, QWidget* parent);

    /// From here on nothing reaches the exporter any more.
    void done(int result) override;
    /// Escape and the close button cancel as the button does: it is the exporter who ends the sheet.
    void reject() override;

private:
    [[nodiscard]] QWidget* makeHeaderSwitch();
    [[nodiscard]] QWidget* makeButtons();

    const ExporterOwner& owner_;
    bool isDone_ = false;
    ControlBindings bindings_;
    FieldChooser* fields_;
    CustomLayoutBox* customLayout_;
};

} // namespace quillow
