#include "dialogs/rules/dialog_page_rules.h"

#include "support/test_places.h"
#include "tests/unit/page_dialog_fixture.h"

#include <algorithm>
#include <cstring>

static std::string file_name_for(const std::string &page_name) {
    char file_name[PATH_SIZE];
    std::memset(file_name, '#', sizeof file_name);
    dialog_page_generate_valid_filename(page_name.c_str(), file_name);
    return file_name;
}

static std::string shown_path(const std::string &chosen) {
    char shown[PATH_SIZE];
    dialog_page_shown_path(chosen.c_str(), shown);
    return shown;
}

// ---- file names

TEST_F(PageDialog, blanks_and_points_become_underscores_and_letters_digits_and_underscores_stay) {
    EXPECT_EQ(file_name_for("My Games"), "My_Games.orvl");
    EXPECT_EQ(file_name_for("v1.2 beta_3"), "v1_2_beta_3.orvl");
    EXPECT_EQ(file_name_for("a/b:c*d?e\"f<g>h|i\\j"), "abcdefghij.orvl");
}

TEST_F(PageDialog, a_name_made_only_of_dropped_characters_gives_an_empty_stem) {
    EXPECT_EQ(file_name_for("???"), ".orvl");
    EXPECT_EQ(file_name_for(""), ".orvl");
}

TEST_F(PageDialog, letters_with_accents_stay_and_the_pound_sign_goes) {
    EXPECT_EQ(file_name_for("\xdc"
                            "bersicht\xe4\xdf"),
              "\xdc"
              "bersicht\xe4\xdf.orvl");
    EXPECT_EQ(file_name_for("\xa3"
                            "100"),
              "100.orvl");
}

TEST_F(PageDialog, an_ending_of_the_name_becomes_the_extension) {
    EXPECT_EQ(file_name_for("games.orvl"), "games.orvl");
    EXPECT_EQ(file_name_for("my page_orvl"), "my_page.orvl");
    EXPECT_EQ(file_name_for("_orvl"), ".orvl");
    EXPECT_EQ(file_name_for("orvl"), "orvl.orvl");
    EXPECT_EQ(file_name_for("games.ORVL"), "games_ORVL.orvl");
}

TEST_F(PageDialog, a_name_ending_in_xml_keeps_that_extension_but_its_numbers_end_in_orvl) {
    EXPECT_EQ(file_name_for("list.xml"), "list.xml");
    EXPECT_EQ(file_name_for("list_xml"), "list.xml");
    folder.write("list.xml", "");
    EXPECT_EQ(file_name_for("list.xml"), "list.xml_0.orvl");
    folder.write("list.xml_0.orvl", "");
    EXPECT_EQ(file_name_for("list.xml"), "list.xml_1.orvl");
}

TEST_F(PageDialog, an_ending_is_looked_for_in_the_wrong_place_once_a_character_was_dropped) {
    EXPECT_EQ(file_name_for("games?.orvl"), "games_orvl.orvl");
    EXPECT_EQ(file_name_for("list!.xml"), "list_xml.orvl");
}

TEST_F(PageDialog, a_name_that_is_in_use_is_numbered_from_0_on) {
    folder.write("My_Games.orvl", "");
    EXPECT_EQ(file_name_for("My Games"), "My_Games_0.orvl");
    folder.write("My_Games_0.orvl", "");
    EXPECT_EQ(file_name_for("My Games"), "My_Games_1.orvl");
    folder.write("My_Games_2.orvl", "");
    EXPECT_EQ(file_name_for("My Games"), "My_Games_1.orvl"); // the gap
    folder.write(".orvl", "");
    EXPECT_EQ(file_name_for("???"), "_0.orvl");
}

TEST_F(PageDialog, with_all_numbers_in_use_there_is_no_name_and_no_page) {
    folder.write("My_Games.orvl", "");
    for (int number = 0; number <= 998; number++)
        folder.write(("My_Games_" + std::to_string(number) + ".orvl").c_str(), "");
    EXPECT_EQ(file_name_for("My Games"), "");
    EXPECT_EQ(create("My Games"), PageRefusal::NoPageFile);
    EXPECT_EQ(node_total, 0);
    file_delete(folder.file("My_Games_998.orvl").c_str());
    EXPECT_EQ(create("My Games"), PageRefusal::None);
    EXPECT_EQ(file_of(0), "My_Games_998.orvl");
}

TEST_F(PageDialog, a_name_of_any_length_gives_a_file_name_with_its_extension) {
    for (const std::size_t length : {250u, 255u, 256u, 260u, 261u, 300u, 5000u}) {
        const std::string file = file_name_for(std::string(length, 'n'));
        EXPECT_EQ(file.size(), std::min<std::size_t>(length + 5, 260)) << length;
        EXPECT_TRUE(file.ends_with("n.orvl")) << length;
    }
    EXPECT_EQ(file_name_for(std::string(255, 'n') + ".orvl"), std::string(255, 'n') + ".orvl");
}

TEST_F(PageDialog, a_very_long_name_is_numbered_as_well) {
    const std::string longest(200, 'n');
    folder.write((longest + ".orvl").c_str(), "");
    EXPECT_EQ(file_name_for(longest), longest + "_0.orvl");
}

// ---- browsing

TEST_F(PageDialog, a_file_of_the_page_folder_is_shown_without_the_folder) {
    EXPECT_EQ(shown_path(folder.file("tools.orvl")), "tools.orvl");
    EXPECT_EQ(shown_path("\\\\?" + folder.file("tools.orvl")), "tools.orvl");
}

TEST_F(PageDialog, the_page_folder_is_known_in_any_letter_case) {
    text_copy(page_dir_location, "C:\\Pages \xc4\\");
    EXPECT_EQ(shown_path("c:\\pages \xe4\\tools.orvl"), "tools.orvl");
    EXPECT_EQ(shown_path("c:\\pages a\\tools.orvl"), "c:\\pages a\\tools.orvl");
}

TEST_F(PageDialog, a_file_elsewhere_is_shown_with_its_full_path) {
    EXPECT_EQ(shown_path("D:\\other\\tools.orvl"), "D:\\other\\tools.orvl");
    EXPECT_EQ(shown_path(""), "");
}

TEST_F(PageDialog, a_file_in_a_folder_below_keeps_its_full_path_since_only_that_can_be_opened) {
    folder_create(folder.file("below").c_str());
    folder.write("below/x.orvl", "");
    const std::string path = folder.file("below\\x.orvl");
    EXPECT_EQ(shown_path(path), path);
    EXPECT_EQ(link("Below", shown_path(path).c_str()), PageRefusal::None);
    char opened[PAGE_PATH_SIZE];
    page_path(opened, node[0].actions[0]->command);
    EXPECT_TRUE(file_exists(opened));
}

TEST_F(PageDialog, a_path_that_is_too_long_is_cut) {
    EXPECT_EQ(shown_path("D:\\" + std::string(400, 'x')), "D:\\" + std::string(257, 'x'));
}

TEST_F(PageDialog, a_file_name_that_begins_with_a_variable_is_no_place_to_start_from) {
    EXPECT_STREQ(dialog_page_browse_start("$NAME.orvl"), "");
    EXPECT_STREQ(dialog_page_browse_start("tools$.orvl"), "tools$.orvl");
    EXPECT_STREQ(dialog_page_browse_start(""), "");
}

TEST_F(PageDialog, a_folder_that_is_not_there_is_no_place_to_start_from) {
    folder_create(folder.file("below").c_str());
    folder.write("below/x.orvl", "");
    const std::string there = folder.file("below\\x.orvl");
    const std::string gone_file = folder.file("below\\gone.orvl");
    EXPECT_EQ(dialog_page_browse_start(there.c_str()), there);
    EXPECT_EQ(dialog_page_browse_start(gone_file.c_str()), gone_file);
    EXPECT_STREQ(dialog_page_browse_start(folder.file("gone\\x.orvl").c_str()), "");
}

// ---- opening

TEST_F(PageDialog, a_new_page_opens_with_empty_fields_and_the_box_not_checked) {
    EXPECT_STREQ(dialog_page_title(), "New Page");
    EXPECT_EQ(use_existing_page_file, 1);
    const PageFieldTexts shown = dialog_page_opening_texts();
    EXPECT_STREQ(shown.name, "");
    EXPECT_STREQ(shown.description, "");
    EXPECT_STREQ(shown.file_name, "");
}

TEST_F(PageDialog, an_existing_page_object_opens_with_its_texts_and_the_box_checked) {
    fields.description = "all of them";
    ASSERT_EQ(create("My Games"), PageRefusal::None);
    dialog_page_set_node(0);
    dialog_page_open();
    EXPECT_STREQ(dialog_page_title(), "Page Properties");
    EXPECT_EQ(use_existing_page_file, 0);
    const PageFieldTexts shown = dialog_page_opening_texts();
    EXPECT_STREQ(shown.name, "My Games");
    EXPECT_STREQ(shown.description, "all of them");
    EXPECT_STREQ(shown.file_name, "My_Games.orvl");
}

TEST_F(PageDialog, a_page_object_without_an_action_opens_with_no_file) {
    ASSERT_EQ(create("first"), PageRefusal::None);
    node[0].action_count = 0;
    open_existing(0);
    EXPECT_STREQ(dialog_page_opening_texts().file_name, "");
    action_free_action(&node[0].actions[0]);
    node[0].actions[0] = nullptr;
    node[0].action_count = 1;
    EXPECT_STREQ(dialog_page_opening_texts().file_name, "");
}

TEST_F(PageDialog, an_index_that_is_no_nodes_means_a_new_page) {
    for (const std::int32_t index : {-1, -2, 0, 254, 255, 100000}) {
        dialog_page_set_node(index);
        dialog_page_open();
        EXPECT_STREQ(dialog_page_title(), "New Page") << index;
        EXPECT_EQ(use_existing_page_file, 1) << index;
    }
}

TEST_F(PageDialog, the_flag_of_the_box_is_1_while_it_is_not_checked) {
    dialog_page_check_link(true);
    EXPECT_EQ(use_existing_page_file, 0);
    EXPECT_TRUE(dialog_page_existing_page_linked());
    dialog_page_check_link(false);
    EXPECT_EQ(use_existing_page_file, 1);
    EXPECT_FALSE(dialog_page_existing_page_linked());
}

// ---- OK: a new page object

TEST_F(PageDialog, a_new_page_object_gets_its_texts_its_place_and_an_empty_page_file) {
    fields.description = "all of them";
    dialog_page_set_mouse(3.0f, -4.0f);
    scene_floor.position_x = 10.0f;
    scene_floor.position_y = 20.0f;
    ASSERT_EQ(create("My Games"), PageRefusal::None);
    ASSERT_EQ(node_total, 1);
    EXPECT_EQ(node[0].type, NODE_PAGE);
    EXPECT_STREQ(node[0].name, "My Games");
    EXPECT_STREQ(node[0].description, "all of them");
    EXPECT_EQ(node[0].x, 13.0f);
    EXPECT_EQ(node[0].y, 16.0f);
    EXPECT_EQ(node[0].action_count, 1);
    EXPECT_EQ(node[0].actions[0]->type, ACTION_COMMAND);
    EXPECT_EQ(file_of(0), "My_Games.orvl");
    EXPECT_FALSE(dialog_page_existing_page_linked());
    EXPECT_EQ(scene_load_page("My_Games.orvl", "My Games"), PAGE_LOADED);
    EXPECT_EQ(node_total, 0);
}

TEST_F(PageDialog, a_new_page_object_keeps_nothing_of_the_node_that_stood_in_its_place) {
    Node &left = node[0];
    left.type = NODE_LABEL;
    left.model_id = 7;
    left.label_depth = 3;
    left.grab_x = 5.0f;
    left.angle = 90.0f;
    left.move_dx = left.move_dy = 2.0f;
    left.action_count = 4;
    action_allocate_action(&left.actions[0]);
    left.actions[0]->type = ACTION_SUBMENU;
    left.actions[0]->owner = 2;
    text_copy(left.actions[0]->name, "old");
    text_copy(left.actions[0]->icon, "old.exe");
    ASSERT_EQ(create("new"), PageRefusal::None);
    EXPECT_EQ(left.model_id, 0);
    EXPECT_EQ(left.label_depth, 0);
    EXPECT_EQ(left.grab_x, left.x);
    EXPECT_EQ(left.angle, 0.0f);
    EXPECT_EQ(left.move_dx, 0.0f);
    EXPECT_EQ(left.move_dy, 0.0f);
    EXPECT_EQ(left.action_count, 1);
    EXPECT_EQ(left.actions[0]->type, ACTION_COMMAND);
    EXPECT_EQ(left.actions[0]->owner, 0);
    EXPECT_STREQ(left.actions[0]->name, "");
    EXPECT_STREQ(left.actions[0]->icon, "");
}

TEST_F(PageDialog, texts_are_cut_at_30_and_50_characters) {
    const std::string text(300, 't');
    fields.description = text.c_str();
    ASSERT_EQ(create(text.c_str()), PageRefusal::None);
    EXPECT_EQ(node[0].name, std::string(30, 't'));
    EXPECT_EQ(node[0].description, std::string(50, 't'));
    EXPECT_EQ(file_of(0), std::string(30, 't') + ".orvl");
}

TEST_F(PageDialog, a_second_page_of_a_file_that_exists_gets_a_file_of_its_own) {
    folder.write("My_Games.orvl", "the user's");
    ASSERT_EQ(create("My Games"), PageRefusal::None);
    EXPECT_EQ(file_of(0), "My_Games_0.orvl");
    EXPECT_EQ(folder.read("My_Games.orvl"), "the user's");
    EXPECT_TRUE(file_exists(folder.file("My_Games_0.orvl").c_str()));
}

TEST_F(PageDialog, a_name_with_accents_gives_a_page_that_can_be_opened) {
    ASSERT_EQ(create("B\xfcro"), PageRefusal::None);
    EXPECT_STREQ(node[0].name, "B\xfcro");
    const std::string file = file_of(0);
    EXPECT_EQ(file, "B\xfcro.orvl");
    EXPECT_EQ(scene_load_page(file.c_str(), "x"), PAGE_LOADED);
}

TEST_F(PageDialog, a_page_called_like_the_page_shown_gets_another_file) {
    folder.write("shown.orvl", "");
    ASSERT_EQ(create("shown"), PageRefusal::None);
    EXPECT_EQ(file_of(0), "shown_0.orvl");
}

// ---- OK: an existing file

TEST_F(PageDialog, a_linked_file_becomes_the_page_file_and_stays_as_it_is) {
    folder.write("tools.orvl", "the user's");
    ASSERT_EQ(link("My Tools", "tools.orvl"), PageRefusal::None);
    EXPECT_STREQ(node[0].name, "My Tools");
    EXPECT_EQ(file_of(0), "tools.orvl");
    EXPECT_EQ(folder.read("tools.orvl"), "the user's");
    EXPECT_TRUE(dialog_page_existing_page_linked());
}

TEST_F(PageDialog, linking_a_file_with_an_empty_name_takes_the_name_from_the_file) {
    folder.write("my_games-old.orvl", "");
    ASSERT_EQ(link("", "my_games-old.orvl"), PageRefusal::None);
    EXPECT_STREQ(node[0].name, "My Games-Old");
    const std::string path = folder.file("my_games-old.orvl");
    ASSERT_EQ(link("", path.c_str()), PageRefusal::None);
    EXPECT_STREQ(node[1].name, "My Games-Old");
    EXPECT_EQ(file_of(1), path);
}

TEST_F(PageDialog, a_name_taken_from_the_file_is_cut_at_30_characters) {
    const std::string file = std::string(36, 'n') + ".orvl";
    ASSERT_EQ(link("", file.c_str()), PageRefusal::None);
    EXPECT_EQ(node[0].name, "N" + std::string(29, 'n'));
}

TEST_F(PageDialog, a_linked_file_that_does_not_exist_is_made) {
    ASSERT_EQ(link("Later", "later.orvl"), PageRefusal::None);
    EXPECT_EQ(scene_load_page("later.orvl", "Later"), PAGE_LOADED);
}

TEST_F(PageDialog, the_longest_file_name_is_kept_whole) {
    const std::string base = folder.path;
    const std::string path = base + std::string(255 - base.size(), 'x') + ".orvl";
    ASSERT_EQ(path.size(), 260u);
    ASSERT_EQ(link("long", path.c_str()), PageRefusal::None);
    EXPECT_EQ(file_of(0), path);
    EXPECT_TRUE(file_exists(path.c_str()));
}

// ---- OK: an existing page object

TEST_F(PageDialog, an_existing_page_object_with_an_unchanged_name_is_not_refused) {
    ASSERT_EQ(create("My Games"), PageRefusal::None);
    open_existing(0);
    EXPECT_EQ(dialog_page_apply(fields), PageRefusal::None);
    EXPECT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "My Games");
    EXPECT_EQ(file_of(0), "My_Games.orvl");
}

TEST_F(PageDialog, an_existing_page_object_is_renamed_where_it_stands_and_keeps_its_file) {
    ASSERT_EQ(create("My Games"), PageRefusal::None);
    node[0].x = 77.0f;
    dialog_page_set_mouse(1.0f, 1.0f);
    open_existing(0);
    fields.name = "Your Games";
    fields.description = "now theirs";
    ASSERT_EQ(dialog_page_apply(fields), PageRefusal::None);
    EXPECT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "Your Games");
    EXPECT_STREQ(node[0].description, "now theirs");
    EXPECT_EQ(node[0].x, 77.0f);
    EXPECT_EQ(file_of(0), "My_Games.orvl");
    EXPECT_FALSE(file_exists(folder.file("Your_Games.orvl").c_str()));
}

TEST_F(PageDialog, an_existing_page_object_whose_file_is_gone_does_not_get_a_new_one) {
    ASSERT_EQ(create("My Games"), PageRefusal::None);
    file_delete(folder.file("My_Games.orvl").c_str());
    open_existing(0);
    ASSERT_EQ(dialog_page_apply(fields), PageRefusal::None);
    EXPECT_FALSE(file_exists(folder.file("My_Games.orvl").c_str()));
}

TEST_F(PageDialog, an_existing_page_object_can_be_edited_on_a_full_page) {
    ASSERT_EQ(create("My Games"), PageRefusal::None);
    node_total = NODE_CAPACITY;
    open_existing(0);
    fields.name = "renamed";
    EXPECT_EQ(dialog_page_apply(fields), PageRefusal::None);
    EXPECT_EQ(node_total, NODE_CAPACITY);
    EXPECT_STREQ(node[0].name, "renamed");
}

// ---- models

static std::int32_t entry_of(const char *file) {
    return object_files_get_id_from_file(file);
}

TEST_F(PageDialog, the_model_chosen_is_loaded_and_gives_the_node_its_size) {
    fields.model_entry = entry_of("box.obj");
    ASSERT_EQ(create("boxed"), PageRefusal::None);
    const Model &model = models[node[0].model_id];
    EXPECT_STREQ(model.file_name, "box.obj");
    EXPECT_EQ(node[0].dimensions[EXTENT_LEFT], model.min_x);
    EXPECT_EQ(node[0].dimensions[EXTENT_TOP], model.max_z);
    EXPECT_LT(model.min_x, model.max_x);
    EXPECT_EQ(dialog_page_last_model_used, entry_of("box.obj"));
}

TEST_F(PageDialog, a_new_page_opens_with_the_model_for_pages) {
    EXPECT_STREQ(object_files[dialog_page_first_entry()].file, "page_orvanel.obj");
}

TEST_F(PageDialog, a_new_page_opens_with_the_model_used_last_if_the_options_ask_for_it) {
    fields.model_entry = entry_of("box.obj");
    ASSERT_EQ(create("first"), PageRefusal::None);
    open_new();
    EXPECT_EQ(dialog_page_first_entry(), entry_of("box.obj"));
    orvanel_options.remember_last_model = 0;
    EXPECT_EQ(dialog_page_first_entry(), entry_of("page_orvanel.obj"));
}

TEST_F(PageDialog, the_model_is_only_remembered_when_the_options_ask_for_it) {
    orvanel_options.remember_last_model = 0;
    fields.model_entry = entry_of("box.obj");
    ASSERT_EQ(create("first"), PageRefusal::None);
    EXPECT_EQ(dialog_page_last_model_used, OBJECT_NONE);
}

TEST_F(PageDialog, an_existing_page_object_opens_with_its_own_model_whatever_was_used_last) {
    fields.model_entry = entry_of("box.obj");
    ASSERT_EQ(create("boxed"), PageRefusal::None);
    fields.model_entry = OBJECT_DEFAULT;
    ASSERT_EQ(create("plain"), PageRefusal::None);
    open_existing(0);
    EXPECT_EQ(dialog_page_first_entry(), entry_of("box.obj"));
    open_existing(1);
    EXPECT_EQ(dialog_page_first_entry(), OBJECT_DEFAULT);
}

TEST_F(PageDialog, an_existing_page_object_takes_another_model_and_the_built_in_one) {
    fields.model_entry = entry_of("box.obj");
    ASSERT_EQ(create("boxed"), PageRefusal::None);
    open_existing(0);
    fields.model_entry = entry_of("page_orvanel.obj");
    ASSERT_EQ(dialog_page_apply(fields), PageRefusal::None);
    EXPECT_STREQ(models[node[0].model_id].file_name, "page_orvanel.obj");
    fields.model_entry = OBJECT_DEFAULT;
    ASSERT_EQ(dialog_page_apply(fields), PageRefusal::None);
    EXPECT_EQ(node[0].model_id, 0);
    EXPECT_EQ(node[0].dimensions[EXTENT_LEFT], models[0].min_x);
}

TEST_F(PageDialog, a_model_that_is_not_in_the_catalogue_stays_until_another_is_chosen) {
    write_model("later.obj");
    ASSERT_EQ(create("page"), PageRefusal::None);
    node[0].model_id = model_return_model_id("later.obj");
    ASSERT_NE(node[0].model_id, 0);
    open_existing(0);
    EXPECT_EQ(dialog_page_first_entry(), OBJECT_NONE);
    EXPECT_EQ(dialog_page_first_model(), node[0].model_id);
    fields.model_entry = OBJECT_NONE;
    ASSERT_EQ(dialog_page_apply(fields), PageRefusal::None);
    EXPECT_STREQ(models[node[0].model_id].file_name, "later.obj");
    fields.model_entry = OBJECT_DEFAULT;
    ASSERT_EQ(dialog_page_apply(fields), PageRefusal::None);
    EXPECT_EQ(node[0].model_id, 0);
}

TEST_F(PageDialog, a_new_page_opens_with_the_built_in_model_when_the_one_for_pages_is_gone) {
    object_files_total = 1;
    EXPECT_EQ(dialog_page_first_entry(), OBJECT_DEFAULT);
    EXPECT_EQ(dialog_page_first_model(), 0);
}

TEST_F(PageDialog, an_entry_that_the_catalogue_does_not_hold_leaves_the_model) {
    for (const std::int32_t entry : {OBJECT_NONE, object_files_total, 100000}) {
        fields.model_entry = entry;
        ASSERT_EQ(create(std::to_string(entry).c_str()), PageRefusal::None);
        EXPECT_EQ(node[node_total - 1].model_id, 0);
    }
}

TEST_F(PageDialog, the_model_for_pages_is_among_those_shipped) {
    EXPECT_TRUE(
        file_exists((std::string(ORVANEL_SOURCE_DIR "\\models\\") + DIALOG_PAGE_MODEL).c_str()));
}
