#include "cli/Plan.h"

#include <gtest/gtest.h>

#include <map>

namespace quillow::cli {
namespace {

using Names = std::vector<std::string>;

class PlanOf {
public:
    explicit PlanOf(const Names& paths) {
        for (const std::string& path : paths)
            inputs_.push_back({path, std::nullopt});
    }
    PlanOf& into(std::string folder) {
        destination_ = {DestinationKind::folder, std::move(folder), {}};
        return *this;
    }
    PlanOf& intoFile(std::string folder, std::string file) {
        destination_ = {DestinationKind::file, std::move(folder), std::move(file)};
        return *this;
    }
    PlanOf& type(DocumentKind kind) {
        arguments_.type = kind;
        return *this;
    }
    PlanOf& mirror(std::string root) {
        arguments_.mirrorRoot = std::move(root);
        return *this;
    }
    PlanOf& rename() {
        arguments_.ifExists = IfExists::rename;
        return *this;
    }
    PlanOf& shard(Shard shard) {
        arguments_.shard = shard;
        return *this;
    }
    /// An earlier run has finished the document, and its text is there.
    PlanOf& finished(const std::string& path, Reason status, const std::optional<std::string>& output = {}) {
        arguments_.resumedResults = "results";
        finished_.push_back({path, status, output});
        return *this;
    }
    PlanOf& file(const std::string& path, std::uint64_t number) {
        files_[path] = FileIdentity{1, number};
        return *this;
    }
    PlanOf& failed(const std::string& path) {
        inputs_.push_back({path, InputFailure{Reason::unreadable, "why"}});
        return *this;
    }
    [[nodiscard]] Plan make() const {
        const auto identityOf = [this](const std::string& path) -> std::optional<FileIdentity> {
            const auto found = files_.find(path);
            return found == files_.end() ? std::nullopt : std::optional(found->second);
        };
        EarlierResults earlier;
        for (const auto& [path, status, output] : finished_) {
            ResultRecord record;
            record.path = path;
            record.status = status;
            record.output = output;
            earlier.add(std::move(record));
        }
        return makePlan(arguments_, destination_, inputs_, {identityOf, "/home", identityOf("results")},
                        std::move(earlier));
    }
    [[nodiscard]] Names names() const {
        Names names;
        for (const PlannedDocument& document : make().documents)
            names.push_back(document.textName.value_or("standard output"));
        return names;
    }

private:
    Arguments arguments_;
    Destination destination_;
    std::vector<NamedInput> inputs_;
    std::map<std::string, FileIdentity> files_;
    struct Finished {
        std::string path;
        Reason status = Reason::ok;
        std::optional<std::string> output;
    };
    std::vector<Finished> finished_;
};

TEST(Plan, nameTellsTheKind) {
    const Plan plan = PlanOf({"a.RTF", "b.htm", "c.rtfd", "d", "e.docx", "-"}).make();

    ASSERT_EQ(plan.documents.size(), 6U);
    EXPECT_EQ(plan.documents[0].kind, DocumentKind::rtf);
    EXPECT_EQ(plan.documents[1].kind, DocumentKind::html);
    EXPECT_EQ(plan.documents[2].kind, DocumentKind::rtfd);
    EXPECT_EQ(plan.documents[3].kind, std::nullopt);
    EXPECT_EQ(plan.documents[4].kind, std::nullopt);
    EXPECT_EQ(plan.documents[5].kind, std::nullopt);
}

TEST(Plan, givenTypeOverridesEveryName) {
    for (const PlannedDocument& document : PlanOf({"a.rtf", "e.docx", "-"}).type(DocumentKind::pdf).make().documents)
        EXPECT_EQ(document.kind, DocumentKind::pdf);
}

TEST(Plan, textsAreNamedOnlyForAFolder) {
    EXPECT_EQ(PlanOf({"a.rtf"}).names(), Names{"standard output"});
    EXPECT_EQ(PlanOf({"x/a.rtf", "b.rtfd", "-"}).into("out").names(), (Names{"a.txt", "b.txt", "stdin.txt"}));
    EXPECT_EQ(PlanOf({"x/a.rtf"}).intoFile("y", "b.txt").names(), Names{"b.txt"});
}

TEST(Plan, textsThatWouldMeetGetOtherNamesAndOneLineSaysSo) {
    const Plan plan = PlanOf({"x/a.rtf", "b.rtf", "y/a.html"}).into("out").make();

    EXPECT_EQ(plan.documents[0].textName, "a.rtf.txt");
    EXPECT_EQ(plan.documents[1].textName, "b.txt");
    EXPECT_EQ(plan.documents[2].textName, "a.html.txt");
    EXPECT_EQ(plan.notices,
              Names{"2 texts get another name, so that none replaces another file: a.rtf.txt, a.html.txt"});
    EXPECT_EQ(
        PlanOf({"1/a.rtf", "2/a.rtf", "3/a.rtf", "4/a.rtf"}).into("out").make().notices,
        Names{
            "4 texts get another name, so that none replaces another file: a.rtf.txt, a.rtf-2.txt, a.rtf-3.txt, ..."});
}

TEST(Plan, textsOfBundlesThatWouldMeetAreNamedAsTheirBundles) {
    EXPECT_EQ(PlanOf({"a.rtfd/TXT.rtf", "x/b.RTFD/TXT.rtf", "c/TXT.rtf"}).into("out").names(),
              (Names{"a.rtfd.txt", "b.RTFD.txt", "TXT.rtf.txt"}));
    EXPECT_EQ(PlanOf({"a.rtfd/TXT.rtf"}).into("out").names(), Names{"TXT.txt"});
}

TEST(Plan, documentNamedTwiceIsConvertedOnce) {
    const Plan plan =
        PlanOf({"a.rtf", "./a.rtf", "b.rtf"}).file("a.rtf", 1).file("./a.rtf", 1).file("b.rtf", 2).into("out").make();

    ASSERT_EQ(plan.documents.size(), 2U);
    EXPECT_EQ(plan.documents[0].textName, "a.txt");
    EXPECT_EQ(plan.documents[1].textName, "b.txt");
    EXPECT_EQ(plan.notices, Names{"1 input names a document a second time: converted once"});
}

TEST(Plan, fileWithTwoNamesHasTwoTexts) {
    EXPECT_EQ(PlanOf({"a.rtf", "b.rtf"}).file("a.rtf", 1).file("b.rtf", 1).into("out").names(),
              (Names{"a.txt", "b.txt"}));
}

TEST(Plan, sameInputTwiceGoesToStandardOutputTwice) {
    EXPECT_EQ(PlanOf({"a.rtf", "a.rtf"}).file("a.rtf", 1).make().documents.size(), 2U);
}

TEST(Plan, noTextReplacesAnInput) {
    const Plan plan = PlanOf({"a.rtf", "link.txt"})
                          .into(".")
                          .type(DocumentKind::rtf)
                          .file("link.txt", 7)
                          .file("./a.txt", 7)
                          .file("a.rtf", 8)
                          .make();

    EXPECT_EQ(plan.documents[0].textName, "a.rtf.txt");
    EXPECT_EQ(plan.notices.size(), 1U);
    EXPECT_EQ(PlanOf({"a.txt"})
                  .intoFile("x", "b.txt")
                  .file("a.txt", 1)
                  .file("x/b.txt", 1)
                  .make()
                  .documents[0]
                  .failure->reason,
              Reason::unwritable);
}

TEST(Plan, olderTextIsReplacedUnlessItIsToStay) {
    EXPECT_EQ(PlanOf({"a.rtf"}).into("out").file("a.rtf", 1).file("out/a.txt", 2).names(), Names{"a.txt"});
    EXPECT_EQ(PlanOf({"a.rtf", "a-2.pdf", "b.rtf"}).into("out").rename().file("out/a.txt", 2).names(),
              (Names{"a-3.txt", "a-2.txt", "b.txt"}));
    EXPECT_EQ(PlanOf({"a.rtf"}).intoFile("x", "b.txt").rename().file("x/b.txt", 2).names(), Names{"b-2.txt"});
}

TEST(Plan, mirrorKeepsTheFoldersBelowItsRoot) {
    const Plan plan =
        PlanOf({"docs/x/a.rtf", "/home/docs/y/a.rtf", "docs/a.rtf", "-"}).mirror("docs").into("out").make();

    EXPECT_EQ(plan.documents[0].textName, "x/a.txt");
    EXPECT_EQ(plan.documents[1].textName, "y/a.txt");
    EXPECT_EQ(plan.documents[2].textName, "a.txt");
    EXPECT_EQ(plan.documents[3].textName, "stdin.txt");
    EXPECT_EQ(plan.notices, Names{});
}

TEST(Plan, documentOutsideOfTheMirrorStaysInTheOutputFolder) {
    const Plan plan = PlanOf({"../../etc/a.rtf", "docs/../b.rtf", "docs/x/c.rtf"}).mirror("docs").into("out").make();

    EXPECT_EQ(plan.documents[0].textName, "a.txt");
    EXPECT_EQ(plan.documents[1].textName, "b.txt");
    EXPECT_EQ(plan.documents[2].textName, "x/c.txt");
    EXPECT_EQ(plan.notices, Names{"2 documents are not below docs: no folders are made for them in out"});
}

TEST(Plan, noticesHaveAFixedOrder) {
    const Plan plan = PlanOf({"/etc/a.rtf", "/etc/a.rtf", "x/a.rtf", "b.rtf", "b.html"})
                          .file("/etc/a.rtf", 1)
                          .mirror("x")
                          .into("out")
                          .make();

    ASSERT_EQ(plan.notices.size(), 3U);
    EXPECT_NE(plan.notices[0].find("another name"), std::string::npos) << plan.notices[0];
    EXPECT_NE(plan.notices[1].find("a second time"), std::string::npos) << plan.notices[1];
    EXPECT_NE(plan.notices[2].find("not below"), std::string::npos) << plan.notices[2];
}

TEST(Plan, failureFoundBeforehandStaysInItsPlace) {
    const Plan plan = PlanOf({}).failed("a").into("out").type(DocumentKind::rtf).make();
    const Plan mixed = PlanOf({"x/a.rtf"}).failed("a").into("out").make();

    EXPECT_EQ(plan.documents[0].failure->detail, "why");
    ASSERT_EQ(mixed.documents.size(), 2U);
    EXPECT_EQ(mixed.documents[0].textName, "a.txt");
    EXPECT_EQ(mixed.documents[1].failure->detail, "why");
}

TEST(Plan, finishedDocumentsAreLeftOutAndTheOthersKeepTheirNames) {
    const PlanOf documents = PlanOf({"a.rtf", "a.pdf", "b", "c.rtf"})
                                 .into("out")
                                 .finished("a.rtf", Reason::ok, "out/a.rtf.txt")
                                 .finished("b", Reason::wrongType)
                                 .finished("c.rtf", Reason::wrongType);

    const Plan plan = documents.make();

    EXPECT_EQ(documents.names(), Names{"a.pdf.txt"});
    ASSERT_EQ(plan.finished.size(), 3U);
    EXPECT_EQ(plan.finished[0].reason, Reason::ok);
    EXPECT_EQ(plan.finished[1].acceptance, Acceptance::notAccepted);
    EXPECT_EQ(plan.finished[2].acceptance, Acceptance::accepted);
}

TEST(Plan, shardsGiveTheTextsTheNamesOfTheWholeRun) {
    const Names all = {"a.rtf", "a.pdf", "x/a.rtf", "b.rtf", "c.rtf", "d.rtf"};
    const Names whole = PlanOf(all).into("out").names();
    Names parts;

    for (const std::uint32_t number : {1U, 2U, 3U})
        for (const std::string& name : PlanOf(all).into("out").shard({number, 3}).names())
            parts.push_back(name);

    std::sort(parts.begin(), parts.end());
    EXPECT_EQ(parts, (Names{"a.pdf.txt", "a.rtf-2.txt", "a.rtf.txt", "b.txt", "c.txt", "d.txt"}));
    EXPECT_EQ(parts.size(), whole.size());
}

TEST(Plan, shardHasItsPartOfTheFinishedDocumentsOnly) {
    std::size_t finished = 0;
    for (const std::uint32_t number : {1U, 2U, 3U})
        finished += PlanOf({"a.rtf", "b.rtf"}).shard({number, 3}).finished("a.rtf", Reason::ok).make().finished.size();
    EXPECT_EQ(finished, 1U);
}

// A killed run may have written the text, but not its result.
TEST(Plan, resumedRunKnowsTheNamesThatATextMayHaveAlready) {
    const Plan plan = PlanOf({"a.rtf", "b.rtf", "b-3.rtf"})
                          .into("out")
                          .rename()
                          .file("out/b.txt", 1)
                          .file("out/b-2.txt", 2)
                          .file("out/b-3.txt", 3)
                          .file("out/a.txt", 4)
                          .finished("a.rtf", Reason::ok, "out/a.txt")
                          .finished("b-3.rtf", Reason::ok, "out/b-3.txt")
                          .make();

    ASSERT_EQ(plan.documents.size(), 1U);
    EXPECT_EQ(plan.documents[0].textName, "b-4.txt");
    EXPECT_EQ(plan.documents[0].existingNames, (Names{"b.txt", "b-2.txt"}));
}

TEST(Plan, noTextReplacesTheResults) {
    EXPECT_EQ(PlanOf({"log.rtf"}).into("out").file("results", 7).file("out/log.txt", 7).names(), Names{"log.rtf.txt"});
    const Plan one = PlanOf({"log.rtf"}).intoFile("out", "log.txt").file("results", 7).file("out/log.txt", 7).make();
    ASSERT_TRUE(one.documents[0].failure);
    EXPECT_EQ(one.documents[0].failure->detail, "its text would replace the results");
}

} // namespace
} // namespace quillow::cli
