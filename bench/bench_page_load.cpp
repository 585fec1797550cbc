// A full page, 255 objects with 50 actions each, read from memory into the tables; beside it the
// same bytes parsed into pugixml's tree.
#include "bench/full_page.h"
#include "bench/memory_count.h"
#include "page/node.h"
#include "page/options.h"
#include "page/page_file.h"
#include "scene/scene_page.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <malloc.h>

#include <cstdlib>
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
    pugi::set_memory_management_functions(std::malloc, std::free); // which are counted
    pugi::xml_document document;
    const pugi::xml_parse_result result =
        document.load_buffer(page_bytes().data(), page_bytes().size());
    if (!result)
        std::abort();
    benchmark::DoNotOptimize(document.first_child());
}

static void report(benchmark::State &state, void (*work)()) {
    const double bytes = static_cast<double>(page_bytes().size());
    state.counters["file_bytes"] = bytes;
    node_free_nodes();
    state.counters["peak_bytes"] = memory_peak(work);
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

static void page_load_orvanel(benchmark::State &state) {
    load_afresh(state, load_with_orvanel);
    state.counters["result_bytes"] = NODE_CAPACITY * NODE_ACTIONS * sizeof(Action);
}
BENCHMARK(page_load_orvanel)->Name("page_load/orvanel")->Unit(benchmark::kMicrosecond);

static void page_load_pugixml(benchmark::State &state) {
    load_afresh(state, parse_with_pugixml);
}
BENCHMARK(page_load_pugixml)->Name("page_load/pugixml")->Unit(benchmark::kMicrosecond);

static void page_reload_orvanel(benchmark::State &state) {
    load_again(state, load_with_orvanel);
}
BENCHMARK(page_reload_orvanel)->Name("page_reload/orvanel")->Unit(benchmark::kMicrosecond);

static void page_reload_pugixml(benchmark::State &state) {
    load_again(state, parse_with_pugixml);
}
BENCHMARK(page_reload_pugixml)->Name("page_reload/pugixml")->Unit(benchmark::kMicrosecond);
