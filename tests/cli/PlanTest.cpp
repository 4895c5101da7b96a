#include "cli/Plan.h"

#include <gtest/gtest.h>

#include <map>

namespace quillow::cli {
namespace {

class PlanOf {
public:
    PlanOf& inputs(std::vector<std::string> inputs) {
        arguments_.inputs = std::move(inputs);
        return *this;
    }
    PlanOf& into(std::string folder) {
        arguments_.outputFolder = std::move(folder);
        return *this;
    }
    PlanOf& type(DocumentKind kind) {
        arguments_.type = kind;
        return *this;
    }
    PlanOf& file(const std::string& path, std::uint64_t number) {
        files_[path] = FileIdentity{1, number};
        return *this;
    }
    [[nodiscard]] Plan make() const {
        return makePlan(arguments_, [this](const std::string& path) -> std::optional<FileIdentity> {
            const auto found = files_.find(path);
            return found == files_.end() ? std::nullopt : std::optional(found->second);
        });
    }

private:
    Arguments arguments_;
    std::map<std::string, FileIdentity> files_;
};

TEST(Plan, baseNameLosesFoldersAndTheLastExtension) {
    EXPECT_EQ(baseName("a/b/c.rtf"), "c");
    EXPECT_EQ(baseName("c.tar.html"), "c.tar");
    EXPECT_EQ(baseName("plain"), "plain");
    EXPECT_EQ(baseName(".html"), ".html");
    EXPECT_EQ(baseName("a.b/plain"), "plain");
    EXPECT_EQ(baseName("dot."), "dot.");
}

TEST(Plan, extensionIsInLowerCase) {
    EXPECT_EQ(extensionOf("A.RTF"), "rtf");
    EXPECT_EQ(extensionOf("a.b/c"), "");
    EXPECT_EQ(extensionOf(".pdf"), "");
    EXPECT_EQ(extensionOf("x.\xFF"), "\xFF");
}

TEST(Plan, nameTellsTheKind) {
    const Plan plan = PlanOf().inputs({"a.RTF", "b.htm", "c.rtfd/", "d", "e.docx", "-"}).make();

    ASSERT_EQ(plan.documents.size(), 6U);
    EXPECT_EQ(plan.documents[0].kind, DocumentKind::rtf);
    EXPECT_EQ(plan.documents[1].kind, DocumentKind::html);
    EXPECT_EQ(plan.documents[2].kind, DocumentKind::rtfd);
    EXPECT_EQ(plan.documents[2].path, "c.rtfd");
    EXPECT_EQ(plan.documents[3].kind, std::nullopt);
    EXPECT_EQ(plan.documents[4].kind, std::nullopt);
    EXPECT_EQ(plan.documents[5].kind, std::nullopt);
}

TEST(Plan, givenTypeOverridesEveryName) {
    const Plan plan = PlanOf().inputs({"a.rtf", "e.docx", "-"}).type(DocumentKind::pdf).make();

    for (const PlannedDocument& document : plan.documents)
        EXPECT_EQ(document.kind, DocumentKind::pdf);
}

TEST(Plan, textsAreNamedOnlyForAFolder) {
    EXPECT_EQ(PlanOf().inputs({"a.rtf"}).make().documents[0].fileName, std::nullopt);

    const Plan plan = PlanOf().inputs({"x/a.rtf", "b.rtfd", "-"}).into("out").make();
    EXPECT_EQ(plan.documents[0].fileName, "a.txt");
    EXPECT_EQ(plan.documents[1].fileName, "b.txt");
    EXPECT_EQ(plan.documents[2].fileName, "stdin.txt");
}

TEST(Plan, inputsThatMeetInOneTextClash) {
    const Plan plan = PlanOf().inputs({"x/a.rtf", "b.rtf", "y/a.html"}).into("out").make();

    ASSERT_EQ(plan.clashes.size(), 1U);
    EXPECT_EQ(plan.clashes[0].path, "y/a.html");
    EXPECT_EQ(plan.clashes[0].detail, "its text would replace that of x/a.rtf in a.txt");
}

TEST(Plan, sameInputTwiceIsNoClashOnStandardOutput) {
    EXPECT_TRUE(PlanOf().inputs({"a.rtf", "a.rtf"}).make().clashes.empty());
    EXPECT_EQ(PlanOf().inputs({"a.rtf", "a.rtf"}).into("out").make().clashes.size(), 1U);
}

TEST(Plan, textThatWouldReplaceAnInputClashes) {
    const Plan plan = PlanOf()
                          .inputs({"a.rtf", "link.txt"})
                          .into(".")
                          .type(DocumentKind::rtf)
                          .file("link.txt", 7)
                          .file("./a.txt", 7)
                          .file("a.rtf", 8)
                          .make();

    ASSERT_EQ(plan.clashes.size(), 1U);
    EXPECT_EQ(plan.clashes[0].path, "a.rtf");
    EXPECT_EQ(plan.clashes[0].detail, "its text would replace the input link.txt");
}

TEST(Plan, textThatReplacesAnOlderTextDoesNot) {
    EXPECT_TRUE(PlanOf().inputs({"a.rtf"}).into("out").file("a.rtf", 1).file("out/a.txt", 2).make().clashes.empty());
}

} // namespace
} // namespace quillow::cli
