#include "scene/scene_text.h"

#include "assets/tex_font.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/gl.h"
#include "platform/text.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/drawn_bounds.h"

#include <gtest/gtest.h>

#include <vector>

static constexpr Pixel BLUE = {0, 0, 255};
static constexpr Pixel WHITE = {255, 255, 255};

// The scene without floor and objects: only its texts, on a blue ground.
struct SceneText : testing::Test {
    GlContext context{500, 400};

    void SetUp() override {
        options_set_defaults();
        interaction_init();
        node_init_nodes();
        node_total = 0;
        scene_stack_depth = 0;
        screen_size_x = 1024;
        screen_size_y = 768;
        scene_floor = {};
        scene_resize(500, 400);
        scene_floor.view_left = scene_floor.view_bottom = -20.0f;
        scene_floor.view_right = scene_floor.view_top = 20.0f;
        font_white = font_label_normal = {1.0f, 1.0f, 1.0f};
        set_zoom(3);
        scene_lights_init();
        gl_clear(BLUE);
    }
    void TearDown() override {
        scene_fonts_stop();
    }
    static void use_texture_fonts(bool texture) {
        orvanel_options.text_shadows = texture ? 1 : 0;
        scene_fonts_init();
    }
    static void set_zoom(std::int32_t level) {
        scene_floor.zoom_level = level;
        scene_floor.distance = ZOOM_STEP * static_cast<float>(level) + ZOOM_DISTANCE_MIN;
    }
    static Node &add(NodeType type, const char *name, const char *description, float x, float y) {
        node_init_node(node_total);
        Node &record = node[node_total++];
        record.type = type;
        record.x = x;
        record.y = y;
        text_copy(record.name, name);
        text_copy(record.description, description);
        record.dimensions[EXTENT_NEAR] = -1.0f;
        return record;
    }
    DrawnBounds draw_names() const {
        gl_clear(BLUE);
        scene_draw_node_labels();
        return drawn_bounds(context, BLUE);
    }
    DrawnBounds draw_labels() const {
        gl_clear(BLUE);
        scene_draw_labels();
        return drawn_bounds(context, BLUE);
    }
    DrawnBounds draw_title() const {
        gl_clear(BLUE);
        scene_draw_page_title();
        return drawn_bounds(context, BLUE);
    }
};

struct WindowPlace {
    double x, y; // pixels from the top left
};

static WindowPlace place(double x, double y, double z) {
    double modelview[16], projection[16], window[3] = {};
    GLint viewport[4];
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    gluProject(x, y, z, modelview, projection, viewport, &window[0], &window[1], &window[2]);
    return {window[0], viewport[3] - window[1]};
}

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
    Node &record = add(NODE_OBJECT, "Hello", "", 0.0f, 2.0f);
    record.height = 30.0f;
    draw_names();
    EXPECT_NEAR(bounds_of_colour(context, WHITE).bottom + 1,
                place(0.0, 0.4, scene_floor.distance - 92.0 - 30.0).y, 1.0);
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

struct SceneTextLabelColour : SceneText {
    DrawnBounds draw(bool texture) {
        use_texture_fonts(texture);
        font_label_normal = {0.0f, 1.0f, 0.0f};
        return draw_labels();
    }
    std::int32_t normal() const {
        return bounds_of_colour(context, {0, 255, 0}).count;
    }
    std::int32_t selected() const {
        const FontColour &colour = font_label_selected;
        return bounds_of_colour(context,
                                {static_cast<int>(colour.red * 255.0f + 0.5f),
                                 static_cast<int>(colour.green * 255.0f + 0.5f),
                                 static_cast<int>(colour.blue * 255.0f + 0.5f)},
                                1)
            .count;
    }
};

TEST_F(SceneTextLabelColour, the_label_under_the_mouse_is_marked_in_edit_mode) {
    Node &record = add(NODE_LABEL, "", "Hello", 0.0f, 0.0f);
    record.grab_state = GRAB_HOVERED;
    app_mode = APP_EDIT;
    for (const bool texture : {false, true}) {
        draw(texture);
        EXPECT_EQ(normal(), 0) << texture;
        EXPECT_GT(selected(), 20) << texture;
    }
}

TEST_F(SceneTextLabelColour, it_is_not_marked_in_view_mode_while_drawing_a_link_or_unhovered) {
    Node &record = add(NODE_LABEL, "", "Hello", 0.0f, 0.0f);
    record.grab_state = GRAB_HOVERED;
    draw(false);
    EXPECT_GT(normal(), 20);
    app_mode = APP_EDIT;
    app_line_draw_mode = 1;
    draw(false);
    EXPECT_GT(normal(), 20);
    app_line_draw_mode = 0;
    record.grab_state = GRAB_IDLE;
    draw(false);
    EXPECT_GT(normal(), 20);
    EXPECT_EQ(selected(), 0);
}

// ---- labels

TEST_F(SceneText, a_labels_box_follows_its_text_whatever_the_zoom) {
    for (const bool texture : {false, true}) {
        use_texture_fonts(texture);
        node_total = 0;
        Node &shorter = add(NODE_LABEL, "", "Room", 0.0f, 0.0f);
        Node &longer = add(NODE_LABEL, "", "Computer room", 0.0f, 0.0f);
        for (const std::int32_t level : {0, 4, 8}) {
            set_zoom(level);
            draw_labels();
            const float width = font_get_string_width(&font_node_name_8, "Computer room");
            EXPECT_FLOAT_EQ(longer.dimensions[EXTENT_LEFT], -0.5f * width - 0.3f);
            EXPECT_FLOAT_EQ(longer.dimensions[EXTENT_RIGHT], 0.5f * width + 0.3f);
            EXPECT_EQ(longer.dimensions[EXTENT_NEAR], -0.5f);
            EXPECT_EQ(longer.dimensions[EXTENT_FAR], 0.5f);
            EXPECT_GT(longer.dimensions[EXTENT_RIGHT], shorter.dimensions[EXTENT_RIGHT]);
            EXPECT_GT(shorter.dimensions[EXTENT_RIGHT], 0.3f);
        }
    }
}

TEST_F(SceneText, a_label_that_is_drawn_gets_its_index_as_pick_id) {
    use_texture_fonts(true);
    add(NODE_OBJECT, "", "", 0.0f, 0.0f);
    Node &label = add(NODE_LABEL, "", "Hello", 0.0f, 0.0f);
    Node &far_away = add(NODE_LABEL, "", "Hello", 100.0f, 0.0f);
    draw_labels();
    EXPECT_EQ(label.pick_id, 1);
    EXPECT_EQ(far_away.pick_id, -2);
    EXPECT_EQ(far_away.dimensions[EXTENT_RIGHT], 0.0f);
}

TEST_F(SceneText, a_long_label_is_drawn_as_long_as_a_part_of_it_shows) {
    use_texture_fonts(true);
    const char *text = "A label of fifty characters, as long as they come.";
    const float half = font_get_string_width(&font_node_name_8, text) / 2.0f;
    scene_floor.view_left = -2.0f;
    scene_floor.view_right = 2.0f;
    ASSERT_GT(half, 6.0f);
    Node &label = add(NODE_LABEL, "", text, 2.0f + half - 0.5f, 0.0f);
    draw_labels();
    EXPECT_EQ(label.pick_id, 0);
}

// ---- label under the mouse

struct SceneTextMouse : SceneText {
    void SetUp() override {
        SceneText::SetUp();
        use_texture_fonts(true);
    }
    // Window pixel of a point of the plane in which labels are hit.
    static WindowPlace label_place(double x, double y) {
        return place(x, y, scene_floor.distance + 10.0 - 100.0);
    }
    static std::int32_t over(double x, double y) {
        const WindowPlace at = label_place(x, y);
        return scene_mouse_over_label(static_cast<std::int32_t>(at.x + 0.5),
                                      static_cast<std::int32_t>(at.y + 0.5));
    }
};

TEST_F(SceneTextMouse, a_label_is_hit_within_its_box_at_every_zoom_level) {
    add(NODE_OBJECT, "", "", 3.0f, 3.0f);
    const Node &label = add(NODE_LABEL, "", "Computer room", 3.0f, 3.0f);
    scene_floor.position_x = 2.0f;
    scene_floor.position_y = 4.0f;
    for (std::int32_t level = 0; level <= 8; level++) {
        set_zoom(level);
        draw_labels();
        const double right = 1.0 + label.dimensions[EXTENT_RIGHT];
        EXPECT_EQ(over(1.0, -1.0), 1) << level;
        EXPECT_EQ(over(right - 0.15, -1.0), 1) << level;
        EXPECT_EQ(over(right + 0.15, -1.0), -1) << level;
        EXPECT_EQ(over(1.0, -0.6), 1) << level;
        EXPECT_EQ(over(1.0, -0.35), -1) << level;
        EXPECT_EQ(over(1.0, -1.4), 1) << level;
        EXPECT_EQ(over(1.0, -1.65), -1) << level;
    }
}

TEST_F(SceneTextMouse, of_labels_that_overlap_the_first_is_hit) {
    add(NODE_LABEL, "", "First", 0.0f, 0.0f);
    add(NODE_LABEL, "", "Second", 0.0f, 0.0f);
    draw_labels();
    EXPECT_EQ(over(0.0, 0.0), 0);
}

TEST_F(SceneTextMouse, the_edges_of_the_box_belong_to_it) {
    Node &label = add(NODE_LABEL, "", "x", 0.0f, 0.0f);
    float x = 0.0f, y = 0.0f;
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    GetOGLPos(300, 150, &x, &y, depth_lookup[4 + scene_floor.zoom_level]);
    label.dimensions[EXTENT_LEFT] = x;
    label.dimensions[EXTENT_RIGHT] = x;
    label.dimensions[EXTENT_NEAR] = y;
    label.dimensions[EXTENT_FAR] = y;
    EXPECT_EQ(scene_mouse_over_label(300, 150), 0);
    EXPECT_EQ(scene_mouse_over_label(301, 150), -1);
}

TEST_F(SceneTextMouse, objects_are_no_labels) {
    Node &object = add(NODE_OBJECT, "", "", 0.0f, 0.0f);
    object.dimensions[EXTENT_LEFT] = object.dimensions[EXTENT_NEAR] = -5.0f;
    object.dimensions[EXTENT_RIGHT] = object.dimensions[EXTENT_FAR] = 5.0f;
    EXPECT_EQ(over(0.0, 0.0), -1);
}

TEST_F(SceneTextMouse, the_hit_test_leaves_the_matrices_as_they_were) {
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(500.0f, 0.0f, 0.0f);
    add(NODE_LABEL, "", "Hello", 0.0f, 0.0f);
    float before[16], after[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, before);
    scene_mouse_over_label(250, 200);
    glGetFloatv(GL_MODELVIEW_MATRIX, after);
    for (int i = 0; i < 16; i++)
        EXPECT_EQ(after[i], before[i]);
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

TEST_F(SceneTextTitle, the_buttons_place_is_right_of_the_system_title) {
    use_texture_fonts(false);
    scene_stack_depth = 1;
    const DrawnBounds bounds = draw_title();
    const float width = font_get_string_width(&font_page_title, "Home") * 24.0f;
    EXPECT_GT(width + 11.0f, static_cast<float>(bounds.right));
    EXPECT_LT(width + 11.0f, static_cast<float>(bounds.right) + 20.0f);
}
