// The module that reads PDF pages. It is a shared object of its own, loaded when the first PDF comes: the thirty libraries that
// it needs take longer to load than most documents of other kinds take to read.
#pragma once

#include "engines/pdf/PageSource.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

namespace quillow::pdf {

class Module {
public:
    /// Loads a module, which stays loaded until the process ends.
    explicit Module(const std::filesystem::path& file);

    /// The one that is built and installed with the running program; loaded by the first call, from any thread.
    [[nodiscard]] static const Module& installed();

    /// The document, opened with the empty password; null where the module could not be loaded. The bytes are not copied and
    /// must outlive the pages. Throws std::bad_alloc.
    [[nodiscard]] std::unique_ptr<PageSource> open(std::span<const std::byte> bytes) const;

    /// Why the module could not be loaded, in the loader's words; empty where it could.
    [[nodiscard]] const std::string& failure() const { return failure_; }

private:
    PageSource* (*open_)(const std::byte* bytes, std::size_t size) noexcept = nullptr;
    std::string failure_;
};

} // namespace quillow::pdf

/// The module's one entry point, by the name that the loader looks for: the pages of a document, which the caller owns; null
/// when there is no memory for them.
extern "C" quillow::pdf::PageSource* quillowOpenPdf(const std::byte* bytes, std::size_t size) noexcept;
