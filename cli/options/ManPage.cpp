#include "cli/options/HelpText.h"
#include "cli/options/OptionTable.h"
#include "cli/options/Pages.h"

#include <array>
#include <utility>

namespace quillow::cli {

namespace {

/// Escapes what roff would interpret: backslashes, and dashes, which it prints as hyphens. `text` is in the middle of a
/// line, so a period or an apostrophe at its begin is no request.
std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else
            out += c;
    }
    return out;
}

/// A paragraph of text: one sentence-like line. "\&" keeps a first period from being a request.
std::string paragraph(std::string_view text) {
    return "\\&" + escaped(text) + "\n";
}

std::string bold(std::string_view text) {
    return "\\fB" + escaped(text) + "\\fR";
}

std::string labelOf(const Option& option) {
    std::string label = option.letter == '\0' ? std::string() : bold(std::string("-") + option.letter) + ", ";
    label += bold("--" + std::string(option.name));
    if (!option.value.empty()) label += " \\fI" + escaped(option.value) + "\\fR";
    return label;
}

std::string upper(std::string_view text) {
    std::string out;
    for (const char c : text)
        out += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return out;
}

struct Example {
    std::string_view command;
    std::string_view what;
};
constexpr std::array kExamples = {
    Example{"quillow-convert letter.rtf", "The text on standard output."},
    Example{"quillow-convert -o texts *.pdf *.html", "A file in the folder texts for each document."},
    Example{"quillow-convert -r --mirror Documents -o texts Documents",
            "Every document below a folder, in the same folders."},
    Example{"quillow-convert -r -o texts --resume results.jsonl Archive",
            "A run that can be stopped at any time: the same command goes on with it."},
};

} // namespace

std::string manPage() {
    // groff prints the bytes of these two quotes as they are.
    std::string out = ".\\\" Made from the table of options in cli/options/OptionTable.cpp.\n";
    out += ".TH QUILLOW\\-CONVERT 1 \"\" \"Quillow " + std::string(kVersion) + "\" \"User Commands\"\n";
    out += ".SH NAME\nquillow\\-convert \\- turn RTF, RTFD, HTML and PDF documents into plain text\n";
    out += ".SH SYNOPSIS\n.B quillow\\-convert\n[\\fIOPTION\\fR]... \\fIFILE\\fR...\n";
    out += ".SH DESCRIPTION\n" + paragraph(kPurpose) + ".PP\n" + paragraph(kDescription) + ".PP\n" + paragraph(kSizes);
    for (const SectionText& section : sectionTexts()) {
        out += ".SH \"" + upper(section.title) + "\"\n";
        if (!section.introduction.empty()) out += paragraph(section.introduction);
        for (const Option& option : optionTable())
            if (option.section == section.section) out += ".TP\n" + labelOf(option) + "\n" + paragraph(option.help);
    }
    out += ".PP\nA message is one line on standard error:\n.IP\n" + escaped(kMessageForm) + "\n.PP\n" +
           paragraph(kReasons);
    out += ".SH \"EXIT STATUS\"\n";
    for (const ExitCode& exit : exitCodes())
        out += ".TP\n" + bold(std::to_string(exit.code)) + "\n" + paragraph(exit.meaning);
    out += ".SH EXAMPLES\n";
    for (const auto& [command, what] : kExamples)
        out += ".TP\n" + bold(command) + "\n" + paragraph(what);
    out += ".SH \"SEE ALSO\"\n.BR catdoc (1),\n.BR pdftotext (1),\n.BR w3m (1)\n";
    return out;
}

} // namespace quillow::cli
