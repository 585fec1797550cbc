#include "support/test_places.h"
#include "tools/atlas_render.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

static std::string read_file(const char *name) {
    std::ifstream file(std::string(ORVANEL_SOURCE_DIR) + "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct AtlasRender : testing::Test {
    Atlas atlas;

    void SetUp() override {
        ASSERT_EQ(atlas_render(ATLAS_FONT_FOLDER, &atlas), "");
    }
};

TEST_F(AtlasRender, the_bitmap_of_textures_0_to_2_is_what_the_face_renders_to) {
    EXPECT_TRUE(atlas_bitmap(atlas, 0) == read_file("resources/atlas_a.bmp"));
}

TEST_F(AtlasRender, the_bitmap_of_textures_3_to_5_is_what_the_face_renders_to) {
    EXPECT_TRUE(atlas_bitmap(atlas, 3) == read_file("resources/atlas_b.bmp"));
}

TEST_F(AtlasRender, the_glyph_tables_are_those_of_the_bitmaps) {
    EXPECT_TRUE(atlas_tables(atlas) == read_file("assets/tex_font_glyphs.h"));
}

TEST_F(AtlasRender, no_glyph_box_leaves_the_atlas) {
    for (const AtlasSet &set : atlas.sets) {
        EXPECT_EQ(set.glyphs.size(), 95u) << set.name;
        for (const AtlasGlyph &glyph : set.glyphs) {
            EXPECT_GE(glyph.x0, 0) << set.name << " " << int{glyph.code};
            EXPECT_GE(glyph.y0, 0) << set.name << " " << int{glyph.code};
            EXPECT_LE(glyph.x1, ATLAS_WIDTH) << set.name << " " << int{glyph.code};
            EXPECT_LE(glyph.y1, ATLAS_HEIGHT) << set.name << " " << int{glyph.code};
        }
    }
}

static bool overlap(const AtlasGlyph &a, const AtlasGlyph &b) {
    return a.x0 < b.x1 && b.x0 < a.x1 && a.y0 < b.y1 && b.y0 < a.y1;
}

TEST_F(AtlasRender, no_two_glyphs_share_a_pixel_of_a_channel) {
    for (std::int32_t channel = 0; channel < ATLAS_CHANNELS; channel++) {
        std::vector<AtlasGlyph> glyphs;
        for (const AtlasSet &set : atlas.sets)
            if (set.channel == channel)
                glyphs.insert(glyphs.end(), set.glyphs.begin(), set.glyphs.end());
        for (std::size_t i = 0; i < glyphs.size(); i++)
            for (std::size_t j = i + 1; j < glyphs.size(); j++)
                ASSERT_FALSE(overlap(glyphs[i], glyphs[j]))
                    << channel << ": " << int{glyphs[i].code} << " and " << int{glyphs[j].code};
    }
}

TEST_F(AtlasRender, a_folder_without_the_face_is_reported) {
    Atlas other;
    EXPECT_EQ(atlas_render("/nowhere", &other), "cannot read /nowhere/tahoma.ttf");
}
