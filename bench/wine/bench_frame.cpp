// One drawn frame of a full page beside the bare GL calls of the same frame, recorded into a
// display list and replayed: what is left is the cost of our own code. Prints the microseconds of
// every sample, one line a kind. The models folder is that beside the program.
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

#include <windows.h>

#include <cstdio>

static constexpr int SAMPLES = 12;
static constexpr int COLUMNS = 17;
static constexpr int ROWS = 15;
static constexpr float COLUMN_STEP = 6.0f; // floor units
static constexpr float ROW_STEP = 5.5f;
static const char *const MODELS[] = {"server.obj", "computer.obj", "printer.obj", "router.obj",
                                     "folder.obj", "globe.obj",    "database.obj"};

static double microseconds_now() {
    LARGE_INTEGER frequency, count;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    return 1.0e6 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

static void fill_page() {
    node_total = 0;
    for (int i = 0; i < COLUMNS * ROWS; i++) {
        node_init_node(i);
        node[i].type = NODE_OBJECT;
        text_format(node[i].name, sizeof node[i].name, "server%03d", i);
        text_copy(node[i].description, "Rack 7, unit 12");
        node[i].x = COLUMN_STEP * static_cast<float>(i % COLUMNS - COLUMNS / 2);
        node[i].y = ROW_STEP * static_cast<float>(i / COLUMNS - ROWS / 2);
        node[i].model_id = model_return_model_id(MODELS[i % static_cast<int>(std::size(MODELS))]);
        node_set_model_dimensions(i);
        node_total++;
    }
}

static double frame_of_program() {
    const double begin = microseconds_now();
    scene_request_redraw();
    scene_draw();
    glFinish();
    return microseconds_now() - begin;
}

static double frame_of_bare_calls(GLuint list, HDC dc) {
    const double begin = microseconds_now();
    glCallList(list);
    SwapBuffers(dc);
    glFinish();
    return microseconds_now() - begin;
}

static void print(const char *kind, const double (&samples)[SAMPLES]) {
    std::printf("%s", kind);
    for (const double sample : samples)
        std::printf(" %.1f", sample);
    std::printf("\n");
}

static HWND make_window(HDC *dc, HGLRC *context) {
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
    const HWND window = gl_create_window(dc, context, "frame benchmark");
    ShowWindow(window, SW_SHOW);
    window_attach(window, *dc);
    return window;
}

int main() {
    options_set_defaults();
    orvanel_options.initial_zoom_level = 0;
    char program[PATH_SIZE];
    location_program_file(program, sizeof program);
    for (char *cut = program; *cut != '\0'; cut++) {
        if (*cut == '\\')
            text_copy_limit(exe_location, static_cast<std::size_t>(cut + 1 - program), program);
    }
    text_format(object_dir_location, sizeof object_dir_location, "%smodels\\", exe_location);
    HDC dc = nullptr;
    HGLRC context = nullptr;
    const HWND window = make_window(&dc, &context);
    interaction_init();
    model_init();
    node_init_nodes();
    scene_init();
    RECT client;
    GetClientRect(window, &client);
    scene_resize(client.right, client.bottom);
    scene_floor_init();
    scene_invalidate_floor();
    fill_page();
    for (int i = 0; i < 3; i++) // lists are compiled, the floor's bounds worked out
        frame_of_program();

    const GLuint list = glGenLists(1);
    glNewList(list, GL_COMPILE_AND_EXECUTE);
    scene_request_redraw();
    scene_draw();
    glEndList();

    static double of_program[SAMPLES], of_bare_calls[SAMPLES];
    for (int i = 0; i < SAMPLES; i++) {
        of_program[i] = frame_of_program();
        of_bare_calls[i] = frame_of_bare_calls(list, dc);
    }
    print("frame/orvanel", of_program);
    print("frame/bare", of_bare_calls);
    gl_destroy_window(window, dc, context);
    return 0;
}
