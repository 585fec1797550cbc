#include "app/input.h"

#include "page/node.h"
#include "page/options.h"
#include "platform/window.h"
#include "scene/frame_clock.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"

#include <algorithm>

static constexpr std::int32_t MOUSE_BUTTONS = MOUSE_LEFT | MOUSE_MIDDLE | MOUSE_RIGHT;
static constexpr std::int32_t COASTING_FRAMES = 30;

// ---- speed of the hand
//
// Where the floor was in the last moments of a drag. Some mice report a thousand times a second,
// others only now and then; the way gone within a fixed time is the same for all, and comes to
// nothing when the mouse rests before the button comes up.

static constexpr std::uint32_t SPEED_WINDOW = 100;  // milliseconds looked back
static constexpr std::uint32_t SAMPLE_DISTANCE = 5; // milliseconds at least from one to the next
static constexpr std::int32_t SAMPLES = 32;         // more than come within the window

struct Sample {
    std::uint32_t time; // milliseconds
    float x, y;         // the floor's offset
};

static Sample samples[SAMPLES]; // a ring
static std::int32_t sample_total, next_sample;

static void take_sample() {
    const std::uint32_t now = timer_get_time_ms(&frame_timer);
    const Sample &newest = samples[(next_sample + SAMPLES - 1) % SAMPLES];
    if (sample_total > 0 && now - newest.time < SAMPLE_DISTANCE)
        return;
    samples[next_sample] = {now, scene_floor.position_x, scene_floor.position_y};
    next_sample = (next_sample + 1) % SAMPLES;
    sample_total = std::min(sample_total + 1, SAMPLES);
}

// The earliest that is still within the window, or null.
static const Sample *earliest_sample(std::uint32_t now) {
    for (std::int32_t age = sample_total; age > 0; age--) {
        const Sample &sample = samples[(next_sample + SAMPLES - age) % SAMPLES];
        if (now - sample.time <= SPEED_WINDOW)
            return &sample;
    }
    return nullptr;
}

static void throw_floor() {
    const std::uint32_t now = timer_get_time_ms(&frame_timer);
    const Sample *start = earliest_sample(now);
    if (start == nullptr)
        return;
    // A jerk shorter than a frame counts as one of a frame.
    const std::uint32_t elapsed = std::max(now - start->time, FRAME_MILLISECONDS);
    const float frames = static_cast<float>(elapsed) / FRAME_MILLISECONDS;
    scene_floor.inertia_x = (scene_floor.position_x - start->x) / frames;
    scene_floor.inertia_y = (scene_floor.position_y - start->y) / frames;
    scene_floor.inertia_frames = COASTING_FRAMES;
}

// ---- dragging

struct FloorPoint {
    float x, y; // floor units
};

static FloorPoint held;  // the point of the floor that stays under the mouse
static FloorPoint put;   // the floor's offset as the drag left it
static bool mouse_moved; // since the floor was grabbed

// Relative to the floor's offset. On the floor's plane also where an object stands.
static FloorPoint floor_point(std::int32_t x, std::int32_t y) {
    FloorPoint point = {};
    const bool known = scene_floor.pick_depth != 0.0f; // not since the last zoom
    GetOGLPos(x, y, &point.x, &point.y,
              known ? scene_floor.pick_depth : gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR));
    return point;
}

static void hold_point(std::int32_t x, std::int32_t y) {
    const FloorPoint point = floor_point(x, y);
    held = {scene_floor.position_x + point.x, scene_floor.position_y + point.y};
    put = {scene_floor.position_x, scene_floor.position_y};
}

static void grab_floor() {
    scene_floor.drag_state = 1;
    scene_floor.inertia_x = 0.0f;
    scene_floor.inertia_y = 0.0f;
    scene_floor.inertia_frames = 0;
    hold_point(mouse.x, mouse.y);
    mouse_moved = false;
    sample_total = 0;
    take_sample();
}

// After mouse_record_position.
static void drag_floor() {
    if (mouse.x == mouse.previous_x && mouse.y == mouse.previous_y)
        return;
    // Keys scroll the floor under the mouse as well; it is not pulled back then.
    if (scene_floor.position_x != put.x || scene_floor.position_y != put.y)
        hold_point(mouse.previous_x, mouse.previous_y);
    const FloorPoint point = floor_point(mouse.x, mouse.y);
    put = {held.x - point.x, held.y - point.y};
    scene_floor.position_x = put.x;
    scene_floor.position_y = put.y;
    mouse_moved = true;
    take_sample();
    scene_request_redraw();
}

// ---- holding an object

static void grab_node(std::int32_t id) {
    Node *record = &node[id];
    if (record->grab_state != GRAB_HOVERED)
        return;
    record->grab_state = GRAB_GRABBED;
    record->label_depth = record->type == NODE_LABEL ? DEPTH_LOOKUP_LABEL - DEPTH_LOOKUP_FLOOR : 0;
}

// All of them: one that was still held would keep every object from sliding back onto the floor.
static void release_nodes() {
    for (std::int32_t i = 0; i < node_total; i++) {
        if (node[i].grab_state == GRAB_GRABBED)
            node[i].grab_state = GRAB_HOVERED;
    }
}

// ---- buttons

// The mouse is let go of first: the page that is left may have a question to ask.
static void navigate(std::int32_t button) {
    window_release_mouse();
    app_align_mode = 0;
    app_line_draw_mode = 0;
    input_leave_page(button == NAVIGATION_BACK ? scene_page_back : scene_page_back_home);
    open_mode = 0;
    reset_frame_timer();
}

static bool is_navigation(std::int32_t target) {
    return scene_stack_depth > 0 && (target == NAVIGATION_BACK || target == NAVIGATION_HOME);
}

void input_left_down(std::int32_t x, std::int32_t y) {
    window_capture_mouse();
    mouse.flags |= MOUSE_LEFT;
    mouse_record_position(x, y);
    const std::int32_t target = input_target(mouse.x, mouse.y);
    if (is_navigation(target)) {
        navigate(target);
    } else {
        grab_floor();
        if (node_is_live(target))
            grab_node(target);
    }
    scene_request_redraw();
}

static bool floor_coasts() {
    return orvanel_options.floor_inertia == 1 && orvanel_options.good_graphics_card == 1;
}

void input_left_up(std::int32_t x, std::int32_t y) {
    mouse.flags &= ~MOUSE_LEFT;
    mouse_record_position(x, y);
    if (scene_floor.drag_state == 1) {
        drag_floor();
        scene_floor.drag_state = 0;
        if (mouse_moved && floor_coasts())
            throw_floor();
    }
    release_nodes();
    window_release_mouse();
    scene_request_redraw();
}

void input_button_up(std::int32_t button) {
    mouse.flags &= ~button;
    scene_request_redraw();
}

void input_capture_lost() {
    mouse.flags &= ~MOUSE_LEFT;
    scene_floor.drag_state = 0;
    release_nodes();
    window_release_mouse();
    scene_request_redraw();
}

void input_mouse_move(std::int32_t x, std::int32_t y, std::int32_t buttons) {
    if (!window_is_foreground())
        return;
    mouse.flags = (mouse.flags & ~MOUSE_BUTTONS) | MOUSE_MOVE | (buttons & MOUSE_BUTTONS);
    mouse_record_position(x, y);
    if (app_align_mode == 1 || app_line_draw_mode == 1)
        scene_request_redraw(); // a line follows the mouse
    if (scene_floor.drag_state != 1)
        return;
    if ((buttons & MOUSE_LEFT) != 0)
        drag_floor();
    else
        input_capture_lost(); // its release went to somebody else
}
