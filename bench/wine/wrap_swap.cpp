// Linked into the program under measurement with --wrap: the same objects as the shipped program,
// except that each swap also tells the benchmark.
#include "bench/wine/first_frame.h"

#ifdef _WIN64
#define SYMBOL(name) name
#else
#define SYMBOL(name) "_" name
#endif

void real_window_swap_buffers() __asm__(SYMBOL("__real__Z19window_swap_buffersv"));
void wrap_window_swap_buffers() __asm__(SYMBOL("__wrap__Z19window_swap_buffersv"));

void wrap_window_swap_buffers() {
    real_window_swap_buffers();
    first_frame_shown();
}
