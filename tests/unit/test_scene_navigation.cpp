#include "scene/scene_navigation.h"

#include "assets/tex_font.h"
#include "page/options.h"
#include "platform/gl.h"
#include "platform/resource.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "scene/scene_text.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

#include <cmath>

static NavigationButton &back = scene_floor.button[0];
static NavigationButton &home = scene_floor.button[1];

struct Navigation : testing::Test {
    SceneStage stage;

    Navigation() {
        text_copy(scene_page_title, "Servers");
    }

    static void show_level(std::int32_t depth) {
        scene_stack_depth = depth;
        stage_draw();
    }

    static std::int32_t over(const NavigationButton &button, float dx, float dy) {
        return scene_mouse_over_button(static_cast<std::int32_t>(button.x + dx),
                                       static_cast<std::int32_t>(button.y + dy));
    }

    ~Navigation() override {
        scene_stack_depth = 0;
        open_mode = 0;
    }
};

// The artwork as the button should show it at a pixel: half 0 normal, 1 highlighted.
static Pixel artwork(int resource, std::int32_t half, std::int32_t x, std::int32_t y) {
    BitmapPixels bitmap;
    EXPECT_EQ(resource_bitmap(resource, &bitmap), 0);
    const std::size_t at =
        static_cast<std::size_t>(((bitmap.height - 1 - y) * bitmap.width + half * 32 + x) * 3);
    return {bitmap.bytes[at + 2], bitmap.bytes[at + 1], bitmap.bytes[at]};
}

// Pixels of the button on the screen that are neither the artwork nor, where that is transparent,
// the background.
static int differing_pixels(const NavigationButton &button, int resource, std::int32_t half,
                            Pixel background) {
    int differing = 0;
    for (std::int32_t y = 0; y < 32; y++) {
        for (std::int32_t x = 0; x < 32; x++) {
            const Pixel art = artwork(resource, half, x, y);
            const Pixel expected = art.red == 0 ? background : art;
            differing +=
                gl_count_differing(static_cast<std::int32_t>(button.x) + x,
                                   static_cast<std::int32_t>(button.y) + y, 1, 1, expected, 1);
        }
    }
    return differing;
}

// Only the buttons, over one plain colour.
static void draw_buttons_over(float red, float green, float blue) {
    glClearColor(red, green, blue, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    scene_draw_navigation_buttons();
}

// ---- which buttons are there, and where

TEST_F(Navigation, on_the_home_page_no_buttons_are_drawn_and_no_button_hit_is_tested) {
    show_level(0);
    EXPECT_EQ(back.shown, 0);
    EXPECT_EQ(home.shown, 0);
    draw_buttons_over(0.5f, 0.5f, 0.5f);
    EXPECT_EQ(gl_count_differing(0, 0, SceneStage::WIDTH, SceneStage::HEIGHT, {128, 128, 128}, 1),
              0);
    EXPECT_EQ(over(back, 5.0f, 5.0f), -1);
    EXPECT_EQ(selection(5, 5), PICK_NOTHING);
}

TEST_F(Navigation, on_the_first_sub_page_only_back_is_shown) {
    show_level(1);
    EXPECT_EQ(back.shown, 1);
    EXPECT_EQ(home.shown, 0);
}

TEST_F(Navigation, from_the_second_level_on_back_and_home_stand_39_pixels_apart) {
    for (const std::int32_t depth : {2, 3, 20}) {
        show_level(depth);
        EXPECT_EQ(back.shown, 1);
        EXPECT_EQ(home.shown, 1);
        EXPECT_EQ(home.x, back.x + 39.0f);
        EXPECT_EQ(back.y, 14.0f);
        EXPECT_EQ(home.y, 14.0f);
    }
}

TEST_F(Navigation, a_page_from_the_command_line_shows_only_home_where_back_would_stand) {
    show_level(1);
    const float back_x = back.x;
    open_mode = 1;
    show_level(1);
    EXPECT_EQ(back.shown, 0);
    EXPECT_EQ(home.shown, 1);
    EXPECT_EQ(home.x, back_x);
    EXPECT_EQ(over(home, 5.0f, 5.0f), NAVIGATION_HOME);
}

TEST_F(Navigation, buttons_start_11_pixels_after_the_title_in_texture_fonts) {
    ASSERT_TRUE(scene_uses_texture_fonts());
    show_level(1);
    EXPECT_EQ(back.x,
              static_cast<float>(tex_font_get_string_width(&tahoma_40_normal, "Servers")) + 11.0f);
}

TEST_F(Navigation, buttons_start_11_pixels_after_the_title_in_outline_fonts) {
    orvanel_options.text_shadows = 0;
    show_level(1);
    ASSERT_FALSE(scene_uses_texture_fonts());
    EXPECT_EQ(back.x,
              std::round(font_get_string_width(&font_page_title, "Servers") * 24.0f + 11.0f));
    EXPECT_GT(back.x, 50.0f);
}

TEST_F(Navigation, without_a_title_buttons_stand_at_the_window_edge) {
    for (const std::int32_t shadows : {0, 1}) {
        orvanel_options.text_shadows = shadows;
        text_copy(scene_page_title, "");
        show_level(2);
        EXPECT_EQ(back.x, 11.0f);
        EXPECT_EQ(home.x, 50.0f);
    }
}

TEST_F(Navigation, a_percent_sign_in_the_title_is_only_a_character) {
    text_copy(scene_page_title, "%s%s%n");
    show_level(1);
    EXPECT_GT(back.x, 11.0f);
}

// ---- hit test

TEST_F(Navigation, a_button_is_hit_within_its_32_pixels_edges_included) {
    show_level(2);
    EXPECT_EQ(over(back, 0.0f, 0.0f), NAVIGATION_BACK);
    EXPECT_EQ(over(back, 32.0f, 32.0f), NAVIGATION_BACK);
    EXPECT_EQ(over(home, 0.0f, 32.0f), NAVIGATION_HOME);
    EXPECT_EQ(over(home, 32.0f, 0.0f), NAVIGATION_HOME);
    EXPECT_EQ(over(back, -1.0f, 5.0f), -1);
    EXPECT_EQ(over(back, 33.0f, 5.0f), -1);
    EXPECT_EQ(over(back, 5.0f, -1.0f), -1);
    EXPECT_EQ(over(back, 5.0f, 33.0f), -1);
}

TEST_F(Navigation, where_both_buttons_match_home_wins) {
    show_level(2);
    home.x = back.x;
    EXPECT_EQ(over(back, 5.0f, 5.0f), NAVIGATION_HOME);
    EXPECT_EQ(back.hover, 1);
}

TEST_F(Navigation, a_button_that_is_not_shown_is_never_hit) {
    show_level(2);
    const NavigationButton old_home = home;
    show_level(1);
    EXPECT_EQ(over(old_home, 5.0f, 5.0f), -1);
    EXPECT_EQ(home.hover, 0);
    open_mode = 1;
    show_level(1); // home took back's place
    home.x = 400.0f;
    EXPECT_EQ(over(back, 5.0f, 5.0f), -1);
}

TEST_F(Navigation, at_the_start_nothing_is_hit_in_the_corner) {
    scene_stack_depth = 2; // not drawn yet
    EXPECT_EQ(scene_mouse_over_button(0, 0), -1);
    EXPECT_EQ(scene_mouse_over_button(16, 16), -1);
}

TEST_F(Navigation, a_button_that_the_page_no_longer_offers_is_not_hit_before_the_next_drawing) {
    show_level(2);
    scene_stack_depth = 1;
    EXPECT_EQ(over(home, 5.0f, 5.0f), -1);
    EXPECT_EQ(over(back, 5.0f, 5.0f), NAVIGATION_BACK);
    scene_stack_depth = 0;
    EXPECT_EQ(over(back, 5.0f, 5.0f), -1);
}

TEST_F(Navigation, moving_onto_a_button_redraws_once_and_moving_within_it_not_at_all) {
    show_level(1);
    over(back, -10.0f, 5.0f);
    scene_redraw_flag = 0;
    over(back, 5.0f, 5.0f);
    EXPECT_EQ(scene_redraw_flag, 1);
    EXPECT_EQ(back.hover, 1);
    EXPECT_EQ(back.previous_hover, 0);
    scene_redraw_flag = 0;
    over(back, 6.0f, 7.0f);
    over(back, 20.0f, 30.0f);
    EXPECT_EQ(scene_redraw_flag, 0);
    over(back, -10.0f, 5.0f);
    EXPECT_EQ(scene_redraw_flag, 1);
    EXPECT_EQ(back.hover, 0);
}

TEST_F(Navigation, a_button_that_went_away_lit_comes_back_unlit) {
    show_level(2);
    over(home, 5.0f, 5.0f);
    show_level(1);
    show_level(2);
    EXPECT_EQ(home.hover, 0);
}

TEST_F(Navigation, the_buttons_win_over_any_object) {
    show_level(2);
    scene_floor.position_x = 0.0f;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_zoom_level(8);
    stage_draw();
    const WindowPoint centre = stage_window_point(0.0f, 0.0f, NODE_REST_HEIGHT);
    ASSERT_EQ(selection(centre.x, centre.y), 0);
    back.x = static_cast<float>(centre.x - 16);
    back.y = static_cast<float>(centre.y - 16);
    EXPECT_EQ(selection(centre.x, centre.y), NAVIGATION_BACK);
    home.x = back.x;
    home.y = back.y;
    EXPECT_EQ(selection(centre.x, centre.y), NAVIGATION_HOME);
}

// ---- the picture

TEST_F(Navigation, the_buttons_show_their_artwork_upright_and_pixel_for_pixel) {
    show_level(2);
    draw_buttons_over(0.0f, 0.4f, 0.8f);
    EXPECT_EQ(differing_pixels(back, RESOURCE_BUTTON_BACK, 0, {0, 102, 204}), 0);
    EXPECT_EQ(differing_pixels(home, RESOURCE_BUTTON_HOME, 0, {0, 102, 204}), 0);
}

TEST_F(Navigation, under_the_mouse_a_button_shows_the_right_half_of_its_artwork) {
    show_level(2);
    over(home, 10.0f, 10.0f);
    draw_buttons_over(0.0f, 0.4f, 0.8f);
    EXPECT_EQ(differing_pixels(back, RESOURCE_BUTTON_BACK, 0, {0, 102, 204}), 0);
    EXPECT_EQ(differing_pixels(home, RESOURCE_BUTTON_HOME, 1, {0, 102, 204}), 0);
}

TEST_F(Navigation, the_scene_is_drawn_with_the_buttons_on_top) {
    stage_page_colour(0.0f, 0.0f, 0.0f);
    show_level(2);
    for (const NavigationButton *button : {&back, &home}) {
        const Pixel pixel = gl_pixel(static_cast<std::int32_t>(button->x) + 4,
                                     static_cast<std::int32_t>(button->y) + 16);
        EXPECT_GT(brightness(pixel), 60);
    }
    gl_save_picture("navigation_buttons");
}

TEST_F(Navigation, the_light_and_the_last_material_do_not_change_the_artwork) {
    show_level(2);
    const float dark[] = {0.1f, 0.05f, 0.05f, 1.0f};
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, dark);
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, dark);
    glColor4f(0.2f, 0.2f, 0.2f, 0.5f);
    draw_buttons_over(0.0f, 0.4f, 0.8f);
    EXPECT_EQ(differing_pixels(back, RESOURCE_BUTTON_BACK, 0, {0, 102, 204}), 0);
}

TEST_F(Navigation, drawing_leaves_the_state_of_the_scene_as_it_was) {
    show_level(2);
    glCullFace(GL_BACK);
    while (glGetError() != GL_NO_ERROR) { // what making the fonts has left behind
    }
    float before[16], after[16];
    glGetFloatv(GL_PROJECTION_MATRIX, before);
    scene_draw_navigation_buttons();
    glGetFloatv(GL_PROJECTION_MATRIX, after);
    for (int i = 0; i < 16; i++)
        EXPECT_EQ(before[i], after[i]);
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    GLint mode = 0;
    glGetIntegerv(GL_CULL_FACE_MODE, &mode);
    EXPECT_EQ(mode, GL_BACK);
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    EXPECT_EQ(mode, GL_MODELVIEW);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(NavigationArtwork, both_bitmaps_are_64_by_32_with_a_normal_and_a_brighter_highlighted_half) {
    for (const int resource : {RESOURCE_BUTTON_BACK, RESOURCE_BUTTON_HOME}) {
        BitmapPixels bitmap;
        ASSERT_EQ(resource_bitmap(resource, &bitmap), 0);
        EXPECT_EQ(bitmap.width, 64);
        EXPECT_EQ(bitmap.height, 32);
        int sum[2] = {0, 0};
        for (std::int32_t y = 0; y < 32; y++) {
            for (std::int32_t x = 0; x < 32; x++) {
                sum[0] += brightness(artwork(resource, 0, x, y));
                sum[1] += brightness(artwork(resource, 1, x, y));
            }
        }
        EXPECT_GT(sum[1], sum[0] + 32 * 32 * 40);
    }
}

TEST(NavigationArtwork, the_outermost_pixels_are_transparent_so_that_no_edge_bleeds_across) {
    for (const int resource : {RESOURCE_BUTTON_BACK, RESOURCE_BUTTON_HOME}) {
        for (std::int32_t half = 0; half < 2; half++) {
            for (std::int32_t i = 0; i < 32; i++) {
                EXPECT_EQ(artwork(resource, half, i, 0).red, 0);
                EXPECT_EQ(artwork(resource, half, i, 31).red, 0);
                EXPECT_EQ(artwork(resource, half, 0, i).red, 0);
                EXPECT_EQ(artwork(resource, half, 31, i).red, 0);
            }
        }
    }
}

TEST(NavigationArtwork, both_buttons_have_the_same_outline) {
    for (std::int32_t y = 0; y < 32; y++) {
        for (std::int32_t x = 0; x < 32; x++) {
            const bool inside = artwork(RESOURCE_BUTTON_BACK, 0, x, y).red != 0;
            EXPECT_EQ(artwork(RESOURCE_BUTTON_HOME, 0, x, y).red != 0, inside);
            EXPECT_EQ(artwork(RESOURCE_BUTTON_HOME, 1, x, y).red != 0, inside);
        }
    }
}
