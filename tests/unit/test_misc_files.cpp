#include "actions/misc.h"

#include "platform/text.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <string>

#ifdef _WIN32
#include <windows.h>
#else
#include "tests/support/full_disk.h"
#endif

static std::string file_name_for(const std::string &title) {
    char name[PATH_SIZE];
    text_copy(name, title.c_str());
    convert_string_to_valid_page_file_name(name);
    return name;
}

static std::string title_for(const std::string &path) {
    char title[PAGE_TITLE_SIZE];
    generate_page_name_from_file_name(path.c_str(), title);
    return title;
}

TEST(CopyFiles, every_matching_file_is_copied_over_what_stands_there) {
    TestFolder source, target;
    source.write("a.orvl", "new");
    source.write("b.orvl", "b");
    source.write("c.xml", "c");
    folder_create(source.file("folder.orvl").c_str());
    target.write("a.orvl", "old");
    EXPECT_EQ(0, copy_files(source.path, target.path, "*.orvl"));
    EXPECT_EQ("new", target.read("a.orvl"));
    EXPECT_EQ("b", target.read("b.orvl"));
    EXPECT_FALSE(file_exists(target.file("c.xml").c_str()));
    EXPECT_FALSE(folder_exists(target.file("folder.orvl").c_str()));
}

TEST(CopyFiles, nothing_that_matches_is_1) {
    TestFolder source, target;
    source.write("a.txt", "");
    EXPECT_EQ(1, copy_files(source.path, target.path, "*.orvl"));
    EXPECT_EQ(1, copy_files(source.file("missing\\").c_str(), target.path, "*.orvl"));
}

TEST(CopyFiles, a_file_that_cannot_be_copied_does_not_stop_the_others) {
    TestFolder source, target;
    for (const char *name : {"a.orvl", "b.orvl", "c.orvl"})
        source.write(name, name);
    folder_create(target.file("b.orvl").c_str());
    EXPECT_EQ(0, copy_files(source.path, target.path, "*.orvl"));
    EXPECT_EQ("a.orvl", target.read("a.orvl"));
    EXPECT_EQ("c.orvl", target.read("c.orvl"));
}

#ifndef _WIN32
TEST(CopyFiles, a_page_that_finds_no_room_leaves_the_one_that_stood_there) {
    TestFolder source, target;
    source.write("a.orvl", std::string(5000, 'x'));
    source.write("b.orvl", "b");
    target.write("a.orvl", "old");
    const FullDisk disk(1000);
    EXPECT_EQ(0, copy_files(source.path, target.path, "*.orvl"));
    EXPECT_EQ("old", target.read("a.orvl"));
    EXPECT_EQ("b", target.read("b.orvl"));
}
#endif

TEST(ChangeFileExtensions, every_matching_file_gets_the_new_extension) {
    TestFolder folder;
    folder.write("home.xml", "home");
    folder.write("UPPER.XML", "upper");
    folder.write("keep.txt", "");
    folder.write("old.xmlbackup", "");
    folder_create(folder.file("folder.xml").c_str());
    EXPECT_EQ(0, change_file_extensions(folder.path, ".xml", ".orvl"));
    EXPECT_EQ("home", folder.read("home.orvl"));
    EXPECT_EQ("upper", folder.read("UPPER.orvl"));
    EXPECT_FALSE(file_exists(folder.file("home.xml").c_str()));
    EXPECT_TRUE(file_exists(folder.file("keep.txt").c_str()));
    EXPECT_TRUE(file_exists(folder.file("old.xmlbackup").c_str()));
    EXPECT_TRUE(folder_exists(folder.file("folder.xml").c_str()));
}

TEST(ChangeFileExtensions, a_name_is_cut_at_the_first_occurrence_of_the_extension) {
    TestFolder folder;
    folder.write("a.xml.b.xml", "x");
    EXPECT_EQ(0, change_file_extensions(folder.path, ".xml", ".orvl"));
    EXPECT_EQ("x", folder.read("a.orvl"));
}

TEST(ChangeFileExtensions, a_file_whose_new_name_is_taken_keeps_its_own) {
    TestFolder folder;
    folder.write("home.xml", "old");
    folder.write("home.orvl", "new");
    folder.write("other.xml", "other");
    EXPECT_EQ(0, change_file_extensions(folder.path, ".xml", ".orvl"));
    EXPECT_EQ("new", folder.read("home.orvl"));
    EXPECT_EQ("old", folder.read("home.xml"));
    EXPECT_EQ("other", folder.read("other.orvl"));
}

TEST(ChangeFileExtensions, nothing_that_matches_is_1) {
    TestFolder folder;
    folder.write("home.orvl", "");
    EXPECT_EQ(1, change_file_extensions(folder.path, ".xml", ".orvl"));
    EXPECT_EQ(1, change_file_extensions(folder.path, "", ".orvl"));
    EXPECT_TRUE(file_exists(folder.file("home.orvl").c_str()));
}

TEST(PageFileName, a_title_becomes_a_file_name) {
    EXPECT_EQ("My_Tools.orvl", file_name_for("My Tools"));
    EXPECT_EQ("games.orvl", file_name_for("games.orvl"));
    EXPECT_EQ("list.xml", file_name_for("list.xml"));
    EXPECT_EQ("a_b_c.orvl", file_name_for("a.b c"));
    EXPECT_EQ("Zz09_.orvl", file_name_for("Zz09_"));
}

TEST(PageFileName, a_slash_inside_makes_no_path) {
    EXPECT_EQ("ab.orvl", file_name_for("a/b"));
}

TEST(PageFileName, a_path_is_left_as_it_is) {
    EXPECT_EQ("sub\\my page", file_name_for("sub\\my page"));
    EXPECT_EQ("/my page", file_name_for("/my page"));
    EXPECT_EQ("c:my page", file_name_for("c:my page"));
    EXPECT_EQ("ac.orvl", file_name_for("ac:")); // the colon is not the second character
}

TEST(PageFileName, a_name_made_only_of_dropped_characters_becomes_the_extension) {
    EXPECT_EQ(".orvl", file_name_for("???"));
    EXPECT_EQ(".orvl", file_name_for(""));
    EXPECT_EQ(".orvl", file_name_for("\xa3"));
}

// The code page of these letters; other systems have others there.
static bool is_western() {
#ifdef _WIN32
    return GetACP() == 1252;
#else
    return true;
#endif
}

TEST(PageFileName, letters_with_accents_are_kept_and_the_pound_sign_is_not) {
    if (!is_western())
        GTEST_SKIP() << "another code page";
    EXPECT_EQ("B\xfcro_\xc4rzte.orvl", file_name_for("B\xfcro \xc4rzte"));
    EXPECT_EQ("10.orvl", file_name_for("10\xa3"));
    EXPECT_EQ("ab.orvl", file_name_for("a\xd7\xf7\xb1"
                                       "b"));
}

TEST(PageTitle, a_word_that_begins_with_an_accented_letter_is_made_upper_case) {
    if (!is_western())
        GTEST_SKIP() << "another code page";
    EXPECT_EQ("\xdc"
              "bersicht \xc4rzte-\xd8re",
              title_for("\xfc"
                        "bersicht_\xe4rzte-\xf8re.orvl"));
}

TEST(PageFileName, an_underscore_before_orvl_is_taken_as_the_dot) {
    EXPECT_EQ("my_page.orvl", file_name_for("my page_orvl"));
    EXPECT_EQ("my_page.xml", file_name_for("my page_xml"));
    EXPECT_EQ(".orvl", file_name_for(".orvl"));
    EXPECT_EQ(".xml", file_name_for(".xml"));
}

TEST(PageFileName, an_ending_is_not_recognised_when_a_character_was_dropped) {
    EXPECT_EQ("ab_orvl.orvl", file_name_for("a?b.orvl"));
    EXPECT_EQ("ab_xml.orvl", file_name_for("a?b.xml"));
    EXPECT_EQ("a_orvl.orvl", file_name_for("\xa3"
                                           "a.orvl"));
}

TEST(PageFileName, the_longest_title_keeps_its_extension) {
    EXPECT_EQ(std::string(255, 'a') + ".orvl", file_name_for(std::string(260, 'a')));
    EXPECT_EQ(std::string(255, 'a') + ".orvl", file_name_for(std::string(255, 'a') + ".orvl"));
}

TEST(PageTitle, a_file_name_becomes_a_title) {
    EXPECT_EQ("My Games-Old", title_for("C:\\Pages\\my_games-old.orvl"));
    EXPECT_EQ("Home", title_for("home.orvl"));
    EXPECT_EQ("", title_for(""));
    EXPECT_EQ("", title_for("C:\\Pages\\"));
}

TEST(PageTitle, a_letter_behind_a_word_break_is_made_upper_case) {
    EXPECT_EQ("A B-C D.E(F)G", title_for("a b-c_d.e(f)g.orvl"));
    EXPECT_EQ("1a", title_for("1a.orvl"));
}

TEST(PageTitle, it_is_cut_at_40_characters_before_the_extension_is_removed) {
    EXPECT_EQ(std::string("A") + std::string(39, 'a'), title_for(std::string(60, 'a') + ".orvl"));
    // The last dot lies within the first 40 characters: what follows it there goes with it.
    EXPECT_EQ(std::string("A") + std::string(36, 'a'), title_for(std::string(37, 'a') + ".orvl"));
    EXPECT_EQ("A.B" + std::string(34, 'b'), title_for("a.b" + std::string(34, 'b') + ".orvl"));
    EXPECT_EQ("A", title_for("a.b" + std::string(60, 'b') + ".orvl"));
}

TEST(PageTitle, only_the_last_dot_cuts) {
    EXPECT_EQ("A.B", title_for("a.b.orvl"));
    EXPECT_EQ("", title_for(".orvl"));
}
