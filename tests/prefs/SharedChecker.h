// The shared update checker over fakes. It lives as long as the process, and so do they.
#pragma once

#include "prefs/MWPhoneHome.h"
#include "tests/fakes/FakeBackgroundQueue.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/FakePropertyListLoader.h"

namespace quillow {

class SharedChecker {
public:
    FakePlatform platform;
    FakeBackgroundQueue background;
    FakePropertyListLoader loader;

    /// With no check under way. The checker takes its ports when it is first asked for, so a test asks here first.
    [[nodiscard]] static SharedChecker& idle() {
        static SharedChecker shared;
        while (shared.background.queuedCount() > 0)
            shared.background.runNext();
        shared.platform.mainQueue.runAll();
        shared.platform.defaults.setObject({}, QStringLiteral("lastCheckDateForUpdate"));
        shared.checker().setIsChekingUpdateSystem(false);
        return shared;
    }

    [[nodiscard]] MWPhoneHome& checker() const { return MWPhoneHome::sharedPhoneHome(); }
    /// Lets the download and what follows it run.
    void finishCheck() {
        background.runNext();
        platform.mainQueue.runAll();
    }

private:
    SharedChecker() {
        MWPhoneHome::setSharedPorts({platform.alerts, background, platform.clock, platform.defaults, platform.mainQueue,
                                     loader, platform.workspace, platform.supportUtility});
    }
};

} // namespace quillow
