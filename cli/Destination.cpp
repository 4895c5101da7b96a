#include "cli/Destination.h"

#include "cli/Paths.h"
#include "cli/options/Arguments.h"

namespace quillow::cli {

namespace {

Destination fileAt(const std::string& path) {
    Destination destination{DestinationKind::file, std::string(folderPart(path)), std::string(lastPart(path))};
    if (destination.folder.empty()) destination.folder = path.front() == '/' ? "/" : ".";
    return destination;
}

} // namespace

Destination destinationOf(const std::optional<std::string>& output,
                          const std::function<bool(const std::string&)>& isFolder) {
    if (!output || *output == kStandardStream) return {};
    if (!lowered(*output).ends_with(".txt") || isFolder(*output)) return {DestinationKind::folder, *output, {}};
    return fileAt(*output);
}

Destination destinationOfPicture(const std::optional<std::string>& output) {
    if (!output || *output == kStandardStream) return {};
    return fileAt(*output);
}

} // namespace quillow::cli
