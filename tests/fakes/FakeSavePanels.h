// Save panels that the test confirms or cancels.
#pragma once

#include "base/PathBytes.h"
#include "platform/SavePanel.h"

#include <utility>

namespace quillow {

class FakeSavePanels final : public SavePanels {
public:
    /// The state of the latest panel. It outlives the panel.
    struct State {
        AccessoryView* accessoryView = nullptr;
        QString name;
        QString nameAtOpening;
        std::optional<QUrl> url;
        Window* window = nullptr;
        bool isUp = false;
        std::function<void(int)> completionHandler;
    };

    [[nodiscard]] std::unique_ptr<SavePanel> makeSavePanel() override {
        ++made_;
        state_ = std::make_shared<State>();
        return std::make_unique<Panel>(state_);
    }

    [[nodiscard]] int made() const { return made_; }
    [[nodiscard]] const State& last() const { return *state_; }

    // The actions of the user.
    void type(const QString& name) { state_->name = name; }
    void confirm(const QString& path) {
        state_->url = fileUrlFromPath(path);
        end(kSavePanelConfirmed);
    }
    void confirmWithoutURL() { end(kSavePanelConfirmed); }
    void cancel() { end(kSavePanelCancelled); }

private:
    class Panel final : public SavePanel {
    public:
        explicit Panel(std::shared_ptr<State> state)
            : state_(std::move(state)) {}
        Panel(const Panel&) = delete;
        Panel& operator=(const Panel&) = delete;
        ~Panel() override {
            state_->isUp = false;
            state_->completionHandler = nullptr;
        }
        void setAccessoryView(AccessoryView* view) override { state_->accessoryView = view; }
        [[nodiscard]] QString nameFieldStringValue() const override { return state_->name; }
        void setNameFieldStringValue(const QString& name) override { state_->name = name; }
        [[nodiscard]] std::optional<QUrl> URL() const override { return state_->url; }
        void beginSheetModalForWindow(Window* window, std::function<void(int result)> completionHandler) override {
            state_->window = window;
            state_->isUp = true;
            state_->nameAtOpening = state_->name;
            state_->completionHandler = std::move(completionHandler);
        }

    private:
        std::shared_ptr<State> state_;
    };

    void end(int result) {
        state_->isUp = false;
        if (const auto handler = std::exchange(state_->completionHandler, nullptr)) handler(result);
    }

    std::shared_ptr<State> state_;
    int made_ = 0;
};

} // namespace quillow
