// What lies under the mouse on a full page of models of 2,000 triangles each, asked for all over
// the window. Prints the microseconds of every sample.
#include "assets/model.h"
#include "bench/wine/bench_scene.h"
#include "platform/text.h"
#include "scene/gl_util.h"
#include "scene/scene_floor.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

static constexpr std::int32_t RINGS = 26; // a globe of 2 * 40 * 25 triangles
static constexpr std::int32_t SECTORS = 40;
static constexpr std::int32_t TRIANGLES = 2 * SECTORS * (RINGS - 1);
static_assert(TRIANGLES == 2000);
static constexpr std::int32_t KINDS = 7; // of models on the page
static constexpr std::int32_t SAMPLES_X = 20;
static constexpr std::int32_t SAMPLES_Y = 15;

static void add_line(std::string *text, const char *format, auto... values) {
    char line[120];
    text_format(line, sizeof line, format, values...);
    *text += line;
}

static void add_corner(std::string *text, std::int32_t ring, std::int32_t sector, double radius) {
    const double down = std::numbers::pi * ring / RINGS;
    const double round = 2.0 * std::numbers::pi * sector / SECTORS;
    const double x = std::sin(down) * std::cos(round);
    const double y = std::sin(down) * std::sin(round);
    const double z = std::cos(down);
    add_line(text, "v %f %f %f\nvn %f %f %f\n", radius * x, radius * y, radius * z, x, y, z);
}

// Corner of the grid, counted from 1; the pole of the first and last ring is a corner a sector.
static std::int32_t corner(std::int32_t ring, std::int32_t sector) {
    return 1 + ring * SECTORS + sector % SECTORS;
}

static void add_triangle(std::string *text, std::int32_t a, std::int32_t b, std::int32_t c) {
    add_line(text, "f %d//%d %d//%d %d//%d\n", a, a, b, b, c, c);
}

static std::string globe(double radius) {
    std::string text;
    for (std::int32_t ring = 0; ring <= RINGS; ring++)
        for (std::int32_t sector = 0; sector < SECTORS; sector++)
            add_corner(&text, ring, sector, radius);
    for (std::int32_t ring = 0; ring < RINGS; ring++) {
        for (std::int32_t sector = 0; sector < SECTORS; sector++) {
            if (ring > 0)
                add_triangle(&text, corner(ring, sector), corner(ring + 1, sector),
                             corner(ring, sector + 1));
            if (ring < RINGS - 1)
                add_triangle(&text, corner(ring, sector + 1), corner(ring + 1, sector),
                             corner(ring + 1, sector + 1));
        }
    }
    return text;
}

static void fill_page() {
    std::array<std::int32_t, KINDS> ids;
    for (std::int32_t kind = 0; kind < KINDS; kind++) {
        Model *model = &models[models_total];
        if (model_load_memory(globe(1.5 + 0.15 * kind), "", model, 1.0f) != 0 ||
            model->face_total != TRIANGLES)
            std::abort();
        ids[static_cast<std::size_t>(kind)] = models_total++;
    }
    bench_fill_page(ids);
}

// Microseconds of asking at each of a grid of points, by whether an object was there.
struct Samples {
    std::vector<double> on_object, on_floor;
};

static void take_sample(std::int32_t x, std::int32_t y, Samples *samples) {
    const double begin = bench_microseconds();
    const std::int32_t id = selection(x, y);
    const double taken = bench_microseconds() - begin;
    (id != PICK_NOTHING ? samples->on_object : samples->on_floor).push_back(taken);
}

static Samples take_samples() {
    Samples samples;
    for (std::int32_t i = 0; i < SAMPLES_X * SAMPLES_Y; i++)
        take_sample((2 * (i % SAMPLES_X) + 1) * scene_floor.window_width / (2 * SAMPLES_X),
                    (2 * (i / SAMPLES_X) + 1) * scene_floor.window_height / (2 * SAMPLES_Y),
                    &samples);
    if (samples.on_object.empty() || samples.on_floor.empty())
        std::abort(); // not the page that was meant
    return samples;
}

int main() {
    const BenchScene scene = bench_scene_open("selection benchmark");
    fill_page();
    for (int i = 0; i < 3; i++)
        bench_draw_frame();
    take_samples(); // what the driver sets up at the first time
    const Samples samples = take_samples();
    bench_print("selection/255", samples.on_object);
    bench_print("selection/255/floor", samples.on_floor);
    for (std::int32_t id = 0; id < models_total; id++)
        models[id].reach = std::numeric_limits<float>::infinity(); // any of them may be hit
    bench_print("selection/255/all_drawn", take_samples().on_object);
    bench_scene_close(scene);
    return 0;
}
