#include "dialogs/rules/model_viewer_picture.h"

#include "tests/unit/viewer_picture_fixture.h"

static constexpr std::int32_t SIZE = ViewerPicture::SIZE;

// The built-in model is green.
static std::int32_t green_pixels(std::int32_t top, std::int32_t bottom) {
    std::int32_t count = 0;
    for (std::int32_t y = top; y < bottom; y++) {
        for (std::int32_t x = 0; x < SIZE; x++) {
            const Pixel pixel = gl_pixel(x, y);
            count += pixel.green > pixel.red + 12 && pixel.green > pixel.blue + 12 ? 1 : 0;
        }
    }
    return count;
}

TEST_F(ViewerPicture, a_model_stands_in_its_own_colours_in_front_of_the_background) {
    draw("viewer_default");
    EXPECT_GT(green_pixels(40, 120), 1500);
    const Pixel corner = gl_pixel(2, 2);
    EXPECT_EQ(corner.red, BACKGROUND.red);
    EXPECT_EQ(corner.blue, BACKGROUND.blue);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(ViewerPicture, with_nothing_to_show_there_is_the_background_alone) {
    draw();
    model_viewer_model_id = -1;
    draw();
    EXPECT_EQ(gl_count_differing(0, 0, SIZE, SIZE, BACKGROUND, 1), 0);
    model_viewer_model_id = models_total; // no model has this index
    draw();
    EXPECT_EQ(gl_count_differing(0, 0, SIZE, SIZE, BACKGROUND, 1), 0);
}

TEST_F(ViewerPicture, the_mirror_image_shows_below_only_with_reflections_on) {
    orvanel_options.reflections = 1;
    draw("viewer_reflection");
    const std::int32_t with = green_pixels(150, SIZE);
    orvanel_options.reflections = 0;
    draw("viewer_no_reflection");
    EXPECT_GT(with, green_pixels(150, SIZE) + 300);
    EXPECT_GT(green_pixels(40, 120), 1500);
}

// Rows from the first to the last that the model covers in the middle third, without a mirror.
static std::int32_t shown_height() {
    std::int32_t first = SIZE, last = 0;
    for (std::int32_t y = 0; y < SIZE; y++) {
        for (std::int32_t x = SIZE / 3; x < 2 * SIZE / 3; x++) {
            const Pixel pixel = gl_pixel(x, y);
            if (pixel.green > pixel.red + 12) {
                first = std::min(first, y);
                last = std::max(last, y);
            }
        }
    }
    return last - first;
}

TEST_F(ViewerPicture, a_large_model_is_shown_as_high_as_a_small_one) {
    orvanel_options.reflections = 0;
    draw();
    const std::int32_t height = shown_height();
    Model *model = &models[0];
    for (std::int32_t i = 0; i < 3 * model->vertex_total; i++)
        model->vertex[i] *= 40.0f;
    for (float *bound : {&model->min_x, &model->max_x, &model->min_y, &model->max_y})
        *bound *= 40.0f;
    model_viewer_picture_free();
    model_viewer_picture_init({1.0f, 1.0f, 1.0f});
    draw();
    EXPECT_NEAR(shown_height(), height, 2);
}

TEST_F(ViewerPicture, models_of_all_sizes_are_lit_alike) {
    draw();
    const Pixel small = gl_pixel(SIZE / 2, 90);
    Model *model = &models[0];
    for (std::int32_t i = 0; i < 3 * model->vertex_total; i++)
        model->vertex[i] *= 40.0f;
    for (float *bound : {&model->min_y, &model->max_y})
        *bound *= 40.0f;
    model_viewer_picture_free();
    model_viewer_picture_init({1.0f, 1.0f, 1.0f});
    draw();
    EXPECT_NEAR(gl_pixel(SIZE / 2, 90).green, small.green, 3);
}

TEST_F(ViewerPicture, the_display_lists_of_the_main_window_are_left_alone) {
    models[0].display_list = 4711;
    models[0].display_list_compiled = 1; // in another context
    draw();
    EXPECT_GT(green_pixels(40, 120), 1500);
    EXPECT_EQ(models[0].display_list, 4711u);
    EXPECT_EQ(models[0].display_list_compiled, 1);
    models[0].display_list_compiled = 0;
}

static std::int32_t lists_in_use() {
    std::int32_t count = 0;
    for (GLuint name = 1; name < 200; name++)
        count += glIsList(name) != 0 ? 1 : 0;
    return count;
}

TEST_F(ViewerPicture, stepping_through_models_leaves_one_display_list_and_the_end_none) {
    const std::int32_t printer = model_return_model_id("printer.obj");
    ASSERT_NE(printer, 0);
    const std::int32_t before = lists_in_use();
    for (int i = 0; i < 10; i++) {
        model_viewer_model_id = i % 2 == 0 ? printer : 0;
        draw();
        EXPECT_EQ(lists_in_use(), before + 1);
        EXPECT_EQ(green_pixels(40, 120) > 1500, i % 2 != 0); // the printer is not green
    }
    const GLuint texture = model_viewer_floor_texture;
    EXPECT_TRUE(glIsTexture(texture));
    model_viewer_picture_free();
    EXPECT_EQ(lists_in_use(), before);
    EXPECT_FALSE(glIsTexture(texture));
}

// They come under one id, one after the other.
TEST_F(ViewerPicture, each_of_the_models_that_are_only_looked_at_is_drawn_as_it_is) {
    TestFolder folder;
    text_copy(object_dir_location, folder.path);
    folder.write("colours.mtl", "newmtl green\nKd 0 1 0\n\nnewmtl red\nKd 1 0 0\n\n");
    for (const std::string colour : {"green", "red"})
        folder.write((colour + ".obj").c_str(),
                     "mtllib colours.mtl\nv -2 0 0\nv 2 0 0\nv 0 4 0\nvn 0 0 1\nusemtl " + colour +
                         "\nf 1//1 2//1 3//1\n\n");
    model_viewer_model_angle = 0.0f;
    const std::int32_t before = lists_in_use();
    for (int i = 0; i < 6; i++) {
        const bool green = i % 2 == 0;
        model_viewer_model_id = model_return_preview_id(green ? "green.obj" : "red.obj");
        ASSERT_EQ(model_viewer_model_id, MODEL_PREVIEW);
        draw();
        const Pixel pixel = gl_pixel(SIZE / 2, 110);
        EXPECT_EQ(pixel.green > pixel.red + 100, green);
        EXPECT_EQ(pixel.red > pixel.green + 100, !green);
        EXPECT_EQ(lists_in_use(), before + 1);
    }
    EXPECT_EQ(models[MODEL_PREVIEW].display_list_compiled, 0);
    model_free_preview();
    draw();
    EXPECT_EQ(gl_count_differing(0, 0, SIZE, SIZE, BACKGROUND, 1), 0);
}

TEST_F(ViewerPicture, a_size_without_height_does_no_harm) {
    model_viewer_resize(SIZE, 0);
    draw();
    model_viewer_resize(0, 0);
    draw();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    model_viewer_resize(SIZE, SIZE);
    draw();
    EXPECT_GT(green_pixels(40, 120), 1500);
}

TEST_F(ViewerPicture, the_shipped_models_look_as_they_should) {
    for (const char *file : {"printer.obj", "page_orvanel.obj", "globe.obj", "users.obj"}) {
        model_viewer_model_id = model_return_model_id(file);
        EXPECT_NE(model_viewer_model_id, 0) << file;
        model_viewer_model_angle = 25.0f;
        draw((std::string("viewer_") + file).c_str());
        EXPECT_GT(gl_count_differing(60, 40, 80, 80, BACKGROUND, 30), 700) << file;
    }
}
