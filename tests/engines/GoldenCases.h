// Golden cases: every NAME.in of tests/data/<kind> must give the text NAME.txt. NAME.options has the options, one
// "option value" per line as on the command line. With QUILLOW_APPROVE=1 in the environment, the new text replaces
// NAME.txt instead.
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

/// The sorted names of the cases of a kind.
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

/// Reads the case with `read`, which takes bytes and options and returns an Extraction. Compares the text with
/// NAME.txt or approves it.
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
