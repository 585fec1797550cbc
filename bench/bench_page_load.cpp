// A full page, 255 objects with 50 actions each, read from memory into the tables; beside it the
// same bytes parsed into pugixml's tree.
#include "page/node.h"
#include "page/options.h"
#include "page/page_file.h"
#include "platform/text.h"
#include "scene/scene_page.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

static std::string full_page() {
    node_total = NODE_CAPACITY;
    for (std::int32_t id = 0; id < NODE_CAPACITY; id++) {
        Node *object = &node[id];
        node_init_node(id);
        object->type = NODE_OBJECT;
        object->model_id = 0;
        text_format(object->name, sizeof object->name, "Server %03d", id);
        text_format(object->description, sizeof object->description, "Rack %d, row %d", id / 16,
                    id % 16);
        object->x = static_cast<float>(id % 16) * 7.5f - 60.0f;
        object->y = static_cast<float>(id / 16) * 7.5f - 60.0f;
        object->action_count = NODE_ACTIONS;
        for (int i = 0; i < NODE_ACTIONS; i++) {
            action_allocate_action(&object->actions[i]);
            Action *action = object->actions[i];
            text_format(action->name, sizeof action->name, "Remote desktop %d", i);
            text_format(action->command, sizeof action->command,
                        "c:\\windows\\system32\\mstsc.exe /v:$NAME /port:%d", 3389 + i);
            text_copy(action->icon, "c:\\windows\\system32\\mstsc.exe");
        }
    }
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

// Peak of resident memory, in bytes, of a child process that does the work.
static double child_peak(void (*work)()) {
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = 0;
    rusage usage = {};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0)
        std::abort();
    return static_cast<double>(usage.ru_maxrss) * 1024.0;
}

// Bytes that the work needs at its peak beyond what the process holds before it.
static double peak_memory(void (*work)()) {
    node_free_nodes();
    malloc_trim(0);
    const double before = child_peak([] {});
    return child_peak(work) - before;
}

static void report(benchmark::State &state, void (*work)()) {
    const double bytes = static_cast<double>(page_bytes().size());
    state.counters["file_bytes"] = bytes;
    state.counters["peak_bytes"] = peak_memory(work);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(page_bytes().size()));
}

static void page_load_orvanel(benchmark::State &state) {
    page_bytes();
    for (auto iteration : state)
        load_with_orvanel();
    report(state, load_with_orvanel);
    state.counters["result_bytes"] = NODE_CAPACITY * NODE_ACTIONS * sizeof(Action);
}
BENCHMARK(page_load_orvanel)->Name("page_load/orvanel")->Unit(benchmark::kMicrosecond);

static void page_load_pugixml(benchmark::State &state) {
    page_bytes();
    for (auto iteration : state)
        parse_with_pugixml();
    report(state, parse_with_pugixml);
}
BENCHMARK(page_load_pugixml)->Name("page_load/pugixml")->Unit(benchmark::kMicrosecond);
