// The shared update checker with fakes as its ports. The checker and the fakes live as long as the process.
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

    /// The checker without a running check. It gets its ports on first use, so a test must call this first.
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
    /// Runs the download and the operations that follow it.
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
