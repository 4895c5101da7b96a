// The fakes of all ports that the delegates use, connected to each other.
#pragma once

#include "base/UndoManager.h"
#include "frame/MWAppSupportUtility.h"
#include "platform/Platform.h"
#include "tests/fakes/FakeAlerts.h"
#include "tests/fakes/FakeArchive.h"
#include "tests/fakes/FakeBookmarkStore.h"
#include "tests/fakes/FakeBundle.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/FakeConversionWatcher.h"
#include "tests/fakes/FakeDateFormatting.h"
#include "tests/fakes/FakeDefaults.h"
#include "tests/fakes/FakeDocuments.h"
#include "tests/fakes/FakeFileSystem.h"
#include "tests/fakes/FakeMainQueue.h"
#include "tests/fakes/FakeMenus.h"
#include "tests/fakes/FakePanels.h"
#include "tests/fakes/FakeSystemInfo.h"
#include "tests/fakes/FakeTermination.h"
#include "tests/fakes/FakeTextReaders.h"
#include "tests/fakes/FakeTimers.h"
#include "tests/fakes/FakeWorkspace.h"
#include "tests/fakes/Journal.h"
#include "util/MWValueTransformer.h"

namespace quillow {

struct FakePlatform {
    Journal journal;
    FakeAlerts alerts;
    FakeFileSystem files{journal};
    FakeArchive archive{files};
    FakeBookmarkStore bookmarks{files, journal};
    FakeBundle bundle;
    FakeClock clock;
    FakeConversionWatcher conversions;
    FakeDateFormatting dates;
    FakeDefaults defaults;
    FakeDocuments documents{journal};
    FakeMainQueue mainQueue;
    FakeMenus menus;
    FakePanels panels;
    FakeRtfTextReader rtf{journal};
    FakeHtmlTextReader html{journal};
    FakePdfTextReader pdf{journal};
    FakeSystemInfo systemInfo;
    FakeTermination termination;
    FakeTimers timers;
    FakeWorkspace workspace{files, journal};
    MWAppSupportUtility supportUtility{
        workspace,
        alerts,
        systemInfo,
        {QStringLiteral("mailto:support@example.org"), QStringLiteral("https://example.org/app"),
         QStringLiteral("https://example.org/"), QStringLiteral("https://example.org/store")}};
    ValueTransformerRegistry valueTransformers;
    UndoManager undoManager;
    UpdateCheck updateCheck = UpdateCheck::wired;

    [[nodiscard]] Platform platform() { return platform(defaults); }
    /// The platform with another defaults store, such as one that wraps the fake.
    [[nodiscard]] Platform platform(Defaults& store) {
        return {alerts, archive,   bookmarks,  bundle,      clock,     conversions, dates,
                store,  documents, files,      html,        mainQueue, menus,       panels,
                pdf,    rtf,       systemInfo, termination, timers,    workspace,   updateCheck};
    }
    /// From now on these fakes also record their calls in the journal.
    void recordEverything() {
        alerts.recordIn(journal);
        defaults.recordIn(journal);
        menus.recordIn(journal);
        panels.recordIn(journal);
    }
};

} // namespace quillow
