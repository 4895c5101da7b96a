// The Window port over a window that is made when it is first needed. Until then it is not visible.
#pragma once

#include "platform/qt/controls/QtWindow.h"

#include <functional>
#include <optional>
#include <utility>

namespace quillow {

class LazyWindow final : public WidgetWindow {
public:
    /// `make` is called once. The window outlives this object.
    explicit LazyWindow(std::function<QtWindow&()> make)
        : make_(std::move(make)) {}

    void makeKeyAndOrderFront() override { made().makeKeyAndOrderFront(); }
    [[nodiscard]] bool isVisible() const override { return window_ && window_->isVisible(); }
    void center() override { made().center(); }
    void setTitle(const QString& title) override { made().setTitle(title); }
    [[nodiscard]] Rect frame() const override { return made().frame(); }
    void setFrame(const Rect& frame, Animate animate) override { made().setFrame(frame, animate); }
    void setMinSize(const Size& size) override { made().setMinSize(size); }
    void setMaxSize(const Size& size) override { made().setMaxSize(size); }
    void setExcludedFromWindowsMenu(bool excluded) override {
        isExcluded_ = excluded;
        if (window_) window_->setExcludedFromWindowsMenu(excluded);
    }
    [[nodiscard]] QWidget& widget() const override { return made().widget(); }

private:
    QtWindow& made() const {
        if (!window_) {
            window_ = &make_();
            if (isExcluded_) window_->setExcludedFromWindowsMenu(*isExcluded_);
        }
        return *window_;
    }

    std::function<QtWindow&()> make_;
    mutable QtWindow* window_ = nullptr;
    std::optional<bool> isExcluded_;
};

} // namespace quillow
