#include "cli/TextNames.h"

#include "cli/Paths.h"

#include <gtest/gtest.h>

#include <set>

namespace quillow::cli {
namespace {

using Names = std::vector<std::string>;

Names named(const Names& documents, const std::set<std::string>& barred = {}) {
    std::vector<NameWish> wishes;
    for (const std::string& document : documents)
        wishes.push_back({std::string(folderPart(document)), baseName(document), std::string(lastPart(document))});
    return nameTexts(wishes, [&](const std::string& path) { return barred.contains(path); });
}

TEST(TextNames, baseNameWhereNothingMeets) {
    EXPECT_EQ(named({"a.rtf", "b.pdf", "x/a.rtf"}), (Names{"a.txt", "b.txt", "x/a.txt"}));
}

TEST(TextNames, fullNamesWhereBaseNamesMeet) {
    EXPECT_EQ(named({"report.pdf", "b.rtf", "report.rtf"}), (Names{"report.pdf.txt", "b.txt", "report.rtf.txt"}));
    EXPECT_EQ(named({"report", "report.rtf"}), (Names{"report.txt", "report.rtf.txt"}));
}

TEST(TextNames, numbersInOrderWhereFullNamesMeet) {
    EXPECT_EQ(named({"a.rtf", "a.pdf", "a.rtf", "a.rtf"}),
              (Names{"a.rtf.txt", "a.pdf.txt", "a.rtf-2.txt", "a.rtf-3.txt"}));
    EXPECT_EQ(named({"plain", "plain"}), (Names{"plain.txt", "plain-2.txt"}));
}

TEST(TextNames, longerNameThatMeetsAShortOneLengthensThatToo) {
    EXPECT_EQ(named({"a.rtf.html", "a.rtf", "a.pdf"}), (Names{"a.rtf.html.txt", "a.rtf.txt", "a.pdf.txt"}));
    EXPECT_EQ(named({"a.rtf", "a.pdf", "a.rtf.html"}), (Names{"a.rtf.txt", "a.pdf.txt", "a.rtf.html.txt"}));
}

TEST(TextNames, numberedNameNeverTakesAnothersName) {
    EXPECT_EQ(named({"a.rtf", "a.rtf", "a.rtf-2.pdf"}), (Names{"a.rtf.txt", "a.rtf-3.txt", "a.rtf-2.txt"}));
    EXPECT_EQ(named({"a.rtf", "a.rtf", "a.rtf-2"}), (Names{"a.rtf.txt", "a.rtf-3.txt", "a.rtf-2.txt"}));
    EXPECT_EQ(named({"a.rtf-2", "a.rtf-2.pdf", "a.rtf", "a.rtf"}),
              (Names{"a.rtf-2.txt", "a.rtf-2.pdf.txt", "a.rtf.txt", "a.rtf-3.txt"}));
}

TEST(TextNames, barredPathsAreNotTaken) {
    EXPECT_EQ(named({"a.rtf"}, {"a.txt"}), Names{"a.rtf.txt"});
    EXPECT_EQ(named({"a.rtf"}, {"a.txt", "a.rtf.txt", "a.rtf-2.txt"}), Names{"a.rtf-3.txt"});
    EXPECT_EQ(named({"x/a.rtf"}, {"a.txt"}), Names{"x/a.txt"});
}

TEST(TextNames, textIsNotNamedAsAnothersFolder) {
    EXPECT_EQ(named({"a.rtf", "a.txt/x/b.rtf"}), (Names{"a.rtf.txt", "a.txt/x/b.txt"}));
    EXPECT_EQ(named({"d.txt/a.txt/b.rtf", "d.txt/a.rtf"}), (Names{"d.txt/a.txt/b.txt", "d.txt/a.rtf.txt"}));
}

TEST(TextNames, noTwoTextsOfManyMeet) {
    Names documents;
    for (int i = 0; i < 3000; ++i)
        for (const char* name : {"a.rtf", "a.pdf", "a", "a.rtf-2", "a.rtf-3.html", "a-2.rtf"})
            documents.emplace_back(name);

    const Names names = named(documents);

    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), documents.size());
}

TEST(TextNames, firstFreeNumberIsTaken) {
    const std::set<std::string> taken = {"x/a-2.txt", "x/a-3.txt"};

    EXPECT_EQ(numbered("x/a.txt", [&](const std::string& path) { return taken.contains(path); }), "x/a-4.txt");
    EXPECT_EQ(numbered("a.svg", [](const std::string&) { return false; }), "a-2.svg");
    EXPECT_EQ(numbered("a", [](const std::string&) { return false; }), "a-2");
}

TEST(TextNames, namesThatAreTooLongLoseTheirEnd) {
    const std::string longest(255, 'x');
    EXPECT_EQ(named({longest}), Names{std::string(251, 'x') + ".txt"});
    EXPECT_EQ(named({std::string(251, 'x') + ".rtf"}), Names{std::string(251, 'x') + ".txt"});
    EXPECT_EQ(named({"f/" + std::string(250, 'x') + "\u00E9.gz"}), Names{"f/" + std::string(250, 'x') + ".txt"});
}

TEST(TextNames, shortenedNamesAreUnique) {
    const std::string stem(250, 'x');
    const Names names =
        named({stem + "1.rtf", stem + "1.pdf", stem + "1.htm", stem + "2345", stem + "2346", stem + "2347"});

    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), 6U);
    for (const std::string& name : names)
        EXPECT_EQ(name.size(), 255U) << name;
}

TEST(TextNames, numberTakesTheEndOfANameThatIsTooLong) {
    const std::string stem(251, 'x');
    EXPECT_EQ(numbered("f/" + stem + ".txt", [](const std::string&) { return false; }),
              "f/" + std::string(249, 'x') + "-2.txt");
    EXPECT_EQ(numbered("f.d/plain", [](const std::string&) { return false; }), "f.d/plain-2");
}

} // namespace
} // namespace quillow::cli
