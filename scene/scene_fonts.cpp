#include "scene/scene_text.h"

#include "assets/tex_font.h"
#include "page/options.h"
#include "scene/scene.h"

#include <iterator>

std::int32_t text_fonts_loaded;

BitmapFont font_page_title;
BitmapFont font_node_name_0, font_node_name_1, font_node_name_2, font_node_name_3, font_node_name_4,
    font_node_name_5, font_node_name_6, font_node_name_7, font_node_name_8, font_node_name_9,
    font_node_name_10;
BitmapFont font_node_desc_0, font_node_desc_1, font_node_desc_2, font_node_desc_3, font_node_desc_4,
    font_node_desc_5, font_node_desc_6, font_node_desc_7, font_node_desc_8;

static constexpr char FACE[] = "Tahoma";

struct SceneFont {
    BitmapFont *font;
    std::int32_t height; // pixels
    std::int32_t weight; // FontWeight
};

// A name is centred by its width in font_node_name_6, a label boxed by that in font_node_name_8,
// whatever the zoom level. The width is a length on the floor, of which perspective and screen make
// pixels: on a screen of 768 or 1080 lines, at level n, a name should be 90 to 95 / (172 - 10 n)
// times as large as font 6, and a label, two fonts further on, 90 to 95 / (160 - 10 n) times
// font 8. Font 6 would have to be smaller than itself, and font 8 serves names of level 8 as well:
// from level 6 on, names stand up to a tenth of their width to the right of the middle.
static constexpr SceneFont FONTS[] = {
    {&font_page_title, 40, FONT_WEIGHT_NORMAL},  {&font_node_name_0, 10, FONT_WEIGHT_BOLD},
    {&font_node_name_1, 11, FONT_WEIGHT_BOLD},   {&font_node_name_2, 11, FONT_WEIGHT_BOLD},
    {&font_node_name_3, 12, FONT_WEIGHT_BOLD},   {&font_node_name_4, 12, FONT_WEIGHT_BOLD},
    {&font_node_name_5, 14, FONT_WEIGHT_BOLD},   {&font_node_name_6, 18, FONT_WEIGHT_BOLD},
    {&font_node_name_7, 18, FONT_WEIGHT_BOLD},   {&font_node_name_8, 20, FONT_WEIGHT_BOLD},
    {&font_node_name_9, 21, FONT_WEIGHT_BOLD},   {&font_node_name_10, 24, FONT_WEIGHT_BOLD},
    {&font_node_desc_0, 8, FONT_WEIGHT_NORMAL},  {&font_node_desc_1, 8, FONT_WEIGHT_NORMAL},
    {&font_node_desc_2, 8, FONT_WEIGHT_NORMAL},  {&font_node_desc_3, 9, FONT_WEIGHT_NORMAL},
    {&font_node_desc_4, 9, FONT_WEIGHT_NORMAL},  {&font_node_desc_5, 10, FONT_WEIGHT_NORMAL},
    {&font_node_desc_6, 13, FONT_WEIGHT_NORMAL}, {&font_node_desc_7, 13, FONT_WEIGHT_NORMAL},
    {&font_node_desc_8, 13, FONT_WEIGHT_NORMAL},
};

static void load(const SceneFont &entry) {
    font_load(entry.font, FACE, entry.height, entry.weight);
}

static void load_system_fonts() {
    for (const SceneFont &entry : FONTS)
        load(entry);
    text_fonts_loaded = 1;
}

// The boxes of labels are measured in font_node_name_8 in both renderings. Here its lists are given
// back at once and only the widths stay, so that nothing is left to unload.
static void load_texture_fonts() {
    tex_font_init();
    for (const SceneFont &entry : FONTS) {
        if (entry.font != &font_node_name_8)
            continue;
        load(entry);
        font_unload(entry.font);
    }
}

static bool texture_fonts_wanted() {
    return orvanel_options.good_graphics_card && orvanel_options.text_shadows;
}

void scene_fonts_init() {
    scene_fonts_stop(); // the option may have changed
    if (texture_fonts_wanted())
        load_texture_fonts();
    else
        load_system_fonts();
}

void scene_fonts_stop() {
    for (const SceneFont &entry : FONTS)
        font_unload(entry.font);
    tex_font_stop();
    text_fonts_loaded = 0;
}

bool scene_uses_texture_fonts() {
    return texture_fonts_wanted() && text_fonts_loaded == 0;
}

void scene_fonts_require() {
    // The graphics card can turn out bad, or be declared so, after the texture fonts were chosen.
    if (!texture_fonts_wanted() && text_fonts_loaded == 0)
        scene_fonts_init();
}
