// The object dialog worked by keyboard alone, and keys pressed where one would not think of them.
#include "dialogs/dialog_object_actions.h"
#include "dialogs/dialogs.h"
#include "dialogs/rules/action_tree.h"
#include "dialogs/rules/dialog_object_rules.h"
#include "page/node.h"
#include "resources/resource_ids.h"
#include "tests/windows/object_dialog_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

struct ObjectKeyboard : ObjectDialogTest {
    std::int32_t object = -1;

    std::int32_t play_keys(const std::string &tree, std::vector<Step> steps) {
        object = add_object("server", tree);
        dialog_object_set_node(object);
        return play("Object Properties", steps);
    }
    std::int32_t play_actions(const std::string &tree, std::vector<Step> steps) {
        steps.insert(steps.begin(), [](HWND dialog) { show_actions(dialog); });
        return play_keys(tree, steps);
    }
};

static Step key(UINT code) {
    return [=](HWND dialog) { press(dialog, code); };
}

static Step alt(char letter) {
    return [=](HWND dialog) { press_alt(dialog, letter); };
}

static void add_tabs(std::vector<Step> *steps, int times) {
    for (int i = 0; i < times; i++)
        steps->push_back(key(VK_TAB));
}

static Step expect_focus(int id) {
    return [=](HWND) { EXPECT_EQ(GetDlgCtrlID(GetFocus()), id); };
}

// ---- the order of the controls

TEST_F(ObjectKeyboard, tab_goes_through_the_actions_in_reading_order) {
    std::vector<int> order;
    std::vector<Step> steps = {[](HWND) { click_item('b'); }};
    for (int i = 0; i < 12; i++) {
        steps.push_back([&order](HWND dialog) {
            order.push_back(GetDlgCtrlID(GetFocus()));
            press(dialog, VK_TAB);
        });
    }
    play_actions("abc", steps);
    const std::vector<int> expected = {RESOURCE_ACTION_TREE,
                                       RESOURCE_ACTION_NEW,
                                       RESOURCE_ACTION_DELETE,
                                       RESOURCE_ACTION_UP,
                                       RESOURCE_ACTION_DOWN,
                                       RESOURCE_ACTION_TYPE,
                                       RESOURCE_ACTION_COMMAND,
                                       RESOURCE_ACTION_BROWSE,
                                       RESOURCE_ACTION_TEST,
                                       IDOK,
                                       IDCANCEL,
                                       RESOURCE_OBJECT_TAB};
    EXPECT_EQ(order, expected);
}

// ---- Enter

TEST_F(ObjectKeyboard, enter_presses_the_button_of_the_page_that_has_the_focus) {
    std::vector<Step> steps;
    add_tabs(&steps, 1);
    steps.insert(steps.end(),
                 {expect_focus(RESOURCE_ACTION_NEW), key(VK_RETURN),
                  [](HWND) {
                      EXPECT_EQ(tree_shown(), "ab");
                      EXPECT_NE(label_edit_shown(), nullptr);
                  },
                  key(VK_RETURN), [](HWND) { EXPECT_EQ(label_edit_shown(), nullptr); }});
    EXPECT_EQ(play_actions("a", steps), DIALOG_CANCEL);
}

TEST_F(ObjectKeyboard, enter_on_the_arrow_of_the_models_steps_to_the_next) {
    std::vector<Step> steps;
    add_tabs(&steps, 5);
    steps.insert(steps.end(), {expect_focus(RESOURCE_MODEL_NEXT), key(VK_RETURN), [](HWND) {
                                   EXPECT_EQ(shown_text(details(), RESOURCE_MODEL_NAME), "Printer");
                               }});
    EXPECT_EQ(play_keys("a", steps), DIALOG_CANCEL);
}

TEST_F(ObjectKeyboard, enter_in_a_field_or_the_tree_is_ok) {
    EXPECT_EQ(play_keys("a", {key(VK_RETURN)}), DIALOG_OK);
    EXPECT_EQ(play_actions("a", {key(VK_RETURN)}), DIALOG_OK);
}

// ---- access keys

TEST_F(ObjectKeyboard, access_keys_go_to_the_fields) {
    play_keys("a", {alt('E'), expect_focus(RESOURCE_OBJECT_DESCRIPTION), alt('G'),
                    expect_focus(RESOURCE_MODEL_CATEGORY), alt('N'),
                    expect_focus(RESOURCE_OBJECT_NAME)});
    play_actions("a", {alt('T'), expect_focus(RESOURCE_ACTION_TYPE), alt('P'),
                       expect_focus(RESOURCE_ACTION_COMMAND)});
}

TEST_F(ObjectKeyboard, access_keys_of_the_page_that_is_hidden_do_nothing) {
    EXPECT_EQ(play_keys("ab", {alt('L'), alt('D'), alt('W'), alt('S'),
                               [](HWND) { EXPECT_EQ(tree_shown(), "ab"); },
                               expect_focus(RESOURCE_OBJECT_NAME)}),
              DIALOG_CANCEL);
    EXPECT_TRUE(window.script.shown().empty());
}

TEST_F(ObjectKeyboard, new_by_its_access_key_keeps_the_label_that_is_being_edited) {
    EXPECT_EQ(play_actions("a", {key(VK_F2), [](HWND) { type_label("Kept"); }, alt('W'),
                                 [](HWND) {
                                     EXPECT_EQ(tree_shown(), "ab");
                                     EXPECT_EQ(label_shown('a'), "Kept");
                                     type_label("Second");
                                 },
                                 key(VK_RETURN), key(VK_RETURN)}),
              DIALOG_OK);
    ASSERT_EQ(node[object].action_count, 2);
    EXPECT_STREQ(node[object].actions[0]->name, "Kept");
    EXPECT_STREQ(node[object].actions[1]->name, "Second");
}

// ---- labels and the end of the dialog

TEST_F(ObjectKeyboard, a_click_on_ok_keeps_the_label_that_is_being_edited) {
    EXPECT_EQ(play_actions("a", {key(VK_F2), [](HWND) { type_label("Kept"); },
                                 [](HWND dialog) { click(dialog, IDOK); }}),
              DIALOG_OK);
    EXPECT_STREQ(node[object].actions[0]->name, "Kept");
}

TEST_F(ObjectKeyboard, the_other_tab_keeps_the_label_that_is_being_edited) {
    EXPECT_EQ(play_actions("a", {key(VK_F2), [](HWND) { type_label("Kept"); },
                                 [](HWND) { EXPECT_TRUE(press_with_control(VK_TAB)); },
                                 [](HWND) {
                                     EXPECT_TRUE(has_focus(details(), RESOURCE_OBJECT_NAME));
                                     EXPECT_EQ(label_edit_shown(), nullptr);
                                     EXPECT_EQ(label_shown('a'), "Kept");
                                 },
                                 key(VK_RETURN)}),
              DIALOG_OK);
    EXPECT_STREQ(node[object].actions[0]->name, "Kept");
}

TEST_F(ObjectKeyboard, a_click_on_cancel_closes_also_while_a_label_is_being_edited) {
    EXPECT_EQ(play_actions("a", {key(VK_F2), [](HWND) { type_label("Dropped"); },
                                 [](HWND dialog) { click(dialog, IDCANCEL); }}),
              DIALOG_CANCEL);
    EXPECT_STREQ(node[object].actions[0]->name, "a");
}

TEST_F(ObjectKeyboard, the_close_button_closes_also_while_a_label_is_being_edited) {
    EXPECT_EQ(play_actions("a", {key(VK_F2), [](HWND) { type_label("Dropped"); },
                                 [](HWND dialog) {
                                     SendMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
                                     EXPECT_FALSE(IsWindowVisible(dialog));
                                 }}),
              DIALOG_CANCEL);
    EXPECT_STREQ(node[object].actions[0]->name, "a");
}
