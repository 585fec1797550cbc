// Linked into the program under measurement with --wrap: the same objects as the shipped program,
// left alone for three times half a minute. Prints the share of one core in percent that the
// process takes while its window shows, while it shows but its drawing is left out, and while it is
// minimised, with the number of frames drawn meanwhile.
#include "app/main_window.h"
#include "page/options.h"
#include "platform/window.h"
#include "scene/scene.h"

#include <cstdio>

#ifdef _WIN64
#define SYMBOL(name) name
#else
#define SYMBOL(name) "_" name
#endif

void real_main_loop_pass() __asm__(SYMBOL("__real__Z14main_loop_passv"));
void wrap_main_loop_pass() __asm__(SYMBOL("__wrap__Z14main_loop_passv"));
std::int32_t real_scene_draw() __asm__(SYMBOL("__real__Z10scene_drawv"));
std::int32_t wrap_scene_draw() __asm__(SYMBOL("__wrap__Z10scene_drawv"));

static constexpr double SETTLING = 5.0;   // seconds before each measurement
static constexpr double MEASURING = 30.0; // seconds

static bool drawing_left_out;
static int frames_drawn;

std::int32_t wrap_scene_draw() {
    if (drawing_left_out) {
        const bool wanted = scene_redraw_flag == 1 && !window_is_minimised();
        scene_redraw_flag = 0;
        return wanted ? 0 : 1;
    }
    const std::int32_t result = real_scene_draw();
    frames_drawn += result == 0 ? 1 : 0;
    return result;
}

static double seconds_now() {
    LARGE_INTEGER frequency, count;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

static double seconds_of(const FILETIME &time) {
    return 1e-7 * (4294967296.0 * time.dwHighDateTime + time.dwLowDateTime);
}

// Of all threads of the process, those of the GL driver included.
static double processor_seconds() {
    FILETIME created, ended, kernel, user;
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
    return seconds_of(kernel) + seconds_of(user);
}

static void show() {
    RECT frame;
    GetWindowRect(hWnd, &frame);
    SetCursorPos(frame.left + 40, frame.bottom - 20); // where no object is
}

static void leave_drawing_out() {
    drawing_left_out = true;
}

static void minimise() {
    drawing_left_out = false;
    ShowWindow(hWnd, SW_MINIMIZE);
}

static const struct {
    const char *name;
    void (*begin)();
} stages[] = {{"visible", show}, {"loop", leave_drawing_out}, {"minimised", minimise}};

static std::size_t stage;
static double settled_at; // 0 = the stage has not begun
static double processor_at_start;
static bool measuring;

static void end_stage(double now) {
    const double share = 100.0 * (processor_seconds() - processor_at_start) / (now - settled_at);
    std::printf("idle/%s %.3f\nidle/%s_frames %d\n", stages[stage].name, share, stages[stage].name,
                frames_drawn);
    std::fflush(stdout);
    measuring = false;
    settled_at = 0.0;
    if (++stage == std::size(stages))
        window_quit(0);
}

void wrap_main_loop_pass() {
    real_main_loop_pass();
    if (stage == std::size(stages))
        return;
    const double now = seconds_now();
    if (settled_at == 0.0) {
        stages[stage].begin();
        settled_at = now + SETTLING;
    } else if (!measuring && now >= settled_at) {
        measuring = true;
        settled_at = now;
        frames_drawn = 0;
        processor_at_start = processor_seconds();
    } else if (measuring && now >= settled_at + MEASURING) {
        end_stage(now);
    }
}
