#include "cli/options/Arguments.h"

#include <gtest/gtest.h>

namespace quillow::cli {
namespace {

using Words = std::vector<std::string_view>;

Arguments parsed(const Words& words) {
    auto outcome = parseArguments(words);
    if (const auto* const error = std::get_if<UsageError>(&outcome)) ADD_FAILURE() << error->message;
    return std::get<Arguments>(std::move(outcome));
}

std::string complaint(const Words& words) {
    const auto outcome = parseArguments(words);
    const auto* const error = std::get_if<UsageError>(&outcome);
    return error == nullptr ? std::string() : error->message;
}

TEST(Arguments, filesAloneTakeTheDefaults) {
    const Arguments arguments = parsed({"a.rtf", "b.pdf"});

    EXPECT_EQ(arguments.inputs, (std::vector<std::string>{"a.rtf", "b.pdf"}));
    EXPECT_FALSE(arguments.output);
    EXPECT_FALSE(arguments.type);
    EXPECT_EQ(arguments.jobs, 0U);
    EXPECT_EQ(arguments.options.listMarkers, ListMarkers::on);
    EXPECT_EQ(arguments.options.pageMarks, PageMarks::off);
    EXPECT_EQ(arguments.partial, PartialCountsAs::converted);
    EXPECT_EQ(arguments.verbosity, Verbosity::normal);
}

TEST(Arguments, valuesStandApartOrTogether) {
    for (const Words& words : {Words{"-o", "out", "-j", "3", "x"}, Words{"-oout", "-j3", "x"},
                               Words{"--output", "out", "--jobs", "3", "x"}, Words{"--output=out", "--jobs=3", "x"}}) {
        const Arguments arguments = parsed(words);
        EXPECT_EQ(arguments.output, "out");
        EXPECT_EQ(arguments.jobs, 3U);
        EXPECT_EQ(arguments.inputs, std::vector<std::string>{"x"});
    }
}

TEST(Arguments, optionsStandAnywhereBeforeTheDoubleDash) {
    const Arguments arguments = parsed({"a.rtf", "--strict", "--", "--links", "-"});

    EXPECT_EQ(arguments.partial, PartialCountsAs::failed);
    EXPECT_EQ(arguments.options.links, LinkTargets::off);
    EXPECT_EQ(arguments.inputs, (std::vector<std::string>{"a.rtf", "--links", "./-"}));
}

TEST(Arguments, textFormOptionsReachTheEngines) {
    const Options options = parsed({"--page-marks", "ff", "--cells=line", "--no-list-markers", "--links",
                                    "--hidden-text", "--headers-footers", "--reflow", "x"})
                                .options;

    EXPECT_EQ(options.pageMarks, PageMarks::formFeed);
    EXPECT_EQ(options.cells, CellSeparator::line);
    EXPECT_EQ(options.listMarkers, ListMarkers::off);
    EXPECT_EQ(options.links, LinkTargets::afterText);
    EXPECT_EQ(options.hiddenText, HiddenText::on);
    EXPECT_EQ(options.headersFooters, HeadersFooters::on);
    EXPECT_EQ(options.reflow, Reflow::joinLines);
}

TEST(Arguments, pagesAreNumbersAndRanges) {
    const PageSelection pages = parsed({"--pages", "12,3-7,20-,5", "x"}).options.pages;

    EXPECT_EQ(pages.ranges(), (std::vector<PageRange>{{3, 7}, {12, 12}, {20, PageRange::kLastPage}}));
    EXPECT_TRUE(parsed({"x"}).options.pages.isEveryPage());
    EXPECT_EQ(complaint({"--pages", "7-3", "x"}), "the pages must be numbers and ranges like 3-7,12,20-, not '7-3'");
    EXPECT_EQ(complaint({"--pages=1", "--pages=2", "x"}), "the pages are given twice");
}

TEST(Arguments, typeNamesAKind) {
    EXPECT_EQ(parsed({"--type", "htm", "-"}).type, DocumentKind::html);
    EXPECT_EQ(parsed({"-t", "rtfd", "-"}).type, DocumentKind::rtfd);
    EXPECT_EQ(complaint({"--type", "doc", "-"}), "unknown type 'doc': rtf, rtfd, html or pdf");
}

TEST(Arguments, lettersMayBeJoined) {
    const Arguments arguments = parsed({"-qj2", "x"});

    EXPECT_EQ(arguments.verbosity, Verbosity::quiet);
    EXPECT_EQ(arguments.jobs, 2U);
}

TEST(Arguments, typeMayBeInAnyLetterCase) {
    EXPECT_EQ(parsed({"--type", "HTML", "-"}).type, DocumentKind::html);
    EXPECT_EQ(parsed({"-tPdf", "-"}).type, DocumentKind::pdf);
}

TEST(Arguments, jobsAreANumberInRange) {
    for (const std::string_view value : {"0", "-1", "two", "", "3x", "257", "99999999999", "99999999999999999999"})
        EXPECT_EQ(complaint({"-j", value, "x"}),
                  "the number of jobs must be from 1 to 256, not '" + std::string(value) + "'");
    EXPECT_EQ(parsed({"-j", "256", "x"}).jobs, kMaximumJobs);
}

TEST(Arguments, threadsAreANumberInRange) {
    EXPECT_EQ(parsed({"x"}).threads, 0U);
    EXPECT_EQ(parsed({"--threads", "4", "x"}).threads, 4U);
    EXPECT_EQ(complaint({"--threads=0", "x"}), "the number of threads must be from 1 to 256, not '0'");
}

TEST(Arguments, inputsMayComeFromAListAndFromFolders) {
    const Arguments arguments = parsed({"-r0", "--files-from=names", "folder"});

    EXPECT_EQ(arguments.inputList, "names");
    EXPECT_EQ(arguments.nameEnd, NameEnd::nul);
    EXPECT_EQ(arguments.folders, Folders::walked);
    EXPECT_EQ(arguments.inputs, std::vector<std::string>{"folder"});
    EXPECT_TRUE(parsed({"--files-from", "-"}).inputs.empty());
    EXPECT_EQ(parsed({"x"}).nameEnd, NameEnd::newline);
    EXPECT_EQ(parsed({"x"}).folders, Folders::refused);
}

TEST(Arguments, existingTextsAreDealtWithAsSaid) {
    EXPECT_EQ(parsed({"x"}).ifExists, IfExists::overwrite);
    EXPECT_EQ(parsed({"--no-clobber", "x"}).ifExists, IfExists::skip);
    const std::pair<std::string_view, IfExists> answers[] = {{"overwrite", IfExists::overwrite},
                                                             {"skip", IfExists::skip},
                                                             {"rename", IfExists::rename},
                                                             {"error", IfExists::error},
                                                             {"newer", IfExists::newer}};
    for (const auto& [word, answer] : answers)
        EXPECT_EQ(parsed({"--if-exists", word, "x"}).ifExists, answer) << word;
    EXPECT_EQ(complaint({"--if-exists", "ask", "x"}),
              "unknown action for existing texts 'ask': overwrite, skip, rename, error or newer");
}

TEST(Arguments, optionsThatNeedOneAnotherAreHeldTogether) {
    EXPECT_EQ(parsed({"--mirror", "root", "-o", "out", "x"}).mirrorRoot, "root");
    EXPECT_EQ(complaint({"--mirror", "root", "x"}), "option '--mirror' needs '-o' and a folder");
    EXPECT_EQ(complaint({"--mirror", "root", "-o-", "x"}), "option '--mirror' needs '-o' and a folder");
    EXPECT_EQ(complaint({"-0", "x"}), "option '-0' needs '--files-from'");
    EXPECT_EQ(complaint({"--files-from", "-", "-"}), "standard input can be read only once");
}

TEST(Arguments, resultsMayBeResumed) {
    EXPECT_EQ(parsed({"--results", "r", "-o", "out", "x"}).results, "r");
    EXPECT_FALSE(parsed({"--results", "r", "-o", "out", "x"}).isResumed());
    for (const Words& words : {Words{"--resume", "r", "--retry-failed", "-o", "out", "x"},
                               Words{"--resume", "r", "--results", "r", "--retry-failed", "-o", "out", "x"}}) {
        const Arguments arguments = parsed(words);
        EXPECT_EQ(arguments.results, "r");
        EXPECT_TRUE(arguments.isResumed());
        EXPECT_EQ(arguments.retry, Retry::failed);
    }
    EXPECT_EQ(complaint({"--resume", "r", "x"}), "option '--resume' needs '-o' and a folder");
    EXPECT_EQ(complaint({"--resume", "-", "-o", "out", "x"}), "option '--resume' needs a file");
    EXPECT_EQ(complaint({"--resume", "r", "--results", "s", "-o", "out", "x"}),
              "options '--results' and '--resume' name different files");
    EXPECT_EQ(complaint({"--retry-failed", "-o", "out", "x"}), "option '--retry-failed' needs '--resume'");
    EXPECT_EQ(complaint({"--results", "-", "x"}),
              "option '--results -' needs '-o' and a folder, because the results go to standard output");
    EXPECT_EQ(complaint({"--results", "r", "--explain", "1", "x"}), "option '--explain' does not go with '--results'");
}

TEST(Arguments, shardIsAPartOfSeveral) {
    EXPECT_EQ(parsed({"--shard", "2/4", "x"}).shard, (Shard{2, 4}));
    EXPECT_EQ(parsed({"x"}).shard, Shard());
    for (const std::string_view value :
         {"0/4", "5/4", "1/0", "1", "/", "1/", "/1", "1/1000001", "-1/2", "1/2/3", "a/b", ""})
        EXPECT_EQ(complaint({"--shard", value, "x"}),
                  "the part of the documents must be I/N, such as 2/4, not '" + std::string(value) + "'");
}

TEST(Arguments, anEmptyValueTakesNoFurtherWord) {
    const Arguments arguments = parsed({"--password=", "a.pdf"});

    EXPECT_EQ(arguments.options.password, "");
    EXPECT_EQ(arguments.inputs, std::vector<std::string>{"a.pdf"});
    EXPECT_EQ(complaint({"--output=", "a.pdf"}), "the output has an empty name");
}

TEST(Arguments, wordsThatBeginWithADashAreNoFiles) {
    EXPECT_EQ(complaint({"-5", "x"}), "unknown option '-5'");
    EXPECT_EQ(complaint({"-#", "x"}), "unknown option '-#'");
    EXPECT_EQ(complaint({"-q5", "x"}), "unknown option '-5'");
    EXPECT_EQ(complaint({"--=", "x"}), "unknown option '--'");
}

TEST(Arguments, namesOfFilesAreTakenAsTheyAre) {
    const Words names = {"[a,b]", "{x}", "a=b", "", "%%", "'q'", "\xFF", "a\nb", "/windows:x", "++", "on"};

    const Arguments arguments = parsed(names);

    EXPECT_EQ(arguments.inputs, std::vector<std::string>(names.begin(), names.end()));
    EXPECT_EQ(parsed({"-o", "[a,b]", "x"}).output, "[a,b]");
    EXPECT_EQ(parsed({"-o", "-q", "x"}).output, "-q");
}

TEST(Arguments, passwordComesFromOnePlace) {
    EXPECT_EQ(parsed({"--password", "a b", "x"}).options.password, "a b");
    EXPECT_EQ(parsed({"--password", "", "x"}).options.password, "");
    EXPECT_EQ(parsed({"--password-file=list", "x"}).passwordFile, "list");
    EXPECT_EQ(parsed({"--password-prompt", "x"}).askForPassword, AskForPassword::whenNeeded);
    EXPECT_EQ(parsed({"x"}).askForPassword, AskForPassword::never);
    const std::string several =
        "the password comes from one of '--password', '--password-file' and '--password-prompt'";
    EXPECT_EQ(complaint({"--password=a", "--password-file=b", "x"}), several);
    EXPECT_EQ(complaint({"--password=a", "--password-prompt", "x"}), several);
    EXPECT_EQ(complaint({"--password-file=b", "--password-prompt", "x"}), several);
    EXPECT_EQ(complaint({"--password-file", "-", "-"}), "standard input can be read only once");
}

TEST(Arguments, mistakesAboutPasswordsDoNotShowThem) {
    EXPECT_EQ(complaint({"--password=abc", "--password=def", "x"}), "the password is given twice");
    EXPECT_EQ(complaint({"--passwort=abc", "x"}), "unknown option '--passwort'");
    EXPECT_EQ(complaint({"--password-prompt=abc", "x"}), "option '--password-prompt' takes no value");
    EXPECT_EQ(complaint({"x", "--password"}), "option '--password' needs a value");
}

TEST(Arguments, mistakesAreNamed) {
    EXPECT_EQ(complaint({}), "no input is given");
    EXPECT_EQ(complaint({"-q"}), "no input is given");
    EXPECT_EQ(complaint({"--colour", "x"}), "unknown option '--colour'");
    EXPECT_EQ(complaint({"-z", "x"}), "unknown option '-z'");
    EXPECT_EQ(complaint({"x", "-o"}), "option '-o' needs a value");
    EXPECT_EQ(complaint({"x", "--output"}), "option '--output' needs a value");
    EXPECT_EQ(complaint({"--strict=yes", "x"}), "option '--strict' takes no value");
    EXPECT_EQ(complaint({"-o", "", "x"}), "the output has an empty name");
    EXPECT_EQ(complaint({"-oa", "-ob", "x"}), "the output is given twice");
    EXPECT_EQ(complaint({"--files-from=a", "--files-from=b"}), "the list of files is given twice");
    EXPECT_EQ(complaint({"--mirror=", "x"}), "the folder to mirror has an empty name");
    EXPECT_EQ(complaint({"-", "-"}), "standard input can be read only once");
    EXPECT_EQ(complaint({"--page-marks", "lf", "x"}), "unknown page mark 'lf': ff");
    EXPECT_EQ(complaint({"--cells", "comma", "x"}), "unknown cell separator 'comma': tab or line");
}

TEST(Arguments, pageToExplainIsCountedFromOne) {
    EXPECT_EQ(parsed({"--explain", "12", "x"}).explainedPage, 12U);
    EXPECT_FALSE(parsed({"x"}).explainedPage);
}

TEST(Arguments, helpAndVersionNeedNoInput) {
    for (const std::string_view word : {"--help", "-h"})
        EXPECT_EQ(std::get<Request>(parseArguments(Words{word})), Request::help);
    EXPECT_EQ(std::get<Request>(parseArguments(Words{"--version"})), Request::version);
    EXPECT_EQ(std::get<Request>(parseArguments(Words{"--version", "--verbose"})), Request::versionAndIsolation);
    EXPECT_EQ(std::get<Request>(parseArguments(Words{"-v", "--version"})), Request::versionAndIsolation);
}

} // namespace
} // namespace quillow::cli
