#include "dialogs/rules/model_spin.h"

#include "page/options.h"

#include <algorithm>
#include <cmath>

float model_viewer_model_angle;
float model_viewer_model_speed;
float model_viewer_model_inertia;
float model_viewer_grab_angle;
float model_viewer_mouse_grab_x;

static constexpr float FIRST_ANGLE = 45.0f; // degrees
static constexpr float IDLE_SPEED = 0.55f;  // degrees a frame
static constexpr float THROW_LIMIT = 6.5f;  // degrees a frame
static constexpr float FRICTION = 0.035f;   // degrees a frame, lost in each frame
static constexpr float LAST_ANGLE = 359.0f; // degrees; beyond it the turn begins anew
static constexpr float FULL_TURN = 360.0f;  // degrees
static constexpr float NOT_GRABBED = -1.0f;

struct SpinMouse {
    std::int32_t x, y, previous_x; // pixels
    bool moved;                    // since the drag began
};
static SpinMouse mouse_state;

void model_spin_init() {
    model_viewer_model_angle = FIRST_ANGLE;
    model_viewer_model_speed = -IDLE_SPEED;
    model_viewer_model_inertia = 0.0f;
    model_viewer_grab_angle = 0.0f;
    model_viewer_mouse_grab_x = NOT_GRABBED;
    mouse_state = {};
}

bool model_spin_allowed() {
    return orvanel_options.good_graphics_card == 1 && orvanel_options.object_rotation == 1;
}

static bool throws_allowed() {
    return orvanel_options.good_graphics_card == 1 && orvanel_options.floor_inertia == 1;
}

bool model_spin_grabbed() {
    return model_viewer_mouse_grab_x != NOT_GRABBED;
}

void model_spin_grab(std::int32_t x, std::int32_t y) {
    model_viewer_grab_angle = model_viewer_model_angle;
    model_viewer_mouse_grab_x = static_cast<float>(x);
    model_viewer_model_inertia = 0.0f;
    mouse_state = {.x = x, .y = y, .previous_x = x, .moved = false};
}

// The system also reports moves that lead nowhere; they must not take the throw's speed away.
void model_spin_move(std::int32_t x, std::int32_t y) {
    if (x == mouse_state.x && y == mouse_state.y)
        return;
    mouse_state = {.x = x, .y = y, .previous_x = mouse_state.x, .moved = true};
}

static void throw_model() {
    const float travel = static_cast<float>(mouse_state.x - mouse_state.previous_x);
    model_viewer_model_inertia = std::clamp(travel, -THROW_LIMIT, THROW_LIMIT);
    // A model that was held still when it was let go stands still.
    model_viewer_model_speed = travel == 0.0f ? 0.0f : std::copysign(IDLE_SPEED, travel);
}

// Who only clicks on the model leaves it turning as it did.
void model_spin_release() {
    if (!model_spin_grabbed())
        return;
    model_viewer_mouse_grab_x = NOT_GRABBED;
    if (!mouse_state.moved)
        return;
    if (throws_allowed())
        throw_model();
    else
        model_viewer_model_speed = 0.0f;
}

void model_spin_let_go() {
    model_viewer_mouse_grab_x = NOT_GRABBED;
}

static void follow_mouse() {
    const float travel = static_cast<float>(mouse_state.x) - model_viewer_mouse_grab_x;
    float angle = model_viewer_grab_angle + travel;
    while (angle > FULL_TURN)
        angle -= FULL_TURN;
    while (angle < 0.0f)
        angle += FULL_TURN;
    model_viewer_model_angle = angle;
}

static float slowed(float inertia) {
    return std::abs(inertia) <= FRICTION ? 0.0f : inertia - std::copysign(FRICTION, inertia);
}

static void turn_by_itself() {
    float angle = model_viewer_model_angle + model_viewer_model_speed + model_viewer_model_inertia;
    if (angle > LAST_ANGLE)
        angle = 0.0f;
    else if (angle < 0.0f)
        angle = LAST_ANGLE;
    model_viewer_model_angle = angle;
    model_viewer_model_inertia = slowed(model_viewer_model_inertia);
}

void model_spin_frame() {
    if (!model_spin_allowed())
        return;
    if (model_spin_grabbed())
        follow_mouse();
    else
        turn_by_itself();
}
