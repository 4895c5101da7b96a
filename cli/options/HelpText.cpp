#include "cli/options/HelpText.h"

#include "cli/options/OptionTable.h"

#include <algorithm>

namespace quillow::cli {

namespace {

constexpr std::size_t kColumns = 80;
constexpr std::size_t kHelpColumn = 24;
/// An option that is longer has its help on the next line.
constexpr std::size_t kLongestLabel = kHelpColumn - 1;

/// Appends words, and begins a new line, indented, before a word that does not fit.
void appendWrapped(std::string& out, std::string_view words, std::size_t indent) {
    std::size_t column = indent;
    bool isFirst = true;
    while (!words.empty()) {
        const std::string_view word = words.substr(0, words.find(' '));
        words.remove_prefix(std::min(word.size() + 1, words.size()));
        if (!isFirst && column + 1 + word.size() > kColumns) {
            out += "\n" + std::string(indent, ' ');
            column = indent;
        } else if (!isFirst) {
            out += ' ';
            ++column;
        }
        out += word;
        column += word.size();
        isFirst = false;
    }
    out += '\n';
}

std::string labelOf(const Option& option) {
    std::string label = option.letter == '\0' ? "      " : std::string("  -") + option.letter + ", ";
    label += "--" + std::string(option.name);
    if (!option.value.empty()) label += " " + std::string(option.value);
    return label;
}

void appendOption(std::string& out, const Option& option) {
    std::string label = labelOf(option);
    if (label.size() > kLongestLabel) {
        out += label + "\n";
        label.clear();
    }
    out += label + std::string(kHelpColumn - label.size(), ' ');
    appendWrapped(out, option.help, kHelpColumn);
}

void appendSection(std::string& out, const SectionText& section) {
    std::string head = std::string(section.title) + ":";
    if (!section.introduction.empty()) head += " " + std::string(section.introduction);
    appendWrapped(out, head, 0);
    for (const Option& option : optionTable())
        if (option.section == section.section) appendOption(out, option);
    out += '\n';
}

} // namespace

const std::string_view kVersion = QUILLOW_VERSION;
const std::string_view kVersionText = "quillow-convert " QUILLOW_VERSION "\n";

const std::string_view kPurpose = "Turns RTF, RTFD, HTML and PDF documents into plain text (UTF-8).";
const std::string_view kDescription = "The texts go to standard output in the order of the files. A file's extension "
                                      "(rtf, rtfd, htm, html, pdf) says what "
                                      "it is. With any other extension, and for standard input, the content does. An "
                                      "RTFD bundle is one document. \"-\" is "
                                      "standard input. After \"--\" every argument is a file name.";
const std::string_view kMessageForm = "quillow-convert: PATH: REASON (DETAIL)";
const std::string_view kReasons =
    "Reasons: ok, ok-empty, no-text-layer, partial, wrong-type, damaged, locked, too-large, timeout, out-of-memory, "
    "crashed, unreadable, unwritable, skipped.";
const std::string_view kSizes = "A document is held in memory as a whole. Files over 1 GiB are too-large; so is more "
                                "than 256 MiB from standard input "
                                "or a pipe, which may never end.";

std::string helpText() {
    std::string out = "Usage: quillow-convert [OPTION]... FILE...\n" + std::string(kPurpose) + "\n\n";
    appendWrapped(out, kDescription, 0);
    out += '\n';
    for (const SectionText& section : sectionTexts())
        appendSection(out, section);
    out += "A message is one line on standard error:\n  " + std::string(kMessageForm) + "\n";
    appendWrapped(out, kReasons, 0);
    out += '\n';
    appendWrapped(out, kSizes, 0);
    out += "\nExit status:\n";
    for (const ExitCode& exit : exitCodes()) {
        const std::string code = std::to_string(exit.code);
        out += std::string(5 - code.size(), ' ') + code + "   ";
        appendWrapped(out, exit.meaning, 8);
    }
    return out;
}

} // namespace quillow::cli
