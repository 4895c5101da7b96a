#include "cli/Plan.h"

#include <map>
#include <string_view>
#include <unordered_map>

namespace quillow::cli {

namespace {

constexpr std::string_view kStandardInputBase = "stdin";

std::string withoutTrailingSlashes(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

std::string_view lastPart(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

/// Where the extension's dot stands; a name that begins with its only dot has no extension.
std::size_t dotOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == 0 || dot + 1 == name.size() ? std::string_view::npos : dot;
}

PlannedDocument planned(const std::string& input, const Arguments& arguments) {
    PlannedDocument document;
    document.path = withoutTrailingSlashes(input);
    const bool isStandardInput = document.path == kStandardInput;
    const std::string extension = isStandardInput ? std::string() : extensionOf(document.path);
    document.kind = arguments.type ? arguments.type : documentKindForExtension(extension);
    if (arguments.outputFolder)
        document.fileName = (isStandardInput ? std::string(kStandardInputBase) : baseName(document.path)) + ".txt";
    return document;
}

/// Two texts of one name.
void findMeetings(Plan& plan) {
    std::unordered_map<std::string_view, const PlannedDocument*> taken;
    for (const PlannedDocument& document : plan.documents) {
        const auto [first, isNew] = taken.try_emplace(*document.fileName, &document);
        if (!isNew)
            plan.clashes.push_back(
                {document.path, "its text would replace that of " + first->second->path + " in " + *document.fileName});
    }
}

/// A text that would replace a document that is to be read.
void findOverwrittenInputs(Plan& plan, const std::string& outputFolder, const IdentityOf& identityOf) {
    std::map<FileIdentity, const PlannedDocument*> inputs;
    for (const PlannedDocument& document : plan.documents)
        if (const auto identity = document.path == kStandardInput ? std::nullopt : identityOf(document.path))
            inputs.emplace(*identity, &document);
    for (const PlannedDocument& document : plan.documents) {
        const auto identity = identityOf(outputFolder + "/" + *document.fileName);
        const auto met = identity ? inputs.find(*identity) : inputs.end();
        if (met != inputs.end())
            plan.clashes.push_back({document.path, "its text would replace the input " + met->second->path});
    }
}

} // namespace

std::string baseName(const std::string& path) {
    const std::string_view name = lastPart(path);
    return std::string(name.substr(0, dotOf(name)));
}

std::string extensionOf(const std::string& path) {
    const std::string_view name = lastPart(path);
    const std::size_t dot = dotOf(name);
    if (dot == std::string_view::npos) return {};
    std::string extension(name.substr(dot + 1));
    for (char& c : extension)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return extension;
}

Plan makePlan(const Arguments& arguments, const IdentityOf& identityOf) {
    Plan plan;
    plan.documents.reserve(arguments.inputs.size());
    for (const std::string& input : arguments.inputs)
        plan.documents.push_back(planned(input, arguments));
    if (arguments.outputFolder) {
        findMeetings(plan);
        findOverwrittenInputs(plan, *arguments.outputFolder, identityOf);
    }
    return plan;
}

} // namespace quillow::cli
