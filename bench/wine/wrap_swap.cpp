// Linked into the program under measurement with --wrap: the same objects as the shipped program,
// except that each swap also tells the benchmark and that there is no splash screen, which is shown
// for the sake of the time it takes.
#include "bench/wine/first_frame.h"

#ifdef _WIN64
#define SYMBOL(name) name
#else
#define SYMBOL(name) "_" name
#endif

void real_window_swap_buffers() __asm__(SYMBOL("__real__Z19window_swap_buffersv"));
void real_startup_splash_screen() __asm__(SYMBOL("__real__Z21startup_splash_screenv"));
void wrap_startup_splash_screen() __asm__(SYMBOL("__wrap__Z21startup_splash_screenv"));
void wrap_window_swap_buffers() __asm__(SYMBOL("__wrap__Z19window_swap_buffersv"));

void wrap_window_swap_buffers() {
    real_window_swap_buffers();
    first_frame_shown();
}

void wrap_startup_splash_screen() {}

// Wrapping a function that does not exist does nothing and tells nobody: the function named above
// has to be there for the program to link.
[[gnu::used]] static void (*const wrapped_function)() = real_startup_splash_screen;
