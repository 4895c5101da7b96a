// Alerts that are recorded and answered when the test says so.
#pragma once

#include "platform/Alerts.h"

#include <deque>
#include <utility>
#include <vector>

namespace quillow {

class FakeAlerts final : public Alerts {
public:
    struct Shown {
        Alert alert;
        Window* window = nullptr;
    };

    void beginSheetModalForWindow(const Alert& alert, Window* window,
                                  std::function<void(int returnCode)> completionHandler) override {
        shown_.push_back({alert, window});
        open_.push_back(std::move(completionHandler));
    }

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
};

} // namespace quillow
