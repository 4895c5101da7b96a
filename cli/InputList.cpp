#include "cli/InputList.h"

#include "cli/FolderWalk.h"
#include "cli/Paths.h"

namespace quillow::cli {

namespace {

/// Calls `take` with each name that is not empty. Returns a failure if the list is not valid.
template <typename Take>
std::optional<InputFailure> forEachName(std::string_view list, NameEnd nameEnd, const Take& take) {
    if (nameEnd == NameEnd::newline && list.find('\0') != std::string_view::npos)
        return InputFailure{Reason::unreadable, "it holds NUL bytes; -0 is for lists whose names end with one"};
    const char end = nameEnd == NameEnd::nul ? '\0' : '\n';
    while (!list.empty()) {
        const std::string_view name = list.substr(0, list.find(end));
        list.remove_prefix(std::min(name.size() + 1, list.size()));
        if (!name.empty()) take(name);
    }
    return std::nullopt;
}

class Finder {
public:
    explicit Finder(const Arguments& arguments)
        : arguments_(arguments) {}

    std::variant<std::vector<NamedInput>, InputFailure> find() && {
        for (const std::string& input : arguments_.inputs)
            add(input);
        if (arguments_.inputList)
            if (auto failure = addListed(*arguments_.inputList)) return std::move(*failure);
        return std::move(found_);
    }

private:
    void add(const std::string& input) {
        std::string path = withoutTrailingSlashes(input);
        if (arguments_.folders == Folders::refused || path == kStandardStream || !isPlainFolder(path))
            return found_.push_back({std::move(path), std::nullopt});
        walkFolder(path, [this](std::string document, std::optional<InputFailure> failure) {
            found_.push_back({std::move(document), std::move(failure)});
        });
    }

    std::optional<InputFailure> addListed(const std::string& list) {
        InputOutcome read = readList(list);
        if (auto* const failure = std::get_if<InputFailure>(&read)) return std::move(*failure);
        const auto bytes = std::get<InputDocument>(read).bytes.view();
        // In a list every name is a file name, even "-".
        return forEachName({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, arguments_.nameEnd,
                           [this](std::string_view name) { add(name == "-" ? "./-" : std::string(name)); });
    }

    const Arguments& arguments_;
    std::vector<NamedInput> found_;
};

} // namespace

std::variant<std::vector<NamedInput>, InputFailure> findInputs(const Arguments& arguments) {
    return Finder(arguments).find();
}

} // namespace quillow::cli
