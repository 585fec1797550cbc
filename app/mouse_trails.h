// Mouse trails smear over a GL window: they are off while the program runs.
#pragma once

#include <cstdint>

extern std::int32_t mouse_trails; // what the user had at start: 0 or 1 = none, else their number

void mouse_trails_init(); // remembers the system's setting, and switches trails off if there are
                          // any
void mouse_disable_trails();
void mouse_enable_trails(); // as they were at start
void mouse_trails_stop();   // puts back what init took away
