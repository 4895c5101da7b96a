#include "platform/qt/dialogs/QtAlerts.h"

#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/dialogs/AlertBox.h"

#include <QApplication>

#include <utility>

namespace quillow {
namespace {

class AlertSheet final : public Sheet {
public:
    AlertSheet(const Alert& alert, std::function<void(int)> handler)
        : alert_(alert)
        , handler_(std::move(handler))
        , returnCode_(neutralReturnCode(alert)) {}

    [[nodiscard]] bool asksTheSameAs(const Sheet& other) const override {
        const auto* alert = dynamic_cast<const AlertSheet*>(&other);
        return alert && alert->alert_ == alert_;
    }
    [[nodiscard]] QDialog* makeDialog(QWidget* window) const override { return new AlertBox(alert_, window); }
    void takeAnswer(const QDialog& dialog, int) override {
        returnCode_ = static_cast<const AlertBox&>(dialog).returnCode();
    }
    void complete() override {
        if (handler_) handler_(returnCode_);
    }

private:
    Alert alert_;
    std::function<void(int)> handler_;
    int returnCode_;
};

} // namespace

void QtAlerts::beginSheetModalForWindow(const Alert& alert, Window* window,
                                        std::function<void(int returnCode)> completionHandler) {
    sheets_.begin(std::make_unique<AlertSheet>(alert, std::move(completionHandler)), WidgetWindow::of(window));
}

int QtAlerts::runModal(const Alert& alert) {
    AlertBox box(alert, QApplication::activeWindow());
    box.setWindowModality(Qt::ApplicationModal);
    const QtMainQueue::Suspension suspension(mainQueue_);
    box.exec();
    return box.returnCode();
}

} // namespace quillow
