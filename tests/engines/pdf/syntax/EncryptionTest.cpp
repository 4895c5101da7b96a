#include "engines/pdf/syntax/Document.h"
#include "tests/engines/pdf/PdfBuilder.h"
#include "tests/engines/pdf/crypt/EncryptedFiles.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

using test::PdfBuilder;

std::string hexadecimal(std::string_view bytes) {
    std::string text = "<";
    for (const char byte : bytes) {
        constexpr std::string_view kDigits = "0123456789ABCDEF";
        text.push_back(kDigits[static_cast<std::uint8_t>(byte) >> 4]);
        text.push_back(kDigits[static_cast<std::uint8_t>(byte) & 15]);
    }
    return text + ">";
}

constexpr std::uint32_t kCatalog = 20;
constexpr std::uint32_t kEncryption = 30;

std::string encryptionDictionary(const EncryptedFile& file) {
    std::string text = "<</Filter/Standard/V " + std::to_string(file.version) + "/R " + std::to_string(file.revision) +
                       "/Length " + std::to_string(file.lengthInBits) + "/P " + std::to_string(file.permissions) +
                       "/O" + hexadecimal(file.owner) + "/U" + hexadecimal(file.user);
    if (!file.ownerKey.empty()) text += "/OE" + hexadecimal(file.ownerKey) + "/UE" + hexadecimal(file.userKey);
    if (!file.encryptsMetadata) text += "/EncryptMetadata false";
    if (!file.method.empty()) {
        text += "/CF<</StdCF<</CFM/" + std::string(file.method) + "/Length " + std::to_string(file.filterLength) +
                ">>>>/StmF/StdCF/StrF/StdCF";
    }
    return text + ">>";
}

std::string trailerOf(const EncryptedFile& file) {
    return "/Root 20 0 R/Encrypt 30 0 R/ID[" + hexadecimal(file.documentId) + "<00>]";
}

/// A page, the file's string and stream under their numbers, and the encryption dictionary.
PdfBuilder objectsOf(const EncryptedFile& file, std::string_view streamEntries = "") {
    PdfBuilder pdf;
    pdf.object(kCatalog, "<</Type/Catalog/Pages 21 0 R>>")
        .object(21, "<</Type/Pages/Kids[22 0 R]>>")
        .object(22, "<</Type/Page>>")
        .object(file.stringNumber, hexadecimal(file.string))
        .stream(file.streamNumber, streamEntries, file.stream)
        .object(kEncryption, encryptionDictionary(file));
    return pdf;
}

struct Contents {
    std::string string;
    std::string stream;
};

/// The string and the stream of a document that opens; of another one, why it does not.
Contents contentsOf(std::string_view bytes, const EncryptedFile& file, std::string_view password) {
    auto result = Document::open(bytes, password);
    if (!result) return {result.failure().reason == Reason::locked ? "locked" : "not opened", ""};
    Document& document = *result.value();
    const StreamContent* const stream = document.load({file.streamNumber, 0}).stream();
    text::ByteBuffer buffer;
    return {std::string(document.load({file.stringNumber, 0}).string()),
            stream == nullptr ? "no stream" : std::string(document.decode(*stream, buffer).bytes)};
}

TEST(Encryption, stringsAndStreamsAreDecrypted) {
    for (const EncryptedFile& file : encryptedFiles()) {
        for (const std::string& bytes :
             {objectsOf(file).table(trailerOf(file)).bytes(), objectsOf(file).xrefStream(40, trailerOf(file)).bytes(),
              objectsOf(file).bytes() + "trailer<<" + trailerOf(file) + ">>"}) {
            const Contents contents = contentsOf(bytes, file, file.userPassword);
            EXPECT_EQ(contents.string, kPlainString) << file.name;
            EXPECT_EQ(contents.stream, kPlainStream) << file.name;
        }
    }
}

TEST(Encryption, documentsThatThePasswordDoesNotOpenAreLocked) {
    const EncryptedFile& file = encryptedFile("aes128");
    const std::string bytes = objectsOf(file).table(trailerOf(file)).bytes();

    EXPECT_EQ(contentsOf(bytes, file, "").string, "locked");
    EXPECT_EQ(contentsOf(bytes, file, "other").string, "locked");
    EXPECT_EQ(contentsOf(bytes, file, file.ownerPassword).string, kPlainString);
    EXPECT_EQ(contentsOf(objectsOf(file).bytes() + "trailer<<" + trailerOf(file) + ">>", file, "").string, "locked");
}

TEST(Encryption, theDictionaryMayBeInTheTrailer) {
    const EncryptedFile& file = encryptedFile("emptyUserOfRevision4");
    const std::string bytes =
        objectsOf(file)
            .table("/Root 20 0 R/Encrypt" + encryptionDictionary(file) + "/ID[" + hexadecimal(file.documentId) + "]")
            .bytes();

    EXPECT_EQ(contentsOf(bytes, file, "").string, kPlainString);
}

TEST(Encryption, itsOwnDictionaryIsPlainForAllThreads) {
    const EncryptedFile& file = encryptedFile("emptyUserOfRevision4");
    const std::string bytes = objectsOf(file).table(trailerOf(file)).bytes();
    auto result = Document::open(bytes);
    ASSERT_TRUE(result.ok());

    const auto other = result.value()->forThread();

    EXPECT_EQ(other->load({kEncryption, 0}).dictionary().find("O").string(), file.owner);
    EXPECT_EQ(other->load({file.stringNumber, 0}).string(), kPlainString);
}

TEST(Encryption, objectsOfObjectStreamsAreNotEncryptedAgain) {
    EncryptedFile file = encryptedFile("emptyUserOfRevision2");
    // RC4 adds the same bytes to every text of one object, and the plain text of the stream is known.
    std::string objects = "50 0 (inner)";
    for (std::size_t i = 0; i < objects.size(); ++i)
        objects[i] = static_cast<char>(objects[i] ^ file.stream[i] ^ kPlainStream[i]);
    file.stream = objects;
    const std::string bytes =
        objectsOf(file, "/Type/ObjStm/N 1/First 5").bytes() + "trailer<<" + trailerOf(file) + ">>";

    auto result = Document::open(bytes);

    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value()->load({50, 0}).string(), "inner");
}

TEST(Encryption, metadataMayBePlain) {
    EncryptedFile file = encryptedFile("aes256WithPlainMetadata");
    file.stream = "plain metadata";
    const auto streamOf = [&](std::string_view entries) {
        return contentsOf(objectsOf(file, entries).table(trailerOf(file)).bytes(), file, file.userPassword).stream;
    };

    EXPECT_EQ(streamOf("/Type/Metadata"), "plain metadata");
    EXPECT_EQ(streamOf("/Type/XRef"), "plain metadata");
    EXPECT_NE(streamOf("/Type/XObject"), "plain metadata");
}

TEST(Encryption, aStreamMayHaveACryptFilterOfItsOwn) {
    EncryptedFile file = encryptedFile("emptyUserOfRevision4");
    const auto streamOf = [&](std::string_view entries) {
        return contentsOf(objectsOf(file, entries).table(trailerOf(file)).bytes(), file, "").stream;
    };

    EXPECT_EQ(streamOf("/Filter/Crypt/DecodeParms<</Name/StdCF>>"), kPlainStream);
    EXPECT_EQ(streamOf("/Filter[/Crypt]/DecodeParms[<</Name/StdCF>>]"), kPlainStream);
    EXPECT_EQ(streamOf("/Filter/Crypt/DecodeParms<</Name/Identity>>"), file.stream);
    EXPECT_EQ(streamOf("/Filter/Crypt"), file.stream);
}

TEST(Encryption, attachmentsAloneMayNeedAPassword) {
    EncryptedFile file = encryptedFile("aes256");
    file.string = kPlainString;
    file.stream = kPlainStream;
    std::string bytes = objectsOf(file).table(trailerOf(file)).bytes();
    for (std::string_view entry : {"/StmF/StdCF", "/StrF/StdCF"})
        bytes.replace(bytes.find(entry), entry.size(), std::string(entry.substr(0, 5)) + "/Identity");

    const Contents contents = contentsOf(bytes, file, "");

    EXPECT_EQ(contents.string, kPlainString);
    EXPECT_EQ(contents.stream, kPlainStream);
}

} // namespace
} // namespace quillow::pdf
