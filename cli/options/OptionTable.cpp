#include "cli/options/OptionTable.h"

#include "cli/Messages.h"
#include "cli/Paths.h"
#include "cli/Program.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace quillow::cli {

namespace {

std::string setOnce(std::optional<std::string>& setting, std::string_view value, const std::string& what) {
    if (value.empty()) return what + " has an empty name";
    if (setting) return what + " is given twice";
    setting = std::string(value);
    return {};
}

template <class Number>
bool parseNumber(std::string_view value, Number most, Number& number) {
    const char* const end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, number);
    return error == std::errc() && stop == end && number <= most;
}

std::string setOutput(Arguments& arguments, std::string_view value) {
    return setOnce(arguments.output, value, "the output");
}

std::string setInputList(Arguments& arguments, std::string_view value) {
    return setOnce(arguments.inputList, value, "the list of files");
}

std::string setNulNames(Arguments& arguments, std::string_view) {
    arguments.nameEnd = NameEnd::nul;
    return {};
}

std::string setWalkFolders(Arguments& arguments, std::string_view) {
    arguments.folders = Folders::walked;
    return {};
}

std::string setMirrorRoot(Arguments& arguments, std::string_view value) {
    return setOnce(arguments.mirrorRoot, value, "the folder to mirror");
}

std::string setIfExists(Arguments& arguments, std::string_view value) {
    using Named = std::pair<std::string_view, IfExists>;
    constexpr std::array kNames = {Named{"overwrite", IfExists::overwrite}, Named{"skip", IfExists::skip},
                                   Named{"rename", IfExists::rename}, Named{"error", IfExists::error},
                                   Named{"newer", IfExists::newer}};
    for (const auto& [name, meaning] : kNames) {
        if (name != value) continue;
        arguments.ifExists = meaning;
        return {};
    }
    return "unknown action for existing texts " + inQuotes(value) + ": overwrite, skip, rename, error or newer";
}

std::string setNoClobber(Arguments& arguments, std::string_view) {
    arguments.ifExists = IfExists::skip;
    return {};
}

std::string setResults(Arguments& arguments, std::string_view value) {
    return setOnce(arguments.results, value, "the file of results");
}

std::string setResume(Arguments& arguments, std::string_view value) {
    return setOnce(arguments.resumedResults, value, "the file of results to resume");
}

std::string setMergeResults(Arguments& arguments, std::string_view value) {
    return setOnce(arguments.mergedResults, value, "the merged file of results");
}

std::string setRetryFailed(Arguments& arguments, std::string_view) {
    arguments.retry = Retry::failed;
    return {};
}

std::string setShard(Arguments& arguments, std::string_view value) {
    const std::size_t slash = value.find('/');
    Shard shard;
    if (slash == std::string_view::npos || !parseNumber(value.substr(0, slash), kMaximumShards, shard.number) ||
        !parseNumber(value.substr(slash + 1), kMaximumShards, shard.count) || shard.number == 0 ||
        shard.number > shard.count)
        return "the part of the documents must be I/N, such as 2/4, not " + inQuotes(value);
    arguments.shard = shard;
    return {};
}

std::string setType(Arguments& arguments, std::string_view value) {
    arguments.type = documentKindForExtension(lowered(value));
    return arguments.type ? std::string() : "unknown type " + inQuotes(value) + ": rtf, rtfd, html or pdf";
}

std::string setNumber(unsigned& number, std::string_view value, const std::string& what) {
    unsigned read = 0;
    if (!parseNumber(value, kMaximumJobs, read) || read == 0)
        return "the number of " + what + " must be from 1 to " + std::to_string(kMaximumJobs) + ", not " +
               inQuotes(value);
    number = read;
    return {};
}

std::string setJobs(Arguments& arguments, std::string_view value) {
    return setNumber(arguments.jobs, value, "jobs");
}

std::string setThreads(Arguments& arguments, std::string_view value) {
    return setNumber(arguments.threads, value, "threads");
}

std::string setInProcess(Arguments& arguments, std::string_view) {
    arguments.readIn = ReadIn::thisProcess;
    return {};
}

std::string setTimeout(Arguments& arguments, std::string_view value) {
    unsigned seconds = 0;
    if (!parseNumber(value, kMaximumTimeout, seconds))
        return "the time for a document must be from 0 (no limit) to " + std::to_string(kMaximumTimeout) +
               " seconds, not " + inQuotes(value);
    arguments.limits.time = std::chrono::seconds(seconds);
    return {};
}

std::string setMaximumMemory(Arguments& arguments, std::string_view value) {
    std::size_t mebibytes = 0;
    if (!parseNumber(value, kMaximumMemory, mebibytes) || (mebibytes > 0 && mebibytes < kMinimumMemory))
        return "the memory for a document must be 0 (no limit) or from " + std::to_string(kMinimumMemory) + " to " +
               std::to_string(kMaximumMemory) + " MiB, not " + inQuotes(value);
    arguments.limits.memory = mebibytes << 20;
    return {};
}

std::string setWorker(Arguments& arguments, std::string_view) {
    arguments.documentsFrom = DocumentsFrom::requests;
    return {};
}

std::string setPageMarks(Arguments& arguments, std::string_view value) {
    if (value != "ff") return "unknown page mark " + inQuotes(value) + ": ff";
    arguments.options.pageMarks = PageMarks::formFeed;
    return {};
}

std::string setPages(Arguments& arguments, std::string_view value) {
    if (!arguments.options.pages.isEveryPage()) return "the pages are given twice";
    auto pages = parsePageSelection(value);
    if (!pages) return "the pages must be numbers and ranges like 3-7,12,20-, not " + inQuotes(value);
    arguments.options.pages = std::move(*pages);
    return {};
}

std::string setCells(Arguments& arguments, std::string_view value) {
    if (value != "tab" && value != "line") return "unknown cell separator " + inQuotes(value) + ": tab or line";
    arguments.options.cells = value == "line" ? CellSeparator::line : CellSeparator::tab;
    return {};
}

std::string setNoListMarkers(Arguments& arguments, std::string_view) {
    arguments.options.listMarkers = ListMarkers::off;
    return {};
}

std::string setLinks(Arguments& arguments, std::string_view) {
    arguments.options.links = LinkTargets::afterText;
    return {};
}

std::string setHiddenText(Arguments& arguments, std::string_view) {
    arguments.options.hiddenText = HiddenText::on;
    return {};
}

std::string setHeadersFooters(Arguments& arguments, std::string_view) {
    arguments.options.headersFooters = HeadersFooters::on;
    return {};
}

std::string setReflow(Arguments& arguments, std::string_view) {
    arguments.options.reflow = Reflow::joinLines;
    return {};
}

std::string setExplainedPage(Arguments& arguments, std::string_view value) {
    std::size_t page = 0;
    const char* const end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, page);
    if (error != std::errc() || stop != end || page == 0)
        return "the page to explain must be a number from 1, not " + inQuotes(value);
    if (arguments.explainedPage) return "the page to explain is given twice";
    arguments.explainedPage = page;
    return {};
}

/// No message about passwords shows one.
std::string setPassword(Arguments& arguments, std::string_view value) {
    if (!arguments.options.password.empty()) return "the password is given twice";
    arguments.options.password = value;
    return {};
}

std::string setPasswordFile(Arguments& arguments, std::string_view value) {
    return setOnce(arguments.passwordFile, value, "the password file");
}

std::string setPasswordPrompt(Arguments& arguments, std::string_view) {
    arguments.askForPassword = AskForPassword::whenNeeded;
    return {};
}

std::string setStrict(Arguments& arguments, std::string_view) {
    arguments.partial = PartialCountsAs::failed;
    return {};
}

std::string setQuiet(Arguments& arguments, std::string_view) {
    arguments.verbosity = Verbosity::quiet;
    return {};
}

std::string setVerbose(Arguments& arguments, std::string_view) {
    arguments.verbosity = Verbosity::verbose;
    return {};
}

constexpr std::array kSections = {
    SectionText{Section::input, "Input", ""},
    SectionText{
        Section::isolation, "Isolation",
        "Each document is read in a process that can open no file, no network and no other program, so a hostile "
        "one harms nothing but itself."},
    SectionText{Section::passwords, "Passwords of PDFs", "One for all documents, as user or as owner."},
    SectionText{Section::output, "Output", ""},
    SectionText{Section::results, "Large runs",
                "What became of each document is one JSON object on one line; docs/batch.md describes its members."},
    SectionText{Section::text, "Text", ""},
    SectionText{Section::messages, "Messages", ""},
};

constexpr std::array kOptions = {
    Option{
        "recursive", 'r', Section::input, About::run, "", Offer::nothing, "", setWalkFolders,
        "read the documents in folders and in the folders below them: files with one of the extensions, in the order "
        "of the names; links to folders are not followed"},
    Option{"files-from", '\0', Section::input, About::run, "LIST", Offer::files, "", setInputList,
           "read the names of more files from the file LIST, one on each line; \"-\" is standard input"},
    Option{"null", '0', Section::input, About::run, "", Offer::nothing, "", setNulNames,
           "each name in LIST ends with a NUL byte, not a line end"},
    Option{"type", 't', Section::input, About::document, "KIND", Offer::choices, "rtf rtfd html pdf", setType,
           "read every input as rtf, rtfd, html or pdf, whatever its name"},
    Option{"jobs", 'j', Section::input, About::run, "N", Offer::nothing, "", setJobs,
           "documents read at a time, 1 to 256 (default: one for each processor); the output does not depend on it"},
    Option{"threads", '\0', Section::input, About::run, "N", Offer::nothing, "", setThreads,
           "threads that read the pages of one PDF, 1 to 256 (default: the last documents of a run share those of -j, "
           "all others have one); the output does not depend on it"},

    Option{"timeout", '\0', Section::isolation, About::run, "S", Offer::nothing, "", setTimeout,
           "give up a document after S seconds (default 60; 0: never)"},
    Option{"max-memory", '\0', Section::isolation, About::run, "MB", Offer::nothing, "", setMaximumMemory,
           "the most memory for a document, in MiB (default 2048; 0: no limit)"},
    Option{"in-process", '\0', Section::isolation, About::run, "", Offer::nothing, "", setInProcess,
           "read documents in this process: no isolation, no limits"},
    Option{"worker", '\0', Section::isolation, About::run, "", Offer::nothing, "", setWorker,
           "read requests on standard input and write answers on standard output; see docs/worker-protocol.md"},

    Option{"password", '\0', Section::passwords, About::document, "TEXT", Offer::nothing, "", setPassword,
           "the password; other users of the machine may see it for a moment, which the two other ways avoid"},
    Option{"password-file", '\0', Section::passwords, About::run, "FILE", Offer::files, "", setPasswordFile,
           "the password is the first line of FILE; \"-\" is standard input"},
    Option{"password-prompt", '\0', Section::passwords, About::run, "", Offer::nothing, "", setPasswordPrompt,
           "ask on the terminal, once, when the first document needs a password"},

    Option{
        "output", 'o', Section::output, About::run, "PATH", Offer::files, "", setOutput,
        "\"-\": standard output. A PATH that ends in .txt and is not a folder: the file for the text of one document. "
        "Any other PATH: the folder for the texts. Each is BASE.txt, where BASE is the document's name without its "
        "extension (\"stdin\" for \"-\"). The folder is made if its parent exists. A text appears whole or not at "
        "all. Texts that would have the same name, or replace an input, get their full names, report.pdf.txt and "
        "report.rtf.txt. If these are the same too, they get a number: report.rtf-2.txt. Standard error says so"},
    Option{"mirror", '\0', Section::output, About::run, "ROOT", Offer::folders, "", setMirrorRoot,
           "keep the folders: the text of ROOT/a/b.rtf is a/b.txt in the output folder; the text of a document that is "
           "not below ROOT goes to the top"},
    Option{
        "if-exists", '\0', Section::output, About::run, "WHAT", Offer::choices, "overwrite skip rename error newer",
        setIfExists,
        "if the text's file exists already: overwrite it (the default; it keeps its mode, and one that is read-only is "
        "an error), skip the document, rename the text to BASE-2.txt, error, or newer: overwrite it if the document "
        "was changed after it, else skip"},
    Option{"no-clobber", '\0', Section::output, About::run, "", Offer::nothing, "", setNoClobber,
           "the same as --if-exists skip"},

    Option{"results", '\0', Section::results, About::run, "FILE", Offer::files, "", setResults,
           "write the results to FILE, which is made or replaced, in the order of the documents; \"-\" is standard "
           "output"},
    Option{
        "resume", '\0', Section::results, About::run, "FILE", Offer::files, "", setResume,
        "go on with a run that was stopped: leave out the documents that have a result in FILE and still have their "
        "text, and add the other results to FILE. Give the same arguments as before. If FILE does not exist, the run "
        "is a new one"},
    Option{"retry-failed", '\0', Section::results, About::run, "", Offer::nothing, "", setRetryFailed,
           "with --resume, convert the documents that failed once more"},
    Option{
        "shard", '\0', Section::results, About::run, "I/N", Offer::nothing, "", setShard,
        "convert only part I of N parts of the documents; a path always belongs to the same part. The texts have the "
        "same names as in one run"},
    Option{"merge-results", '\0', Section::results, About::run, "FILE", Offer::files, "", setMergeResults,
           "read files of results, not documents, and write them to FILE as one, with one result for each document; "
           "\"-\" is "
           "standard output. With --files-from, every document of LIST must have a result, and no other one may. Says "
           "which "
           "documents and which texts are missing"},

    Option{"pages", '\0', Section::text, About::document, "LIST", Offer::nothing, "", setPages,
           "only these pages, in the order of the document: 3-7,12,20- (PDF; of other documents everything is read)"},
    Option{"page-marks", '\0', Section::text, About::document, "ff", Offer::choices, "ff", setPageMarks,
           "a form feed between pages (PDF, RTF)"},
    Option{"cells", '\0', Section::text, About::document, "line", Offer::choices, "tab line", setCells,
           "each table cell on a line of its own; default: tab"},
    Option{"no-list-markers", '\0', Section::text, About::document, "", Offer::nothing, "", setNoListMarkers,
           "no bullets and numbers before list items"},
    Option{"links", '\0', Section::text, About::document, "", Offer::nothing, "", setLinks,
           "the target after the text of a link: text <target>"},
    Option{"hidden-text", '\0', Section::text, About::document, "", Offer::nothing, "", setHiddenText,
           "hidden and deleted text too"},
    Option{"headers-footers", '\0', Section::text, About::document, "", Offer::nothing, "", setHeadersFooters,
           "running headers and footers too (RTF; of a PDF, those that its tags name)"},
    Option{"reflow", '\0', Section::text, About::document, "", Offer::nothing, "", setReflow,
           "join the lines inside a paragraph (PDF, RTF); of a PDF, running heads, feet and page numbers are left out"},
    Option{"explain", '\0', Section::text, About::run, "PAGE", Offer::nothing, "", setExplainedPage,
           "instead of the text, a picture (SVG) of how that page of the one PDF is read, counted from 1: runs, words, "
           "lines, columns, tables, paragraphs and reading order, with the reasons; -o PATH is its file, whatever its "
           "extension"},

    Option{"strict", '\0', Section::messages, About::run, "", Offer::nothing, "", setStrict,
           "a document with parts that could not be read counts as failed (its text is still written)"},
    Option{"quiet", 'q', Section::messages, About::run, "", Offer::nothing, "", setQuiet,
           "no messages about documents, and no progress bar"},
    Option{"verbose", 'v', Section::messages, About::run, "", Offer::nothing, "", setVerbose,
           "a message about every document"},
    Option{"help", 'h', Section::messages, About::run, "", Offer::nothing, "", nullptr, "this text"},
    Option{"version", '\0', Section::messages, About::run, "", Offer::nothing, "", nullptr,
           "the version; with --verbose also the isolation"},
};

constexpr std::array kExitCodes = {
    ExitCode{kAllConverted, "every document was converted, or skipped as requested"},
    ExitCode{kSomeFailed, "some or all failed"},
    ExitCode{kUsage, "the arguments are not understood"},
    ExitCode{kNothingAccepted, "no input is of a type that the program reads"},
    ExitCode{kDestinationUnwritable, "the destination, a text in it or the results cannot be written"},
    ExitCode{kIncomplete, "the merged results are not those of all documents, or a text is missing"},
    ExitCode{kInterrupted, "interrupted"},
    ExitCode{kReaderGone, "the reader of standard output is gone; there is no message"},
};

} // namespace

std::span<const SectionText> sectionTexts() {
    return kSections;
}

std::span<const Option> optionTable() {
    return kOptions;
}

const Option* optionNamed(std::string_view name) {
    const auto found = std::find_if(kOptions.begin(), kOptions.end(), [&](const Option& o) { return o.name == name; });
    return found == kOptions.end() ? nullptr : &*found;
}

std::span<const ExitCode> exitCodes() {
    return kExitCodes;
}

} // namespace quillow::cli
