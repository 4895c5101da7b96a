// An accessory view as the save dialog shows it: one control with its title before it.
#pragma once

#include "platform/SavePanel.h"

class QString;
class QWidget;

namespace quillow {

class QtAccessoryView : public AccessoryView {
public:
    /// With its mnemonic.
    [[nodiscard]] virtual QString title() const = 0;
    /// A new control, tied to what it stands for; the parent owns it.
    [[nodiscard]] virtual QWidget* makeControl(QWidget* parent) = 0;
};

} // namespace quillow
