// The adapters of the desktop, in dependency order: each uses only those declared before it.
#pragma once

#include "app/Configuration.h"
#include "base/UndoManager.h"
#include "frame/MWAppSupportUtility.h"
#include "platform/Platform.h"
#include "platform/Termination.h"
#include "platform/engine/EngineTextReaders.h"
#include "platform/engine/IsolatedEngine.h"
#include "platform/qt/dialogs/QtAlerts.h"
#include "platform/qt/dialogs/QtPanels.h"
#include "platform/qt/files/AccessRegistry.h"
#include "platform/qt/files/GroupedFileSystem.h"
#include "platform/qt/files/QtBookmarkStore.h"
#include "platform/qt/files/QtBundle.h"
#include "platform/qt/files/QtDocuments.h"
#include "platform/qt/files/QtFileSystem.h"
#include "platform/qt/files/QtWorkspace.h"
#include "platform/qt/life/BackgroundTextReaders.h"
#include "platform/qt/services/FetchProcess.h"
#include "platform/qt/services/IcuDateFormatting.h"
#include "platform/qt/services/QtBackgroundQueue.h"
#include "platform/qt/services/QtClock.h"
#include "platform/qt/services/QtImageCodec.h"
#include "platform/qt/services/QtMainQueue.h"
#include "platform/qt/services/QtPropertyListLoader.h"
#include "platform/qt/services/QtSystemInfo.h"
#include "platform/qt/services/QtTimers.h"
#include "platform/qt/storage/ObservedDefaults.h"
#include "platform/qt/storage/QtArchive.h"
#include "platform/qt/storage/QtDefaults.h"
#include "platform/qt/storage/QtTextUnarchiver.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/qt/windows/QtLogView.h"
#include "platform/qt/windows/QtMenus.h"
#include "program/ConversionReport.h"
#include "util/MWValueTransformer.h"

#include <functional>

namespace quillow {

struct Adapters {
    static constexpr UpdateCheck kUpdateCheck =
        configuration::kUpdateCheckIsWired ? UpdateCheck::wired : UpdateCheck::leftOut;

    Adapters(QtMainQueue& mainQueueOfProgram, const Termination& terminationOfProgram);
    Adapters(const Adapters&) = delete;
    Adapters& operator=(const Adapters&) = delete;

    /// The ports of the delegate chain.
    [[nodiscard]] Platform platform();

    QtMainQueue& mainQueue;
    const Termination& termination;
    AccessRegistry access;
    Sheets sheets;
    QtAlerts alerts{sheets, mainQueue};
    QtWorkspace workspace;
    QtPanels panels{sheets, workspace};
    QtBookmarkStore bookmarkStore{access};
    QtBundle bundle{QtBundle::standardResourceFolder()};
    QtClock clock;
    IcuDateFormatting dateFormatting;
    QtDefaults storedDefaults{QtDefaults::standardFilePath()};
    ObservedDefaults defaults{storedDefaults};
    QtFileSystem fileSystem{access};
    GroupedFileSystem fileSystemOfConversions{fileSystem, mainQueue};
    QtArchive archive{fileSystem};
    QtSystemInfo systemInfo;
    QtTimers timers;
    UndoManager undoManager;
    QtImageCodec imageCodec;
    QtTextUnarchiver textUnarchiver;
    ValueTransformerRegistry valueTransformers;
    MainWindow window{alerts, workspace};
    QtDocuments documents{window.window()};
    QtMenus menus{window.applicationMenu()};
    QtMenu helpMenu{window.helpMenu()};

    ConversionReport conversionReport{mainQueue};
    IsolatedEngine engine;
    DocumentExtractor extractor;
    EngineRtfTextReader rtfReader{extractor};
    EngineHtmlTextReader htmlReader{extractor};
    EnginePdfTextReader pdfReader{extractor};
    BackgroundWork backgroundWork{&window.spinner()};
    BackgroundRtfTextReader backgroundRtfReader{rtfReader, backgroundWork};
    BackgroundHtmlTextReader backgroundHtmlReader{htmlReader, backgroundWork};
    BackgroundPdfTextReader backgroundPdfReader{pdfReader, backgroundWork};

    // For the update checker. The queue comes last: its downloads end before the adapters that they report to are
    // destroyed.
    MWAppSupportUtility supportUtility;
    FetchProcess fetch{FetchProcess::standardProgram()};
    QtPropertyListLoader propertyListLoader;
    QtBackgroundQueue backgroundQueue;
};

} // namespace quillow
