// Dates in medium style, and their locale and time zone.
#include "platform/qt/services/IcuDateFormatting.h"

#include <QTimeZone>

#include <gtest/gtest.h>

#include <map>

namespace quillow {
namespace {

/// Sets the locale variables of the environment and restores them afterwards.
class IcuDateFormattingTest : public testing::Test {
protected:
    void SetUp() override {
        for (const char* name : kNames) {
            former_[name] = qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt;
            qunsetenv(name);
        }
    }
    void TearDown() override {
        for (const auto& [name, value] : former_)
            value ? qputenv(name, *value) : qunsetenv(name);
    }
    QString medium(const QDateTime& date) const {
        return formatting_.localizedStringFromDate(date, DateStyle::medium, DateStyle::medium);
    }

    static constexpr const char* kNames[] = {"LC_ALL", "LC_TIME", "LANG"};
    std::map<const char*, std::optional<QByteArray>> former_;
    IcuDateFormatting formatting_;
    QDateTime morning_{QDate(2026, 11, 21), QTime(9, 41, 12)};
};

TEST_F(IcuDateFormattingTest, writesMediumDateAndTimeInAmericanEnglish) {
    qputenv("LANG", "en_US.UTF-8");
    // CLDR 42 and later put a narrow no-break space before the day period.
    EXPECT_EQ(medium(morning_).replace(QChar(0x202F), u' '), QStringLiteral("Nov 21, 2026, 9:41:12 AM"));
}

TEST_F(IcuDateFormattingTest, writesGermanDates) {
    qputenv("LANG", "de_DE.UTF-8");
    EXPECT_EQ(medium(morning_), QStringLiteral("21.11.2026, 09:41:12"));
}

TEST_F(IcuDateFormattingTest, leavesOutThePartThatIsNotAskedFor) {
    qputenv("LANG", "de_DE.UTF-8");
    EXPECT_EQ(formatting_.localizedStringFromDate(morning_, DateStyle::medium, DateStyle::none),
              QStringLiteral("21.11.2026"));
    EXPECT_EQ(formatting_.localizedStringFromDate(morning_, DateStyle::none, DateStyle::brief),
              QStringLiteral("09:41"));
    EXPECT_EQ(formatting_.localizedStringFromDate(morning_, DateStyle::none, DateStyle::none), QString());
}

TEST_F(IcuDateFormattingTest, choosesTheLocaleAsTheCLibraryDoes) {
    EXPECT_EQ(IcuDateFormatting::localeName(), "en_US");
    qputenv("LANG", "fr_FR.UTF-8");
    EXPECT_EQ(IcuDateFormatting::localeName(), "fr_FR");
    qputenv("LC_TIME", "de_AT@euro");
    EXPECT_EQ(IcuDateFormatting::localeName(), "de_AT");
    qputenv("LC_ALL", "");
    EXPECT_EQ(IcuDateFormatting::localeName(), "de_AT");
    qputenv("LC_ALL", "C.UTF-8");
    EXPECT_EQ(IcuDateFormatting::localeName(), "en_US");
    qputenv("LC_ALL", "POSIX");
    EXPECT_EQ(IcuDateFormatting::localeName(), "en_US");
    qputenv("LC_ALL", "sr_RS.UTF-8@latin");
    EXPECT_EQ(IcuDateFormatting::localeName(), "sr_Latn_RS");
}

TEST_F(IcuDateFormattingTest, writesTheTimeOfTheDatesOwnZone) {
    qputenv("LANG", "de_DE.UTF-8");
    const QDateTime utc(QDate(2026, 7, 1), QTime(23, 30), QTimeZone::utc());
    EXPECT_EQ(medium(utc), QStringLiteral("01.07.2026, 23:30:00"));
    EXPECT_EQ(medium(utc.toTimeZone(QTimeZone("Asia/Kolkata"))), QStringLiteral("02.07.2026, 05:00:00"));
    EXPECT_EQ(medium(utc.toOffsetFromUtc(-3600)), QStringLiteral("01.07.2026, 22:30:00"));
}

TEST_F(IcuDateFormattingTest, writesByAPattern) {
    qputenv("LANG", "en_US.UTF-8");
    // The 29th of December 2025 is in the first week of 2026.
    const QDateTime date(QDate(2025, 12, 29), QTime(13, 5, 9));
    EXPECT_EQ(formatting_.formatterWithPattern(QStringLiteral("YYYY-MM-dd hh:mm:ss"))->stringFromDate(date),
              QStringLiteral("2026-12-29 01:05:09"));
}

} // namespace
} // namespace quillow
