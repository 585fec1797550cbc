// The fonts of the scene and the choice between its two renderings of text: texture fonts with a
// dark edge, or the system's outline fonts.
#pragma once

#include "assets/font.h"

#include <cstdint>

// 1 = the system's fonts were loaded for drawing; 0 = only their widths are known and texts are
// drawn with the texture fonts.
extern std::int32_t text_fonts_loaded;

extern BitmapFont font_page_title;

// Object names and labels, bold; descriptions, normal. The number is the zoom level that a name
// or description is drawn at.
extern BitmapFont font_node_name_0, font_node_name_1, font_node_name_2, font_node_name_3,
    font_node_name_4, font_node_name_5, font_node_name_6, font_node_name_7, font_node_name_8,
    font_node_name_9, font_node_name_10;
extern BitmapFont font_node_desc_0, font_node_desc_1, font_node_desc_2, font_node_desc_3,
    font_node_desc_4, font_node_desc_5, font_node_desc_6, font_node_desc_7, font_node_desc_8;

// Loads the system's fonts when the options have come to ask for them since scene_fonts_init. Every
// drawing pass calls it first.
void scene_fonts_require();
