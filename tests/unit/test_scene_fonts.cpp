#include "scene/scene_text.h"

#include "assets/tex_font.h"
#include "page/options.h"
#include "platform/gl.h"
#include "scene/scene.h"
#include "tests/support/gl_context.h"

#include <gtest/gtest.h>

#include <vector>

static const std::vector<const BitmapFont *> ALL_FONTS = {
    &font_page_title,  &font_node_name_0,  &font_node_name_1, &font_node_name_2, &font_node_name_3,
    &font_node_name_4, &font_node_name_5,  &font_node_name_6, &font_node_name_7, &font_node_name_8,
    &font_node_name_9, &font_node_name_10, &font_node_desc_0, &font_node_desc_1, &font_node_desc_2,
    &font_node_desc_3, &font_node_desc_4,  &font_node_desc_5, &font_node_desc_6, &font_node_desc_7,
    &font_node_desc_8};

struct SceneFonts : testing::Test {
    GlContext context{64, 64};

    void SetUp() override {
        options_set_defaults();
    }
    void TearDown() override {
        scene_fonts_stop();
    }
    static void init(std::int32_t good_graphics_card, std::int32_t text_shadows) {
        orvanel_options.good_graphics_card = good_graphics_card;
        orvanel_options.text_shadows = text_shadows;
        scene_fonts_init();
    }
};

static std::int32_t lists_in_use() {
    std::int32_t lists = 0;
    for (std::uint32_t list = 1; list < 10000; list++)
        lists += glIsList(list) ? 1 : 0;
    return lists;
}

static std::int32_t textures_in_use() {
    std::int32_t textures = 0;
    for (std::uint32_t texture = 1; texture < 1000; texture++)
        textures += glIsTexture(texture) ? 1 : 0;
    return textures;
}

TEST_F(SceneFonts, texture_fonts_are_used_with_a_good_card_and_text_shadows_only) {
    init(1, 1);
    EXPECT_TRUE(scene_uses_texture_fonts());
    EXPECT_EQ(text_fonts_loaded, 0);
    init(1, 0);
    EXPECT_FALSE(scene_uses_texture_fonts());
    EXPECT_EQ(text_fonts_loaded, 1);
    init(0, 1);
    EXPECT_FALSE(scene_uses_texture_fonts());
    EXPECT_EQ(text_fonts_loaded, 1);
}

TEST_F(SceneFonts, fonts_of_the_system_that_were_loaded_stay_in_use) {
    init(1, 0);
    orvanel_options.text_shadows = 1; // without loading anew
    EXPECT_FALSE(scene_uses_texture_fonts());
    scene_fonts_init();
    EXPECT_TRUE(scene_uses_texture_fonts());
}

TEST_F(SceneFonts, without_text_shadows_all_fonts_of_the_system_are_loaded) {
    init(1, 0);
    for (std::size_t i = 0; i < ALL_FONTS.size(); i++) {
        EXPECT_TRUE(glIsList(ALL_FONTS[i]->list_base)) << i;
        EXPECT_GT(font_get_string_width(ALL_FONTS[i], "m"), 0.0f) << i;
    }
    EXPECT_EQ(lists_in_use(), static_cast<std::int32_t>(ALL_FONTS.size()) * 96);
}

TEST_F(SceneFonts, the_sizes_of_names_and_descriptions_do_not_fall_with_the_number) {
    init(1, 0);
    for (std::size_t i = 2; i < ALL_FONTS.size(); i++) {
        if (ALL_FONTS[i] == &font_node_desc_0)
            continue;
        EXPECT_GE(font_get_string_width(ALL_FONTS[i], "Mail Gateway"),
                  font_get_string_width(ALL_FONTS[i - 1], "Mail Gateway") - 0.001f)
            << i;
    }
}

TEST_F(SceneFonts, with_texture_fonts_labels_can_be_measured_and_no_list_is_kept) {
    init(1, 0);
    const float width = font_get_string_width(&font_node_name_8, "A label");
    init(1, 1);
    EXPECT_FLOAT_EQ(font_get_string_width(&font_node_name_8, "A label"), width);
    EXPECT_EQ(lists_in_use(), 0);
    EXPECT_EQ(textures_in_use(), TEX_FONT_TEXTURES);
}

TEST_F(SceneFonts, stopping_frees_lists_and_textures) {
    init(1, 0);
    scene_fonts_stop();
    EXPECT_EQ(lists_in_use(), 0);
    EXPECT_EQ(text_fonts_loaded, 0);
    init(1, 1);
    scene_fonts_stop();
    EXPECT_EQ(textures_in_use(), 0);
}

TEST_F(SceneFonts, loading_again_and_again_leaves_nothing_behind) {
    init(1, 0);
    const std::int32_t lists = lists_in_use();
    for (int i = 0; i < 3; i++) {
        init(1, 1);
        init(1, 0);
    }
    EXPECT_EQ(lists_in_use(), lists);
    EXPECT_EQ(textures_in_use(), 0);
}

TEST_F(SceneFonts, a_card_found_bad_later_gets_the_fonts_of_the_system) {
    init(1, 1);
    orvanel_options.good_graphics_card = 0; // by the check at the first start
    EXPECT_FALSE(scene_uses_texture_fonts());
    scene_fonts_require();
    EXPECT_EQ(text_fonts_loaded, 1);
    EXPECT_TRUE(glIsList(font_node_name_0.list_base));
    EXPECT_EQ(textures_in_use(), 0);
}

TEST_F(SceneFonts, requiring_fonts_that_are_there_loads_nothing) {
    init(1, 0);
    const std::uint32_t base = font_page_title.list_base;
    scene_fonts_require();
    EXPECT_EQ(font_page_title.list_base, base);
    init(1, 1);
    const std::uint32_t texture = tex_font_textures[0];
    scene_fonts_require();
    EXPECT_EQ(tex_font_textures[0], texture);
    EXPECT_EQ(text_fonts_loaded, 0);
}
