#include "cli/Paths.h"

#include <gtest/gtest.h>

namespace quillow::cli {
namespace {

TEST(Paths, baseNameLosesFoldersAndTheLastExtension) {
    EXPECT_EQ(baseName("a/b/c.rtf"), "c");
    EXPECT_EQ(baseName("c.tar.html"), "c.tar");
    EXPECT_EQ(baseName("plain"), "plain");
    EXPECT_EQ(baseName(".html"), ".html");
    EXPECT_EQ(baseName("a.b/plain"), "plain");
    EXPECT_EQ(baseName("dot."), "dot.");
}

TEST(Paths, extensionIsInLowerCase) {
    EXPECT_EQ(extensionOf("A.RTF"), "rtf");
    EXPECT_EQ(extensionOf("a.b/c"), "");
    EXPECT_EQ(extensionOf(".pdf"), "");
    EXPECT_EQ(extensionOf("x.\xFF"), "\xFF");
}

TEST(Paths, foldersAndNamesAreTakenApartAndJoined) {
    EXPECT_EQ(folderPart("a/b/c"), "a/b");
    EXPECT_EQ(folderPart("c"), "");
    EXPECT_EQ(lastPart("a/b/c"), "c");
    EXPECT_EQ(joined("a", "b"), "a/b");
    EXPECT_EQ(joined("/", "b"), "/b");
    EXPECT_EQ(joined("", "b"), "b");
    EXPECT_EQ(withoutTrailingSlashes("a//"), "a");
    EXPECT_EQ(withoutTrailingSlashes("//"), "/");
}

TEST(Paths, folderBelowTheRootIsFoundHoweverItIsWritten) {
    EXPECT_EQ(folderBelow("docs", "docs/x/y/a.rtf", "/home"), "x/y");
    EXPECT_EQ(folderBelow("docs", "docs/a.rtf", "/home"), "");
    EXPECT_EQ(folderBelow("./docs/", "/home/docs/./x//a.rtf", "/home"), "x");
    EXPECT_EQ(folderBelow(".", "x/a.rtf", "/home"), "x");
    EXPECT_EQ(folderBelow("/home/docs", "../home/docs/z/../x/a.rtf", "/home"), "x");
    EXPECT_EQ(folderBelow("/", "/x/a.rtf", "/home"), "x");
    EXPECT_EQ(folderBelow("/", "/a.rtf", "/home"), "");
}

TEST(Paths, whatIsNotBelowTheRootHasNoFolderThere) {
    EXPECT_EQ(folderBelow("docs", "a.rtf", "/home"), std::nullopt);
    EXPECT_EQ(folderBelow("docs", "docs/../a.rtf", "/home"), std::nullopt);
    EXPECT_EQ(folderBelow("docs", "docs2/a.rtf", "/home"), std::nullopt);
    EXPECT_EQ(folderBelow("docs", "../../../../a.rtf", "/home"), std::nullopt);
    EXPECT_EQ(folderBelow("docs/x", "docs/a.rtf", "/home"), std::nullopt);
}

} // namespace
} // namespace quillow::cli
