#include "page/options.h"

#include "page/xml.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "tests/support/user_options.h"
#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

#include <gtest/gtest.h>

#include <utility>

struct OptionsTest : testing::Test, UserOptionsFile {
    void write_user_file(const std::string &text) const {
        folder_create(user_folder.c_str());
        ASSERT_EQ(file_replace_text(user_file.c_str(), text), 0);
    }

    void write_program_file(const std::string &text) {
        folder.write("program\\options.xml", text);
    }
};

static std::string file_with(const char *version, const std::string &keys) {
    return std::string("<orvanel_options>\n<offv>") + version + "</offv>\n" + keys +
           "</orvanel_options>\n";
}

static std::int32_t read(const std::string &text) {
    return options_read_memory({text.data(), text.size()});
}

static const char DEFAULT_FILE[] =
    "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
    "<orvanel_options>\n"
    "\t<offv>002</offv>\n"
    "\t<show_home_page_title>1</show_home_page_title>\n"
    "\t<default_page_colour>\n"
    "\t\t<name>Blue</name>\n"
    "\t</default_page_colour>\n"
    "\t<maintain_zoom_level>0</maintain_zoom_level>\n"
    "\t<initial_zoom_level>4</initial_zoom_level>\n"
    "\t<page_folder></page_folder>\n"
    "\t<action_double_click_run>1</action_double_click_run>\n"
    "\t<action_exit_action_1>0</action_exit_action_1>\n"
    "\t<action_exit_any>0</action_exit_any>\n"
    "\t<action_menu_icons>1</action_menu_icons>\n"
    "\t<action_menu_title>0</action_menu_title>\n"
    "\t<splash_screen>1</splash_screen>\n"
    "\t<confirm_page_file_delete>1</confirm_page_file_delete>\n"
    "\t<confirm_object_delete>0</confirm_object_delete>\n"
    "\t<remember_last_model>1</remember_last_model>\n"
    "\t<disable_graphics_card_warning>0</disable_graphics_card_warning>\n"
    "\t<good_graphics_card>1</good_graphics_card>\n"
    "\t<reflections>1</reflections>\n"
    "\t<object_rotation>1</object_rotation>\n"
    "\t<zoom_transition>1</zoom_transition>\n"
    "\t<object_transitions>1</object_transitions>\n"
    "\t<floor_inertia>1</floor_inertia>\n"
    "\t<object_inertia>1</object_inertia>\n"
    "\t<anti_aliasing>1</anti_aliasing>\n"
    "\t<text_shadows>1</text_shadows>\n"
    "\t<check_for_updates>1</check_for_updates>\n"
    "\t<check_for_updates_next>0</check_for_updates_next>\n"
    "</orvanel_options>\n";

TEST_F(OptionsTest, the_defaults_are_written_byte_for_byte) {
    EXPECT_EQ(options_format(), DEFAULT_FILE);
}

TEST_F(OptionsTest, a_custom_page_colour_is_written_with_its_components) {
    text_copy(orvanel_options.default_page_colour_name, "Custom");
    orvanel_options.default_page_red = 0.5f;
    orvanel_options.default_page_green = 0.25f;
    orvanel_options.default_page_blue = 1.0f;
    EXPECT_NE(options_format().find("\t<default_page_colour>\n"
                                    "\t\t<name>Custom</name>\n"
                                    "\t\t<red>0.50</red>\n"
                                    "\t\t<green>0.25</green>\n"
                                    "\t\t<blue>1.00</blue>\n"
                                    "\t</default_page_colour>\n"),
              std::string::npos);
}

TEST_F(OptionsTest, every_setting_but_object_inertia_survives_saving_and_loading) {
    Options &options = orvanel_options;
    std::int32_t *const flags[] = {&options.show_home_page_title,
                                   &options.maintain_zoom_level,
                                   &options.action_double_click_run,
                                   &options.action_exit_action_1,
                                   &options.action_exit_any,
                                   &options.action_menu_icons,
                                   &options.action_menu_title,
                                   &options.splash_screen,
                                   &options.confirm_page_file_delete,
                                   &options.confirm_object_delete,
                                   &options.remember_last_model,
                                   &options.disable_graphics_card_warning,
                                   &options.good_graphics_card,
                                   &options.reflections,
                                   &options.object_rotation,
                                   &options.zoom_transition,
                                   &options.object_transitions,
                                   &options.floor_inertia,
                                   &options.anti_aliasing,
                                   &options.text_shadows,
                                   &options.check_for_updates};
    for (std::int32_t *flag : flags)
        *flag = 1 - *flag;
    options.initial_zoom_level = 7;
    text_copy(options.default_page_colour_name, "Custom");
    options.default_page_red = 0.5f;
    options.default_page_green = 0.25f;
    options.default_page_blue = 1.0f;
    text_copy(options.page_folder, std::string(260, 'p').c_str());
    options.check_for_updates_next = 4'000'000'000u;
    const Options saved = options;
    ASSERT_EQ(xml_save_options(), 0);
    options_set_defaults();
    ASSERT_EQ(xml_load_options(), OPTIONS_READ);
    const std::string loaded = options_format();
    options = saved;
    EXPECT_EQ(loaded, options_format());
}

TEST_F(OptionsTest, object_inertia_is_on_again_after_a_restart) {
    orvanel_options.object_inertia = 0;
    ASSERT_EQ(xml_save_options(), 0);
    options_set_defaults();
    ASSERT_EQ(xml_load_options(), OPTIONS_READ);
    EXPECT_EQ(orvanel_options.object_inertia, 1);
}

TEST_F(OptionsTest, object_inertia_behind_text_shadows_is_read) {
    EXPECT_EQ(read(file_with("002", "<text_shadows>1</text_shadows>\n"
                                    "<object_inertia>0</object_inertia>\n")),
              OPTIONS_READ);
    EXPECT_EQ(orvanel_options.object_inertia, 0);
}

TEST_F(OptionsTest, an_initial_zoom_level_of_12_gives_8_and_one_of_minus_3_gives_0) {
    read(file_with("002", "<initial_zoom_level>12</initial_zoom_level>\n"));
    EXPECT_EQ(orvanel_options.initial_zoom_level, 8);
    read(file_with("002", "<initial_zoom_level>-3</initial_zoom_level>\n"));
    EXPECT_EQ(orvanel_options.initial_zoom_level, 0);
}

static const char COLOUR_AND_FOLDER[] = "<default_page_colour>\n<name>Purple</name>\n"
                                        "</default_page_colour>\n"
                                        "<page_folder>c:\\pages</page_folder>\n";

TEST_F(OptionsTest, version_2_reads_colour_and_page_folder) {
    read(file_with("002", COLOUR_AND_FOLDER));
    EXPECT_STREQ(orvanel_options.default_page_colour_name, "Purple");
    EXPECT_STREQ(orvanel_options.page_folder, "c:\\pages");
}

TEST_F(OptionsTest, version_1_ignores_the_page_folder) {
    read(file_with("1", COLOUR_AND_FOLDER));
    EXPECT_STREQ(orvanel_options.default_page_colour_name, "Purple");
    EXPECT_STREQ(orvanel_options.page_folder, "");
}

TEST_F(OptionsTest, version_0_also_ignores_the_colour) {
    read(file_with("0", COLOUR_AND_FOLDER));
    EXPECT_STREQ(orvanel_options.default_page_colour_name, "Blue");
    EXPECT_STREQ(orvanel_options.page_folder, "");
}

TEST_F(OptionsTest, a_flag_value_other_than_0_or_1_leaves_the_setting_as_it_was) {
    for (const char *value : {"2", "-1", "10"}) {
        read(file_with("002", std::string("<show_home_page_title>") + value +
                                  "</show_home_page_title>\n<maintain_zoom_level>" + value +
                                  "</maintain_zoom_level>\n"));
        EXPECT_EQ(orvanel_options.show_home_page_title, 1);
        EXPECT_EQ(orvanel_options.maintain_zoom_level, 0);
    }
}

TEST_F(OptionsTest, a_missing_key_keeps_its_setting) {
    orvanel_options.reflections = 0;
    text_copy(orvanel_options.page_folder, "c:\\x");
    EXPECT_EQ(read(file_with("002", "")), OPTIONS_READ);
    EXPECT_EQ(orvanel_options.reflections, 0);
    EXPECT_STREQ(orvanel_options.page_folder, "c:\\x");
}

TEST_F(OptionsTest, a_key_that_stands_too_early_in_the_file_is_passed_over) {
    read(file_with("002", "<reflections>0</reflections>\n"
                          "<good_graphics_card>0</good_graphics_card>\n"));
    EXPECT_EQ(orvanel_options.good_graphics_card, 0);
    EXPECT_EQ(orvanel_options.reflections, 1);
}

TEST_F(OptionsTest, of_two_graphics_card_warnings_the_second_wins) {
    read(file_with("002", "<disable_graphics_card_warning>1</disable_graphics_card_warning>\n"));
    EXPECT_EQ(orvanel_options.disable_graphics_card_warning, 1);
    read(file_with("002", "<disable_graphics_card_warning>1</disable_graphics_card_warning>\n"
                          "<disable_graphics_card_warning>0</disable_graphics_card_warning>\n"));
    EXPECT_EQ(orvanel_options.disable_graphics_card_warning, 0);
}

TEST_F(OptionsTest, a_key_limited_by_its_own_end_needs_that_end) {
    read(file_with("002", "<action_menu_icons>0\n<confirm_object_delete>1\n"
                          "<remember_last_model>0</remember_last_model>\n"));
    EXPECT_EQ(orvanel_options.action_menu_icons, 1);
    EXPECT_EQ(orvanel_options.confirm_object_delete, 0);
    EXPECT_EQ(orvanel_options.remember_last_model, 0);
}

// A file in which nothing but the colour is closed, every flag turned round.
TEST_F(OptionsTest, only_four_keys_need_their_own_end) {
    struct Key {
        const char *name;
        std::int32_t Options::*flag;
        bool needs_end;
    };
    static constexpr Key keys[] = {
        {"show_home_page_title", &Options::show_home_page_title, false},
        {"maintain_zoom_level", &Options::maintain_zoom_level, false},
        {"action_double_click_run", &Options::action_double_click_run, false},
        {"action_exit_action_1", &Options::action_exit_action_1, false},
        {"action_exit_any", &Options::action_exit_any, false},
        {"action_menu_icons", &Options::action_menu_icons, true},
        {"action_menu_title", &Options::action_menu_title, true},
        {"splash_screen", &Options::splash_screen, false},
        {"confirm_page_file_delete", &Options::confirm_page_file_delete, false},
        {"confirm_object_delete", &Options::confirm_object_delete, true},
        {"remember_last_model", &Options::remember_last_model, true},
        {"disable_graphics_card_warning", &Options::disable_graphics_card_warning, false},
        {"good_graphics_card", &Options::good_graphics_card, false},
        {"reflections", &Options::reflections, false},
        {"object_rotation", &Options::object_rotation, false},
        {"zoom_transition", &Options::zoom_transition, false},
        {"object_transitions", &Options::object_transitions, false},
        {"floor_inertia", &Options::floor_inertia, false},
        {"anti_aliasing", &Options::anti_aliasing, false},
        {"text_shadows", &Options::text_shadows, false},
        {"object_inertia", &Options::object_inertia, false},
        {"check_for_updates", &Options::check_for_updates, false},
    };
    const Options before = orvanel_options;
    std::string file;
    for (const Key &key : keys)
        file += std::string("<") + key.name + ">" + std::to_string(1 - before.*key.flag) + "\n";
    ASSERT_EQ(read(file_with("002", file)), OPTIONS_READ);
    for (const Key &key : keys)
        EXPECT_EQ(orvanel_options.*key.flag,
                  key.needs_end ? before.*key.flag : 1 - before.*key.flag)
            << key.name;
}

TEST_F(OptionsTest, the_opening_of_the_page_colour_may_be_missing) {
    read(file_with("002", "<name>Gray</name>\n</default_page_colour>\n"));
    EXPECT_STREQ(orvanel_options.default_page_colour_name, "Gray");
    EXPECT_EQ(orvanel_options.default_page_red, 0.14f);
}

static void read_colour(const std::string &content) {
    read(file_with("002", "<default_page_colour>\n" + content + "</default_page_colour>\n"));
}

TEST_F(OptionsTest, every_preset_sets_its_colour) {
    for (const PageColourPreset &preset : PAGE_COLOUR_PRESETS) {
        options_set_defaults();
        read_colour(std::string("<name>") + preset.name + "</name>\n");
        EXPECT_STREQ(orvanel_options.default_page_colour_name, preset.name);
        EXPECT_EQ(orvanel_options.default_page_red, preset.red);
        EXPECT_EQ(orvanel_options.default_page_green, preset.green);
        EXPECT_EQ(orvanel_options.default_page_blue, preset.blue);
    }
}

TEST_F(OptionsTest, a_presets_own_components_are_not_read) {
    read_colour("<name>Gray</name>\n<red>0.9</red>\n<green>0.9</green>\n<blue>0.9</blue>\n");
    EXPECT_EQ(orvanel_options.default_page_red, 0.14f);
}

TEST_F(OptionsTest, a_custom_colour_takes_its_components) {
    read_colour("<name>Custom</name>\n<red>0.1</red>\n<green>0.2</green>\n<blue>0.3</blue>\n");
    EXPECT_EQ(orvanel_options.default_page_red, 0.1f);
    EXPECT_EQ(orvanel_options.default_page_green, 0.2f);
    EXPECT_EQ(orvanel_options.default_page_blue, 0.3f);
}

TEST_F(OptionsTest, a_custom_colour_that_lacks_a_component_becomes_the_default_blue) {
    for (const char *content :
         {"<green>0.2</green>\n<blue>0.3</blue>\n", "<red>0.1</red>\n<blue>0.3</blue>\n",
          "<red>0.1</red>\n<green>0.2</green>\n"}) {
        orvanel_options.default_page_red = 0.9f;
        read_colour(std::string("<name>Custom</name>\n") + content);
        EXPECT_STREQ(orvanel_options.default_page_colour_name, "Custom");
        EXPECT_EQ(orvanel_options.default_page_red, 0.07f);
        EXPECT_EQ(orvanel_options.default_page_green, 0.13f);
        EXPECT_EQ(orvanel_options.default_page_blue, 0.19f);
    }
}

TEST_F(OptionsTest, an_unknown_colour_name_is_kept_with_19_characters_and_leaves_the_colour) {
    orvanel_options.default_page_red = 0.9f;
    read_colour("<name>a colour of many letters</name>\n");
    EXPECT_STREQ(orvanel_options.default_page_colour_name, "a colour of many le");
    EXPECT_EQ(orvanel_options.default_page_red, 0.9f);
}

TEST_F(OptionsTest, a_page_folder_keeps_260_characters) {
    read(file_with("002",
                   std::string("<page_folder>") + std::string(300, 'p') + "</page_folder>\n"));
    EXPECT_EQ(std::string(orvanel_options.page_folder), std::string(260, 'p'));
}

TEST_F(OptionsTest, the_update_time_beyond_its_type_is_the_latest_there_is) {
    read(file_with("002", "<check_for_updates_next>99999999999999</check_for_updates_next>\n"));
    EXPECT_EQ(orvanel_options.check_for_updates_next, UINT32_MAX);
}

TEST_F(OptionsTest, without_a_file_the_defaults_stay) {
    EXPECT_EQ(xml_load_options(), OPTIONS_NONE);
    EXPECT_EQ(options_format(), DEFAULT_FILE);
    EXPECT_FALSE(file_exists(user_file.c_str()));
}

TEST_F(OptionsTest, whatever_comes_of_it_no_file_stays_loaded) {
    const auto load_over_another = [] {
        const std::string text = "<a></a>\n";
        EXPECT_EQ(xml_load_memory({text.data(), text.size()}), 0);
        return xml_load_options();
    };
    EXPECT_EQ(load_over_another(), OPTIONS_NONE);
    EXPECT_EQ(xml, nullptr);
    const std::pair<std::string, std::int32_t> files[] = {
        {"<page>\n</page>\n", OPTIONS_INVALID},
        {"<orvanel_options>\n</orvanel_options>\n", OPTIONS_NONE},
        {file_with("003", ""), OPTIONS_NEWER},
        {file_with("002", ""), OPTIONS_READ}};
    for (const auto &[text, result] : files) {
        write_user_file(text);
        EXPECT_EQ(load_over_another(), result);
        EXPECT_EQ(xml, nullptr) << result;
    }
}

TEST_F(OptionsTest, a_file_without_a_version_counts_as_none) {
    EXPECT_EQ(read("<orvanel_options>\n<show_home_page_title>0</show_home_page_title>\n"
                   "</orvanel_options>\n"),
              OPTIONS_NONE);
    EXPECT_EQ(orvanel_options.show_home_page_title, 1);
}

TEST_F(OptionsTest, a_file_without_its_root_element_is_invalid) {
    EXPECT_EQ(read("<page>\n<offv>002</offv>\n</page>\n"), OPTIONS_INVALID);
    EXPECT_EQ(read(""), OPTIONS_INVALID);
}

TEST_F(OptionsTest, a_version_above_2_is_too_new) {
    EXPECT_EQ(read(file_with("003", "<show_home_page_title>0</show_home_page_title>\n")),
              OPTIONS_NEWER);
    EXPECT_EQ(orvanel_options.show_home_page_title, 1);
}

TEST_F(OptionsTest, the_users_file_is_preferred_to_the_programs) {
    write_user_file(file_with("002", "<show_home_page_title>0</show_home_page_title>\n"));
    write_program_file(file_with("002", "<splash_screen>0</splash_screen>\n"));
    EXPECT_EQ(xml_load_options(), OPTIONS_READ);
    EXPECT_EQ(orvanel_options.show_home_page_title, 0);
    EXPECT_EQ(orvanel_options.splash_screen, 1);
}

TEST_F(OptionsTest, a_file_beside_the_program_is_read_and_saved_to_the_users_place) {
    write_program_file(file_with("002", "<splash_screen>0</splash_screen>\n"));
    EXPECT_EQ(xml_load_options(), OPTIONS_READ);
    EXPECT_EQ(orvanel_options.splash_screen, 0);
    ASSERT_TRUE(file_exists(user_file.c_str()));
    options_set_defaults();
    file_delete((std::string(exe_location) + "options.xml").c_str());
    EXPECT_EQ(xml_load_options(), OPTIONS_READ);
    EXPECT_EQ(orvanel_options.splash_screen, 0);
}

TEST_F(OptionsTest, reading_the_users_file_does_not_write_it) {
    write_user_file(file_with("1", "<splash_screen>0</splash_screen>\n"));
    const long long size = file_size(user_file.c_str());
    EXPECT_EQ(xml_load_options(), OPTIONS_READ);
    EXPECT_EQ(file_size(user_file.c_str()), size);
}

TEST_F(OptionsTest, an_invalid_file_beside_the_program_is_not_moved) {
    write_program_file("<page>\n</page>\n");
    EXPECT_EQ(xml_load_options(), OPTIONS_INVALID);
    EXPECT_FALSE(file_exists(user_file.c_str()));
}

#ifndef _WIN32
TEST_F(OptionsTest, saving_fails_without_a_local_application_data_folder) {
    recorder.local_app_data.clear();
    EXPECT_EQ(xml_save_options(), 1);
}

TEST_F(OptionsTest, saving_fails_when_the_folder_cannot_be_made) {
    recorder.local_app_data = std::string(folder.path) + "none\\none";
    EXPECT_EQ(xml_save_options(), 1);
}
#endif

TEST_F(OptionsTest, a_read_only_file_is_not_written_and_stays_as_it_was) {
    write_user_file("old\n");
    const std::string before = text();
    set_read_only(true);
    EXPECT_EQ(xml_save_options(), 1);
    set_read_only(false);
    EXPECT_EQ(text(), before);
}
