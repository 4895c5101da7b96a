// What every defaults store behind the port does.
#include "platform/qt/QtDefaults.h"
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

TYPED_TEST(DefaultsContract, aRegisteredValueAnswersUntilOneIsSet) {
    this->store().registerDefaults({{this->key(), true}});
    EXPECT_EQ(this->store().objectForKey(this->key()), Boxed(true));
    this->store().setObject(false, this->key());
    EXPECT_EQ(this->store().objectForKey(this->key()), Boxed(false));
    this->store().setObject(nullptr, this->key());
    this->store().synchronize();
    EXPECT_EQ(this->store().objectForKey(this->key()), Boxed(true));
}

TEST(QtDefaults, anotherProcessReadsTheSameTypes) {
    // Another store on the same file, made after the first one is gone, reads what is on the disk as another process would.
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("deep/defaults.ini"));
    {
        QtDefaults first(file);
        first.setObject(true, QStringLiteral("bool"));
        first.setObject(1, QStringLiteral("int"));
        first.setObject(QString(QLatin1String("")), QStringLiteral("string"));
        first.setObject(QByteArray(""), QStringLiteral("bytes"));
    }
    const QtDefaults second(file);
    EXPECT_EQ(second.objectForKey(QStringLiteral("bool")), Boxed(true));
    EXPECT_EQ(second.objectForKey(QStringLiteral("int")), Boxed(1));
    EXPECT_EQ(second.objectForKey(QStringLiteral("string")), Boxed(QString(QLatin1String(""))));
    EXPECT_EQ(second.objectForKey(QStringLiteral("bytes")), Boxed(QByteArray("")));
    EXPECT_TRUE(second.objectForKey(QStringLiteral("other")).isNil());
}

TEST(QtDefaults, aDamagedValueIsNil) {
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("defaults.ini"));
    QFile ini(file);
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write("[General]\na=true\nb=i:12x\nc=q:1\nd=s:%zz\ne=j:////\n");
    ini.close();
    const QtDefaults defaults(file);
    for (const char16_t* key : {u"a", u"b", u"c", u"d", u"e"})
        EXPECT_TRUE(defaults.objectForKey(QString::fromUtf16(key)).isNil());
}

} // namespace
} // namespace quillow
