#include "frame/MWAppDelegateBase.h"

#include "base/Release.h"
#include "base/SettingKeys.h"
#include "base/StateTexts.h"
#include "frame/MWAppSupportUtility.h"
#include "platform/Defaults.h"
#include "platform/Menus.h"
#include "platform/Window.h"
#include "prefs/MWPhoneHome.h"
#include "prefs/MWPrefToolbarDelegate.h"
#include "util/ComparisonTransformers.h"
#include "util/MWValueTransformer.h"

#include <memory>

namespace quillow {

MWAppDelegateBase::MWAppDelegateBase(const Platform& platform, const MWAppSupportUtility& supportUtility,
                                     ValueTransformerRegistry& valueTransformers)
    : platform_(platform)
    , supportUtility_(supportUtility)
    , bookmark_(platform.bookmarkStore) {
    valueTransformers.setValueTransformer(std::make_shared<MWValueNotEqualToRef>(0), QStringLiteral("valueNot0"));
}

void MWAppDelegateBase::adjustBeforeFinishingLaunching() {
    if (platform_.updateCheck == UpdateCheck::wired) {
        platform_.menus.insertIntoApplicationMenu({QStringLiteral("Software Update…"), QString(),
                                                   [this](Sender sender) { checkForLastReleaseAvailable(sender); }},
                                                  1);
    }
    if (prefWindow_) prefWindow_->setExcludedFromWindowsMenu(true);
    // Only the empty path counts, not a missing one.
    if (platform_.defaults.objectForKey(settings::kStartupSelectedDocPath.string()) == Boxed(QStringLiteral(""))) {
        setStartupDocPathMessageString(QString::fromUtf16(kPleaseSelectFile));
        setStartupDocSpecified(false);
    }
}

void MWAppDelegateBase::checkForLastReleaseAvailable(Sender /*sender*/) {
    const ActionSender itself;
    MWPhoneHome::sharedPhoneHome().checkForLastReleaseAvailableWithNotify(&itself);
}

void MWAppDelegateBase::visitUs(Sender sender) {
    supportUtility_.visitUs(sender);
}

void MWAppDelegateBase::visitAppUrl(Sender sender) {
    supportUtility_.visitAppUrl(sender);
}

void MWAppDelegateBase::emailUs(Sender sender) {
    supportUtility_.emailUs(sender);
}

void MWAppDelegateBase::openPreferences(Sender /*sender*/) {
    if (!prefWindow_) return;
    if (!prefWindow_->isVisible()) prefWindow_->center();
    prefWindow_->makeKeyAndOrderFront();
}

void MWAppDelegateBase::openPreferencesAtSenderTagTab(Sender sender) {
    openPreferencesAtTab(sender ? sender->tag : 0);
}

void MWAppDelegateBase::openPreferencesAtTab(std::int32_t tab) {
    openPreferences();
    if (prefToolbarDelegate_) prefToolbarDelegate_->SetPanelTab(tab);
}

QString MWAppDelegateBase::getAppStantment() const {
    return QStringLiteral("Convert Pdf, Html, Rtf, Rtfd to standard text");
}

QString MWAppDelegateBase::appName() const {
    return QString::fromUtf16(kApplicationName);
}

QString MWAppDelegateBase::releaseString() const {
    return MWAppSupportUtility::calcReleaseString(kCurrentRelease);
}

} // namespace quillow
