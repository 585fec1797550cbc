#include "scene/scene_transition.h"

#include "page/node.h"
#include "scene/frame_clock.h"
#include "scene/scene.h"
#include "scene/scene_transition_pace.h"

static constexpr std::uint32_t NEW_MILLISECONDS = 25; // a frame
static constexpr std::uint32_t LEAVE_MILLISECONDS = 12;
static constexpr std::uint32_t FADE_MILLISECONDS = 12;

static constexpr float FADE_STEP = 0.07f; // opacity a frame
enum FadeState : std::int32_t { FADE_NONE = 0, FADE_IN = 1, FADE_OUT = 2 };

static constexpr float FLY_ACCELERATION = 0.5f; // floor units a frame, more every frame
static constexpr float FLY_HEIGHT = 100.0f;     // floor units

static constexpr std::int32_t SCALE_STEPS = 15;
static const float node_effect_bounce3[SCALE_STEPS] = {0.0f,    0.0553f, 0.2136f, 0.4529f, 0.7402f,
                                                       1.0358f, 1.2988f, 1.4f,    1.3802f, 1.3247f,
                                                       1.2445f, 1.1555f, 1.0753f, 1.0198f, 1.0f};
static const float node_effect_bounce4[SCALE_STEPS] = {1.0001f, 0.9746f, 0.9472f, 0.9177f, 0.8855f,
                                                       0.8503f, 0.8114f, 0.7679f, 0.7186f, 0.6617f,
                                                       0.5944f, 0.512f,  0.4057f, 0.256f,  0.0f};

// An opacity that is none, or not a number, starts at the fade's beginning: every fade ends.
static void fade_in_step(Node *record) {
    if (!(record->alpha > 0.0f))
        record->alpha = 0.0f;
    record->alpha += FADE_STEP;
    if (record->alpha >= 1.0f) {
        record->alpha = 1.0f;
        record->fade_state = FADE_NONE;
    }
}

static void fade_out_step(Node *record) {
    if (!(record->alpha < 1.0f))
        record->alpha = 1.0f;
    record->alpha -= FADE_STEP;
    if (record->alpha <= 0.0f) {
        record->alpha = 0.0f;
        record->fade_state = FADE_NONE;
    }
}

// Moves all nodes of a fade state on by a frame; true when there was one.
static bool fade_step(std::int32_t state) {
    bool fading = false;
    for (std::int32_t i = 0; i < node_total; i++) {
        if (node[i].fade_state != state)
            continue;
        fading = true;
        if (state == FADE_IN)
            fade_in_step(&node[i]);
        else
            fade_out_step(&node[i]);
    }
    return fading;
}

static void fade_nodes(std::int32_t state) {
    if (!transition_objects_enabled()) {
        scene_request_redraw();
        return;
    }
    TransitionTicks ticks = transition_start_ticks();
    bool fading;
    do {
        fading = fade_step(state);
        transition_wait_ticks(&ticks, FADE_MILLISECONDS);
        transition_draw();
    } while (fading);
    reset_frame_timer();
}

void scene_node_fade_in_transition() {
    fade_nodes(FADE_IN);
}

void scene_node_fade_out_transition() {
    fade_nodes(FADE_OUT);
}

static bool is_object(std::int32_t index) {
    return node_is_live(index) && node[index].type != NODE_LABEL;
}

// Runs an object through a table of scales and leaves it at the last one.
static void scale_object(std::int32_t index, const float (&scales)[SCALE_STEPS],
                         std::uint32_t milliseconds) {
    if (!is_object(index))
        return;
    if (transition_objects_enabled()) {
        TransitionTicks ticks = transition_start_ticks();
        for (const float scale : scales) {
            node[index].scale = scale;
            transition_draw();
            transition_wait_ticks(&ticks, milliseconds);
        }
        reset_frame_timer();
    }
    node[index].scale = scales[SCALE_STEPS - 1];
    scene_request_redraw();
}

void scene_new_node_transition(std::int32_t index) {
    scale_object(index, node_effect_bounce3, NEW_MILLISECONDS);
}

void scene_cut_node_transition(std::int32_t index) {
    scale_object(index, node_effect_bounce4, LEAVE_MILLISECONDS);
}

static void fly_up(Node *record) {
    TransitionTicks ticks = transition_start_ticks();
    float risen = 0.0f;
    for (float step = FLY_ACCELERATION; risen < FLY_HEIGHT; step += FLY_ACCELERATION) {
        risen += step;
        record->height += step;
        transition_draw();
        transition_wait_ticks(&ticks, LEAVE_MILLISECONDS);
    }
    reset_frame_timer();
}

void scene_delete_node_transition(std::int32_t index) {
    if (!is_object(index))
        return;
    if (transition_objects_enabled())
        fly_up(&node[index]);
    node[index].height = FLY_HEIGHT;
    scene_request_redraw();
}
