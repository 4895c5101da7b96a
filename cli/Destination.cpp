#include "cli/Destination.h"

#include "cli/Arguments.h"
#include "cli/Paths.h"

namespace quillow::cli {

Destination destinationOf(const std::optional<std::string>& output,
                          const std::function<bool(const std::string&)>& isFolder) {
    if (!output || *output == kStandardStream) return {};
    if (!lowered(*output).ends_with(".txt") || isFolder(*output)) return {DestinationKind::folder, *output, {}};
    Destination destination{DestinationKind::file, std::string(folderPart(*output)), std::string(lastPart(*output))};
    if (destination.folder.empty()) destination.folder = output->front() == '/' ? "/" : ".";
    return destination;
}

} // namespace quillow::cli
