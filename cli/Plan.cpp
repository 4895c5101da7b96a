#include "cli/Plan.h"

#include "cli/Paths.h"
#include "cli/TextNames.h"

#include <set>
#include <string_view>
#include <unordered_set>

namespace quillow::cli {

namespace {

constexpr std::string_view kStandardInputName = "stdin";
/// The most names of texts in a notice, so that it stays one short line.
constexpr std::size_t kTextsInANotice = 3;

/// The document's file name with its extension. A TXT.rtf in a bundle gets the name of the bundle, because every
/// bundle has a TXT.rtf.
std::string fullName(const std::string& path) {
    const std::string_view name = lastPart(path);
    const std::string_view folder = folderPart(path);
    const bool isTextOfBundle = lowered(name) == "txt.rtf" && extensionOf(std::string(folder)) == "rtfd";
    return std::string(isTextOfBundle ? lastPart(folder) : name);
}

std::string counted(std::size_t count, const std::string& one, const std::string& several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

class Planner {
public:
    Planner(const Arguments& arguments, const Destination& destination, const Surroundings& surroundings)
        : arguments_(arguments)
        , destination_(destination)
        , surroundings_(surroundings) {}

    Plan plan(std::vector<NamedInput> inputs) && {
        for (NamedInput& input : inputs)
            add(std::move(input));
        if (destination_.kind == DestinationKind::file) nameTheOne();
        if (destination_.kind == DestinationKind::folder) nameAll();
        return std::move(plan_);
    }

private:
    void add(NamedInput input) {
        PlannedDocument document;
        const bool hasName = input.path != kStandardStream;
        document.kind = arguments_.type;
        if (!document.kind && hasName) document.kind = documentKindForExtension(extensionOf(input.path));
        document.path = std::move(input.path);
        document.failure = std::move(input.failure);
        if (destination_.kind != DestinationKind::folder || document.failure)
            return plan_.documents.push_back(std::move(document));

        NameWish wish = wishOf(document);
        const auto identity = hasName ? surroundings_.identityOf(document.path) : std::nullopt;
        if (identity && !namedOnce_.emplace(*identity, joined(wish.folder, wish.base)).second) {
            ++namedAgain_;
            return;
        }
        if (identity) inputs_.insert(*identity);
        wishes_.push_back(std::move(wish));
        named_.push_back(plan_.documents.size());
        plan_.documents.push_back(std::move(document));
    }

    NameWish wishOf(const PlannedDocument& document) {
        if (document.path == kStandardStream)
            return {{}, std::string(kStandardInputName), std::string(kStandardInputName)};
        NameWish wish{{}, baseName(document.path), fullName(document.path)};
        if (!arguments_.mirrorRoot) return wish;
        if (auto folder = folderBelow(*arguments_.mirrorRoot, document.path, surroundings_.currentFolder))
            wish.folder = std::move(*folder);
        else
            ++outsideOfMirror_;
        return wish;
    }

    [[nodiscard]] std::optional<FileIdentity> fileAt(const std::string& textName) const {
        return surroundings_.identityOf(joined(destination_.folder, textName));
    }

    [[nodiscard]] bool isInput(const std::string& textName) const {
        const auto identity = fileAt(textName);
        return identity && inputs_.contains(*identity);
    }

    void nameTheOne() {
        for (PlannedDocument& document : plan_.documents) {
            document.textName = destination_.file;
            if (arguments_.ifExists == IfExists::rename && fileAt(destination_.file))
                document.textName =
                    numbered(destination_.file, [this](const std::string& name) { return fileAt(name).has_value(); });
            const auto identity = fileAt(*document.textName);
            if (identity && identity == surroundings_.identityOf(document.path))
                document.failure = InputFailure{Reason::unwritable, "its text would replace it"};
        }
    }

    void nameAll() {
        std::vector<std::string> names = nameTexts(wishes_, [this](const std::string& name) { return isInput(name); });
        tellOfLongerNames(names);
        if (arguments_.ifExists == IfExists::rename) avoidExisting(names);
        for (std::size_t i = 0; i < names.size(); ++i)
            plan_.documents[named_[i]].textName = std::move(names[i]);
        if (namedAgain_ > 0)
            plan_.notices.push_back(counted(namedAgain_, "input names a document", "inputs name documents") +
                                    " a second time: converted once");
        if (outsideOfMirror_ > 0)
            plan_.notices.push_back(counted(outsideOfMirror_, "document is", "documents are") + " not below " +
                                    *arguments_.mirrorRoot + ": no folders are made for them in " +
                                    destination_.folder);
    }

    void tellOfLongerNames(const std::vector<std::string>& names) {
        std::size_t count = 0;
        std::string shown;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (names[i] == joined(wishes_[i].folder, wishes_[i].base) + ".txt") continue;
            if (++count <= kTextsInANotice) shown += (count == 1 ? "" : ", ") + names[i];
        }
        if (count == 0) return;
        if (count > kTextsInANotice) shown += ", ...";
        plan_.notices.push_back(counted(count, "text gets", "texts get") +
                                " another name, so that none replaces another file: " + shown);
    }

    void avoidExisting(std::vector<std::string>& names) {
        std::unordered_set<std::string> taken(names.begin(), names.end());
        for (std::string& name : names) {
            if (!fileAt(name)) continue;
            name = numbered(name, [&](const std::string& other) { return taken.contains(other) || fileAt(other); });
            taken.insert(name);
        }
    }

    const Arguments& arguments_;
    const Destination& destination_;
    const Surroundings& surroundings_;
    Plan plan_;
    std::vector<NameWish> wishes_;   ///< filled only if the destination is a folder
    std::vector<std::size_t> named_; ///< for each wish, the index of its document in the plan
    std::set<FileIdentity> inputs_;
    std::set<std::pair<FileIdentity, std::string>> namedOnce_; ///< a file and the name that its text would get
    std::size_t namedAgain_ = 0;
    std::size_t outsideOfMirror_ = 0;
};

} // namespace

Plan makePlan(const Arguments& arguments, const Destination& destination, std::vector<NamedInput> inputs,
              const Surroundings& surroundings) {
    return Planner(arguments, destination, surroundings).plan(std::move(inputs));
}

} // namespace quillow::cli
