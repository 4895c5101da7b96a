// The contract of the defaults port, for all implementations.
#include "platform/qt/storage/QtDefaults.h"
#include "tests/fakes/FakeDefaults.h"

#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <memory>

namespace quillow {
namespace {

struct MemoryDefaults {
    FakeDefaults defaults;
    Defaults& store() { return defaults; }
};

struct DiskDefaults {
    QTemporaryDir folder;
    QtDefaults defaults{folder.filePath(QStringLiteral("defaults.ini"))};
    Defaults& store() { return defaults; }
};

template <class World>
class DefaultsContract : public testing::Test {
protected:
    Defaults& store() { return world_.store(); }
    static QString key() { return QStringLiteral("aKey"); }
    World world_;
};
using Worlds = testing::Types<MemoryDefaults, DiskDefaults>;
TYPED_TEST_SUITE(DefaultsContract, Worlds);

TYPED_TEST(DefaultsContract, absentKeysAreNil) {
    EXPECT_TRUE(this->store().objectForKey(this->key()).isNil());
}

TYPED_TEST(DefaultsContract, valuesKeepTheirTypes) {
    const QDateTime instant(QDate(2026, 11, 21), QTime(9, 41, 12, 345), QTimeZone::utc());
    const Boxed values[] = {true,
                            false,
                            std::int64_t{0},
                            std::int64_t{-9223372036854775807},
                            0.1F,
                            0.1,
                            QString(QLatin1String("")),
                            QStringLiteral("b:true %41 \u00A0\u2028 \"x\\\"; =[a], \n"),
                            QString(QChar(0xD800)),
                            QByteArray(""),
                            QByteArray("\0\xFF", 2),
                            instant,
                            Image{1, 2, QByteArray("\1\2\3\4\5\6\7\0", 8)},
                            Image{},
                            Boxed::Array{},
                            Boxed::Array{1, QStringLiteral("two"), Boxed::Array{3.0}, Boxed()},
                            Boxed::Dictionary{{QStringLiteral("k"), QByteArray("v")}}};
    for (const Boxed& value : values) {
        this->store().setObject(value, this->key());
        EXPECT_EQ(this->store().objectForKey(this->key()), value);
    }
}

TYPED_TEST(DefaultsContract, nilRemovesTheKey) {
    this->store().setObject(true, this->key());
    this->store().setObject(nullptr, this->key());
    EXPECT_TRUE(this->store().objectForKey(this->key()).isNil());
}

TYPED_TEST(DefaultsContract, keysAreApart) {
    this->store().setObject(1, QStringLiteral("one"));
    this->store().setObject(2, QStringLiteral("two"));
    EXPECT_EQ(this->store().objectForKey(QStringLiteral("one")), Boxed(1));
}

TYPED_TEST(DefaultsContract, registeredValuesStandInForAbsentOnes) {
    this->store().registerDefaults({{this->key(), true}, {QStringLiteral("other"), 0}});
    EXPECT_EQ(this->store().objectForKey(this->key()), Boxed(true));
    this->store().setObject(false, this->key());
    EXPECT_EQ(this->store().objectForKey(this->key()), Boxed(false));
    this->store().setObject(nullptr, this->key());
    EXPECT_EQ(this->store().objectForKey(this->key()), Boxed(true));
}

TYPED_TEST(DefaultsContract, registeringAgainAddsAndReplaces) {
    this->store().registerDefaults({{QStringLiteral("one"), 1}, {QStringLiteral("two"), 2}});
    this->store().registerDefaults({{QStringLiteral("two"), 22}});
    EXPECT_EQ(this->store().objectForKey(QStringLiteral("one")), Boxed(1));
    EXPECT_EQ(this->store().objectForKey(QStringLiteral("two")), Boxed(22));
}

TYPED_TEST(DefaultsContract, registeringLeavesWhatWasSet) {
    this->store().setObject(5, this->key());
    this->store().registerDefaults({{this->key(), 7}});
    EXPECT_EQ(this->store().objectForKey(this->key()), Boxed(5));
}

TYPED_TEST(DefaultsContract, synchronizingChangesNoValue) {
    this->store().synchronize();
    this->store().setObject(QString(QLatin1String("")), this->key());
    this->store().synchronize();
    EXPECT_EQ(this->store().objectForKey(this->key()), Boxed(QString(QLatin1String(""))));
    EXPECT_TRUE(this->store().objectForKey(QStringLiteral("other")).isNil());
}

TYPED_TEST(DefaultsContract, anyKeyNamesAValue) {
    int number = 0;
    const QString keys[] = {QString(QLatin1String("")), QStringLiteral("[General]"), QStringLiteral("# a=b;c"),
                            QStringLiteral("a/b\\c"),   QStringLiteral("\u00C4\n "), QStringLiteral("%0041")};
    for (const QString& key : keys)
        this->store().setObject(++number, key);
    this->store().synchronize();
    for (const QString& key : keys)
        EXPECT_GT(this->store().objectForKey(key).intValue(), 0) << key.toStdString();
    EXPECT_EQ(this->store().objectForKey(QStringLiteral("%0041")), Boxed(number));
}

} // namespace
} // namespace quillow
