// A text on its way into the output folder.
#pragma once

#include <optional>
#include <string>

namespace quillow::cli {

struct OutputFailure {
    std::string detail;       ///< the system's error message, or a phrase such as "is read-only"
    bool nameIsInUse = false; ///< the write failed only because a file of that name exists
};

/// A text that is written to a file without a name. If the object ends before place(), nothing remains.
class UnnamedText {
public:
    virtual ~UnnamedText() = default;

    enum class Together { no, yes };
    /// Brings the bytes to the disk. Together::yes: the caller has synced everything that was written to the folder, so
    /// this only says whether it worked for this text.
    [[nodiscard]] virtual std::optional<OutputFailure> sync(Together together) = 0;
    /// Gives the file its name.
    [[nodiscard]] virtual std::optional<OutputFailure> place() = 0;
};

} // namespace quillow::cli
