#include "page/page_file.h"

#include "assets/model.h"
#include "page/node.h"
#include "platform/files.h"
#include "platform/locations.h"
#include "platform/text.h"

#include <cstdint>
#include <cstring>

inline constexpr std::size_t PATH_PART_LENGTH = 1000; // characters of a folder or of a name
inline constexpr char DECLARATION[] = "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n";

void page_path(char (&path)[PAGE_PATH_SIZE], const char *name) {
    path[0] = '\0';
    if (!text_contains(name, "\\"))
        text_copy_limit(path, PATH_PART_LENGTH, page_dir_location);
    text_copy(path + std::strlen(path), PATH_PART_LENGTH + 1, name);
}

// ---- writing

// Values are written as they are: a '<' in one cuts it when the page is read again.
static void add_text(std::string *page, const char *indent, const char *tag, const char *value) {
    page->append(indent).append("<").append(tag).append(">").append(value);
    page->append("</").append(tag).append(">\n");
}

static void add_int(std::string *page, const char *indent, const char *tag, std::int32_t value) {
    char number[16];
    text_format(number, sizeof number, "%d", value);
    add_text(page, indent, tag, number);
}

static void add_float(std::string *page, const char *indent, const char *tag, float value) {
    char number[64]; // the largest float has 39 digits
    text_format(number, sizeof number, "%0.2f", static_cast<double>(value));
    add_text(page, indent, tag, number);
}

static void add_properties(std::string *page, const PageProperties &properties) {
    const PageColour &colour = properties.colour;
    const bool own = colour.use_default != 1;
    page->append("\t<properties>\n");
    add_float(page, "\t\t", "x_position", properties.home_x);
    add_float(page, "\t\t", "y_position", properties.home_y);
    page->append("\t\t<colour>\n");
    add_float(page, "\t\t\t", "red", own ? colour.red : -1.0f);
    add_float(page, "\t\t\t", "green", own ? colour.green : -1.0f);
    add_float(page, "\t\t\t", "blue", own ? colour.blue : -1.0f);
    page->append("\t\t</colour>\n\t</properties>\n");
}

static void add_action(std::string *page, const Action &action) {
    static constexpr char indent[] = "\t\t\t";
    page->append("\t\t<action>\n");
    switch (action.type) {
    case ACTION_COMMAND:
        add_text(page, indent, "type", "command");
        add_int(page, indent, "owner", action.owner);
        add_text(page, indent, "name", action.name);
        add_text(page, indent, "command", action.command);
        add_text(page, indent, "icon", action.icon);
        break;
    case ACTION_SEPARATOR:
        add_text(page, indent, "type", "separator");
        add_int(page, indent, "owner", action.owner);
        break;
    case ACTION_SUBMENU: // stands at the top level only and has no owner
        add_text(page, indent, "type", "submenu");
        add_text(page, indent, "name", action.name);
        break;
    default:
        break;
    }
    page->append("\t\t</action>\n");
}

static void add_type(std::string *page, const char *type, std::int32_t id) {
    char comment[48];
    text_format(comment, sizeof comment, "\t\t<!-- object_id %d -->\n", id);
    add_text(page, "\t\t", "type", type);
    page->append(comment);
}

static void add_position(std::string *page, const Node &record) {
    add_float(page, "\t\t", "x_position", record.x);
    add_float(page, "\t\t", "y_position", record.y);
}

static const char *model_name(std::int32_t model_id) {
    return model_id >= 0 && model_id < models_total ? models[model_id].file_name : "";
}

// What objects and page objects have in common.
static void add_object(std::string *page, const Node &record) {
    add_text(page, "\t\t", "name", record.name);
    add_text(page, "\t\t", "description", record.description);
    add_position(page, record);
    add_text(page, "\t\t", "model", model_name(record.model_id));
}

static void add_actions(std::string *page, const Node &record) {
    for (std::int32_t i = 0; i < record.action_count && i < NODE_ACTIONS; i++) {
        if (record.actions[i] != nullptr)
            add_action(page, *record.actions[i]);
    }
}

static void add_node(std::string *page, std::int32_t id) {
    const Node &record = node[id];
    page->append("\t<node>\n");
    switch (record.type) {
    case NODE_OBJECT:
        add_type(page, "object", id);
        add_object(page, record);
        add_actions(page, record);
        break;
    case NODE_PAGE:
        add_type(page, "page", id);
        add_object(page, record);
        add_text(page, "\t\t", "page_file",
                 record.actions[0] != nullptr ? record.actions[0]->command : "");
        break;
    case NODE_LABEL:
        add_type(page, "label", id);
        add_text(page, "\t\t", "text", record.description);
        add_position(page, record);
        break;
    default: // skipped on reading, but keeps its place in the file
        add_position(page, record);
        break;
    }
    page->append("\t</node>\n");
}

static void add_link(std::string *page, const Line &link) {
    page->append("\t<node>\n\t\t<type>link</type>\n");
    add_int(page, "\t\t", "from_id", link.from);
    add_int(page, "\t\t", "to_id", link.to);
    page->append("\t</node>\n");
}

std::string page_format(const PageProperties &properties) {
    std::string page = DECLARATION;
    page.append("<page>\n");
    add_text(&page, "\t", "offv", PAGE_FORMAT_VERSION_TEXT);
    add_properties(&page, properties);
    for (std::int32_t id = 0; id < node_total; id++)
        add_node(&page, id);
    for (std::int32_t i = 0; i < line_total; i++)
        add_link(&page, line[i]);
    page.append("</page>\n");
    return page;
}

int page_save(const char *name, const PageProperties &properties) {
    char path[PAGE_PATH_SIZE];
    page_path(path, name);
    return file_replace_text(path, page_format(properties));
}

// ---- file operations

// The properties stand on a single line on purpose: the reader keeps a line that begins with a tag
// whole, and values end at the next tag.
int xml_create_page(const char *name) {
    char path[PAGE_PATH_SIZE];
    page_path(path, name);
    std::string page = DECLARATION;
    page.append("<page>\n");
    add_text(&page, "\t", "offv", PAGE_FORMAT_VERSION_TEXT);
    page.append("\t<properties>"
                "\t<x_position>0.00</x_position>"
                "\t<y_position>0.00</y_position>"
                "\t<colour>"
                "\t\t<red>-1.00</red>"
                "\t\t<green>-1.00</green>"
                "\t\t<blue>-1.00</blue>"
                "\t</colour>"
                "\t</properties>"
                "</page>\n");
    return file_create_text(path, page);
}

int xml_is_page_writable(const char *name) {
    char path[PAGE_PATH_SIZE];
    page_path(path, name);
    return file_probe_writable(path);
}

// A page that cannot be opened for reading counts as gone.
int xml_delete_page(const char *name) {
    char path[PAGE_PATH_SIZE];
    page_path(path, name);
    return file_is_readable(path) ? file_delete(path) : 0;
}
