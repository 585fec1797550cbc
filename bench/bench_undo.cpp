// The history of a full page: 255 objects with 50 actions each and 255 links.
#include "bench/full_page.h"
#include "editing/undo.h"
#include "page/options.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <cstdlib>

static void start_page() {
    options_set_defaults();
    orvanel_options.good_graphics_card = 0; // nothing is animated
    fill_page();
    line_total = 0;
    for (std::int32_t id = 0; id < LINE_CAPACITY; id++)
        line_create_from_ids(id, (id + 1) % NODE_CAPACITY);
    undo_init();
    if (undo_stack == nullptr || undo_stack[UNDO_CAPACITY - 1].lines == nullptr ||
        line_total != LINE_CAPACITY)
        std::abort();
}

static void stop_page() {
    undo_stop();
    node_free_nodes();
    node_total = line_total = 0;
}

// As an edit does it from the second time on that this many changes can be undone.
static void undo_push_again(benchmark::State &state) {
    start_page();
    undo_push();
    undo_reject();
    for (auto iteration : state) {
        undo_push();
        undo_reject();
    }
    stop_page();
}
BENCHMARK(undo_push_again)->Name("undo_push/255")->Unit(benchmark::kMicrosecond);

// An entry that has no records for the actions yet, in turn each of the stack.
static void undo_push_first(benchmark::State &state) {
    start_page();
    for (auto iteration : state) {
        if (undo_total == UNDO_CAPACITY) {
            state.PauseTiming();
            undo_stop();
            malloc_trim(0);
            undo_init();
            state.ResumeTiming();
        }
        undo_push();
    }
    stop_page();
}
BENCHMARK(undo_push_first)->Name("undo_push_first/255")->Unit(benchmark::kMicrosecond);

// The oldest of 50 is discarded, the others are copied down.
static void undo_push_full(benchmark::State &state) {
    start_page();
    for (std::int32_t i = 0; i < UNDO_CAPACITY; i++)
        undo_push();
    for (auto iteration : state)
        undo_push();
    stop_page();
}
BENCHMARK(undo_push_full)->Name("undo_push_full_stack/255")->Unit(benchmark::kMicrosecond);

static void undo_and_redo(benchmark::State &state) {
    start_page();
    undo_push();
    for (auto iteration : state) {
        undo_pop();
        redo_pop();
    }
    stop_page();
}
BENCHMARK(undo_and_redo)->Name("undo_and_redo/255")->Unit(benchmark::kMicrosecond);

static double memory_in_use() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

// Both stacks full: 50 changes undone after 50 more had been pushed.
static void fill_history() {
    for (std::int32_t i = 0; i < UNDO_CAPACITY; i++) {
        undo_push();
        redo_push();
    }
    if (undo_total != UNDO_CAPACITY || redo_total != UNDO_CAPACITY)
        std::abort();
}

static void undo_memory(benchmark::State &state) {
    for (auto iteration : state) {
        start_page();
        undo_stop();
        const double before = memory_in_use();
        undo_init();
        state.counters["start_bytes"] = memory_in_use() - before;
        fill_history();
        state.counters["full_bytes"] = memory_in_use() - before;
        state.counters["action_bytes"] = sizeof(Action);
        state.counters["node_bytes"] = sizeof(Node);
        stop_page();
    }
}
BENCHMARK(undo_memory)->Name("undo_history/255")->Iterations(1)->Unit(benchmark::kMillisecond);
