#include "scene/scene_page.h"

#include "actions/misc.h"
#include "editing/page_edit.h"
#include "platform/message.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_transition.h"

#include <cstring>

static constexpr std::int32_t OPENING = 0; // for the transitions

static void show_page(std::int32_t mode) {
    scene_floor_init();
    scene_page_in_transition(OPENING);
    scene_invalidate_floor();
    open_mode = mode;
    scene_request_redraw();
    scene_draw();
    reset_frame_timer();
}

// The page shown flies back in; it comes from no other page's colour.
static void stay_on_page() {
    scene_floor.previous_colour = scene_floor.colour;
    scene_page_in_transition(OPENING);
    scene_request_redraw();
    scene_draw();
    reset_frame_timer();
}

std::int32_t load_page(const char *file, const char *title) {
    scene_page_out_transition(OPENING);
    if (scene_stack_push() != 0) {
        message_box("The maximum number of page levels has been reached.", MESSAGE_CAPTION,
                    MessageIcon::Exclamation);
        stay_on_page();
        return 1;
    }
    const std::uint32_t result = scene_load_page(file, title);
    if (result != PAGE_LOADED) {
        message_box(scene_load_message(result, SCENE_TOO_MANY_ON_HOME), MESSAGE_CAPTION,
                    MessageIcon::Exclamation);
        scene_stack_pop();
    }
    show_page(0);
    return 0;
}

std::uint32_t open_page_from_command_line(const char *text) {
    char path[PATH_SIZE];
    const char *quote = std::strchr(text, '"');
    text_copy(path, quote != nullptr ? quote + 1 : text);
    char *last_quote = std::strrchr(path, '"');
    if (last_quote != nullptr)
        *last_quote = '\0';
    char title[PAGE_TITLE_SIZE];
    generate_page_name_from_file_name(path, title);
    const std::uint32_t result = scene_load_page(path, title);
    if (result == PAGE_LOADED)
        open_mode = 1;
    return result;
}

// Cancel does not stay in edit mode here: what is not answered with Yes discards the changes. True
// when the page shown now differs from its file.
static bool discard_edit_mode() {
    const bool discarded = scene_changed == 1;
    page_edit_cancel();
    return discarded;
}

static void go_home(bool reload) {
    // The home page below others is read when it is gone back to; when it is the page shown, nobody
    // would.
    if (reload && scene_stack_depth == 0) {
        const std::uint32_t result = scene_reload_page();
        if (result != PAGE_LOADED)
            message_box(scene_load_message(result, SCENE_TOO_MANY_ON_HOME), MESSAGE_CAPTION,
                        MessageIcon::Exclamation);
    }
    scene_page_back_home();
}

void scene_open_handed_over_page(const char *path) {
    if (page_edit_settle_changes() == PageEditAnswer::Failed)
        return; // what the user wants to keep is not thrown away for another page
    const bool discarded = discard_edit_mode();
    if (text_contains(path, "home.orvl")) {
        go_home(discarded);
        return;
    }
    scene_page_out_transition(OPENING);
    // The new page sits right above the home page, whatever was open. On a full stack nothing is
    // pushed, and cutting it makes the place.
    scene_stack_push();
    scene_stack_jump(1);
    if (open_page_from_command_line(path) != PAGE_LOADED) {
        message_box("Failed to load page file.", MESSAGE_CAPTION, MessageIcon::Exclamation);
        scene_stack_pop();
    }
    show_page(1);
    scene_request_redraw();
    scene_draw();
}
