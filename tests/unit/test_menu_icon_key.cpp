#include "actions/menu_icon_key.h"

#include <gtest/gtest.h>

#include <string>

static std::string key_of(const std::string &command) {
    char key[PATH_SIZE] = "untouched";
    menu_icon_key(command.c_str(), key);
    return key;
}

TEST(MenuIconKey, actions_with_the_same_program_share_a_key) {
    EXPECT_EQ("C:\\Tools\\my tool.exe", key_of("C:\\Tools\\my tool.exe"));
    EXPECT_EQ("C:\\Tools\\my tool.exe", key_of("C:\\Tools\\my tool.exe -x"));
    EXPECT_EQ("C:\\Tools\\my tool.exe", key_of("\"C:\\Tools\\my tool.exe\" -x"));
    EXPECT_EQ("notepad", key_of("notepad"));
    EXPECT_EQ("notepad", key_of("notepad readme.txt"));
}

TEST(MenuIconKey, all_web_addresses_share_one) {
    EXPECT_EQ("_HTTP_", key_of("http://a"));
    EXPECT_EQ("_HTTP_", key_of("HTTPS://b/c d"));
    EXPECT_EQ("Https://b", key_of("Https://b")); // not taken for an address when it is run either
}

TEST(MenuIconKey, an_empty_command_has_none) {
    EXPECT_EQ("", key_of(""));
    EXPECT_EQ("", key_of("\""));
    EXPECT_EQ("", key_of("\"\" x"));
}

TEST(MenuIconKey, an_unclosed_quote_reaches_to_the_end) {
    EXPECT_EQ("C:\\a b.exe", key_of("\"C:\\a b.exe"));
    EXPECT_EQ("C:\\a b.exe", key_of("\"C:\\a b.exe -x"));
}

TEST(MenuIconKey, a_document_is_its_own_key) {
    EXPECT_EQ("C:\\my documents\\a.txt", key_of("C:\\my documents\\a.txt"));
}

TEST(MenuIconKey, a_long_command_is_cut_at_260_characters) {
    const std::string path = "C:\\" + std::string(300, 'a');
    EXPECT_EQ(path.substr(0, 260), key_of(path));
    EXPECT_EQ(std::string(260, 'a'), key_of("\"" + std::string(400, 'a')));
}
