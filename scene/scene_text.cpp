#include "scene/scene_text.h"

#include "assets/tex_font.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/gl.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_materials.h"
#include "scene/scene_page.h"

#include <algorithm>

static constexpr float VIEW_MARGIN = 5.0f; // floor units around the window

// Floor units below the near edge of the object's footprint, to the baseline.
static constexpr float NAME_OFFSET = 0.6f;
static constexpr float DESCRIPTION_OFFSET = 1.4f;
static constexpr float NAME_DISTANCE = 92.0f; // text plane, below the camera's distance

static constexpr float LABEL_BASELINE = 0.3f;    // floor units below the label's middle
static constexpr float LABEL_SIDE_MARGIN = 0.3f; // floor units, of its box beyond the text
static constexpr float LABEL_HALF_HEIGHT = 0.5f; // floor units, of its box

// Where the baseline of the page title starts, window pixels; the second from the bottom.
static constexpr float TEXTURE_TITLE_X = 10.0f, TEXTURE_TITLE_Y = 48.0f; // from the top
static constexpr float TITLE_X = 12.0f, TITLE_BELOW_TOP = 43.0f;

// ---- fonts by zoom level

struct TextFonts {
    const BitmapFont *font;
    const TexFontSet *set;
};

static constexpr std::int32_t KEYS = 9; // zoom levels

// Texts of levels without an entry use the default, the last one.
static const TextFonts NAME_FONTS[KEYS + 1] = {
    {&font_node_name_0, &tahoma_9_bold},    {&font_node_name_1, &tahoma_10_bold},
    {&font_node_name_2, &tahoma_11_bold},   {&font_node_name_3, &tahoma_12_bold},
    {&font_node_name_4, &tahoma_13_bold},   {&font_node_name_5, &tahoma_14_bold},
    {&font_node_name_6, &tahoma_15_bold},   {&font_node_name_7, &tahoma_16_bold},
    {&font_node_name_8, &tahoma_21_normal}, {&font_node_name_7, &tahoma_14_bold},
};
static const TextFonts DESCRIPTION_FONTS[KEYS + 1] = {
    {&font_node_desc_0, &tahoma_7_normal},  {&font_node_desc_1, &tahoma_8_normal},
    {&font_node_desc_2, &tahoma_9_close},   {&font_node_desc_3, &tahoma_9_normal},
    {&font_node_desc_4, &tahoma_10_normal}, {&font_node_desc_5, &tahoma_11_normal},
    {&font_node_desc_6, &tahoma_12_normal}, {&font_node_desc_7, &tahoma_13_normal},
    {&font_node_desc_8, &tahoma_15_normal}, {&font_node_desc_7, &tahoma_11_normal},
};
// Two steps larger than the names.
static const TextFonts LABEL_FONTS[KEYS + 1] = {
    {&font_node_name_2, &tahoma_11_bold},    {&font_node_name_3, &tahoma_12_bold},
    {&font_node_name_4, &tahoma_13_bold},    {&font_node_name_5, &tahoma_14_bold},
    {&font_node_name_6, &tahoma_15_bold},    {&font_node_name_7, &tahoma_16_bold},
    {&font_node_name_8, &tahoma_21_normal},  {&font_node_name_9, &tahoma_24_normal},
    {&font_node_name_10, &tahoma_28_normal}, {&font_node_name_7, &tahoma_14_bold},
};

static const TextFonts &fonts_at_zoom(const TextFonts (&fonts)[KEYS + 1]) {
    const std::int32_t key = static_cast<std::int32_t>(scene_floor.distance - ZOOM_DISTANCE_MIN);
    const bool level = key >= 0 && key < KEYS * 10 && key % 10 == 0;
    return fonts[level ? key / 10 : KEYS];
}

// ---- drawing state

// The text takes on exactly the colour: it is lit by ambient light alone, of which there is as much
// as the lamp has and none besides.
static void begin_text(const FontColour &colour) {
    static constexpr float NONE[] = {0.0f, 0.0f, 0.0f, 1.0f};
    const float rgba[] = {colour.red, colour.green, colour.blue, 1.0f};
    glPushAttrib(GL_LIGHTING_BIT);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, NONE);
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, rgba);
    glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, NONE);
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, scene_floor_specular);
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 0.0f);
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, scene_floor_emission);
    glNormal3f(0.0f, 0.0f, 1.0f);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glDisable(GL_DEPTH_TEST);
}

static void end_text() {
    glEnable(GL_DEPTH_TEST);
    glPopAttrib();
}

// Window position, from the lower left, of a point before the camera.
struct WindowPoint {
    float x, y;
    std::int32_t window_height;
    bool valid;
};

static WindowPoint project(float x, float y, float z) {
    double modelview[16], projection[16];
    double window_x = 0.0, window_y = 0.0, window_z = 0.0;
    GLint viewport[4];
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    const bool valid =
        gluProject(static_cast<double>(x), static_cast<double>(y), static_cast<double>(z),
                   modelview, projection, viewport, &window_x, &window_y, &window_z) == GL_TRUE;
    return {static_cast<float>(window_x), static_cast<float>(window_y), viewport[3], valid};
}

// Draws with the baseline's middle at the point.
static void draw_centred(const TexFontSet *set, float x, float y, float z, const char *text) {
    const WindowPoint point = project(x, y, z);
    const float width = static_cast<float>(tex_font_get_string_width(set, "%s", text));
    if (point.valid)
        tex_font_printf(set, point.x - width / 2.0f,
                        static_cast<float>(point.window_height) - point.y, "%s", text);
}

// ---- names and descriptions of objects

static bool is_in_view(const Node &record, float margin_x) {
    const float x = record.x - scene_floor.position_x;
    const float y = record.y - scene_floor.position_y;
    return x > scene_floor.view_left - margin_x && x < scene_floor.view_right + margin_x &&
           y > scene_floor.view_bottom - VIEW_MARGIN && y < scene_floor.view_top + VIEW_MARGIN;
}

// One line below the object, centred by its width in the measuring font, whatever the zoom.
static void draw_below(const Node &record, float offset, const char *text, const TextFonts &fonts,
                       const BitmapFont &measuring_font) {
    const float x = record.x - scene_floor.position_x;
    const float y = record.y - scene_floor.position_y + record.dimensions[EXTENT_NEAR] - offset;
    const float z = scene_floor.distance - NAME_DISTANCE - record.height;
    if (scene_uses_texture_fonts()) {
        draw_centred(fonts.set, x, y, z, text);
        return;
    }
    trRasterPos3f(x - font_get_string_width(&measuring_font, text) / 2.0f, y, z);
    font_printf(fonts.font, "%s", text);
}

void scene_draw_node_labels() {
    scene_fonts_require();
    const TextFonts &name_fonts = fonts_at_zoom(NAME_FONTS);
    const TextFonts &description_fonts = fonts_at_zoom(DESCRIPTION_FONTS);
    begin_text(font_white);
    for (std::int32_t i = 0; i < node_total; i++) {
        const Node &record = node[i];
        if ((record.type != NODE_OBJECT && record.type != NODE_PAGE) ||
            !is_in_view(record, VIEW_MARGIN))
            continue;
        draw_below(record, NAME_OFFSET, record.name, name_fonts, font_node_name_6);
        draw_below(record, DESCRIPTION_OFFSET, record.description, description_fonts,
                   font_node_desc_6);
    }
    end_text();
}

// ---- labels

// The box follows the text in one fixed font, so that hit tests and collisions do not depend on the
// zoom.
static void set_label_box(Node *record) {
    const float width = font_get_string_width(&font_node_name_8, record->description);
    record->dimensions[EXTENT_LEFT] = -0.5f * width - LABEL_SIDE_MARGIN;
    record->dimensions[EXTENT_RIGHT] = 0.5f * width + LABEL_SIDE_MARGIN;
    record->dimensions[EXTENT_NEAR] = -LABEL_HALF_HEIGHT;
    record->dimensions[EXTENT_FAR] = LABEL_HALF_HEIGHT;
}

static const FontColour &label_colour(const Node &record) {
    const bool selected =
        record.grab_state != GRAB_IDLE && app_mode == APP_EDIT && app_line_draw_mode == 0;
    return selected ? font_label_selected : font_label_normal;
}

static void draw_label(const Node &record) {
    const TextFonts &fonts = fonts_at_zoom(LABEL_FONTS);
    const float x = record.x - scene_floor.position_x;
    const float y = record.y - scene_floor.position_y - LABEL_BASELINE;
    const float z = scene_floor.distance + record.height - FLOOR_DISTANCE;
    begin_text(label_colour(record));
    if (scene_uses_texture_fonts()) {
        draw_centred(fonts.set, x, y, z, record.description);
    } else {
        trRasterPos3f(x, y, z);
        // Half of the width back: the advances are kept in sixteenths of a pixel.
        glBitmap(0, 0, 0.0f, 0.0f, -0.5f * font_pixel_width(fonts.font, record.description), 0.0f,
                 nullptr);
        font_printf(fonts.font, "%s", record.description);
    }
    end_text();
}

void scene_draw_labels() {
    scene_fonts_require();
    for (std::int32_t i = 0; i < node_total; i++) {
        Node &record = node[i];
        if (record.type != NODE_LABEL)
            continue;
        const float width = font_get_string_width(&font_node_name_8, record.description);
        // A long text reaches further into the window than the margin.
        const float margin = std::max(VIEW_MARGIN, 0.5f * width + LABEL_SIDE_MARGIN);
        record.pick_id = is_in_view(record, margin) ? i : NODE_PICK_NONE;
        if (record.pick_id == NODE_PICK_NONE)
            continue;
        set_label_box(&record);
        draw_label(record);
    }
}

std::int32_t scene_mouse_over_label(std::int32_t x, std::int32_t y) {
    float floor_x = 0.0f, floor_y = 0.0f;
    glPushMatrix();
    glLoadIdentity();
    // The plane in which the labels stand.
    GetOGLPos(x, y, &floor_x, &floor_y, gl_depth_of_zoom_level(DEPTH_LOOKUP_LABEL));
    glPopMatrix();
    for (std::int32_t i = 0; i < node_total; i++) {
        const Node &record = node[i];
        const float label_x = record.x - scene_floor.position_x;
        const float label_y = record.y - scene_floor.position_y;
        if (record.type == NODE_LABEL && floor_x >= label_x + record.dimensions[EXTENT_LEFT] &&
            floor_x <= label_x + record.dimensions[EXTENT_RIGHT] &&
            floor_y >= label_y + record.dimensions[EXTENT_NEAR] &&
            floor_y <= label_y + record.dimensions[EXTENT_FAR])
            return i;
    }
    return -1;
}

// ---- the title

void scene_draw_page_title() {
    scene_fonts_require();
    if (scene_stack_depth <= 0 && !orvanel_options.show_home_page_title)
        return;
    begin_text(font_white);
    if (scene_uses_texture_fonts()) {
        tex_font_printf(&tahoma_40_normal, TEXTURE_TITLE_X, TEXTURE_TITLE_Y, "%s",
                        scene_page_title);
    } else {
        glWindowPos2fMESAemulate(TITLE_X,
                                 static_cast<float>(scene_floor.window_height) - TITLE_BELOW_TOP);
        font_printf(&font_page_title, "%s", scene_page_title);
    }
    end_text();
}
