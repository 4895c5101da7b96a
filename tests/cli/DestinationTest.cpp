#include "cli/Destination.h"

#include <gtest/gtest.h>

namespace quillow::cli {
namespace {

struct Case {
    std::optional<std::string> output;
    DestinationKind kind;
    std::string folder;
    std::string file;
};

TEST(Destination, isStandardOutputAFileOrAFolder) {
    const Case cases[] = {
        {std::nullopt, DestinationKind::standardOutput, "", ""},
        {"-", DestinationKind::standardOutput, "", ""},
        {"./-", DestinationKind::folder, "./-", ""},
        {"texts", DestinationKind::folder, "texts", ""},
        {"a.md", DestinationKind::folder, "a.md", ""},
        {"a.txt", DestinationKind::file, ".", "a.txt"},
        {"x/A.TXT", DestinationKind::file, "x", "A.TXT"},
        {"/a.txt", DestinationKind::file, "/", "a.txt"},
        {"a.txt/", DestinationKind::folder, "a.txt/", ""},
        {"folder.txt", DestinationKind::folder, "folder.txt", ""},
    };
    for (const Case& c : cases) {
        const Destination destination = destinationOf(c.output, [](const std::string& p) { return p == "folder.txt"; });
        EXPECT_EQ(destination.kind, c.kind) << c.output.value_or("");
        EXPECT_EQ(destination.folder, c.folder) << c.output.value_or("");
        EXPECT_EQ(destination.file, c.file) << c.output.value_or("");
    }
}

} // namespace
} // namespace quillow::cli
