// The real program with documents that attack their worker, and without any worker.
#include "cli/Program.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace quillow::cli {
namespace {

using test::Outcome;
using test::run;
using test::TemporaryFolder;

namespace fs = std::filesystem;

/// A copy of the program in a folder of its own.
struct Copy {
    Copy() { fs::copy_file(QUILLOW_BINARY_DIR "/bin/quillow-convert", setting.program = folder.at("quillow-convert")); }
    /// The program finds a worker whose documents attack.
    void addWorker() { fs::copy_file(QUILLOW_BINARY_DIR "/bin/attack_worker", folder.at("quillow-worker")); }

    TemporaryFolder folder;
    test::RunSetting setting;
};

struct Isolation : testing::Test {
    Isolation() { copy.addWorker(); }
    std::string attack(const std::string& name) { return copy.folder.put(name + ".rtf", "attack:" + name); }
    std::string harmless(const std::string& name) { return copy.folder.put(name, "{\\rtf1 " + name + "}"); }
    Outcome convert(const std::vector<std::string>& arguments) { return run(arguments, copy.setting); }

    Copy copy;
};

#if !defined(__SANITIZE_ADDRESS__) // its runtime handles the signal
TEST_F(Isolation, aDocumentThatCrashesFailsAloneAndTheRunGoesOn) {
    const std::string attacks = attack("crash");
    const Outcome done = convert({harmless("a.rtf"), attacks, harmless("b.rtf")});
    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_EQ(done.output, "a.rtf\nb.rtf\n");
    EXPECT_EQ(done.errors,
              "quillow-convert: " + attacks + ": crashed (its reader used memory that it does not have)\n");
}
#endif

TEST_F(Isolation, aDocumentThatTakesTooLongFailsAlone) {
    const std::string attacks = attack("loop");
    const Outcome done = convert({"--timeout", "1", attacks, harmless("b.rtf")});
    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_EQ(done.output, "b.rtf\n");
    EXPECT_EQ(done.errors, "quillow-convert: " + attacks + ": timeout (it took longer than 1 second)\n");
}

#if !defined(__SANITIZE_ADDRESS__)
TEST_F(Isolation, aDocumentThatNeedsTooMuchMemoryFailsAlone) {
    const std::string attacks = attack("allocate");
    const Outcome done = convert({"--max-memory", "100", attacks, harmless("b.rtf")});
    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_EQ(done.output, "b.rtf\n");
    EXPECT_EQ(done.errors,
              "quillow-convert: " + attacks + ": out-of-memory (the document needs more memory than it may use)\n");
}
#endif

#if !defined(__SANITIZE_ADDRESS__) // its runtime needs to write
TEST_F(Isolation, aLargeFileReachesTheWorkerByItsDescriptor) {
    const std::string text(std::size_t{3} << 20, 'x');
    const std::string path = copy.folder.put("large.rtf", "{\\rtf1 " + text + "}");
    EXPECT_TRUE(convert({path}).output == text + "\n");
    const std::string attacks = copy.folder.put("attack.rtf", "attack:write-document " + text);
    EXPECT_EQ(convert({attacks}).output, "refused\n");
}
#endif

TEST(WithoutWorker, nothingIsConvertedUnlessTheUserWantsNoIsolation) {
    Copy copy;
    const std::string path = copy.folder.put("a.rtf", "{\\rtf1 text}");
    const Outcome refused = run({path}, copy.setting);
    EXPECT_EQ(refused.exitCode, kSomeFailed);
    EXPECT_EQ(refused.output, "");
    EXPECT_EQ(refused.errors, "quillow-convert: quillow-worker, in which documents are isolated, is not found; "
                              "'--in-process' reads without isolation\n");
    EXPECT_EQ(run({"--in-process", path}, copy.setting).output, "text\n");
}

TEST(WithoutWorker, theVersionSaysSo) {
    const Copy copy;
    EXPECT_TRUE(run({"--version", "--verbose"}, copy.setting)
                    .output.ends_with("isolation: none, because quillow-worker is not found\n"));
}

TEST(WithWorker, itIsFoundInAnInstallation) {
    const TemporaryFolder folder;
    fs::create_directories(folder.at("bin"));
    fs::create_directories(folder.at("libexec/quillow"));
    test::RunSetting setting;
    fs::copy_file(QUILLOW_BINARY_DIR "/bin/quillow-convert", setting.program = folder.at("bin/quillow-convert"));
    fs::copy_file(QUILLOW_BINARY_DIR "/bin/quillow-worker", folder.at("libexec/quillow/quillow-worker"));
    EXPECT_EQ(run({folder.put("a.rtf", "{\\rtf1 text}")}, setting).output, "text\n");
}

TEST(WithWorker, theVersionSaysWhatIsIsolated) {
    const Outcome done = run({"--version", "--verbose"});
    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_NE(done.output.find("\nisolation: "), std::string::npos) << done.output;
    EXPECT_EQ(run({"--version"}).output.find("isolation"), std::string::npos);
}

} // namespace
} // namespace quillow::cli
