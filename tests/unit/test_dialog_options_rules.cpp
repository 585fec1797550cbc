#include "dialogs/rules/dialog_options_rules.h"

#include "platform/locations.h"
#include "platform/text.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_floor.h"
#include "scene/scene_text.h"
#include "tests/support/message_script.h"
#include "tests/support/scene_stage.h"
#include "tests/support/user_options.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

static void show_nothing() {}

struct OptionsDialog : testing::Test {
    SceneStage stage;
    UserOptionsFile file;
    OptionsForm form = {};

    OptionsDialog() {
        folder_create((std::string(file.folder.path) + "pages").c_str());
        text_copy(page_dir_location, (std::string(file.folder.path) + "pages\\").c_str());
        fsaa_possible = 1;
        dialog_options_open(&form);
    }
    ~OptionsDialog() override {
        page_dir_location[0] = '\0';
        fsaa_possible = 0;
    }
    bool accept() {
        return dialog_options_accept(form, show_nothing);
    }
    void choose_colour(const char *name) {
        text_copy(form.chosen.default_page_colour_name, name);
    }
    void set_options_custom(float red, float green, float blue) {
        text_copy(orvanel_options.default_page_colour_name, "Custom");
        orvanel_options.default_page_red = red;
        orvanel_options.default_page_green = green;
        orvanel_options.default_page_blue = blue;
        dialog_options_open(&form);
    }
};

static void expect_colour(float red, float green, float blue) {
    EXPECT_FLOAT_EQ(orvanel_options.default_page_red, red);
    EXPECT_FLOAT_EQ(orvanel_options.default_page_green, green);
    EXPECT_FLOAT_EQ(orvanel_options.default_page_blue, blue);
}

// ---- check boxes

TEST_F(OptionsDialog, Every_flag_of_the_settings_has_one_box) {
    std::set<const std::int32_t *> flags;
    std::set<std::pair<std::int32_t, std::int32_t>> controls;
    for (const OptionsBox &box : OPTIONS_BOXES) {
        EXPECT_TRUE(flags.insert(&(orvanel_options.*box.flag)).second);
        EXPECT_TRUE(controls.insert({box.tab, box.control}).second);
    }
    EXPECT_EQ(flags.size(), 22u);
}

TEST_F(OptionsDialog, The_form_shows_the_settings_and_OK_stores_each_flag) {
    for (const OptionsBox &box : OPTIONS_BOXES) {
        for (const std::int32_t value : {0, 1}) {
            orvanel_options.*box.flag = value;
            dialog_options_open(&form);
            EXPECT_EQ(form.chosen.*box.flag, value);
            form.chosen.*box.flag = 1 - value;
            const Options before = orvanel_options;
            EXPECT_TRUE(accept());
            for (const OptionsBox &other : OPTIONS_BOXES) {
                const std::int32_t expected =
                    other.flag == box.flag ? 1 - value : before.*other.flag;
                EXPECT_EQ(orvanel_options.*other.flag, expected);
            }
        }
    }
}

TEST_F(OptionsDialog, Without_enhanced_graphics_what_rests_on_it_is_disabled) {
    const std::set<std::int32_t> graphics_ids = {2036, 2039, 2038, 2040, 2035, 2041, 2042, 1001};
    for (const std::int32_t enhanced : {0, 1}) {
        form.chosen.good_graphics_card = enhanced;
        for (const OptionsBox &box : OPTIONS_BOXES) {
            const bool rests = box.tab == OPTIONS_GRAPHICS && graphics_ids.contains(box.control);
            EXPECT_EQ(dialog_options_box_enabled(form, box), enhanced == 1 || !rests)
                << box.tab << " " << box.control;
        }
    }
}

TEST_F(OptionsDialog, Without_multisampling_anti_aliasing_is_off_and_disabled) {
    fsaa_possible = 0;
    dialog_options_open(&form);
    EXPECT_EQ(orvanel_options.anti_aliasing, 0);
    EXPECT_EQ(form.chosen.anti_aliasing, 0);
    for (const OptionsBox &box : OPTIONS_BOXES)
        EXPECT_EQ(dialog_options_box_enabled(form, box), box.flag != &Options::anti_aliasing);
    form.chosen.anti_aliasing = 1; // as if it had been ticked all the same
    EXPECT_TRUE(accept());
    EXPECT_EQ(orvanel_options.anti_aliasing, 0);
    EXPECT_EQ(dialog_options_rebuild_window, 0);
}

// ---- anti-aliasing and fonts

struct GraphicsChange {
    std::int32_t enhanced_before, anti_aliasing_before, enhanced, anti_aliasing, rebuilds;
};

TEST_F(OptionsDialog, The_window_is_rebuilt_when_its_anti_aliasing_changes) {
    static constexpr GraphicsChange changes[] = {
        {1, 1, 1, 1, 0}, {1, 0, 1, 1, 1},
        {1, 1, 1, 0, 1}, {1, 1, 0, 1, 1}, // enhanced graphics off with anti-aliasing on
        {0, 1, 1, 1, 1}, {0, 0, 1, 0, 0},
        {1, 0, 0, 0, 0}, {0, 0, 0, 1, 1},
    };
    for (const GraphicsChange &change : changes) {
        orvanel_options.good_graphics_card = change.enhanced_before;
        orvanel_options.anti_aliasing = change.anti_aliasing_before;
        dialog_options_open(&form);
        EXPECT_EQ(dialog_options_rebuild_window, 0);
        form.chosen.good_graphics_card = change.enhanced;
        form.chosen.anti_aliasing = change.anti_aliasing;
        EXPECT_TRUE(accept());
        EXPECT_EQ(dialog_options_rebuild_window, change.rebuilds) << &change - changes;
    }
}

TEST_F(OptionsDialog, A_change_of_text_shadows_rebuilds_the_fonts) {
    scene_fonts_init();
    ASSERT_EQ(text_fonts_loaded, 0);
    form.chosen.text_shadows = 0;
    EXPECT_TRUE(accept());
    EXPECT_EQ(text_fonts_loaded, 1);
    dialog_options_open(&form);
    form.chosen.text_shadows = 1;
    EXPECT_TRUE(accept());
    EXPECT_EQ(text_fonts_loaded, 0);
}

TEST_F(OptionsDialog, Enhanced_graphics_bring_the_text_shadows_back) {
    orvanel_options.good_graphics_card = 0;
    orvanel_options.anti_aliasing = 0;
    scene_fonts_init();
    ASSERT_EQ(text_fonts_loaded, 1);
    dialog_options_open(&form);
    form.chosen.good_graphics_card = 1;
    EXPECT_TRUE(accept());
    EXPECT_EQ(text_fonts_loaded, 0);
    EXPECT_TRUE(scene_uses_texture_fonts());
}

TEST_F(OptionsDialog, Other_changes_leave_the_fonts_alone) {
    scene_fonts_init();
    text_fonts_loaded = 7; // what loading would write over
    form.chosen.reflections = 0;
    EXPECT_TRUE(accept());
    EXPECT_EQ(text_fonts_loaded, 7);
    scene_fonts_init();
}

// ---- zoom

TEST_F(OptionsDialog, A_changed_zoom_level_is_in_force_at_once) {
    form.chosen.initial_zoom_level = 7;
    scene_floor.pick_depth = 0.5f;
    EXPECT_TRUE(accept());
    EXPECT_EQ(orvanel_options.initial_zoom_level, 7);
    EXPECT_EQ(scene_floor.zoom_level, 7);
    EXPECT_EQ(scene_floor.distance, 10.0f * 7 - 70);
    EXPECT_EQ(scene_floor.pick_depth, 0.0f);
}

TEST_F(OptionsDialog, An_unchanged_zoom_level_leaves_the_floor_where_the_user_zoomed_to) {
    scene_floor.zoom_level = 2;
    scene_floor.distance = -50.0f;
    EXPECT_TRUE(accept());
    EXPECT_EQ(scene_floor.zoom_level, 2);
    EXPECT_EQ(scene_floor.distance, -50.0f);
}

// ---- colour

TEST_F(OptionsDialog, Every_preset_sets_its_colour) {
    for (const PageColourPreset &preset : PAGE_COLOUR_PRESETS) {
        text_copy(orvanel_options.default_page_colour_name, "Custom");
        dialog_options_open(&form);
        choose_colour(preset.name);
        EXPECT_TRUE(accept());
        EXPECT_EQ(options_colour_change_flag, 1);
        EXPECT_STREQ(orvanel_options.default_page_colour_name, preset.name);
        expect_colour(preset.red, preset.green, preset.blue);
    }
}

TEST_F(OptionsDialog, Choosing_the_same_preset_colour_again_does_not_start_a_colour_blend) {
    choose_colour("Blue");
    EXPECT_TRUE(accept());
    EXPECT_EQ(options_colour_change_flag, 0);
}

TEST_F(OptionsDialog, Choosing_Custom_always_counts_as_a_change) {
    set_options_custom(0.5f, 0.25f, 1.0f);
    EXPECT_TRUE(accept());
    EXPECT_EQ(options_colour_change_flag, 1);
    expect_colour(0.5f, 0.25f, 1.0f);
}

TEST_F(OptionsDialog, Without_a_selected_colour_the_name_stays) {
    text_copy(orvanel_options.default_page_colour_name, "Teal");
    dialog_options_open(&form);
    choose_colour("");
    EXPECT_TRUE(accept());
    EXPECT_STREQ(orvanel_options.default_page_colour_name, "Teal");
    EXPECT_EQ(options_colour_change_flag, 0);
}

TEST_F(OptionsDialog, A_custom_colour_that_is_black_starts_as_the_first_preset) {
    set_options_custom(0, 0, 0);
    EXPECT_TRUE(accept());
    expect_colour(0.07f, 0.13f, 0.19f);
}

#ifndef _WIN32 // the system's own chooser is played in the dialog's tests
TEST_F(OptionsDialog, The_chooser_starts_with_the_current_custom_colour) {
    set_options_custom(1.0f, 0.0f, 0.5f);
    EXPECT_EQ(get_custom_colour_options(), 1);
    EXPECT_EQ(recorder.colour_offered.red, 255); // converted it would be more
    EXPECT_EQ(recorder.colour_offered.green, 0);
    EXPECT_EQ(recorder.colour_offered.blue, colour_opengl_to_win(0.5f));
    set_options_custom(0, 0, 0);
    EXPECT_EQ(get_custom_colour_options(), 1);
    EXPECT_EQ(recorder.colour_offered.red, colour_opengl_to_win(0.07f));
    EXPECT_EQ(recorder.colour_offered.green, colour_opengl_to_win(0.13f));
    EXPECT_EQ(recorder.colour_offered.blue, colour_opengl_to_win(0.19f));
}

TEST_F(OptionsDialog, The_chosen_colour_becomes_the_default_with_OK_and_is_remembered) {
    recorder.chooses_colour = true;
    recorder.colour_choice = {51, 102, 255};
    choose_colour("Custom");
    EXPECT_EQ(get_custom_colour_options(), 0);
    expect_colour(0.07f, 0.13f, 0.19f); // not before OK
    EXPECT_TRUE(accept());
    expect_colour(colour_win_to_opengl(51), colour_win_to_opengl(102), colour_win_to_opengl(255));
    EXPECT_STREQ(orvanel_options.default_page_colour_name, "Custom");
    text_copy(orvanel_options.default_page_colour_name, "Blue");
    dialog_options_open(&form);
    recorder.chooses_colour = false;
    EXPECT_EQ(get_custom_colour_options(), 1);
    EXPECT_EQ(recorder.colour_offered.red, 51);
    EXPECT_EQ(recorder.colour_offered.green, 102);
    EXPECT_EQ(recorder.colour_offered.blue, 255);
}
#endif

// ---- folder and file

TEST_F(OptionsDialog, The_form_shows_the_folder_in_use_also_when_it_is_the_default_one) {
    EXPECT_STREQ(orvanel_options.page_folder, "");
    EXPECT_STREQ(form.chosen.page_folder, page_dir_location);
    EXPECT_TRUE(accept());
    EXPECT_STREQ(orvanel_options.page_folder, "");
    EXPECT_EQ(dialog_options_folder_change_reload, 0);
}

TEST_F(OptionsDialog, Another_folder_is_stored_and_the_home_page_reloaded) {
    folder_create(file.folder.file("other").c_str());
    file.folder.write("other\\home.orvl", "");
    text_copy(form.chosen.page_folder, file.folder.file("other").c_str());
    MessageScript script;
    EXPECT_TRUE(accept());
    EXPECT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(dialog_options_folder_change_reload, 1);
    const std::string stored = file.folder.file("other\\");
    EXPECT_EQ(orvanel_options.page_folder, stored);
    EXPECT_EQ(page_dir_location, stored);
    EXPECT_NE(file.text().find("<page_folder>" + stored + "</page_folder>"), std::string::npos);
}

TEST_F(OptionsDialog, An_invalid_folder_changes_and_saves_nothing) {
    const Options before = orvanel_options;
    const std::string folder = page_dir_location;
    for (const OptionsBox &box : OPTIONS_BOXES)
        form.chosen.*box.flag = 1 - form.chosen.*box.flag;
    form.chosen.initial_zoom_level = 1;
    choose_colour("Black");
    text_copy(form.chosen.page_folder, file.folder.file("missing").c_str());
    MessageScript script;
    EXPECT_FALSE(accept());
    EXPECT_EQ(std::memcmp(&before, &orvanel_options, sizeof before), 0);
    EXPECT_EQ(page_dir_location, folder);
    EXPECT_EQ(dialog_options_folder_change_reload, 0);
    EXPECT_EQ(options_colour_change_flag, 0);
    EXPECT_EQ(dialog_options_rebuild_window, 0);
    EXPECT_EQ(file.text(), "");
}

TEST_F(OptionsDialog, OK_writes_the_file) {
    form.chosen.reflections = 0;
    EXPECT_TRUE(accept());
    EXPECT_NE(file.text().find("<reflections>0</reflections>"), std::string::npos);
}

TEST_F(OptionsDialog, A_read_only_file_only_warns_and_the_settings_stay_in_effect) {
    ASSERT_EQ(xml_save_options(), 0);
    const std::string saved = file.text();
    file.set_read_only(true);
    form.chosen.reflections = 0;
    MessageScript script;
    EXPECT_TRUE(accept());
    file.set_read_only(false);
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "The options file (options.xml) is read-only.  Any "
                                      "alterations will be lost when Orvanel is closed.");
    EXPECT_EQ(script.shown()[0].caption, "Orvanel");
    EXPECT_EQ(orvanel_options.reflections, 0);
    EXPECT_EQ(file.text(), saved);
}

TEST_F(OptionsDialog, The_flags_of_the_last_time_are_gone_when_it_opens_again) {
    dialog_options_folder_change_reload = 1;
    options_colour_change_flag = 1;
    dialog_options_rebuild_window = 1;
    dialog_options_open(&form);
    EXPECT_EQ(dialog_options_folder_change_reload, 0);
    EXPECT_EQ(options_colour_change_flag, 0);
    EXPECT_EQ(dialog_options_rebuild_window, 0);
}
