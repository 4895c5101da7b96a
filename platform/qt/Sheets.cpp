#include "platform/qt/Sheets.h"

#include <QTimer>

#include <algorithm>
#include <utility>

namespace quillow {

Sheets::~Sheets() {
    for (const auto& waiting : waiting_)
        delete waiting->dialog.data();
}

void Sheets::begin(std::unique_ptr<Sheet> sheet, QWidget* window) {
    for (const auto& waiting : waiting_) {
        if (waiting->window != window || !waiting->round.front()->asksTheSameAs(*sheet)) continue;
        waiting->round.push_back(std::move(sheet));
        return;
    }
    auto waiting = std::make_unique<Waiting>();
    waiting->round.push_back(std::move(sheet));
    waiting->window = window;
    waiting_.push_back(std::move(waiting));
    showNext(window);
}

void Sheets::showNext(QWidget* window) {
    for (const auto& waiting : waiting_) {
        if (waiting->window != window) continue;
        if (!waiting->dialog) show(*waiting);
        return;
    }
}

void Sheets::show(Waiting& waiting) {
    QWidget* window = waiting.window;
    // A sheet of a window that was closed brings the window back: it would hang in the air.
    if (window && !window->isVisible()) window->show();
    QDialog* dialog = waiting.round.front()->makeDialog(window);
    waiting.dialog = dialog;
    dialog->setWindowModality(window ? Qt::WindowModal : Qt::NonModal);
    QObject::connect(dialog, &QDialog::finished, dialog, [this, dialog](int result) { finished(dialog, result); });
    dialog->show();
}

void Sheets::finished(QDialog* dialog, int result) {
    const auto found = std::find_if(waiting_.begin(), waiting_.end(),
                                    [dialog](const auto& waiting) { return waiting->dialog == dialog; });
    if (found == waiting_.end()) return;
    const std::unique_ptr<Waiting> waiting = std::move(*found);
    waiting_.erase(found);
    dialog->deleteLater();

    for (const auto& sheet : waiting->round)
        sheet->takeAnswer(*dialog, result);
    const QPointer<QWidget> window = waiting->window;
    for (const auto& sheet : waiting->round)
        sheet->complete();
    showNext(window);
}

} // namespace quillow
