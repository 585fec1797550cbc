// A full page, 255 objects with 50 actions each, read from memory into the tables; beside it the
// same bytes parsed into pugixml's tree.
#include "bench/full_page.h"
#include "page/node.h"
#include "page/options.h"
#include "page/page_file.h"
#include "scene/scene_page.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string>

static std::string full_page() {
    fill_page();
    const std::string page = page_format({});
    node_total = 0;
    node_free_nodes();
    return page;
}

static const std::string &page_bytes() {
    static const std::string bytes = full_page();
    return bytes;
}

static void load_with_orvanel() {
    if (scene_load_page_memory(page_bytes(), "full.orvl", "Full") != PAGE_LOADED ||
        node_total != NODE_CAPACITY || node[NODE_CAPACITY - 1].action_count != NODE_ACTIONS)
        std::abort();
}

static void parse_with_pugixml() {
    pugi::xml_document document;
    const pugi::xml_parse_result result =
        document.load_buffer(page_bytes().data(), page_bytes().size());
    if (!result)
        std::abort();
    benchmark::DoNotOptimize(document.first_child());
}

// ---- memory in use, counted while a measurement asks for it

struct MemoryCount {
    bool counting;
    std::size_t in_use, peak; // bytes
};
static MemoryCount memory_count;

static void *count_allocation(void *block) {
    if (memory_count.counting && block != nullptr) {
        memory_count.in_use += malloc_usable_size(block);
        memory_count.peak = std::max(memory_count.peak, memory_count.in_use);
    }
    return block;
}

static void count_and_free(void *block) {
    if (memory_count.counting && block != nullptr)
        memory_count.in_use -= malloc_usable_size(block);
    std::free(block);
}

static void *allocate_counted(std::size_t size) {
    return count_allocation(std::malloc(size));
}

void *operator new(std::size_t size) {
    void *block = allocate_counted(size);
    if (block == nullptr)
        std::abort();
    return block;
}
void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
    return allocate_counted(size);
}
void operator delete(void *block) noexcept {
    count_and_free(block);
}
void operator delete(void *block, std::size_t) noexcept {
    count_and_free(block);
}

// Bytes that the work holds at its peak, beginning without anything of a run before.
static double peak_memory(void (*work)()) {
    node_free_nodes();
    pugi::set_memory_management_functions(allocate_counted, count_and_free);
    memory_count = {.counting = true, .in_use = 0, .peak = 0};
    work();
    memory_count.counting = false;
    pugi::set_memory_management_functions(std::malloc, std::free);
    return static_cast<double>(memory_count.peak);
}

static void report(benchmark::State &state, void (*work)()) {
    const double bytes = static_cast<double>(page_bytes().size());
    state.counters["file_bytes"] = bytes;
    state.counters["peak_bytes"] = peak_memory(work);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(page_bytes().size()));
}

// As when a page is opened for the first time: the memory is not at hand from the time before.
static void load_afresh(benchmark::State &state, void (*work)()) {
    page_bytes();
    for (auto iteration : state) {
        state.PauseTiming();
        node_free_nodes();
        malloc_trim(0);
        state.ResumeTiming();
        work();
    }
    report(state, work);
}

static void load_again(benchmark::State &state, void (*work)()) {
    page_bytes();
    for (auto iteration : state)
        work();
    report(state, work);
}

// Memory costs as much as the machine's other guests leave of it, and that changes from second to
// second: the rivals take turns (--benchmark_enable_random_interleaving) and are compared by their
// medians.
static void take_turns(benchmark::internal::Benchmark *page) {
    constexpr int turns = 15;
    constexpr double turn_time = 0.2; // seconds
    page->Repetitions(turns)->MinTime(turn_time)->ReportAggregatesOnly()->Unit(
        benchmark::kMicrosecond);
}

static void page_load_orvanel(benchmark::State &state) {
    load_afresh(state, load_with_orvanel);
    // As large as the records are in the heap, by which the peak is counted too.
    state.counters["result_bytes"] =
        static_cast<double>(NODE_CAPACITY * NODE_ACTIONS * malloc_usable_size(node[0].actions[0]));
}
BENCHMARK(page_load_orvanel)->Name("page_load/orvanel")->Apply(take_turns);

static void page_load_pugixml(benchmark::State &state) {
    load_afresh(state, parse_with_pugixml);
}
BENCHMARK(page_load_pugixml)->Name("page_load/pugixml")->Apply(take_turns);

static void page_reload_orvanel(benchmark::State &state) {
    load_again(state, load_with_orvanel);
}
BENCHMARK(page_reload_orvanel)->Name("page_reload/orvanel")->Apply(take_turns);

static void page_reload_pugixml(benchmark::State &state) {
    load_again(state, parse_with_pugixml);
}
BENCHMARK(page_reload_pugixml)->Name("page_reload/pugixml")->Apply(take_turns);
