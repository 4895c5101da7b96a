// Optional content in the default configuration (ISO 32000-2, 8.11). Group 5 is on, group 6 is off.
#include "tests/engines/pdf/content/ContentDump.h"

#include <gtest/gtest.h>

namespace quillow::pdf::test {
namespace {

/// The content with the property /G, and objects 5 and 6 as groups, under a default configuration.
std::string dumpUnder(std::string_view configuration, std::string_view group, std::string_view content) {
    PdfBuilder pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R/OCProperties<</OCGs[5 0 R 6 0 R]/D<<" + std::string(configuration) +
                      ">>>>>>")
        .object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Contents 4 0 R/Resources " +
                       resourcesWith("/Properties<</G " + std::string(group) + ">>/XObject<</X 7 0 R/Y 8 0 R>>") + ">>")
        .stream(4, "", content)
        .object(5, "<</Type/OCG/Name(on)>>")
        .object(6, "<</Type/OCG/Name(off)>>")
        .stream(7, "/Type/XObject/Subtype/Form/BBox[0 0 600 700]/OC 6 0 R", "(x)Tj")
        .stream(8, "/Type/XObject/Subtype/Form/BBox[0 0 600 700]/OC 5 0 R", "9 60 Td(y)Tj");
    const std::string dump = dumpOf(readPage(pdf.table().bytes()).page);
    return dump.substr(dump.find('\n') + 1);
}

constexpr std::string_view kContent = "/F 10 Tf 9 9 Td/OC/G BDC(a)Tj EMC(b)Tj";
constexpr std::string_view kShown = "9,9 f0 10 \"ab\"\n";
constexpr std::string_view kHidden = "15,9 f0 10 \"b\"\n";

TEST(PdfOptionalContent, groupsAreOnOrOff) {
    EXPECT_EQ(dumpUnder("/OFF[6 0 R]", "5 0 R", kContent), kShown);
    EXPECT_EQ(dumpUnder("/OFF[6 0 R]", "6 0 R", kContent), kHidden);
    EXPECT_EQ(dumpUnder("/BaseState/OFF/ON[5 0 R]", "5 0 R", kContent), kShown);
    EXPECT_EQ(dumpUnder("/BaseState/OFF/ON[5 0 R]", "6 0 R", kContent), kHidden);
    EXPECT_EQ(dumpUnder("/BaseState/ON/OFF[6 0 R]", "6 0 R", kContent), kHidden);
    EXPECT_EQ(dumpUnder("", "6 0 R", kContent), kShown);
    EXPECT_EQ(dumpUnder("/OFF[6 0 R]", "99 0 R", kContent), kShown);
}

TEST(PdfOptionalContent, membershipsHavePolicies) {
    struct Case {
        const char* membership;
        std::string_view dump;
    };
    for (const Case& c : {
             Case{"/OCGs 6 0 R", kHidden},
             Case{"/OCGs 5 0 R", kShown},
             Case{"/OCGs[5 0 R 6 0 R]", kShown},
             Case{"/OCGs[6 0 R]", kHidden},
             Case{"/OCGs[5 0 R 6 0 R]/P/AllOn", kHidden},
             Case{"/OCGs[5 0 R]/P/AllOn", kShown},
             Case{"/OCGs[5 0 R 6 0 R]/P/AnyOff", kShown},
             Case{"/OCGs[5 0 R]/P/AnyOff", kHidden},
             Case{"/OCGs[6 0 R]/P/AllOff", kShown},
             Case{"/OCGs[5 0 R 6 0 R]/P/AllOff", kHidden},
             Case{"/OCGs[]", kShown},
             Case{"/OCGs[null]", kShown},
             Case{"", kShown},
             Case{"/VE[/Not 5 0 R]", kHidden},
             Case{"/VE[/Not 6 0 R]", kShown},
             Case{"/VE[/And 5 0 R 6 0 R]", kHidden},
             Case{"/VE[/Or 5 0 R 6 0 R]", kShown},
             Case{"/VE[/And 5 0 R[/Not 6 0 R]]", kShown},
             Case{"/VE[/Not[/Or 6 0 R 5 0 R]]/OCGs 5 0 R", kHidden},
         })
        EXPECT_EQ(dumpUnder("/OFF[6 0 R]", "<</Type/OCMD" + std::string(c.membership) + ">>", kContent), c.dump)
            << c.membership;
}

TEST(PdfOptionalContent, expressionsEnd) {
    const std::string deep = std::string("<</Type/OCMD/VE") + [] {
        std::string nested;
        for (int i = 0; i < 40; ++i)
            nested += "[/And ";
        nested += "6 0 R";
        return nested + std::string(40, ']') + ">>";
    }();
    EXPECT_EQ(dumpUnder("/OFF[6 0 R]", deep, kContent), kShown); // past the limit
    std::string wide = "<</Type/OCMD/VE[/And ";
    for (int i = 0; i < 20'000; ++i)
        wide += "5 0 R ";
    EXPECT_EQ(dumpUnder("/OFF[6 0 R]", wide + "6 0 R]>>", kContent), kShown);
}

TEST(PdfOptionalContent, hiddenContentTakesItsPlace) {
    EXPECT_EQ(dumpUnder("/OFF[6 0 R]", "6 0 R", "/F 10 Tf 9 9 Td/OC/G BDC(a)Tj/P BMC(b)Tj EMC EMC(c)Tj"),
              "21,9 f0 10 \"c\"\n");
}

TEST(PdfOptionalContent, hidesRulesAndForms) {
    EXPECT_EQ(dumpUnder("/OFF[6 0 R]", "6 0 R", "/OC/G BDC 10 10 100 20 re f EMC 10 50 100 20 re f"),
              "rectangle 10,50 110,70\n");
    EXPECT_EQ(dumpUnder("/OFF[6 0 R]", "6 0 R", "/F 10 Tf 9 9 Td/X Do/Y Do"), "9,60 f0 10 \"y\"\n");
    EXPECT_EQ(dumpUnder("/OFF[6 0 R]", "6 0 R", "/F 10 Tf/OC/G BDC/Y Do EMC"), "");
}

} // namespace
} // namespace quillow::pdf::test
