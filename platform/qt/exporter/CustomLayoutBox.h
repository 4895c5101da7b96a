// The exporter's custom layout: seven texts that the user types, the switch for an end mark after the last record,
// and presets.
#pragma once

#include "platform/ExporterInterface.h"
#include "platform/qt/controls/ControlBindings.h"

#include <QWidget>

class QGridLayout;

namespace quillow {

class CustomLayoutBox final : public QWidget {
public:
    explicit CustomLayoutBox(const ExporterOwner& owner);
    /// After this call the widget no longer accesses the exporter.
    void unbind();

private:
    [[nodiscard]] QLayout* makeHeading();
    void addText(QGridLayout& grid, int row, int column, const QString& title, const QString& key);
    [[nodiscard]] QWidget* makePresets();
    [[nodiscard]] QWidget* makeLastRecordSwitch();

    const ExporterOwner& owner_;
    ControlBindings bindings_;
};

} // namespace quillow
