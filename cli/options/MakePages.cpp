// Writes the man page and the completions of shells below a folder, where an installation has them below share/.
#include "cli/options/Pages.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

bool write(const std::filesystem::path& path, const std::string& content) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out << content;
    return static_cast<bool>(out.flush());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const std::filesystem::path share = argv[1];
    const bool isWritten =
        write(share / "man/man1/quillow-convert.1", quillow::cli::manPage()) &&
        write(share / "bash-completion/completions/quillow-convert", quillow::cli::bashCompletion()) &&
        write(share / "zsh/site-functions/_quillow-convert", quillow::cli::zshCompletion()) &&
        write(share / "fish/vendor_completions.d/quillow-convert.fish", quillow::cli::fishCompletion());
    if (!isWritten) std::perror("make_pages");
    return isWritten ? 0 : 1;
}
