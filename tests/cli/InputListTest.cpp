#include "cli/InputList.h"

#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillow::cli {
namespace {

using test::TemporaryFolder;
using Paths = std::vector<std::string>;

std::vector<NamedInput> found(const Arguments& arguments) {
    auto outcome = findInputs(arguments);
    if (const auto* const failure = std::get_if<InputFailure>(&outcome)) ADD_FAILURE() << failure->detail;
    return std::get<std::vector<NamedInput>>(std::move(outcome));
}

/// The inputs' paths relative to the folder; each failed input has its reason appended.
Paths pathsBelow(const TemporaryFolder& folder, const std::vector<NamedInput>& inputs) {
    Paths paths;
    for (const NamedInput& input : inputs) {
        const std::string path =
            input.path.starts_with(folder.at("")) ? input.path.substr(folder.at("").size()) : input.path;
        paths.push_back(path + (input.failure ? ": " + std::string(reasonName(input.failure->reason)) : ""));
    }
    return paths;
}

Paths walked(const TemporaryFolder& folder, const std::string& name) {
    Arguments arguments;
    arguments.inputs = {folder.at(name)};
    arguments.folders = Folders::walked;
    return pathsBelow(folder, found(arguments));
}

TEST(InputList, namedInputsStayAsTheyAreButForTheirSlashes) {
    Arguments arguments;
    arguments.inputs = {"b.rtf", "a.rtfd//", "-", "none"};

    EXPECT_EQ(pathsBelow(TemporaryFolder(), found(arguments)), (Paths{"b.rtf", "a.rtfd", "-", "none"}));
}

TEST(InputList, walkTakesDocumentsInTheOrderOfTheirNames) {
    const TemporaryFolder folder;
    for (const char* name :
         {"d/z.RTF", "d/b/x.htm", "d/b.pdf", "d/a.html", "d/.hidden/y.rtf", "d/note.txt", "d/rtf", "d/c/c/c.rtf"})
        folder.put(name, "");

    EXPECT_EQ(walked(folder, "d"),
              (Paths{"d/.hidden/y.rtf", "d/a.html", "d/b/x.htm", "d/b.pdf", "d/c/c/c.rtf", "d/z.RTF"}));
    EXPECT_EQ(walked(folder, "d//"), walked(folder, "d"));
}

TEST(InputList, bundleIsOneDocumentOfAWalk) {
    const TemporaryFolder folder;
    folder.put("d/a.RTFD/TXT.rtf", "");
    folder.put("d/a.RTFD/attached.pdf", "");
    std::filesystem::create_directory_symlink("a.RTFD", folder.at("d/b.rtfd"));

    EXPECT_EQ(walked(folder, "d"), (Paths{"d/a.RTFD", "d/b.rtfd"}));
    EXPECT_EQ(walked(folder, "d/a.RTFD/"), Paths{"d/a.RTFD"});
}

TEST(InputList, walkFollowsNoLinkToAFolder) {
    const TemporaryFolder folder;
    folder.put("outside/x.rtf", "");
    folder.put("d/a/b.rtf", "");
    std::filesystem::create_directory_symlink("..", folder.at("d/a/loop"));
    std::filesystem::create_directory_symlink("../outside", folder.at("d/out"));
    std::filesystem::create_symlink("../outside/x.rtf", folder.at("d/x.rtf"));
    std::filesystem::create_symlink("nowhere", folder.at("d/gone.pdf"));
    std::filesystem::create_directory_symlink("d", folder.at("start"));

    EXPECT_EQ(walked(folder, "d"), (Paths{"d/a/b.rtf", "d/gone.pdf", "d/x.rtf"}));
    EXPECT_EQ(walked(folder, "start"), (Paths{"start/a/b.rtf", "start/gone.pdf", "start/x.rtf"}));
}

TEST(InputList, walkNeverWaitsForAPipe) {
    const TemporaryFolder folder;
    folder.put("d/a.rtf", "");
    ASSERT_EQ(::mkfifo(folder.at("d/p.rtf").c_str(), 0600), 0);

    EXPECT_EQ(walked(folder, "d"), Paths{"d/a.rtf"});
}

TEST(InputList, folderThatCannotBeLookedIntoIsTold) {
    if (::geteuid() == 0) GTEST_SKIP() << "root looks into every folder";
    const TemporaryFolder folder;
    folder.put("d/a.rtf", "");
    folder.put("d/b/x.rtf", "");
    folder.put("d/c.rtf", "");
    ASSERT_EQ(::chmod(folder.at("d/b").c_str(), 0), 0);

    EXPECT_EQ(walked(folder, "d"), (Paths{"d/a.rtf", "d/b: unreadable", "d/c.rtf"}));
    ::chmod(folder.at("d/b").c_str(), 0700);
}

TEST(InputList, pathTooLongForTheSystemIsTold) {
    const TemporaryFolder folder;
    const std::string part(250, 'n');
    const std::filesystem::path before = std::filesystem::current_path();
    folder.put("d/z.rtf", "");
    std::filesystem::current_path(folder.at("d"));
    for (int i = 0; i < 20; ++i) {
        std::filesystem::create_directory(part);
        std::filesystem::current_path(part);
    }
    std::filesystem::current_path(before);

    const Paths paths = walked(folder, "d");

    ASSERT_EQ(paths.size(), 2U);
    EXPECT_TRUE(paths[0].ends_with("n: unreadable"));
    EXPECT_EQ(paths[1], "d/z.rtf");
    EXPECT_EQ(std::system(("rm -rf '" + folder.at("d") + "'").c_str()), 0); // too long for remove_all()
}

Arguments listing(const std::string& list, NameEnd end) {
    Arguments arguments;
    arguments.inputs = {"first.rtf"};
    arguments.inputList = list;
    arguments.nameEnd = end;
    return arguments;
}

TEST(InputList, listedNamesComeAfterTheNamedOnes) {
    const TemporaryFolder folder;
    const std::string lines = folder.put("lines", "a b.rtf\n\n-\n--x\nlast.pdf");
    const std::string nuls = folder.put("nuls", std::string_view("a\nb.rtf\0\0-\0", 11));

    EXPECT_EQ(pathsBelow(folder, found(listing(lines, NameEnd::newline))),
              (Paths{"first.rtf", "a b.rtf", "./-", "--x", "last.pdf"}));
    EXPECT_EQ(pathsBelow(folder, found(listing(nuls, NameEnd::nul))), (Paths{"first.rtf", "a\nb.rtf", "./-"}));
}

TEST(InputList, listedFoldersAreWalkedToo) {
    const TemporaryFolder folder;
    folder.put("d/a.rtf", "");
    Arguments arguments = listing(folder.put("lines", folder.at("d") + "\n"), NameEnd::newline);
    arguments.folders = Folders::walked;

    EXPECT_EQ(pathsBelow(folder, found(arguments)), (Paths{"first.rtf", "d/a.rtf"}));
}

TEST(InputList, listThatCannotBeReadFails) {
    const TemporaryFolder folder;
    const auto detail = [](const Arguments& arguments) {
        const auto outcome = findInputs(arguments);
        const auto* const failure = std::get_if<InputFailure>(&outcome);
        return failure == nullptr ? std::string() : failure->detail;
    };

    EXPECT_EQ(detail(listing(folder.at("none"), NameEnd::newline)), "No such file or directory");
    EXPECT_EQ(detail(listing(folder.put("nuls", std::string_view("a\0b\0", 4)), NameEnd::newline)),
              "it holds NUL bytes; -0 is for lists whose names end with one");
}

} // namespace
} // namespace quillow::cli
