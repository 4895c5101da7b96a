// Records panels. The test ends them.
#pragma once

#include "base/PathBytes.h"
#include "platform/Panels.h"
#include "tests/fakes/Journal.h"

#include <deque>
#include <utility>
#include <vector>

namespace quillow {

class FakePanels final : public Panels, public Recorded {
public:
    struct Shown {
        OpenPanel panel;
        Window* window = nullptr;
    };

    void beginSheetModalForWindow(const OpenPanel& panel, Window* window,
                                  std::function<void(const std::optional<QUrl>& url)> completionHandler) override {
        record(QStringLiteral("panel '") + panel.message + u'\'');
        shown_.push_back({panel, window});
        open_.push_back(std::move(completionHandler));
    }

    [[nodiscard]] const std::vector<Shown>& shown() const { return shown_; }
    [[nodiscard]] std::size_t openCount() const { return open_.size(); }

    /// Ends the oldest open panel with this choice.
    void choose(const QString& path) { end(fileUrlFromPath(path)); }
    void cancel() { end(std::nullopt); }

private:
    void end(const std::optional<QUrl>& url) {
        const auto completionHandler = std::move(open_.at(0));
        open_.pop_front();
        completionHandler(url);
    }

    std::vector<Shown> shown_;
    std::deque<std::function<void(const std::optional<QUrl>&)>> open_;
};

} // namespace quillow
