#include "bench/wine/bench_scene.h"

#include "assets/model.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/gl.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "platform/win32/window_attach.h"
#include "platform/window.h"
#include "scene/gl_window.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"

#include <cstdio>

static constexpr int COLUMNS = 17;
static constexpr int ROWS = 15;
static constexpr float COLUMN_STEP = 6.0f; // floor units
static constexpr float ROW_STEP = 5.5f;

double bench_microseconds() {
    LARGE_INTEGER frequency, count;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    return 1.0e6 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

void bench_print(const char *kind, std::span<const double> samples) {
    std::printf("%s", kind);
    for (const double sample : samples)
        std::printf(" %.1f", sample);
    std::printf("\n");
}

void bench_draw_frame() {
    scene_request_redraw();
    scene_draw();
    glFinish();
}

void bench_fill_page(std::span<const std::int32_t> model_ids) {
    node_total = 0;
    for (int i = 0; i < COLUMNS * ROWS; i++) {
        node_init_node(i);
        node[i].type = NODE_OBJECT;
        text_format(node[i].name, sizeof node[i].name, "server%03d", i);
        text_copy(node[i].description, "Rack 7, unit 12");
        node[i].x = COLUMN_STEP * static_cast<float>(i % COLUMNS - COLUMNS / 2);
        node[i].y = ROW_STEP * static_cast<float>(i / COLUMNS - ROWS / 2);
        node[i].model_id = model_ids[static_cast<std::size_t>(i) % model_ids.size()];
        node_set_model_dimensions(i);
        node_total++;
    }
}

void bench_find_models() {
    char program[PATH_SIZE];
    location_program_file(program, sizeof program);
    for (char *cut = program; *cut != '\0'; cut++) {
        if (*cut == '\\')
            text_copy_limit(exe_location, static_cast<std::size_t>(cut + 1 - program), program);
    }
    text_format(object_dir_location, sizeof object_dir_location, "%smodels\\", exe_location);
}

static BenchScene open_window(const char *title) {
    WNDCLASSEXA window_class = {};
    window_class.cbSize = sizeof window_class;
    window_class.style = CS_OWNDC;
    window_class.lpfnWndProc = DefWindowProcA;
    window_class.hInstance = GetModuleHandleA(nullptr);
    window_class.lpszClassName = MAIN_WINDOW_CLASS;
    RegisterClassExA(&window_class);
    screen_size(&screen_size_x, &screen_size_y);
    scene_floor.window_width = 1280;
    scene_floor.window_height = 980;
    BenchScene scene = {};
    scene.window = gl_create_window(&scene.dc, &scene.context, title);
    ShowWindow(scene.window, SW_SHOW);
    window_attach(scene.window, scene.dc);
    return scene;
}

BenchScene bench_scene_open(const char *title) {
    options_set_defaults();
    orvanel_options.initial_zoom_level = 0;
    bench_find_models();
    const BenchScene scene = open_window(title);
    interaction_init();
    model_init();
    node_init_nodes();
    scene_init();
    RECT client;
    GetClientRect(scene.window, &client);
    scene_resize(client.right, client.bottom);
    scene_floor_init();
    scene_invalidate_floor();
    return scene;
}

void bench_scene_close(const BenchScene &scene) {
    gl_destroy_window(scene.window, scene.dc, scene.context);
}
