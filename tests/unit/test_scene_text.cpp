#include "scene_text_fixture.h"

#include <vector>

// ---- which font at which zoom level: all others are taken away, so that only the right one draws

struct ZoomFonts {
    BitmapFont *name, *description, *label;
    TexFontSet *tex_name, *tex_description, *tex_label;
};
static const ZoomFonts ZOOM_FONTS[] = {
    {&font_node_name_0, &font_node_desc_0, &font_node_name_2, &tahoma_9_bold, &tahoma_7_normal,
     &tahoma_11_bold},
    {&font_node_name_1, &font_node_desc_1, &font_node_name_3, &tahoma_10_bold, &tahoma_8_normal,
     &tahoma_12_bold},
    {&font_node_name_2, &font_node_desc_2, &font_node_name_4, &tahoma_11_bold, &tahoma_9_close,
     &tahoma_13_bold},
    {&font_node_name_3, &font_node_desc_3, &font_node_name_5, &tahoma_12_bold, &tahoma_9_normal,
     &tahoma_14_bold},
    {&font_node_name_4, &font_node_desc_4, &font_node_name_6, &tahoma_13_bold, &tahoma_10_normal,
     &tahoma_15_bold},
    {&font_node_name_5, &font_node_desc_5, &font_node_name_7, &tahoma_14_bold, &tahoma_11_normal,
     &tahoma_16_bold},
    {&font_node_name_6, &font_node_desc_6, &font_node_name_8, &tahoma_15_bold, &tahoma_12_normal,
     &tahoma_21_normal},
    {&font_node_name_7, &font_node_desc_7, &font_node_name_9, &tahoma_16_bold, &tahoma_13_normal,
     &tahoma_24_normal},
    {&font_node_name_8, &font_node_desc_8, &font_node_name_10, &tahoma_21_normal, &tahoma_15_normal,
     &tahoma_28_normal},
    // between the levels: the default
    {&font_node_name_7, &font_node_desc_7, &font_node_name_7, &tahoma_14_bold, &tahoma_11_normal,
     &tahoma_14_bold},
};
static constexpr std::int32_t DEFAULT_FONTS = 9;

static const std::vector<BitmapFont *> SYSTEM_FONTS = {
    &font_node_name_0,  &font_node_name_1, &font_node_name_2, &font_node_name_3, &font_node_name_4,
    &font_node_name_5,  &font_node_name_6, &font_node_name_7, &font_node_name_8, &font_node_name_9,
    &font_node_name_10, &font_node_desc_0, &font_node_desc_1, &font_node_desc_2, &font_node_desc_3,
    &font_node_desc_4,  &font_node_desc_5, &font_node_desc_6, &font_node_desc_7, &font_node_desc_8};
static const std::vector<TexFontSet *> TEXTURE_SETS = {
    &tahoma_7_normal,  &tahoma_8_normal,  &tahoma_9_normal,  &tahoma_9_bold,    &tahoma_9_close,
    &tahoma_10_normal, &tahoma_10_bold,   &tahoma_11_normal, &tahoma_11_bold,   &tahoma_12_normal,
    &tahoma_12_bold,   &tahoma_13_normal, &tahoma_13_bold,   &tahoma_14_bold,   &tahoma_15_normal,
    &tahoma_15_bold,   &tahoma_16_bold,   &tahoma_21_normal, &tahoma_24_normal, &tahoma_28_normal};

struct SceneTextZoom : SceneText, testing::WithParamInterface<std::int32_t> {
    void SetUp() override {
        SceneText::SetUp();
        set_zoom(std::min(GetParam(), 8));
        if (GetParam() == DEFAULT_FONTS)
            scene_floor.distance = -35.0f;
    }
    // Lists stay allocated; the font only forgets where they are.
    static void keep_system_font(const BitmapFont *kept) {
        use_texture_fonts(false);
        for (BitmapFont *font : SYSTEM_FONTS) {
            if (font != kept)
                font_unload(font);
        }
    }
    static void keep_texture_set(const TexFontSet *kept) {
        use_texture_fonts(true);
        for (TexFontSet *set : TEXTURE_SETS) {
            if (set != kept)
                tex_font_load_wipe_character_set(set);
        }
    }
};

TEST_P(SceneTextZoom, names_use_the_font_of_the_level) {
    add(NODE_OBJECT, "Mail", "", 0.0f, 0.0f);
    const ZoomFonts &fonts = ZOOM_FONTS[GetParam()];
    keep_system_font(fonts.name);
    EXPECT_GT(draw_names().count, 0);
    font_unload(fonts.name);
    EXPECT_EQ(draw_names().count, 0);
    keep_texture_set(fonts.tex_name);
    EXPECT_GT(draw_names().count, 0);
    tex_font_load_wipe_character_set(fonts.tex_name);
    EXPECT_EQ(draw_names().count, 0);
}

TEST_P(SceneTextZoom, descriptions_use_the_font_of_the_level) {
    add(NODE_PAGE, "", "Mail", 0.0f, 0.0f);
    const ZoomFonts &fonts = ZOOM_FONTS[GetParam()];
    keep_system_font(fonts.description);
    EXPECT_GT(draw_names().count, 0);
    font_unload(fonts.description);
    EXPECT_EQ(draw_names().count, 0);
    keep_texture_set(fonts.tex_description);
    EXPECT_GT(draw_names().count, 0);
    tex_font_load_wipe_character_set(fonts.tex_description);
    EXPECT_EQ(draw_names().count, 0);
}

TEST_P(SceneTextZoom, labels_use_the_font_of_the_level) {
    add(NODE_LABEL, "", "Mail", 0.0f, 0.0f);
    const ZoomFonts &fonts = ZOOM_FONTS[GetParam()];
    keep_system_font(fonts.label);
    EXPECT_GT(draw_labels().count, 0);
    font_unload(fonts.label);
    EXPECT_EQ(draw_labels().count, 0);
    keep_texture_set(fonts.tex_label);
    EXPECT_GT(draw_labels().count, 0);
    tex_font_load_wipe_character_set(fonts.tex_label);
    EXPECT_EQ(draw_labels().count, 0);
}

TEST_P(SceneTextZoom, texture_names_are_centred_below_the_object) {
    Node &record = add(NODE_OBJECT, "HelloH", "", 2.0f, 1.0f);
    record.dimensions[EXTENT_NEAR] = -1.5f;
    use_texture_fonts(true);
    scene_floor.position_x = 1.0f;
    scene_floor.position_y = -1.0f;
    draw_names();
    const DrawnBounds bounds = bounds_of_colour(context, WHITE);
    const WindowPlace expected = place(1.0, 2.0 - 1.5 - 0.6, scene_floor.distance - 92.0 - 10.0);
    EXPECT_NEAR(bounds.middle_x(), expected.x, 2.0);
    EXPECT_NEAR(bounds.bottom + 1, expected.y, 1.0);
}

TEST_P(SceneTextZoom, labels_are_centred_on_their_place_in_both_renderings) {
    add(NODE_LABEL, "", "HelloH", 1.0f, 2.0f);
    const WindowPlace expected = place(1.0, 2.0, scene_floor.distance + 10.0 - 100.0);
    for (const bool texture : {false, true}) {
        use_texture_fonts(texture);
        draw_labels();
        const DrawnBounds bounds = bounds_of_colour(context, WHITE, 60);
        EXPECT_NEAR(bounds.middle_x(), expected.x, 2.5) << texture;
        EXPECT_NEAR((bounds.top + bounds.bottom + 1) / 2.0, expected.y, 4.0) << texture;
    }
}

TEST_P(SceneTextZoom, a_label_lies_within_its_box) {
    Node &record = add(NODE_LABEL, "", "Computer room 42", 0.0f, 0.0f);
    use_texture_fonts(true);
    draw_labels();
    const DrawnBounds bounds = bounds_of_colour(context, WHITE, 60);
    const double z = scene_floor.distance + 10.0 - 100.0;
    EXPECT_GE(bounds.left, place(record.dimensions[EXTENT_LEFT], 0.0, z).x - 1.0);
    EXPECT_LE(bounds.right, place(record.dimensions[EXTENT_RIGHT], 0.0, z).x + 1.0);
}

INSTANTIATE_TEST_SUITE_P(Level, SceneTextZoom, testing::Range(0, 10));

// ---- names and descriptions

TEST_F(SceneText, system_names_start_half_of_their_width_in_font_6_to_the_left) {
    use_texture_fonts(false);
    for (const std::int32_t level : {0, 5, 8}) {
        set_zoom(level);
        node_total = 0;
        add(NODE_OBJECT, "Hello", "", 1.0f, 2.0f);
        const DrawnBounds bounds = draw_names();
        const double half = font_get_string_width(&font_node_name_6, "Hello") / 2.0;
        const WindowPlace expected =
            place(1.0 - half, 2.0 - 1.0 - 0.6, scene_floor.distance - 92.0 - 10.0);
        EXPECT_NEAR(bounds.left, expected.x, 3.0) << level;
        EXPECT_NEAR(bounds.bottom + 1, expected.y, 1.5) << level;
    }
}

TEST_F(SceneText, system_descriptions_are_measured_in_description_font_6) {
    use_texture_fonts(false);
    add(NODE_OBJECT, "", "Hello", 1.0f, 2.0f);
    const DrawnBounds bounds = draw_names();
    const double half = font_get_string_width(&font_node_desc_6, "Hello") / 2.0;
    const WindowPlace expected =
        place(1.0 - half, 2.0 - 1.0 - 1.4, scene_floor.distance - 92.0 - 10.0);
    EXPECT_NEAR(bounds.left, expected.x, 2.0);
    EXPECT_NEAR(bounds.bottom + 1, expected.y, 1.5);
}

TEST_F(SceneText, the_description_stands_below_the_name) {
    for (const bool texture : {false, true}) {
        use_texture_fonts(texture);
        for (std::int32_t level = 0; level <= 8; level++) {
            set_zoom(level);
            node_total = 0;
            add(NODE_OBJECT, "HHH", "", 0.0f, 0.0f);
            const DrawnBounds name = draw_names();
            node_total = 0;
            add(NODE_OBJECT, "", "HHH", 0.0f, 0.0f);
            const DrawnBounds description = draw_names();
            // The dark edges may meet, the letters may not.
            EXPECT_GT(description.top, name.bottom - (texture ? 4 : 0)) << texture << level;
        }
    }
}

TEST_F(SceneText, the_text_sinks_as_far_as_the_object_rises) {
    use_texture_fonts(true);
    Node &record = add(NODE_OBJECT, "Hello", "", 0.0f, 9.6f);
    record.height = 30.0f;
    draw_names();
    EXPECT_NEAR(bounds_of_colour(context, WHITE).bottom + 1,
                place(0.0, 8.0, scene_floor.distance - 92.0 - 30.0).y, 1.0);
}

TEST_F(SceneText, only_objects_and_pages_have_names) {
    use_texture_fonts(true);
    add(NODE_LABEL, "Hello", "Hello", 0.0f, 0.0f);
    add(NODE_NONE, "Hello", "Hello", 0.0f, 0.0f);
    EXPECT_EQ(draw_names().count, 0);
    add(NODE_PAGE, "Hello", "Hello", 0.0f, 0.0f);
    EXPECT_GT(draw_names().count, 0);
}

TEST_F(SceneText, names_are_drawn_up_to_5_units_outside_of_the_view) {
    use_texture_fonts(false);
    scene_floor.view_right = -4.9f; // the object is in the window all the same
    add(NODE_OBJECT, "Hello", "", 0.0f, 0.0f);
    EXPECT_GT(draw_names().count, 0);
    scene_floor.view_right = -5.1f;
    EXPECT_EQ(draw_names().count, 0);
    scene_floor.view_right = 20.0f;
    scene_floor.view_bottom = 5.1f;
    EXPECT_EQ(draw_names().count, 0);
    scene_floor.view_bottom = 4.9f;
    EXPECT_GT(draw_names().count, 0);
    scene_floor.position_x = 50.0f;
    EXPECT_EQ(draw_names().count, 0) << "the view is relative to the floor's position";
}

TEST_F(SceneText, the_end_of_a_name_that_begins_outside_of_the_window_is_drawn) {
    const double half_width = 500.0 / 2.0 / (place(1.0, 0.0, -142.0).x - 250.0);
    for (const bool texture : {false, true}) {
        use_texture_fonts(texture);
        node_total = 0;
        add(NODE_OBJECT, "Very long name for it", "", static_cast<float>(-half_width), 2.0f);
        const DrawnBounds bounds = draw_names();
        EXPECT_LE(bounds.left, 1) << texture;
        EXPECT_GT(bounds.right, 40) << texture;
    }
}

TEST_F(SceneText, a_percent_sign_in_a_name_is_a_percent_sign) {
    for (const bool texture : {false, true}) {
        use_texture_fonts(texture);
        node_total = 0;
        add(NODE_OBJECT, "%s%n%d", "100%", 0.0f, 0.0f);
        add(NODE_LABEL, "", "%s%n%d", 0.0f, 4.0f);
        EXPECT_GT(draw_names().count, 0);
        EXPECT_GT(draw_labels().count, 0);
    }
}

TEST_F(SceneText, texts_lie_over_the_objects) {
    use_texture_fonts(false);
    add(NODE_OBJECT, "Hello", "", 0.0f, 0.0f);
    glClearDepth(0.0);
    EXPECT_GT(draw_names().count, 0);
    glClearDepth(1.0);
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
}

// ---- colours

TEST_F(SceneText, white_text_is_white_in_both_renderings) {
    add(NODE_OBJECT, "Hello", "", 0.0f, 0.0f);
    for (const bool texture : {false, true}) {
        use_texture_fonts(texture);
        draw_names();
        EXPECT_GT(bounds_of_colour(context, WHITE).count, 30) << texture;
    }
}

TEST_F(SceneText, names_on_a_bright_page_are_dark_grey) {
    use_texture_fonts(false);
    font_white = {0.15f, 0.15f, 0.15f};
    add(NODE_OBJECT, "Hello", "", 0.0f, 0.0f);
    const DrawnBounds bounds = draw_names();
    EXPECT_EQ(bounds_of_colour(context, {38, 38, 38}, 1).count, bounds.count);
}

TEST_F(SceneText, texts_leave_the_light_as_it_was) {
    use_texture_fonts(false);
    const float ambient[] = {0.1f, 0.2f, 0.3f, 1.0f};
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
    add(NODE_OBJECT, "Hello", "", 0.0f, 0.0f);
    draw_names();
    draw_title();
    float after[4];
    glGetFloatv(GL_LIGHT_MODEL_AMBIENT, after);
    for (int i = 0; i < 4; i++)
        EXPECT_EQ(after[i], ambient[i]);
}

// ---- title

struct SceneTextTitle : SceneText {
    void SetUp() override {
        SceneText::SetUp();
        text_copy(scene_page_title, "Home");
        orvanel_options.show_home_page_title = 0;
    }
};

TEST_F(SceneTextTitle, the_home_page_has_a_title_only_when_the_option_says_so) {
    for (const bool texture : {false, true}) {
        use_texture_fonts(texture);
        scene_stack_depth = 0;
        orvanel_options.show_home_page_title = 0;
        EXPECT_EQ(draw_title().count, 0) << texture;
        orvanel_options.show_home_page_title = 1;
        EXPECT_GT(draw_title().count, 0) << texture;
        orvanel_options.show_home_page_title = 0;
        scene_stack_depth = 1;
        EXPECT_GT(draw_title().count, 0) << texture;
    }
}

TEST_F(SceneTextTitle, the_texture_title_has_its_baseline_48_pixels_below_the_top) {
    use_texture_fonts(true);
    scene_stack_depth = 1;
    draw_title();
    const DrawnBounds bounds = bounds_of_colour(context, WHITE, 20);
    EXPECT_NEAR(bounds.bottom, 47, 1);
    EXPECT_GE(bounds.left, 10);
    EXPECT_LE(bounds.left, 18);
}

TEST_F(SceneTextTitle, the_system_title_has_its_baseline_43_pixels_below_the_top) {
    use_texture_fonts(false);
    scene_stack_depth = 1;
    const DrawnBounds bounds = draw_title();
    EXPECT_NEAR(bounds.bottom, 42, 1);
    EXPECT_GE(bounds.left, 12);
    EXPECT_LE(bounds.left, 18);
    EXPECT_EQ(bounds_of_colour(context, WHITE).count, bounds.count);
}

TEST_F(SceneTextTitle, the_system_title_starts_12_pixels_from_the_left) {
    use_texture_fonts(false);
    scene_stack_depth = 1;
    text_copy(scene_page_title, "H");
    const std::int32_t left = draw_title().left;
    gl_clear(BLUE);
    glWindowPos2fMESAemulate(100.0f, 100.0f);
    font_printf(&font_page_title, "H");
    EXPECT_EQ(left - 12, drawn_bounds(context, BLUE).left - 100);
}

TEST_F(SceneTextTitle, the_title_has_the_colour_of_names_and_not_of_labels) {
    scene_stack_depth = 1;
    font_white = {1.0f, 0.0f, 0.0f};
    font_label_normal = {0.0f, 1.0f, 0.0f};
    for (const bool texture : {false, true}) {
        use_texture_fonts(texture);
        draw_title();
        EXPECT_GT(bounds_of_colour(context, {255, 0, 0}).count, 100) << texture;
        EXPECT_EQ(bounds_of_colour(context, {0, 255, 0}).count, 0) << texture;
    }
}

TEST_F(SceneTextTitle, the_buttons_place_is_right_of_the_system_title) {
    use_texture_fonts(false);
    scene_stack_depth = 1;
    const DrawnBounds bounds = draw_title();
    const float width = font_get_string_width(&font_page_title, "Home") * 24.0f;
    EXPECT_GT(width + 11.0f, static_cast<float>(bounds.right));
    EXPECT_LT(width + 11.0f, static_cast<float>(bounds.right) + 20.0f);
}
