#include "engines/pdf/crypt/Decryption.h"

#include "tests/engines/pdf/crypt/EncryptedFiles.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

using namespace std::string_literals;

std::string stringOf(const Decryption& decryption, const EncryptedFile& file) {
    text::ByteBuffer out;
    out.append("before:");
    decryption.decryptString(file.stringNumber, 0, file.string, out);
    return std::string(out.view());
}

std::string streamOf(const Decryption& decryption, const EncryptedFile& file, std::string_view cryptFilter = {}) {
    text::ByteBuffer out;
    decryption.decryptStream(file.streamNumber, 0, cryptFilter, file.stream, out);
    return std::string(out.view());
}

/// Whether the password opens the document and gives its string and its stream.
bool reads(const EncryptionValues& values, std::string_view password, const EncryptedFile& file) {
    const auto decryption = Decryption::open(values, password);
    return decryption && stringOf(*decryption, file) == "before:" + std::string(kPlainString) &&
           streamOf(*decryption, file) == kPlainStream;
}

TEST(Decryption, bothPasswordsOpenEveryRevision) {
    for (const EncryptedFile& file : encryptedFiles()) {
        EXPECT_TRUE(reads(valuesOf(file), file.userPassword, file)) << file.name;
        EXPECT_TRUE(reads(valuesOf(file), file.ownerPassword, file)) << file.name;
    }
}

TEST(Decryption, emptyPasswordIsTriedBeforeAnyOther) {
    for (const std::string_view name : {"emptyUserOfRevision2", "emptyUserOfRevision4", "emptyUserOfRevision6"}) {
        const EncryptedFile& file = encryptedFile(name);
        EXPECT_TRUE(reads(valuesOf(file), "", file)) << name;
        EXPECT_TRUE(reads(valuesOf(file), "wrong", file)) << name;
    }
}

TEST(Decryption, wrongPasswordOpensNothing) {
    for (const EncryptedFile& file : encryptedFiles()) {
        if (file.userPassword.empty()) continue;
        EXPECT_EQ(Decryption::open(valuesOf(file), ""), nullptr) << file.name;
        EXPECT_EQ(Decryption::open(valuesOf(file), "User"), nullptr) << file.name;
    }
}

TEST(Decryption, onlyTheHashedPartOfALongPasswordCounts) {
    const EncryptedFile& old = encryptedFile("longPasswordOfRevision3");
    EXPECT_TRUE(reads(valuesOf(old), old.userPassword.substr(0, 32), old));
    EXPECT_FALSE(reads(valuesOf(old), old.userPassword.substr(0, 31), old));
    const EncryptedFile& recent = encryptedFile("longPasswordOfRevision6");
    EXPECT_TRUE(reads(valuesOf(recent), std::string(recent.userPassword) + "more", recent));
    EXPECT_FALSE(reads(valuesOf(recent), recent.userPassword.substr(0, 126), recent));
}

TEST(Decryption, lengthOfTheKeyMayBeInBytesOrWrongOrAbsent) {
    struct Case {
        std::string_view file;
        int length;
    };
    const Case cases[] = {{"rc4Of40Bits", 5},   {"rc4Of40Bits", 128}, {"rc4Of40Bits", 0},    {"rc4Of128Bits", 16},
                          {"rc4Of128Bits", 40}, {"rc4Of128Bits", -8}, {"rc4Of128Bits", 256}, {"aes128", 16},
                          {"aes128", 40},       {"aes128", 256}};
    for (const Case& each : cases) {
        const EncryptedFile& file = encryptedFile(each.file);
        EncryptionValues values = valuesOf(file);
        values.lengthInBits = each.length;
        EXPECT_TRUE(reads(values, "user", file)) << each.file << ' ' << each.length;
    }
}

TEST(Decryption, permissionsMayBeWrittenWithoutSign) {
    for (const EncryptedFile& file : encryptedFiles()) {
        EncryptionValues values = valuesOf(file);
        values.permissions &= 0xFFFFFFFF;
        EXPECT_TRUE(reads(values, file.userPassword, file)) << file.name;
    }
}

TEST(Decryption, ownerAndUserStringsMayBeLonger) {
    for (const EncryptedFile& file : encryptedFiles()) {
        EncryptionValues values = valuesOf(file);
        std::string owner(file.owner);
        std::string user(file.user);
        owner.resize(127);
        user.resize(127);
        values.owner = owner;
        values.user = user;
        EXPECT_TRUE(reads(values, file.userPassword, file)) << file.name;
        EXPECT_TRUE(reads(values, file.ownerPassword, file)) << file.name;
    }
}

TEST(Decryption, shortOrMissingValuesOpenNothing) {
    for (const EncryptedFile& file : encryptedFiles()) {
        if (file.userPassword.empty()) continue;
        EncryptionValues values = valuesOf(file);
        values.user = values.user.substr(0, 15);
        EXPECT_EQ(Decryption::open(values, file.userPassword), nullptr) << file.name;
        values = valuesOf(file);
        values.owner = values.owner.substr(0, 15);
        EXPECT_EQ(Decryption::open(values, file.ownerPassword), nullptr) << file.name;
        EXPECT_EQ(Decryption::open(EncryptionValues{}, file.userPassword), nullptr);
    }
}

TEST(Decryption, keyOfOneEntryIsEnough) {
    const EncryptedFile& file = encryptedFile("aes256");
    EncryptionValues values = valuesOf(file);
    values.userKey = values.userKey.substr(0, 31);
    EXPECT_EQ(Decryption::open(values, "user"), nullptr);
    EXPECT_TRUE(reads(values, "owner", file));
    values.ownerKey = {};
    EXPECT_EQ(Decryption::open(values, "owner"), nullptr);
}

TEST(Decryption, unknownHandlersAndVersionsOpenNothing) {
    const EncryptedFile& file = encryptedFile("aes128");
    const auto opensWith = [&file](auto change) {
        EncryptionValues values = valuesOf(file);
        change(values);
        return Decryption::open(values, "user") != nullptr;
    };
    EXPECT_TRUE(opensWith([](EncryptionValues&) {}));
    EXPECT_FALSE(opensWith([](EncryptionValues& values) { values.filter = "Adobe.PubSec"; }));
    EXPECT_FALSE(opensWith([](EncryptionValues& values) { values.version = 0; }));
    EXPECT_FALSE(opensWith([](EncryptionValues& values) { values.version = 5; }));
    EXPECT_FALSE(opensWith([](EncryptionValues& values) { values.version = 6; }));
    EXPECT_FALSE(opensWith([](EncryptionValues& values) { values.revision = 1; }));
    EXPECT_FALSE(opensWith([](EncryptionValues& values) { values.revision = 7; }));
}

TEST(Decryption, cryptFiltersAreFoundByName) {
    const EncryptedFile& file = encryptedFile("aes128");
    EncryptionValues values = valuesOf(file);
    values.cryptFilters = {{"Plain", "None", 0}, {"Old", "V2", 16}, {"New", "AESV2", 16}};
    values.streamFilter = "New";
    values.stringFilter = "Plain";

    const auto decryption = Decryption::open(values, "user");

    ASSERT_NE(decryption, nullptr);
    EXPECT_EQ(stringOf(*decryption, file), "before:" + std::string(file.string));
    EXPECT_EQ(streamOf(*decryption, file), kPlainStream);
    EXPECT_EQ(streamOf(*decryption, file, "New"), kPlainStream);
    EXPECT_EQ(streamOf(*decryption, file, "Plain"), file.stream);
    EXPECT_EQ(streamOf(*decryption, file, "Identity"), file.stream);
    EXPECT_EQ(streamOf(*decryption, file, "Old").size(), file.stream.size()) << "by the other cipher";
    EXPECT_NE(streamOf(*decryption, file, "Old"), file.stream);
}

TEST(Decryption, identityLeavesBytesAsTheyAre) {
    const EncryptedFile& file = encryptedFile("aes256");
    EncryptionValues values = valuesOf(file);
    values.streamFilter = "Identity";
    values.stringFilter = "Identity";
    const auto decryption = Decryption::open(values, "user");
    ASSERT_NE(decryption, nullptr);
    EXPECT_EQ(streamOf(*decryption, file), file.stream);
    EXPECT_EQ(stringOf(*decryption, file), "before:" + std::string(file.string));
    EXPECT_EQ(streamOf(*decryption, file, "StdCF"), kPlainStream);
}

TEST(Decryption, filterThatIsNotDescribedHasTheMethodOfTheVersion) {
    for (const std::string_view name : {"aes128", "aes256"}) {
        const EncryptedFile& file = encryptedFile(name);
        EncryptionValues values = valuesOf(file);
        values.cryptFilters.clear();
        EXPECT_TRUE(reads(values, "user", file)) << name;
    }
}

TEST(Decryption, methodThatCannotUseTheKeyGivesWayToThatOfTheVersion) {
    struct Case {
        std::string_view file;
        std::string_view method;
    };
    for (const Case& each : {Case{"aes128", "AESV3"}, Case{"aes256", "AESV2"}, Case{"aes256", "V2"}}) {
        const EncryptedFile& file = encryptedFile(each.file);
        EncryptionValues values = valuesOf(file);
        values.cryptFilters.front().method = each.method;
        EXPECT_TRUE(reads(values, "user", file)) << each.file << ' ' << each.method;
    }
}

TEST(Decryption, metadataMayBePlain) {
    EXPECT_FALSE(Decryption::open(valuesOf(encryptedFile("aes128WithPlainMetadata")), "user")->encryptsMetadata());
    EXPECT_FALSE(Decryption::open(valuesOf(encryptedFile("aes256WithPlainMetadata")), "user")->encryptsMetadata());
    EXPECT_TRUE(Decryption::open(valuesOf(encryptedFile("aes256")), "user")->encryptsMetadata());
}

TEST(Decryption, everyObjectHasItsKey) {
    for (const std::string_view name : {"rc4Of40Bits", "rc4Of128Bits", "aes128"}) {
        const EncryptedFile& file = encryptedFile(name);
        const auto decryption = Decryption::open(valuesOf(file), "user");
        ASSERT_NE(decryption, nullptr);
        text::ByteBuffer out;
        decryption->decryptStream(file.streamNumber + 1, 0, {}, file.stream, out);
        EXPECT_NE(out.view().substr(0, 16), kPlainStream.substr(0, 16)) << name;
        out.clear();
        decryption->decryptStream(file.streamNumber, 1, {}, file.stream, out);
        EXPECT_NE(out.view().substr(0, 16), kPlainStream.substr(0, 16)) << name;
    }
}

std::string decryptedStream(const EncryptedFile& file, std::string_view bytes) {
    text::ByteBuffer out;
    Decryption::open(valuesOf(file), "user")->decryptStream(file.streamNumber, 0, {}, bytes, out);
    return std::string(out.view());
}

TEST(Decryption, brokenAesDataGivesItsWholeBlocks) {
    for (const std::string_view name : {"aes128", "aes256"}) {
        const EncryptedFile& file = encryptedFile(name);
        ASSERT_EQ(file.stream.size(), 64U);
        const auto first = [&file](std::size_t size) { return decryptedStream(file, file.stream.substr(0, size)); };
        EXPECT_EQ(first(63), kPlainStream.substr(0, 32)) << "a last block that is not whole";
        EXPECT_EQ(first(48), kPlainStream.substr(0, 32)) << "no padding";
        EXPECT_EQ(first(32), kPlainStream.substr(0, 16));
        EXPECT_EQ(first(31), "");
        EXPECT_EQ(first(16), "");
        EXPECT_EQ(first(3), "");
        EXPECT_EQ(first(0), "");
        std::string changed(file.stream);
        changed[47] = static_cast<char>(changed[47] ^ 0x40); // the last byte of the padding
        EXPECT_EQ(decryptedStream(file, changed).size(), 48U);
    }
}

TEST(Decryption, emptyDataStaysEmpty) {
    for (const EncryptedFile& file : encryptedFiles()) {
        text::ByteBuffer out;
        Decryption::open(valuesOf(file), file.userPassword)->decryptString(1, 0, "", out);
        EXPECT_EQ(out.size(), 0U) << file.name;
    }
}

} // namespace
} // namespace quillow::pdf
