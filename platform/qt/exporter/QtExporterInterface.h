// The tabular exporter's windows.
#pragma once

#include "platform/ExporterInterface.h"
#include "platform/qt/exporter/FormatChooser.h"
#include "platform/qt/exporter/QtSheetPanel.h"

namespace quillow {

class QtExporterInterface final : public ExporterInterface {
public:
    QtExporterInterface(Sheets& sheets, const ExporterOwner& owner);
    [[nodiscard]] SheetPanel& exportSettingsPanel() override { return settingsPanel_; }
    [[nodiscard]] AccessoryView& exportPanelAccessoryView() override { return formatChooser_; }

private:
    ExporterOwner owner_;
    FormatChooser formatChooser_;
    QtSheetPanel settingsPanel_;
};

class QtInterfaceLoader final : public InterfaceLoader {
public:
    explicit QtInterfaceLoader(Sheets& sheets)
        : sheets_(sheets) {}
    /// The only interface is "Exporter".
    [[nodiscard]] std::unique_ptr<ExporterInterface> loadExporterInterface(const QString& name,
                                                                           const ExporterOwner& owner) override;

private:
    Sheets& sheets_;
};

} // namespace quillow
