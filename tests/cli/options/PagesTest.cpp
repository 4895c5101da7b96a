// What is made from the table of options: --help, the man page and the completions.
#include "cli/options/Pages.h"

#include "cli/options/HelpText.h"
#include "cli/options/OptionTable.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

namespace quillow::cli {
namespace {

std::string withEscapedDashes(std::string_view text) {
    std::string out;
    for (const char c : text)
        out += c == '-' ? std::string("\\-") : std::string(1, c);
    return out;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

TEST(OptionTable, namesAndLettersAreUnique) {
    std::set<std::string_view> names;
    std::set<char> letters;
    for (const Option& option : optionTable()) {
        EXPECT_TRUE(names.insert(option.name).second) << option.name;
        const bool isNew = option.letter == '\0' || letters.insert(option.letter).second;
        EXPECT_TRUE(isNew) << option.letter;
        EXPECT_EQ(option.offer == Offer::choices, !option.choices.empty()) << option.name;
    }
}

TEST(OptionTable, everyChoiceThatAShellOffersIsAccepted) {
    for (const Option& option : optionTable()) {
        std::istringstream choices{std::string(option.choices)};
        for (std::string choice; choices >> choice;) {
            Arguments arguments;
            EXPECT_EQ(option.apply(arguments, choice), "") << option.name << " " << choice;
        }
    }
}

TEST(HelpText, linesFitIntoATerminal) {
    for (const std::string& line : linesOf(helpText())) {
        EXPECT_LE(line.size(), 80U) << line;
        EXPECT_FALSE(line.ends_with(' ')) << line;
    }
}

TEST(HelpText, everyOptionHasItsLine) {
    const std::string help = helpText();
    EXPECT_NE(help.find("\n  -o, --output PATH     \"-\": standard output."), std::string::npos);
    EXPECT_NE(help.find("\n      --password-file FILE\n                        the password"), std::string::npos);
    for (const Option& option : optionTable())
        EXPECT_NE(help.find("--" + std::string(option.name)), std::string::npos) << option.name;
}

TEST(ManPage, everyOptionAndExitCodeHasItsParagraph) {
    const std::string page = manPage();
    for (const Option& option : optionTable())
        EXPECT_NE(page.find("\\fB" + withEscapedDashes("--" + std::string(option.name)) + "\\fR"), std::string::npos)
            << option.name;
    for (const ExitCode& exit : exitCodes())
        EXPECT_NE(page.find(".TP\n\\fB" + std::to_string(exit.code) + "\\fR\n"), std::string::npos) << exit.code;
}

// A line that begins with a period is a request, one with a backslash may be an escape.
TEST(ManPage, nothingInATextIsARequest) {
    for (const std::string& line : linesOf(manPage())) {
        if (!line.starts_with('.')) continue;
        const std::string request = line.substr(1, line.find(' ') - 1);
        EXPECT_TRUE((std::set<std::string>{"\\\"", "TH", "SH", "PP", "TP", "IP", "B", "BR"}.contains(request))) << line;
    }
}

TEST(Completions, everyShellKnowsEveryOption) {
    for (const Option& option : optionTable()) {
        EXPECT_NE(bashCompletion().find("--" + std::string(option.name)), std::string::npos) << option.name;
        EXPECT_NE(zshCompletion().find("--" + std::string(option.name)), std::string::npos) << option.name;
        EXPECT_NE(fishCompletion().find(" -l " + std::string(option.name)), std::string::npos) << option.name;
    }
}

} // namespace
} // namespace quillow::cli
