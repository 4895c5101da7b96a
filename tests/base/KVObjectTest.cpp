#include "base/KVObject.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

class Person final : public KVObject {
public:
    KVProperty<std::optional<QString>> name_{*this, u"name"};
    KVProperty<Boxed> age_{*this, u"age"};
    KVProperty<std::optional<QByteArray>> picture_{*this, u"picture"};
    KVProperty<QStringList> children_{*this, u"children"};
};

TEST(KVObject, everyWriteNotifiesAtOnceAlsoOfAnEqualValue) {
    Person person;
    std::vector<Boxed> seen;
    const Observation observation = person.addObserver(
        u"name"_s, [&](const QString&, const KVObject&, const Change&) { seen.emplace_back(person.name_.get()); });
    person.name_.set(u"a"_s);
    EXPECT_EQ(seen, (std::vector<Boxed>{u"a"_s}));
    person.name_.set(u"a"_s);
    person.setValue(u"b"_s, u"name"_s);
    person.setValue({}, u"name"_s);
    EXPECT_EQ(seen, (std::vector<Boxed>{u"a"_s, u"a"_s, u"b"_s, {}}));
}

TEST(KVObject, observerIsToldKeyObjectOldAndNewValue) {
    Person person;
    person.age_.set(41);
    int calls = 0;
    const Observation observation =
        person.addObserver(u"age"_s, [&](const QString& key, const KVObject& object, const Change& change) {
            ++calls;
            EXPECT_EQ(key, u"age"_s);
            EXPECT_EQ(&object, &person);
            EXPECT_EQ(change.oldValue, Boxed(41));
            EXPECT_EQ(change.newValue, Boxed(42));
        });
    person.age_.set(42);
    EXPECT_EQ(calls, 1);
}

TEST(KVObject, otherKeysAreNotObserved) {
    Person person;
    int calls = 0;
    const Observation observation =
        person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change&) { ++calls; });
    person.name_.set(u"a"_s);
    EXPECT_EQ(calls, 0);
}

TEST(KVObject, observersAreCalledInTheOrderAdded) {
    Person person;
    std::vector<int> order;
    const Observation first =
        person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change&) { order.push_back(1); });
    const Observation second =
        person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change&) { order.push_back(2); });
    person.age_.set(1);
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

TEST(KVObject, endedObservationIsNotCalledAgain) {
    Person person;
    int calls = 0;
    Observation observation =
        person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change&) { ++calls; });
    person.age_.set(1);
    observation.end();
    person.age_.set(2);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(observation.isActive());
}

TEST(KVObject, observerMayEndItselfAndLaterOnesWhileNotified) {
    Person person;
    std::vector<int> order;
    Observation first;
    Observation second;
    first = person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change&) {
        order.push_back(1);
        first.end();
        second.end();
    });
    second = person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change&) { order.push_back(2); });
    const Observation third =
        person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change&) { order.push_back(3); });
    person.age_.set(1);
    person.age_.set(2);
    EXPECT_EQ(order, (std::vector<int>{1, 3, 3}));
}

TEST(KVObject, observerAddedWhileNotifiedIsCalledFromTheNextWriteOn) {
    Person person;
    int lateCalls = 0;
    Observation late;
    const Observation observation = person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change&) {
        if (!late.isActive())
            late = person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change&) { ++lateCalls; });
    });
    person.age_.set(1);
    EXPECT_EQ(lateCalls, 0);
    person.age_.set(2);
    EXPECT_EQ(lateCalls, 1);
}

TEST(KVObject, observerMayWriteTheSameProperty) {
    Person person;
    std::vector<std::int64_t> seen;
    const Observation observation =
        person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change& change) {
            seen.push_back(change.newValue.longValue());
            if (change.newValue.longValue() < 3) person.age_.set(change.newValue.longValue() + 1);
        });
    person.age_.set(1);
    EXPECT_EQ(seen, (std::vector<std::int64_t>{1, 2, 3}));
}

TEST(KVObject, observationMayOutliveTheObject) {
    Observation observation;
    {
        Person person;
        observation = person.addObserver(u"age"_s, [](const QString&, const KVObject&, const Change&) {});
    }
    observation.end();
    EXPECT_FALSE(observation.isActive());
}

TEST(KVObject, newObservationInPlaceOfAnOldOneEndsTheOld) {
    Person person;
    std::vector<int> order;
    Observation observation =
        person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change&) { order.push_back(1); });
    observation =
        person.addObserver(u"age"_s, [&](const QString&, const KVObject&, const Change&) { order.push_back(2); });
    person.age_.set(1);
    EXPECT_EQ(order, (std::vector<int>{2}));
}

TEST(KVObject, propertiesAreReadAndWrittenByKey) {
    Person person;
    person.setValue(QByteArray("png"), u"picture"_s);
    person.setValue(Boxed::Array{u"a"_s, u"b"_s}, u"children"_s);
    EXPECT_EQ(person.picture_.get(), QByteArray("png"));
    EXPECT_EQ(person.children_.get(), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(person.valueForKey(u"children"_s), Boxed(Boxed::Array{u"a"_s, u"b"_s}));
    EXPECT_TRUE(person.valueForKey(u"name"_s).isNil());
    person.name_.set(QString());
    EXPECT_FALSE(person.valueForKey(u"name"_s).isNil());
}

TEST(KVObject, wrongTypeByKeyReadsAsAbsent) {
    Person person;
    person.name_.set(u"a"_s);
    person.setValue(5, u"name"_s);
    EXPECT_FALSE(person.name_.get().has_value());
}

} // namespace
} // namespace quillow
