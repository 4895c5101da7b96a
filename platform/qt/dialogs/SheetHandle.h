// A dialog that is shown as a sheet and belongs to somebody who may end it, and who may be gone before it ends.
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
        /// Comes last; may destroy the handle.
        std::function<void(int result)> completed;
    };

    explicit SheetHandle(Sheets& sheets)
        : sheets_(sheets) {}
    SheetHandle(const SheetHandle&) = delete;
    SheetHandle& operator=(const SheetHandle&) = delete;
    /// Ends the sheet; nothing is called back any more.
    ~SheetHandle();

    /// Without effect while a sheet of this handle is up or waits for its window.
    void begin(QWidget* window, const Callbacks& callbacks);
    /// Ends the sheet with this result, or keeps one that waits from ever being seen. Without effect when there is none.
    void end(int result);
    /// The dialog that is up; null when there is none.
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
