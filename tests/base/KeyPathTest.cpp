#include "base/KeyPath.h"

#include "base/KVObject.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

Boxed record() {
    const Boxed::Dictionary city{{u"name"_s, u"Rome"_s}, {u"zip"_s, 187}};
    const Boxed::Dictionary other{{u"name"_s, u"Oslo"_s}};
    return Boxed::Dictionary{{u"name"_s, u"Ann"_s},
                             {u"city"_s, city},
                             {u"visited"_s, Boxed::Array{city, other, u"unknown"_s, Boxed::Dictionary()}},
                             {u""_s, u"nameless"_s},
                             {u"a.b"_s, u"never found"_s}};
}

Boxed at(const QString& path) {
    return KeyPath(path).valueIn(record());
}

TEST(KeyPath, leadsThroughDictionaries) {
    EXPECT_EQ(at(u"name"_s), Boxed(u"Ann"_s));
    EXPECT_EQ(at(u"city.name"_s), Boxed(u"Rome"_s));
    EXPECT_EQ(at(u"city.zip"_s), Boxed(187));
    EXPECT_EQ(at(u""_s), Boxed(u"nameless"_s));
}

TEST(KeyPath, answersNilWhereItLeadsNowhere) {
    for (const auto& path : {u"age"_s, u"Name"_s, u"name.length"_s, u"city.name.x"_s, u"age.x"_s, u"city."_s,
                             u".name"_s, u"city..name"_s, u"a.b"_s})
        EXPECT_TRUE(at(path).isNil()) << path.toStdString();
    EXPECT_TRUE(KeyPath(u"name"_s).valueIn({}).isNil());
    EXPECT_TRUE(KeyPath(u"name"_s).valueIn(u"Ann"_s).isNil());
}

TEST(KeyPath, anArrayAnswersForItsElements) {
    EXPECT_EQ(at(u"visited.name"_s), Boxed(Boxed::Array{u"Rome"_s, u"Oslo"_s, Boxed(), Boxed()}));
    EXPECT_EQ(at(u"visited.name.x"_s), Boxed(Boxed::Array{Boxed(), Boxed(), Boxed(), Boxed()}));
}

/// An object that answers every key with the key.
class Echo final : public KeyValueLookup {
public:
    [[nodiscard]] Boxed valueForKey(const QString& key) const override {
        return key == u"nothing" ? Boxed() : Boxed(key);
    }
};

struct Town final : KVObject {
    KVProperty<std::optional<QString>> name{*this, u"name", u"Rome"_s};
    KVProperty<Boxed> mayor{*this, u"mayor"};
};

TEST(KeyPath, leadsThroughObjectsThatAreReadByKey) {
    const auto town = std::make_shared<Town>();
    town->mayor.set(Boxed(std::make_shared<const Echo>()));
    const Boxed person = Boxed::Dictionary{{u"town"_s, Boxed(town)}};
    EXPECT_EQ(KeyPath(u"town.name"_s).valueIn(person), Boxed(u"Rome"_s));
    EXPECT_EQ(KeyPath(u"town.mayor.title"_s).valueIn(person), Boxed(u"title"_s));
    EXPECT_TRUE(KeyPath(u"town.mayor.nothing"_s).valueIn(person).isNil());
    EXPECT_TRUE(KeyPath(u"town.mayor.nothing.title"_s).valueIn(person).isNil());
    const Boxed both = Boxed::Array{Boxed(town), Boxed::Dictionary{{u"name"_s, u"Oslo"_s}}};
    EXPECT_EQ(KeyPath(u"name"_s).valueIn(both), Boxed(Boxed::Array{u"Rome"_s, u"Oslo"_s}));
}

} // namespace
} // namespace quillow
