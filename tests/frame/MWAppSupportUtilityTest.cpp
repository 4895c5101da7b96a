// Support mail, the maker's pages, the alerts about newer files, and release numbers as text.
#include "frame/MWAppSupportUtility.h"

#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace quillow {

namespace {

class AppSupportUtility : public testing::Test {
protected:
    FakePlatform fake;
    MWAppSupportUtility& utility = fake.supportUtility;
};

QString release(std::int64_t number) {
    return MWAppSupportUtility::calcReleaseString(number);
}

} // namespace

TEST(calcReleaseString, joinsMajorMinorAndPatch) {
    const std::pair<std::int64_t, const char16_t*> rows[] = {
        {10501, u"1.5.1"}, {10500, u"1.5"},    {10000, u"1.0"},       {11000, u"1.10"},        {21203, u"2.12.3"},
        {100000, u"10.0"}, {10010, u"1.0.10"}, {123456, u"12.34.56"}, {1234567, u"123.45.67"},
    };
    for (const auto& [number, text] : rows)
        EXPECT_EQ(release(number), QString::fromUtf16(text)) << number;
}

TEST(calcReleaseString, keepsTheZerosOfAFourDigitPatch) {
    EXPECT_EQ(release(1501), QStringLiteral("1.5.01"));
    EXPECT_EQ(release(1500), QStringLiteral("1.5.00"));
    EXPECT_EQ(release(1000), QStringLiteral("1.0.00"));
}

TEST(calcReleaseString, isEmptyBelowFourDigits) {
    for (const std::int64_t number : {0, 7, 42, 999, -1, -99})
        EXPECT_EQ(release(number), QStringLiteral("")) << number;
}

TEST_F(AppSupportUtility, opensAMailWithAnEncodedSubject) {
    utility.emailUs();
    EXPECT_EQ(
        fake.workspace.openedUrls(),
        QStringList{QStringLiteral("mailto:support@example.org?subject=Support%20Request%20for%20Quillow%20rel.%201."
                                   "5.1%20-%20macOS%20Debian%20GNU/Linux%2012%20(bookworm)")});
}

TEST_F(AppSupportUtility, encodesWhatAQueryMayNotHold) {
    fake.systemInfo.version = QStringLiteral("100% \"odd\" #1 [x] ü");
    utility.emailUs();
    EXPECT_TRUE(fake.workspace.openedUrls().first().endsWith(
        QStringLiteral("macOS%20100%25%20%22odd%22%20%231%20%5Bx%5D%20%C3%BC")));
}

TEST_F(AppSupportUtility, opensTheMakersPages) {
    utility.visitAppUrl();
    utility.visitUs();
    utility.openAppStoreList();
    EXPECT_EQ(fake.workspace.openedUrls(),
              (QStringList{QStringLiteral("https://example.org/app"), QStringLiteral("https://example.org/"),
                           QStringLiteral("https://example.org/store")}));
}

TEST_F(AppSupportUtility, opensNoStorePage) {
    utility.openAppStorePage();
    EXPECT_TRUE(fake.workspace.openedUrls().isEmpty());
}

TEST_F(AppSupportUtility, offersTheDownloadForADocumentOfANewerRelease) {
    fake.alerts.answerNextModal(kAlertFirstButtonReturn);
    EXPECT_TRUE(utility.sayFilecreatedWithANewerVersion());
    const Alert expected{
        QStringLiteral("The document you requested to open was created with a more recent version of this application"),
        QStringLiteral(
            "To open this file you need a release of this application equal or successive to the one used to "
            "create this file.\n\nProbably you are using an outdated release.\nYou can download for free the "
            "last version of this application from our site"),
        AlertStyle::warning,
        {QStringLiteral("Go to Download Last Version"), QStringLiteral("Cancel")}};
    ASSERT_EQ(fake.alerts.shown().size(), 1U);
    EXPECT_EQ(fake.alerts.shown()[0].alert, expected);
    EXPECT_EQ(fake.workspace.openedUrls(), QStringList{QStringLiteral("https://example.org/")});
}

TEST_F(AppSupportUtility, offersTheDownloadForADataFileOfANewerRelease) {
    fake.alerts.answerNextModal(kAlertFirstButtonReturn);
    EXPECT_TRUE(utility.dataIn_ApplicationSupportFolder_CreatedWithANewerVersion());
    ASSERT_EQ(fake.alerts.shown().size(), 1U);
    const Alert& alert = fake.alerts.shown()[0].alert;
    EXPECT_EQ(alert.messageText,
              QStringLiteral("Data file the software tryed to open from the Application Support folder "
                             "was created with a more recent version of this application"));
    EXPECT_EQ(
        alert.informativeText,
        QStringLiteral("You need a release of this application equal or successive to the one used to create this "
                       "data file.\n\nProbably you are using an outdated release.\nYou can download for free the last "
                       "version of this application from our site"));
    EXPECT_EQ(fake.workspace.openedUrls(), QStringList{QStringLiteral("https://example.org/")});
}

TEST_F(AppSupportUtility, opensNothingOnCancel) {
    fake.alerts.answerNextModal(kAlertSecondButtonReturn);
    EXPECT_FALSE(utility.sayFilecreatedWithANewerVersion());
    fake.alerts.answerNextModal(kAlertDismissed);
    EXPECT_FALSE(utility.dataIn_ApplicationSupportFolder_CreatedWithANewerVersion());
    EXPECT_TRUE(fake.workspace.openedUrls().isEmpty());
}

} // namespace quillow
