// The exporter's file format chooser, shown beside the name in its save sheet.
#pragma once

#include "platform/ExporterInterface.h"
#include "platform/qt/controls/ControlBindings.h"
#include "platform/qt/exporter/QtAccessoryView.h"

namespace quillow {

class FormatChooser final : public QtAccessoryView {
public:
    explicit FormatChooser(const ExporterOwner& owner)
        : owner_(owner) {}

    [[nodiscard]] QString title() const override;
    /// Only the control made last is bound to the exporter.
    [[nodiscard]] QWidget* makeControl(QWidget* parent) override;

private:
    const ExporterOwner& owner_;
    ControlBindings bindings_;
};

} // namespace quillow
