// The sheets of the program's windows: a window shows one at a time, the others wait in order. A sheet that asks the
// same as one already shown or waiting on its window is never shown. It completes with its neutral answer right after
// the other one has completed. So a drop of 500 documents asks once, and nothing is dropped in between.
#pragma once

#include <QDialog>
#include <QPointer>

#include <memory>
#include <vector>

namespace quillow {

class Sheet {
public:
    virtual ~Sheet() = default;
    [[nodiscard]] virtual bool asksTheSameAs(const Sheet& other) const = 0;
    [[nodiscard]] virtual QDialog* makeDialog(QWidget* window) const = 0;
    /// Stores the finished dialog's answer for the handler. A sheet that was not shown keeps its neutral answer, the
    /// one that starts no action.
    virtual void takeAnswer(const QDialog& dialog, int result) = 0;
    /// Reports the answer to the code that began this sheet.
    virtual void complete() = 0;
};

class Sheets {
public:
    Sheets() = default;
    Sheets(const Sheets&) = delete;
    Sheets& operator=(const Sheets&) = delete;
    ~Sheets();

    /// Shows the sheet on the window (as a separate dialog if it is null) as soon as that window is free. Returns at
    /// once. The sheet completes from the event loop.
    void begin(std::unique_ptr<Sheet> sheet, QWidget* window);

private:
    /// Sheets that ask the same; only the first one is shown.
    using Round = std::vector<std::unique_ptr<Sheet>>;
    struct Waiting {
        Round round;
        QPointer<QWidget> window;
        QPointer<QDialog> dialog; ///< null until the round is shown
        bool hasEnded = false;    ///< its handlers are being called
    };

    void showNext(QWidget* window);
    void show(Waiting& waiting);
    void finished(QDialog* dialog, int result);

    std::vector<std::unique_ptr<Waiting>> waiting_;
};

} // namespace quillow
