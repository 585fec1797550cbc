#include "tests/windows/options_effects_fixture.h"

#include "actions/command.h"
#include "app/commands.h"
#include "page/options.h"
#include "resources/resource_ids.h"
#include "scene/scene_page.h"

static constexpr char OBJECT[] =
    "<node>\n<type>object</type>\n<name>Server</name>\n<description></description>\n"
    "<x_position>-8.00</x_position>\n<y_position>5.00</y_position>\n<model></model>\n"
    "<action>\n<type>command</type>\n<owner>0</owner>\n<name>Go</name>\n"
    "<command>sub.orvl</command>\n<icon></icon>\n</action>\n</node>\n";

OptionsEffects::OptionsEffects() {
    window.write_page("home.orvl", OBJECT);
    scene_load_page("home.orvl", "Home");
    orvanel_options.object_transitions = 0;
    orvanel_options.object_inertia = 0;
}

void OptionsEffects::change(std::vector<DialogStep> steps) {
    steps.push_back({OPTIONS, [](HWND dialog) { click(dialog, IDOK); }});
    DialogPlayer player(std::move(steps));
    command_run(COMMAND_OPTIONS);
    EXPECT_TRUE(player.done());
    handle_messages();
}

void OptionsEffects::tick(OptionsTab tab, int control) {
    change({{OPTIONS, [=](HWND dialog) { click(options_open_page(dialog, tab), control); }}});
}

void OptionsEffects::choose_folder(const std::string &folder) {
    change({{OPTIONS, [=](HWND dialog) {
                 type(options_page(dialog, OPTIONS_GENERAL), RESOURCE_GENERAL_FOLDER,
                      folder.c_str());
             }}});
}
