#include "cli/options/OptionTable.h"
#include "cli/options/Pages.h"

#include <array>

namespace quillow::cli {

namespace {

constexpr std::string_view kExtensions = "rtf|rtfd|htm|html|pdf";

/// The help of an option up to the first punctuation mark that ends a thought, for shells that show it in one line.
std::string shortHelp(const Option& option) {
    constexpr std::size_t kLongest = 60;
    std::string_view help = option.help.substr(0, option.help.find_first_of(":;("));
    if (help.size() > kLongest) help = help.substr(0, help.rfind(' ', kLongest));
    while (help.ends_with(' ') || help.ends_with(',') || help.ends_with('.'))
        help.remove_suffix(1);
    return help.size() > 3 ? std::string(help) : std::string(option.value);
}

/// "-o|--output" of the options whose values the shell offers in that way.
std::string bashPattern(Offer offer) {
    std::string pattern;
    for (const Option& option : optionTable()) {
        if (option.value.empty() || option.offer != offer) continue;
        if (option.letter != '\0') pattern += std::string("-") + option.letter + "|";
        pattern += "--" + std::string(option.name) + "|";
    }
    if (!pattern.empty()) pattern.pop_back();
    return pattern;
}

/// Quoted for a shell: 'it'\''s'.
std::string inShellQuotes(std::string_view text) {
    std::string out = "'";
    for (const char c : text)
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

std::string zshAction(const Option& option) {
    switch (option.offer) {
    case Offer::files: return "_files";
    case Offer::folders: return "_files -/";
    case Offer::choices: return "(" + std::string(option.choices) + ")";
    case Offer::nothing: break;
    }
    return " ";
}

/// Escapes the characters that end a part of a specification of _arguments.
std::string zshEscaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == ':' || c == '[' || c == ']' || c == '\\') out += '\\';
        out += c;
    }
    return out;
}

} // namespace

std::string bashCompletion() {
    std::string options;
    for (const Option& option : optionTable())
        options += "--" + std::string(option.name) + (option.value.empty() ? " " : "= ");
    options.pop_back();
    std::string out = "# Completion of bash for quillow-convert, made from its table of options.\n"
                      "_quillow_convert() {\n"
                      "    local word=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD-1]} ended= i\n"
                      "    COMPREPLY=()\n"
                      "    for ((i = 1; i < COMP_CWORD; i++)); do\n"
                      "        [[ ${COMP_WORDS[i]} == -- ]] && ended=1\n"
                      "    done\n"
                      "    # bash takes \"--name=value\" apart.\n"
                      "    if [[ $word == = ]]; then\n"
                      "        word=\n"
                      "    elif [[ $option == = ]]; then\n"
                      "        option=${COMP_WORDS[COMP_CWORD-2]}\n"
                      "    fi\n"
                      "    local IFS=$'\\n'\n"
                      "    [[ $ended ]] || case $option in\n";
    for (const Option& option : optionTable()) {
        if (option.offer != Offer::choices) continue;
        std::string lines(option.choices);
        for (char& c : lines)
            if (c == ' ') c = '\n';
        const std::string letter = option.letter == '\0' ? std::string() : std::string{'-', option.letter, '|'};
        out += "    " + letter + "--" + std::string(option.name) + ")\n        COMPREPLY=($(compgen -W " +
               inShellQuotes(lines) + " -- \"$word\"))\n        return ;;\n";
    }
    out += "    " + bashPattern(Offer::folders) +
           ")\n        compopt -o filenames\n        COMPREPLY=($(compgen -d -- \"$word\"))\n        return ;;\n";
    out += "    " + bashPattern(Offer::files) +
           ")\n        compopt -o filenames\n        COMPREPLY=($(compgen -f -- \"$word\"))\n        return ;;\n";
    out += "    " + bashPattern(Offer::nothing) + ")\n        return ;;\n    esac\n";
    out += "    if [[ ! $ended && $word == -* ]]; then\n"
           "        IFS=' '\n"
           "        COMPREPLY=($(compgen -W '" +
           options +
           "' -- \"$word\"))\n"
           "        [[ ${COMPREPLY[0]-} == *= ]] && compopt -o nospace\n"
           "        return\n"
           "    fi\n"
           "    compopt -o filenames\n"
           "    local shopts=$(shopt -p extglob nocasematch)\n"
           "    shopt -s extglob nocasematch\n"
           "    local file\n"
           "    while read -r file; do\n"
           "        [[ -d $file || $file == *.@(" +
           std::string(kExtensions) +
           ") ]] && COMPREPLY+=(\"$file\")\n"
           "    done < <(compgen -f -- \"$word\")\n"
           "    eval \"$shopts\"\n"
           "}\n"
           "complete -F _quillow_convert quillow-convert\n";
    return out;
}

std::string zshCompletion() {
    std::string out = "#compdef quillow-convert\n"
                      "# Completion of zsh for quillow-convert, made from its table of options.\n"
                      "_arguments -s -S \\\n";
    for (const Option& option : optionTable()) {
        const std::string name = "--" + std::string(option.name);
        const std::string letter = option.letter == '\0' ? std::string() : std::string{'-', option.letter};
        const std::string takes = option.value.empty() ? "" : "=";
        const std::string rest =
            "[" + zshEscaped(shortHelp(option)) + "]" +
            (option.value.empty() ? std::string() : ":" + zshEscaped(option.value) + ":" + zshAction(option));
        if (letter.empty()) {
            out += "    " + inShellQuotes(name + takes + rest) + " \\\n";
            continue;
        }
        const std::string both = "(" + letter + " " + name + ")";
        out += "    " + inShellQuotes(both + letter + (takes.empty() ? "" : "+") + rest) + " \\\n";
        out += "    " + inShellQuotes(both + name + takes + rest) + " \\\n";
    }
    out += "    '*:document:_files -g \"(#i)*.(" + std::string(kExtensions) + ")(-.,-/)\"'\n";
    return out;
}

std::string fishCompletion() {
    std::string out = "# Completion of fish for quillow-convert, made from its table of options.\n";
    for (const Option& option : optionTable()) {
        out += "complete -c quillow-convert";
        if (option.letter != '\0') out += std::string(" -s ") + option.letter;
        out += " -l " + std::string(option.name);
        switch (option.value.empty() ? Offer::nothing : option.offer) {
        case Offer::files: out += " -r -F"; break;
        case Offer::folders: out += " -x -a '(__fish_complete_directories)'"; break;
        case Offer::choices: out += " -x -a '" + std::string(option.choices) + "'"; break;
        case Offer::nothing: out += option.value.empty() ? "" : " -x"; break;
        }
        out += " -d " + inShellQuotes(shortHelp(option)) + "\n";
    }
    return out;
}

} // namespace quillow::cli
