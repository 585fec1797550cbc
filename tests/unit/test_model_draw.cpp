#include "assets/model.h"

#include "platform/gl.h"
#include "tests/support/gl_context.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace std::string_literals;

static constexpr int SIZE = 64; // pixels of the drawing area's sides

// A white light from the viewer and nothing else: a face towards the viewer shows its diffuse
// colour as it is. Model coordinates -1..1 fill the picture.
struct ModelDraw : testing::Test {
    GlContext context{SIZE, SIZE};
    Model model = {};

    ModelDraw() {
        static constexpr GLfloat WHITE[] = {1, 1, 1, 1}, NONE[] = {0, 0, 0, 1},
                                 AHEAD[] = {0, 0, 1, 0};
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-1, 1, -1, 1, -5, 5);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        for (GLenum light = GL_LIGHT0; light <= GL_LIGHT7; light++)
            glDisable(light);
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, NONE);
        glLightfv(GL_LIGHT0, GL_AMBIENT, NONE);
        glLightfv(GL_LIGHT0, GL_DIFFUSE, WHITE);
        glLightfv(GL_LIGHT0, GL_SPECULAR, NONE);
        glLightfv(GL_LIGHT0, GL_POSITION, AHEAD);
        glEnable(GL_LIGHT0);
        glEnable(GL_LIGHTING);
        glDisable(GL_TEXTURE_2D);
        clear();
    }
    ~ModelDraw() override {
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        model_unload(&model);
    }
    static void clear() {
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }
    void load(const std::string &obj) {
        model_unload(&model);
        ASSERT_EQ(model_load_memory(obj, "", &model, 1.0f), 0);
    }
    // Materials without a file: index i gets the colour, faces are set by the test.
    void give_materials(std::int32_t total) {
        std::string mtl;
        for (std::int32_t i = 0; i < total; i++)
            mtl += "newmtl a\n\n";
        model.material_total = material_load_memory(mtl, &model.material);
        ASSERT_EQ(model.material_total, total);
    }
    void set_diffuse(std::int32_t id, float red, float green, float blue) {
        model.material[id].diffuse[0] = red;
        model.material[id].diffuse[1] = green;
        model.material[id].diffuse[2] = blue;
    }
};

// A square over the left half of the picture and one over the right, of two triangles each.
static const char TWO_SQUARES[] =
    "v -1 -1 0\nv 0 -1 0\nv 1 -1 0\nv -1 1 0\nv 0 1 0\nv 1 1 0\nvn 0 0 1\n"
    "f 1//1 2//1 5//1\nf 1//1 5//1 4//1\n"
    "f 2//1 3//1 6//1\nf 2//1 6//1 5//1\n";

static Pixel left() {
    return gl_pixel(SIZE / 4, SIZE / 2);
}

static Pixel right() {
    return gl_pixel(3 * SIZE / 4, SIZE / 2);
}

static void expect_pixel(Pixel pixel, int red, int green, int blue) {
    EXPECT_NEAR(pixel.red, red, 2);
    EXPECT_NEAR(pixel.green, green, 2);
    EXPECT_NEAR(pixel.blue, blue, 2);
}

static constexpr int GREY_35 = 89, GREY_55 = 140; // of 255

TEST_F(ModelDraw, a_model_without_faces_draws_and_compiles_nothing) {
    load("v 0 0 0\nv 1 0 0\nv 0 1 0\n");
    model_draw(&model);
    model_draw_faded(&model, 0.5f);
    EXPECT_EQ(model.display_list_compiled, 0);
    EXPECT_EQ(gl_count_differing(0, 0, SIZE, SIZE, {0, 0, 0}, 0), 0);
}

TEST_F(ModelDraw, as_many_faces_are_drawn_as_the_total_says) {
    load(TWO_SQUARES);
    model.face_total = 0;
    model_draw(&model);
    EXPECT_EQ(gl_count_differing(0, 0, SIZE, SIZE, {0, 0, 0}, 0), 0);
    model.face_total = 2;
    model_draw(&model);
    expect_pixel(left(), GREY_35, GREY_35, GREY_35);
    expect_pixel(right(), 0, 0, 0);
    model.face_total = 4;
}

TEST_F(ModelDraw, a_model_that_begins_without_material_is_of_the_darker_grey) {
    load(TWO_SQUARES);
    model_draw(&model);
    expect_pixel(left(), GREY_35, GREY_35, GREY_35);
    expect_pixel(right(), GREY_35, GREY_35, GREY_35);
}

TEST_F(ModelDraw, a_model_that_switches_to_no_material_is_of_the_lighter_grey_there) {
    load(TWO_SQUARES);
    give_materials(1);
    set_diffuse(0, 1, 0, 0);
    model.face[0].material_id = model.face[1].material_id = 0;
    model_draw(&model);
    expect_pixel(left(), 255, 0, 0);
    expect_pixel(right(), GREY_55, GREY_55, GREY_55);
}

TEST_F(ModelDraw, the_greys_are_the_same_when_drawn_faded) {
    load(TWO_SQUARES);
    give_materials(1);
    model.face[1].material_id = 0; // there and back
    glBlendFunc(GL_ONE, GL_ZERO);
    model_draw_faded(&model, 1.0f);
    expect_pixel(gl_pixel(SIZE / 4, 3 * SIZE / 4), GREY_35, GREY_35, GREY_35);
    expect_pixel(right(), GREY_55, GREY_55, GREY_55);
}

TEST_F(ModelDraw, each_face_shows_its_own_material) {
    load(TWO_SQUARES);
    give_materials(2);
    set_diffuse(0, 1, 0, 0);
    set_diffuse(1, 0, 0, 1);
    model.face[0].material_id = model.face[1].material_id = 0;
    model.face[2].material_id = model.face[3].material_id = 1;
    model_draw(&model);
    expect_pixel(left(), 255, 0, 0);
    expect_pixel(right(), 0, 0, 255);
}

TEST_F(ModelDraw, a_material_of_illum_1_shines_in_its_diffuse_colour_without_light) {
    load(TWO_SQUARES);
    give_materials(2);
    set_diffuse(0, 0, 1, 0);
    set_diffuse(1, 0, 1, 0);
    model.material[0].illum = 1;
    model.face[0].material_id = model.face[1].material_id = 0;
    model.face[2].material_id = model.face[3].material_id = 1;
    glDisable(GL_LIGHT0);
    model_draw(&model);
    expect_pixel(left(), 0, 255, 0);
    expect_pixel(right(), 0, 0, 0);
}

TEST_F(ModelDraw, emission_does_not_reach_the_faces_behind_a_self_lit_one) {
    load(TWO_SQUARES);
    give_materials(1);
    set_diffuse(0, 0, 1, 0);
    model.material[0].illum = 1;
    model.face[0].material_id = model.face[1].material_id = 0;
    glDisable(GL_LIGHT0);
    model_draw(&model);
    expect_pixel(right(), 0, 0, 0);
}

static void expect_front(GLenum what, float red, float green, float blue) {
    GLfloat colour[4] = {};
    glGetMaterialfv(GL_FRONT, what, colour);
    const float expected[] = {red, green, blue, 1.0f};
    for (int i = 0; i < 4; i++)
        EXPECT_EQ(colour[i], expected[i]) << i;
}

// What an earlier drawing may have left behind.
static void set_other_material() {
    static constexpr GLfloat OTHER[] = {0.9f, 0.8f, 0.7f, 0.6f};
    for (const GLenum what : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_EMISSION})
        glMaterialfv(GL_FRONT_AND_BACK, what, OTHER);
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 5.0f);
}

static float front_shininess() {
    GLfloat shininess = 0.0f;
    glGetMaterialfv(GL_FRONT, GL_SHININESS, &shininess);
    return shininess;
}

TEST_F(ModelDraw, a_material_sets_all_colours_and_the_shininess_of_front_faces) {
    load(TWO_SQUARES);
    model.material_total = material_load_memory("newmtl a\nKa 0.125 0.25 0.375\n"
                                                "Kd 0.5 0.625 0.75\nKs 0.875 1 0\nNs 500\n\n"
                                                "newmtl b\nKd 0 0.5 1\nillum 1\n\n"s,
                                                &model.material);
    ASSERT_EQ(model.material_total, 2);
    for (int i = 0; i < 4; i++)
        model.face[i].material_id = 0;
    set_other_material();
    model_draw(&model);
    expect_front(GL_AMBIENT, 0.125f, 0.25f, 0.375f);
    expect_front(GL_DIFFUSE, 0.5f, 0.625f, 0.75f);
    expect_front(GL_SPECULAR, 0.875f, 1.0f, 0.0f);
    expect_front(GL_EMISSION, 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(front_shininess(), 64.0f);
    GLfloat back[4] = {};
    glGetMaterialfv(GL_BACK, GL_DIFFUSE, back);
    EXPECT_EQ(back[0], 0.9f);
    model.face[3].material_id = 1;
    model_draw_faded(&model, 1.0f);
    expect_front(GL_EMISSION, 0.0f, 0.5f, 1.0f);
    expect_front(GL_AMBIENT, 0.0f, 0.0f, 0.0f);
}

TEST_F(ModelDraw, no_material_is_black_in_all_but_its_grey_and_shines_at_9608) {
    load(TWO_SQUARES);
    set_other_material();
    model_draw(&model);
    expect_front(GL_AMBIENT, 0.0f, 0.0f, 0.0f);
    expect_front(GL_DIFFUSE, 0.35f, 0.35f, 0.35f);
    expect_front(GL_SPECULAR, 0.0f, 0.0f, 0.0f);
    expect_front(GL_EMISSION, 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(front_shininess(), 96.08f);
}

// The viewer's light falls on the left edge only, where the corners' normal is turned to it.
TEST_F(ModelDraw, every_corner_has_the_normal_that_its_face_names) {
    load("v -1 -1 0\nv 1 -1 0\nv 1 1 0\nv -1 1 0\nvn 1 0 0\nvn 0 0 1\n"
         "f 1//2 2//1 3//1\nf 1//2 3//1 4//2\n");
    give_materials(1);
    set_diffuse(0, 1, 1, 1);
    model.face[0].material_id = model.face[1].material_id = 0;
    model_draw(&model);
    EXPECT_GT(gl_pixel(1, SIZE / 2).red, 240);
    EXPECT_NEAR(gl_pixel(SIZE / 2, SIZE / 2).red, 128, 8);
    EXPECT_LT(gl_pixel(SIZE - 2, SIZE / 2).red, 15);
}

TEST_F(ModelDraw, the_second_time_the_display_list_is_drawn) {
    load(TWO_SQUARES);
    give_materials(1);
    set_diffuse(0, 1, 0, 0);
    model.face[0].material_id = model.face[1].material_id = 0;
    model_draw(&model);
    EXPECT_EQ(model.display_list_compiled, 1);
    const std::uint32_t list = model.display_list;
    set_diffuse(0, 0, 0, 1);
    clear();
    model_draw(&model);
    EXPECT_EQ(model.display_list, list);
    expect_pixel(left(), 255, 0, 0);
}

TEST_F(ModelDraw, after_the_lists_were_freed_the_model_is_compiled_again) {
    model_init();
    models[0].material[0].illum = 1;
    model_draw(&models[0]);
    EXPECT_EQ(models[0].display_list_compiled, 1);
    model_free_display_lists();
    EXPECT_EQ(models[0].display_list_compiled, 0);
    models[0].material[0].diffuse[0] = 1.0f;
    models[0].material[0].diffuse[1] = 0.0f;
    clear();
    model_draw(&models[0]);
    EXPECT_EQ(models[0].display_list_compiled, 1);
    const Pixel pixel = left();
    EXPECT_GT(pixel.red, 200);
    EXPECT_LT(pixel.green, 50);
    model_free_display_lists();
    model_unload_models();
}

TEST_F(ModelDraw, a_face_with_an_index_out_of_range_is_not_drawn_and_the_others_are) {
    for (const char *bad : {"0", "7", "-1", "99999999999", "2147483647", "-2147483648"}) {
        const std::string obj = TWO_SQUARES;
        const std::string text(bad);
        load(obj + "f 2//1 3//1 " + text + "//1\nf " + text + "//1 3//1 6//1\nf 2//1 3//" + text +
             " 6//1\n");
        model.face[2].vertex_total = model.face[3].vertex_total =
            0; // the right half is the bad faces'
        clear();
        model_draw(&model);
        expect_pixel(left(), GREY_35, GREY_35, GREY_35);
        EXPECT_EQ(gl_count_differing(SIZE / 2, 0, SIZE / 2, SIZE, {0, 0, 0}, 0), 0) << bad;
        clear();
        model_draw_faded(&model, 1.0f);
        EXPECT_EQ(gl_count_differing(SIZE / 2, 0, SIZE / 2, SIZE, {0, 0, 0}, 0), 0) << bad;
    }
}

// What lies there would make a good face: only the totals tell that it is not the model's.
TEST_F(ModelDraw, the_first_index_behind_an_array_is_out_of_range) {
    load(TWO_SQUARES);
    model.vertex_total = 5; // the sixth is a corner of both faces on the right
    model_draw(&model);
    expect_pixel(left(), GREY_35, GREY_35, GREY_35);
    expect_pixel(right(), 0, 0, 0);
    load("v -1 -1 0\nv 1 -1 0\nv 1 1 0\nvn 0 0 1\nvn 0 0 1\nf 1//1 2//1 3//2\n");
    model.normal_total = 1;
    clear();
    model_draw(&model);
    expect_pixel(right(), 0, 0, 0);
}

TEST_F(ModelDraw, faces_of_fewer_than_three_corners_are_skipped) {
    load("v -1 -1 0\nv 1 -1 0\nvn 0 0 1\nf 1//1 2//1\nf 1//1\nf \n");
    EXPECT_EQ(model.face_total, 3);
    model_draw(&model);
    EXPECT_EQ(model.display_list_compiled, 1);
    EXPECT_EQ(gl_count_differing(0, 0, SIZE, SIZE, {0, 0, 0}, 0), 0);
}

TEST_F(ModelDraw, a_material_out_of_range_counts_as_none) {
    load(TWO_SQUARES);
    give_materials(1);
    model.face[0].material_id = model.face[1].material_id = 5;
    model_draw(&model);
    expect_pixel(left(), GREY_35, GREY_35, GREY_35);
}

TEST_F(ModelDraw, a_model_without_any_normals_is_lit_by_its_faces) {
    load("v -1 -1 0\nv 1 -1 0\nv 1 1 0\nv -1 1 0\nf 1 2 3\nf 1 3 4\nf 1 1 1\n");
    glNormal3f(1, 0, 0);
    model_draw(&model);
    expect_pixel(left(), GREY_35, GREY_35, GREY_35);
    expect_pixel(right(), GREY_35, GREY_35, GREY_35);
}

TEST_F(ModelDraw, fading_blends_with_what_is_behind) {
    load(TWO_SQUARES);
    give_materials(1);
    set_diffuse(0, 1, 1, 1);
    for (int i = 0; i < 4; i++)
        model.face[i].material_id = 0;
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glClearColor(0, 0, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    model_draw_faded(&model, 0.25f);
    expect_pixel(left(), 64, 64, 255);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(model.display_list_compiled, 0);
}

TEST_F(ModelDraw, fading_leaves_its_alpha_in_the_materials_used) {
    load(TWO_SQUARES);
    give_materials(2);
    model.face[2].material_id = model.face[3].material_id = 1;
    model_draw_faded(&model, 0.25f);
    for (const float *colour :
         {model.material[1].ambient, model.material[1].diffuse, model.material[1].specular})
        EXPECT_EQ(colour[3], 0.25f);
    EXPECT_EQ(model.material[0].diffuse[3], 1.0f); // no face uses it
}

TEST_F(ModelDraw, the_fade_is_compiled_into_the_list_and_does_not_show_there) {
    load(TWO_SQUARES);
    give_materials(1);
    set_diffuse(0, 1, 1, 1);
    for (int i = 0; i < 4; i++)
        model.face[i].material_id = 0;
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    model_draw_faded(&model, 0.25f);
    clear();
    model_draw(&model);
    expect_pixel(left(), 255, 255, 255);
    GLfloat diffuse[4] = {};
    glGetMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse);
    EXPECT_EQ(diffuse[3], 0.25f);
}

TEST_F(ModelDraw, drawing_leaves_the_matrix_as_it_was) {
    load(TWO_SQUARES);
    glTranslatef(1, 2, 3);
    GLfloat before[16], after[16];
    GLint depth_before = 0, depth_after = 0;
    glGetFloatv(GL_MODELVIEW_MATRIX, before);
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth_before);
    model_draw(&model);
    model_draw_faded(&model, 0.5f);
    glGetFloatv(GL_MODELVIEW_MATRIX, after);
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth_after);
    EXPECT_EQ(depth_before, depth_after);
    for (int i = 0; i < 16; i++)
        EXPECT_EQ(before[i], after[i]);
}

TEST_F(ModelDraw, an_unloaded_model_draws_nothing) {
    load(TWO_SQUARES);
    model_unload(&model);
    model_draw(&model);
    model_draw_faded(&model, 0.5f);
    EXPECT_EQ(gl_count_differing(0, 0, SIZE, SIZE, {0, 0, 0}, 0), 0);
}

TEST_F(ModelDraw, its_reach_is_that_of_the_farthest_corner_drawn_and_endless_before_the_drawing) {
    load("v 0 0 0\nv 3 0 0\nv 0 0 4\nv 9 9 9\nv 1 2 2\nvn 0 0 1\n"
         "f 1//1 2//1 5//1\nf 1//1 2//1 3//1\nf 1//1 2//1 99//1\nf 4//1 4//1\n");
    EXPECT_TRUE(std::isinf(model_reach(&model)));
    model_draw(&model);
    EXPECT_FLOAT_EQ(model_reach(&model), 4.0f);
}
