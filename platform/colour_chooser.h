// The system's colour chooser. The posix side answers as the test has asked
// (platform/posix/recorder.h).
#pragma once

#include <cstdint>

// Opens over the main window with this colour chosen, components 0..255. 0 when the user chose one
// (it stands in the arguments then), 1 when not. The custom colours mixed in it stay for the life
// of the program.
std::int32_t colour_choose(std::int32_t *red, std::int32_t *green, std::int32_t *blue);
