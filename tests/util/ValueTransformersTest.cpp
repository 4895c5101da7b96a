// Every transformer: forward, nil, reverse, and the properties of its class.
#include "platform/BookmarkStore.h"
#include "platform/ImageCodec.h"
#include "platform/TextUnarchiver.h"
#include "tests/fakes/FakeClock.h"
#include "util/BookmarkTransformers.h"
#include "util/CollectionTransformers.h"
#include "util/ComparisonTransformers.h"
#include "util/MWDateTagElaborated.h"
#include "util/MWImgData.h"
#include "util/MWUnarchivieFromDataToText.h"
#include "util/NumberTransformers.h"
#include "util/StandardTransformers.h"
#include "util/StringTransformers.h"

#include <gtest/gtest.h>

#include <typeinfo>

namespace quillow {

namespace {

Boxed text(const char16_t* string) {
    return QString::fromUtf16(string);
}

/// A bookmark store that returns what the test sets.
class ScriptedBookmarkStore final : public BookmarkStore {
public:
    std::optional<QUrl> url;
    std::optional<QByteArray> bookmarkData(const QUrl&, std::uint32_t, const std::vector<UrlResourceKey>&,
                                           const std::optional<QUrl>&, std::optional<PlatformError>*) override {
        return std::nullopt;
    }
    std::optional<QUrl> resolveBookmarkData(const QByteArray& bookmark, std::uint32_t options,
                                            const std::optional<QUrl>&, bool* bookmarkDataIsStale,
                                            std::optional<PlatformError>* error) override {
        lastBookmark = bookmark;
        lastOptions = options;
        *bookmarkDataIsStale = true;
        if (url) *error = PlatformError{QStringLiteral("ignored")};
        return url;
    }
    bool startAccessingSecurityScopedResource(const QUrl&) override { return false; }
    void stopAccessingSecurityScopedResource(const QUrl&) override {}

    QByteArray lastBookmark;
    std::uint32_t lastOptions = 0;
};

/// A codec for which "picture" is one white pixel.
class ScriptedImageCodec final : public ImageCodec {
public:
    std::optional<Image> imageWithData(const QByteArray& bytes) const override {
        if (bytes != "picture") return std::nullopt;
        return Image{1, 1, QByteArray(4, '\xff')};
    }
    std::optional<QByteArray> TIFFRepresentation(const Image& image) const override {
        if (image.isEmpty()) return std::nullopt;
        return QByteArray("tiff");
    }
};

class ScriptedTextUnarchiver final : public TextUnarchiver {
public:
    std::optional<QString> stringOfArchivedText(const QByteArray& archive) const override {
        if (archive != "archive") return std::nullopt;
        return QStringLiteral("unarchived");
    }
};

} // namespace

TEST(MWIntToBool, isTrueForEveryIntegerButZero) {
    const MWIntToBool transformer;
    EXPECT_EQ(transformer.transformedValue(0), Boxed(false));
    EXPECT_EQ(transformer.transformedValue(-3), Boxed(true));
    EXPECT_EQ(transformer.transformedValue(0.9), Boxed(false));
    EXPECT_EQ(transformer.transformedValue({}), Boxed(false));
    EXPECT_EQ(transformer.reverseTransformedValue(true), Boxed(1));
    EXPECT_EQ(transformer.reverseTransformedValue(false), Boxed(0));
    EXPECT_TRUE(transformer.allowsReverseTransformation());
}

TEST(MWNegateIntToBool, isTrueForZeroAndNil) {
    const MWNegateIntToBool transformer;
    EXPECT_EQ(transformer.transformedValue(0), Boxed(true));
    EXPECT_EQ(transformer.transformedValue(7), Boxed(false));
    EXPECT_EQ(transformer.transformedValue({}), Boxed(true));
    EXPECT_EQ(transformer.reverseTransformedValue(true), Boxed(0));
    EXPECT_EQ(transformer.reverseTransformedValue(false), Boxed(1));
    EXPECT_EQ(transformer.reverseTransformedValue({}), Boxed(1));
}

TEST(MWOneIfOneInArray, isOneForSeveralElementsOnly) {
    const MWOneIfOneInArray transformer;
    EXPECT_EQ(transformer.transformedValue(Boxed::Array{}), Boxed(0));
    EXPECT_EQ(transformer.transformedValue(Boxed::Array{1}), Boxed(0));
    EXPECT_EQ(transformer.transformedValue(Boxed::Array{1, 2}), Boxed(1));
    EXPECT_EQ(transformer.transformedValue({}), Boxed(0));
}

TEST(MWOneIfOneInArray, reversesToANewEmptyArray) {
    const MWOneIfOneInArray transformer;
    EXPECT_TRUE(transformer.allowsReverseTransformation());
    EXPECT_EQ(transformer.reverseTransformedValue(1), Boxed(Boxed::Array{}));
    EXPECT_EQ(transformer.reverseTransformedValue({}), Boxed(Boxed::Array{}));
}

TEST(MW1IfNot0, givesIntegers) {
    const MW1IfNot0 transformer;
    EXPECT_EQ(transformer.transformedValue(5), Boxed(1));
    EXPECT_EQ(transformer.transformedValue(0), Boxed(0));
    EXPECT_EQ(transformer.transformedValue({}), Boxed(0));
    EXPECT_FALSE(transformer.allowsReverseTransformation());
    EXPECT_TRUE(transformer.reverseTransformedValue(1).isNil());
}

TEST(MWNumberBoolToNumberNum, goesBothWays) {
    const MWNumberBoolToNumberNum transformer;
    EXPECT_EQ(transformer.transformedValue(true), Boxed(1));
    EXPECT_EQ(transformer.transformedValue(false), Boxed(0));
    EXPECT_EQ(transformer.transformedValue({}), Boxed(0));
    EXPECT_EQ(transformer.reverseTransformedValue(std::int64_t{1} << 40), Boxed(true));
    EXPECT_EQ(transformer.reverseTransformedValue(0), Boxed(false));
}

TEST(IntegerComparers, narrowTheInputTo16Bits) {
    EXPECT_EQ(MWValueIsEqualToRef(1).transformedValue(65537), Boxed(1));
    EXPECT_EQ(MWValueNotEqualToRef(1).transformedValue(65537), Boxed(0));
    EXPECT_EQ(MWValueIsGreaterOfRef(0).transformedValue(32768), Boxed(0));
    EXPECT_EQ(MWValueIsSmallerOfRef(0).transformedValue(32768), Boxed(1));
    EXPECT_EQ(MWValueIsEqualToRef(65537).transformedValue(65537), Boxed(0)) << "the reference is not narrowed";
}

TEST(IntegerComparers, giveNilForNil) {
    EXPECT_TRUE(MWValueIsEqualToRef(0).transformedValue({}).isNil());
    EXPECT_TRUE(MWValueNotEqualToRef(0).transformedValue({}).isNil());
    EXPECT_TRUE(MWValueIsGreaterOfRef(0).transformedValue({}).isNil());
    EXPECT_TRUE(MWValueIsSmallerOfRef(0).transformedValue({}).isNil());
}

TEST(IntegerComparers, compareStrictlyAndSigned) {
    EXPECT_EQ(MWValueIsGreaterOfRef(0).transformedValue(-1), Boxed(0));
    EXPECT_EQ(MWValueIsGreaterOfRef(0).transformedValue(0), Boxed(0));
    EXPECT_EQ(MWValueIsGreaterOfRef(0).transformedValue(1), Boxed(1));
    EXPECT_EQ(MWValueIsSmallerOfRef(0).transformedValue(-1), Boxed(1));
    EXPECT_EQ(MWValueIsSmallerOfRef(0).transformedValue(0), Boxed(0));
    EXPECT_EQ(MWValueNotEqualToRef(0).transformedValue(5), Boxed(1));
    EXPECT_EQ(MWValueNotEqualToRef(0).transformedValue(0), Boxed(0));
}

TEST(MWValueIsEqualToRef, reversesTrueToTheReferenceAndFalseToNil) {
    const MWValueIsEqualToRef transformer(3);
    EXPECT_EQ(transformer.reverseTransformedValue(true), Boxed(3));
    EXPECT_TRUE(transformer.reverseTransformedValue(false).isNil());
    EXPECT_TRUE(transformer.reverseTransformedValue({}).isNil());
    EXPECT_TRUE(transformer.allowsReverseTransformation());
    EXPECT_FALSE(MWValueNotEqualToRef(3).allowsReverseTransformation());
}

TEST(MWValueMultipliedBy, multipliesInSinglePrecision) {
    EXPECT_EQ(MWValueMultipliedBy(0.1).transformedValue(3), Boxed(3.0F * 0.1F));
    EXPECT_EQ(MWValueMultipliedBy(2).transformedValue(16777217), Boxed(33554432.0F)) << "a float cannot hold 16777217";
    EXPECT_TRUE(MWValueMultipliedBy(2).transformedValue({}).isNil());
    EXPECT_EQ(MWValueMultipliedBy(Boxed()).transformedValue(3), Boxed(0.0F));
}

TEST(MWHeightForFontSize, truncatesInSinglePrecision) {
    const MWHeightForFontSize transformer;
    EXPECT_EQ(transformer.transformedValue(10), Boxed(16));
    EXPECT_EQ(transformer.transformedValue(12), Boxed(18));
    EXPECT_EQ(transformer.transformedValue(13), Boxed(20));
    EXPECT_EQ(transformer.transformedValue(-10), Boxed(-12));
    EXPECT_TRUE(transformer.transformedValue({}).isNil());
}

TEST(MWReturnInitStr, answersItsStringWhateverTheInput) {
    const MWReturnInitStr transformer(QStringLiteral("fixed"));
    EXPECT_EQ(transformer.transformedValue(5), text(u"fixed"));
    EXPECT_EQ(transformer.transformedValue({}), text(u"fixed"));
    EXPECT_TRUE(MWReturnInitStr(std::nullopt).transformedValue(5).isNil());
}

TEST(MWValueIsEqualToStr, declaresAStringAndGivesABoolean) {
    const MWValueIsEqualToStr transformer(QStringLiteral("a"));
    EXPECT_EQ(transformer.transformedValueClass(), ValueClass::string);
    EXPECT_EQ(transformer.transformedValue(text(u"a")), Boxed(true));
    EXPECT_EQ(transformer.transformedValue(text(u"A")), Boxed(false));
    EXPECT_EQ(transformer.transformedValue(5), Boxed(false));
    EXPECT_TRUE(transformer.transformedValue({}).isNil());
    EXPECT_EQ(MWValueIsEqualToStr(std::nullopt).transformedValue(text(u"a")), Boxed(false));
}

TEST(CollectionTransformers, findNumbersByValueAndStringsByText) {
    const MWValueIsInArray array({1, text(u"one"), 2.5});
    EXPECT_EQ(array.transformedValue(true), Boxed(true));
    EXPECT_EQ(array.transformedValue(2.5F), Boxed(true));
    EXPECT_EQ(array.transformedValue(text(u"one")), Boxed(true));
    EXPECT_EQ(array.transformedValue(text(u"1")), Boxed(false));
    EXPECT_EQ(array.transformedValue(3), Boxed(false));
    EXPECT_TRUE(array.transformedValue({}).isNil());
    const MWValueIsInSet set({7, 7});
    EXPECT_EQ(set.transformedValue(7), Boxed(true));
    EXPECT_EQ(set.transformedValue(8), Boxed(false));
    EXPECT_TRUE(set.transformedValue({}).isNil());
}

TEST(CollectionTransformers, fractionsAreNotCutOffAndLargeIntegersNotRounded) {
    EXPECT_EQ(MWValueIsInArray({2}).transformedValue(2.5), Boxed(false));
    EXPECT_EQ(MWValueIsInArray({2.5}).transformedValue(2), Boxed(false));
    EXPECT_EQ(MWValueIsInArray({2.0}).transformedValue(2), Boxed(true));
    // Neighbours that are one and the same as doubles.
    const std::int64_t large = std::int64_t{1} << 53;
    EXPECT_EQ(MWValueIsInArray({large}).transformedValue(large + 1), Boxed(false));
}

TEST(CollectionTransformers, noTextEqualsANumber) {
    EXPECT_EQ(MWValueIsInArray({2.5}).transformedValue(text(u"2.5")), Boxed(false));
    EXPECT_EQ(MWValueIsInArray({text(u"2.5")}).transformedValue(2.5), Boxed(false));
}

TEST(TrimmedStrings, trimBlanksOnly) {
    const MWEmptyTrimmedString isEmpty;
    const MWFilledTrimmedString isFilled;
    for (const auto& [input, filled] :
         {std::pair{text(u"   "), false}, std::pair{text(u""), false}, std::pair{text(u"\t"), true},
          std::pair{text(u" \n "), true}, std::pair{text(u" x "), true}, std::pair{Boxed(), false}}) {
        EXPECT_EQ(isEmpty.transformedValue(input), Boxed(!filled));
        EXPECT_EQ(isFilled.transformedValue(input), Boxed(filled));
    }
}

TEST(BookmarkTransformers, givePathAndName) {
    ScriptedBookmarkStore store;
    store.url = QUrl::fromLocalFile(QStringLiteral("/home/user/Texts"));
    EXPECT_EQ(MWPathFromBookmark(store).transformedValue(QByteArray("bytes")), text(u"/home/user/Texts"));
    EXPECT_EQ(MWNameFromBookmark(store).transformedValue(QByteArray("bytes")), text(u"Texts"));
    EXPECT_EQ(store.lastBookmark, "bytes");
    EXPECT_EQ(store.lastOptions, 1024U);
}

TEST(BookmarkTransformers, nameAnEmptyResultEachInItsOwnSpelling) {
    ScriptedBookmarkStore store;
    store.url = QUrl();
    EXPECT_EQ(MWPathFromBookmark(store).transformedValue(QByteArray("bytes")), text(u"FILe NOT FOUND"));
    EXPECT_EQ(MWNameFromBookmark(store).transformedValue(QByteArray("bytes")), text(u"FILE NOT FOUND"));
}

TEST(BookmarkTransformers, giveNilForNilAndForWhatDoesNotResolve) {
    ScriptedBookmarkStore store;
    EXPECT_TRUE(MWPathFromBookmark(store).transformedValue({}).isNil());
    EXPECT_TRUE(MWPathFromBookmark(store).transformedValue(QByteArray("bytes")).isNil());
    EXPECT_TRUE(MWNameFromBookmark(store).transformedValue({}).isNil());
    EXPECT_TRUE(MWNameFromBookmark(store).transformedValue(QByteArray("bytes")).isNil());
}

TEST(MWImgData, goesBothWays) {
    const ScriptedImageCodec codec;
    const MWImgData transformer(codec);
    EXPECT_EQ(transformer.transformedValueClass(), ValueClass::image);
    EXPECT_EQ(transformer.transformedValue(QByteArray("picture")), Boxed(Image{1, 1, QByteArray(4, '\xff')}));
    EXPECT_EQ(transformer.transformedValue({}), Boxed(Image())) << "nil gives a new empty picture";
    EXPECT_TRUE(transformer.transformedValue(QByteArray("garbage")).isNil());
    EXPECT_EQ(transformer.reverseTransformedValue(Image{1, 1, QByteArray(4, '\xff')}), Boxed(QByteArray("tiff")));
    EXPECT_TRUE(transformer.reverseTransformedValue({}).isNil());
}

TEST(MWUnarchivieFromDataToText, givesThePlainString) {
    const ScriptedTextUnarchiver unarchiver;
    const MWUnarchivieFromDataToText transformer(unarchiver);
    EXPECT_EQ(transformer.transformedValue(QByteArray("archive")), text(u"unarchived"));
    EXPECT_TRUE(transformer.transformedValue(QByteArray("garbage")).isNil());
    EXPECT_TRUE(transformer.transformedValue({}).isNil());
}

struct StandardTransformers : testing::Test {
    StandardTransformers() { registerStandardTransformers(registry, store, clock, codec, unarchiver); }
    [[nodiscard]] std::shared_ptr<const MWValueTransformer> named(const char16_t* name) const {
        return registry.valueTransformerForName(QString::fromUtf16(name));
    }

    ScriptedBookmarkStore store;
    const ScriptedImageCodec codec;
    const ScriptedTextUnarchiver unarchiver;
    const FakeClock clock;
    ValueTransformerRegistry registry;
};

/// What a transformer's class fixes.
struct ClassFacts {
    const char16_t* name;
    const std::type_info& type;
    ValueClass valueClass;
    bool allowsReverse;
};

const ClassFacts kClasses[] = {
    {u"MW1IfNot0", typeid(MW1IfNot0), ValueClass::number, false},
    {u"MWDateTagElaborated", typeid(MWDateTagElaborated), ValueClass::string, false},
    {u"MWEmptyTrimmedString", typeid(MWEmptyTrimmedString), ValueClass::number, false},
    {u"MWFilledTrimmedString", typeid(MWFilledTrimmedString), ValueClass::number, false},
    {u"MWHeightForFontSize", typeid(MWHeightForFontSize), ValueClass::number, false},
    {u"MWImgData", typeid(MWImgData), ValueClass::image, true},
    {u"MWIntToBool", typeid(MWIntToBool), ValueClass::number, true},
    {u"MWNameFromBookmark", typeid(MWNameFromBookmark), ValueClass::string, false},
    {u"MWNegateIntToBool", typeid(MWNegateIntToBool), ValueClass::number, true},
    {u"MWNumberBoolToNumberNum", typeid(MWNumberBoolToNumberNum), ValueClass::number, true},
    {u"MWOneIfOneInArray", typeid(MWOneIfOneInArray), ValueClass::number, true},
    {u"MWPathFromBookmark", typeid(MWPathFromBookmark), ValueClass::string, false},
    {u"MWReturnInitStr", typeid(MWReturnInitStr), ValueClass::string, false},
    {u"MWUnarchivieFromDataToText", typeid(MWUnarchivieFromDataToText), ValueClass::string, false},
    {u"MWValueIsEqualToRef", typeid(MWValueIsEqualToRef), ValueClass::number, true},
    {u"MWValueIsEqualToStr", typeid(MWValueIsEqualToStr), ValueClass::string, false},
    {u"MWValueIsGreaterOfRef", typeid(MWValueIsGreaterOfRef), ValueClass::number, false},
    {u"MWValueIsInArray", typeid(MWValueIsInArray), ValueClass::number, false},
    {u"MWValueIsInSet", typeid(MWValueIsInSet), ValueClass::number, false},
    {u"MWValueIsSmallerOfRef", typeid(MWValueIsSmallerOfRef), ValueClass::number, false},
    {u"MWValueMultipliedBy", typeid(MWValueMultipliedBy), ValueClass::number, false},
    {u"MWValueNotEqualToRef", typeid(MWValueNotEqualToRef), ValueClass::number, false},
};

TEST_F(StandardTransformers, areFoundByTheirClassNames) {
    for (const ClassFacts& facts : kClasses) {
        const auto transformer = named(facts.name);
        ASSERT_NE(transformer, nullptr) << QString::fromUtf16(facts.name).toStdString();
        const MWValueTransformer& found = *transformer;
        EXPECT_EQ(typeid(found), facts.type) << QString::fromUtf16(facts.name).toStdString();
    }
}

TEST_F(StandardTransformers, declareTheClassOfTheirValuesAndWhetherTheyReverse) {
    for (const ClassFacts& facts : kClasses) {
        const auto transformer = named(facts.name);
        ASSERT_NE(transformer, nullptr) << QString::fromUtf16(facts.name).toStdString();
        EXPECT_EQ(transformer->transformedValueClass(), facts.valueClass)
            << QString::fromUtf16(facts.name).toStdString();
        EXPECT_EQ(transformer->allowsReverseTransformation(), facts.allowsReverse)
            << QString::fromUtf16(facts.name).toStdString();
    }
}

TEST_F(StandardTransformers, giveNilBackwardsWhereTheyDoNotReverse) {
    store.url = QUrl::fromLocalFile(QStringLiteral("/home/user/Texts"));
    const Boxed values[] = {1, 0, true, text(u"text"), QByteArray("archive"), Boxed::Array{1}, Boxed()};
    for (const ClassFacts& facts : kClasses) {
        if (facts.allowsReverse) continue;
        for (const Boxed& value : values)
            EXPECT_TRUE(named(facts.name)->reverseTransformedValue(value).isNil())
                << QString::fromUtf16(facts.name).toStdString();
    }
}

TEST_F(StandardTransformers, haveNoReferenceUnderTheirClassNames) {
    EXPECT_EQ(named(u"MWValueIsEqualToRef")->transformedValue(0), Boxed(1));
    EXPECT_EQ(named(u"MWValueIsEqualToRef")->reverseTransformedValue(true), Boxed(0));
    EXPECT_EQ(named(u"MWValueNotEqualToRef")->transformedValue(0), Boxed(0));
    EXPECT_EQ(named(u"MWValueIsGreaterOfRef")->transformedValue(1), Boxed(1));
    EXPECT_EQ(named(u"MWValueIsGreaterOfRef")->transformedValue(0), Boxed(0));
    EXPECT_EQ(named(u"MWValueIsSmallerOfRef")->transformedValue(-1), Boxed(1));
    EXPECT_EQ(named(u"MWValueIsSmallerOfRef")->transformedValue(0), Boxed(0));
    EXPECT_EQ(named(u"MWValueMultipliedBy")->transformedValue(3), Boxed(0.0F));
    EXPECT_TRUE(named(u"MWReturnInitStr")->transformedValue(text(u"text")).isNil());
    EXPECT_EQ(named(u"MWValueIsEqualToStr")->transformedValue(text(u"")), Boxed(false));
    EXPECT_EQ(named(u"MWValueIsInSet")->transformedValue(0), Boxed(false));
    EXPECT_EQ(named(u"MWValueIsInArray")->transformedValue(0), Boxed(false));
}

TEST(ValueTransformerRegistry, answersNullForAnUnknownNameAndTheLastOfTwo) {
    ValueTransformerRegistry registry;
    EXPECT_EQ(registry.valueTransformerForName(QStringLiteral("unknown")), nullptr);
    const auto first = std::make_shared<MWValueIsEqualToRef>(1);
    const auto second = std::make_shared<MWValueIsEqualToRef>(2);
    registry.setValueTransformer(first, QStringLiteral("name"));
    registry.setValueTransformer(second, QStringLiteral("name"));
    EXPECT_EQ(registry.valueTransformerForName(QStringLiteral("name")), second);
}

} // namespace quillow
