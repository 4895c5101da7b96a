// The update check: when it runs, which mirrors it tries, and how it notifies the user.
#include "prefs/MWPhoneHome.h"

#include "prefs/UpdateDecision.h"
#include "tests/fakes/FakeBackgroundQueue.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/FakePropertyListLoader.h"

#include <QSet>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace quillow {

namespace {

const QString kNotifyUpdate = QStringLiteral("notifyUpdate");
const QString kLastCheck = QStringLiteral("lastCheckDateForUpdate");

QString mirror(int number) {
    return QStringLiteral("https://example.org/mirror") + QString::number(number);
}

Boxed::Dictionary releaseList(std::int64_t latest) {
    return {{QStringLiteral("LRA"), latest},
            {QStringLiteral("GFU"), QStringLiteral("https://example.org/get")},
            {QStringLiteral("DPU"), QStringLiteral("https://example.org/page")}};
}

class PhoneHome : public testing::Test {
protected:
    PhoneHome() {
        phoneHome.SetValueAppRelease(10501, QStringLiteral("Quillow"), mirror(1), mirror(2), mirror(3), mirror(4));
        fake.clock.set(now);
        fake.defaults.registerDefaults({{kNotifyUpdate, true}});
    }

    /// Runs the download and the operations that follow it.
    void finish() {
        background.runNext();
        fake.mainQueue.runAll();
    }
    [[nodiscard]] std::size_t alertCount() const { return fake.alerts.shown().size(); }
    [[nodiscard]] const Alert& lastAlert() const { return fake.alerts.shown().back().alert; }
    [[nodiscard]] Boxed lastCheck() const { return fake.defaults.objectForKey(kLastCheck); }
    void wasChecked(const QDateTime& when) { fake.defaults.setObject(when, kLastCheck); }

    const QDateTime now{QDate(2026, 3, 10), QTime(12, 0), QTimeZone("Europe/Berlin")};
    FakePlatform fake;
    FakeBackgroundQueue background;
    FakePropertyListLoader loader;
    MWPhoneHome phoneHome{{fake.alerts, background, fake.clock, fake.defaults, fake.mainQueue, loader, fake.workspace,
                           fake.supportUtility}};
};

} // namespace

TEST(UpdateDecision, tellsByReleaseAndFlags) {
    struct Row {
        Boxed latest;
        bool notifyAvailable;
        bool notifyNotAvailable;
        UpdateDecision decision;
    };
    const Row rows[] = {
        {10502, true, true, UpdateDecision::tellAvailable},
        {10502, false, true, UpdateDecision::tellNothing},
        {10501, true, true, UpdateDecision::tellUpToDate},
        {10501, true, false, UpdateDecision::tellNothing},
        {10400, true, true, UpdateDecision::tellUpToDate},
        {10600, true, false, UpdateDecision::tellAvailable},
        {10600, false, false, UpdateDecision::tellNothing},
        {Boxed(), true, true, UpdateDecision::tellNothing},
        {std::int64_t{1} << 40, true, false, UpdateDecision::tellAvailable},
    };
    for (const Row& row : rows)
        EXPECT_EQ(decideAboutUpdate(row.latest, 10501, row.notifyAvailable, row.notifyNotAvailable), row.decision)
            << row.latest.longValue();
}

TEST(UpdateDecision, countsDaysByTheCalendarOfTheUsersZone) {
    const QTimeZone berlin("Europe/Berlin");
    const QDateTime lateEvening(QDate(2026, 3, 9), QTime(23, 59), berlin);
    const QDateTime afterMidnight(QDate(2026, 3, 10), QTime(0, 1), berlin);
    EXPECT_TRUE(isOnAnotherDay(lateEvening, afterMidnight));
    EXPECT_TRUE(isOnAnotherDay(lateEvening.toUTC(), afterMidnight)) << "stored in UTC, where it is the same day";
    EXPECT_FALSE(isOnAnotherDay(afterMidnight.toUTC(), afterMidnight)) << "in UTC it is still the day before";
    EXPECT_FALSE(isOnAnotherDay(afterMidnight, QDateTime(QDate(2026, 3, 10), QTime(23, 59), berlin)));
    EXPECT_TRUE(isOnAnotherDay(afterMidnight, QDateTime(QDate(2027, 3, 10), QTime(0, 1), berlin)));
}

TEST(UpdateDecision, findsNinetyDaysLongOnlyWhenTheyAreOver) {
    const QDateTime now(QDate(2026, 3, 10), QTime(12, 0), Qt::UTC);
    EXPECT_FALSE(isLongAgo(now.addSecs(-7776000), now));
    EXPECT_FALSE(isLongAgo(now.addSecs(-7775999), now));
    EXPECT_TRUE(isLongAgo(now.addSecs(-7776001), now));
    EXPECT_FALSE(isLongAgo(now.addSecs(5), now));
}

TEST_F(PhoneHome, downloadsInTheBackgroundAndTellsOnTheMainQueue) {
    loader.serve(mirror(1), releaseList(10600));
    phoneHome.checkForLastReleaseAvailableWithNotify();
    EXPECT_TRUE(phoneHome.isChekingUpdateSystem());
    EXPECT_TRUE(loader.asked().isEmpty());
    background.runNext();
    EXPECT_EQ(alertCount(), 0U);
    fake.alerts.answerNextModal(1002);
    fake.mainQueue.runAll();
    EXPECT_EQ(alertCount(), 1U);
    EXPECT_FALSE(phoneHome.isChekingUpdateSystem());
}

TEST_F(PhoneHome, tellsOfAnUpdate) {
    loader.serve(mirror(1), releaseList(10600));
    phoneHome.checkForLastReleaseAvailableWithNotify();
    fake.alerts.answerNextModal(1002);
    finish();
    const Alert expected{
        QStringLiteral("There is an update available for Quillow"),
        QStringLiteral("You are using release: 1.5.1\nLatest available release is: 1.6\nVarnel recommends "
                       "to use always the latest release"),
        AlertStyle::warning,
        {QStringLiteral("Download Update"), QStringLiteral("Download Page"), QStringLiteral("Later")}};
    EXPECT_EQ(lastAlert(), expected);
    EXPECT_TRUE(fake.workspace.openedUrls().isEmpty());
}

TEST_F(PhoneHome, opensTheDownloadOrItsPage) {
    loader.serve(mirror(1), releaseList(10600));
    phoneHome.checkForLastReleaseAvailableWithNotify();
    fake.alerts.answerNextModal(kAlertFirstButtonReturn);
    finish();
    phoneHome.checkForLastReleaseAvailableWithNotify();
    fake.alerts.answerNextModal(kAlertSecondButtonReturn);
    finish();
    EXPECT_EQ(fake.workspace.openedUrls(),
              (QStringList{QStringLiteral("https://example.org/get"), QStringLiteral("https://example.org/page")}));
}

TEST_F(PhoneHome, tellsOfBeingUpToDateOnAManualCheckOnly) {
    loader.serve(mirror(1), releaseList(10501));
    phoneHome.checkForLastReleaseAvailableWithNotify();
    fake.alerts.answerNextModal(kAlertFirstButtonReturn);
    finish();
    const Alert expected{
        QStringLiteral("Quillow is up to date"),
        QStringLiteral(
            "You are using the latest available release.\nIf you like, you can go to the Varnel download page to "
            "manually check it.\n\nVisit us and see all the macOS software we have available.\nWe are one of "
            "the developers in the world with more macOS apps!\n"),
        AlertStyle::warning,
        {QStringLiteral("Go to Varnel Download Page"), QStringLiteral("Close")}};
    EXPECT_EQ(lastAlert(), expected);
    EXPECT_EQ(fake.workspace.openedUrls(), QStringList{QStringLiteral("https://example.org/page")});
    fake.defaults.setObject({}, kLastCheck);
    phoneHome.dailyVerboseCheckForLastReleaseAvailable();
    finish();
    EXPECT_EQ(alertCount(), 1U);
}

TEST_F(PhoneHome, tellsOfAFailureOnAManualCheckOnly) {
    phoneHome.dailyVerboseCheckForLastReleaseAvailable();
    finish();
    EXPECT_EQ(alertCount(), 0U);
    EXPECT_TRUE(lastCheck().isNil()) << "tried again at the next start of the day";
    EXPECT_FALSE(phoneHome.isChekingUpdateSystem());
    phoneHome.checkForLastReleaseAvailableWithNotify();
    fake.alerts.answerNextModal(kAlertFirstButtonReturn);
    finish();
    const Alert expected{
        QStringLiteral("Quillow was not able to connect to the Varnel server"),
        QStringLiteral("It was not possible to enstablish a internet connection on the net with the Varnel "
                       "upgrade server. Check your internet connection or try later."),
        AlertStyle::warning,
        {QStringLiteral("OK")}};
    EXPECT_EQ(lastAlert(), expected);
    EXPECT_TRUE(lastCheck().isNil());
    EXPECT_FALSE(phoneHome.isChekingUpdateSystem());
}

TEST_F(PhoneHome, asksTheMirrorsInOrderUntilOneAnswers) {
    loader.serve(mirror(2), releaseList(10501));
    EXPECT_TRUE(phoneHome.getDictionaryFromTheNet().has_value());
    EXPECT_EQ(loader.asked(), (QStringList{mirror(1), mirror(2)}));
}

TEST_F(PhoneHome, asksEachMirrorOnceWhenAllFail) {
    EXPECT_FALSE(phoneHome.getDictionaryFromTheNet().has_value());
    EXPECT_EQ(loader.asked(), (QStringList{mirror(1), mirror(2), mirror(3), mirror(4)}));
}

TEST_F(PhoneHome, storesTheDateAfterEverySuccessfulDownload) {
    loader.serve(mirror(1), {{QStringLiteral("other"), 1}});
    phoneHome.checkForLastReleaseAvailableWithNotify();
    finish();
    EXPECT_EQ(alertCount(), 0U) << "a list without a release tells nothing";
    EXPECT_EQ(lastCheck().date(), now);
    EXPECT_EQ(fake.defaults.synchronizedCount(), 1);
    EXPECT_FALSE(phoneHome.isChekingUpdateSystem());
}

TEST_F(PhoneHome, staysSilentOnASilentCheckAndStoresTheDate) {
    loader.serve(mirror(1), releaseList(10600));
    phoneHome.dailySilentCheckForLastReleaseAvailable();
    finish();
    EXPECT_EQ(alertCount(), 0U);
    EXPECT_EQ(lastCheck().date(), now);
    phoneHome.silentCheckForLastReleaseAvailable();
    finish();
    EXPECT_EQ(alertCount(), 0U);
}

TEST_F(PhoneHome, tellsOfAnUpdateOnTheDailyVerboseCheck) {
    loader.serve(mirror(1), releaseList(10600));
    phoneHome.dailyVerboseCheckForLastReleaseAvailable();
    fake.alerts.answerNextModal(1002);
    finish();
    EXPECT_EQ(alertCount(), 1U);
}

TEST_F(PhoneHome, checksOnceADay) {
    wasChecked(now.addSecs(-3600));
    phoneHome.startupProcedure();
    EXPECT_EQ(background.queuedCount(), 0U);
    wasChecked(now.addDays(-1));
    phoneHome.startupProcedure();
    EXPECT_EQ(background.queuedCount(), 1U);
}

TEST_F(PhoneHome, doesNothingWhileACheckIsRunning) {
    phoneHome.checkForLastReleaseAvailableWithNotify();
    phoneHome.checkForLastReleaseAvailableWithNotify();
    phoneHome.silentCheckForLastReleaseAvailable();
    phoneHome.dailySilentCheckForLastReleaseAvailable();
    phoneHome.dailyVerboseCheckForLastReleaseAvailable();
    EXPECT_EQ(background.queuedCount(), 1U);
}

TEST_F(PhoneHome, invitesNobodyWhileReportsAreOn) {
    phoneHome.startupProcedure();
    EXPECT_EQ(alertCount(), 0U);
    EXPECT_EQ(background.queuedCount(), 1U);
}

TEST_F(PhoneHome, invitesWithTheShortTextWhenThereNeverWasACheck) {
    fake.defaults.setObject(false, kNotifyUpdate);
    fake.alerts.answerNextModal(1002);
    phoneHome.startupProcedure();
    const Alert expected{
        QStringLiteral("Would you like that Quillow informs you now for any available update?"),
        QStringLiteral("Suggested option is to have the update report enabled.\nUse the Preference Dialog "
                       "to enable this feature."),
        AlertStyle::warning,
        {QStringLiteral("OK"), QStringLiteral("Varnel Site"), QStringLiteral("Cancel")}};
    EXPECT_EQ(lastAlert(), expected);
}

TEST_F(PhoneHome, invitesAfterNinetyDays) {
    fake.defaults.setObject(false, kNotifyUpdate);
    wasChecked(now.addSecs(-7776001));
    fake.alerts.answerNextModal(1002);
    phoneHome.startupProcedure();
    EXPECT_EQ(lastAlert().messageText,
              QStringLiteral("It is more then 90 days this app doesn't report to you for updates.\nWould you like that "
                             "Quillow informs you now for any available update?"));
}

TEST_F(PhoneHome, doesNotInviteAfterNinetyDaysToTheSecond) {
    fake.defaults.setObject(false, kNotifyUpdate);
    wasChecked(now.addSecs(-7776000));
    phoneHome.startupProcedure();
    EXPECT_EQ(alertCount(), 0U);
}

TEST_F(PhoneHome, invitesWithoutASuggestionWhenReportsAreOn) {
    fake.alerts.answerNextModal(1002);
    phoneHome.inCaseInviteToCheckForLastReleaseAvailable();
    EXPECT_EQ(lastAlert().informativeText, QString());
}

TEST_F(PhoneHome, opensTheMakersSiteOnTheInvitationsSecondButton) {
    fake.alerts.answerNextModal(kAlertSecondButtonReturn);
    phoneHome.inCaseInviteToCheckForLastReleaseAvailable();
    EXPECT_EQ(fake.workspace.openedUrls(), QStringList{QStringLiteral("https://example.org/")});
    EXPECT_EQ(background.queuedCount(), 0U);
}

TEST_F(PhoneHome, clearsTheGuardAfterTheInvitationThoughTheCheckStillRuns) {
    fake.alerts.answerNextModal(kAlertFirstButtonReturn);
    phoneHome.inCaseInviteToCheckForLastReleaseAvailable();
    EXPECT_EQ(background.queuedCount(), 1U);
    EXPECT_FALSE(phoneHome.isChekingUpdateSystem());
    phoneHome.checkForLastReleaseAvailableWithNotify();
    EXPECT_EQ(background.queuedCount(), 2U);
}

TEST_F(PhoneHome, reportsNothingWhenTheInvitationIsTakenDuringTheSilentCheck) {
    fake.defaults.setObject(false, kNotifyUpdate);
    loader.serve(mirror(1), releaseList(10600));
    fake.alerts.answerNextModal(kAlertFirstButtonReturn);
    phoneHome.startupProcedure();
    EXPECT_EQ(background.queuedCount(), 1U) << "only the silent check";
    EXPECT_FALSE(phoneHome.isChekingUpdateSystem());
    finish();
    EXPECT_EQ(alertCount(), 1U) << "only the invitation";
}

TEST_F(PhoneHome, neitherChecksNorInvitesWhenItWasCheckedToday) {
    fake.defaults.setObject(false, kNotifyUpdate);
    wasChecked(now);
    phoneHome.startupProcedure();
    EXPECT_EQ(background.queuedCount(), 0U);
    EXPECT_EQ(alertCount(), 0U);
}

TEST_F(PhoneHome, opensWhateverTheListSaysAlsoNothing) {
    loader.serve(mirror(1), {{QStringLiteral("LRA"), 10600}});
    phoneHome.checkForLastReleaseAvailableWithNotify();
    fake.alerts.answerNextModal(kAlertFirstButtonReturn);
    finish();
    EXPECT_EQ(fake.workspace.openedUrls(), QStringList{QString()});
}

TEST_F(PhoneHome, canBeConfiguredAgain) {
    phoneHome.SetValueAppRelease(20000, QStringLiteral("Other"), mirror(9), mirror(8), mirror(7), mirror(6));
    EXPECT_EQ(phoneHome.myAppRelease(), Boxed(20000));
    EXPECT_EQ(phoneHome.myAppName(), QStringLiteral("Other"));
    EXPECT_EQ(phoneHome.myPlistUrl1(), mirror(9));
    EXPECT_EQ(phoneHome.myPlistUrl2(), mirror(8));
    EXPECT_EQ(phoneHome.myPlistUrl3(), mirror(7));
    EXPECT_EQ(phoneHome.myPlistUrl4(), mirror(6));
    EXPECT_FALSE(phoneHome.getDictionaryFromTheNet().has_value());
    EXPECT_EQ(loader.asked(), (QStringList{mirror(9), mirror(8), mirror(7), mirror(6)}));
}

TEST_F(PhoneHome, storesTheDateBeforeItTellsAndIsCheckingUntilTheAlertIsClosed) {
    for (const std::int64_t latest : {10600, 10501}) {
        loader.serve(mirror(1), releaseList(latest));
        fake.defaults.setObject({}, kLastCheck);
        const int synchronized = fake.defaults.synchronizedCount();
        const std::size_t before = alertCount();
        fake.alerts.setModalHandler([&] {
            EXPECT_EQ(lastCheck().date(), now);
            EXPECT_EQ(fake.defaults.synchronizedCount(), synchronized + 1);
            EXPECT_TRUE(phoneHome.isChekingUpdateSystem());
            phoneHome.checkForLastReleaseAvailableWithNotify();
            EXPECT_EQ(background.queuedCount(), 0U) << "no second check under the alert";
        });
        phoneHome.checkForLastReleaseAvailableWithNotify();
        finish();
        EXPECT_EQ(alertCount(), before + 1);
        EXPECT_FALSE(phoneHome.isChekingUpdateSystem());
    }
}

TEST_F(PhoneHome, isCheckingUntilTheAlertOfAFailureIsClosed) {
    fake.alerts.setModalHandler([&] { EXPECT_TRUE(phoneHome.isChekingUpdateSystem()); });
    phoneHome.checkForLastReleaseAvailableWithNotify();
    finish();
    EXPECT_EQ(alertCount(), 1U);
    EXPECT_FALSE(phoneHome.isChekingUpdateSystem());
}

TEST_F(PhoneHome, eachResultAlertEndsTheCheckItself) {
    // deliberate: these functions clear the guard, whoever calls them.
    const auto list = releaseList(10600);
    phoneHome.setIsChekingUpdateSystem(true);
    phoneHome.notifyAboutUpdateAvailable(list);
    EXPECT_FALSE(phoneHome.isChekingUpdateSystem());
    phoneHome.setIsChekingUpdateSystem(true);
    phoneHome.notifyAboutYourAppIsLastAvailable(list);
    EXPECT_FALSE(phoneHome.isChekingUpdateSystem());
    phoneHome.setIsChekingUpdateSystem(true);
    phoneHome.notifyAboutFailedChechForUpdate();
    EXPECT_FALSE(phoneHome.isChekingUpdateSystem());
}

TEST_F(PhoneHome, everyPropertyCanBeSetByItself) {
    phoneHome.setMyAppRelease(20000);
    phoneHome.setMyAppName(QStringLiteral("Other"));
    phoneHome.setMyPlistUrl1(mirror(5));
    phoneHome.setMyPlistUrl2(mirror(6));
    phoneHome.setMyPlistUrl3(std::nullopt);
    phoneHome.setMyPlistUrl4(mirror(8));
    EXPECT_EQ(phoneHome.myAppRelease(), Boxed(20000));
    EXPECT_EQ(phoneHome.myAppName(), QStringLiteral("Other"));
    EXPECT_FALSE(phoneHome.getDictionaryFromTheNet());
    EXPECT_EQ(loader.asked(), QStringList({mirror(5), mirror(6), mirror(8)}));
}

/// A loader that finds no list, and calls `happening` for every mirror.
class HappeningLoader final : public PropertyListLoader {
public:
    std::function<void(const QString& url)> happening;
    [[nodiscard]] std::optional<Boxed::Dictionary> dictionaryWithContentsOfURL(const QString& url) const override {
        happening(url);
        return std::nullopt;
    }
};

TEST_F(PhoneHome, aRunningCheckUsesWhatItIsConfiguredToMeanwhile) {
    HappeningLoader changing;
    MWPhoneHome checker({fake.alerts, background, fake.clock, fake.defaults, fake.mainQueue, changing, fake.workspace,
                         fake.supportUtility});
    checker.SetValueAppRelease(10501, QStringLiteral("Quillow"), mirror(1), mirror(2), mirror(3), mirror(4));
    QStringList asked;
    changing.happening = [&](const QString& url) {
        asked.append(url);
        if (asked.size() == 2)
            checker.SetValueAppRelease(20000, QStringLiteral("Other"), mirror(5), mirror(6), mirror(7), mirror(8));
    };
    checker.checkForLastReleaseAvailableWithNotify();
    finish();
    EXPECT_EQ(asked, QStringList({mirror(1), mirror(2), mirror(7), mirror(8)}));
    EXPECT_EQ(lastAlert().messageText, QStringLiteral("Other was not able to connect to the Varnel server"));
}

TEST_F(PhoneHome, oneThreadMayConfigureItWhileAnotherChecks) {
    HappeningLoader noting;
    MWPhoneHome checker({fake.alerts, background, fake.clock, fake.defaults, fake.mainQueue, noting, fake.workspace,
                         fake.supportUtility});
    QSet<QString> asked;
    noting.happening = [&asked](const QString& url) { asked.insert(url); };
    const auto configure = [&checker](int first) {
        checker.SetValueAppRelease(first, mirror(first), mirror(first), mirror(first + 1), mirror(first + 2),
                                   mirror(first + 3));
    };
    configure(1);
    constexpr int kChecks = 20'000;
    std::atomic<bool> isDone = false;
    {
        const std::jthread checking([&checker, &isDone] {
            for (int i = 0; i < kChecks; ++i)
                static_cast<void>(checker.getDictionaryFromTheNet());
            isDone = true;
        });
        for (int i = 0; !isDone; ++i)
            configure(i % 2 == 0 ? 5 : 1);
    }
    configure(1);
    QSet<QString> whole;
    for (int number = 1; number <= 8; ++number)
        whole.insert(mirror(number));
    EXPECT_TRUE(whole.contains(asked)) << "each address is one that was set";
    EXPECT_EQ(checker.myAppRelease(), Boxed(1));
}

TEST_F(PhoneHome, isSharedByTheWholeProcess) {
    MWPhoneHome::setSharedPorts({fake.alerts, background, fake.clock, fake.defaults, fake.mainQueue, loader,
                                 fake.workspace, fake.supportUtility});
    EXPECT_EQ(&MWPhoneHome::sharedPhoneHome(), &MWPhoneHome::sharedPhoneHome());
    EXPECT_FALSE(MWPhoneHome::sharedPhoneHome().isChekingUpdateSystem());
}

} // namespace quillow
