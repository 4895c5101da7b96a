#include "cli/options/Arguments.h"

#include "cli/Messages.h"
#include "cli/options/OptionTable.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <utility>

namespace quillow::cli {

namespace {

std::string mistakeOfResults(const Arguments& arguments) {
    const bool usesOutput = arguments.output.value_or(std::string(kStandardStream)) == kStandardStream;
    if (arguments.results == kStandardStream && usesOutput)
        return "option '--results -' needs '-o' and a folder, because the results go to standard output";
    if (arguments.resumedResults == kStandardStream) return "option '--resume' needs a file";
    if (arguments.resumedResults && usesOutput) return "option '--resume' needs '-o' and a folder";
    if (arguments.resumedResults && arguments.results != arguments.resumedResults)
        return "options '--results' and '--resume' name different files";
    if (arguments.retry == Retry::failed && !arguments.isResumed()) return "option '--retry-failed' needs '--resume'";
    if (arguments.explainedPage && arguments.results) return "option '--explain' does not go with '--results'";
    return {};
}

std::string mistakeOfMerge(const Arguments& arguments) {
    if (arguments.inputs.empty()) return "option '--merge-results' needs files of results";
    if (arguments.folders == Folders::refused && !arguments.output && !arguments.mirrorRoot && !arguments.results &&
        !arguments.explainedPage && !arguments.passwordFile && arguments.shard == Shard() &&
        arguments.documentsFrom == DocumentsFrom::files)
        return {};
    return "option '--merge-results' reads files of results only; '--files-from' names their documents";
}

/// Returns the error of options that are valid one by one but not together; empty if there is none.
std::string mistakeOfTheWhole(const Arguments& arguments) {
    if (arguments.mergedResults) return mistakeOfMerge(arguments);
    if (arguments.documentsFrom == DocumentsFrom::requests) {
        if (!arguments.explainedPage && arguments.inputs.empty() && !arguments.inputList && !arguments.output &&
            !arguments.results && arguments.shard == Shard())
            return {};
        return "option '--worker' takes documents from standard input only, and gives their texts on standard "
               "output";
    }
    if (arguments.inputs.empty() && !arguments.inputList) return "no input is given";
    const auto inputs = std::count(arguments.inputs.begin(), arguments.inputs.end(), kStandardStream);
    if (inputs + (arguments.inputList == kStandardStream ? 1 : 0) +
            (arguments.passwordFile == kStandardStream ? 1 : 0) >
        1)
        return "standard input can be read only once";
    if ((arguments.options.password.empty() ? 0 : 1) + (arguments.passwordFile ? 1 : 0) +
            (arguments.askForPassword == AskForPassword::whenNeeded ? 1 : 0) >
        1)
        return "the password comes from one of '--password', '--password-file' and '--password-prompt'";
    if (arguments.nameEnd == NameEnd::nul && !arguments.inputList) return "option '-0' needs '--files-from'";
    if (arguments.explainedPage && (arguments.inputs.size() != 1 || arguments.inputList))
        return "option '--explain' takes one document";
    if (arguments.explainedPage && arguments.mirrorRoot) return "option '--explain' does not go with '--mirror'";
    if (arguments.mirrorRoot && arguments.output.value_or(std::string(kStandardStream)) == kStandardStream)
        return "option '--mirror' needs '-o' and a folder";
    return mistakeOfResults(arguments);
}

/// How parsing ends before the last word. The library passes it through.
struct Ending {
    std::variant<Request, UsageError> outcome;
};

[[noreturn]] void complain(std::string message) {
    throw Ending{UsageError{std::move(message)}};
}

/// The option as it was given, when its value is missing: the last of the words.
std::string lastOption(std::string_view word) {
    return word.starts_with("--") ? std::string(word) : std::string("-") + word.back();
}

/// Feeds the words to the library, and the options that it finds to the table's functions.
class Parser {
public:
    explicit Parser(Arguments arguments, std::optional<About> onlyAbout = std::nullopt)
        : arguments_(std::move(arguments))
        , onlyAbout_(onlyAbout) {
        app_.set_help_flag();
        app_.allow_extras(); // the names of files
    }

    /// Throws an Ending.
    Arguments parse(std::span<const std::string_view> words) {
        words_ = words;
        // After "--" every word is a file name.
        const auto end = std::find(words.begin(), words.end(), "--");
        const auto names = words.subspan(static_cast<std::size_t>(std::min(end + 1, words.end()) - words.begin()));
        std::vector<std::string> reversed = prepared({words.begin(), end});
        addOptions(reversed);
        std::reverse(reversed.begin(), reversed.end());
        try {
            app_.parse(std::move(reversed));
        } catch (const CLI::ArgumentMismatch&) {
            complain("option " + inQuotes(lastOption(*(end - 1))) + " needs a value");
        }
        for (std::string& word : app_.remaining()) {
            if (word.size() > 1 && word.front() == '-') complainOfUnknown(word);
            arguments_.inputs.push_back(std::move(word));
        }
        for (const std::string_view name : names)
            arguments_.inputs.emplace_back(name == kStandardStream ? "./-" : name);
        return std::move(arguments_);
    }

private:
    /// To learn all options takes the library more instructions than the rest of a small run, so it learns only those
    /// that may be given.
    void addOptions(const std::vector<std::string>& words) {
        std::string dashed;
        for (const std::string& word : words)
            if (word.starts_with('-')) dashed += word;
        for (const Option& option : optionTable())
            if (dashed.find(option.name) != std::string::npos || dashed.find(option.letter) != std::string::npos)
                add(option);
    }

    void add(const Option& option) {
        const std::string letter = option.letter == '\0' ? std::string() : std::string{'-', option.letter, ','};
        const std::string names = letter + "--" + std::string(option.name);
        if (option.value.empty()) {
            app_.add_flag_function(names, [this, &option](std::int64_t) { apply(option, {}); })->trigger_on_parse();
            return;
        }
        const auto take = [this, &option](const std::vector<std::string>& values) {
            apply(option, values.back());
            return true;
        };
        app_.add_option(names, take)->expected(1)->trigger_on_parse();
    }

    void apply(const Option& option, std::string_view value) {
        if (onlyAbout_ && option.about != *onlyAbout_)
            complain("option " + inQuotes("--" + std::string(option.name)) + " is not one of a document");
        if (option.name == "help") throw Ending{Request::help};
        if (option.name == "version") throw Ending{versionRequest()};
        if (std::string mistake = option.apply(arguments_, value); !mistake.empty()) complain(std::move(mistake));
    }

    /// The library takes the next word as the value of "--name=", and any value for an option that has none.
    static std::vector<std::string> prepared(std::span<const std::string_view> words) {
        std::vector<std::string> prepared;
        prepared.reserve(words.size());
        for (const std::string_view word : words) {
            const std::size_t equals = word.starts_with("--") ? word.find('=') : std::string_view::npos;
            const Option* const option =
                equals == std::string_view::npos ? nullptr : optionNamed(word.substr(2, equals - 2));
            if (option == nullptr) {
                prepared.emplace_back(word);
                continue;
            }
            if (option->value.empty()) complain("option " + inQuotes(word.substr(0, equals)) + " takes no value");
            prepared.emplace_back(word.substr(0, equals));
            prepared.emplace_back(word.substr(equals + 1));
        }
        return prepared;
    }

    [[noreturn]] static void complainOfUnknown(std::string_view word) {
        // No value is shown: it may be a password.
        complain("unknown option " +
                 inQuotes(word.starts_with("--") ? word.substr(0, word.find('=')) : word.substr(0, 2)));
    }

    /// --version, with the isolation if --verbose is somewhere on the command line.
    [[nodiscard]] Request versionRequest() const {
        const bool isVerbose = std::any_of(words_.begin(), words_.end(),
                                           [](std::string_view word) { return word == "--verbose" || word == "-v"; });
        return isVerbose ? Request::versionAndIsolation : Request::version;
    }

    CLI::App app_;
    Arguments arguments_;
    std::optional<About> onlyAbout_;
    std::span<const std::string_view> words_;
};

} // namespace

std::variant<Arguments, Request, UsageError> parseArguments(std::span<const std::string_view> words) {
    try {
        Arguments arguments = Parser({}).parse(words);
        if (!arguments.results) arguments.results = arguments.resumedResults;
        if (std::string mistake = mistakeOfTheWhole(arguments); !mistake.empty()) return UsageError{std::move(mistake)};
        return arguments;
    } catch (Ending& ending) {
        if (const auto* const request = std::get_if<Request>(&ending.outcome)) return *request;
        return std::move(std::get<UsageError>(ending.outcome));
    }
}

std::string addDocumentOptions(Arguments& arguments, std::span<const std::string_view> words) {
    if (words.empty()) return {};
    const std::size_t inputs = arguments.inputs.size();
    try {
        Arguments added = Parser(arguments, About::document).parse(words);
        if (added.inputs.size() != inputs) return "only options of a document are allowed here";
        arguments = std::move(added);
        return {};
    } catch (Ending& ending) {
        if (auto* const error = std::get_if<UsageError>(&ending.outcome)) return std::move(error->message);
        return "only options of a document are allowed here";
    }
}

} // namespace quillow::cli
