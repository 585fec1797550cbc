#include "scene/interaction.h"

#include "platform/window.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

TEST(Interaction, begins_in_view_mode_with_nothing_chosen_or_held) {
    app_mode = APP_EDIT;
    app_line_draw_mode = app_align_mode = app_node_grabbed = 1;
    app_line_from_node = app_line_to_node = app_align_from_node = app_align_to_node = 7;
    keys[17] = 1;
    interaction_init();
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_EQ(app_line_draw_mode, 0);
    EXPECT_EQ(app_align_mode, 0);
    EXPECT_EQ(app_node_grabbed, 0);
    EXPECT_EQ(app_line_from_node, -1);
    EXPECT_EQ(app_line_to_node, -1);
    EXPECT_EQ(app_align_from_node, -1);
    EXPECT_EQ(app_align_to_node, -1);
    EXPECT_EQ(keys[17], 0);
}

TEST(Mouse, starts_where_the_pointer_is_as_current_and_previous_position) {
#ifndef _WIN32
    recorder.cursor_x = 12;
    recorder.cursor_y = 34;
#endif
    std::int32_t x, y;
    window_cursor_position(&x, &y);
    mouse = {MOUSE_LEFT | MOUSE_MOVE, -5, -6, -7, -8};
    mouse_init();
    EXPECT_EQ(mouse.flags, 0);
    EXPECT_EQ(mouse.x, x);
    EXPECT_EQ(mouse.y, y);
    EXPECT_EQ(mouse.previous_x, x);
    EXPECT_EQ(mouse.previous_y, y);
}

TEST(Mouse, recording_a_position_keeps_the_one_before) {
    mouse = {};
    mouse_record_position(10, 20);
    mouse_record_position(30, 40);
    EXPECT_EQ(mouse.previous_x, 10);
    EXPECT_EQ(mouse.previous_y, 20);
    EXPECT_EQ(mouse.x, 30);
    EXPECT_EQ(mouse.y, 40);
}

TEST(Mouse, a_position_left_of_or_above_the_window_is_negative) {
    mouse_record_position(0xffff, 0x8000);
    EXPECT_EQ(mouse.x, -1);
    EXPECT_EQ(mouse.y, -32768);
    mouse_record_position(0x7fff, 0);
    EXPECT_EQ(mouse.x, 32767);
    EXPECT_EQ(mouse.y, 0);
}
