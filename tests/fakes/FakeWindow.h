// A window in memory.
#pragma once

#include "platform/Window.h"
#include "tests/fakes/Journal.h"

#include <algorithm>

namespace quillow {

class FakeWindow final : public Window, public Recorded {
public:
    void makeKeyAndOrderFront() override {
        record(QStringLiteral("raised"));
        isVisible_ = true;
        ++raised_;
    }
    [[nodiscard]] bool isVisible() const override { return isVisible_; }
    void center() override {
        record(QStringLiteral("centred"));
        ++centered_;
    }
    void setTitle(const QString& title) override { title_ = title; }
    [[nodiscard]] Rect frame() const override { return frame_; }
    void setFrame(const Rect& frame, Animate animate) override {
        record(QStringLiteral("height ") + QString::number(frame.height));
        frame_ = frame;
        lastAnimation_ = animate;
        ++framesSet_;
    }
    void setMinSize(const Size& size) override {
        record(QStringLiteral("least height ") + QString::number(size.height));
        minSize_ = size;
        resizeIntoLimits();
    }
    void setMaxSize(const Size& size) override {
        record(QStringLiteral("largest height ") + QString::number(size.height));
        maxSize_ = size;
        resizeIntoLimits();
    }
    void setExcludedFromWindowsMenu(bool excluded) override {
        record(excluded ? QStringLiteral("out of the Window menu") : QStringLiteral("in the Window menu"));
        isExcludedFromWindowsMenu_ = excluded;
    }

    [[nodiscard]] int raised() const { return raised_; }
    [[nodiscard]] int centered() const { return centered_; }
    [[nodiscard]] const QString& title() const { return title_; }
    [[nodiscard]] Animate lastAnimation() const { return lastAnimation_; }
    /// How many times a frame was set. Resizes caused by the limits do not count.
    [[nodiscard]] int framesSet() const { return framesSet_; }
    [[nodiscard]] const Size& minSize() const { return minSize_; }
    [[nodiscard]] const Size& maxSize() const { return maxSize_; }
    void close() { isVisible_ = false; }
    [[nodiscard]] bool isExcludedFromWindowsMenu() const { return isExcludedFromWindowsMenu_; }

private:
    void resizeIntoLimits() {
        const double top = frame_.y + frame_.height;
        frame_.width = std::max(std::min(frame_.width, maxSize_.width), minSize_.width);
        frame_.height = std::max(std::min(frame_.height, maxSize_.height), minSize_.height);
        frame_.y = top - frame_.height;
    }

    bool isVisible_ = false;
    int raised_ = 0;
    int centered_ = 0;
    QString title_;
    Rect frame_;
    Size minSize_;
    Size maxSize_{1e6, 1e6};
    int framesSet_ = 0;
    Animate lastAnimation_ = Animate::no;
    bool isExcludedFromWindowsMenu_ = false;
};

} // namespace quillow
