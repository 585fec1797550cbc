#include "page/placement.h"

#include "page/node.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <iterator>

static constexpr float EXTENT = 2.293363f;        // of the built-in object, each way
static constexpr float OBJECT_WIDTH = 2 * EXTENT; // floor units

static void put_object(std::int32_t id, float x, float y) {
    node_init_node(id);
    node[id].type = NODE_OBJECT;
    node[id].x = x;
    node[id].y = y;
    node[id].move_dx = 0.0f;
    node[id].move_dy = 0.0f;
    const float extents[] = {-EXTENT, EXTENT, -EXTENT, EXTENT, -EXTENT, EXTENT};
    std::copy(std::begin(extents), std::end(extents), node[id].dimensions);
}

// As near to a square as that many objects come, their middles this far apart.
static void put_block(std::int32_t total, float distance, float left = -30.0f) {
    const auto columns = static_cast<std::int32_t>(std::ceil(std::sqrt(total)));
    node_total = total;
    for (std::int32_t id = 0; id < total; id++)
        put_object(id, left + distance * static_cast<float>(id % columns),
                   -30.0f + distance * static_cast<float>(id / columns));
}

static void set_move(std::int32_t id, float dx, float dy) {
    node[id].move_dx = dx;
    node[id].move_dy = dy;
    node[id].move_frames = MOVE_STEPS;
}

// The first object of a block whose objects touch each other pushes all of its row along.
static void node_move_nodes(benchmark::State &state) {
    const auto total = static_cast<std::int32_t>(state.range(0));
    put_block(total, OBJECT_WIDTH);
    float move = 5.0f;
    for (auto _ : state) {
        set_move(0, move, 0.0f);
        ::node_move_nodes();
        move = -move;
    }
    state.SetComplexityN(total);
}
BENCHMARK(node_move_nodes)->RangeMultiplier(2)->Range(16, 128)->Arg(255)->Complexity();

// Everything moves and everything touches: the most that one call is asked.
static void node_move_nodes_all_moving(benchmark::State &state) {
    const auto total = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        put_block(total, OBJECT_WIDTH);
        for (std::int32_t id = 0; id < total; id++)
            set_move(id, id % 3 == 0 ? 5.0f : -4.0f, id % 2 == 0 ? 3.0f : -2.0f);
        state.ResumeTiming();
        ::node_move_nodes();
    }
    state.SetComplexityN(total);
}
BENCHMARK(node_move_nodes_all_moving)->RangeMultiplier(2)->Range(16, 128)->Arg(255)->Complexity();

// All objects on one spot, one of them told to leave.
static void node_move_nodes_stacked(benchmark::State &state) {
    const auto total = static_cast<std::int32_t>(state.range(0));
    put_block(total, 0.0f);
    float move = 1.0f;
    for (auto _ : state) {
        set_move(total / 2, move, move);
        ::node_move_nodes();
        move = -move;
    }
    state.SetComplexityN(total);
}
BENCHMARK(node_move_nodes_stacked)->RangeMultiplier(2)->Range(16, 128)->Arg(255)->Complexity();

// The pushes of one frame in which every object is nudged, one after the other.
static void nudge_all(benchmark::State &state, float distance) {
    const auto total = static_cast<std::int32_t>(state.range(0));
    put_block(total, distance, -200.0f);
    float move = 0.5f;
    for (auto _ : state) {
        node_move_begin();
        for (std::int32_t id = 0; id < total; id++) {
            set_move(id, move, 0.0f);
            node_move_node(id);
        }
        move = -move;
    }
    state.SetComplexityN(total);
}

static void frame_of_nudges_apart(benchmark::State &state) {
    nudge_all(state, 2.0f * OBJECT_WIDTH);
}
BENCHMARK(frame_of_nudges_apart)->RangeMultiplier(2)->Range(16, 128)->Arg(255)->Complexity();

static void frame_of_nudges_touching(benchmark::State &state) {
    nudge_all(state, OBJECT_WIDTH);
}
BENCHMARK(frame_of_nudges_touching)->RangeMultiplier(2)->Range(16, 128)->Arg(255)->Complexity();

static void frame_of_nudges_without_begin(benchmark::State &state) {
    const auto total = static_cast<std::int32_t>(state.range(0));
    put_block(total, 2.0f * OBJECT_WIDTH, -200.0f);
    float move = 0.5f;
    for (auto _ : state) {
        for (std::int32_t id = 0; id < total; id++) {
            set_move(id, move, 0.0f);
            ::node_move_nodes();
        }
        move = -move;
    }
    state.SetComplexityN(total);
}
BENCHMARK(frame_of_nudges_without_begin)
    ->RangeMultiplier(2)
    ->Range(16, 128)
    ->Arg(255)
    ->Complexity();

// Until a placed object has its area to itself, on a page whose objects all stand on that spot.
static void node_avoid_area_step_stacked(benchmark::State &state) {
    const auto total = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        put_block(total, 0.0f);
        state.ResumeTiming();
        std::int32_t passes = 0;
        while (node_avoid_area_step(total - 1))
            passes++;
        state.counters["passes"] = passes;
    }
    state.SetComplexityN(total);
}
BENCHMARK(node_avoid_area_step_stacked)
    ->RangeMultiplier(2)
    ->Range(16, 128)
    ->Arg(255)
    ->Complexity()
    ->Unit(benchmark::kMillisecond);
