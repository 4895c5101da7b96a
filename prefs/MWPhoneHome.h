// The update checker: decides when to look for a newer release, fetches the release-information list from the first
// mirror that delivers one, and notifies the user. One instance serves the whole process.
#pragma once

#include "base/ActionSender.h"
#include "base/AtomicProperty.h"
#include "base/Boxed.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

namespace quillow {

class Alerts;
class BackgroundQueue;
class Clock;
class Defaults;
class MainQueue;
class MWAppSupportUtility;
class PropertyListLoader;
class Workspace;

/// The ports that the checker uses. They must outlive the checker.
struct PhoneHomePorts {
    Alerts& alerts;
    BackgroundQueue& backgroundQueue;
    Clock& clock;
    Defaults& defaults;
    MainQueue& mainQueue;
    const PropertyListLoader& propertyListLoader;
    Workspace& workspace;
    const MWAppSupportUtility& supportUtility;
};

class MWPhoneHome {
public:
    explicit MWPhoneHome(const PhoneHomePorts& ports)
        : ports_(ports) {} // selector: init
    MWPhoneHome(const MWPhoneHome&) = delete;
    MWPhoneHome& operator=(const MWPhoneHome&) = delete;

    /// Sets the ports of the shared instance. Call it once, before the first call of sharedPhoneHome().
    static void setSharedPorts(const PhoneHomePorts& ports); // selector: none
    /// The shared instance. The first call creates it, on any thread.
    [[nodiscard]] static MWPhoneHome& sharedPhoneHome();

    void SetValueAppRelease(std::int64_t appRelease, const QString& appName, const QString& plistUrl1,
                            const QString& plistUrl2, const QString& plistUrl3, const QString& plistUrl4);

    /// Looks for a newer release if the last check was not today. If update reports are switched off, also invites
    /// the user to check if the last check was long ago or never. Called at the start of a launch.
    void startupProcedure(Sender caller = {});

    // Each starts a check unless one is running. The daily ones start it only if the last check was not today.
    void checkForLastReleaseAvailableWithNotify(Sender sender = {});
    void silentCheckForLastReleaseAvailable(Sender sender = {});
    void dailySilentCheckForLastReleaseAvailable(Sender sender = {});
    void dailyVerboseCheckForLastReleaseAvailable(Sender sender = {});

    /// Runs one check: fetches the list in the background, then compares it and notifies the user on the main queue.
    void checkForLastReleaseAvailableAndNotifyIsAvailable(bool notifyIsAvailable, bool notAvailable);
    /// The list from the first mirror that delivers one. Tries the mirrors in order, each once. std::nullopt if all
    /// fail.
    [[nodiscard]] std::optional<Boxed::Dictionary> getDictionaryFromTheNet() const;
    /// True if the last check was on another calendar day in the user's time zone, or if there was none.
    [[nodiscard]] bool lastCheckNotToday() const;
    void setInPreferencesTodayWasChecked();
    void notifyAboutUpdateAvailable(const Boxed::Dictionary& list);
    void notifyAboutYourAppIsLastAvailable(const Boxed::Dictionary& list);
    void notifyAboutFailedChechForUpdate(Sender ignored = {});
    void inCaseInviteToCheckForLastReleaseAvailable();

    /// True while a check is in progress. Keeps the main thread from starting a second one; it is not a lock.
    [[nodiscard]] bool isChekingUpdateSystem() const { return isChekingUpdateSystem_; }
    void setIsChekingUpdateSystem(bool value);
    /// Called with true when a check begins and with false when it ends. At most one handler; an empty one removes it.
    void setCheckHandler(std::function<void(bool isChecking)> handler); // selector: none

    // The application's release and name, and the addresses of its release list. Any thread may read and set them. A
    // running check reads each value when it uses it.
    [[nodiscard]] Boxed myAppRelease() const { return myAppRelease_.get(); }
    void setMyAppRelease(const Boxed& appRelease) { myAppRelease_.set(appRelease); }
    [[nodiscard]] std::optional<QString> myAppName() const { return myAppName_.get(); }
    void setMyAppName(const std::optional<QString>& appName) { myAppName_.set(appName); }
    [[nodiscard]] std::optional<QString> myPlistUrl1() const { return myPlistUrl1_.get(); }
    void setMyPlistUrl1(const std::optional<QString>& url) { myPlistUrl1_.set(url); }
    [[nodiscard]] std::optional<QString> myPlistUrl2() const { return myPlistUrl2_.get(); }
    void setMyPlistUrl2(const std::optional<QString>& url) { myPlistUrl2_.set(url); }
    [[nodiscard]] std::optional<QString> myPlistUrl3() const { return myPlistUrl3_.get(); }
    void setMyPlistUrl3(const std::optional<QString>& url) { myPlistUrl3_.set(url); }
    [[nodiscard]] std::optional<QString> myPlistUrl4() const { return myPlistUrl4_.get(); }
    void setMyPlistUrl4(const std::optional<QString>& url) { myPlistUrl4_.set(url); }

private:
    enum class Notify { no, yes };
    void startCheck(Notify available, Notify notAvailable);
    void finishCheck(const std::optional<Boxed::Dictionary>& list, bool notifyIsAvailable, bool notAvailable);
    void openUrlOf(const Boxed::Dictionary& list, const char16_t* key) const;

    PhoneHomePorts ports_;
    bool isChekingUpdateSystem_ = false;
    std::function<void(bool isChecking)> checkHandler_;
    AtomicProperty<Boxed> myAppRelease_;
    AtomicProperty<std::optional<QString>> myAppName_;
    AtomicProperty<std::optional<QString>> myPlistUrl1_;
    AtomicProperty<std::optional<QString>> myPlistUrl2_;
    AtomicProperty<std::optional<QString>> myPlistUrl3_;
    AtomicProperty<std::optional<QString>> myPlistUrl4_;
};

} // namespace quillow
