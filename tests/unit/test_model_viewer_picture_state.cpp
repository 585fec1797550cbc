// What the preview sets in its context: light, floor, texture, blending.
#include "tests/unit/viewer_picture_fixture.h"

#include "platform/resource.h"
#include "resources/resource_ids.h"

#include <array>
#include <vector>

using Colour = std::array<float, 4>;

static GLint integer(GLenum name) {
    GLint value = -1;
    glGetIntegerv(name, &value);
    return value;
}

static Colour colour(GLenum name) {
    Colour value = {-1.0f, -1.0f, -1.0f, -1.0f};
    glGetFloatv(name, value.data());
    return value;
}

static Colour of_light(GLenum name) {
    Colour value = {-1.0f, -1.0f, -1.0f, -1.0f};
    glGetLightfv(GL_LIGHT2, name, value.data());
    return value;
}

static Colour of_front(GLenum name) {
    Colour value = {-1.0f, -1.0f, -1.0f, -1.0f};
    glGetMaterialfv(GL_FRONT, name, value.data());
    return value;
}

static constexpr Colour WHITE = {1.0f, 1.0f, 1.0f, 1.0f};
static constexpr Colour BLACK = {0.0f, 0.0f, 0.0f, 1.0f};

// Shows the floor alone, of the colour of its material.
struct ViewerState : ViewerPicture {
    TestFolder folder;

    ViewerState() {
        folder.write("nothing.obj", "v 0 0 0\n\n");
        text_copy(object_dir_location, folder.path);
        model_viewer_model_id = model_return_model_id("nothing.obj");
    }
};

TEST_F(ViewerState, a_new_context_is_set_up_whole) {
    for (const GLenum ability :
         {GL_DEPTH_TEST, GL_CULL_FACE, GL_LIGHTING, GL_LIGHT2, GL_COLOR_MATERIAL, GL_MULTISAMPLE})
        EXPECT_TRUE(glIsEnabled(ability)) << ability;
    EXPECT_FALSE(glIsEnabled(GL_LIGHT1)); // that of the main window
    EXPECT_EQ(integer(GL_SHADE_MODEL), GL_SMOOTH);
    EXPECT_EQ(integer(GL_DEPTH_FUNC), GL_LEQUAL);
    EXPECT_EQ(integer(GL_PERSPECTIVE_CORRECTION_HINT), GL_NICEST);
    EXPECT_EQ(integer(GL_CULL_FACE_MODE), GL_BACK);
    EXPECT_EQ(colour(GL_DEPTH_CLEAR_VALUE)[0], 1.0f); // the largest there is
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(ViewerState, the_background_is_what_the_control_stands_on) {
    model_viewer_picture_free();
    model_viewer_picture_init({0.25f, 0.5f, 0.75f});
    const Colour clear = colour(GL_COLOR_CLEAR_VALUE);
    EXPECT_EQ(clear[0], 0.25f);
    EXPECT_EQ(clear[1], 0.5f);
    EXPECT_EQ(clear[2], 0.75f);
}

TEST_F(ViewerState, a_white_light_shines_over_the_left_shoulder_of_the_viewer) {
    EXPECT_EQ(of_light(GL_AMBIENT), WHITE);
    EXPECT_EQ(of_light(GL_DIFFUSE), WHITE);
    EXPECT_EQ(of_light(GL_SPECULAR), WHITE);
    EXPECT_EQ(of_light(GL_POSITION), (Colour{-5.0f, 5.0f, 20.0f, 1.0f}));
}

TEST_F(ViewerState, the_light_stays_with_the_viewer_whatever_was_drawn_before) {
    glMatrixMode(GL_MODELVIEW);
    glTranslatef(100.0f, 0.0f, 0.0f);
    model_viewer_lights_init();
    EXPECT_EQ(of_light(GL_POSITION), (Colour{-5.0f, 5.0f, 20.0f, 1.0f}));
}

// ---- the floor

TEST_F(ViewerState, the_floor_is_white_dull_and_partly_transparent) {
    draw();
    const Colour floor_colour = {1.0f, 1.0f, 1.0f, 0.65f};
    EXPECT_EQ(of_front(GL_AMBIENT), floor_colour);
    EXPECT_EQ(of_front(GL_DIFFUSE), floor_colour);
    EXPECT_EQ(of_front(GL_SPECULAR), BLACK);
    EXPECT_EQ(of_front(GL_EMISSION), BLACK);
    EXPECT_EQ(of_front(GL_SHININESS)[0], 0.0f);
    const Colour normal = colour(GL_CURRENT_NORMAL);
    EXPECT_EQ(normal[0], 0.0f);
    EXPECT_EQ(normal[1], 0.0f);
    EXPECT_EQ(normal[2], 1.0f);
}

TEST_F(ViewerState, the_floor_leaves_no_blending_and_no_texture_switched_on) {
    draw();
    EXPECT_EQ(integer(GL_BLEND_SRC), GL_SRC_ALPHA);
    EXPECT_EQ(integer(GL_BLEND_DST), GL_ONE_MINUS_SRC_ALPHA);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(integer(GL_CULL_FACE_MODE), GL_BACK);
}

TEST_F(ViewerState, the_texture_of_the_floor_is_the_picture_among_the_resources) {
    EXPECT_EQ(RESOURCE_VIEWER_FLOOR, 222);
    BitmapPixels picture;
    ASSERT_EQ(resource_bitmap(222, &picture), 0);
    glBindTexture(GL_TEXTURE_2D, model_viewer_floor_texture);
    GLint width = 0, height = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
    ASSERT_EQ(width, picture.width);
    ASSERT_EQ(height, picture.height);
    std::vector<std::uint8_t> texels(picture.bytes.size());
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, texels.data());
    std::size_t different = 0;
    for (std::size_t i = 0; i < texels.size(); i += 3) {
        const bool same = texels[i] == picture.bytes[i + 2] &&
                          texels[i + 1] == picture.bytes[i + 1] &&
                          texels[i + 2] == picture.bytes[i];
        different += same ? 0 : 1;
    }
    EXPECT_EQ(different, 0u);
}

TEST_F(ViewerState, the_texture_of_the_floor_repeats_is_smooth_and_takes_the_light) {
    glBindTexture(GL_TEXTURE_2D, model_viewer_floor_texture);
    for (const auto &[name, value] : {std::pair{GL_TEXTURE_WRAP_S, GL_REPEAT},
                                      {GL_TEXTURE_WRAP_T, GL_REPEAT},
                                      {GL_TEXTURE_MIN_FILTER, GL_LINEAR},
                                      {GL_TEXTURE_MAG_FILTER, GL_LINEAR}}) {
        GLint set = 0;
        glGetTexParameteriv(GL_TEXTURE_2D, static_cast<GLenum>(name), &set);
        EXPECT_EQ(set, value) << name;
    }
    GLint mode = 0;
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
    EXPECT_EQ(mode, GL_MODULATE);
}

// ---- the floor as it is seen

// A view without perspective of 50 units: 4 pixels a unit. The floor lies across the middle.
static void look_straight() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-25.0, 25.0, -25.0, 25.0, 0.0, 100.0);
    glMatrixMode(GL_MODELVIEW);
}

// The quarters of the floor in their middles: by x and by nearness to the viewer.
static Pixel quarter(bool right, bool far) {
    return gl_pixel(100 + (right ? 32 : -32), far ? 89 : 111);
}

// 65 of 100 parts of the floor, the rest of what lies behind it.
static void expect_mixed(Pixel pixel, Pixel texel, Pixel background, const char *where) {
    static constexpr double TOLERANCE = 4.0; // pixels do not lie on the middle exactly
    EXPECT_NEAR(pixel.red, 0.65 * texel.red + 0.35 * background.red, TOLERANCE) << where;
    EXPECT_NEAR(pixel.green, 0.65 * texel.green + 0.35 * background.green, TOLERANCE) << where;
    EXPECT_NEAR(pixel.blue, 0.65 * texel.blue + 0.35 * background.blue, TOLERANCE) << where;
}

// A picture of four colours in the place of the texture, seen on two backgrounds.
TEST_F(ViewerState, the_floor_shows_its_texture_and_lets_the_background_through) {
    static constexpr std::uint8_t PICTURE[] = {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};
    for (const Pixel background : {Pixel{240, 240, 240}, Pixel{0, 102, 51}}) {
        model_viewer_picture_free();
        model_viewer_picture_init({static_cast<float>(background.red) / 255.0f,
                                   static_cast<float>(background.green) / 255.0f,
                                   static_cast<float>(background.blue) / 255.0f});
        glBindTexture(GL_TEXTURE_2D, model_viewer_floor_texture);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, 2, 2, 0, GL_RGB, GL_UNSIGNED_BYTE, PICTURE);
        glBindTexture(GL_TEXTURE_2D, 0);
        look_straight();
        draw("viewer_floor_quarters");
        expect_mixed(quarter(false, false), {255, 0, 0}, background, "near left");
        expect_mixed(quarter(true, false), {0, 255, 0}, background, "near right");
        expect_mixed(quarter(false, true), {0, 0, 255}, background, "far left");
        expect_mixed(quarter(true, true), {255, 255, 255}, background, "far right");
    }
}

// The mirror image shows through the floor.
TEST_F(ViewerState, the_floor_lets_the_mirror_image_through_by_35_parts_of_100) {
    model_viewer_model_id = 0;
    orvanel_options.reflections = 1;
    draw();
    const Pixel with = gl_pixel(SIZE / 2, 185);
    orvanel_options.reflections = 0;
    draw();
    const Pixel without = gl_pixel(SIZE / 2, 185);
    // The mirror image is green: in red and blue it is darker than the background by 35 %.
    EXPECT_LT(with.blue, without.blue - 30);
    EXPECT_GE(with.blue, without.blue - 0.35 * BACKGROUND.blue - 1);
}
