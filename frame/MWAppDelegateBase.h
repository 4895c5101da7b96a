// The root of the delegate classes: what every application of the frame knows about itself.
#pragma once

#include "base/KVObject.h"
#include "platform/Platform.h"

#include <QString>

namespace quillow {

class Window;

/// What the platform tells with a life-cycle event; the delegates do not look at it.
struct Notification {};

class MWAppDelegateBase : public KVObject {
public:
    explicit MWAppDelegateBase(const Platform& platform)
        : platform_(platform) {} // selector: init

    [[nodiscard]] QString appName() const;
    [[nodiscard]] QString releaseString() const;

    // Outlets. An outlet that is null takes what it is told without effect.
    [[nodiscard]] Window* prefWindow() const { return prefWindow_; }
    void setPrefWindow(Window* prefWindow) { prefWindow_ = prefWindow; }

protected:
    [[nodiscard]] const Platform& platform() const { return platform_; }

private:
    Platform platform_;
    Window* prefWindow_ = nullptr;
};

} // namespace quillow
