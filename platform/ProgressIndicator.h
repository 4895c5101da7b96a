// Port: the spinning progress indicator of a window.
#pragma once

namespace quillow {

class ProgressIndicator {
public:
    virtual ~ProgressIndicator() = default;
    virtual void startAnimation() = 0;
    virtual void stopAnimation() = 0;
};

} // namespace quillow
