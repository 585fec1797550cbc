#include "platform/colour_chooser.h"

#include "platform/win32/window_attach.h"

#include <windows.h>

#include <commdlg.h>

static constexpr int CUSTOM_COLOURS = 16;

static COLORREF custom_colours[CUSTOM_COLOURS]; // mixed by the user, black at first

static COLORREF pack(std::int32_t red, std::int32_t green, std::int32_t blue) {
    return static_cast<COLORREF>((red & 255) | (green & 255) << 8 | (blue & 255) << 16);
}

std::int32_t colour_choose(std::int32_t *red, std::int32_t *green, std::int32_t *blue) {
    CHOOSECOLORA choice = {};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = static_cast<HWND>(window_in_front());
    choice.rgbResult = pack(*red, *green, *blue);
    choice.lpCustColors = custom_colours;
    choice.Flags = CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR;
    if (ChooseColorA(&choice) == 0)
        return 1;
    *red = static_cast<std::int32_t>(choice.rgbResult & 255);
    *green = static_cast<std::int32_t>(choice.rgbResult >> 8 & 255);
    *blue = static_cast<std::int32_t>(choice.rgbResult >> 16 & 255);
    return 0;
}
