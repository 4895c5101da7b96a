#include "cli/results/Sha256.h"

#include <dlfcn.h>
#include <nettle/sha2.h>
#include <nettle/version.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace quillow::cli {

namespace {

/// The name of the shared object for all releases with the headers' layout of contexts.
constexpr const char* kLibrary = "libnettle.so.8";
static_assert(NETTLE_VERSION_MAJOR == 3);

} // namespace

struct Sha256::Functions {
    decltype(&sha256_init) init = nullptr;
    decltype(&sha256_update) update = nullptr;
    decltype(&sha256_digest) digest = nullptr;

    Functions() {
        void* const library = ::dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL); // never closed
        if (library == nullptr) return;
        init = reinterpret_cast<decltype(init)>(::dlsym(library, "nettle_sha256_init"));
        update = reinterpret_cast<decltype(update)>(::dlsym(library, "nettle_sha256_update"));
        digest = reinterpret_cast<decltype(digest)>(::dlsym(library, "nettle_sha256_digest"));
    }
    [[nodiscard]] bool areWhole() const { return init != nullptr && update != nullptr && digest != nullptr; }
};

std::optional<Sha256> Sha256::load() {
    static const Functions functions;
    if (!functions.areWhole()) return std::nullopt;
    return Sha256(functions);
}

std::string Sha256::hexOf(std::span<const std::byte> bytes) const {
    sha256_ctx context;
    functions_->init(&context);
    functions_->update(&context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    functions_->digest(&context, digest.size(), digest.data());
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string hex;
    hex.reserve(digest.size() * 2);
    for (const std::uint8_t byte : digest) {
        hex.push_back(kDigits[byte >> 4U]);
        hex.push_back(kDigits[byte & 0xFU]);
    }
    return hex;
}

std::string Sha256::hexOf(std::string_view bytes) const {
    return hexOf(std::as_bytes(std::span(bytes)));
}

} // namespace quillow::cli
