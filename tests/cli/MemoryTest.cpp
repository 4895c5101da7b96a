// End to end: the real program where memory is limited. The address sanitizer needs more than these limits.
#include "cli/Program.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>

#if !defined(__SANITIZE_ADDRESS__)

namespace quillow::cli {
namespace {

using test::Outcome;
using test::readFile;
using test::run;
using test::TemporaryFolder;

constexpr std::string_view kRtf = "{\\rtf1\\ansi Hello\\par World}";
constexpr std::string_view kRtfText = "Hello\nWorld\n";

std::string pdfPath(const std::string& name) {
    return QUILLOW_SOURCE_DIR "/tests/data/pdf/" + name + ".in";
}

std::string pdf(const std::string& name) {
    return readFile(pdfPath(name));
}

TEST(Memory, hostileNestingStaysInBoundedMemory) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.prefix = {"prlimit", "--as=734003200"}; // the document, and as much again for the text and for the nesting

    const Outcome rtf = run({folder.put("deep.rtf", std::string(100 << 20, '{'))}, setting);
    EXPECT_EQ(rtf.signal, 0);
    EXPECT_NE(rtf.exitCode, -1);
    const Outcome headed = run({folder.put("deep2.rtf", "{\\rtf1" + std::string(100 << 20, '{') + "x")}, setting);
    EXPECT_EQ(headed.output, "x\n");
}

TEST(Memory, memoryThatEndsIsTheDocumentsFailure) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.prefix = {"prlimit", "--as=268435456"};

    const Outcome done =
        run({"-j1", folder.put("big.rtf", "{\\rtf1 " + std::string(240 << 20, 'x') + "}"), folder.put("a.rtf", kRtf)},
            setting);

    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_NE(done.errors.find("big.rtf: out-of-memory"), std::string::npos) << done.errors;
    EXPECT_EQ(done.output, kRtfText);
}

TEST(Memory, pdfThatMemoryIsTooShortForIsOneFailedDocument) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);
    for (const char* jobs : {"-j1", "-j4"}) {
        for (int mib = 24; mib <= 160; mib += 8) {
            test::RunSetting setting;
            setting.prefix = {"prlimit", "--as=" + std::to_string(mib << 20)};

            const Outcome done = run({jobs, pdfPath("plain"), pdfPath("ligatures"), rtf}, setting);

            EXPECT_EQ(done.signal, 0) << mib;
            EXPECT_EQ(done.errors.find("Out of memory"), std::string::npos) << mib;
        }
    }
}

TEST(Memory, threadsShareMemoryWhereItIsLimited) {
    const TemporaryFolder folder;
    std::vector<std::string> arguments = {"-j8"};
    for (int i = 0; i < 16; ++i)
        arguments.push_back(folder.put(std::to_string(i) + ".pdf", pdf("plain")));
    test::RunSetting setting;
    setting.prefix = {"prlimit", "--as=209715200"}; // 200 MiB; stacks use 64 of them

    const Outcome done = run(arguments, setting);

    EXPECT_EQ(done.exitCode, kAllConverted) << done.errors;
}

TEST(Memory, aPdfIsReadInLittleMemory) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.prefix = {"prlimit", "--as=61440000"};

    const Outcome done = run({"-j2", folder.put("a.pdf", pdf("plain")), folder.put("a.rtf", kRtf)}, setting);

    EXPECT_EQ(done.exitCode, kAllConverted) << done.errors;
}

} // namespace
} // namespace quillow::cli

#endif
