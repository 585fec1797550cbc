// What the benchmarks that draw share: a window with an empty scene in it, set up as the program
// does it, and pages to put there. The models folder is that beside the program.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>

struct BenchScene {
    HWND window;
    HDC dc;
    HGLRC context;
};

void bench_find_models(); // exe_location and the models folder; bench_scene_open does it
BenchScene bench_scene_open(const char *title);
void bench_scene_close(const BenchScene &scene);

// A full page: 255 objects in rows, all in view at the farthest zoom level, their models by turns.
void bench_fill_page(std::span<const std::int32_t> model_ids);

double bench_microseconds();
void bench_draw_frame(); // and waits until it is on the screen

// One line: the kind and every sample.
void bench_print(const char *kind, std::span<const double> samples);
