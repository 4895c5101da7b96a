#include "engines/pdf/Module.h"

#include <dlfcn.h>
#include <sys/mman.h>

#include <new>
#include <system_error>

namespace quillow::pdf {

namespace {

/// The folder of the running program (proc(5)); the loader's own $ORIGIN means another one where a sanitizer stands
/// before it.
std::filesystem::path programFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

/// Throws where the system would not give that much memory now. It is asked for and given back untouched.
void requireRoom(std::size_t bytes) {
    void* const room = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (room == MAP_FAILED) throw std::bad_alloc();
    ::munmap(room, bytes);
}

} // namespace

Module::Module(const std::filesystem::path& file) {
    requireRoom(kRoomToLoad);
    if (void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL))
        open_ = reinterpret_cast<decltype(open_)>(dlsym(module, "quillowOpenPdf"));
    if (open_ == nullptr) failure_ = dlerror();
}

const Module& Module::installed() {
    static const Module module(programFolder() / QUILLOW_PDF_MODULE);
    return module;
}

std::unique_ptr<PageSource> Module::open(std::span<const std::byte> bytes, std::string_view password) const {
    if (open_ == nullptr) return nullptr;
    requireRoom(kRoomToRead + bytes.size() * kRoomForAByte);
    std::unique_ptr<PageSource> pages(open_(bytes.data(), bytes.size(), password.data(), password.size()));
    if (!pages) throw std::bad_alloc();
    return pages;
}

} // namespace quillow::pdf
