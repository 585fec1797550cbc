// The commands that open the object dialog, with the real dialog: the undo history around it.
#include "actions/command.h"
#include "app/commands.h"
#include "app/main_window.h"
#include "editing/page_edit.h"
#include "editing/undo.h"
#include "page/node.h"
#include "resources/resource_ids.h"
#include "scene/interaction.h"
#include "scene/scene_page.h"
#include "tests/windows/object_dialog_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// The page in edit mode; the menus were opened in the middle of it.
struct ObjectCommands : ObjectDialogTest {
    ObjectCommands() {
        page_edit_begin();
        RECT client = {};
        GetClientRect(hWnd, &client);
        pre_dialog_mouse = {client.right / 2, client.bottom / 2};
    }

    static std::int32_t add_in_the_middle(const char *name, const std::string &tree) {
        const std::int32_t id = add_object(name, tree);
        node[id].x = node[id].y = 0.0f;
        return id;
    }
    static void play_command(std::int32_t command, const char *title,
                             const std::vector<Step> &steps) {
        std::vector<DialogStep> wanted;
        for (const Step &step : steps)
            wanted.push_back({title, step});
        DialogPlayer player(wanted);
        command_run(command);
        EXPECT_TRUE(player.done());
    }
    static void play_new(const std::vector<Step> &steps) {
        play_command(COMMAND_NEW_OBJECT, "New Object", steps);
    }
    static void play_properties(const std::vector<Step> &steps) {
        play_command(COMMAND_PROPERTIES, "Object Properties", steps);
    }
};

static void ok(HWND dialog) {
    click(dialog, IDOK);
}

static void cancel(HWND dialog) {
    click(dialog, IDCANCEL);
}

static void enter_name(HWND) {
    type(details(), RESOURCE_OBJECT_NAME, "printer");
}

TEST_F(ObjectCommands, a_new_object_stands_where_the_menu_was_opened_and_can_be_undone) {
    play_new({enter_name, ok});
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "printer");
    EXPECT_NEAR(node[0].x, 0.0f, 0.1f);
    EXPECT_NEAR(node[0].y, 0.0f, 0.1f);
    EXPECT_EQ(undo_total, 1);
    EXPECT_EQ(scene_changed, 1);
    undo_pop();
    EXPECT_EQ(node_total, 0);
    EXPECT_EQ(redo_total, 1);
}

TEST_F(ObjectCommands, cancelling_a_new_object_leaves_no_entry_and_the_redo_stack_emptied) {
    redo_push();
    play_new({enter_name, cancel});
    EXPECT_EQ(node_total, 0);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(redo_total, 0);
    EXPECT_EQ(scene_changed, 0);
}

TEST_F(ObjectCommands, properties_closed_without_a_change_leave_no_entry) {
    const std::int32_t id = add_in_the_middle("server", "aB[c]");
    play_properties({ok});
    EXPECT_EQ(undo_total, 0);
    play_properties({enter_name, cancel});
    EXPECT_EQ(undo_total, 0);
    EXPECT_STREQ(node[id].name, "server");
}

TEST_F(ObjectCommands, properties_that_changed_the_object_can_be_undone) {
    const std::int32_t id = add_in_the_middle("server", "aB[c]");
    play_properties(
        {enter_name, show_actions, [](HWND) { click(actions(), RESOURCE_ACTION_DELETE); }, ok});
    EXPECT_STREQ(node[id].name, "printer");
    EXPECT_EQ(node[id].action_count, 2);
    EXPECT_EQ(undo_total, 1);
    undo_pop();
    EXPECT_STREQ(node[id].name, "server");
    EXPECT_EQ(node[id].action_count, 3);
}

TEST_F(ObjectCommands, editing_only_an_actions_command_leaves_no_entry) {
    const std::int32_t id = add_in_the_middle("server", "a");
    play_properties(
        {show_actions, [](HWND) { type(actions(), RESOURCE_ACTION_COMMAND, "other"); }, ok});
    EXPECT_STREQ(node[id].actions[0]->command, "other");
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 1) << "it is saved all the same";
}
