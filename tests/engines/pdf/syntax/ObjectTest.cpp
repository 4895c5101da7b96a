#include "engines/pdf/syntax/Object.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace quillow::pdf {
namespace {

TEST(Object, hasSixteenBytes) {
    EXPECT_EQ(sizeof(Object), 16U);
}

TEST(Object, accessorsOfTheWrongTypeReturnNeutralValues) {
    const std::array<DictionaryEntry, 1> entries = {DictionaryEntry{"A", Object::ofInteger(1)}};
    const std::array<Object, 1> items = {Object::ofInteger(1)};
    const std::array<Object, 8> objects = {Object(),
                                           Object::ofBoolean(true),
                                           Object::ofInteger(1),
                                           Object::ofName("n"),
                                           Object::ofString("s"),
                                           Object::ofArray(items),
                                           Object::ofDictionary(entries),
                                           Object::ofReference({1, 0})};
    for (const Object& object : objects) {
        using Type = Object::Type;
        EXPECT_EQ(object.booleanOr(false), object.type() == Type::boolean);
        EXPECT_EQ(object.integerOr(-1), object.type() == Type::integer ? 1 : -1);
        EXPECT_EQ(object.numberOr(-1), object.type() == Type::integer ? 1 : -1);
        EXPECT_EQ(object.name(), object.type() == Type::name ? "n" : "");
        EXPECT_EQ(object.isName("n"), object.type() == Type::name);
        EXPECT_EQ(object.string(), object.type() == Type::string ? "s" : "");
        EXPECT_EQ(object.array().empty(), object.type() != Type::array);
        EXPECT_EQ(object.dictionary().empty(), object.type() != Type::dictionary);
        EXPECT_EQ(object.stream(), nullptr);
        EXPECT_EQ(object.reference().number, object.type() == Type::reference ? 1U : 0U);
    }
}

TEST(Object, streamsHaveADictionary) {
    const std::array<DictionaryEntry, 1> entries = {DictionaryEntry{"A", Object::ofInteger(1)}};
    StreamContent stream;
    stream.dictionary = Dictionary(entries);

    const Object object = Object::ofStream(stream);

    EXPECT_EQ(object.stream(), &stream);
    EXPECT_EQ(object.dictionary().find("A").integerOr(0), 1);
}

TEST(Object, realsAreCutToIntegers) {
    EXPECT_EQ(Object::ofReal(2.9).integerOr(0), 2);
    EXPECT_EQ(Object::ofReal(-2.9).integerOr(0), -2);
    EXPECT_EQ(Object::ofReal(1e300).integerOr(0), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Object::ofReal(-1e300).integerOr(0), std::numeric_limits<std::int64_t>::min());
}

} // namespace
} // namespace quillow::pdf
