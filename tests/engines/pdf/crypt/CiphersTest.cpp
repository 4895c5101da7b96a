#include "engines/pdf/crypt/Ciphers.h"

#include <gtest/gtest.h>

#include <string>

namespace quillow::pdf {
namespace {

using namespace std::string_literals;

std::string hex(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        text += kDigits[static_cast<std::uint8_t>(byte) >> 4];
        text += kDigits[static_cast<std::uint8_t>(byte) & 15];
    }
    return text;
}

/// The bytes from `first` upwards.
std::string counting(int first, int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>(first + i);
    return bytes;
}

TEST(Ciphers, libraryIsLoadedWhenItIsAskedFor) {
    EXPECT_TRUE(hasCiphers());
}

TEST(Ciphers, digestsOfTheStandardsExamples) {
    EXPECT_EQ(hex(viewOf(md5({"abc"}))), "900150983cd24fb0d6963f7d28e17f72"); // RFC 1321, A.5
    EXPECT_EQ(hex(sha256({"abc"}).view()),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"); // FIPS 180-4
    EXPECT_EQ(hex(sha384("abc").view()), "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed"
                                         "8086072ba1e7cc2358baeca134c825a7");
    EXPECT_EQ(hex(sha512("abc").view()), "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
                                         "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f");
}

TEST(Ciphers, digestIsThatOfAllParts) {
    EXPECT_EQ(md5({"a", "", "bc"}), md5({"abc"}));
    EXPECT_EQ(sha256({"ab", "c"}).view(), sha256({"abc"}).view());
}

TEST(Ciphers, rc4OfRfc6229) {
    std::string stream(16, '\0');
    rc4("\1\2\3\4\5", stream, stream.data());
    EXPECT_EQ(hex(stream), "b2396305f03dc027ccc3524a0a1118a8");
}

TEST(Ciphers, aesOfFips197) {
    const std::string plain = [] {
        std::string bytes;
        for (int i = 0; i < 16; ++i)
            bytes += static_cast<char>(i * 0x11);
        return bytes;
    }();
    const std::string zeros(16, '\0');
    std::string encrypted(16, '\0');
    encryptAes128(counting(0, 16), zeros, plain, encrypted.data());
    EXPECT_EQ(hex(encrypted), "69c4e0d86a7b0430d8cdb78070b4c55a");
    std::string decrypted(16, '\0');
    decryptAes(counting(0, 16), zeros, encrypted, decrypted.data());
    EXPECT_EQ(decrypted, plain);
    const std::string encrypted256 = "\x8e\xa2\xb7\xca\x51\x67\x45\xbf\xea\xfc\x49\x90\x4b\x49\x60\x89";
    decryptAes(counting(0, 32), zeros, encrypted256, decrypted.data());
    EXPECT_EQ(decrypted, plain);
}

TEST(Ciphers, blocksAreChained) {
    const std::string key = counting(0, 16);
    const std::string vector = counting(100, 16);
    const std::string plain(48, 'x');
    std::string bytes = plain;
    encryptAes128(key, vector, bytes, bytes.data());
    EXPECT_NE(bytes.substr(0, 16), bytes.substr(16, 16));
    std::string decrypted(48, '\0');
    decryptAes(key, vector, bytes, decrypted.data());
    EXPECT_EQ(decrypted, plain);
}

} // namespace
} // namespace quillow::pdf
