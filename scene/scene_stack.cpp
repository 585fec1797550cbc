#include "scene/scene_page.h"

#include "editing/page_edit.h"
#include "platform/message.h"
#include "platform/text.h"
#include "platform/window.h"
#include "scene/frame_clock.h"
#include "scene/scene.h"
#include "scene/scene_transition.h"

SceneStackEntry scene_stack[SCENE_STACK_CAPACITY];
std::int32_t scene_stack_depth;

static constexpr std::int32_t GOING_BACK = 1; // for the transitions

// Where the user is on the page shown, and which page that is.
struct PageView {
    char title[SCENE_TITLE_SIZE];
    char file_name[SCENE_FILE_NAME_SIZE];
    float position_x, position_y;
    float distance;
    std::int32_t zoom_level;
};

static PageView current_view() {
    PageView view = {};
    text_copy(view.title, scene_page_title);
    text_copy(view.file_name, scene_page_file_name);
    view.position_x = scene_floor.position_x;
    view.position_y = scene_floor.position_y;
    view.distance = scene_floor.distance;
    view.zoom_level = scene_floor.zoom_level;
    return view;
}

static void set_floor(float x, float y, float distance, std::int32_t zoom_level) {
    scene_floor.position_x = x;
    scene_floor.position_y = y;
    scene_floor.distance = distance;
    scene_floor.zoom_level = zoom_level;
}

std::int32_t scene_stack_push() {
    if (scene_stack_depth >= SCENE_STACK_CAPACITY)
        return 2;
    const PageView view = current_view();
    SceneStackEntry *entry = &scene_stack[scene_stack_depth];
    text_copy(entry->title, view.title);
    text_copy(entry->file_name, view.file_name);
    entry->position_x = view.position_x;
    entry->position_y = view.position_y;
    entry->distance = view.distance;
    entry->zoom_level = view.zoom_level;
    template_object_copy(&entry->template_object, &template_object);
    scene_stack_depth++;
    return 0;
}

// The parent cannot be had: its entry stays, and the page that was shown is loaded again.
static void return_to_current_page(std::uint32_t result, const PageView &view) {
    message_box(scene_load_message(result, SCENE_TOO_MANY_ON_PAGE), MESSAGE_CAPTION,
                MessageIcon::Exclamation);
    scene_stack_depth++;
    if (scene_load_page(view.file_name, view.title) != PAGE_LOADED) {
        message_box("Unable to load either the previous or he current page.  Orvanel will exit.",
                    MESSAGE_CAPTION, MessageIcon::Error);
        window_quit(0);
    }
    set_floor(view.position_x, view.position_y, view.distance, view.zoom_level);
}

std::uint32_t scene_stack_pop() {
    if (scene_stack_depth < 1)
        return 0;
    const PageView view = current_view();
    scene_stack_depth--;
    const SceneStackEntry &entry = scene_stack[scene_stack_depth];
    const std::uint32_t result = scene_load_page(entry.file_name, entry.title);
    if (result != PAGE_LOADED) {
        return_to_current_page(result, view);
        return 1;
    }
    // Where the user had left it, not where its file has it; and the template in force then.
    set_floor(entry.position_x, entry.position_y, entry.distance, entry.zoom_level);
    template_object_copy(&template_object, &entry.template_object);
    return 0;
}

void scene_stack_jump(std::int32_t depth) {
    if (scene_stack_depth > depth)
        scene_stack_depth = depth;
}

static void show_page() {
    scene_floor.pick_depth = 0.0f; // another zoom level may be in force
    scene_page_in_transition(GOING_BACK);
    scene_invalidate_floor();
    scene_request_redraw();
    scene_draw();
    reset_frame_timer();
}

void scene_page_back() {
    if (scene_stack_depth == 0 || !page_edit_leave())
        return;
    scene_page_out_transition(GOING_BACK);
    scene_stack_pop();
    show_page();
}

void scene_page_back_home() {
    if (scene_stack_depth == 0 || !page_edit_leave())
        return;
    scene_page_out_transition(GOING_BACK);
    scene_stack_jump(1);
    scene_stack_pop();
    scene_floor.position_x = scene_floor.home_x;
    scene_floor.position_y = scene_floor.home_y;
    show_page();
}
