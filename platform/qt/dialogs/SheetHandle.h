// A dialog shown as a sheet, with an owner that may end it, and that may be destroyed before it ends.
#pragma once

#include "platform/qt/dialogs/Sheets.h"

#include <functional>
#include <memory>

namespace quillow {

class SheetHandle {
public:
    struct Callbacks {
        /// Makes the dialog once the window is free for it.
        std::function<QDialog*(QWidget* window)> makeDialog;
        /// The dialog has finished but is still there.
        std::function<void(const QDialog& dialog, int result)> takeAnswer;
        /// Called last; may destroy the handle.
        std::function<void(int result)> completed;
    };

    explicit SheetHandle(Sheets& sheets)
        : sheets_(sheets) {}
    SheetHandle(const SheetHandle&) = delete;
    SheetHandle& operator=(const SheetHandle&) = delete;
    /// Ends the sheet. No callback is called after that.
    ~SheetHandle();

    /// No effect while a sheet of this handle is open or waits for its window.
    void begin(QWidget* window, const Callbacks& callbacks);
    /// Ends the sheet with this result. A waiting sheet is never shown. No effect if there is no sheet.
    void end(int result);
    /// The open dialog; null if there is none.
    [[nodiscard]] QDialog* dialog() const;

private:
    class RoundSheet;
    struct Round {
        Callbacks callbacks;
        QPointer<QDialog> dialog;
        bool isWaiting = true;
        bool isOver = false;
        int result = QDialog::Rejected;
    };

    Sheets& sheets_;
    std::shared_ptr<Round> round_;
};

} // namespace quillow
