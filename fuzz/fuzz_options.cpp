// Options files. Whatever was read must lie in its range and survive being written and read again.
#include "page/options.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

static void require(bool condition) {
    if (!condition)
        std::abort();
}

static void check_ranges() {
    const Options &options = orvanel_options;
    require(options.initial_zoom_level >= 0 && options.initial_zoom_level <= 8);
    for (const std::int32_t flag : {options.show_home_page_title,
                                    options.maintain_zoom_level,
                                    options.action_double_click_run,
                                    options.action_exit_action_1,
                                    options.action_exit_any,
                                    options.action_menu_icons,
                                    options.action_menu_title,
                                    options.splash_screen,
                                    options.confirm_page_file_delete,
                                    options.confirm_object_delete,
                                    options.remember_last_model,
                                    options.disable_graphics_card_warning,
                                    options.good_graphics_card,
                                    options.reflections,
                                    options.object_rotation,
                                    options.zoom_transition,
                                    options.object_transitions,
                                    options.floor_inertia,
                                    options.object_inertia,
                                    options.anti_aliasing,
                                    options.text_shadows,
                                    options.check_for_updates})
        require(flag == 0 || flag == 1);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    options_set_defaults();
    const std::int32_t result = options_read_memory({reinterpret_cast<const char *>(data), size});
    check_ranges();
    if (result != OPTIONS_READ)
        return 0;
    const std::string written = options_format();
    require(options_read_memory({written.data(), written.size()}) == OPTIONS_READ);
    require(options_format() == written);
    return 0;
}
