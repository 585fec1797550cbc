// The template pages: every file of pages/ as a new user first meets it.
#include "scene/scene_page.h"

#include "assets/model.h"
#include "page/options.h"
#include "page/page_file.h"
#include "platform/files.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/scene.h"
#include "support/test_places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>
#include <string>
#include <vector>

// The window shows about this much of the floor at the zoom level it starts with.
static constexpr float VIEW_HALF_WIDTH = 38.0f;
static constexpr float VIEW_HALF_HEIGHT = 29.0f;
static constexpr float GRID = 2.5f;
// Floor units that a character takes on average at that level.
static constexpr float NAME_CHARACTER = 0.5f;
static constexpr float DESCRIPTION_CHARACTER = 0.34f;
static constexpr float CAPTION_HEIGHT = 2.5f; // name and description below the footprint

static std::string bytes_of(const char *name) {
    std::vector<char> bytes;
    char path[PATH_SIZE];
    text_format(path, sizeof path, "%s%s", page_dir_location, name);
    EXPECT_EQ(0, file_read(path, &bytes)) << path;
    std::string text(bytes.begin(), bytes.end());
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

class TemplatePages : public testing::TestWithParam<const char *> {
protected:
    void SetUp() override {
        text_copy(object_dir_location, ORVANEL_SOURCE_DIR "\\models\\");
        text_copy(page_dir_location, ORVANEL_SOURCE_DIR "\\pages\\");
        options_set_defaults();
        model_init();
        node_init_nodes();
        template_object_init();
        ASSERT_EQ(PAGE_LOADED, scene_load_page(GetParam(), "title"));
    }

    void TearDown() override {
        node_free_nodes();
        template_object_free();
        model_unload_models();
    }
};

static bool is_model_node(const Node &entry) {
    return entry.type == NODE_OBJECT || entry.type == NODE_PAGE;
}

// Node i with its captions, relative to the floor.
struct Box {
    float left, right, bottom, top;
};

static float text_width(const char *text, float character) {
    return character * static_cast<float>(std::strlen(text));
}

static Box footprint(const Node &entry) {
    if (is_model_node(entry))
        return {entry.x + entry.dimensions[EXTENT_LEFT], entry.x + entry.dimensions[EXTENT_RIGHT],
                entry.y + entry.dimensions[EXTENT_NEAR], entry.y + entry.dimensions[EXTENT_FAR]};
    const float half = text_width(entry.description, NAME_CHARACTER) / 2.0f;
    return {entry.x - half, entry.x + half, entry.y - 0.5f, entry.y + 0.5f};
}

static Box with_captions(const Node &entry) {
    Box box = footprint(entry);
    if (is_model_node(entry)) {
        const float half = std::max(text_width(entry.name, NAME_CHARACTER),
                                    text_width(entry.description, DESCRIPTION_CHARACTER)) /
                           2.0f;
        box = {std::min(box.left, entry.x - half), std::max(box.right, entry.x + half),
               box.bottom - CAPTION_HEIGHT, box.top};
    }
    return box;
}

static bool overlap(const Box &a, const Box &b) {
    return a.left < b.right && b.left < a.right && a.bottom < b.top && b.bottom < a.top;
}

TEST_P(TemplatePages, a_page_is_written_back_byte_for_byte) {
    PageProperties properties = {scene_floor.home_x, scene_floor.home_y, scene_floor.colour};
    EXPECT_EQ(bytes_of(GetParam()), page_format(properties));
}

TEST_P(TemplatePages, every_model_on_the_page_is_shipped) {
    for (int i = 0; i < node_total; i++) {
        if (is_model_node(node[i])) { // the built-in model stands in for one that is missing
            EXPECT_NE(0, node[i].model_id) << node[i].name;
        }
    }
}

TEST_P(TemplatePages, every_page_object_opens_a_shipped_page) {
    for (int i = 0; i < node_total; i++) {
        if (node[i].type == NODE_PAGE) {
            EXPECT_FALSE(bytes_of(node[i].actions[0]->command).empty()) << node[i].name;
        }
    }
}

TEST_P(TemplatePages, every_link_joins_two_different_objects_of_the_page) {
    EXPECT_GT(line_total, 0);
    for (int i = 0; i < line_total; i++) {
        ASSERT_TRUE(node_is_live(line[i].from)) << i;
        ASSERT_TRUE(node_is_live(line[i].to)) << i;
        EXPECT_NE(line[i].from, line[i].to);
        EXPECT_TRUE(is_model_node(node[line[i].from]));
        EXPECT_TRUE(is_model_node(node[line[i].to]));
    }
}

TEST_P(TemplatePages, every_link_of_the_file_is_taken) {
    const std::string text = bytes_of(GetParam());
    int written = 0;
    for (std::size_t p = 0; (p = text.find("<type>link</type>", p)) != std::string::npos; p++)
        written++;
    EXPECT_EQ(written, line_total);
}

TEST_P(TemplatePages, no_two_footprints_overlap_captions_included) {
    for (int i = 0; i < node_total; i++) {
        for (int j = 0; j < i; j++)
            EXPECT_FALSE(overlap(with_captions(node[i]), with_captions(node[j])))
                << node[i].name << " and " << node[j].name;
    }
}

TEST_P(TemplatePages, every_object_has_room_to_spin) {
    for (int i = 0; i < node_total; i++) {
        if (is_model_node(node[i])) {
            EXPECT_EQ(0, scene_check_for_rotation_space(i)) << node[i].name;
        }
    }
}

TEST_P(TemplatePages, everything_stands_on_the_grid_within_the_first_view) {
    for (int i = 0; i < node_total; i++) {
        EXPECT_EQ(0.0f, std::remainder(node[i].x, GRID)) << i;
        EXPECT_EQ(0.0f, std::remainder(node[i].y, GRID)) << i;
        const Box box = with_captions(node[i]);
        EXPECT_GT(box.left, -VIEW_HALF_WIDTH) << i;
        EXPECT_LT(box.right, VIEW_HALF_WIDTH) << i;
        EXPECT_GT(box.bottom, -VIEW_HALF_HEIGHT) << i;
        EXPECT_LT(box.top, VIEW_HALF_HEIGHT) << i;
    }
}

TEST_P(TemplatePages, names_are_unique_so_that_every_object_can_be_linked_by_name) {
    std::set<std::string> names;
    for (int i = 0; i < node_total; i++)
        EXPECT_TRUE(names.insert(node[i].name).second) << node[i].name;
}

static int submenus_of(const Node &entry) {
    int total = 0;
    for (int k = 0; k < entry.action_count; k++) {
        if (entry.actions[k]->type == ACTION_SUBMENU)
            total++;
    }
    return total;
}

static bool holds_a_command(const Node &entry, int submenu) {
    for (int k = 0; k < entry.action_count; k++) {
        if (entry.actions[k]->type == ACTION_COMMAND && entry.actions[k]->owner == submenu)
            return true;
    }
    return false;
}

// What belongs to a submenu that is not there stands in the top menu, beside an empty submenu.
TEST_P(TemplatePages, every_submenu_holds_commands_and_nothing_belongs_to_one_that_is_not_there) {
    for (int i = 0; i < node_total; i++) {
        const Node &entry = node[i];
        if (entry.type != NODE_OBJECT)
            continue;
        const int submenus = submenus_of(entry);
        for (int k = 0; k < entry.action_count; k++) {
            EXPECT_GE(entry.actions[k]->owner, 0) << entry.name << k;
            EXPECT_LE(entry.actions[k]->owner, submenus) << entry.name << k;
        }
        for (int number = 1; number <= submenus; number++)
            EXPECT_TRUE(holds_a_command(entry, number)) << entry.name << number;
    }
}

TEST_P(TemplatePages, every_action_does_something) {
    for (int i = 0; i < node_total; i++) {
        const Node &entry = node[i];
        if (entry.type != NODE_OBJECT)
            continue;
        ASSERT_GT(entry.action_count, 0) << entry.name;
        EXPECT_EQ(ACTION_COMMAND, entry.actions[0]->type) << entry.name << ": double click runs it";
        for (int k = 0; k < entry.action_count; k++) {
            const Action &action = *entry.actions[k];
            if (action.type != ACTION_SEPARATOR) {
                EXPECT_STRNE("", action.name) << entry.name << k;
            }
            if (action.type == ACTION_COMMAND) {
                EXPECT_STRNE("", action.command) << entry.name << k;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(shipped, TemplatePages,
                         testing::Values("home.orvl", "consoles.orvl", "network.orvl",
                                         "documents.orvl"),
                         [](const auto &test) {
                             const std::string name = test.param;
                             return name.substr(0, name.find('.'));
                         });

TEST(TemplatePageFolder, every_page_file_is_tested_and_reached_from_home) {
    text_copy(page_dir_location, ORVANEL_SOURCE_DIR "\\pages\\");
    char pattern[PATH_SIZE];
    text_format(pattern, sizeof pattern, "%s*", page_dir_location);
    const FolderScanHandle scan = folder_scan_open(pattern);
    ASSERT_NE(nullptr, scan);
    std::set<std::string> files;
    FolderEntry entry;
    while (folder_scan_next(scan.get(), &entry)) {
        if (!entry.is_folder)
            files.insert(entry.name);
    }
    EXPECT_EQ(
        (std::set<std::string>{"consoles.orvl", "documents.orvl", "home.orvl", "network.orvl"}),
        files);
    const std::string home = bytes_of("home.orvl");
    for (const std::string &name : files) {
        if (name != "home.orvl") {
            EXPECT_NE(std::string::npos, home.find("<page_file>" + name + "</page_file>")) << name;
        }
    }
}
