#include "cli/results/ResultLines.h"

#include "posix/FileDescriptor.h"

#include <fstream>
#include <optional>
#include <utility>

namespace quillow::cli {

namespace {

std::optional<ResultLine> nextLine(std::istream& in) {
    ResultLine line;
    if (!std::getline(in, line.text)) return std::nullopt;
    line.isWhole = !in.eof();
    return line;
}

} // namespace

std::variant<LastLine, ResultsFailure> readResults(const std::string& path, std::size_t longest,
                                                   const std::function<void(ResultRecord, const ResultLine&)>& each) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return ResultsFailure{lastError()};
    std::size_t number = 0;
    while (const std::optional<ResultLine> line = nextLine(in)) {
        ++number;
        auto record = line->text.size() <= longest ? recordOf(line->text) : std::nullopt;
        if (!line->isWhole && !record) return LastLine::cut; // nothing was written after it
        if (!record) return ResultsFailure{"line " + std::to_string(number) + " is not a result of this program"};
        each(std::move(*record), *line);
    }
    if (in.bad()) return ResultsFailure{lastError()};
    return LastLine::whole;
}

} // namespace quillow::cli
