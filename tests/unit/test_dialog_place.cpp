#include "dialogs/rules/dialog_place.h"

#include <gtest/gtest.h>

static constexpr std::int32_t SCREEN_WIDTH = 1920, SCREEN_HEIGHT = 1080;

// A dialog of this size, wherever it stands now.
static PlacePoint place(const PlaceArea &client, std::int32_t width, std::int32_t height) {
    return dialog_place_on_parent(client, {7, 9, 7 + width, 9 + height}, SCREEN_WIDTH,
                                  SCREEN_HEIGHT);
}

TEST(DialogPlace, Its_centre_comes_to_the_centre_of_the_client_area) {
    const PlacePoint point = place({320, 50, 1600, 1030}, 300, 200);
    EXPECT_EQ(point.x, 960 - 150);
    EXPECT_EQ(point.y, 540 - 100);
}

TEST(DialogPlace, A_window_away_from_the_corner_takes_its_dialog_along) {
    const PlacePoint point = place({1000, 400, 1400, 800}, 300, 200);
    EXPECT_EQ(point.x, 1200 - 150);
    EXPECT_EQ(point.y, 600 - 100);
}

TEST(
    DialogPlace,
    A_dialog_larger_than_the_space_to_the_right_of_the_parents_centre_is_pulled_back_so_that_50_pixels_remain_to_the_screen_edge) {
    const PlacePoint point = place({1800, 300, 1910, 700}, 300, 200);
    EXPECT_EQ(point.x, SCREEN_WIDTH - 300 - 50);
    EXPECT_EQ(point.y, 500 - 100);
}

TEST(DialogPlace, A_dialog_past_the_left_edge_is_moved_to_50_pixels) {
    const PlacePoint point = place({-400, 300, 200, 700}, 300, 200);
    EXPECT_EQ(point.x, 50);
    EXPECT_EQ(point.y, 500 - 100);
}

TEST(DialogPlace, A_dialog_past_the_bottom_edge_is_pulled_back_and_50_pixels_remain) {
    const PlacePoint point = place({300, 900, 700, 1070}, 300, 200);
    EXPECT_EQ(point.x, 500 - 150);
    EXPECT_EQ(point.y, SCREEN_HEIGHT - 200 - 50);
}

TEST(DialogPlace, A_dialog_past_the_top_edge_is_moved_to_50_pixels) {
    const PlacePoint point = place({300, -300, 700, 200}, 300, 200);
    EXPECT_EQ(point.x, 500 - 150);
    EXPECT_EQ(point.y, 50);
}

TEST(DialogPlace, A_dialog_that_just_touches_an_edge_stays) {
    const PlacePoint near = place({0, 0, 300, 200}, 300, 200);
    EXPECT_EQ(near.x, 0);
    EXPECT_EQ(near.y, 0);
    const PlacePoint far = place({1620, 880, 1920, 1080}, 300, 200);
    EXPECT_EQ(far.x, 1620);
    EXPECT_EQ(far.y, 880);
}

TEST(DialogPlace, A_dialog_larger_than_the_screen_shows_its_top_left_part) {
    const PlacePoint point = place({0, 0, 1920, 1080}, 3000, 2000);
    EXPECT_EQ(point.x, 50);
    EXPECT_EQ(point.y, 50);
}
