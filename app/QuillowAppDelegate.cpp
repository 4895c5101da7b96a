#include "app/QuillowAppDelegate.h"

#include "base/Release.h"
#include "base/SettingKeys.h"
#include "platform/Defaults.h"
#include "platform/Window.h"
#include "prefs/MWPhoneHome.h"
#include "util/BookmarkTransformers.h"
#include "util/ComparisonTransformers.h"
#include "util/MWValueTransformer.h"

#include <memory>
#include <utility>

namespace quillow {

void QuillowAppDelegate::initialize(Defaults& defaults, const UpdateMirrors& mirrors) {
    // The windows' bindings read through the same store, so these are their initial values too.
    const auto registered = [](const auto& key) { return std::pair(key.string(), Boxed(*key.registeredDefault)); };
    defaults.registerDefaults({registered(settings::kNotifyUpdate), registered(settings::kLastVersionUsedToUpdatePref),
                               registered(settings::kDestinationType)});
    MWPhoneHome::sharedPhoneHome().SetValueAppRelease(kCurrentRelease, QString::fromUtf16(kApplicationName), mirrors[0],
                                                      mirrors[1], mirrors[2], mirrors[3]);
}

QuillowAppDelegate::QuillowAppDelegate(const Platform& platform, const MWAppSupportUtility& supportUtility,
                                       ValueTransformerRegistry& valueTransformers, UndoManager& undoManager)
    : MWDragDropBaseApp(platform, supportUtility, valueTransformers)
    , undoManager_(undoManager)
    , bookmark_(platform.bookmarkStore)
    , documentText_({platform.fileSystem, platform.rtfTextReader, platform.htmlTextReader, platform.pdfTextReader}) {
    valueTransformers.setValueTransformer(std::make_shared<MWValueNotEqualToRef>(1), QStringLiteral("valueIsNot1"));
    valueTransformers.setValueTransformer(std::make_shared<MWValueIsEqualToRef>(1), QStringLiteral("valueIs1"));
    valueTransformers.setValueTransformer(std::make_shared<MWPathFromBookmark>(platform.bookmarkStore),
                                          QStringLiteral("b2p"));
}

void QuillowAppDelegate::applicationWillFinishLaunching(const Notification&) {
    adjustBeforeFinishingLaunching();
    goSmallWindow();
    if (mainWindow_) mainWindow_->makeKeyAndOrderFront();
    setProperTextColor({Color::Source::controlText});
}

void QuillowAppDelegate::applicationDidFinishLaunching(const Notification& notification) {
    if (platform().updateCheck == UpdateCheck::wired) {
        const ActionSender itself;
        MWPhoneHome::sharedPhoneHome().startupProcedure(&itself);
    }
    setFinishedLaunching(true);
    adjustDestinationPath();
    checkStoredDestination();
    if (mainWindow_) mainWindow_->setExcludedFromWindowsMenu(true);
    loadAppDataFromDisk();
    if (mainWindow_) mainWindow_->makeKeyAndOrderFront();
    MWDragDropBaseApp::applicationDidFinishLaunching(notification);
}

void QuillowAppDelegate::applicationWillTerminate(const Notification& notification) {
    saveAppDataToDisk();
    MWDragDropBaseApp::applicationWillTerminate(notification);
}

bool QuillowAppDelegate::applicationShouldTerminateAfterLastWindowClosed(Sender) {
    return false;
}

QString QuillowAppDelegate::getUserGuideName() const {
    return QStringLiteral("Quillow User Guide");
}

QString QuillowAppDelegate::getUserGuideNameWithThisRelNum() const {
    return QStringLiteral("Quillow User Guide 1.5");
}

} // namespace quillow
