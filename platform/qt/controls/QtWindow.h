// A window of the program as the logic sees it, over the widget that is one. Every Window of this process is a QtWindow.
#pragma once

#include "platform/Window.h"

#include <QObject>
#include <QRect>
#include <QVariantAnimation>
#include <QWidget>

#include <optional>

namespace quillow {

/// The widgets of windows that the Window menu leaves out carry this property with the value true.
inline constexpr char kExcludedFromWindowsMenu[] = "quillowExcludedFromWindowsMenu";

/// Who keeps the user from making a window larger than its limits.
enum class LimitKeeper {
    windowSystem,
    /// The window itself: the window system is told no largest height. Under Wayland, since Qt 6.4 leaves the decoration that it
    /// draws out of the limits that it tells (the compositor then takes that much off the height at each resize, and the window
    /// drifts), and a compositor would hold a maximised window to them.
    window,
};
[[nodiscard]] LimitKeeper limitKeeperOfWindowSystem();

class QtWindow final : public QObject, public Window {
public:
    /// How long a change of the frame takes that is to be seen.
    static constexpr int kAnimationMilliseconds = 150;

    explicit QtWindow(QWidget& widget, LimitKeeper limitKeeper = limitKeeperOfWindowSystem());

    void makeKeyAndOrderFront() override;
    [[nodiscard]] bool isVisible() const override { return widget_.isVisible(); }
    void center() override;
    void setTitle(const QString& title) override { widget_.setWindowTitle(title); }

    /// The bottom left corner of the primary screen is the origin. While a frame is on its way this is already the one that
    /// the window is going to have.
    [[nodiscard]] Rect frame() const override;
    /// A window that is not to be seen is never animated. A height or width that the user cannot change stays so. One that
    /// fills the screen, and keeps its limits itself, takes the new height when it fills the screen no more.
    void setFrame(const Rect& frame, Animate animate) override;

    void setMinSize(const Size& size) override;
    void setMaxSize(const Size& size) override;

    void setExcludedFromWindowsMenu(bool excluded) override;

    [[nodiscard]] QWidget& widget() const { return widget_; }
    /// The widget of a window that the logic hands back; null for null.
    [[nodiscard]] static QWidget* widgetOf(Window* window) {
        return window ? &static_cast<QtWindow*>(window)->widget() : nullptr;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool fillsScreen() const { return widget_.isMaximized() || widget_.isFullScreen(); }
    void keepLimits();
    void setMaximumSizeOfWidget(const QSize& size);
    [[nodiscard]] QRect place() const;
    void moveTo(const QRect& place);
    void limitsChanged();
    void applyLimits();
    [[nodiscard]] QSize leastSize() const { return minSize_.value_or(widget_.minimumSize()); }
    [[nodiscard]] QSize mostSize() const { return maxSize_.value_or(widget_.maximumSize()).expandedTo(leastSize()); }

    QWidget& widget_;
    const LimitKeeper limitKeeper_;
    QVariantAnimation animation_;
    std::optional<QSize> minSize_; ///< what the logic has set; a window without limits keeps its widget's
    std::optional<QSize> maxSize_;
    bool limitsWait_ = false; ///< for the end of the animation
    bool isMoving_ = false;
};

} // namespace quillow
