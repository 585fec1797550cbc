#include "scene/scene_page.h"

#include "assets/model.h"
#include "page/options.h"
#include "page/page_file.h"
#include "page/xml.h"
#include "platform/text.h"
#include "scene/scene_motion.h"

#include <algorithm>
#include <cstring>
#include <string_view>

inline constexpr std::size_t ACTION_NAME_LENGTH = 60;  // characters
inline constexpr std::size_t ACTION_FILE_LENGTH = 260; // characters of a command or an icon
inline constexpr std::int32_t OLD_ACTIONS = 3;         // commands of an object before version 4
inline constexpr std::int32_t ACTIONS_AHEAD = 4;       // records, as long as memory takes to answer
inline constexpr float PAGE_ALPHA = 0.8f;
inline constexpr float DEFAULT_COLOUR_MARK = -1.0f; // this red stands for the default page colour

static constexpr XmlTag &PAGE_END = "</page>"_tag;
static constexpr XmlTag &PROPERTIES_END = "</properties>"_tag;
static constexpr XmlTag &COLOUR_END = "</colour>"_tag;
static constexpr XmlTag &NODE_END = "</node>"_tag;
static constexpr XmlTag &ACTION_END = "</action>"_tag;

char scene_page_file_name[SCENE_FILE_NAME_SIZE];
char scene_page_title[SCENE_TITLE_SIZE];
std::int32_t node_label_total;
std::int32_t scene_page_hosts_total;
std::int32_t scene_page_links_total;
std::int32_t scene_changed;

const char SCENE_TOO_MANY_ON_HOME[] =
    "The Home Page (home.orvl) contains too many items and cannot be loaded.";
const char SCENE_TOO_MANY_ON_PAGE[] = "The page file contains too many items and cannot be loaded.";

// What is being read. value takes every value in turn; one that is missing leaves the one before.
struct Reader {
    std::int32_t version;
    std::string_view value; // into the loaded file
};

static bool read_value(Reader *reader, XmlTag &open_tag, XmlTag &limit_tag) {
    return xml_find_value(open_tag, limit_tag, &reader->value) == 0;
}

template <std::size_t N>
static void store(char (&target)[N], std::size_t length, std::string_view value) {
    static_assert(N > 0);
    target[value.copy(target, std::min(length, N - 1))] = '\0';
}

static bool read_float(Reader *reader, XmlTag &open_tag, XmlTag &limit_tag, float *number) {
    if (!read_value(reader, open_tag, limit_tag))
        return false;
    *number = xml_to_float(reader->value);
    return true;
}

// ---- properties

static void set_default_colour(PageColour *colour) {
    colour->use_default = 1;
    colour->red = orvanel_options.default_page_red;
    colour->green = orvanel_options.default_page_green;
    colour->blue = orvanel_options.default_page_blue;
}

static void read_colour(Reader *reader) {
    PageColour *colour = &scene_floor.colour;
    read_float(reader, "<red>"_tag, COLOUR_END, &colour->red);
    read_float(reader, "<green>"_tag, COLOUR_END, &colour->green);
    read_float(reader, "<blue>"_tag, COLOUR_END, &colour->blue);
    if (colour->red == DEFAULT_COLOUR_MARK)
        set_default_colour(colour);
    else
        colour->use_default = 0;
    colour->red = std::clamp(colour->red, 0.0f, 1.0f);
    colour->green = std::clamp(colour->green, 0.0f, 1.0f);
    colour->blue = std::clamp(colour->blue, 0.0f, 1.0f);
    colour->alpha = PAGE_ALPHA;
}

// What the file leaves out stays as the page before had it: meant to carry over.
static void read_properties(Reader *reader) {
    SceneFloor *floor = &scene_floor;
    floor->previous_colour = floor->colour;
    if (reader->version == 0 || reader->version == 1) {
        set_default_colour(&floor->colour);
        floor->colour.alpha = PAGE_ALPHA;
        floor->home_x = floor->home_y = 0.0f;
        floor->position_x = floor->position_y = 0.0f;
        return;
    }
    if (reader->version < 2 || xml_find_element("<properties>"_tag, PAGE_END) != 0)
        return;
    if (read_float(reader, "<x_position>"_tag, PROPERTIES_END, &floor->home_x))
        floor->position_x = floor->home_x;
    if (read_float(reader, "<y_position>"_tag, PROPERTIES_END, &floor->home_y))
        floor->position_y = floor->home_y;
    if (xml_find_element("<colour>"_tag, PROPERTIES_END) == 0)
        read_colour(reader);
}

// ---- actions

// Takes the value into a text when there is one, else empties it.
template <std::size_t N>
static void read_action_text(Reader *reader, XmlTag &open_tag, XmlTag &limit_tag,
                             std::size_t length, char (&text)[N]) {
    const bool found = read_value(reader, open_tag, limit_tag);
    store(text, length, found ? reader->value : std::string_view());
}

static void read_owner(Reader *reader, Action *action) {
    const bool found = read_value(reader, "<owner>"_tag, ACTION_END);
    action->owner = found ? xml_to_int(reader->value) : 0;
}

// A record of a word that is not known stays as it was.
static void read_action(Reader *reader, Action *action) {
    if (!read_value(reader, "<type>"_tag, ACTION_END))
        return;
    if (reader->value == "command") {
        action->type = ACTION_COMMAND;
        read_owner(reader, action);
        read_action_text(reader, "<name>"_tag, ACTION_END, ACTION_NAME_LENGTH, action->name);
        read_action_text(reader, "<command>"_tag, ACTION_END, ACTION_FILE_LENGTH, action->command);
        // Limited by its own end on purpose: an action without an icon takes that of the next one
        // that has one.
        read_action_text(reader, "<icon>"_tag, "</icon>"_tag, ACTION_FILE_LENGTH, action->icon);
    } else if (reader->value == "separator") {
        action->type = ACTION_SEPARATOR;
        read_owner(reader, action);
    } else if (reader->value == "submenu") {
        action->type = ACTION_SUBMENU;
        action->owner = 0; // stands at the top level only
        read_action_text(reader, "<name>"_tag, ACTION_END, ACTION_NAME_LENGTH, action->name);
    }
}

// The action's record, made on first use, or one to throw away when there is no memory.
static Action *action_record(Node *target, std::int32_t index) {
    static Action no_memory;
    action_allocate_action(&target->actions[index]);
    return target->actions[index] != nullptr ? target->actions[index] : &no_memory;
}

// Asks for the parts of a record of an earlier page that reading writes to: a full page has more
// of them than a cache holds.
static void fetch_ahead(const Node &target, std::int32_t index) {
    if (index >= NODE_ACTIONS || target.actions[index] == nullptr)
        return;
    const Action *action = target.actions[index];
    __builtin_prefetch(&action->type, 1);
    __builtin_prefetch(&action->command, 1);
    __builtin_prefetch(&action->icon, 1);
}

// A 51st action is begun and left; whatever follows it is not looked at.
static void read_actions(Reader *reader, Node *target) {
    std::int32_t count = 0;
    while (xml_find_element("<action>"_tag, NODE_END) == 0 && count < NODE_ACTIONS) {
        fetch_ahead(*target, count + ACTIONS_AHEAD);
        read_action(reader, action_record(target, count++));
    }
    target->action_count = count;
}

// One of the fixed pairs of older versions. A name without a command stays in its slot, which the
// next pair writes over.
static bool read_old_action(Reader *reader, Node *target, XmlTag &name_tag, XmlTag &command_tag) {
    const bool named = read_value(reader, name_tag, NODE_END);
    if (named && !reader->value.empty()) {
        Action *action = action_record(target, target->action_count);
        store(action->name, ACTION_NAME_LENGTH, reader->value);
    }
    if (!read_value(reader, command_tag, NODE_END))
        return false;
    if (!reader->value.empty()) {
        Action *action = action_record(target, target->action_count);
        action->type = ACTION_COMMAND;
        action->owner = 0;
        store(action->command, ACTION_FILE_LENGTH, reader->value);
        action->icon[0] = '\0';
        target->action_count++;
    }
    return named;
}

static bool read_old_actions(Reader *reader, Node *target) {
    static constexpr XmlTag *tags[OLD_ACTIONS][2] = {{&"<action_1_name>"_tag, &"<action_1>"_tag},
                                                     {&"<action_2_name>"_tag, &"<action_2>"_tag},
                                                     {&"<action_3_name>"_tag, &"<action_3>"_tag}};
    // Names of an earlier page must not show up on this one.
    for (std::int32_t i = 0; i < OLD_ACTIONS; i++) {
        if (target->actions[i] != nullptr)
            target->actions[i]->name[0] = '\0';
    }
    bool complete = true;
    for (const auto &pair : tags)
        complete = read_old_action(reader, target, *pair[0], *pair[1]) && complete;
    return complete;
}

// ---- nodes

static Node *start_node(NodeType type) {
    node_init_node(node_total);
    node[node_total].type = type;
    return &node[node_total];
}

// Counts the entry that has just been filled in.
static std::uint32_t finish_node(bool complete) {
    if (!complete)
        return PAGE_SYNTAX;
    node_total++;
    return PAGE_LOADED;
}

// The position is that of rest as well, so the node stands still.
static bool read_position(Reader *reader, Node *target) {
    const bool x = read_float(reader, "<x_position>"_tag, NODE_END, &target->x);
    const bool y = read_float(reader, "<y_position>"_tag, NODE_END, &target->y);
    target->grab_x = target->x;
    target->grab_y = target->y;
    return x && y;
}

// What objects and page objects have in common. True when nothing is missing; the rest is read in
// any case.
static bool read_object_fields(Reader *reader, Node *target) {
    bool complete = true;
    if (read_value(reader, "<name>"_tag, NODE_END))
        store(target->name, NODE_NAME_LENGTH, reader->value);
    else
        complete = false;
    if (read_value(reader, "<description>"_tag, NODE_END))
        store(target->description, NODE_DESCRIPTION_LENGTH, reader->value);
    else
        complete = false;
    complete = read_position(reader, target) && complete;
    if (!read_value(reader, "<model>"_tag, NODE_END))
        return false;
    char model[XML_ITEM_SIZE];
    store(model, sizeof model, reader->value);
    target->model_id = model_return_model_id(model);
    node_set_model_dimensions(node_total);
    return complete;
}

static std::uint32_t read_object(Reader *reader) {
    Node *target = start_node(NODE_OBJECT);
    bool complete = read_object_fields(reader, target);
    if (reader->version >= PAGE_FORMAT_VERSION)
        read_actions(reader, target);
    else
        complete = read_old_actions(reader, target) && complete;
    scene_page_hosts_total++;
    return finish_node(complete);
}

static std::uint32_t read_page_object(Reader *reader) {
    Node *target = start_node(NODE_PAGE);
    const bool complete = read_object_fields(reader, target);
    XmlTag &page_file = reader->version >= PAGE_FORMAT_VERSION ? "<page_file>"_tag : "<action>"_tag;
    if (!read_value(reader, page_file, NODE_END))
        return PAGE_SYNTAX;
    Action *action = action_record(target, 0);
    action->type = ACTION_COMMAND;
    action->owner = 0;
    action->name[0] = '\0';
    store(action->command, ACTION_FILE_LENGTH, reader->value);
    action->icon[0] = '\0';
    target->action_count = 1;
    const std::uint32_t result = finish_node(complete);
    if (result == PAGE_LOADED)
        scene_page_links_total++;
    return result;
}

// A label has no name of its own in the file; the generated one is unique on the page.
static std::uint32_t read_label(Reader *reader) {
    Node *target = start_node(NODE_LABEL);
    text_format(target->name, sizeof target->name, "_lbl%dlbl_", node_label_total++);
    const bool text = read_value(reader, "<text>"_tag, NODE_END);
    if (text)
        store(target->description, NODE_DESCRIPTION_LENGTH, reader->value);
    return finish_node(read_position(reader, target) && text);
}

// Refused links are left out without a word.
static std::uint32_t read_link_by_name(Reader *reader) {
    char from[XML_ITEM_SIZE], to[XML_ITEM_SIZE];
    if (!read_value(reader, "<from>"_tag, NODE_END))
        return PAGE_SYNTAX;
    store(from, sizeof from, reader->value);
    if (!read_value(reader, "<to>"_tag, NODE_END))
        return PAGE_SYNTAX;
    store(to, sizeof to, reader->value);
    line_create(from, to);
    return PAGE_LOADED;
}

static std::uint32_t read_link_by_index(Reader *reader) {
    if (!read_value(reader, "<from_id>"_tag, NODE_END))
        return PAGE_SYNTAX;
    const std::int32_t from = xml_to_int(reader->value);
    if (!read_value(reader, "<to_id>"_tag, NODE_END))
        return PAGE_SYNTAX;
    line_create_from_ids(from, xml_to_int(reader->value));
    return PAGE_LOADED;
}

static bool is_object_word(const Reader &reader) {
    return (reader.version >= 1 && reader.value == "object") ||
           (reader.version == 0 && reader.value == "host");
}

// An element of a type that is not known, or of none, is skipped. Without a type the value read
// before decides whether it counts as a link: kept as it always was.
static std::uint32_t read_node(Reader *reader) {
    const bool typed = read_value(reader, "<type>"_tag, NODE_END);
    const bool full = node_total >= NODE_CAPACITY;
    if (typed && is_object_word(*reader))
        return full ? PAGE_TOO_MANY : read_object(reader);
    if (typed && reader->value == "page")
        return full ? PAGE_TOO_MANY : read_page_object(reader);
    if (typed && reader->value == "label")
        return full ? PAGE_TOO_MANY : read_label(reader);
    if (typed && reader->value == "line")
        return read_link_by_name(reader);
    if (reader->value == "link")
        return read_link_by_index(reader);
    return PAGE_LOADED;
}

// A full table ends the page as a success; what follows in the file, links too, is not read.
static std::uint32_t read_nodes(Reader *reader) {
    while (xml_find_element("<node>"_tag, PAGE_END) == 0) {
        const std::uint32_t result = read_node(reader);
        if (result != PAGE_LOADED)
            return result;
        if (node_total >= NODE_CAPACITY)
            break;
    }
    return PAGE_LOADED;
}

// ---- pages

static std::uint32_t read_page() {
    Reader reader = {};
    if (xml_find_element("<page>"_tag, PAGE_END) != 0 ||
        !read_value(&reader, "<offv>"_tag, PAGE_END))
        return PAGE_NOT_A_PAGE;
    reader.version = xml_to_int(reader.value);
    if (reader.version > PAGE_FORMAT_VERSION)
        return PAGE_NEWER;
    read_properties(&reader);
    scene_page_links_total = 0;
    scene_page_hosts_total = 0;
    return read_nodes(&reader);
}

static void empty_tables() {
    node_total = 0;
    node_label_total = 0;
    line_init();
}

// Before the file is opened: a page that cannot be loaded leaves an empty scene. The texts may be
// the scene's own.
static void start_page(const char *file_name, const char *title) {
    char file_copy[SCENE_FILE_NAME_SIZE], title_copy[SCENE_TITLE_SIZE];
    text_copy(file_copy, file_name);
    text_copy(title_copy, title);
    empty_tables();
    scene_motion_reset();
    model_free_display_lists();
    text_copy(scene_page_file_name, file_copy);
    text_copy(scene_page_title, title_copy);
}

static std::uint32_t finish_page(std::uint32_t result) {
    xml_unload_file();
    if (result != PAGE_LOADED) {
        empty_tables();
        return result;
    }
    template_object_load();
    scene_changed = 0;
    scene_floor.inertia_x = scene_floor.inertia_y = 0.0f;
    scene_floor.inertia_frames = 0;
    return PAGE_LOADED;
}

// Exchanges the extension of older pages for today's. False when the name does not have it.
template <std::size_t N>
static bool renew_extension(char (&name)[N]) {
    char *extension = std::strstr(name, ".xml");
    if (extension == nullptr)
        return false;
    *extension = '\0';
    text_append(name, ".orvl");
    return true;
}

std::uint32_t scene_load_page(const char *file_name, const char *title) {
    char path[PAGE_PATH_SIZE];
    page_path(path, file_name);
    start_page(file_name, title);
    if (xml_load_file(path) != 0) {
        if (!renew_extension(path) || xml_load_file(path) != 0) {
            xml_unload_file();
            return PAGE_NOT_OPENED;
        }
        renew_extension(scene_page_file_name);
    }
    return finish_page(read_page());
}

std::uint32_t scene_load_page_memory(std::span<const char> bytes, const char *file_name,
                                     const char *title) {
    start_page(file_name, title);
    if (xml_load_memory(bytes) != 0)
        return finish_page(PAGE_NOT_OPENED);
    return finish_page(read_page());
}

std::uint32_t scene_reload_page() {
    char file_name[SCENE_FILE_NAME_SIZE];
    char title[SCENE_TITLE_SIZE];
    text_copy(file_name, scene_page_file_name);
    text_copy(title, scene_page_title);
    const float x = scene_floor.position_x;
    const float y = scene_floor.position_y;
    template_object_delete(); // the file may have none in spite of the page shown
    const std::uint32_t result = scene_load_page(file_name, title);
    scene_floor.position_x = x;
    scene_floor.position_y = y;
    return result;
}

std::int32_t xml_save_page(const char *name) {
    const PageProperties properties = {scene_floor.home_x, scene_floor.home_y, scene_floor.colour};
    return page_save(name, properties);
}

const char *scene_load_message(std::uint32_t result, const char *too_many) {
    switch (result) {
    case PAGE_NOT_OPENED:
        return "Failed to open page file.";
    case PAGE_NEWER:
        return "Failed to load page file.  It apears to be from a newer version of Orvanel.";
    case PAGE_NOT_A_PAGE:
        return "Failed to load page file.  It does not apear to be a valid Orvanel file.";
    case PAGE_SYNTAX:
        return "The page file contains syntax errors and will not be loaded.";
    case PAGE_TOO_MANY:
        return too_many;
    default:
        return "Failed to load page file.";
    }
}
