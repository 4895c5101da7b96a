// The module that reads PDF pages. It is a shared object of its own, loaded when the first PDF comes: the thirty
// libraries that it needs take longer to load than most documents of other kinds take to read.
#pragma once

#include "engines/pdf/PageSource.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace quillow::pdf {

/// The library ends the program when it gets no memory, so it is not begun where memory is short. Measured on documents
/// of up to 3.5 MB: loaded it takes 20 MiB, a document up to 2 MiB and 2 bytes for each of its own. The rest is for
/// what other threads take at the same time.
inline constexpr std::size_t kRoomToLoad = std::size_t{48} << 20;
inline constexpr std::size_t kRoomToRead = std::size_t{32} << 20;
inline constexpr std::size_t kRoomForAByte = 4;

class Module {
public:
    /// Loads a module, which stays loaded until the process ends. Throws std::bad_alloc, and loads nothing, where there
    /// is no room for kRoomToLoad.
    explicit Module(const std::filesystem::path& file);

    /// The one that is built and installed with the running program; loaded by the first call, from any thread. A call
    /// that throws std::bad_alloc loads nothing; the next one tries again.
    [[nodiscard]] static const Module& installed();

    /// The document, opened with the empty password or with that of the user or of the owner, in the bytes that the
    /// document's encryption takes; null where the module could not be loaded. The document's bytes are not copied and
    /// must outlive the pages. Throws std::bad_alloc, at once where there is no room for what a document needs.
    [[nodiscard]] std::unique_ptr<PageSource> open(std::span<const std::byte> bytes,
                                                   std::string_view password = {}) const;

    /// Why the module could not be loaded, in the loader's words; empty where it could.
    [[nodiscard]] const std::string& failure() const { return failure_; }

private:
    PageSource* (*open_)(const std::byte* bytes, std::size_t size, const char* password,
                         std::size_t passwordSize) noexcept = nullptr;
    std::string failure_;
};

} // namespace quillow::pdf

/// The module's one entry point, by the name that the loader looks for: the pages of a document, which the caller owns;
/// null when there is no memory for them.
extern "C" quillow::pdf::PageSource* quillowOpenPdf(const std::byte* bytes, std::size_t size, const char* password,
                                                    std::size_t passwordSize) noexcept;
