#include "scene/scene_navigation.h"

#include "assets/tex_font.h"
#include "platform/gl.h"
#include "platform/resource.h"
#include "resources/resource_ids.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "scene/scene_text.h"

#include <algorithm>
#include <cmath>
#include <vector>

std::uint32_t navigation_button_texture[NAVIGATION_BUTTONS];

static constexpr float BUTTON_TOP = 14.0f;        // pixels
static constexpr float BUTTON_DISTANCE = 39.0f;   // pixels from one button to the next
static constexpr float AFTER_TITLE = 11.0f;       // pixels
static constexpr float PIXELS_PER_UNIT = 24.0f;   // of the outline font's widths
static constexpr std::size_t BITMAP_CHANNELS = 3; // blue, green, red
static constexpr std::uint8_t OPAQUE_ALPHA = 255;

// ---- textures

// The artwork is drawn with this in mind: black, and every colour without red, is see-through.
static std::vector<std::uint8_t> with_transparency(const BitmapPixels &bitmap) {
    std::vector<std::uint8_t> rgba;
    rgba.reserve(bitmap.bytes.size() / BITMAP_CHANNELS * 4);
    for (std::size_t i = 0; i + BITMAP_CHANNELS <= bitmap.bytes.size(); i += BITMAP_CHANNELS) {
        const std::uint8_t red = bitmap.bytes[i + 2];
        rgba.insert(rgba.end(), {red, bitmap.bytes[i + 1], bitmap.bytes[i],
                                 red != 0 ? OPAQUE_ALPHA : std::uint8_t{0}});
    }
    return rgba;
}

void scene_load_navigation_button_texture(int resource_id, std::int32_t slot) {
    BitmapPixels bitmap;
    if (resource_bitmap(resource_id, &bitmap) != 0)
        return;
    const std::vector<std::uint8_t> rgba = with_transparency(bitmap);
    glGenTextures(1, &navigation_button_texture[slot]);
    glBindTexture(GL_TEXTURE_2D, navigation_button_texture[slot]);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, bitmap.width, bitmap.height, 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, rgba.data());
}

void scene_navigation_init() {
    static constexpr NavigationId ids[NAVIGATION_BUTTONS] = {NAVIGATION_BACK, NAVIGATION_HOME};
    static constexpr int bitmaps[NAVIGATION_BUTTONS] = {RESOURCE_BUTTON_BACK, RESOURCE_BUTTON_HOME};
    for (std::int32_t slot = 0; slot < NAVIGATION_BUTTONS; slot++) {
        scene_floor.button[slot] = {};
        scene_floor.button[slot].previous_hover = -1;
        scene_floor.button[slot].texture_slot = slot;
        scene_floor.button[slot].id = ids[slot];
        navigation_button_texture[slot] = 0;
        scene_load_navigation_button_texture(bitmaps[slot], slot);
    }
}

void scene_navigation_stop() {
    glDeleteTextures(NAVIGATION_BUTTONS, navigation_button_texture);
    std::fill_n(navigation_button_texture, NAVIGATION_BUTTONS, 0u);
}

// ---- which buttons there are

// A page named on the command line was not reached from its parent: the only way out is home.
static bool is_offered(const NavigationButton &button) {
    if (scene_stack_depth < 1)
        return false;
    if (button.id == NAVIGATION_BACK)
        return open_mode == 0;
    return open_mode == 1 || scene_stack_depth > 1;
}

static bool holds(const NavigationButton &button, float x, float y) {
    return x >= button.x && x <= button.x + NAVIGATION_BUTTON_SIZE && y >= button.y &&
           y <= button.y + NAVIGATION_BUTTON_SIZE;
}

std::int32_t scene_mouse_over_button(std::int32_t x, std::int32_t y) {
    std::int32_t hit = -1;
    for (NavigationButton &button : scene_floor.button) {
        const bool over = button.shown == 1 && is_offered(button) &&
                          holds(button, static_cast<float>(x), static_cast<float>(y));
        button.previous_hover = button.hover;
        button.hover = over ? 1 : 0;
        if (over)
            hit = button.id;
        if (button.hover != button.previous_hover)
            scene_request_redraw();
    }
    return hit;
}

// ---- drawing

static float title_width() {
    scene_fonts_require();
    if (scene_uses_texture_fonts())
        return static_cast<float>(
            tex_font_get_string_width(&tahoma_40_normal, "%s", scene_page_title));
    // An empty text has a negative width.
    return std::max(font_get_string_width(&font_page_title, scene_page_title), 0.0f) *
           PIXELS_PER_UNIT;
}

// Window pixels from the top left, over everything; unlit, so that the artwork keeps its colours.
static void begin_window_drawing() {
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_POLYGON_BIT | GL_TEXTURE_BIT |
                 GL_COLOR_BUFFER_BIT);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0.0, scene_floor.window_width, scene_floor.window_height, 0.0, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glCullFace(GL_FRONT); // with y downwards the faces are turned round
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
}

static void end_window_drawing() {
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glPopAttrib();
}

static void draw_button(const NavigationButton &button) {
    const float left = button.hover == 1 ? 0.5f : 0.0f; // half of the texture
    const float right = left + 0.5f;
    constexpr float size = NAVIGATION_BUTTON_SIZE;
    glBindTexture(GL_TEXTURE_2D, navigation_button_texture[button.texture_slot]);
    glLoadName(static_cast<GLuint>(button.id));
    glLoadIdentity();
    glTranslatef(button.x, button.y, 0.0f);
    // A bitmap starts with its bottom row: t falls from the top of the picture to its bottom.
    glBegin(GL_QUADS);
    glTexCoord2f(left, 0.0f);
    glVertex2f(0.0f, 0.0f);
    glTexCoord2f(right, 0.0f);
    glVertex2f(size, 0.0f);
    glTexCoord2f(right, -1.0f);
    glVertex2f(size, size);
    glTexCoord2f(left, -1.0f);
    glVertex2f(0.0f, size);
    glEnd();
}

// Places the buttons in a row and forgets the light of those that are not in it.
static void place_buttons() {
    float x = std::round(title_width() + AFTER_TITLE);
    for (NavigationButton &button : scene_floor.button) {
        button.shown = is_offered(button) ? 1 : 0;
        if (button.shown == 0) {
            button.hover = 0;
            continue;
        }
        button.x = x;
        button.y = BUTTON_TOP;
        x += BUTTON_DISTANCE;
    }
}

void scene_draw_navigation_buttons() {
    place_buttons();
    if (scene_stack_depth < 1)
        return;
    begin_window_drawing();
    for (const NavigationButton &button : scene_floor.button) {
        if (button.shown == 1)
            draw_button(button);
    }
    end_window_drawing();
}
