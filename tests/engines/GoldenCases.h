// Golden cases: every NAME.in of tests/data/<kind> must give NAME.txt, with the options that NAME.options names (one
// "option value" a line, as the command line spells them). With QUILLOW_APPROVE=1 in the environment the texts that come
// are written over NAME.txt instead.
#pragma once

#include "engines/Extract.h"
#include "tests/engines/DataFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace quillow::test {

/// The names of a kind's cases, in order.
inline std::vector<std::string> goldenNames(const std::string& kind) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dataFile(kind)))
        if (entry.path().extension() == ".in") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

inline Options goldenOptions(const std::string& kind, const std::string& name) {
    Options options;
    const std::map<std::string, void (*)(Options&)> setters = {
        {"page-marks ff", [](Options& o) { o.pageMarks = PageMarks::formFeed; }},
        {"cells line", [](Options& o) { o.cells = CellSeparator::line; }},
        {"list-markers off", [](Options& o) { o.listMarkers = ListMarkers::off; }},
        {"links on", [](Options& o) { o.links = LinkTargets::afterText; }},
        {"hidden-text on", [](Options& o) { o.hiddenText = HiddenText::on; }},
        {"headers-footers on", [](Options& o) { o.headersFooters = HeadersFooters::on; }},
        {"reflow on", [](Options& o) { o.reflow = Reflow::joinLines; }},
    };
    std::istringstream lines(fileContent(dataFile(kind + "/" + name + ".options")));
    for (std::string line; std::getline(lines, line);) {
        const auto setter = setters.find(line);
        if (setter == setters.end()) {
            ADD_FAILURE() << name << ".options: unknown option \"" << line << '"';
        } else {
            setter->second(options);
        }
    }
    return options;
}

/// Reads the case with `read` (bytes and options to an Extraction) and compares, or approves.
template <typename Reader>
void expectGolden(const std::string& kind, const std::string& name, Reader read) {
    const std::string document = fileContent(dataFile(kind + "/" + name + ".in"));
    const Extraction extraction = read(asBytes(document), goldenOptions(kind, name));
    ASSERT_TRUE(extraction.text.has_value()) << reasonName(extraction.reason) << ": " << extraction.detail;
    const std::filesystem::path expected = dataFile(kind + "/" + name + ".txt");
    if (const char* approve = std::getenv("QUILLOW_APPROVE"); approve != nullptr && std::string_view(approve) == "1") {
        std::ofstream(expected, std::ios::binary) << *extraction.text;
        return;
    }
    ASSERT_TRUE(std::filesystem::exists(expected)) << expected << " is missing";
    EXPECT_EQ(*extraction.text, fileContent(expected));
}

} // namespace quillow::test
