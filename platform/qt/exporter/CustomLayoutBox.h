// The exporter's layout that the user types himself: seven texts, whether the last record is ended, and the presets to begin with.
#pragma once

#include "platform/ExporterInterface.h"
#include "platform/qt/controls/ControlBindings.h"

#include <QWidget>

class QGridLayout;

namespace quillow {

class CustomLayoutBox final : public QWidget {
public:
    explicit CustomLayoutBox(const ExporterOwner& owner);
    /// Leaves the exporter alone from now on.
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
