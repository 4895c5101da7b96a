#include "platform/qt/dialogs/SheetHandle.h"

#include <utility>

namespace quillow {
namespace {

/// Replaces a sheet that was ended before it was shown. Finishes as soon as it is shown.
class EndedDialog final : public QDialog {
public:
    EndedDialog(QWidget* window, int result)
        : QDialog(window)
        , result_(result) {}
    void setVisible(bool isVisible) override {
        if (isVisible) QMetaObject::invokeMethod(this, "reject", Qt::QueuedConnection);
    }
    void reject() override { done(result_); }

private:
    int result_;
};

} // namespace

class SheetHandle::RoundSheet final : public Sheet {
public:
    explicit RoundSheet(std::shared_ptr<Round> round)
        : round_(std::move(round)) {}

    /// Each of these sheets has its own owner.
    [[nodiscard]] bool asksTheSameAs(const Sheet& /*other*/) const override { return false; }
    [[nodiscard]] QDialog* makeDialog(QWidget* window) const override {
        round_->isWaiting = false;
        if (round_->isOver) return new EndedDialog(window, round_->result);
        round_->dialog = round_->callbacks.makeDialog(window);
        return round_->dialog;
    }
    void takeAnswer(const QDialog& dialog, int result) override {
        // A dialog that was ended unseen has no answer.
        if (!round_->isOver && round_->callbacks.takeAnswer) round_->callbacks.takeAnswer(dialog, result);
        round_->isOver = true;
        round_->result = result;
    }
    void complete() override {
        if (const auto completed = std::exchange(round_->callbacks.completed, nullptr)) completed(round_->result);
    }

private:
    std::shared_ptr<Round> round_;
};

SheetHandle::~SheetHandle() {
    if (!round_) return;
    round_->callbacks.takeAnswer = nullptr;
    round_->callbacks.completed = nullptr;
    end(QDialog::Rejected);
}

void SheetHandle::begin(QWidget* window, const Callbacks& callbacks) {
    const bool isUp = round_ && !round_->isOver && (round_->isWaiting || round_->dialog);
    if (isUp) return;
    round_ = std::make_shared<Round>();
    round_->callbacks = callbacks;
    sheets_.begin(std::make_unique<RoundSheet>(round_), window);
}

void SheetHandle::end(int result) {
    if (!round_ || round_->isOver) return;
    if (round_->isWaiting) {
        round_->isOver = true;
        round_->result = result;
    } else if (round_->dialog) {
        round_->dialog->done(result);
    }
}

QDialog* SheetHandle::dialog() const {
    return round_ && !round_->isOver ? round_->dialog.data() : nullptr;
}

} // namespace quillow
