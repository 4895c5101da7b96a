#include "engines/pdf/Module.h"

#include <dlfcn.h>

#include <new>
#include <system_error>

namespace quillow::pdf {

namespace {

/// The folder of the running program (proc(5)); the loader's own $ORIGIN means another one where a sanitizer stands before it.
std::filesystem::path programFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

} // namespace

Module::Module(const std::filesystem::path& file) {
    if (void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL))
        open_ = reinterpret_cast<decltype(open_)>(dlsym(module, "quillowOpenPdf"));
    if (open_ == nullptr) failure_ = dlerror();
}

const Module& Module::installed() {
    static const Module module(programFolder() / QUILLOW_PDF_MODULE);
    return module;
}

std::unique_ptr<PageSource> Module::open(std::span<const std::byte> bytes) const {
    if (open_ == nullptr) return nullptr;
    std::unique_ptr<PageSource> pages(open_(bytes.data(), bytes.size()));
    if (!pages) throw std::bad_alloc();
    return pages;
}

} // namespace quillow::pdf
