// The Window port over a top-level widget.
#pragma once

#include "platform/Window.h"

#include <QObject>
#include <QRect>
#include <QVariantAnimation>
#include <QWidget>

#include <optional>

namespace quillow {

/// A widget whose window the Window menu leaves out has this property with the value true.
inline constexpr char kExcludedFromWindowsMenu[] = "quillowExcludedFromWindowsMenu";

/// Who keeps the user from making a window larger than its limits.
enum class LimitKeeper {
    windowSystem,
    /// The window itself: the window system gets no maximum height. Used under Wayland for two reasons. Qt 6.4 draws
    /// the decoration but does not count it in the limits that it sends; the compositor then reduces the height by
    /// that amount at each resize, and the window drifts. A compositor would also apply the limits to a maximised
    /// window.
    window,
};
[[nodiscard]] LimitKeeper limitKeeperOfWindowSystem();

/// Every Window in this process is one of these.
class WidgetWindow : public Window {
public:
    [[nodiscard]] virtual QWidget& widget() const = 0;
    /// The widget of a Window; null for null.
    [[nodiscard]] static QWidget* of(Window* window) {
        return window ? &static_cast<WidgetWindow*>(window)->widget() : nullptr;
    }
};

class QtWindow final : public QObject, public WidgetWindow {
public:
    /// The duration of an animated frame change.
    static constexpr int kAnimationMilliseconds = 150;

    explicit QtWindow(QWidget& widget, LimitKeeper limitKeeper = limitKeeperOfWindowSystem());

    void makeKeyAndOrderFront() override;
    [[nodiscard]] bool isVisible() const override { return widget_.isVisible(); }
    void center() override;
    void setTitle(const QString& title) override { widget_.setWindowTitle(title); }

    /// The origin is the bottom left corner of the primary screen. During an animation this is already the final
    /// frame.
    [[nodiscard]] Rect frame() const override;
    /// A hidden window is never animated. A height or width that the user cannot change stays fixed. A window that
    /// fills the screen ignores the frame if it keeps its own limits: its limits resize it when it no longer fills
    /// the screen. A visible window whose lower edge ends up below the screen's work area then moves up, unless the
    /// window system does not let it. When it shrinks again, it moves back down if nobody has moved it meanwhile.
    void setFrame(const Rect& frame, Animate animate) override;

    void setMinSize(const Size& size) override;
    void setMaxSize(const Size& size) override;

    void setExcludedFromWindowsMenu(bool excluded) override;

    [[nodiscard]] QWidget& widget() const override { return widget_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool fillsScreen() const { return widget_.isMaximized() || widget_.isFullScreen(); }
    void keepLimits();
    void setMaximumSizeOfWidget(const QSize& size);
    [[nodiscard]] QRect place() const;
    void moveTo(const QRect& place);
    void limitsChanged();
    void finishMoving();
    void riseIntoWorkArea();
    void applyLimits();
    [[nodiscard]] QSize leastSize() const { return minSize_.value_or(widget_.minimumSize()); }
    [[nodiscard]] QSize mostSize() const { return maxSize_.value_or(widget_.maximumSize()).expandedTo(leastSize()); }

    QWidget& widget_;
    const LimitKeeper limitKeeper_;
    QVariantAnimation animation_;
    std::optional<QSize> minSize_; ///< the limit that the logic has set; without one, the widget's own limit applies
    std::optional<QSize> maxSize_;
    bool limitsWait_ = false; ///< the limits are applied when the animation ends
    bool isMoving_ = false;
    bool mayRise_ = false; ///< the present animation sets a frame and does not move the window into the work area
    /// How far up the window has moved into the work area, and where it then was.
    struct {
        int distance = 0;
        QPoint corner;
    } rise_;
};

} // namespace quillow
