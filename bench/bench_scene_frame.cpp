#include "scene/scene.h"

#include "page/node.h"
#include "page/options.h"
#include "scene/interaction.h"
#include "scene/scene_motion.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <iterator>

static constexpr float EXTENT = 2.293363f; // of the built-in object, each way
static constexpr std::int32_t COLUMNS = 16;

static void start_page(std::int32_t total, float distance, float left) {
    options_set_defaults();
    interaction_init();
    node_init_nodes();
    node_init_effects();
    scene_motion_reset();
    scene_floor = {};
    node_total = total;
    for (std::int32_t id = 0; id < total; id++) {
        node[id].type = NODE_OBJECT;
        node[id].x = left + distance * static_cast<float>(id % COLUMNS);
        node[id].y = -65.0f + distance * static_cast<float>(id / COLUMNS);
        const float extents[] = {-EXTENT, EXTENT, -EXTENT, EXTENT, -EXTENT, EXTENT};
        std::copy(std::begin(extents), std::end(extents), node[id].dimensions);
    }
}

static void throw_all(float speed) {
    for (std::int32_t id = 0; id < node_total; id++) {
        node[id].inertia_dx = speed;
        node[id].inertia_dy = 0.5f * speed;
        node[id].inertia_frames = 30;
        node[id].rotation_speed = 1.0f; // and all of them spin
        node[id].rotation_step = 0.7f;
    }
}

// Thrown to and fro, so that they stay where they are in the long run.
static void frames_of_thrown(benchmark::State &state, float distance) {
    start_page(static_cast<std::int32_t>(state.range(0)), distance, -65.0f);
    float speed = 0.4f;
    for (auto _ : state) {
        throw_all(speed);
        ::scene_process_frame();
        speed = -speed;
    }
}

// A full page, all objects thrown and spinning.
static void scene_process_frame(benchmark::State &state) {
    frames_of_thrown(state, 8.5f);
}
BENCHMARK(scene_process_frame)->Arg(64)->Arg(255)->Unit(benchmark::kMicrosecond);

// The same with no room between them: each pushes its neighbours.
static void scene_process_frame_touching(benchmark::State &state) {
    frames_of_thrown(state, 2.0f * EXTENT);
}
BENCHMARK(scene_process_frame_touching)->Arg(64)->Arg(255)->Unit(benchmark::kMicrosecond);

// All of them beyond the edge and on their way back.
static void scene_process_frame_over_the_edge(benchmark::State &state) {
    start_page(static_cast<std::int32_t>(state.range(0)), 6.0f, 130.0f);
    std::int32_t frames = 0;
    for (auto _ : state) {
        ::scene_process_frame();
        if (++frames % 16 == 0) { // out again before they arrive
            for (std::int32_t id = 0; id < node_total; id++)
                node[id].x += 8.0f;
            scene_motion_reset();
        }
    }
}
BENCHMARK(scene_process_frame_over_the_edge)->Arg(64)->Arg(255)->Unit(benchmark::kMicrosecond);

static void scene_process_frame_idle(benchmark::State &state) {
    start_page(static_cast<std::int32_t>(state.range(0)), 8.5f, -65.0f);
    for (auto _ : state)
        ::scene_process_frame();
}
BENCHMARK(scene_process_frame_idle)->Arg(64)->Arg(255)->Unit(benchmark::kMicrosecond);
