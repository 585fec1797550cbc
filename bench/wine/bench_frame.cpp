// One drawn frame of a full page beside the bare GL calls of the same frame, recorded into a
// display list and replayed: what is left is the cost of our own code. Prints the microseconds of
// every sample, one line a kind.
#include "assets/model.h"
#include "bench/wine/bench_scene.h"
#include "platform/gl.h"
#include "scene/scene.h"

#include <array>

static constexpr int SAMPLES = 12;
static const char *const MODELS[] = {"server.obj", "computer.obj", "printer.obj", "router.obj",
                                     "folder.obj", "globe.obj",    "database.obj"};

static void fill_page() {
    std::array<std::int32_t, std::size(MODELS)> ids;
    for (std::size_t i = 0; i < ids.size(); i++)
        ids[i] = model_return_model_id(MODELS[i]);
    bench_fill_page(ids);
}

static double frame_of_program() {
    const double begin = bench_microseconds();
    bench_draw_frame();
    return bench_microseconds() - begin;
}

static double frame_of_bare_calls(GLuint list, HDC dc) {
    const double begin = bench_microseconds();
    glCallList(list);
    SwapBuffers(dc);
    glFinish();
    return bench_microseconds() - begin;
}

int main() {
    const BenchScene scene = bench_scene_open("frame benchmark");
    fill_page();
    for (int i = 0; i < 3; i++) // lists are compiled, the floor's bounds worked out
        bench_draw_frame();

    const GLuint list = glGenLists(1);
    glNewList(list, GL_COMPILE_AND_EXECUTE);
    scene_request_redraw();
    scene_draw();
    glEndList();

    static double of_program[SAMPLES], of_bare_calls[SAMPLES];
    for (int i = 0; i < SAMPLES; i++) {
        of_program[i] = frame_of_program();
        of_bare_calls[i] = frame_of_bare_calls(list, scene.dc);
    }
    bench_print("frame/orvanel", of_program);
    bench_print("frame/bare", of_bare_calls);
    bench_scene_close(scene);
    return 0;
}
