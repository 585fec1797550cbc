#include "app/mouse_trails.h"

#include "platform/window.h"

#include <gtest/gtest.h>

// What the user of this machine has is put back in any case.
struct MouseTrails : testing::Test {
    std::int32_t before = screen_mouse_trails();

    ~MouseTrails() override {
        screen_set_mouse_trails(before);
    }
};

TEST_F(MouseTrails, they_are_off_while_the_program_runs_and_back_afterwards) {
    screen_set_mouse_trails(7);
    if (screen_mouse_trails() != 7)
        GTEST_SKIP() << "this system has no mouse trails";
    mouse_trails_init();
    EXPECT_EQ(7, mouse_trails);
    EXPECT_EQ(0, screen_mouse_trails());
    mouse_trails_stop();
    EXPECT_EQ(7, screen_mouse_trails());
}

TEST_F(MouseTrails, a_user_without_trails_keeps_none) {
    screen_set_mouse_trails(0);
    mouse_trails_init();
    EXPECT_EQ(0, mouse_trails);
    screen_set_mouse_trails(5); // the user's own wish of today
    const std::int32_t wish = screen_mouse_trails();
    mouse_trails_stop();
    EXPECT_EQ(wish, screen_mouse_trails());
}
