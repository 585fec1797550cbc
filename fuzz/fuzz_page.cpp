// Page files: the scanner and the page reader. What was read must survive being written and read
// again unchanged.
#include "assets/model.h"
#include "page/node.h"
#include "page/options.h"
#include "page/page_file.h"
#include "page/xml.h"
#include "scene/scene_page.h"

#include <cstdint>
#include <cstdlib>
#include <string>

static void require(bool condition) {
    if (!condition)
        std::abort();
}

static std::string format_page() {
    return page_format({scene_floor.home_x, scene_floor.home_y, scene_floor.colour});
}

static std::uint32_t load(std::span<const char> bytes) {
    const std::uint32_t result = scene_load_page_memory(bytes, "fuzz.orvl", "Fuzz");
    require(node_total >= 0 && node_total <= NODE_CAPACITY);
    require(line_total >= 0 && line_total <= LINE_CAPACITY);
    return result;
}

static void check_tables() {
    for (std::int32_t id = 0; id < node_total; id++) {
        require(node[id].type >= NODE_OBJECT && node[id].type <= NODE_LABEL);
        require(node[id].model_id >= 0 && node[id].model_id < models_total);
        require(node[id].action_count >= 0 && node[id].action_count <= NODE_ACTIONS);
        for (std::int32_t i = 0; i < node[id].action_count; i++)
            require(node[id].actions[i] != nullptr);
    }
}

// A full table is the exception: its links are written, but not read again.
static void check_round_trip() {
    const std::string written = format_page();
    const bool full = node_total == NODE_CAPACITY;
    require(load(written) == PAGE_LOADED);
    require(full || format_page() == written);
}

// The scanner by itself, with the bytes as a program of searches as well.
static void scan(std::span<const char> bytes) {
    static const char *const tags[] = {"<page>", "</page>", "<node>",  "</node>",
                                       "<type>", "<icon>",  "</icon>", "<a>",
                                       "</",     "<",       ""};
    constexpr std::size_t count = sizeof tags / sizeof tags[0];
    char value[XML_ITEM_SIZE];
    require(xml_load_memory(bytes) == 0);
    require(static_cast<std::size_t>(xml_length) <= bytes.size() + 1);
    for (const char byte : bytes.first(bytes.size() < 200 ? bytes.size() : 200)) {
        const auto choice = static_cast<unsigned char>(byte);
        const std::int32_t before = xml_pointer;
        const char *open = tags[choice % count];
        const char *limit = tags[choice / count % count];
        const std::int32_t result = xml_get_item(open, limit, value);
        require(result == 0 ? xml_pointer >= before : xml_pointer == before);
        require(xml_pointer < xml_length);
    }
    xml_unload_file();
}

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    options_set_defaults();
    model_init();
    node_init_nodes();
    template_object_init();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::span<const char> bytes(reinterpret_cast<const char *>(data), size);
    scan(bytes);
    if (load(bytes) == PAGE_LOADED) {
        check_tables();
        check_round_trip();
    } else {
        require(node_total == 0 && line_total == 0);
    }
    return 0;
}
