#include "scene/gl_util.h"

#include <initializer_list>

std::int32_t fsaa_possible;
std::int32_t arbMultisampleSupported;
std::int32_t arbMultisampleFormat;

// Attributes of WGL_ARB_pixel_format and WGL_ARB_multisample.
enum PixelFormatAttribute : std::int32_t {
    WGL_DRAW_TO_WINDOW_ARB = 0x2001,
    WGL_ACCELERATION_ARB = 0x2003,
    WGL_SUPPORT_OPENGL_ARB = 0x2010,
    WGL_DOUBLE_BUFFER_ARB = 0x2011,
    WGL_COLOR_BITS_ARB = 0x2014,
    WGL_ALPHA_BITS_ARB = 0x201B,
    WGL_DEPTH_BITS_ARB = 0x2022,
    WGL_STENCIL_BITS_ARB = 0x2023,
    WGL_FULL_ACCELERATION_ARB = 0x2027,
    WGL_SAMPLE_BUFFERS_ARB = 0x2041,
    WGL_SAMPLES_ARB = 0x2042,
};

static bool find_format(PixelFormatChooser choose, void *device, std::int32_t samples,
                        std::int32_t *format) {
    const std::int32_t attributes[] = {
        WGL_DRAW_TO_WINDOW_ARB,
        1,
        WGL_SUPPORT_OPENGL_ARB,
        1,
        WGL_ACCELERATION_ARB,
        WGL_FULL_ACCELERATION_ARB,
        WGL_COLOR_BITS_ARB,
        24,
        WGL_ALPHA_BITS_ARB,
        8,
        WGL_DEPTH_BITS_ARB,
        16,
        WGL_STENCIL_BITS_ARB,
        0,
        WGL_DOUBLE_BUFFER_ARB,
        1,
        WGL_SAMPLE_BUFFERS_ARB,
        1,
        WGL_SAMPLES_ARB,
        samples,
        0,
        0,
    };
    return choose(device, attributes, format);
}

std::int32_t gl_choose_multisample_format(PixelFormatChooser choose, void *device) {
    for (const std::int32_t samples : {4, 2}) {
        std::int32_t format = 0;
        if (find_format(choose, device, samples, &format)) {
            arbMultisampleFormat = format;
            arbMultisampleSupported = 1;
            return 1;
        }
    }
    return arbMultisampleSupported;
}
