// A window of the program as the logic sees it, over the widget that is one. Every Window of this process is a QtWindow.
#pragma once

#include "platform/Window.h"

#include <QWidget>

namespace quillow {

class QtWindow final : public Window {
public:
    explicit QtWindow(QWidget& widget)
        : widget_(widget) {}

    void makeKeyAndOrderFront() override;
    [[nodiscard]] QWidget& widget() const { return widget_; }
    /// The widget of a window that the logic hands back; null for null.
    [[nodiscard]] static QWidget* widgetOf(Window* window) {
        return window ? &static_cast<QtWindow*>(window)->widget() : nullptr;
    }

private:
    QWidget& widget_;
};

} // namespace quillow
