#include "tests/unit/edit_fixture.h"

#ifndef _WIN32
#include "tests/support/full_disk.h"
#endif

struct ClipboardPageFile : Edit {
    ClipboardPageFile() {
        orvanel_options.object_transitions = 0;
    }

    // Copies a page object and pastes it; returns the pasted one.
    static Node *paste_copy_of(const char *name, const char *file) {
        clipboard_fill(add_page(name, file, 0.0f, 60.0f), CLIPBOARD_COPIED);
        return paste();
    }
    static Node *paste() {
        clipboard_paste(0.0f, 0.0f);
        return &node[node_total - 1];
    }
};

static std::string file_of(const Node *page) {
    return page->actions[0]->command;
}

TEST_F(ClipboardPageFile, a_copied_page_pasted_twice_gets_files_and_names_of_its_own) {
    folder.write("games.orvl", "the games");
    const Node *first = paste_copy_of("Games", "games.orvl");
    EXPECT_STREQ(first->name, "Games (Copy)");
    EXPECT_EQ(file_of(first), "games_copy_1.orvl");
    const Node *second = paste();
    EXPECT_STREQ(second->name, "Games (Copy 2)");
    EXPECT_EQ(file_of(second), "games_copy_2.orvl");
    EXPECT_EQ(folder.read("games.orvl"), "the games");
    EXPECT_EQ(folder.read("games_copy_1.orvl"), "the games");
    EXPECT_EQ(folder.read("games_copy_2.orvl"), "the games");
    EXPECT_STREQ(clipboard.name, "Games");
    EXPECT_EQ(file_of(&clipboard), "games.orvl");
}

TEST_F(ClipboardPageFile, a_cut_page_pasted_once_is_the_one_that_was_cut_and_then_a_copy) {
    folder.write("games.orvl", "the games");
    clipboard_fill(add_page("Games", "games.orvl", 0.0f, 60.0f), CLIPBOARD_CUT);
    node_delete_node(0);
    const Node *first = paste();
    EXPECT_STREQ(first->name, "Games");
    EXPECT_EQ(file_of(first), "games.orvl");
    EXPECT_FALSE(file_exists(folder.file("games_copy_1.orvl").c_str()));
    EXPECT_EQ(clipboard_used, 1);
    const Node *second = paste();
    EXPECT_STREQ(second->name, "Games (Copy)");
    EXPECT_EQ(file_of(second), "games_copy_1.orvl");
    EXPECT_EQ(folder.read("games_copy_1.orvl"), "the games");
}

TEST_F(ClipboardPageFile, a_copy_of_a_copy_is_numbered_with_the_others) {
    folder.write("x_copy_3.orvl", "three");
    const Node *pasted = paste_copy_of("X (Copy 3)", "x_copy_3.orvl");
    EXPECT_EQ(file_of(pasted), "x_copy_1.orvl");
    EXPECT_STREQ(pasted->name, "X (Copy)");
    EXPECT_EQ(folder.read("x_copy_1.orvl"), "three");
    EXPECT_STREQ(paste()->name, "X (Copy 2)");
    EXPECT_EQ(file_of(paste()), "x_copy_4.orvl"); // 3 is there already
    EXPECT_EQ(folder.read("x_copy_3.orvl"), "three");
}

TEST_F(ClipboardPageFile, an_older_page_keeps_its_extension) {
    folder.write("old.xml", "old");
    EXPECT_EQ(file_of(paste_copy_of("Old", "old.xml")), "old_copy_1.xml");
    EXPECT_EQ(folder.read("old_copy_1.xml"), "old");
}

TEST_F(ClipboardPageFile, a_page_that_ends_in_both_counts_as_one_of_today) {
    EXPECT_EQ(file_of(paste_copy_of("Both", "both.xml.orvl")), "both.xml_copy_1.orvl");
    EXPECT_EQ(file_of(paste_copy_of("Bare", "bare")), "bare_copy_1.orvl");
}

TEST_F(ClipboardPageFile, a_page_named_by_its_full_path_is_copied_next_to_itself) {
    TestFolder elsewhere;
    const std::string path = elsewhere.write("games.orvl", "the games");
    const Node *pasted = paste_copy_of("Games", path.c_str());
    EXPECT_EQ(file_of(pasted), elsewhere.file("games_copy_1.orvl"));
    EXPECT_EQ(elsewhere.read("games_copy_1.orvl"), "the games");
    EXPECT_FALSE(file_exists(folder.file("games_copy_1.orvl").c_str()));
}

TEST_F(ClipboardPageFile, it_stays_next_to_its_original_whatever_the_folder_is_called) {
    TestFolder elsewhere;
    for (const char *name : {"old_copy_of", "all.orvl.pages", "all.xml.pages"}) {
        ASSERT_EQ(folder_create(elsewhere.file(name).c_str()), 0);
        const std::string original = std::string(name) + "\\games_copy_7.orvl";
        const std::string copy = std::string(name) + "\\games_copy_1.orvl";
        const std::string path = elsewhere.write(original.c_str(), name);
        EXPECT_EQ(file_of(paste_copy_of("Games", path.c_str())), elsewhere.file(copy.c_str()));
        EXPECT_EQ(elsewhere.read(copy.c_str()), name);
    }
}

TEST_F(ClipboardPageFile, a_folder_of_the_wanted_name_is_passed_over) {
    folder.write("games.orvl", "the games");
    ASSERT_EQ(folder_create(folder.file("games_copy_1.orvl").c_str()), 0);
    EXPECT_EQ(file_of(paste_copy_of("Games", "games.orvl")), "games_copy_2.orvl");
}

TEST_F(ClipboardPageFile, the_1000th_candidate_is_taken_even_when_there_is_such_a_file) {
    folder.write("games.orvl", "the games");
    for (int k = 1; k <= 1000; k++)
        folder.write(("games_copy_" + std::to_string(k) + ".orvl").c_str(), "taken");
    const Node *pasted = paste_copy_of("Games", "games.orvl");
    EXPECT_EQ(file_of(pasted), "games_copy_1000.orvl");
    EXPECT_STREQ(pasted->name, "Games (Copy 1000)");
    EXPECT_EQ(folder.read("games_copy_1000.orvl"), "the games");
    EXPECT_EQ(folder.read("games_copy_999.orvl"), "taken");
}

TEST_F(ClipboardPageFile, the_999th_candidate_is_taken_when_it_is_free) {
    for (int k = 1; k <= 998; k++)
        folder.write(("games_copy_" + std::to_string(k) + ".orvl").c_str(), "taken");
    EXPECT_EQ(file_of(paste_copy_of("Games", "games.orvl")), "games_copy_999.orvl");
}

TEST_F(ClipboardPageFile, a_file_that_cannot_be_copied_is_not_reported) {
    const MessageScript script;
    const Node *pasted = paste_copy_of("Games", "missing.orvl");
    EXPECT_TRUE(script.shown().empty());
    EXPECT_EQ(file_of(pasted), "missing_copy_1.orvl");
    EXPECT_STREQ(pasted->name, "Games (Copy)");
    EXPECT_FALSE(file_exists(folder.file("missing_copy_1.orvl").c_str()));
}

#ifndef _WIN32
TEST_F(ClipboardPageFile, a_page_that_finds_no_room_is_not_copied_in_part) {
    folder.write("games.orvl", std::string(5000, 'x'));
    const MessageScript script;
    const FullDisk disk(1000);
    EXPECT_EQ(file_of(paste_copy_of("Games", "games.orvl")), "games_copy_1.orvl");
    EXPECT_TRUE(script.shown().empty());
    EXPECT_FALSE(file_exists(folder.file("games_copy_1.orvl").c_str()));
}
#endif

TEST_F(ClipboardPageFile, a_name_near_30_characters_is_cut_so_that_its_end_fits) {
    EXPECT_STREQ(paste_copy_of("123456789012345678901234567890", "a.orvl")->name,
                 "12345678901234567890123 (Copy)");
    EXPECT_STREQ(paste_copy_of("12345678901234567890123", "b.orvl")->name,
                 "12345678901234567890123 (Copy)");
    folder.write("c_copy_1.orvl", "taken");
    EXPECT_STREQ(paste_copy_of("123456789012345678901234567890", "c.orvl")->name,
                 "123456789012345678901 (Copy 2)");
}

TEST_F(ClipboardPageFile, a_name_is_cut_where_it_first_says_that_it_is_a_copy) {
    EXPECT_STREQ(paste_copy_of("A (Copy)", "a.orvl")->name, "A (Copy)");
    EXPECT_STREQ(paste_copy_of("A (Copy 12)", "b.orvl")->name, "A (Copy)");
    EXPECT_STREQ(paste_copy_of("A (Copy) (Copy 2)", "c.orvl")->name, "A (Copy)");
    EXPECT_STREQ(paste_copy_of("A (Copyright)", "d.orvl")->name, "A (Copyright) (Copy)");
    EXPECT_STREQ(paste_copy_of("", "e.orvl")->name, " (Copy)");
}

TEST_F(ClipboardPageFile, a_file_name_near_260_characters_is_cut_so_that_its_end_fits) {
    const std::string folder_name = "c:\\folder\\";
    const std::string path = folder_name + std::string(260 - 15, 'p') + ".orvl";
    ASSERT_EQ(path.size(), 260u);
    EXPECT_EQ(file_of(paste_copy_of("Long", path.c_str())), path.substr(0, 254) + "1.orvl");
}

TEST_F(ClipboardPageFile, a_long_name_in_a_deep_page_folder_is_cut_so_that_its_path_fits) {
    const std::size_t free = 260 - std::string(folder.path).size();
    const std::string name = std::string(free - 5, 'p') + ".orvl";
    folder.write(name.c_str(), "long");
    const std::string copy = file_of(paste_copy_of("Long", name.c_str()));
    EXPECT_EQ(copy.size(), free);
    EXPECT_EQ(copy, std::string(free - 6, 'p') + "1.orvl");
    EXPECT_EQ(folder.read(copy.c_str()), "long");
}

TEST_F(ClipboardPageFile, undoing_a_paste_leaves_the_file_and_the_next_paste_takes_another) {
    folder.write("games.orvl", "the games");
    clipboard_fill(add_page("Games", "games.orvl", 0.0f, 60.0f), CLIPBOARD_COPIED);
    stage_draw();
    undo_push();
    redo_reset();
    clipboard_paste(0.0f, 0.0f);
    undo_pop();
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(folder.read("games_copy_1.orvl"), "the games");
    EXPECT_EQ(file_of(paste()), "games_copy_2.orvl");
}

TEST_F(ClipboardPageFile, a_page_object_without_a_file_is_pasted_as_it_is) {
    clipboard_fill(add_node(NODE_PAGE, "Bare", 0.0f, 60.0f), CLIPBOARD_COPIED);
    const Node *pasted = paste();
    EXPECT_STREQ(pasted->name, "Bare");
    EXPECT_EQ(pasted->action_count, 0);
}
