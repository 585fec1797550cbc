// What the page dialog refuses at OK, and that nothing of it stays.
#include "tests/support/short_memory.h"
#include "tests/unit/page_dialog_fixture.h"

#include <cstring>
#include <string>
#include <vector>

// Everything that undo, the page file and the screen know of the page.
struct PageState {
    std::string text = page_text();
    std::int32_t total = node_total, lines = line_total, snapshots = undo_total;
    std::vector<Node> nodes{node, node + node_total};
    std::int32_t last_model = dialog_page_last_model_used;

    bool operator==(const PageState &other) const {
        return text == other.text && total == other.total && lines == other.lines &&
               snapshots == other.snapshots && last_model == other.last_model &&
               std::memcmp(nodes.data(), other.nodes.data(), nodes.size() * sizeof(Node)) == 0;
    }
};

// There is a page object "Games" of "games.orvl" already.
struct Refusals : PageDialog {
    Refusals() {
        folder.write("games.orvl", "");
        if (link("Games", "games.orvl") != PageRefusal::None)
            throw "no page object";
        undo_push();
        redo_push();
        fields.model_entry = object_files_total - 1;
        fields.description = "refused";
        open_new();
    }
    bool leaves_page(PageRefusal expected, const char *page_name, const char *linked = nullptr) {
        const PageState before;
        const bool refused =
            (linked == nullptr ? create(page_name) : link(page_name, linked)) == expected;
        return refused && PageState() == before;
    }
};

TEST_F(Refusals, a_new_page_whose_name_is_used_by_another_object_is_refused) {
    EXPECT_TRUE(leaves_page(PageRefusal::NameTaken, "Games"));
    EXPECT_EQ(folder.read("Games.orvl"),
              ""); // where letter case does not count, "games.orvl" as it was
    EXPECT_TRUE(leaves_page(PageRefusal::NameTaken, "Games", "other.orvl"));
    EXPECT_FALSE(file_exists(folder.file("other.orvl").c_str()));
}

TEST_F(Refusals, a_name_is_taken_by_an_object_or_label_as_well_and_as_it_is_cut) {
    text_copy(node[0].name, std::string(30, 'n').c_str());
    node[0].type = NODE_OBJECT;
    EXPECT_TRUE(leaves_page(PageRefusal::NameTaken, std::string(31, 'n').c_str()));
    node[0].type = NODE_LABEL;
    EXPECT_TRUE(leaves_page(PageRefusal::NameTaken, std::string(30, 'n').c_str()));
}

TEST_F(Refusals, a_name_in_another_letter_case_is_another_name) {
    EXPECT_EQ(create("GAMES"), PageRefusal::None);
}

TEST_F(Refusals, an_existing_page_object_may_take_the_name_of_another) {
    ASSERT_EQ(create("Tools"), PageRefusal::None);
    open_existing(1);
    fields.name = "Games";
    EXPECT_EQ(dialog_page_apply(fields), PageRefusal::None);
}

TEST_F(Refusals, an_empty_name_is_refused_while_no_file_is_linked) {
    EXPECT_TRUE(leaves_page(PageRefusal::NameEmpty, ""));
    EXPECT_FALSE(file_exists(folder.file(".orvl").c_str()));
}

TEST_F(Refusals, an_empty_file_name_is_refused_where_one_is_to_be_linked) {
    EXPECT_TRUE(leaves_page(PageRefusal::NoFile, "Tools", ""));
    EXPECT_TRUE(leaves_page(PageRefusal::NoFile, "", ""));
}

TEST_F(Refusals, the_name_is_looked_at_before_the_file) {
    EXPECT_TRUE(leaves_page(PageRefusal::NameTaken, "Games", ""));
    EXPECT_TRUE(leaves_page(PageRefusal::NameTaken, "Games", "shown.orvl"));
}

TEST_F(Refusals, the_file_of_the_page_shown_is_refused) {
    folder.write("shown.orvl", "");
    EXPECT_TRUE(leaves_page(PageRefusal::SelfLink, "Me", "shown.orvl"));
}

TEST_F(Refusals, the_page_shown_is_known_in_any_letter_case_and_by_its_full_path) {
    EXPECT_TRUE(leaves_page(PageRefusal::SelfLink, "Me", "Shown.ORVL"));
    EXPECT_TRUE(leaves_page(PageRefusal::SelfLink, "Me", folder.file("shown.orvl").c_str()));
    text_copy(scene_page_file_name, folder.file("sh\xf6n.orvl").c_str());
    EXPECT_TRUE(leaves_page(PageRefusal::SelfLink, "Me", "SH\xd6N.orvl"));
    text_copy(scene_page_file_name, "D:\\other\\shown.orvl");
    EXPECT_EQ(link("Me", "shown.orvl"), PageRefusal::None);
}

TEST_F(Refusals, a_new_page_whose_file_would_be_that_of_a_page_shown_that_is_gone_is_refused) {
    EXPECT_TRUE(leaves_page(PageRefusal::SelfLink, "shown"));
    EXPECT_FALSE(file_exists(folder.file("shown.orvl").c_str()));
}

TEST_F(Refusals, an_existing_page_object_that_opens_its_own_page_is_refused) {
    text_copy(node[0].actions[0]->command, "shown.orvl");
    open_existing(0);
    fields.name = "renamed";
    const PageState before;
    EXPECT_EQ(dialog_page_apply(fields), PageRefusal::SelfLink);
    EXPECT_EQ(PageState(), before);
    EXPECT_STREQ(node[0].name, "Games");
}

TEST_F(Refusals, a_page_file_that_cannot_be_created_is_refused) {
    const std::string missing = folder.file("missing\\x.orvl");
    EXPECT_TRUE(leaves_page(PageRefusal::NoPageFile, "Tools", missing.c_str()));
    text_copy(page_dir_location, folder.file("missing\\").c_str());
    EXPECT_TRUE(leaves_page(PageRefusal::NoPageFile, "Tools"));
}

TEST_F(Refusals, a_folder_is_no_page_file) {
    folder_create(folder.file("Tools.orvl").c_str());
    EXPECT_TRUE(leaves_page(PageRefusal::NoPageFile, "Tools"));
    EXPECT_TRUE(leaves_page(PageRefusal::NoPageFile, "Folder", folder.path));
}

TEST_F(Refusals, a_page_file_in_a_path_that_is_too_long_is_refused) {
    text_copy(page_dir_location, (std::string(folder.path) + std::string(200, 'x') + "\\").c_str());
    EXPECT_TRUE(leaves_page(PageRefusal::NoPageFile, "a name of thirty characters ok"));
}

TEST_F(Refusals, a_full_page_takes_no_further_page_object) {
    node_total = NODE_CAPACITY;
    const PageState before;
    EXPECT_EQ(create("one more"), PageRefusal::PageFull);
    EXPECT_EQ(PageState(), before);
    EXPECT_EQ(node_total, NODE_CAPACITY);
    EXPECT_FALSE(file_exists(folder.file("one_more.orvl").c_str()));
    node_total = NODE_CAPACITY - 1;
    EXPECT_EQ(create("the last"), PageRefusal::None);
    EXPECT_EQ(node_total, NODE_CAPACITY);
}

TEST_F(Refusals, without_memory_for_its_action_there_is_no_page_object_and_no_file) {
    for (Action *&slot : node[1].actions) {
        action_free_action(&slot);
        slot = nullptr;
    }
    const PageState before;
    {
        const ShortMemory memory(1);
        EXPECT_EQ(create("Tools"), PageRefusal::NoPageFile);
    }
    EXPECT_EQ(PageState(), before);
    EXPECT_FALSE(file_exists(folder.file("Tools.orvl").c_str()));
    EXPECT_EQ(create("Tools"), PageRefusal::None);
}

TEST_F(Refusals, an_ok_makes_redo_impossible_even_where_it_is_refused) {
    ASSERT_EQ(redo_available(), 0);
    EXPECT_EQ(create(""), PageRefusal::NameEmpty);
    EXPECT_EQ(redo_available(), 1);
}

TEST_F(Refusals, after_a_refusal_the_mended_fields_are_taken) {
    EXPECT_TRUE(leaves_page(PageRefusal::NameEmpty, ""));
    EXPECT_TRUE(leaves_page(PageRefusal::NameTaken, "Games"));
    EXPECT_TRUE(leaves_page(PageRefusal::NoFile, "Tools", ""));
    dialog_page_check_link(false);
    EXPECT_EQ(create("Tools"), PageRefusal::None);
    EXPECT_EQ(node_total, 2);
    EXPECT_EQ(file_of(1), "Tools.orvl");
    EXPECT_EQ(dialog_page_last_model_used, object_files_total - 1);
}

TEST_F(Refusals, an_existing_page_object_is_as_it_was_after_a_refused_ok_and_cancel) {
    open_existing(0);
    fields.name = "other";
    fields.description = "other";
    fields.file_name = "";
    const PageState before;
    EXPECT_EQ(dialog_page_apply(fields), PageRefusal::NoFile);
    EXPECT_EQ(PageState(), before);
}
