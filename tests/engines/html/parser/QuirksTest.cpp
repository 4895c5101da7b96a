#include "engines/html/parser/Quirks.h"

#include <gtest/gtest.h>

namespace quillow::html {
namespace {

/// A doctype "html" with these identifiers. A null pointer is a missing one.
bool isQuirky(const char* publicId, const char* systemId) {
    Token doctype;
    doctype.type = TokenType::doctype;
    doctype.name = "html";
    doctype.hasPublicId = publicId != nullptr;
    doctype.hasSystemId = systemId != nullptr;
    if (publicId != nullptr) doctype.publicId = publicId;
    if (systemId != nullptr) doctype.systemId = systemId;
    return isQuirksDoctype(doctype);
}

TEST(Quirks, oldPublicIdentifiersSwitchThemOnByPrefixOrWhole) {
    EXPECT_FALSE(isQuirky(nullptr, nullptr));
    EXPECT_TRUE(isQuirky("-//W3C//DTD HTML 3.2 Final//EN", nullptr));
    EXPECT_TRUE(isQuirky("HTML", nullptr));
    EXPECT_FALSE(isQuirky("HTML 5", nullptr));
    EXPECT_FALSE(isQuirky("-//W3C//DTD XHTML 1.0 Strict//EN", nullptr));
}

TEST(Quirks, transitionalNeedsASystemIdentifierToBeWithoutThem) {
    EXPECT_TRUE(isQuirky("-//W3C//DTD HTML 4.01 Transitional//EN", nullptr));
    EXPECT_FALSE(isQuirky("-//W3C//DTD HTML 4.01 Transitional//EN", "http://www.w3.org/TR/html4/loose.dtd"));
}

TEST(Quirks, oneSystemIdentifierSwitchesThemOn) {
    EXPECT_TRUE(isQuirky(nullptr, "http://www.ibm.com/data/dtd/v11/ibmxhtml1-transitional.dtd"));
}

TEST(Quirks, otherNamesAndBrokenDoctypesSwitchThemOn) {
    Token doctype;
    doctype.name = "svg";
    EXPECT_TRUE(isQuirksDoctype(doctype));
    doctype.name = "html";
    EXPECT_FALSE(isQuirksDoctype(doctype));
    doctype.forceQuirks = true;
    EXPECT_TRUE(isQuirksDoctype(doctype));
}

} // namespace
} // namespace quillow::html
