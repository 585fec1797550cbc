#include "platform/colour_chooser.h"

#include "platform/posix/recorder.h"

std::int32_t colour_choose(std::int32_t *red, std::int32_t *green, std::int32_t *blue) {
    recorder.colour_offered = {*red, *green, *blue};
    if (!recorder.chooses_colour)
        return 1;
    *red = recorder.colour_choice.red;
    *green = recorder.colour_choice.green;
    *blue = recorder.colour_choice.blue;
    return 0;
}
