#include "scene/scene_motion.h"

#include "page/node.h"
#include "page/placement.h"
#include "scene/interaction.h"
#include "scene/scene.h"

#include <cmath>

static constexpr float OBJECT_FRICTION = 1.15f; // divides the speed of a thrown object each frame
static constexpr float FLOOR_FRICTION = 1.09f;
static constexpr float NUDGE = 0.5f;       // floor units a frame
static constexpr float EDGE_MARGIN = 4.0f; // floor units that objects keep from the edge
static constexpr float SPRING_SHARE = 10.0f;
static constexpr float SPRING_EXTRA = 0.01f; // floor units; makes the last step go over the edge
// The last step of the spring goes at most SPRING_EXTRA too far: with less room than that (and
// what rounding takes) between the edges it would end beyond the other one.
static constexpr float SPRING_ROOM = 2.0f * SPRING_EXTRA;

// Out here nothing of the floor shows any more, whatever the window; sliding in takes some 13 s.
static constexpr float FAR_OUT = 3.0f * FLOOR_EDGE;
// 30 s, more than twice the longest way back: who is still outside has no room on the floor.
static constexpr std::int32_t RESTLESS_FRAMES_MAX = 1200;

static bool moves_begun;             // node_move_begin was called in this frame
static bool nudged;                  // some object was nudged in this frame
static std::int32_t restless_frames; // frames in a row in which some object was nudged

void scene_motion_reset() {
    restless_frames = 0;
    nudged = false;
}

// ---- objects

// Hand-edited pages have positions that are infinite, no number, or hours of sliding away.
static void bring_near(float *position) {
    if (std::fabs(*position) <= FAR_OUT)
        return;
    *position = std::isnan(*position) ? 0.0f : std::copysign(FAR_OUT, *position);
    scene_request_redraw();
}

static void bring_objects_near() {
    for (std::int32_t i = 0; i < node_total; i++) {
        bring_near(&node[i].x);
        bring_near(&node[i].y);
    }
}

static bool may_be_nudged() {
    return app_node_grabbed != 1 && restless_frames < RESTLESS_FRAMES_MAX;
}

void scene_motion_begin_frame() {
    moves_begun = false;
    // Objects that do not all fit push each other over the edges for ever: they are let be until
    // the user moves something.
    restless_frames = nudged && app_node_grabbed != 1 ? restless_frames + 1 : 0;
    if (restless_frames >= RESTLESS_FRAMES_MAX)
        restless_frames = RESTLESS_FRAMES_MAX;
    nudged = false;
    if (app_node_grabbed != 1)
        bring_objects_near();
}

// Reading the table once a frame keeps a frame in which all objects move as cheap as it is.
static void run_move(std::int32_t index, float dx, float dy) {
    if (!moves_begun)
        node_move_begin();
    moves_begun = true;
    node[index].move_dx = dx;
    node[index].move_dy = dy;
    node[index].move_frames = MOVE_STEPS;
    node_move_node(index);
    scene_request_redraw();
}

static void glide(std::int32_t index) {
    Node *record = &node[index];
    if (record->inertia_frames <= 0)
        return;
    const float dx = record->inertia_dx;
    const float dy = record->inertia_dy;
    record->grab_x = record->x;
    record->grab_y = record->y;
    record->inertia_dx /= OBJECT_FRICTION;
    record->inertia_dy /= OBJECT_FRICTION;
    run_move(index, dx, dy);
    record->inertia_frames--;
}

// An object too wide for the floor is not nudged over one edge to get it away from the other: it
// would be sent to and fro for ever.
static float nudge_of(float low, float high) {
    if (low < -FLOOR_EDGE && high + NUDGE <= FLOOR_EDGE)
        return NUDGE;
    if (high > FLOOR_EDGE && low - NUDGE >= -FLOOR_EDGE)
        return -NUDGE;
    return 0.0f;
}

static float nudge_x(const Node &record) {
    return nudge_of(record.x + record.dimensions[EXTENT_LEFT] - EDGE_MARGIN,
                    record.x + record.dimensions[EXTENT_RIGHT] + EDGE_MARGIN);
}

// The extents are subtracted on purpose: an object that reaches further to one side keeps that
// distance from the other edge.
static float nudge_y(const Node &record) {
    return nudge_of(record.y - record.dimensions[EXTENT_FAR] - EDGE_MARGIN,
                    record.y - record.dimensions[EXTENT_NEAR] + EDGE_MARGIN);
}

static void keep_on_floor(std::int32_t index) {
    const float dx = nudge_x(node[index]);
    if (dx != 0.0f) {
        nudged = true;
        if (may_be_nudged())
            run_move(index, dx, 0.0f);
    }
    const float dy = nudge_y(node[index]);
    if (dy != 0.0f) {
        nudged = true;
        if (may_be_nudged())
            run_move(index, 0.0f, dy);
    }
}

void scene_motion_move_node(std::int32_t index) {
    glide(index);
    keep_on_floor(index);
}

// ---- floor

static void coast() {
    if (scene_floor.inertia_frames <= 0)
        return;
    scene_floor.inertia_frames--;
    scene_floor.position_x += scene_floor.inertia_x;
    scene_floor.position_y += scene_floor.inertia_y;
    scene_floor.inertia_x /= FLOOR_FRICTION;
    scene_floor.inertia_y /= FLOOR_FRICTION;
    scene_request_redraw();
}

// What the floor's offset along one axis hangs on; low and high are what the window shows,
// relative to the offset.
struct Spring {
    float *position, *speed;
    float low, high;
};

static bool shows_low_edge(const Spring &spring) {
    return spring.low < -FLOOR_EDGE - *spring.position;
}

static bool shows_high_edge(const Spring &spring) {
    return spring.high > FLOOR_EDGE - *spring.position;
}

static float speed_towards(float way) {
    return way / SPRING_SHARE + std::copysign(SPRING_EXTRA, way);
}

// The edges of a floor that shows whole cannot both be out of the window; pulled in from one side
// and from the other it would swing for ever.
static void rest_centred(const Spring &spring) {
    const float rest = -(spring.low + spring.high) / 2.0f;
    const float way = rest - *spring.position;
    *spring.speed = 0.0f;
    if (way == 0.0f)
        return;
    const float speed = speed_towards(way);
    if (std::fabs(speed) < std::fabs(way)) {
        *spring.speed = speed;
        *spring.position += speed;
    } else {
        *spring.position = rest;
    }
    scene_request_redraw();
}

static void pull_back(const Spring &spring) {
    if (shows_low_edge(spring))
        *spring.speed = speed_towards(-FLOOR_EDGE - *spring.position - spring.low);
    else if (shows_high_edge(spring))
        *spring.speed = speed_towards(FLOOR_EDGE - *spring.position - spring.high);
    else
        return;
    *spring.position += *spring.speed;
    if (!shows_low_edge(spring) && !shows_high_edge(spring))
        *spring.speed = 0.0f;
    scene_request_redraw();
}

static void spring_back(const Spring &spring) {
    bring_near(spring.position);
    if (spring.high - spring.low > 2.0f * FLOOR_EDGE - SPRING_ROOM)
        rest_centred(spring);
    else
        pull_back(spring);
}

void scene_motion_move_floor() {
    if (scene_floor.drag_state == 1)
        return;
    coast();
    // After a zoom or a resize the bounds are those of before until the next drawing.
    if (scene_floor.pick_depth == 0.0f)
        return;
    spring_back({&scene_floor.position_x, &scene_floor.spring_x, scene_floor.view_left,
                 scene_floor.view_right});
    spring_back({&scene_floor.position_y, &scene_floor.spring_y, scene_floor.view_bottom,
                 scene_floor.view_top});
}
