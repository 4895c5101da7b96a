// An accessory view as the save dialog shows it: a title and one control.
#pragma once

#include "platform/SavePanel.h"

class QString;
class QWidget;

namespace quillow {

class QtAccessoryView : public AccessoryView {
public:
    /// The title, with its mnemonic.
    [[nodiscard]] virtual QString title() const = 0;
    /// Makes a new control, bound to the value that it edits. The parent owns it.
    [[nodiscard]] virtual QWidget* makeControl(QWidget* parent) = 0;
};

} // namespace quillow
