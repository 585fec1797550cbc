// Pages as large as they get: saved and loaded again, undone and redone.
#include "tests/unit/edit_fixture.h"
#include "tests/unit/page_model.h"

static constexpr char PAGE_FILE[] = "limits.orvl";

// Of this many characters, no two alike.
static std::string full_text(std::size_t length) {
    static int number;
    std::string text = std::to_string(number++) + " ";
    while (text.size() < length)
        text += static_cast<char>(' ' + 1 + text.size() % 27); // up to '<', which ends a value
    return text;
}

static void fill_actions(std::int32_t id) {
    for (std::int32_t i = 0; i < NODE_ACTIONS; i++) {
        Action *action = add_action(id, full_text(60).c_str(), full_text(260).c_str());
        text_copy(action->icon, full_text(260).c_str());
    }
    node[id].actions[7]->type = ACTION_SUBMENU;
    node[id].actions[8]->owner = 7;
    node[id].actions[9]->type = ACTION_SEPARATOR;
}

static void fill_node(std::int32_t number) {
    // Every place is written and read as it is.
    const auto x = static_cast<float>(number % 16) * 12.25f - 90.0f;
    const auto y = static_cast<float>(number / 16) * 12.25f - 90.0f;
    const std::string name = full_text(30);
    std::int32_t id;
    if (number % 5 == 3) {
        id = add_page(name.c_str(), full_text(260).c_str(), x, y);
    } else if (number % 5 == 4) {
        const std::string label = "_lbl" + std::to_string(node_label_total++) + "lbl_";
        id = add_node(NODE_LABEL, label.c_str(), x, y);
    } else {
        id = add_node(NODE_OBJECT, name.c_str(), x, y);
        fill_actions(id);
    }
    text_copy(node[id].description, full_text(50).c_str());
}

// As many links as there are, up to 255.
static void fill_links() {
    for (std::int32_t step = 1; step < node_total; step++) {
        for (std::int32_t id = 0; id < node_total; id++)
            line_create_from_ids(id, (id + step) % node_total);
    }
}

struct EditLimits : Edit {
    EditLimits() {
        orvanel_options.object_transitions = 0;
        text_copy(scene_page_file_name, PAGE_FILE);
    }
    static void fill(std::int32_t nodes) {
        while (node_total < nodes)
            fill_node(node_total);
        fill_links();
    }
    static void save_and_load() {
        ASSERT_EQ(xml_save_page(PAGE_FILE), 0);
        node_total = line_total = 0;
        ASSERT_EQ(scene_load_page(PAGE_FILE, "Limits"), PAGE_LOADED);
    }
};

TEST_F(EditLimits, texts_reach_their_full_length) {
    fill(5);
    EXPECT_EQ(std::string(node[0].name).size(), 30u);
    EXPECT_EQ(std::string(node[0].description).size(), 50u);
    EXPECT_EQ(std::string(node[0].actions[49]->name).size(), 60u);
    EXPECT_EQ(std::string(node[0].actions[49]->command).size(), 260u);
    EXPECT_EQ(std::string(node[0].actions[49]->icon).size(), 260u);
    EXPECT_EQ(std::string(node[3].actions[0]->command).size(), 260u);
}

TEST_F(EditLimits,
       a_page_of_254_nodes_with_50_actions_each_and_255_links_is_loaded_as_it_was_saved) {
    fill(254);
    ASSERT_EQ(line_total, 255);
    const ModelPage made = read_page();
    save_and_load();
    EXPECT_EQ(first_difference(read_page(), made), "");
}

TEST_F(EditLimits, a_page_of_255_nodes_is_saved_whole_but_is_loaded_without_its_links) {
    fill(255);
    ModelPage made = read_page();
    save_and_load();
    const std::string file = folder.read_text(PAGE_FILE);
    EXPECT_NE(file.find("<!-- object_id 254 -->"), std::string::npos);
    std::size_t links = 0;
    for (std::size_t at = 0; (at = file.find("<from_id>", at)) != std::string::npos; at++)
        links++;
    EXPECT_EQ(links, 255u);
    made.links.clear();
    EXPECT_EQ(first_difference(read_page(), made), "");
}

TEST_F(EditLimits, a_full_page_opened_and_saved_without_a_change_stays_identical) {
    fill(254);
    save_and_load();
    const std::string first = folder.read(PAGE_FILE);
    save_and_load();
    EXPECT_EQ(folder.read(PAGE_FILE), first);
}

TEST_F(EditLimits, a_full_page_comes_back_when_its_deletion_is_undone_and_goes_when_it_is_redone) {
    fill(255);
    const ModelPage made = read_page();
    undo_push();
    redo_reset();
    while (node_total > 0)
        node_delete_node(0);
    undo_pop();
    EXPECT_EQ(first_difference(read_page(), made), "");
    redo_pop();
    EXPECT_EQ(node_total, 0);
    EXPECT_EQ(line_total, 0);
    undo_pop();
    EXPECT_EQ(first_difference(read_page(), made), "");
}

TEST_F(EditLimits, a_full_page_survives_10_changes_undone_and_redone) {
    fill(255);
    const ModelPage first = read_page();
    for (int i = 0; i < 10; i++)
        move_node(i * 5, -100.0f, static_cast<float>(i));
    const ModelPage last = read_page();
    ASSERT_EQ(undo_total, 10);
    while (undo_available() == 0)
        undo_pop();
    EXPECT_EQ(first_difference(read_page(), first), "");
    while (redo_available() == 0)
        redo_pop();
    EXPECT_EQ(first_difference(read_page(), last), "");
}

TEST_F(EditLimits, an_object_with_all_that_fits_is_copied_whole) {
    fill(1);
    clipboard_fill(0, CLIPBOARD_COPIED);
    clipboard_paste(60.0f, 60.0f);
    ModelNode pasted = read_node(node[1]);
    pasted.x = node[0].x;
    pasted.y = node[0].y;
    EXPECT_EQ(describe(pasted), describe(read_node(node[0])));
}
