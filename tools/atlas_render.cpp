#include "tools/atlas_render.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <numeric>

// How the bodies of a set come out of the face.
enum Source {
    STRIKE,          // bitmap drawn by hand for this size, embedded in the face
    SHARP,           // outline, hinted for black and white
    SMOOTH,          // outline, hinted vertically, with grey levels
    BOLDENED_STRIKE, // made one pixel heavier to the right, where the face has no bold
    BOLDENED_SHARP,  // of its own
};

struct SetPlan {
    const char *name;
    std::int32_t pixel_size; // of the em
    std::int32_t x_size;     // the same across, where it is narrowed; 0 = as high as wide
    bool bold_face;
    Source source;
    std::int32_t channel;
    std::int32_t spacing, padding; // pixels
};

static constexpr std::int32_t SMOOTH_CHANNEL = 0; // its limit leaves grey levels to the bodies

// The strikes of the face end at 16 pixels. The bold face has drawn strikes up to 12 pixels only;
// beyond, its pictures are those of the normal weight. Two sets hinted from the
// outlines are narrowed, or they would be wider than the next larger one.
static constexpr SetPlan PLANS[] = {
    {"tahoma_40_normal", 40, 0, false, SMOOTH, 0, 4, 8},
    {"tahoma_28_normal", 28, 0, false, SMOOTH, 0, 2, 6},
    {"tahoma_7_normal", 7, 6, false, SHARP, 1, 1, 6},
    {"tahoma_8_normal", 8, 0, false, STRIKE, 1, 1, 6},
    {"tahoma_9_close", 9, 0, false, STRIKE, 1, 0, 5},
    {"tahoma_9_normal", 9, 0, false, STRIKE, 1, 1, 6},
    {"tahoma_10_normal", 10, 0, false, STRIKE, 1, 1, 6},
    {"tahoma_11_normal", 11, 0, false, STRIKE, 1, 1, 6},
    {"tahoma_12_normal", 12, 0, false, STRIKE, 1, 1, 6},
    {"tahoma_13_normal", 13, 0, false, STRIKE, 1, 1, 6},
    {"tahoma_9_bold", 9, 0, true, STRIKE, 2, 1, 6},
    {"tahoma_10_bold", 10, 0, true, STRIKE, 2, 1, 6},
    {"tahoma_11_bold", 11, 0, true, STRIKE, 2, 1, 6},
    {"tahoma_12_bold", 12, 0, true, STRIKE, 2, 1, 6},
    {"tahoma_13_bold", 13, 0, false, BOLDENED_STRIKE, 2, 1, 6},
    {"tahoma_14_bold", 14, 13, true, BOLDENED_SHARP, 2, 1, 6},
    {"tahoma_15_bold", 15, 0, false, BOLDENED_STRIKE, 3, 1, 6},
    {"tahoma_16_bold", 16, 0, false, BOLDENED_STRIKE, 3, 1, 6},
    {"tahoma_15_normal", 15, 0, false, STRIKE, 3, 1, 6},
    {"tahoma_21_normal", 21, 0, false, SHARP, 4, 1, 6},
    {"tahoma_24_normal", 24, 0, false, SHARP, 4, 1, 6},
};

// ---- one glyph

struct Picture {
    std::int32_t left,
        top; // of its upper left pixel; x from the pen, y downwards from the baseline
    std::int32_t width, height;
    std::int32_t advance;
    std::vector<std::uint8_t> coverage;

    std::uint8_t at(std::int32_t x, std::int32_t y) const { // from the upper left pixel
        if (x < 0 || y < 0 || x >= width || y >= height)
            return 0;
        return coverage[static_cast<std::size_t>(y * width + x)];
    }
};

static std::uint8_t bitmap_pixel(const FT_Bitmap &bitmap, std::int32_t x, std::int32_t y) {
    const std::uint8_t *row = bitmap.buffer + y * bitmap.pitch;
    if (bitmap.pixel_mode == FT_PIXEL_MODE_MONO)
        return (row[x / 8] >> (7 - x % 8)) & 1 ? 255 : 0;
    return row[x];
}

static FT_Int32 load_flags(Source source) {
    switch (source) {
    case STRIKE:
    case BOLDENED_STRIKE:
        return FT_LOAD_RENDER | FT_LOAD_TARGET_MONO;
    case SHARP:
    case BOLDENED_SHARP:
        return FT_LOAD_RENDER | FT_LOAD_TARGET_MONO | FT_LOAD_NO_BITMAP | FT_LOAD_FORCE_AUTOHINT;
    case SMOOTH:
        break;
    }
    return FT_LOAD_RENDER | FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP;
}

static void embolden(Picture *picture) {
    Picture heavier = *picture;
    heavier.width++;
    heavier.coverage.clear();
    for (std::int32_t y = 0; y < heavier.height; y++)
        for (std::int32_t x = 0; x < heavier.width; x++)
            heavier.coverage.push_back(std::max(picture->at(x, y), picture->at(x - 1, y)));
    *picture = heavier;
}

// Letters of the small sizes may not touch: the edge of the next would darken the one before.
static constexpr std::int32_t LARGEST_SMALL_SIZE = 16; // pixels
static void keep_apart(Picture *picture) {
    if (picture->left < 0) {
        picture->advance -= picture->left;
        picture->left = 0;
    }
    picture->advance = std::max(picture->advance, picture->left + picture->width + 1);
}

// Letters and digits of a narrowed set are narrowed; dots and strokes would vanish.
static void set_size(FT_Face face, const SetPlan &plan, std::uint8_t code) {
    const bool letter = (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') ||
                        (code >= 'a' && code <= 'z');
    FT_Set_Pixel_Sizes(face, static_cast<FT_UInt>(letter ? plan.x_size : 0),
                       static_cast<FT_UInt>(plan.pixel_size));
}

static bool rasterise(FT_Face face, std::uint8_t code, FT_Int32 flags, Picture *picture) {
    if (FT_Load_Char(face, code, flags) != 0)
        return false;
    const FT_GlyphSlot slot = face->glyph;
    *picture = {slot->bitmap_left,
                -slot->bitmap_top,
                static_cast<std::int32_t>(slot->bitmap.width),
                static_cast<std::int32_t>(slot->bitmap.rows),
                static_cast<std::int32_t>((slot->advance.x + 32) >> 6),
                {}};
    for (std::int32_t y = 0; y < picture->height; y++)
        for (std::int32_t x = 0; x < picture->width; x++)
            picture->coverage.push_back(bitmap_pixel(slot->bitmap, x, y));
    return true;
}

static std::uint8_t strongest(const Picture &picture) {
    return picture.coverage.empty()
               ? std::uint8_t{0}
               : *std::max_element(picture.coverage.begin(), picture.coverage.end());
}

// In black and white a dot of less than half a pixel vanishes: its darkest grey level stands in.
static bool rescue_dot(FT_Face face, std::uint8_t code, Picture *picture) {
    if (strongest(*picture) != 0 || code == ' ')
        return true;
    if (!rasterise(face, code, load_flags(SMOOTH), picture))
        return false;
    const int threshold = std::max<int>(strongest(*picture), 1);
    for (std::uint8_t &pixel : picture->coverage)
        pixel = pixel >= threshold ? 255 : 0;
    return true;
}

static bool load_picture(FT_Face face, const SetPlan &plan, std::uint8_t code, Picture *picture) {
    set_size(face, plan, code);
    if (!rasterise(face, code, load_flags(plan.source), picture) ||
        !rescue_dot(face, code, picture))
        return false;
    if (plan.source == BOLDENED_STRIKE || plan.source == BOLDENED_SHARP)
        embolden(picture);
    if (plan.source == BOLDENED_STRIKE) // the advance of an outline is the bold one already
        picture->advance++;
    if (plan.pixel_size <= LARGEST_SMALL_SIZE)
        keep_apart(picture);
    return true;
}

// ---- the dark edge

// What a body pixel spreads around itself, 0..255: an outline on all sides and a shadow that falls
// to the lower right. To the left it reaches one pixel only: a glyph is drawn over the one before
// it, and must not darken that one's body.
static constexpr std::int32_t EDGE_LEFT = 1, EDGE_UP = 1, EDGE_RIGHT = 2, EDGE_DOWN = 2;
using EdgeWeights = std::uint8_t[EDGE_UP + 1 + EDGE_DOWN][EDGE_LEFT + 1 + EDGE_RIGHT];
static constexpr EdgeWeights EDGE = {
    {60, 110, 80, 20},
    {110, 255, 190, 70},
    {80, 190, 170, 70},
    {20, 70, 70, 40},
};
// For the channel whose edges end at half of the range.
static constexpr EdgeWeights SMOOTH_EDGE = {
    {80, 127, 110, 30},
    {127, 255, 127, 90},
    {110, 127, 127, 90},
    {30, 90, 90, 50},
};

static std::int32_t edge_value(const Picture &picture, std::int32_t x, std::int32_t y,
                               const EdgeWeights &weights) {
    std::int32_t value = 0;
    for (std::int32_t dy = -EDGE_UP; dy <= EDGE_DOWN; dy++)
        for (std::int32_t dx = -EDGE_LEFT; dx <= EDGE_RIGHT; dx++)
            value = std::max(value, weights[dy + EDGE_UP][dx + EDGE_LEFT] *
                                        picture.at(x - dx, y - dy) / 255);
    return value;
}

// Bodies reach the channel's limit, edges stay below it.
static std::uint8_t atlas_value(const Picture &picture, std::int32_t x, std::int32_t y,
                                std::int32_t channel) {
    const bool smooth = channel == SMOOTH_CHANNEL;
    const std::int32_t limit = smooth ? 128 : 255;
    if (picture.at(x, y) >= limit)
        return picture.at(x, y);
    const std::int32_t edge = edge_value(picture, x, y, smooth ? SMOOTH_EDGE : EDGE);
    return static_cast<std::uint8_t>(std::min(edge, limit - 1));
}

// ---- placing

struct Box {
    std::int32_t left, top, right, bottom; // from the pen and the baseline
};

static Box glyph_box(const SetPlan &plan, const Picture &picture) {
    const std::int32_t border = (plan.padding - plan.spacing + 1) / 2;
    const std::int32_t cell = picture.advance - plan.spacing + plan.padding;
    return {std::min(-border, picture.left - EDGE_LEFT), picture.top - EDGE_UP,
            std::max(cell - border, picture.left + picture.width + EDGE_RIGHT),
            picture.top + picture.height + EDGE_DOWN};
}

struct Placement {
    std::size_t set;
    std::uint8_t code;
    Picture picture;
    Box box;
    std::int32_t x, y; // upper left corner in the atlas

    std::int32_t width() const {
        return box.right - box.left;
    }
    std::int32_t height() const {
        return box.bottom - box.top;
    }
};

// Rows of falling height, filled from the left. False when the channel is full.
static bool pack(std::vector<Placement *> placements) {
    std::stable_sort(
        placements.begin(), placements.end(),
        [](const Placement *a, const Placement *b) { return a->height() > b->height(); });
    std::int32_t x = 0, y = 0, row_height = 0;
    for (Placement *placement : placements) {
        if (x + placement->width() > ATLAS_WIDTH) {
            x = 0;
            y += row_height;
            row_height = 0;
        }
        row_height = std::max(row_height, placement->height());
        if (y + row_height > ATLAS_HEIGHT)
            return false;
        placement->x = x;
        placement->y = y;
        x += placement->width();
    }
    return true;
}

static void draw(const Placement &placement, std::int32_t channel,
                 std::vector<std::uint8_t> *atlas) {
    const std::int32_t body_x = placement.picture.left - placement.box.left;
    const std::int32_t body_y = placement.picture.top - placement.box.top;
    for (std::int32_t y = 0; y < placement.height(); y++)
        for (std::int32_t x = 0; x < placement.width(); x++)
            (*atlas)[static_cast<std::size_t>((placement.y + y) * ATLAS_WIDTH + placement.x + x)] =
                atlas_value(placement.picture, x - body_x, y - body_y, channel);
}

static std::vector<std::uint8_t> character_codes() {
    std::vector<std::uint8_t> codes(126 - 33 + 1);
    std::iota(codes.begin(), codes.end(), std::uint8_t{33});
    codes.push_back(163); // pound sign
    return codes;
}

// A blank is as wide as an 'i'. Where that is much narrower than the face's own blank, words would
// run together: the 'i' gets half of the difference as room around it. The close set goes without.
static bool widen_i(FT_Face face, const SetPlan &plan, Picture *picture) {
    Picture blank;
    if (!load_picture(face, plan, ' ', &blank))
        return false;
    const std::int32_t extra = (blank.advance - picture->advance + 1) / 2;
    if (plan.spacing == 0 || extra <= 0)
        return true;
    picture->left += extra / 2;
    picture->advance += extra;
    return true;
}

static std::string render_glyphs(FT_Library library, const std::string &font_folder,
                                 std::vector<Placement> *placements) {
    for (std::size_t set = 0; set < std::size(PLANS); set++) {
        const SetPlan &plan = PLANS[set];
        const std::string path = font_folder + (plan.bold_face ? "/tahomabd.ttf" : "/tahoma.ttf");
        FT_Face face = nullptr;
        if (FT_New_Face(library, path.c_str(), 0, &face) != 0)
            return "cannot read " + path;
        for (const std::uint8_t code : character_codes()) {
            Placement placement = {set, code, {}, {}, 0, 0};
            if (!load_picture(face, plan, code, &placement.picture) ||
                (code == 'i' && !widen_i(face, plan, &placement.picture)))
                return std::string("a glyph is missing for ") + plan.name;
            placement.box = glyph_box(plan, placement.picture);
            placements->push_back(placement);
        }
        FT_Done_Face(face);
    }
    return {};
}

std::string atlas_render(const std::string &font_folder, Atlas *atlas) {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0)
        return "FreeType does not start";
    std::vector<Placement> placements;
    const std::string error = render_glyphs(library, font_folder, &placements);
    FT_Done_FreeType(library);
    if (!error.empty())
        return error;

    for (std::int32_t channel = 0; channel < ATLAS_CHANNELS; channel++) {
        std::vector<Placement *> members;
        for (Placement &placement : placements)
            if (PLANS[placement.set].channel == channel)
                members.push_back(&placement);
        if (!pack(members))
            return "the glyphs do not fit into channel " + std::to_string(channel);
        atlas->channel[channel].assign(ATLAS_WIDTH * ATLAS_HEIGHT, 0);
        for (const Placement *placement : members)
            draw(*placement, channel, &atlas->channel[channel]);
    }
    for (const SetPlan &plan : PLANS)
        atlas->sets.push_back({plan.name, plan.channel, plan.spacing, plan.padding, {}});
    for (const Placement &placement : placements)
        atlas->sets[placement.set].glyphs.push_back(
            {placement.code, placement.x, placement.y, placement.x + placement.width(),
             placement.y + placement.height(), placement.y - placement.box.top});
    return {};
}

// ---- writing

static void append_little_endian(std::string *bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; i++)
        bytes->push_back(static_cast<char>((value >> (8 * i)) & 255));
}

std::string atlas_bitmap(const Atlas &atlas, std::int32_t first) {
    constexpr std::uint32_t HEADERS = 14 + 40;
    constexpr std::uint32_t PIXEL_BYTES = ATLAS_WIDTH * ATLAS_HEIGHT * 3;
    std::string bytes = "BM";
    append_little_endian(&bytes, HEADERS + PIXEL_BYTES, 4);
    append_little_endian(&bytes, 0, 4);
    append_little_endian(&bytes, HEADERS, 4);
    append_little_endian(&bytes, 40, 4);
    append_little_endian(&bytes, ATLAS_WIDTH, 4);
    append_little_endian(&bytes, ATLAS_HEIGHT, 4);
    append_little_endian(&bytes, 1, 2);  // planes
    append_little_endian(&bytes, 24, 2); // bits a pixel
    append_little_endian(&bytes, 0, 4);  // not compressed
    append_little_endian(&bytes, PIXEL_BYTES, 4);
    for (int i = 0; i < 4; i++) // resolution and palette: none
        append_little_endian(&bytes, 0, 4);
    for (std::int32_t y = ATLAS_HEIGHT - 1; y >= 0; y--)
        for (std::int32_t x = 0; x < ATLAS_WIDTH; x++)
            for (std::int32_t i = 0; i < 3; i++)
                bytes.push_back(static_cast<char>(
                    atlas.channel[first + i][static_cast<std::size_t>(y * ATLAS_WIDTH + x)]));
    return bytes;
}

__attribute__((format(printf, 2, 3))) static void append(std::string *text, const char *format,
                                                         ...) {
    char line[200];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    *text += line;
}

static void append_set(std::string *text, const AtlasSet &set) {
    append(text, "\ninline constexpr TexGlyphPlace %s_places[] = {\n", set.name);
    std::string line;
    for (const AtlasGlyph &glyph : set.glyphs) {
        std::string entry;
        append(&entry, "{%d, %d, %d, %d, %d, %d}, ", glyph.code, glyph.x0, glyph.y0, glyph.x1,
               glyph.y1, glyph.baseline);
        if (line.size() + entry.size() > 97) {
            line.back() = '\n';
            *text += "    " + line;
            line.clear();
        }
        line += entry;
    }
    line.back() = '\n';
    *text += "    " + line + "};\n";
}

std::string atlas_tables(const Atlas &atlas) {
    std::string text =
        "// Where the glyphs of the texture fonts stand in the atlases.\n"
        "// Made by tools/make_atlas.cpp together with resources/atlas_a.bmp and "
        "atlas_b.bmp.\n"
        "#pragma once\n\n"
        "#include <cstdint>\n\n"
        "// clang-format off\n"
        "struct TexGlyphPlace {\n"
        "    std::uint8_t code;              // Latin-1\n"
        "    std::int16_t x0, y0, x1, y1;    // box in atlas pixels, from the top left\n"
        "    std::int16_t baseline;          // in atlas pixels\n"
        "};\n";
    for (const AtlasSet &set : atlas.sets)
        append_set(&text, set);
    text += "\n// X(set, texture, spacing, padding): pixels.\n#define TEX_FONT_SETS(X)";
    for (const AtlasSet &set : atlas.sets)
        append(&text, " \\\n    X(%s, %d, %d.0f, %d.0f)", set.name, set.channel, set.spacing,
               set.padding);
    return text + "\n// clang-format on\n";
}
