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
    Planner(const Arguments& arguments, const Destination& destination, const Surroundings& surroundings,
            EarlierResults earlier)
        : arguments_(arguments)
        , destination_(destination)
        , surroundings_(surroundings)
        , earlier_(std::move(earlier)) {
        if (surroundings_.results) inputs_.insert(*surroundings_.results);
    }

    Plan plan(std::vector<NamedInput> inputs) && {
        for (NamedInput& input : inputs)
            add(std::move(input));
        if (destination_.kind == DestinationKind::file) nameTheOne();
        if (destination_.kind == DestinationKind::folder) nameAll();
        leaveOut();
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
        if (destination_.kind != DestinationKind::folder || document.failure) return keep(std::move(document));

        NameWish wish = wishOf(document);
        const auto identity = hasName ? surroundings_.identityOf(document.path) : std::nullopt;
        if (identity && !namedOnce_.emplace(*identity, joined(wish.folder, wish.base)).second) {
            ++namedAgain_;
            return;
        }
        if (identity) inputs_.insert(*identity);
        wishes_.push_back(std::move(wish));
        named_.push_back(plan_.documents.size());
        keep(std::move(document));
    }

    void keep(PlannedDocument document) {
        auto finished = earlier_.take(document.path);
        if (finished && finished->output) finishedTexts_.insert(*finished->output);
        reasons_.push_back(finished ? std::optional(finished->status) : std::nullopt);
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
            if (arguments_.ifExists == IfExists::rename) avoidExisting(document, {});
            const auto identity = fileAt(*document.textName);
            if (identity && identity == surroundings_.identityOf(document.path))
                document.failure = InputFailure{Reason::unwritable, "its text would replace it"};
            else if (identity && identity == surroundings_.results)
                document.failure = InputFailure{Reason::unwritable, "its text would replace the results"};
        }
    }

    void nameAll() {
        std::vector<std::string> names = nameTexts(wishes_, [this](const std::string& name) { return isInput(name); });
        tellOfLongerNames(names);
        const bool isRenamed = arguments_.ifExists == IfExists::rename;
        std::unordered_set<std::string> taken;
        if (isRenamed) taken.insert(names.begin(), names.end());
        for (std::size_t i = 0; i < names.size(); ++i) {
            PlannedDocument& document = plan_.documents[named_[i]];
            document.textName = std::move(names[i]);
            if (isRenamed && !reasons_[named_[i]]) taken.insert(avoidExisting(document, taken));
        }
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

    /// Gives the text another name if a file has its name. Returns the name.
    std::string avoidExisting(PlannedDocument& document, const std::unordered_set<std::string>& taken) {
        const auto exists = [&](const std::string& name) {
            if (!fileAt(name)) return false;
            if (arguments_.isResumed() && !finishedTexts_.contains(joined(destination_.folder, name)))
                document.existingNames.push_back(name);
            return true;
        };
        if (exists(*document.textName))
            document.textName = numbered(*document.textName,
                                         [&](const std::string& name) { return taken.contains(name) || exists(name); });
        return *document.textName;
    }

    /// Leaves out the documents of other shards, and those that an earlier run has finished.
    void leaveOut() {
        std::vector<PlannedDocument> remaining;
        for (std::size_t i = 0; i < plan_.documents.size(); ++i) {
            PlannedDocument& document = plan_.documents[i];
            if (!arguments_.shard.has(document.path)) continue;
            if (!reasons_[i]) {
                remaining.push_back(std::move(document));
                continue;
            }
            const bool isForeign = *reasons_[i] == Reason::wrongType && !document.kind;
            plan_.finished.push_back({*reasons_[i], isForeign ? Acceptance::notAccepted : Acceptance::accepted});
        }
        plan_.documents = std::move(remaining);
    }

    const Arguments& arguments_;
    const Destination& destination_;
    const Surroundings& surroundings_;
    EarlierResults earlier_;
    Plan plan_;
    std::vector<std::optional<Reason>> reasons_;    ///< for each document, what an earlier run found
    std::unordered_set<std::string> finishedTexts_; ///< the paths of the texts of earlier runs
    std::vector<NameWish> wishes_;                  ///< filled only if the destination is a folder
    std::vector<std::size_t> named_;                ///< for each wish, the index of its document in the plan
    std::set<FileIdentity> inputs_;
    std::set<std::pair<FileIdentity, std::string>> namedOnce_; ///< a file and the name that its text would get
    std::size_t namedAgain_ = 0;
    std::size_t outsideOfMirror_ = 0;
};

} // namespace

Plan makePlan(const Arguments& arguments, const Destination& destination, std::vector<NamedInput> inputs,
              const Surroundings& surroundings, EarlierResults earlier) {
    return Planner(arguments, destination, surroundings, std::move(earlier)).plan(std::move(inputs));
}

} // namespace quillow::cli
