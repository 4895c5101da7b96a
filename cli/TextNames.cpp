#include "cli/TextNames.h"

#include "cli/Paths.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace quillow::cli {

namespace {

constexpr std::string_view kExtension = ".txt";
/// The longest name that Linux's file systems take.
constexpr std::size_t kLongestName = 255;

/// The name with the suffix. If they are too long, the name loses its end, in UTF-8 whole characters.
std::string withSuffix(std::string_view name, std::string_view suffix) {
    const std::size_t most = kLongestName - suffix.size();
    if (name.size() > most) {
        constexpr std::size_t kMostContinuations = 3;
        std::size_t length = most;
        while (length > most - kMostContinuations && (static_cast<unsigned char>(name[length]) & 0xC0U) == 0x80U)
            --length;
        name = name.substr(0, length);
    }
    return std::string(name) + std::string(suffix);
}

class Namer {
public:
    Namer(std::span<const NameWish> wishes, const IsBarred& isBarred)
        : wishes_(wishes)
        , isBarred_(isBarred)
        , isFull_(wishes.size()) {
        for (const NameWish& wish : wishes)
            addFolders(wish.folder);
    }

    std::vector<std::string> name() && {
        for (std::size_t i = 0; i < wishes_.size(); ++i)
            claimByBase(i);
        while (!lengthened_.empty()) {
            const std::size_t i = lengthened_.back();
            lengthened_.pop_back();
            claimByFullName(i);
        }
        std::vector<std::string> names;
        names.reserve(wishes_.size());
        for (std::size_t i = 0; i < wishes_.size(); ++i)
            names.push_back(isFull_[i] ? takeFullName(i) : pathOf(i, wishes_[i].base));
        return names;
    }

private:
    /// The texts that want one path.
    struct Claims {
        std::optional<std::size_t> byBase;
        bool isContested = false; ///< no text may have the path by its base name
        bool isByFullName = false;
        bool isTaken = false; ///< a text with its full name has the path
    };

    void addFolders(std::string_view folder) {
        for (; !folder.empty(); folder = folderPart(folder))
            if (!folders_.emplace(folder).second) return;
    }

    [[nodiscard]] std::string pathOf(std::size_t i, const std::string& name) const {
        return joined(wishes_[i].folder, withSuffix(name, kExtension));
    }

    [[nodiscard]] bool isUnusable(const std::string& path) const { return folders_.contains(path) || isBarred_(path); }

    void lengthen(std::size_t i) {
        isFull_[i] = true;
        lengthened_.push_back(i);
    }

    void contest(Claims& claims) {
        claims.isContested = true;
        if (claims.byBase) lengthen(*std::exchange(claims.byBase, std::nullopt));
    }

    void claimByBase(std::size_t i) {
        const std::string path = pathOf(i, wishes_[i].base);
        const auto [entry, isNew] = claims_.try_emplace(path);
        Claims& claims = entry->second;
        if (isNew && isUnusable(path)) claims.isContested = true;
        if (!isNew) contest(claims);
        if (claims.isContested)
            lengthen(i);
        else
            claims.byBase = i;
    }

    void claimByFullName(std::size_t i) {
        Claims& claims = claims_[pathOf(i, wishes_[i].full)];
        contest(claims);
        claims.isByFullName = true;
    }

    std::string takeFullName(std::size_t i) {
        std::string path = pathOf(i, wishes_[i].full);
        if (!std::exchange(claims_[path].isTaken, true) && !isUnusable(path)) return path;
        std::size_t& number = numbers_.try_emplace(path, 1).first->second;
        do {
            const std::string suffix = "-" + std::to_string(++number) + std::string(kExtension);
            path = joined(wishes_[i].folder, withSuffix(wishes_[i].full, suffix));
        } while (isWanted(path) || isUnusable(path) || !numbered_.insert(path).second);
        return path;
    }

    /// True if some text wants the path without a number.
    [[nodiscard]] bool isWanted(const std::string& path) const {
        const auto found = claims_.find(path);
        return found != claims_.end() && (found->second.byBase || found->second.isByFullName);
    }

    std::span<const NameWish> wishes_;
    const IsBarred& isBarred_;
    std::vector<bool> isFull_;
    std::vector<std::size_t> lengthened_;
    std::unordered_map<std::string, Claims> claims_;
    std::unordered_map<std::string, std::size_t> numbers_;
    std::unordered_set<std::string> numbered_; ///< different names may become the same when they are shortened
    std::unordered_set<std::string> folders_;
};

} // namespace

std::vector<std::string> nameTexts(std::span<const NameWish> wishes, const IsBarred& isBarred) {
    return Namer(wishes, isBarred).name();
}

std::string numbered(const std::string& path, const IsBarred& isTaken) {
    const std::string_view name = lastPart(path);
    const std::size_t dot = std::min(name.rfind('.'), name.size());
    for (std::size_t number = 2;; ++number) {
        const std::string suffix = "-" + std::to_string(number) + std::string(name.substr(dot));
        std::string candidate = joined(folderPart(path), withSuffix(name.substr(0, dot), suffix));
        if (!isTaken(candidate)) return candidate;
    }
}

} // namespace quillow::cli
