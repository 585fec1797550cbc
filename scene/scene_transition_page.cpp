#include "scene/scene_transition.h"

#include "page/node.h"
#include "platform/clock.h"
#include "platform/gl.h"
#include "platform/window.h"
#include "scene/frame_clock.h"
#include "scene/scene.h"
#include "scene/scene_transition_pace.h"

#include <cmath>

static constexpr std::int32_t FLIGHT_STEPS = COOL_MOVE_STEPS / 2;
static constexpr double FLIGHT_HEIGHT = 100.0; // floor units
static constexpr double FLIGHT_TURN = 90.0;    // degrees
static constexpr std::int32_t COLOUR_STEPS = 32;
static constexpr std::uint32_t COLOUR_STEP_MILLISECONDS = 15;

// Where the flight began; every frame is placed from there, so that nothing adds up to a drift.
static float node_height_at_start[NODE_CAPACITY];
static float line_offset_at_start[LINE_CAPACITY];

static void remember_heights() {
    for (std::int32_t i = 0; i < node_total; i++)
        node_height_at_start[i] = node[i].height;
    for (std::int32_t i = 0; i < line_total; i++)
        line_offset_at_start[i] = line[i].height_offset;
}

static void set_heights(float node_height, float line_offset) {
    for (std::int32_t i = 0; i < node_total; i++)
        node[i].height = node_height;
    for (std::int32_t i = 0; i < line_total; i++)
        line[i].height_offset = line_offset;
}

// Links are placed by their distance below the camera: they rise when it shrinks.
static void lift_scene(double lift) {
    for (std::int32_t i = 0; i < node_total; i++)
        node[i].height = static_cast<float>(static_cast<double>(node_height_at_start[i]) + lift);
    for (std::int32_t i = 0; i < line_total; i++)
        line[i].height_offset =
            static_cast<float>(static_cast<double>(line_offset_at_start[i]) - lift);
}

// A frame of the flight has no labels, names and buttons.
static void draw_flight() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    scene_draw_lights();
    scene_draw_reflections();
    scene_draw_floor();
    scene_draw_lines();
    scene_draw_nodes();
    scene_draw_page_title();
    window_swap_buffers();
}

static void draw_empty_floor() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    scene_draw_lights();
    scene_draw_floor();
    window_swap_buffers();
}

static void blend_floor_colour(const PageColour &from, const PageColour &to, float share) {
    scene_floor.colour.red = std::lerp(from.red, to.red, share);
    scene_floor.colour.green = std::lerp(from.green, to.green, share);
    scene_floor.colour.blue = std::lerp(from.blue, to.blue, share);
    scene_invalidate_floor();
}

void scene_page_out_transition(std::int32_t back) {
    if (!transition_zoom_enabled() || node_total < 1)
        return;
    const double turn = back == 0 ? -FLIGHT_TURN : FLIGHT_TURN;
    remember_heights();
    transition_start_frames();
    for (std::int32_t k = 0; k < FLIGHT_STEPS; k++) {
        const double done = transition_half_share_done(k + 1);
        lift_scene(FLIGHT_HEIGHT * done);
        global_angle = static_cast<float>(turn * done);
        draw_flight();
        transition_wait_frame(FRAME_MILLISECONDS);
    }
    draw_empty_floor();
    reset_frame_timer();
}

void scene_page_in_transition(std::int32_t back) {
    if (!transition_zoom_enabled())
        return;
    const PageColour from = scene_floor.previous_colour;
    const PageColour to = scene_floor.colour;
    const double turn = back == 0 ? FLIGHT_TURN : -FLIGHT_TURN;
    blend_floor_colour(from, to, 0.0f);
    set_heights(NODE_REST_HEIGHT + static_cast<float>(FLIGHT_HEIGHT),
                LINE_REST_OFFSET - static_cast<float>(FLIGHT_HEIGHT));
    remember_heights();
    transition_start_frames();
    for (std::int32_t k = FLIGHT_STEPS - 1; k >= 0; k--) {
        const double left = transition_half_share_done(k);
        lift_scene(FLIGHT_HEIGHT * (left - 1.0));
        global_angle = static_cast<float>(turn * left);
        draw_flight();
        transition_wait_frame(FRAME_MILLISECONDS);
        blend_floor_colour(from, to, static_cast<float>(FLIGHT_STEPS - k) / FLIGHT_STEPS);
    }
    reset_frame_timer();
}

void scene_page_colour_transition(float red, float green, float blue) {
    const PageColour from = scene_floor.colour;
    PageColour to = from;
    to.red = red;
    to.green = green;
    to.blue = blue;
    if (transition_zoom_enabled()) {
        for (std::int32_t step = 1; step <= COLOUR_STEPS; step++) {
            blend_floor_colour(from, to, static_cast<float>(step) / COLOUR_STEPS);
            transition_draw();
            clock_sleep(COLOUR_STEP_MILLISECONDS);
        }
    }
    blend_floor_colour(from, to, 1.0f);
    scene_request_redraw();
    reset_frame_timer();
}
