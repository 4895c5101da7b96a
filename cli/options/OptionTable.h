// The one table of the options: parsing, --help, the man page and the completions of shells are made from it.
#pragma once

#include "cli/options/Arguments.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillow::cli {

/// The parts of --help and of the man page.
enum class Section { input, isolation, passwords, output, results, text, messages };

struct SectionText {
    Section section;
    std::string_view title;
    std::string_view introduction; ///< one paragraph; may be empty
};

/// What a shell offers for an option's value.
enum class Offer { nothing, files, folders, choices };

/// Whether an option is about each document, or about the run as a whole.
enum class About { document, run };

/// Applies an option to the arguments. Returns an error message; empty on success.
using Apply = std::string (*)(Arguments& arguments, std::string_view value);

struct Option {
    std::string_view name;
    char letter; ///< NUL if the option has no short name
    Section section;
    About about;
    std::string_view value; ///< what help calls the value; empty if the option takes none
    Offer offer;
    std::string_view choices; ///< separated by blanks, for Offer::choices
    Apply apply;              ///< nullptr for those that request something else than a run
    std::string_view help;    ///< one paragraph
};

[[nodiscard]] std::span<const SectionText> sectionTexts();
/// In the order of the sections.
[[nodiscard]] std::span<const Option> optionTable();
/// nullptr if there is none.
[[nodiscard]] const Option* optionNamed(std::string_view name);

struct ExitCode {
    int code;
    std::string_view meaning;
};
[[nodiscard]] std::span<const ExitCode> exitCodes();

} // namespace quillow::cli
