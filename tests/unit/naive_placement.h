// The rules of pushing, written down as plainly as they read and as slow as that is: what
// node_move_nodes must do to the last bit.
#pragma once

#include "page/node.h"
#include "page/placement.h"

#include <cmath>

inline void naive_push(Node &a, Node &b) { // b hits a
    if (a.grab_state == GRAB_ANCHORED)
        return;
    const float a_left = a.x + a.dimensions[0], a_right = a.x + a.dimensions[1];
    const float a_near = a.y + a.dimensions[2], a_far = a.y + a.dimensions[3];
    const float b_left = b.x + b.dimensions[0], b_right = b.x + b.dimensions[1];
    const float b_near = b.y + b.dimensions[2], b_far = b.y + b.dimensions[3];
    float ox = b_right - b_left;
    if (b_left > a_left && b_left < a_right)
        ox = a_right - b_left;
    else if (b_right > a_left && b_right < a_right)
        ox = b_right - a_left;
    float oy = b_far - b_near;
    if (b_near > a_near && b_near < a_far)
        oy = a_far - b_near;
    else if (b_far > a_near && b_far < a_far)
        oy = b_far - a_near;
    if (oy <= ox) {
        if (!((b.y > a.y && b.move_dy <= 0.0f) || (b.y < a.y && b.move_dy >= 0.0f)))
            return;
        a.move_dx = 0.0f;
        a.move_dy = b.move_dy;
        a.move_frames = 1;
        if (b.inertia_frames > 0) {
            a.inertia_frames = b.inertia_frames;
            a.inertia_dy = b.inertia_dy;
            a.move_frames = 25;
            b.inertia_dy *= 0.25f;
        }
    } else {
        if (!((b.x > a.x && b.move_dx <= 0.0f) || (b.x < a.x && b.move_dx >= 0.0f)))
            return;
        a.move_dy = 0.0f;
        a.move_dx = b.move_dx;
        a.move_frames = 1;
        if (b.inertia_frames > 0) {
            a.inertia_frames = b.inertia_frames;
            a.inertia_dx = b.inertia_dx;
            a.move_frames = 25;
            b.inertia_dx *= 0.25f;
        }
    }
}

// With special_rules false, the bare passes: no node anchored, none told to move out of an overlap.
// Returns the number of passes, limit if they did not come to their end by then.
inline int naive_move_nodes(bool special_rules, int limit = 20000) {
    const auto anchored = [](int id) { return node[id].grab_state == GRAB_ANCHORED; };
    const auto overlap = [](int i, int j) {
        const Node &a = node[i];
        const Node &b = node[j];
        const float a_left = a.x + a.dimensions[0], a_right = a.x + a.dimensions[1];
        const float a_near = a.y + a.dimensions[2], a_far = a.y + a.dimensions[3];
        const float b_left = b.x + b.dimensions[0], b_right = b.x + b.dimensions[1];
        const float b_near = b.y + b.dimensions[2], b_far = b.y + b.dimensions[3];
        return a_left < b_right && b_left < a_right && a_near < b_far && b_near < a_far;
    };
    static bool let_go[NODE_CAPACITY][NODE_CAPACITY]; // [mover][hit]
    for (int i = 0; i < node_total; i++)
        for (int j = 0; j < node_total; j++)
            let_go[i][j] = special_rules && i != j && node[i].move_frames < 1 &&
                           node[j].move_frames >= 1 && overlap(i, j);
    int passes = 0;
    for (bool moved = true; moved && passes < limit; passes++) {
        moved = false;
        for (int i = 0; i < node_total; i++) {
            Node &a = node[i];
            if (special_rules && anchored(i)) {
                a.move_dx = a.move_dy = 0.0f;
                a.move_frames = 0;
                a.collision_with = -1;
                continue;
            }
            if (a.move_frames < 1) {
                a.move_dx = a.move_dy = 0.0f;
            } else {
                float step_x = a.move_dx / 25.0f;
                float step_y = a.move_dy / 25.0f;
                if (a.collision_with != -1) {
                    step_x *= 2.0f;
                    step_y *= 2.0f;
                }
                a.move_frames--;
                if (!special_rules || std::isfinite(a.x + step_x))
                    a.x += step_x;
                if (!special_rules || std::isfinite(a.y + step_y))
                    a.y += step_y;
                moved = true;
            }
            for (int j = 0; j < node_total; j++) {
                Node &b = node[j];
                if (j == i || b.collision_with != -1 || !overlap(i, j))
                    continue;
                if (special_rules && (anchored(j) || let_go[i][j]))
                    continue;
                if (a.collision_with == j)
                    break;
                b.collision_with = i;
                if (a.move_dx == 0.0f && a.move_dy == 0.0f && b.move_dx == 0.0f &&
                    b.move_dy == 0.0f)
                    break;
                naive_push(b, a);
            }
            a.collision_with = -1;
        }
    }
    for (int i = 0; i < node_total; i++) {
        node[i].move_dx = node[i].move_dy = 0.0f;
        node[i].move_frames = 0;
        node[i].collision_with = -1;
    }
    return passes;
}
