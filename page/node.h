// The page in memory: the tables of objects, page objects and labels (node) and of the links
// between them (line), both of fixed size, dense, and addressed by index.
#pragma once

#include "page/action.h"

#include <cstdint>

inline constexpr std::int32_t NODE_CAPACITY = 255;
inline constexpr std::int32_t LINE_CAPACITY = 255;
inline constexpr std::int32_t NODE_ACTIONS = 50;            // action slots of a node
inline constexpr std::int32_t NODE_NAME_LENGTH = 30;        // characters copied into a name
inline constexpr std::int32_t NODE_DESCRIPTION_LENGTH = 50; // characters copied into a description
inline constexpr std::int32_t NODE_PICK_NONE = -2;          // pick_id of a node that is not drawn
inline constexpr float NODE_REST_HEIGHT = 10.0f;
inline constexpr float LINE_REST_OFFSET = 99.0f;

enum NodeType : std::int32_t { NODE_NONE = 0, NODE_OBJECT = 1, NODE_PAGE = 2, NODE_LABEL = 3 };

enum GrabState : std::int32_t {
    GRAB_IDLE = 0,
    GRAB_HOVERED = 1,
    GRAB_GRABBED = 2,
    GRAB_ANCHORED = 4, // only while others are pushed out of its area
};

// States of the hover effect (bounce_active).
enum BounceState : std::int32_t {
    BOUNCE_REST = 0,
    BOUNCE_GROW = 1,
    BOUNCE_HOVERED = 2,
    BOUNCE_SPIN = 3,
    BOUNCE_SETTLE = 4,
    BOUNCE_FACE_VIEWER = 5, // turns to the viewer before its menu opens
};

// Indices of Node::dimensions: extents relative to the node's position.
enum NodeExtent { EXTENT_LEFT, EXTENT_RIGHT, EXTENT_NEAR, EXTENT_FAR, EXTENT_BOTTOM, EXTENT_TOP };

struct Node {
    std::int32_t type;       // NodeType
    std::int32_t model_id;   // index into models
    std::int32_t grab_state; // GrabState
    char name[31];
    char description[65];       // or the text of a label
    std::int32_t pick_id;       // name it is drawn under in selection mode, or NODE_PICK_NONE
    std::int32_t bounce_active; // BounceState
    std::int32_t bounce_step;   // frames of the effect
    float x, y;                 // position on the floor, floor units
    float height;               // above the floor's drawing plane, floor units
    float scale;
    float grab_x, grab_y;                // position at the last grab
    float move_dx, move_dy;              // displacement of a whole push, floor units
    std::int32_t move_frames;            // frames of pushing left
    std::int32_t collision_with;         // node that pushed this one in the current step, -1 = none
    float inertia_dx, inertia_dy;        // floor units a frame
    std::int32_t inertia_frames;         // frames of coasting left
    float dimensions[6];                 // indexed by NodeExtent, floor units
    float angle, angle_target;           // spin about x and about y, degrees in 0..360
    float rotation_speed, rotation_step; // spin speeds about x and about y, degrees a frame
    std::int32_t label_depth;            // depth offset of a grabbed label
    std::int32_t fade_state;             // 0 none, 1 fading in, 2 fading out
    float alpha;                         // opacity, 0..1
    Action *actions[NODE_ACTIONS];       // owned; null = slot never used
    std::int32_t action_count;           // slots 0 .. action_count - 1 are in use
};

struct Line {
    std::int32_t from, to; // node indices; a page file may name nodes that do not exist
    float colour[4];       // RGBA
    float param;           // copied with the line, not read when drawing
    float height_offset;   // drawn this far below the camera distance
};

extern Node node[NODE_CAPACITY];
extern Line line[LINE_CAPACITY];
extern std::int32_t node_total; // live entries of node
extern std::int32_t line_total; // live entries of line

// Brings all entries to their defaults and forgets every action slot without freeing it: for
// start-up only.
void node_init_nodes();

// Brings one entry to its defaults. type, model_id, texts, position, move_dx/dy, label_depth and
// the action slots stay, so that records of an earlier page are reused.
void node_init_node(std::int32_t id);

void node_init_node_actions(Node *record); // all slots null, nothing is freed
void node_free_node_actions(Node *record); // frees the records and clears the slots
void node_free_nodes();

// Lowest index whose name is exactly this one, or -1.
std::int32_t node_return_id(const char *name);

// Copies the extents of the node's model.
void node_set_model_dimensions(std::int32_t id);

// Copies a node, actions included; slots of the target beyond the source's count keep their
// records.
void node_copy_node(std::int32_t target, std::int32_t source);
void node_copy_node2(Node *target, const Node *source);

// Removes the links of a node and the node itself; later nodes move down and links are renumbered.
void node_delete_node(std::int32_t id);
void node_remove_lines(std::int32_t id);

void line_init(); // empties the table

// 0 created; 1 refused: full table, unknown name, or the link exists in either direction. A link
// from a node to itself is allowed, and indices are not compared with node_total.
std::int32_t line_create(const char *from_name, const char *to_name);
std::int32_t line_create_from_ids(std::int32_t from, std::int32_t to);

void line_copy_line(std::int32_t target, std::int32_t source);
void line_copy_line2(Line *target, const Line *source);
void line_delete_line(std::int32_t index);

// 0 when a link touches the node, 1 when none does: the sense is inverted on purpose.
std::int32_t line_does_node_have_lines(std::int32_t id);

// True when index is that of a live node: ask before following a link's end.
bool node_is_live(std::int32_t id);
