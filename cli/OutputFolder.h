// The folder that the texts go into, and the folders below it. Each file appears whole or not at all.
#pragma once

#include "posix/FileDescriptor.h"

#include <ctime>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>

namespace quillow::cli {

struct OutputFailure {
    std::string detail;       ///< what the system said
    bool nameIsInUse = false; ///< the only thing that is wrong
};

/// What happens to a file that has the text's name.
enum class Present { replaced, kept };

class OutputFolder {
public:
    enum class Missing { made, failure };

    /// Opens the folder, and makes it where that is asked for and its parent is there.
    [[nodiscard]] static std::variant<OutputFolder, OutputFailure> open(const std::string& path, Missing missing);

    /// When the file of that name was last changed; nothing where there is none.
    [[nodiscard]] std::optional<timespec> changeTime(const std::string& name) const;

    /// Puts a file of that name and content into the folder, or, for "a/b.txt", into one below it, which is made; links to
    /// folders are not followed there. Whoever looks sees the old file or the whole new one; a failure leaves the old one
    /// and nothing beside it. A file that is replaced leaves its mode to the new one, and its owner where the system allows it; one
    /// that may not be written to is not replaced, nor is one that nobody may write to: whoever took that right away, even from
    /// himself, means the file to stay, though to replace it only the folder's rights are needed.
    /// May be called from several threads at once.
    [[nodiscard]] std::optional<OutputFailure> write(const std::string& name, std::string_view content,
                                                     Present present) const;

    /// Makes the entries of all folders written to last: to be called once, after the last file.
    [[nodiscard]] std::optional<OutputFailure> sync() const;

    /// Takes away what writes under way have in their folders, and lets none of them go on: for a program that is about to end.
    static void abandonWrites();

private:
    /// The folders below this one that texts were put into; those above them are among them.
    struct Below {
        std::mutex mutex;
        std::set<std::string, std::less<>> names;
    };

    explicit OutputFolder(FileDescriptor folder)
        : folder_(std::move(folder))
        , below_(std::make_unique<Below>()) {}

    void remember(std::string_view below) const;

    FileDescriptor folder_;
    std::unique_ptr<Below> below_;
};

} // namespace quillow::cli
