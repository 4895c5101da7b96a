// Records alerts. The test answers them.
#pragma once

#include "platform/Alerts.h"
#include "tests/fakes/Journal.h"

#include <deque>
#include <utility>
#include <vector>

namespace quillow {

class FakeAlerts final : public Alerts, public Recorded {
public:
    struct Shown {
        Alert alert;
        Window* window = nullptr;
    };

    void beginSheetModalForWindow(const Alert& alert, Window* window,
                                  std::function<void(int returnCode)> completionHandler) override {
        record(QStringLiteral("sheet '") + alert.messageText + u'\'');
        shown_.push_back({alert, window});
        open_.push_back(std::move(completionHandler));
    }

    /// Returns the answer set by answerNextModal(), otherwise kAlertDismissed.
    [[nodiscard]] int runModal(const Alert& alert) override {
        record(QStringLiteral("alert '") + alert.messageText + u'\'');
        shown_.push_back({alert, nullptr});
        if (modalHandler_) modalHandler_();
        return std::exchange(modalAnswer_, kAlertDismissed);
    }
    void answerNextModal(int returnCode) { modalAnswer_ = returnCode; }

    /// Called while a modal alert is shown.
    void setModalHandler(std::function<void()> handler) { modalHandler_ = std::move(handler); }

    [[nodiscard]] const std::vector<Shown>& shown() const { return shown_; }
    [[nodiscard]] std::size_t openCount() const { return open_.size(); }

    /// Answers the alert that has been open longest.
    void answer(int returnCode) {
        const auto completionHandler = std::move(open_.at(0));
        open_.pop_front();
        if (completionHandler) completionHandler(returnCode);
    }

private:
    std::vector<Shown> shown_;
    std::deque<std::function<void(int)>> open_;
    std::function<void()> modalHandler_;
    int modalAnswer_ = kAlertDismissed;
};

} // namespace quillow
