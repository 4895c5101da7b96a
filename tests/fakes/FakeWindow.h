// A window in memory.
#pragma once

#include "platform/Window.h"

namespace quillow {

class FakeWindow final : public Window {
public:
    void makeKeyAndOrderFront() override {
        isVisible_ = true;
        ++raised_;
    }
    [[nodiscard]] bool isVisible() const override { return isVisible_; }
    void center() override { ++centered_; }
    void setTitle(const QString& title) override { title_ = title; }
    [[nodiscard]] Rect frame() const override { return frame_; }
    void setFrame(const Rect& frame, Animate animate) override {
        frame_ = frame;
        lastAnimation_ = animate;
    }
    void setExcludedFromWindowsMenu(bool excluded) override { isExcludedFromWindowsMenu_ = excluded; }

    [[nodiscard]] int raised() const { return raised_; }
    [[nodiscard]] int centered() const { return centered_; }
    [[nodiscard]] const QString& title() const { return title_; }
    [[nodiscard]] Animate lastAnimation() const { return lastAnimation_; }
    [[nodiscard]] bool isExcludedFromWindowsMenu() const { return isExcludedFromWindowsMenu_; }

private:
    bool isVisible_ = false;
    int raised_ = 0;
    int centered_ = 0;
    QString title_;
    Rect frame_;
    Animate lastAnimation_ = Animate::no;
    bool isExcludedFromWindowsMenu_ = false;
};

} // namespace quillow
