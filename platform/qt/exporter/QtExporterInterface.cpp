#include "platform/qt/exporter/QtExporterInterface.h"

#include "platform/qt/exporter/ExportSettingsDialog.h"

namespace quillow {

QtExporterInterface::QtExporterInterface(Sheets& sheets, const ExporterOwner& owner)
    : owner_(owner)
    , formatChooser_(owner_)
    , settingsPanel_(sheets, [this](QWidget* window) { return new ExportSettingsDialog(owner_, window); }) {}

std::unique_ptr<ExporterInterface> QtInterfaceLoader::loadExporterInterface(const QString& name,
                                                                            const ExporterOwner& owner) {
    if (name != QStringLiteral("Exporter")) return nullptr;
    return std::make_unique<QtExporterInterface>(sheets_, owner);
}

} // namespace quillow
