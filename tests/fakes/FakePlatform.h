// All fakes of the delegate chain's ports, wired to one another.
#pragma once

#include "base/UndoManager.h"
#include "platform/Platform.h"
#include "tests/fakes/FakeAlerts.h"
#include "tests/fakes/FakeBookmarkStore.h"
#include "tests/fakes/FakeBundle.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/FakeDateFormatting.h"
#include "tests/fakes/FakeDefaults.h"
#include "tests/fakes/FakeFileSystem.h"
#include "tests/fakes/FakeMainQueue.h"
#include "tests/fakes/FakePanels.h"
#include "tests/fakes/FakeTextReaders.h"
#include "tests/fakes/FakeWorkspace.h"
#include "tests/fakes/Journal.h"

namespace quillow {

struct FakePlatform {
    Journal journal;
    FakeAlerts alerts;
    FakeFileSystem files{journal};
    FakeBookmarkStore bookmarks{files, journal};
    FakeBundle bundle;
    FakeClock clock;
    FakeDateFormatting dates;
    FakeDefaults defaults;
    FakeMainQueue mainQueue;
    FakePanels panels;
    FakeRtfTextReader rtf{journal};
    FakeHtmlTextReader html{journal};
    FakePdfTextReader pdf{journal};
    FakeWorkspace workspace{files, journal};
    UndoManager undoManager;

    [[nodiscard]] Platform platform() {
        return {alerts, bookmarks, bundle, clock, dates, defaults,    files,
                html,   mainQueue, panels, pdf,   rtf,   undoManager, workspace};
    }
};

} // namespace quillow
