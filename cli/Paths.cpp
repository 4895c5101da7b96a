#include "cli/Paths.h"

#include <filesystem>

namespace quillow::cli {

namespace {

/// The offset of the dot before the extension; npos if there is no extension, as in ".rtf" and "name.".
std::size_t dotOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == 0 || dot + 1 == name.size() ? std::string_view::npos : dot;
}

/// The absolute path without ".", ".." and doubled slashes.
std::string plainPath(const std::string& path, const std::string& currentFolder) {
    const std::filesystem::path whole = std::filesystem::path(currentFolder) / path;
    return withoutTrailingSlashes(whole.lexically_normal().string());
}

} // namespace

std::string withoutTrailingSlashes(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

std::string_view lastPart(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view folderPart(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

std::string joined(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.empty() && path.back() != '/') path += '/';
    path += name;
    return path;
}

std::string baseName(const std::string& path) {
    const std::string_view name = lastPart(path);
    return std::string(name.substr(0, dotOf(name)));
}

std::string extensionOf(const std::string& path) {
    const std::string_view name = lastPart(path);
    const std::size_t dot = dotOf(name);
    return dot == std::string_view::npos ? std::string() : lowered(name.substr(dot + 1));
}

std::string lowered(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

std::optional<std::string> folderBelow(const std::string& root, const std::string& path,
                                       const std::string& currentFolder) {
    const std::string folder = std::string(folderPart(plainPath(path, currentFolder)));
    std::string top = plainPath(root, currentFolder);
    if (top == "/") top.clear();
    if (folder == top) return std::string();
    if (!folder.starts_with(top + "/")) return std::nullopt;
    return folder.substr(top.size() + 1);
}

} // namespace quillow::cli
