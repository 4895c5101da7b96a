#include "cli/Passwords.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillow::cli {
namespace {

std::vector<std::string> hidden(std::vector<std::string> words) {
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    hidePasswords(pointers);
    return words;
}

using Words = std::vector<std::string>;

TEST(Passwords, valueIsOverwrittenInBothForms) {
    EXPECT_EQ(hidden({"-v", "--password", "abc", "a.pdf"}), (Words{"-v", "--password", "***", "a.pdf"}));
    EXPECT_EQ(hidden({"--password=abcd", "a.pdf"}), (Words{"--password=****", "a.pdf"}));
    EXPECT_EQ(hidden({"--password", "--password=a", "b"}), (Words{"--password", "************", "b"}));
}

TEST(Passwords, everythingElseStays) {
    for (const Words& words : {Words{}, Words{"--password"}, Words{"--password="}, Words{"--password", ""},
                               Words{"--password-file", "abc", "--password-prompt", "a.pdf"}})
        EXPECT_EQ(hidden(words), words);
}

} // namespace
} // namespace quillow::cli
