#include "platform/qt/dialogs/Sheets.h"

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
        if (waiting->hasEnded || waiting->window != window || !waiting->round.front()->asksTheSameAs(*sheet)) continue;
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
        if (!waiting->dialog && !waiting->hasEnded) show(*waiting);
        return;
    }
}

void Sheets::show(Waiting& waiting) {
    QWidget* window = waiting.window;
    // A sheet shows its closed window again: without the window it would float alone.
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
    Waiting& ended = **found;
    ended.hasEnded = true;
    dialog->deleteLater();

    // The window stays occupied until all are completed: a sheet that a handler begins is shown after that.
    const QPointer<QWidget> window = ended.window;
    ended.round.front()->takeAnswer(*dialog, result);
    for (const auto& sheet : ended.round)
        sheet->complete();
    std::erase_if(waiting_, [&ended](const auto& waiting) { return waiting.get() == &ended; });
    showNext(window);
}

} // namespace quillow
