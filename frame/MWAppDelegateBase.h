// The root of the delegate classes, with the features that all applications share: name and release, the menu entry
// of the update check, and the preferences window. StartupDocument.cpp and UserGuide.cpp implement the parts of their
// names.
#pragma once

#include "base/ActionSender.h"
#include "base/KVObject.h"
#include "frame/MWBookmark.h"
#include "platform/Platform.h"

#include <QString>
#include <QStringList>
#include <QUrl>

#include <cstdint>
#include <optional>

namespace quillow {

class Menu;
class MWAppSupportUtility;
class MWPrefToolbarDelegate;
class ValueTransformerRegistry;
class Window;

/// The argument of a life-cycle event. The delegates do not use it.
struct Notification {};

class MWAppDelegateBase : public KVObject {
public:
    /// Registers the transformer "valueNot0".
    MWAppDelegateBase(const Platform& platform, const MWAppSupportUtility& supportUtility,
                      ValueTransformerRegistry& valueTransformers); // selector: init

    /// Called by the derived delegate before launch has finished.
    void adjustBeforeFinishingLaunching();

    // The startup document: what the application does at launch. A document-based application calls
    // `executeDocumentStartupAsInPref` once after launch; this product does not, but its preferences keep the settings.
    [[nodiscard]] bool applicationShouldOpenUntitledFile(Sender application = {});
    void newDocIfNoDocOpened(Sender timer = {});
    void openDialogIfNoDocOpened(Sender timer = {});
    void executeDocumentStartupAsInPref(Sender sender = {});
    void showInFinderStartupDoc(Sender sender = {});
    void testOpenStartupDoc(Sender sender = {});
    void selectStartupDoc(Sender sender = {});
    void clearStartupSelectedDoc(Sender sender = {});

    void checkForLastReleaseAvailable(Sender sender = {});
    void visitUs(Sender sender = {});
    void visitAppUrl(Sender sender = {});
    void emailUs(Sender sender = {});

    void openPreferences(Sender sender = {});
    /// Opens the preferences at the pane that the sender's tag numbers.
    void openPreferencesAtSenderTagTab(Sender sender);
    void openPreferencesAtTab(std::int32_t tab);

    /// A one-line description of the product.
    [[nodiscard]] QString getAppStantment() const;

    // The user guide: a PDF in the program's resources. It is copied into the user's folder and opened there.
    [[nodiscard]] QString getUserGuideDirPath() const;
    [[nodiscard]] QString getUserGuideFinalPath() const;
    void openUserGuide(Sender sender = {});

    // Hooks.
    virtual void openAppStorePage(Sender /*sender*/ = {}) {}
    virtual void openAppStoreList(Sender /*sender*/ = {}) {}
    virtual void appendMasHelp(Sender /*sender*/ = {}) {}
    virtual void UseFrontDocumentAsStartupDoc(Sender /*sender*/ = {}) {}
    /// File-name extensions; a single empty string allows any file.
    [[nodiscard]] virtual QStringList allowedStartupDocExtensions() const;
    [[nodiscard]] virtual QString getUserGuideName() const;
    [[nodiscard]] virtual QString getUserGuideNameWithThisRelNum() const;

    [[nodiscard]] QString appName() const;
    [[nodiscard]] QString releaseString() const;
    /// True while a document is being opened; the startup actions 0 and 1 then do nothing.
    [[nodiscard]] bool documentIsOpening() const { return documentIsOpening_; }
    void setDocumentIsOpening(bool value) { documentIsOpening_ = value; }
    /// deliberate: set by a derived delegate when it has finished launching. For its own use; nothing here reads it.
    [[nodiscard]] bool finishedLaunching() const { return finishedLaunching_; }
    void setFinishedLaunching(bool value) { finishedLaunching_ = value; }
    /// deliberate: set by applications that are started to serve a service request; this product never is.
    [[nodiscard]] bool usingAServices() const { return usingAServices_; }
    void setUsingAServices(bool value) { usingAServices_ = value; }
    /// The status line below the choice of the startup document.
    [[nodiscard]] std::optional<QString> StartupDocPathMessageString() const {
        return StartupDocPathMessageString_.get();
    }
    void setStartupDocPathMessageString(const std::optional<QString>& text) { StartupDocPathMessageString_.set(text); }
    [[nodiscard]] Boxed StartupDocSpecified() const { return StartupDocSpecified_.get(); }
    void setStartupDocSpecified(const Boxed& value) { StartupDocSpecified_.set(value); }

    // Outlets. Each may be null; calls to it then have no effect.
    [[nodiscard]] Window* prefWindow() const { return prefWindow_; }
    void setPrefWindow(Window* prefWindow) { prefWindow_ = prefWindow; }
    [[nodiscard]] MWPrefToolbarDelegate* prefToolbarDelegate() const { return prefToolbarDelegate_; }
    void setPrefToolbarDelegate(MWPrefToolbarDelegate* delegate) { prefToolbarDelegate_ = delegate; }
    /// deliberate: the Help menu, for derived applications; nothing here uses it.
    [[nodiscard]] Menu* myHelpMenu() const { return myHelpMenu_; }
    void setMyHelpMenu(Menu* myHelpMenu) { myHelpMenu_ = myHelpMenu; }

protected:
    [[nodiscard]] const Platform& platform() const { return platform_; }
    [[nodiscard]] const MWAppSupportUtility& supportUtility() const { return supportUtility_; } // selector: none

private:
    void openChosenStartupDocument();
    void tellStartupDocumentIsUnspecified();
    void tellStartupDocumentIsUnreachable();
    void offerPreferences(const QString& messageText, const QString& informativeText);
    [[nodiscard]] std::optional<QUrl> startupDocumentUrl();
    [[nodiscard]] std::optional<QUrl> synchroniseStartupDocPath();
    void openDocumentUnderAccess(const QUrl& url);

    Platform platform_;
    const MWAppSupportUtility& supportUtility_;
    MWBookmark bookmark_;
    KVProperty<std::optional<QString>> StartupDocPathMessageString_{*this, u"StartupDocPathMessageString", QString()};
    KVProperty<Boxed> StartupDocSpecified_{*this, u"StartupDocSpecified", true};
    bool documentIsOpening_ = false;
    bool finishedLaunching_ = false;
    bool usingAServices_ = false;
    Window* prefWindow_ = nullptr;
    MWPrefToolbarDelegate* prefToolbarDelegate_ = nullptr;
    Menu* myHelpMenu_ = nullptr;
};

} // namespace quillow
