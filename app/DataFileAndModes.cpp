// The application data file, which saves the log and the window's mode between runs, and the two modes: a small and a
// big height of the main window.
#include "app/QuillowAppDelegate.h"
#include "base/Format.h"
#include "base/Release.h"
#include "frame/MWAppSupportUtility.h"
#include "platform/Archive.h"
#include "platform/Button.h"
#include "platform/FileSystem.h"
#include "platform/SystemInfo.h"
#include "platform/Window.h"

namespace quillow {
namespace {

// Keys of the archived dictionary.
constexpr char16_t kAppVersion[] = u"appversion";
constexpr char16_t kLogContent[] = u"logContent";
constexpr char16_t kBigWin[] = u"bigWin";

// deliberate: one above this release, so that every file of this release or an older one is read. Below the other, the
// stored mode is not trusted.
constexpr std::uint64_t kFirstNewerVersion = static_cast<std::uint64_t>(kCurrentRelease) + 1;
constexpr std::uint64_t kFirstVersionWithMode = 10300;

// The window's contents, in points.
constexpr double kSmallHeight = 255;
constexpr double kBigHeight = 580;
constexpr double kHeightDifference = kBigHeight - kSmallHeight;
constexpr double kMinimumWidth = 615;
constexpr double kMaximumWidth = 9999;

/// The entry under the key; nil when it is missing.
Boxed entryOf(const Boxed::Dictionary& entries, const char16_t* key) {
    return entries.value(QString::fromUtf16(key));
}

} // namespace

QString QuillowAppDelegate::pathForDataFile() const {
    // The home folder contains no tilde to expand.
    const QString folder =
        stringWithFormat(QStringLiteral("%@/%@"), {platform().systemInfo.homeDirectory(),
                                                   QStringLiteral("Library/Application Support/Quillow/")});
    if (!platform().fileSystem.fileExistsAtPath(folder, nullptr)) platform().fileSystem.createDirectory(folder);
    return folder + QStringLiteral("Quillow.qwldat");
}

void QuillowAppDelegate::saveAppDataToDisk() {
    Boxed::Dictionary entries{{QString::fromUtf16(kAppVersion), kCurrentRelease}};
    if (textLog_) entries.insert(QString::fromUtf16(kLogContent), textLog_->string());
    if (!bigWin().isNil()) entries.insert(QString::fromUtf16(kBigWin), bigWin());
    // deliberate: a failed write is not detected.
    platform().archive.archiveRootObject(entries, pathForDataFile());
}

void QuillowAppDelegate::loadAppDataFromDisk() {
    // 1. Without a file there is nothing to do.
    const QString path = pathForDataFile();
    if (!platform().fileSystem.fileExistsAtPath(path, nullptr)) return;
    // 2. The dictionary and its version. Anything else restores nothing and is kept.
    const auto entries = platform().archive.unarchiveObjectWithFile(path).dictionary();
    if (!entries) {
        platform().archive.putAside(path);
        return;
    }
    const auto version = static_cast<std::uint64_t>(entryOf(*entries, kAppVersion).longValue());
    // 3. A newer release's file is not read. An alert says so; its answer does not matter.
    if (version >= kFirstNewerVersion) {
        static_cast<void>(supportUtility().dataIn_ApplicationSupportFolder_CreatedWithANewerVersion());
        return;
    }
    // 4. The log. A value that is not a string counts as no log.
    setLogContent(entryOf(*entries, kLogContent).string().value_or(QString()));
    // 5. An old file's mode is not trusted.
    if (version < kFirstVersionWithMode) {
        setBigWin(false);
        return;
    }
    // 6. The mode: nil if there is none, otherwise the value as a boolean.
    const Boxed storedMode = entryOf(*entries, kBigWin);
    setBigWin(storedMode.isNil() ? Boxed() : Boxed(storedMode.boolValue()));
    if (myDiscloseButton_) myDiscloseButton_->setState(bigWin().boolValue() ? ButtonState::on : ButtonState::off);
    if (bigWin().boolValue())
        goBigWindow();
    else
        goSmallWindow();
}

void QuillowAppDelegate::setTextLog(LogView* textLog) {
    textLog_ = textLog;
    // The view shows `logContent` whenever it is set. Later lines of the view do not change `logContent`.
    logContentBinding_ =
        addObserver(QStringLiteral("logContent"), [this](const QString&, const KVObject&, const Change&) {
            replaceLog(logContent().value_or(QString()));
        });
}

void QuillowAppDelegate::goBigWindow(Sender) {
    if (!bigWin().boolValue()) {
        changeHeight(kBigHeight, -kHeightDifference);
        setBigWin(true);
    }
    limitHeight(kBigHeight);
}

void QuillowAppDelegate::goSmallWindow(Sender) {
    if (bigWin().boolValue()) {
        changeHeight(kSmallHeight, kHeightDifference);
        setBigWin(false);
    }
    limitHeight(kSmallHeight);
}

void QuillowAppDelegate::switchWindows(Sender) {
    if (bigWin().boolValue())
        goSmallWindow();
    else
        goBigWindow();
}

void QuillowAppDelegate::changeHeight(double height, double rise) {
    if (!window()) return;
    Rect frame = window()->frame();
    frame.y += rise;
    frame.height = height;
    window()->setFrame(frame, Animate::yes);
}

void QuillowAppDelegate::limitHeight(double height) {
    if (!window()) return;
    window()->setMaxSize({kMaximumWidth, height});
    window()->setMinSize({kMinimumWidth, height});
}

void QuillowAppDelegate::showMainWindow(Sender) {
    if (mainWindow_) mainWindow_->makeKeyAndOrderFront();
}

} // namespace quillow
