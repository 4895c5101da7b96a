#include "engines/rtf/Recovery.h"

#include "engines/rtf/Bytes.h"
#include "text/Ascii.h"

#include <algorithm>

namespace quillow::rtf {

namespace {

constexpr std::size_t npos = std::string_view::npos;

/// The offset of the first `word`, a control word with its backslash, or npos.
std::size_t findWord(std::string_view text, std::string_view word) {
    std::size_t at = text.find(word);
    while (at != npos && at + word.size() < text.size() && text::isLetter(text[at + word.size()]))
        at = text.find(word, at + word.size());
    return at;
}

/// The number of closing braces that have no opening brace in `rest`. Binary data is not skipped: the number is a guess
/// anyway.
std::size_t countUnmatchedCloses(std::string_view rest) {
    std::size_t unmatched = 0;
    std::size_t open = 0;
    const char* end = rest.data() + rest.size();
    for (const char* p = findSyntax(rest.data(), end); p != end; p = findSyntax(p, end)) {
        if (*p == '\\') {
            p += std::min<std::ptrdiff_t>(2, end - p);
            continue;
        }
        if (*p == '{') {
            ++open;
        } else if (open > 0) {
            --open;
        } else {
            ++unmatched;
        }
        ++p;
    }
    return unmatched;
}

const char* endOfLastBrace(std::string_view input) {
    const std::size_t brace = input.rfind('}');
    return brace != npos ? input.data() + brace + 1 : nullptr;
}

} // namespace

std::size_t findBody(std::string_view swallowed) {
    return std::min(findWord(swallowed, "\\sectd"), findWord(swallowed, "\\pard"));
}

std::size_t findBodyAfterEntries(std::string_view table) {
    const std::size_t body = findBody(table);
    if (body != npos) return body;
    const std::size_t paragraph = findWord(table, "\\par");
    const std::size_t brace = paragraph != npos ? table.rfind('}', paragraph) : npos;
    return brace != npos ? brace + 1 : npos;
}

bool holdsParagraph(std::string_view table) {
    if (findWord(table, "\\par") == npos) return false; // the usual case
    const std::size_t body = findBody(table);
    return body != npos && findWord(table.substr(body), "\\par") != npos;
}

Recovery::Recovery(std::string_view input, bool isFragment)
    : lastBrace_(isFragment ? nullptr : endOfLastBrace(input)) {}

/// A NUL after the brace rules a stray out: only the remains of a buffer follow it.
bool Recovery::isStrayClose(std::string_view rest) {
    if (!straysCounted_) {
        straysCounted_ = true;
        rest.remove_prefix(std::min(rest.find_first_not_of("\r\n"), rest.size()));
        work_ += rest.size();
        if (!rest.empty() && rest.front() != '\0') strays_ = countUnmatchedCloses(rest);
    }
    if (strays_ == 0) return false;
    --strays_;
    return true;
}

} // namespace quillow::rtf
