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
    /// The dialog uses the owner until done() is called.
    ExportSettingsDialog(const ExporterOwner& owner, QWidget* parent);

    /// After this call the dialog no longer accesses the exporter.
    void done(int result) override;
    /// Escape and the close button act as the Cancel button: the exporter ends the sheet.
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
