#include "cli/options/Arguments.h"

#include "cli/Paths.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace quillow::cli {

namespace {

using Outcome = std::variant<Arguments, Request, UsageError>;
/// Applies an option to the arguments. Returns an error message; empty on success.
using Apply = std::string (*)(Arguments& arguments, std::string_view value);

enum class Takes { nothing, value };
/// Whether an option is about each document, or about the run as a whole.
enum class About { document, run };

struct Option {
    std::string_view name;
    char letter; ///< NUL if the option has no short name
    Takes takes;
    Apply apply;
    About about = About::document;
};

std::string quoted(std::string_view text, std::string_view dashes = {}) {
    std::string out;
    out += '\'';
    out += dashes;
    out += text;
    out += '\'';
    return out;
}

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
    return "unknown action for existing texts " + quoted(value) + ": overwrite, skip, rename, error or newer";
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
        return "the part of the documents must be I/N, such as 2/4, not " + quoted(value);
    arguments.shard = shard;
    return {};
}

std::string setType(Arguments& arguments, std::string_view value) {
    arguments.type = documentKindForExtension(lowered(value));
    return arguments.type ? std::string() : "unknown type " + quoted(value) + ": rtf, rtfd, html or pdf";
}

std::string setNumber(unsigned& number, std::string_view value, const std::string& what) {
    unsigned read = 0;
    if (!parseNumber(value, kMaximumJobs, read) || read == 0)
        return "the number of " + what + " must be from 1 to " + std::to_string(kMaximumJobs) + ", not " +
               quoted(value);
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
               " seconds, not " + quoted(value);
    arguments.limits.time = std::chrono::seconds(seconds);
    return {};
}

std::string setMaximumMemory(Arguments& arguments, std::string_view value) {
    std::size_t mebibytes = 0;
    if (!parseNumber(value, kMaximumMemory, mebibytes) || (mebibytes > 0 && mebibytes < kMinimumMemory))
        return "the memory for a document must be 0 (no limit) or from " + std::to_string(kMinimumMemory) + " to " +
               std::to_string(kMaximumMemory) + " MiB, not " + quoted(value);
    arguments.limits.memory = mebibytes << 20;
    return {};
}

std::string setWorker(Arguments& arguments, std::string_view) {
    arguments.documentsFrom = DocumentsFrom::requests;
    return {};
}

std::string setPageMarks(Arguments& arguments, std::string_view value) {
    if (value != "ff") return "unknown page mark " + quoted(value) + ": ff";
    arguments.options.pageMarks = PageMarks::formFeed;
    return {};
}

std::string setPages(Arguments& arguments, std::string_view value) {
    if (!arguments.options.pages.isEveryPage()) return "the pages are given twice";
    auto pages = parsePageSelection(value);
    if (!pages) return "the pages must be numbers and ranges like 3-7,12,20-, not " + quoted(value);
    arguments.options.pages = std::move(*pages);
    return {};
}

std::string setCells(Arguments& arguments, std::string_view value) {
    if (value != "tab" && value != "line") return "unknown cell separator " + quoted(value) + ": tab or line";
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
        return "the page to explain must be a number from 1, not " + quoted(value);
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

constexpr std::array kOptions = {
    Option{"output", 'o', Takes::value, setOutput, About::run},
    Option{"recursive", 'r', Takes::nothing, setWalkFolders, About::run},
    Option{"files-from", '\0', Takes::value, setInputList, About::run},
    Option{"null", '0', Takes::nothing, setNulNames, About::run},
    Option{"mirror", '\0', Takes::value, setMirrorRoot, About::run},
    Option{"if-exists", '\0', Takes::value, setIfExists, About::run},
    Option{"no-clobber", '\0', Takes::nothing, setNoClobber, About::run},
    Option{"results", '\0', Takes::value, setResults, About::run},
    Option{"resume", '\0', Takes::value, setResume, About::run},
    Option{"retry-failed", '\0', Takes::nothing, setRetryFailed, About::run},
    Option{"shard", '\0', Takes::value, setShard, About::run},
    Option{"type", 't', Takes::value, setType},
    Option{"in-process", '\0', Takes::nothing, setInProcess, About::run},
    Option{"timeout", '\0', Takes::value, setTimeout, About::run},
    Option{"max-memory", '\0', Takes::value, setMaximumMemory, About::run},
    Option{"worker", '\0', Takes::nothing, setWorker, About::run},
    Option{"jobs", 'j', Takes::value, setJobs, About::run},
    Option{"threads", '\0', Takes::value, setThreads, About::run},
    Option{"pages", '\0', Takes::value, setPages},
    Option{"page-marks", '\0', Takes::value, setPageMarks},
    Option{"cells", '\0', Takes::value, setCells},
    Option{"no-list-markers", '\0', Takes::nothing, setNoListMarkers},
    Option{"links", '\0', Takes::nothing, setLinks},
    Option{"hidden-text", '\0', Takes::nothing, setHiddenText},
    Option{"headers-footers", '\0', Takes::nothing, setHeadersFooters},
    Option{"reflow", '\0', Takes::nothing, setReflow},
    Option{"explain", '\0', Takes::value, setExplainedPage, About::run},
    Option{"password", '\0', Takes::value, setPassword},
    Option{"password-file", '\0', Takes::value, setPasswordFile, About::run},
    Option{"password-prompt", '\0', Takes::nothing, setPasswordPrompt, About::run},
    Option{"strict", '\0', Takes::nothing, setStrict, About::run},
    Option{"quiet", 'q', Takes::nothing, setQuiet, About::run},
    Option{"verbose", 'v', Takes::nothing, setVerbose, About::run},
};

const Option* optionNamed(std::string_view name) {
    const auto found = std::find_if(kOptions.begin(), kOptions.end(), [&](const Option& o) { return o.name == name; });
    return found == kOptions.end() ? nullptr : &*found;
}

const Option* optionLettered(char letter) {
    const auto found =
        std::find_if(kOptions.begin(), kOptions.end(), [&](const Option& o) { return o.letter == letter; });
    return found == kOptions.end() ? nullptr : &*found;
}

class Parser {
public:
    explicit Parser(std::span<const std::string_view> words)
        : words_(words) {}
    Parser(std::span<const std::string_view> words, Arguments arguments)
        : words_(words)
        , onlyAbout_(About::document)
        , arguments_(std::move(arguments)) {}

    Outcome parse() && {
        while (at_ < words_.size() && !request_ && complaint_.empty())
            takeWord(words_[at_++]);
        if (!complaint_.empty()) return UsageError{std::move(complaint_)};
        if (request_) return *request_;
        if (!arguments_.results) arguments_.results = arguments_.resumedResults;
        if (std::string mistake = mistakeOfTheWhole(); !mistake.empty()) return UsageError{std::move(mistake)};
        return std::move(arguments_);
    }

    /// Parses options only. Returns an error message; empty on success.
    [[nodiscard]] std::string parseOptions(Arguments& arguments) && {
        const std::size_t inputs = arguments_.inputs.size();
        while (at_ < words_.size() && !request_ && complaint_.empty())
            takeWord(words_[at_++]);
        if (!complaint_.empty()) return std::move(complaint_);
        if (request_ || arguments_.inputs.size() != inputs) return "only options of a document are allowed here";
        arguments = std::move(arguments_);
        return {};
    }

private:
    /// Returns the error of options that are valid one by one but not together; empty if there is none.
    [[nodiscard]] std::string mistakeOfTheWhole() const {
        if (arguments_.documentsFrom == DocumentsFrom::requests) {
            if (!arguments_.explainedPage && arguments_.inputs.empty() && !arguments_.inputList && !arguments_.output &&
                !arguments_.results)
                return {};
            return "option '--worker' takes documents from standard input only, and gives their texts on standard "
                   "output";
        }
        if (arguments_.inputs.empty() && !arguments_.inputList) return "no input is given";
        const auto inputs = std::count(arguments_.inputs.begin(), arguments_.inputs.end(), kStandardStream);
        if (inputs + (arguments_.inputList == kStandardStream ? 1 : 0) +
                (arguments_.passwordFile == kStandardStream ? 1 : 0) >
            1)
            return "standard input can be read only once";
        if ((arguments_.options.password.empty() ? 0 : 1) + (arguments_.passwordFile ? 1 : 0) +
                (arguments_.askForPassword == AskForPassword::whenNeeded ? 1 : 0) >
            1)
            return "the password comes from one of '--password', '--password-file' and '--password-prompt'";
        if (arguments_.nameEnd == NameEnd::nul && !arguments_.inputList) return "option '-0' needs '--files-from'";
        if (arguments_.explainedPage && (arguments_.inputs.size() != 1 || arguments_.inputList))
            return "option '--explain' takes one document";
        if (arguments_.explainedPage && arguments_.mirrorRoot) return "option '--explain' does not go with '--mirror'";
        if (arguments_.mirrorRoot && arguments_.output.value_or(std::string(kStandardStream)) == kStandardStream)
            return "option '--mirror' needs '-o' and a folder";
        return mistakeOfResults();
    }

    [[nodiscard]] std::string mistakeOfResults() const {
        const bool usesOutput = arguments_.output.value_or(std::string(kStandardStream)) == kStandardStream;
        if (arguments_.results == kStandardStream && usesOutput)
            return "option '--results -' needs '-o' and a folder, because the results go to standard output";
        if (arguments_.resumedResults == kStandardStream) return "option '--resume' needs a file";
        if (arguments_.resumedResults && usesOutput) return "option '--resume' needs '-o' and a folder";
        if (arguments_.resumedResults && arguments_.results != arguments_.resumedResults)
            return "options '--results' and '--resume' name different files";
        if (arguments_.retry == Retry::failed && !arguments_.isResumed())
            return "option '--retry-failed' needs '--resume'";
        if (arguments_.explainedPage && arguments_.results) return "option '--explain' does not go with '--results'";
        return {};
    }

    void takeWord(std::string_view word) {
        if (onlyInputs_ || word == kStandardStream || !word.starts_with('-')) {
            // After "--" every word is a file name. "-" there means a file of that name, so it becomes "./-".
            arguments_.inputs.emplace_back(onlyInputs_ && word == kStandardStream ? "./-" : word);
        } else if (word == "--") {
            onlyInputs_ = true;
        } else if (word.starts_with("--")) {
            takeLong(word.substr(2));
        } else {
            takeLetters(word.substr(1));
        }
    }

    void takeLong(std::string_view word) {
        if (word == "help") return void(request_ = Request::help);
        if (word == "version") return void(request_ = versionRequest());
        const std::size_t equals = word.find('=');
        const std::string_view name = word.substr(0, equals);
        const Option* const option = optionNamed(name);
        if (option == nullptr) return complain("unknown option " + quoted(name, "--"));
        if (option->takes == Takes::nothing) {
            if (equals != std::string_view::npos) return complain("option " + quoted(name, "--") + " takes no value");
            return apply(*option, {});
        }
        if (equals != std::string_view::npos) return apply(*option, word.substr(equals + 1));
        applyNextWord(*option, quoted(name, "--"));
    }

    void takeLetters(std::string_view letters) {
        while (!letters.empty() && complaint_.empty() && !request_) {
            const char letter = letters.front();
            const std::string_view shown = letters.substr(0, 1);
            letters.remove_prefix(1);
            if (letter == 'h') return void(request_ = Request::help);
            const Option* const option = letter == '\0' ? nullptr : optionLettered(letter);
            if (option == nullptr) return complain("unknown option " + quoted(shown, "-"));
            if (option->takes == Takes::nothing) {
                apply(*option, {});
                continue;
            }
            return letters.empty() ? applyNextWord(*option, quoted(shown, "-")) : apply(*option, letters);
        }
    }

    void applyNextWord(const Option& option, const std::string& shownName) {
        if (at_ == words_.size()) return complain("option " + shownName + " needs a value");
        apply(option, words_[at_++]);
    }

    /// --version, with the isolation if --verbose is somewhere on the command line.
    [[nodiscard]] Request versionRequest() const {
        const bool isVerbose = std::any_of(words_.begin(), words_.end(),
                                           [](std::string_view word) { return word == "--verbose" || word == "-v"; });
        return isVerbose ? Request::versionAndIsolation : Request::version;
    }

    void apply(const Option& option, std::string_view value) {
        if (onlyAbout_ && option.about != *onlyAbout_)
            return complain("option " + quoted(option.name, "--") + " is not one of a document");
        complaint_ = option.apply(arguments_, value);
    }
    void complain(std::string message) { complaint_ = std::move(message); }

    std::span<const std::string_view> words_;
    std::size_t at_ = 0;
    bool onlyInputs_ = false;
    std::optional<About> onlyAbout_;
    Arguments arguments_;
    std::optional<Request> request_;
    std::string complaint_;
};

} // namespace

std::variant<Arguments, Request, UsageError> parseArguments(std::span<const std::string_view> arguments) {
    return Parser(arguments).parse();
}

std::string addDocumentOptions(Arguments& arguments, std::span<const std::string_view> words) {
    return Parser(words, arguments).parseOptions(arguments);
}

} // namespace quillow::cli
