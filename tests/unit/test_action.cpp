#include "page/action.h"

#include "platform/text.h"

#include <gtest/gtest.h>

#include <string>

static Action command_action() {
    Action action = {};
    action.type = ACTION_COMMAND;
    action.owner = 3;
    text_copy(action.name, "Notepad");
    text_copy(action.command, "notepad.exe $NAME");
    text_copy(action.icon, "notepad.ico");
    action.menu_slot = 7;
    return action;
}

struct Slot {
    Action *action = nullptr;
    ~Slot() {
        action_free_action(&action);
    }
};

TEST(Action, allocating_fills_an_empty_slot_with_a_record_of_zeros) {
    Slot slot;
    action_allocate_action(&slot.action);
    ASSERT_NE(slot.action, nullptr);
    EXPECT_EQ(slot.action->type, ACTION_COMMAND);
    EXPECT_EQ(slot.action->owner, 0);
    EXPECT_STREQ(slot.action->name, "");
    EXPECT_STREQ(slot.action->command, "");
    EXPECT_STREQ(slot.action->icon, "");
    EXPECT_EQ(slot.action->menu_slot, 0);
}

TEST(Action, allocating_keeps_the_record_of_a_slot_in_use) {
    Slot slot;
    action_allocate_action(&slot.action);
    Action *first = slot.action;
    text_copy(slot.action->name, "kept");
    action_allocate_action(&slot.action);
    EXPECT_EQ(slot.action, first);
    EXPECT_STREQ(slot.action->name, "kept");
}

TEST(Action, copying_a_command_takes_every_field) {
    const Action source = command_action();
    Action target = {};
    action_copy_action(&target, &source);
    EXPECT_EQ(target.type, ACTION_COMMAND);
    EXPECT_EQ(target.owner, 3);
    EXPECT_STREQ(target.name, "Notepad");
    EXPECT_STREQ(target.command, "notepad.exe $NAME");
    EXPECT_STREQ(target.icon, "notepad.ico");
    EXPECT_EQ(target.menu_slot, 7);
}

TEST(Action, copying_a_submenu_takes_its_name_and_empties_command_and_icon) {
    Action source = command_action();
    source.type = ACTION_SUBMENU;
    Action target = command_action();
    text_copy(target.name, "old");
    action_copy_action(&target, &source);
    EXPECT_EQ(target.type, ACTION_SUBMENU);
    EXPECT_STREQ(target.name, "Notepad");
    EXPECT_STREQ(target.command, "");
    EXPECT_STREQ(target.icon, "");
    EXPECT_EQ(target.menu_slot, 7);
}

TEST(Action, copying_a_separator_empties_all_texts_but_takes_owner_and_menu_slot) {
    Action source = command_action();
    source.type = ACTION_SEPARATOR;
    Action target = command_action();
    target.owner = 0;
    target.menu_slot = 0;
    action_copy_action(&target, &source);
    EXPECT_EQ(target.type, ACTION_SEPARATOR);
    EXPECT_EQ(target.owner, 3);
    EXPECT_EQ(target.menu_slot, 7);
    EXPECT_STREQ(target.name, "");
    EXPECT_STREQ(target.command, "");
    EXPECT_STREQ(target.icon, "");
}

TEST(Action, copying_takes_the_longest_texts_whole) {
    Action source = {};
    text_copy(source.name, std::string(60, 'n').c_str());
    text_copy(source.command, std::string(260, 'c').c_str());
    text_copy(source.icon, std::string(260, 'i').c_str());
    Action target = {};
    action_copy_action(&target, &source);
    EXPECT_EQ(std::string(target.name), std::string(60, 'n'));
    EXPECT_EQ(std::string(target.command), std::string(260, 'c'));
    EXPECT_EQ(std::string(target.icon), std::string(260, 'i'));
}

TEST(Action, copying_onto_itself_changes_nothing) {
    Action action = command_action();
    action_copy_action(&action, &action);
    EXPECT_STREQ(action.name, "Notepad");
    EXPECT_STREQ(action.command, "notepad.exe $NAME");
}

TEST(Action, freeing_leaves_the_slot_to_the_caller_and_takes_an_empty_one) {
    Action *slot = nullptr;
    action_free_action(&slot);
    EXPECT_EQ(slot, nullptr);
    action_allocate_action(&slot);
    action_free_action(&slot);
    EXPECT_NE(slot, nullptr);
}
