#include "scene/gl_util.h"

#include "platform/gl.h"
#include "platform/text.h"
#include "scene/scene_floor.h"

#include <algorithm>
#include <cmath>
#include <cstring>

float scene_fov;

const float depth_lookup[16] = {1.0f,     0.99865f, 0.99715f, 0.99547f, 0.99359f, 0.99145f,
                                0.98901f, 0.98619f, 0.98291f, 0.97902f, 0.97436f, 0.96866f,
                                0.96154f, 0.95238f, 0.94017f, 0.92308f};

// Besides the 255 of a byte; it makes the dark page colours of the program bright in the system's
// colour dialog. Meant, in both directions.
static constexpr float COLOUR_SCALE = 1.64f;

float gl_depth_of_zoom_level(std::int32_t entry) {
    return depth_lookup[entry + std::clamp(scene_floor.zoom_level, 0, ZOOM_LEVEL_MAX)];
}

// Reading back is slow, and pointless when the caller knows the depth.
static float read_depth(std::int32_t x, std::int32_t y) {
    float depth = 1.0f;
    glReadPixels(x, y, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    return depth;
}

float GetOGLPos(std::int32_t x, std::int32_t y, float *floor_x, float *floor_y, float depth) {
    double modelview[16], projection[16];
    GLint viewport[4] = {};
    *floor_x = 0.0f;
    *floor_y = 0.0f;
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    if (viewport[2] <= 0 || viewport[3] <= 0)
        return depth;
    const std::int32_t window_y = viewport[3] - y;
    const float used = depth != 0.0f ? depth : read_depth(x, window_y);
    double point_x = 0.0, point_y = 0.0, point_z = 0.0;
    if (gluUnProject(x, window_y, static_cast<double>(used), modelview, projection, viewport,
                     &point_x, &point_y, &point_z)) {
        *floor_x = static_cast<float>(point_x);
        *floor_y = static_cast<float>(point_y);
    }
    return used;
}

float unit_round(float value, float unit) {
    if (!(unit > 0.0f))
        return value;
    const float remainder = value - std::floor(value / unit) * unit;
    return remainder < unit * 0.5f ? value - remainder : value + (unit - remainder);
}

std::int32_t colour_opengl_to_win(float component) {
    return component > 0.0f ? static_cast<std::int32_t>(component * 255.0f * COLOUR_SCALE) : 0;
}

float colour_win_to_opengl(std::int32_t value) {
    return value < 1 ? 0.0f : static_cast<float>(value) / 255.0f / COLOUR_SCALE;
}

std::int32_t graphics_vendor_is_software(const char *vendor) {
    char lower[100];
    text_copy(lower, vendor);
    for (char &character : lower) {
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
        if (character == '\0')
            break;
    }
    return text_contains(lower, "microsoft") ? 1 : 0;
}

std::int32_t graphics_adapter_check() {
    const GLubyte *vendor = glGetString(GL_VENDOR);
    return vendor == nullptr ? 0
                             : graphics_vendor_is_software(reinterpret_cast<const char *>(vendor));
}

bool gl_extension_listed(const char *extensions, const char *name) {
    const std::size_t length = std::strlen(name);
    if (length == 0)
        return false;
    for (const char *found = std::strstr(extensions, name); found != nullptr;
         found = std::strstr(found + 1, name)) {
        const bool begins = found == extensions || found[-1] == ' ';
        const bool ends = found[length] == ' ' || found[length] == '\0';
        if (begins && ends)
            return true;
    }
    return false;
}
