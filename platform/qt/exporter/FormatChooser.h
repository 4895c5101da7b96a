// The exporter's choice of a file format, beside the name in its save sheet.
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
    /// One is tied to the exporter at a time: the one made last.
    [[nodiscard]] QWidget* makeControl(QWidget* parent) override;

private:
    const ExporterOwner& owner_;
    ControlBindings bindings_;
};

} // namespace quillow
