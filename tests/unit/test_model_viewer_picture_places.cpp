// Where the preview puts the model, its mirror image and the floor: what reaches OpenGL's feedback
// buffer is compared with the places calculated here.
#include "tests/unit/viewer_picture_fixture.h"

#include <algorithm>
#include <cmath>
#include <vector>

struct Point {
    double x, y, z;
};

// ---- the places expected

static double radians(double degrees) {
    return degrees * 3.14159265358979323846 / 180.0;
}

static Point turned(Point p, double degrees) {
    const double c = std::cos(radians(degrees)), s = std::sin(radians(degrees));
    return {c * p.x + s * p.z, p.y, c * p.z - s * p.x};
}

// The eye looks down at 20 degrees.
static Point seen(Point p, double height, double distance) {
    const double c = std::cos(radians(20)), s = std::sin(radians(20));
    const double y = p.y + height, z = p.z + distance;
    return {p.x, c * y - s * z, s * y + c * z};
}

// ---- the places drawn

// A view in which the places that the eye sees can be read off the window, without perspective.
static constexpr double REACH = 40.0; // to all sides
static constexpr double DEPTH = 100.0;

struct Corner {
    Point place; // as the eye sees it
    double s, t; // on the texture
};

static std::vector<Corner> drawn_corners() {
    static constexpr std::size_t VALUES = 11; // x, y, z; colour; place on the texture
    static std::vector<float> buffer(100'000);
    std::vector<Corner> corners;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-REACH, REACH, -REACH, REACH, 0.0, DEPTH);
    glMatrixMode(GL_MODELVIEW);
    glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), GL_3D_COLOR_TEXTURE, buffer.data());
    glRenderMode(GL_FEEDBACK);
    model_viewer_picture_draw();
    const std::size_t used = static_cast<std::size_t>(glRenderMode(GL_RENDER));
    for (std::size_t at = 0; at < used;) {
        EXPECT_EQ(buffer[at], static_cast<float>(GL_POLYGON_TOKEN));
        const std::size_t total = static_cast<std::size_t>(buffer[at + 1]);
        at += 2;
        for (std::size_t i = 0; i < total && at < used; i++, at += VALUES) {
            const auto unit = [](float pixels) { return 2.0 * pixels / ViewerPicture::SIZE - 1.0; };
            corners.push_back({{REACH * unit(buffer[at]), REACH * unit(buffer[at + 1]),
                                -DEPTH * static_cast<double>(buffer[at + 2])},
                               static_cast<double>(buffer[at + 7]),
                               static_cast<double>(buffer[at + 8])});
        }
    }
    return corners;
}

static const Corner *find(const std::vector<Corner> &corners, Point place) {
    static constexpr double NEAR_ENOUGH = 0.003;
    for (const Corner &corner : corners) {
        if (std::abs(corner.place.x - place.x) < NEAR_ENOUGH &&
            std::abs(corner.place.y - place.y) < NEAR_ENOUGH &&
            std::abs(corner.place.z - place.z) < NEAR_ENOUGH)
            return &corner;
    }
    return nullptr;
}

// A triangle that faces the viewer: from -1 to 3 in height, so its padded box is 5 high.
static constexpr Point TRIANGLE[3] = {{-1.0, -1.0, 0.5}, {1.5, -1.0, 0.0}, {0.25, 3.0, -0.5}};
static constexpr double SCALE = 8.0 / 5.0;
static constexpr double BOTTOM = -1.5; // of the padded box

struct ViewerPlaces : ViewerPicture {
    TestFolder folder;

    ViewerPlaces() {
        folder.write("triangle.obj", "v -1 -1 0.5\nv 1.5 -1 0\nv 0.25 3 -0.5\nvn 0 0 1\n"
                                     "f 1//1 2//1 3//1\n\n");
        folder.write("nothing.obj", "v 0 0 0\n\n");
        folder.write("flat.obj", "v -2 0 2\nv 2 0 2\nv 2 0 -2\nvn 0 1 0\nf 1//1 2//1 3//1\n\n");
        text_copy(object_dir_location, folder.path);
        orvanel_options.reflections = 0;
    }
    static void show(const char *file) {
        model_viewer_model_id = model_return_model_id(file);
        ASSERT_NE(model_viewer_model_id, 0);
    }
    static std::size_t count_model(const std::vector<Corner> &corners, double angle) {
        std::size_t count = 0;
        for (const Point &p : TRIANGLE) {
            const Point scaled = {SCALE * p.x, SCALE * p.y, SCALE * p.z};
            count += find(corners, seen(turned(scaled, angle), -11.0 - SCALE * BOTTOM, -20.0)) !=
                     nullptr;
        }
        return count;
    }
    static std::size_t count_mirror(const std::vector<Corner> &corners, double angle) {
        std::size_t count = 0;
        for (const Point &p : TRIANGLE) {
            const Point scaled = {SCALE * p.x, -SCALE * p.y, SCALE * p.z};
            count +=
                find(corners, seen(turned(scaled, angle), SCALE * BOTTOM - 11.0, -20.0)) != nullptr;
        }
        return count;
    }
};

TEST_F(ViewerPlaces, the_floor_reaches_16_units_to_all_sides_and_bears_its_texture_once) {
    show("nothing.obj");
    const std::vector<Corner> corners = drawn_corners();
    for (const double x : {-16.0, 16.0}) {
        for (const double z : {-16.0, 16.0}) {
            const Corner *corner = find(corners, seen({x, 0.0, z}, -11.0, -30.0));
            ASSERT_NE(corner, nullptr) << x << " " << z;
            EXPECT_EQ(corner->s, x < 0.0 ? 0.0 : 1.0);
            EXPECT_EQ(corner->t, z > 0.0 ? 0.0 : 1.0);
        }
    }
    for (const Corner &corner : corners)
        EXPECT_NEAR(std::abs(corner.place.x), 16.0, 0.003); // nothing but these four
}

TEST_F(ViewerPlaces, the_model_stands_on_the_floor_8_units_high_at_its_angle) {
    show("triangle.obj");
    for (const float angle : {0.0f, 30.0f, 300.0f}) {
        model_viewer_model_angle = angle;
        EXPECT_EQ(count_model(drawn_corners(), static_cast<double>(angle)), 3u) << angle;
    }
}

TEST_F(ViewerPlaces, the_mirror_image_stands_on_its_head_below_the_model) {
    show("triangle.obj");
    orvanel_options.reflections = 1;
    for (const float angle : {0.0f, 30.0f, 300.0f}) {
        model_viewer_model_angle = angle;
        const std::vector<Corner> corners = drawn_corners();
        EXPECT_EQ(count_mirror(corners, static_cast<double>(angle)), 3u) << angle;
        EXPECT_EQ(count_model(corners, static_cast<double>(angle)), 3u) << angle;
    }
    model_viewer_model_angle = 0.0f;
    orvanel_options.reflections = 0;
    EXPECT_EQ(count_mirror(drawn_corners(), 0.0), 0u);
}

// The sides turned away are left out: in the mirror too, which turns them round.
TEST_F(ViewerPlaces, a_model_seen_from_behind_is_not_drawn_and_neither_is_its_mirror_image) {
    show("triangle.obj");
    orvanel_options.reflections = 1;
    model_viewer_model_angle = 180.0f;
    const std::vector<Corner> corners = drawn_corners();
    EXPECT_EQ(count_model(corners, 180.0), 0u);
    EXPECT_EQ(count_mirror(corners, 180.0), 0u);
    for (const Corner &corner : corners)
        EXPECT_NEAR(std::abs(corner.place.x), 16.0, 0.003); // the floor is still there
    EXPECT_FALSE(corners.empty());
}

TEST_F(ViewerPlaces, the_mirror_image_is_drawn_first_then_the_floor_over_it_then_the_model) {
    show("triangle.obj");
    orvanel_options.reflections = 1;
    model_viewer_model_angle = 0.0f;
    const std::vector<Corner> corners = drawn_corners();
    ASSERT_GT(corners.size(), 6u);
    const auto first = corners.begin(), last = corners.end();
    EXPECT_EQ(count_mirror({first, first + 3}, 0.0), 3u);
    EXPECT_EQ(count_model({last - 3, last}, 0.0), 3u);
}

// A box is never less than 1 high, so nothing is shown larger than 8 times its size.
TEST_F(ViewerPlaces, a_model_with_zero_height_is_drawn_with_a_finite_scale) {
    show("flat.obj");
    const Model &flat = models[model_viewer_model_id];
    EXPECT_EQ(flat.max_y - flat.min_y, 1.0f);
    model_viewer_model_angle = 0.0f;
    const std::vector<Corner> corners = drawn_corners();
    for (const Point &p : {Point{-2, 0, 2}, Point{2, 0, 2}, Point{2, 0, -2}}) {
        const Point scaled = {8.0 * p.x, 0.0, 8.0 * p.z};
        EXPECT_NE(find(corners, seen(scaled, -11.0 + 8.0 * 0.5, -20.0)), nullptr) << p.x << p.z;
    }
    // And it is seen: grey, where the floor alone is blue.
    model_viewer_resize(SIZE, SIZE);
    draw("viewer_flat");
    const Pixel grey = gl_pixel(141, 136);
    EXPECT_EQ(grey.blue, grey.red);
    show("nothing.obj");
    draw();
    const Pixel floor = gl_pixel(141, 136);
    EXPECT_GT(floor.blue, floor.red + 10);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

// ---- the eye

static std::vector<double> projection() {
    std::vector<double> matrix(16);
    glGetDoublev(GL_PROJECTION_MATRIX, matrix.data());
    return matrix;
}

static void expect_projection(double aspect) {
    const double f = 1.0 / std::tan(radians(35.0 / 2.0));
    std::vector<double> expected(16); // column by column
    expected[0] = f / aspect;
    expected[5] = f;
    expected[10] = (100.0 + 5.0) / (5.0 - 100.0);
    expected[11] = -1.0;
    expected[14] = 2.0 * 100.0 * 5.0 / (5.0 - 100.0);
    const std::vector<double> matrix = projection();
    for (std::size_t i = 0; i < 16; i++)
        EXPECT_NEAR(matrix[i], expected[i], 1e-5 * std::max(1.0, std::abs(expected[i]))) << i;
}

static void expect_viewport(GLint width, GLint height) {
    GLint viewport[4] = {-1, -1, -1, -1};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[0], 0);
    EXPECT_EQ(viewport[1], 0);
    EXPECT_EQ(viewport[2], width);
    EXPECT_EQ(viewport[3], height);
}

TEST_F(ViewerPlaces, the_eye_sees_35_degrees_from_5_to_100_units_over_the_whole_control) {
    model_viewer_resize(150, 100);
    expect_projection(1.5);
    expect_viewport(150, 100);
    model_viewer_resize(80, 160);
    expect_projection(0.5);
    expect_viewport(80, 160);
}

TEST_F(ViewerPlaces, a_height_of_0_counts_as_1) {
    model_viewer_resize(150, 0);
    expect_projection(150.0);
    expect_viewport(150, 0);
}

// Matrices are left as other drawing expects them.
TEST_F(ViewerPlaces, after_a_change_of_size_the_places_are_those_of_before) {
    show("triangle.obj");
    model_viewer_model_angle = 0.0f;
    draw();
    model_viewer_resize(SIZE, SIZE);
    EXPECT_EQ(count_model(drawn_corners(), 0.0), 3u);
}
