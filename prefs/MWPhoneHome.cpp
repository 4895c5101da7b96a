#include "prefs/MWPhoneHome.h"

#include "base/Format.h"
#include "base/SettingKeys.h"
#include "frame/MWAppSupportUtility.h"
#include "platform/Alerts.h"
#include "platform/BackgroundQueue.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"
#include "platform/MainQueue.h"
#include "platform/PropertyListLoader.h"
#include "platform/Workspace.h"
#include "prefs/UpdateDecision.h"

#include <QUrl>

#include <cassert>
#include <utility>

namespace quillow {

namespace {

constexpr char16_t kLatestRelease[] = u"LRA";
constexpr char16_t kDownloadUrl[] = u"GFU";
constexpr char16_t kDownloadPageUrl[] = u"DPU";

QString key(const char16_t* name) {
    return QString::fromUtf16(name);
}

std::optional<PhoneHomePorts>& sharedPorts() {
    static std::optional<PhoneHomePorts> ports;
    return ports;
}

} // namespace

void MWPhoneHome::setSharedPorts(const PhoneHomePorts& ports) {
    sharedPorts().emplace(ports);
}

MWPhoneHome& MWPhoneHome::sharedPhoneHome() {
    assert(sharedPorts().has_value());
    static MWPhoneHome shared(*sharedPorts());
    return shared;
}

void MWPhoneHome::SetValueAppRelease(std::int64_t appRelease, const QString& appName, const QString& plistUrl1,
                                     const QString& plistUrl2, const QString& plistUrl3, const QString& plistUrl4) {
    setMyAppRelease(appRelease);
    setMyAppName(appName);
    setMyPlistUrl1(plistUrl1);
    setMyPlistUrl2(plistUrl2);
    setMyPlistUrl3(plistUrl3);
    setMyPlistUrl4(plistUrl4);
}

void MWPhoneHome::startupProcedure(Sender caller) {
    if (ports_.defaults.objectForKey(settings::kNotifyUpdate.string()).boolValue()) {
        dailyVerboseCheckForLastReleaseAvailable(caller);
        return;
    }
    dailySilentCheckForLastReleaseAvailable(caller);
    inCaseInviteToCheckForLastReleaseAvailable();
}

void MWPhoneHome::checkForLastReleaseAvailableWithNotify(Sender /*sender*/) {
    startCheck(Notify::yes, Notify::yes);
}

void MWPhoneHome::silentCheckForLastReleaseAvailable(Sender /*sender*/) {
    startCheck(Notify::no, Notify::no);
}

void MWPhoneHome::dailySilentCheckForLastReleaseAvailable(Sender /*sender*/) {
    if (lastCheckNotToday()) startCheck(Notify::no, Notify::no);
}

void MWPhoneHome::dailyVerboseCheckForLastReleaseAvailable(Sender /*sender*/) {
    if (lastCheckNotToday()) startCheck(Notify::yes, Notify::no);
}

void MWPhoneHome::setIsChekingUpdateSystem(bool value) {
    const bool changes = isChekingUpdateSystem_ != value;
    isChekingUpdateSystem_ = value;
    if (changes && checkHandler_) checkHandler_(value);
}

void MWPhoneHome::setCheckHandler(std::function<void(bool isChecking)> handler) {
    checkHandler_ = std::move(handler);
}

void MWPhoneHome::startCheck(Notify available, Notify notAvailable) {
    if (isChekingUpdateSystem_) return;
    checkForLastReleaseAvailableAndNotifyIsAvailable(available == Notify::yes, notAvailable == Notify::yes);
}

void MWPhoneHome::checkForLastReleaseAvailableAndNotifyIsAvailable(bool notifyIsAvailable, bool notAvailable) {
    setIsChekingUpdateSystem(true);
    ports_.backgroundQueue.addOperation([this, notifyIsAvailable, notAvailable] {
        auto list = getDictionaryFromTheNet();
        ports_.mainQueue.addOperation([this, list = std::move(list), notifyIsAvailable, notAvailable] {
            finishCheck(list, notifyIsAvailable, notAvailable);
        });
    });
}

void MWPhoneHome::finishCheck(const std::optional<Boxed::Dictionary>& list, bool notifyIsAvailable, bool notAvailable) {
    if (list) {
        setInPreferencesTodayWasChecked();
        switch (decideAboutUpdate(list->value(key(kLatestRelease)), myAppRelease(), notifyIsAvailable, notAvailable)) {
        case UpdateDecision::tellAvailable: notifyAboutUpdateAvailable(*list); break;
        case UpdateDecision::tellUpToDate: notifyAboutYourAppIsLastAvailable(*list); break;
        case UpdateDecision::tellNothing: break;
        }
    } else if (notAvailable) {
        notifyAboutFailedChechForUpdate();
    }
    setIsChekingUpdateSystem(false);
}

std::optional<Boxed::Dictionary> MWPhoneHome::getDictionaryFromTheNet() const {
    for (const auto* mirror : {&myPlistUrl1_, &myPlistUrl2_, &myPlistUrl3_, &myPlistUrl4_}) {
        const std::optional<QString> url = mirror->get();
        if (!url) continue;
        if (auto list = ports_.propertyListLoader.dictionaryWithContentsOfURL(*url)) return list;
    }
    return std::nullopt;
}

bool MWPhoneHome::lastCheckNotToday() const {
    const auto lastCheck = ports_.defaults.objectForKey(settings::kLastCheckDateForUpdate.string()).date();
    return !lastCheck || isOnAnotherDay(*lastCheck, ports_.clock.now());
}

void MWPhoneHome::setInPreferencesTodayWasChecked() {
    ports_.defaults.setObject(ports_.clock.now().toUTC(), settings::kLastCheckDateForUpdate.string());
    ports_.defaults.synchronize();
}

void MWPhoneHome::notifyAboutUpdateAvailable(const Boxed::Dictionary& list) {
    const QString own = MWAppSupportUtility::calcReleaseString(myAppRelease().longValue());
    const QString latest = MWAppSupportUtility::calcReleaseString(list.value(key(kLatestRelease)).longValue());
    const int answer = ports_.alerts.runModal(
        {stringWithFormat(QStringLiteral("There is an update available for %@"), {myAppName()}),
         stringWithFormat(
             QStringLiteral("You are using release: %@\nLatest available release is: %@\nVarnel recommends to "
                            "use always the latest release"),
             {own, latest}),
         AlertStyle::warning,
         {QStringLiteral("Download Update"), QStringLiteral("Download Page"), QStringLiteral("Later")}});
    if (answer == kAlertFirstButtonReturn) openUrlOf(list, kDownloadUrl);
    if (answer == kAlertSecondButtonReturn) openUrlOf(list, kDownloadPageUrl);
    setIsChekingUpdateSystem(false);
}

void MWPhoneHome::notifyAboutYourAppIsLastAvailable(const Boxed::Dictionary& list) {
    const int answer = ports_.alerts.runModal(
        {stringWithFormat(QStringLiteral("%@ is up to date"), {myAppName()}),
         QStringLiteral(
             "You are using the latest available release.\nIf you like, you can go to the Varnel download page to "
             "manually check it.\n\nVisit us and see all the macOS software we have available.\nWe are one of "
             "the developers in the world with more macOS apps!\n"),
         AlertStyle::warning,
         {QStringLiteral("Go to Varnel Download Page"), QStringLiteral("Close")}});
    if (answer == kAlertFirstButtonReturn) openUrlOf(list, kDownloadPageUrl);
    setIsChekingUpdateSystem(false);
}

void MWPhoneHome::notifyAboutFailedChechForUpdate(Sender /*ignored*/) {
    // The alert has one button, so its result does not matter.
    static_cast<void>(ports_.alerts.runModal(
        {stringWithFormat(QStringLiteral("%@ was not able to connect to the Varnel server"), {myAppName()}),
         QStringLiteral(
             "It was not possible to enstablish a internet connection on the net with the Varnel upgrade server. "
             "Check your internet connection or try later."),
         AlertStyle::warning,
         {QStringLiteral("OK")}}));
    setIsChekingUpdateSystem(false);
}

void MWPhoneHome::inCaseInviteToCheckForLastReleaseAvailable() {
    const auto lastCheck = ports_.defaults.objectForKey(settings::kLastCheckDateForUpdate.string()).date();
    if (lastCheck && !isLongAgo(*lastCheck, ports_.clock.now())) return;

    Alert invitation;
    invitation.buttons = {QStringLiteral("OK"), QStringLiteral("Varnel Site"), QStringLiteral("Cancel")};
    invitation.messageText =
        lastCheck
            ? stringWithFormat(QStringLiteral("It is more then %@ days this app doesn't report to you for updates.\n"
                                              "Would you like that %@ informs you now for any available update?"),
                               {QString::number(kDaysUntilInvitation), myAppName()})
            : stringWithFormat(QStringLiteral("Would you like that %@ informs you now for any available update?"),
                               {myAppName()});
    if (!ports_.defaults.objectForKey(settings::kNotifyUpdate.string()).boolValue()) {
        invitation.informativeText = QStringLiteral(
            "Suggested option is to have the update report enabled.\nUse the Preference Dialog to enable "
            "this feature.");
        invitation.alertStyle = AlertStyle::warning;
    }
    const int answer = ports_.alerts.runModal(invitation);
    if (answer == kAlertFirstButtonReturn) checkForLastReleaseAvailableWithNotify();
    if (answer == kAlertSecondButtonReturn) ports_.supportUtility.visitUs();
    // deliberate: cleared whichever button was pressed, even if the check just started still runs. A second check can
    // then start before the first has ended.
    setIsChekingUpdateSystem(false);
}

void MWPhoneHome::openUrlOf(const Boxed::Dictionary& list, const char16_t* name) const {
    // deliberate: the URL from the list is not checked here. The workspace refuses URLs that are not web addresses.
    ports_.workspace.openURL(QUrl(list.value(key(name)).string().value_or(QString()), QUrl::StrictMode));
}

} // namespace quillow
