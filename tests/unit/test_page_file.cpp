#include "page/page_file.h"

#include "assets/model.h"
#include "page/node.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <cstdio>
#include <share.h>
#else
#include "platform/posix/drives.h"

#include <sys/stat.h>
#endif

struct PageFileTest : testing::Test {
    TestFolder folder;

    PageFileTest() {
        text_copy(page_dir_location, folder.path);
        node_init_nodes();
        node_total = 0;
        line_init();
    }
    ~PageFileTest() override {
        node_free_nodes();
        node_total = 0;
        line_init();
        page_dir_location[0] = '\0';
    }
};

static Node *add_node(NodeType type, const char *name, const char *description, float x, float y) {
    Node *added = &node[node_total++];
    added->type = type;
    added->model_id = 0;
    text_copy(added->name, name);
    text_copy(added->description, description);
    added->x = x;
    added->y = y;
    return added;
}

static Action *add_action(Node *record, ActionType type, std::int32_t owner) {
    Action **slot = &record->actions[record->action_count++];
    action_allocate_action(slot);
    (*slot)->type = type;
    (*slot)->owner = owner;
    return *slot;
}

static const PageProperties OWN_COLOUR = {1.5f, -2.25f, {0, 0.1f, 0.25f, 1.0f, 0.8f}};
static const PageProperties DEFAULT_COLOUR = {0.0f, 0.0f, {1, 0.1f, 0.25f, 1.0f, 0.8f}};

static const char HEAD[] = "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
                           "<page>\n"
                           "\t<offv>004</offv>\n"
                           "\t<properties>\n"
                           "\t\t<x_position>1.50</x_position>\n"
                           "\t\t<y_position>-2.25</y_position>\n"
                           "\t\t<colour>\n"
                           "\t\t\t<red>0.10</red>\n"
                           "\t\t\t<green>0.25</green>\n"
                           "\t\t\t<blue>1.00</blue>\n"
                           "\t\t</colour>\n"
                           "\t</properties>\n";

TEST_F(PageFileTest, a_page_of_every_kind_of_item_is_written_byte_for_byte) {
    models_total = 2;
    text_copy(models[1].file_name, "pc.obj");
    Node *object = add_node(NODE_OBJECT, "Server", "The big one", 10.0f, -0.5f);
    object->model_id = 1;
    Action *command = add_action(object, ACTION_COMMAND, 2);
    text_copy(command->name, "Ping");
    text_copy(command->command, "ping $NAME & \"x\"");
    text_copy(command->icon, "ping.exe");
    add_action(object, ACTION_SEPARATOR, 3);
    text_copy(add_action(object, ACTION_SUBMENU, 9)->name, "More");
    Node *page = add_node(NODE_PAGE, "Sub", "", 1.005f, 2.0f);
    text_copy(add_action(page, ACTION_COMMAND, 0)->command, "sub.orvl");
    add_node(NODE_LABEL, "_lbl0lbl_", "A label", 0.0f, 0.0f);
    add_node(NODE_NONE, "none", "none", 7.0f, 8.0f);
    line_create_from_ids(0, 1);
    line_create_from_ids(2, 300);
    EXPECT_EQ(page_format(OWN_COLOUR), std::string(HEAD) +
                                           "\t<node>\n"
                                           "\t\t<type>object</type>\n"
                                           "\t\t<!-- object_id 0 -->\n"
                                           "\t\t<name>Server</name>\n"
                                           "\t\t<description>The big one</description>\n"
                                           "\t\t<x_position>10.00</x_position>\n"
                                           "\t\t<y_position>-0.50</y_position>\n"
                                           "\t\t<model>pc.obj</model>\n"
                                           "\t\t<action>\n"
                                           "\t\t\t<type>command</type>\n"
                                           "\t\t\t<owner>2</owner>\n"
                                           "\t\t\t<name>Ping</name>\n"
                                           "\t\t\t<command>ping $NAME & \"x\"</command>\n"
                                           "\t\t\t<icon>ping.exe</icon>\n"
                                           "\t\t</action>\n"
                                           "\t\t<action>\n"
                                           "\t\t\t<type>separator</type>\n"
                                           "\t\t\t<owner>3</owner>\n"
                                           "\t\t</action>\n"
                                           "\t\t<action>\n"
                                           "\t\t\t<type>submenu</type>\n"
                                           "\t\t\t<name>More</name>\n"
                                           "\t\t</action>\n"
                                           "\t</node>\n"
                                           "\t<node>\n"
                                           "\t\t<type>page</type>\n"
                                           "\t\t<!-- object_id 1 -->\n"
                                           "\t\t<name>Sub</name>\n"
                                           "\t\t<description></description>\n"
                                           "\t\t<x_position>1.00</x_position>\n"
                                           "\t\t<y_position>2.00</y_position>\n"
                                           "\t\t<model></model>\n"
                                           "\t\t<page_file>sub.orvl</page_file>\n"
                                           "\t</node>\n"
                                           "\t<node>\n"
                                           "\t\t<type>label</type>\n"
                                           "\t\t<!-- object_id 2 -->\n"
                                           "\t\t<text>A label</text>\n"
                                           "\t\t<x_position>0.00</x_position>\n"
                                           "\t\t<y_position>0.00</y_position>\n"
                                           "\t</node>\n"
                                           "\t<node>\n"
                                           "\t\t<x_position>7.00</x_position>\n"
                                           "\t\t<y_position>8.00</y_position>\n"
                                           "\t</node>\n"
                                           "\t<node>\n"
                                           "\t\t<type>link</type>\n"
                                           "\t\t<from_id>0</from_id>\n"
                                           "\t\t<to_id>1</to_id>\n"
                                           "\t</node>\n"
                                           "\t<node>\n"
                                           "\t\t<type>link</type>\n"
                                           "\t\t<from_id>2</from_id>\n"
                                           "\t\t<to_id>300</to_id>\n"
                                           "\t</node>\n"
                                           "</page>\n");
    models[1].file_name[0] = '\0';
    models_total = 0;
}

TEST_F(PageFileTest, a_page_in_the_default_colour_is_written_with_minus_one) {
    EXPECT_EQ(page_format(DEFAULT_COLOUR), "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
                                           "<page>\n"
                                           "\t<offv>004</offv>\n"
                                           "\t<properties>\n"
                                           "\t\t<x_position>0.00</x_position>\n"
                                           "\t\t<y_position>0.00</y_position>\n"
                                           "\t\t<colour>\n"
                                           "\t\t\t<red>-1.00</red>\n"
                                           "\t\t\t<green>-1.00</green>\n"
                                           "\t\t\t<blue>-1.00</blue>\n"
                                           "\t\t</colour>\n"
                                           "\t</properties>\n"
                                           "</page>\n");
}

TEST_F(PageFileTest, an_action_slot_that_never_got_memory_is_left_out) {
    Node *object = add_node(NODE_OBJECT, "a", "b", 0.0f, 0.0f);
    object->action_count = 2;
    Node *page = add_node(NODE_PAGE, "c", "d", 0.0f, 0.0f);
    page->action_count = 1;
    const std::string text = page_format(DEFAULT_COLOUR);
    EXPECT_EQ(text.find("<action>"), std::string::npos);
    EXPECT_NE(text.find("<page_file></page_file>"), std::string::npos);
}

TEST_F(PageFileTest, slots_beyond_the_action_count_are_not_written) {
    Node *object = add_node(NODE_OBJECT, "a", "b", 0.0f, 0.0f);
    text_copy(add_action(object, ACTION_COMMAND, 0)->name, "used");
    text_copy(add_action(object, ACTION_COMMAND, 0)->name, "of an earlier page");
    object->action_count = 1;
    const std::string text = page_format(DEFAULT_COLOUR);
    EXPECT_NE(text.find("<name>used</name>"), std::string::npos);
    EXPECT_EQ(text.find("of an earlier page"), std::string::npos);
}

TEST_F(PageFileTest, a_model_that_does_not_exist_is_written_without_a_name) {
    models_total = 1;
    text_copy(models[1].file_name, "gone.obj"); // left behind by a model that is in use no more
    Node *object = add_node(NODE_OBJECT, "a", "b", 0.0f, 0.0f);
    for (const std::int32_t id : {1, 255, 9999, -1, INT32_MIN}) {
        object->model_id = id;
        EXPECT_NE(page_format(DEFAULT_COLOUR).find("<model></model>"), std::string::npos) << id;
    }
    models[1].file_name[0] = '\0';
    models_total = 0;
}

TEST_F(PageFileTest, saving_replaces_the_file_whole) {
    folder.write("a.orvl", std::string(100'000, 'x'));
    EXPECT_EQ(page_save("a.orvl", DEFAULT_COLOUR), 0);
    EXPECT_EQ(folder.read_text("a.orvl"), page_format(DEFAULT_COLOUR));
}

TEST_F(PageFileTest, a_page_file_has_the_platforms_line_ends) {
    EXPECT_EQ(page_save("a.orvl", DEFAULT_COLOUR), 0);
#ifdef _WIN32
    EXPECT_NE(folder.read("a.orvl").find("<page>\r\n"), std::string::npos);
#else
    EXPECT_EQ(folder.read("a.orvl").find('\r'), std::string::npos);
#endif
}

TEST_F(PageFileTest, a_read_only_page_is_not_written_and_stays_as_it_was) {
    folder.write("a.orvl", "old\n");
    folder.set_read_only("a.orvl", true);
    EXPECT_EQ(page_save("a.orvl", DEFAULT_COLOUR), 1);
    EXPECT_EQ(folder.read("a.orvl"), "old\n");
}

TEST_F(PageFileTest, a_page_in_a_missing_folder_is_not_written) {
    EXPECT_EQ(page_save(folder.file("none\\a.orvl").c_str(), DEFAULT_COLOUR), 1);
}

TEST_F(PageFileTest, a_name_without_a_backslash_is_in_the_page_folder_and_one_with_it_is_a_path) {
    char path[PAGE_PATH_SIZE];
    text_copy(page_dir_location, "c:\\pages\\");
    page_path(path, "home.orvl");
    EXPECT_STREQ(path, "c:\\pages\\home.orvl");
    page_path(path, "d:\\other\\home.orvl");
    EXPECT_STREQ(path, "d:\\other\\home.orvl");
    page_path(path, "d:home.orvl");
    EXPECT_STREQ(path, "c:\\pages\\d:home.orvl");
}

TEST_F(PageFileTest, a_path_keeps_1000_characters_of_the_name) {
    char path[PAGE_PATH_SIZE];
    text_copy(page_dir_location, "c:\\");
    page_path(path, std::string(1500, 'n').c_str());
    EXPECT_EQ(std::string(path), std::string("c:\\") + std::string(1000, 'n'));
    page_path(path, (std::string("\\") + std::string(1500, 'n')).c_str());
    EXPECT_EQ(std::string(path), std::string("\\") + std::string(999, 'n'));
}

TEST_F(PageFileTest, a_created_page_holds_its_properties_on_one_line) {
    EXPECT_EQ(xml_create_page("new.orvl"), 0);
    EXPECT_EQ(folder.read_text("new.orvl"),
              "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
              "<page>\n"
              "\t<offv>004</offv>\n"
              "\t<properties>\t<x_position>0.00</x_position>\t<y_position>0.00</y_position>"
              "\t<colour>\t\t<red>-1.00</red>\t\t<green>-1.00</green>\t\t<blue>-1.00</blue>"
              "\t</colour>\t</properties></page>\n");
}

TEST_F(PageFileTest, creating_a_page_over_an_existing_file_returns_1_and_leaves_it_untouched) {
    folder.write("old.orvl", "mine");
    EXPECT_EQ(xml_create_page("old.orvl"), 1);
    EXPECT_EQ(folder.read("old.orvl"), "mine");
}

TEST_F(PageFileTest, creating_a_page_in_a_missing_folder_returns_2) {
    EXPECT_EQ(xml_create_page(folder.file("none\\new.orvl").c_str()), 2);
}

TEST_F(PageFileTest, asking_whether_a_missing_page_is_writable_creates_it_empty) {
    EXPECT_EQ(xml_is_page_writable("new.orvl"), 0);
    EXPECT_TRUE(file_exists(folder.file("new.orvl").c_str()));
    EXPECT_EQ(folder.read("new.orvl"), "");
}

TEST_F(PageFileTest, asking_whether_a_page_is_writable_leaves_its_content) {
    folder.write("a.orvl", "mine");
    EXPECT_EQ(xml_is_page_writable("a.orvl"), 0);
    EXPECT_EQ(folder.read("a.orvl"), "mine");
    folder.set_read_only("a.orvl", true);
    EXPECT_EQ(xml_is_page_writable("a.orvl"), 1);
}

TEST_F(PageFileTest, a_page_that_cannot_be_opened_for_reading_counts_as_deleted) {
    const std::string path = folder.write("a.orvl", "mine");
#ifdef _WIN32
    std::FILE *held = _fsopen(path.c_str(), "rb", _SH_DENYRW);
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(xml_delete_page("a.orvl"), 0);
    std::fclose(held);
#else
    ASSERT_EQ(chmod(native_path(path.c_str()).c_str(), S_IWUSR), 0);
    EXPECT_EQ(xml_delete_page("a.orvl"), 0);
#endif
    EXPECT_TRUE(file_exists(path.c_str()));
}

TEST_F(PageFileTest, a_page_that_cannot_be_deleted_is_reported) {
    folder.write("a.orvl", "mine");
    folder.set_read_only("a.orvl", true);
    EXPECT_EQ(xml_delete_page("a.orvl"), 1);
    EXPECT_EQ(folder.read("a.orvl"), "mine");
}

TEST_F(PageFileTest, deleting_a_page_succeeds_also_when_it_is_not_there) {
    folder.write("a.orvl", "mine");
    EXPECT_EQ(xml_delete_page("a.orvl"), 0);
    EXPECT_FALSE(file_exists(folder.file("a.orvl").c_str()));
    EXPECT_EQ(xml_delete_page("a.orvl"), 0);
}
