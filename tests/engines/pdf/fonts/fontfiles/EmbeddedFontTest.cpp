#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"

#include "tests/engines/pdf/fonts/fontfiles/FontBuilders.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::pdf {
namespace {

using namespace build;
using Kind = EmbeddedFont::Kind;

std::string bareCff() {
    Cff font;
    font.charStrings = emptyCharStrings(2);
    return cff(font);
}

struct KindCase {
    std::string_view name;
    std::string bytes;
    std::optional<Kind> kind;
    friend void PrintTo(const KindCase& kindCase, std::ostream* out) { *out << kindCase.name; }
};

class PdfEmbeddedFont : public testing::TestWithParam<KindCase> {};

TEST_P(PdfEmbeddedFont, isOpenedByWhatItContains) {
    const std::unique_ptr<EmbeddedFont> font = openEmbeddedFont(GetParam().bytes);
    ASSERT_EQ(font != nullptr, GetParam().kind.has_value()) << GetParam().name;
    if (font != nullptr) {
        EXPECT_EQ(font->kind(), *GetParam().kind) << GetParam().name;
    }
}

const Tables kTables = {{"cmap", cmap({})}};
INSTANTIATE_TEST_SUITE_P(
    Kinds, PdfEmbeddedFont,
    testing::Values(KindCase{"TrueType", trueType(kTables), Kind::trueType},
                    KindCase{"TrueType of another system", trueType(kTables, "true"), Kind::trueType},
                    KindCase{"OpenType", trueType({{"CFF ", bareCff()}}, "OTTO"), Kind::trueType},
                    KindCase{"collection", collection({kTables}), Kind::trueType},
                    KindCase{"damaged version", trueType(kTables, "xxxx"), Kind::trueType},
                    KindCase{"compact font", bareCff(), Kind::cff},
                    KindCase{"behind junk", "\r\n" + bareCff(), Kind::cff},
                    KindCase{"Type 1", type1("", {}), Kind::type1},
                    KindCase{"Type 1 in segments", segment(1, type1Clear("")), Kind::type1},
                    KindCase{"text", "Helvetica", std::nullopt}, KindCase{"nothing", "", std::nullopt},
                    KindCase{"zeros", std::string(1000, '\0'), std::nullopt}));

} // namespace
} // namespace quillow::pdf
