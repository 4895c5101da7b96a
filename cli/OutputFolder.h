// The folder that the texts go into. Each file appears whole or not at all.
#pragma once

#include "cli/FileDescriptor.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace quillow::cli {

struct OutputFailure {
    std::string detail; ///< what the system said
};

class OutputFolder {
public:
    /// Opens the folder, and makes it when its parent is there.
    [[nodiscard]] static std::variant<OutputFolder, OutputFailure> open(const std::string& path);

    /// Puts a file of that name and content into the folder, in place of one that is there. Whoever looks sees the old file
    /// or the whole new one; a failure leaves the old one and nothing beside it. May be called from several threads at once.
    [[nodiscard]] std::optional<OutputFailure> write(const std::string& name, std::string_view content) const;

    /// Makes the folder's entries last: to be called once, after the last file.
    [[nodiscard]] std::optional<OutputFailure> sync() const;

    /// Takes away what writes under way have in the folder, and lets none of them go on: for a program that is about to end.
    static void abandonWrites();

private:
    explicit OutputFolder(FileDescriptor folder)
        : folder_(std::move(folder)) {}
    FileDescriptor folder_;
};

} // namespace quillow::cli
