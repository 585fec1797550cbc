// Pages of boxes for the tests of placement: made by hand or by dice, compared and put back.
#pragma once

#include "page/node.h"
#include "page/placement.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

inline constexpr float EXTENT = 2.293363f; // of the built-in object, each way
inline constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
inline constexpr float INFINITE = std::numeric_limits<float>::infinity();

struct Extents {
    float left, right, near_edge, far_edge;
};

inline constexpr Extents OBJECT = {-EXTENT, EXTENT, -EXTENT, EXTENT};

inline void set_extents(int id, const Extents &extents) {
    node[id].dimensions[EXTENT_LEFT] = extents.left;
    node[id].dimensions[EXTENT_RIGHT] = extents.right;
    node[id].dimensions[EXTENT_NEAR] = extents.near_edge;
    node[id].dimensions[EXTENT_FAR] = extents.far_edge;
}

inline int add(float x, float y, const Extents &extents = OBJECT, NodeType type = NODE_OBJECT) {
    const int id = node_total++;
    node[id].type = type;
    node[id].x = x;
    node[id].y = y;
    node[id].move_dx = node[id].move_dy = 0.0f;
    node_init_node(id);
    set_extents(id, extents);
    return id;
}

inline int add_label(float x, float y, float width) {
    return add(x, y, {-0.5f * width - 0.3f, 0.5f * width + 0.3f, -0.5f, 0.5f}, NODE_LABEL);
}

inline void tell(int id, float dx, float dy, int frames = MOVE_STEPS) {
    node[id].move_dx = dx;
    node[id].move_dy = dy;
    node[id].move_frames = frames;
}

inline void move(int id, float dx, float dy) {
    tell(id, dx, dy);
    node_move_nodes();
}

inline bool overlap(int i, int j) {
    const Node &a = node[i];
    const Node &b = node[j];
    return a.x + a.dimensions[0] < b.x + b.dimensions[1] &&
           b.x + b.dimensions[0] < a.x + a.dimensions[1] &&
           a.y + a.dimensions[2] < b.y + b.dimensions[3] &&
           b.y + b.dimensions[2] < a.y + a.dimensions[3];
}

using Page = std::vector<Node>;

inline Page page_now() {
    return {node, node + node_total};
}

inline void restore(const Page &page) {
    std::copy(page.begin(), page.end(), node);
    node_total = static_cast<int>(page.size());
}

// Index of the first node that differs in any bit, or -1.
inline int first_difference(const Page &page) {
    for (std::size_t i = 0; i < page.size(); i++)
        if (std::memcmp(&page[i], &node[i], sizeof(Node)) != 0)
            return static_cast<int>(i);
    return -1;
}

inline bool nothing_is_pending() {
    return std::all_of(node, node + node_total, [](const Node &record) {
        return record.collision_with == -1 && record.move_frames == 0 && record.move_dx == 0.0f &&
               record.move_dy == 0.0f;
    });
}

inline bool all_are_finite() {
    return std::all_of(node, node + node_total, [](const Node &record) {
        return std::isfinite(record.x) && std::isfinite(record.y);
    });
}

// Random pages: crowded or roomy, on whole coordinates or not, objects or labels among them.
struct Dice {
    std::mt19937 engine;

    explicit Dice(unsigned seed) : engine(seed) {}
    int whole(int from, int to) {
        return from + static_cast<int>(engine() % static_cast<unsigned>(to - from + 1));
    }
    float number(float from, float to) {
        return from + (to - from) * static_cast<float>(engine() % 1000003) / 1000003.0f;
    }
    bool chance(int of) {
        return whole(1, of) == 1;
    }
};

inline void make_page(Dice *dice, int total) {
    node_total = 0;
    const float range = dice->number(2.0f, 60.0f);
    const bool on_whole = dice->chance(3);
    const bool thrown = dice->chance(2);
    const bool labels = dice->chance(2);
    for (int i = 0; i < total; i++) {
        float x = dice->number(-range, range);
        float y = dice->number(-range, range);
        if (on_whole) {
            x = std::round(x);
            y = std::round(y);
        }
        const int id =
            labels && dice->chance(3) ? add_label(x, y, dice->number(1.0f, 14.0f)) : add(x, y);
        if (thrown && dice->chance(2)) {
            node[id].inertia_dx = dice->number(-2.0f, 2.0f);
            node[id].inertia_dy = dice->number(-2.0f, 2.0f);
            node[id].inertia_frames = dice->whole(1, 30);
        }
    }
}

inline void tell_some(Dice *dice) {
    const int movers = dice->chance(4) ? node_total : dice->whole(1, 3);
    const bool whole_moves = dice->chance(3);
    for (int i = 0; i < movers; i++) {
        float dx = dice->chance(5) ? 0.0f : dice->number(-5.0f, 5.0f);
        float dy = dice->chance(5) ? 0.0f : dice->number(-5.0f, 5.0f);
        if (whole_moves) {
            dx = std::round(dx);
            dy = std::round(dy);
        }
        tell(dice->whole(0, node_total - 1), dx, dy);
    }
}

inline int some_total(Dice *dice) {
    return dice->chance(2) ? dice->whole(2, 8) : dice->whole(9, dice->chance(8) ? 255 : 50);
}

struct Placement : testing::Test {
    Placement() {
        node_total = 0;
    }
    ~Placement() override {
        node_total = 0;
    }
};
