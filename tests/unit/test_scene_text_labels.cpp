#include "scene_text_fixture.h"

// ---- colours

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

TEST_F(SceneTextMouse, a_label_is_hit_whatever_has_moved_the_matrix) {
    add(NODE_LABEL, "", "Hello", 0.0f, 0.0f);
    draw_labels();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(50.0f, 0.0f, 0.0f);
    EXPECT_EQ(scene_mouse_over_label(250, 200), 0) << "the middle of the window";
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
