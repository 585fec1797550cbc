// Random editing, step by step beside a plain model of it. Where placement is free to push objects
// aside, the model takes their places from the page (its own tests say where they go) and checks
// what must hold; everything else is worked out by the model alone.
#pragma once

#include "assets/model.h"
#include "page/placement.h"
#include "tests/unit/edit_fixture.h"
#include "tests/unit/page_model.h"

#include <array>
#include <cmath>
#include <functional>
#include <random>
#include <set>

#ifdef _WIN32
// Every picture is drawn there; what is tested does not depend on the system.
inline constexpr std::uint32_t RUNS = 20, FULL_RUNS = 1;
#else
inline constexpr std::uint32_t RUNS = 200, FULL_RUNS = 3;
#endif
inline constexpr std::int32_t STEPS = 200; // of a run

inline constexpr char PAGE_FILE[] = "model.orvl";

// The same on every machine for a seed.
struct Dice {
    std::mt19937 engine;

    explicit Dice(std::uint32_t seed) : engine(seed) {}

    std::int32_t below(std::int32_t end) {
        return static_cast<std::int32_t>(engine() % static_cast<std::uint32_t>(end));
    }
    bool one_in(std::int32_t n) {
        return below(n) == 0;
    }
    float place() { // a place on the floor with more digits than a file keeps
        return static_cast<float>(below(200'000)) / 1000.0f - 100.0f;
    }
    std::string text(const char *stem, std::size_t longest) {
        std::string text = stem + std::to_string(below(1000));
        if (one_in(4))
            text.resize(longest, 'x');
        return text;
    }
};

inline bool overlaps(const Node &a, const Node &b) {
    return a.x + a.dimensions[EXTENT_LEFT] < b.x + b.dimensions[EXTENT_RIGHT] &&
           b.x + b.dimensions[EXTENT_LEFT] < a.x + a.dimensions[EXTENT_RIGHT] &&
           a.y + a.dimensions[EXTENT_NEAR] < b.y + b.dimensions[EXTENT_FAR] &&
           b.y + b.dimensions[EXTENT_NEAR] < a.y + a.dimensions[EXTENT_FAR];
}

// ---- the commands

// How a session carries out what it does to one node: by the editing services, or by the commands
// as the user runs them. Each takes its snapshot itself.
struct Editor {
    // The node that the next command will be for, -1 = none, when the user goes for this one.
    std::int32_t (*aim)(std::int32_t wanted);
    void (*drag)(std::int32_t id, float dx, float dy); // 0, 0 = only clicked at
    bool (*link)(std::int32_t from, std::int32_t to);  // false = the other end was not hit
    void (*remove_links)(std::int32_t id);
    void (*remove)(std::int32_t id, bool with_file);
    void (*copy)(std::int32_t id);
    void (*cut)(std::int32_t id);
    void (*paste)(float x, float y); // relative to the floor's offset
    float precision;                 // of that place, floor units
    void (*paste_actions)(std::int32_t id);
    std::int32_t (*align)(std::int32_t from, std::int32_t to); // Alignment
    void (*align_with_grid)(std::int32_t id);
    void (*undo)();
    void (*redo)();
    void (*finish_editing)(); // saves, and begins again
    void (*revert)();         // what was not saved is given up; editing begins again
};

// ---- what dialogs do, which are not part of this

inline void begin_change() {
    undo_push();
    redo_reset();
}

inline void make_room(std::int32_t id) {
    node[id].grab_state = GRAB_ANCHORED;
    scene_nodes_avoid_node_area(id);
    node[id].grab_state = GRAB_IDLE;
}

inline void set_actions(std::int32_t id, const std::vector<ModelAction> &actions) {
    node[id].action_count = 0;
    for (const ModelAction &wanted : actions) {
        Action *action = add_action(id, wanted.name.c_str(), wanted.command.c_str());
        action->type = wanted.type;
        action->owner = wanted.owner;
        text_copy(action->icon, wanted.icon.c_str());
    }
}

inline void set_texts(std::int32_t id, const ModelNode &wanted) {
    text_copy_limit(node[id].name, NODE_NAME_LENGTH, wanted.name.c_str());
    text_copy_limit(node[id].description, NODE_DESCRIPTION_LENGTH, wanted.description.c_str());
}

inline void count_type(std::int32_t type, std::int32_t change) {
    if (type == NODE_OBJECT)
        scene_page_hosts_total += change;
    else if (type == NODE_PAGE)
        scene_page_links_total += change;
}

inline void create(const ModelNode &wanted) {
    const std::int32_t id = stage_add(static_cast<NodeType>(wanted.type), wanted.x, wanted.y);
    set_texts(id, wanted);
    set_actions(id, wanted.actions);
    count_type(wanted.type, 1);
    make_room(id);
    scene_new_node_transition(id);
}

// ---- one session of editing

struct Session {
    Dice dice;
    PageModel model;
    const TestFolder &folder;
    const Editor &editor;
    const char *operation = "start";
    int pages_made = 0;

    Session(std::uint32_t seed, const TestFolder &pages, const Editor &hands)
        : dice(seed), folder(pages), editor(hands) {}

    // A node for the next command, -1 = none.
    std::int32_t any_node() {
        return node_total == 0 ? -1 : editor.aim(dice.below(node_total));
    }
    static std::size_t index(std::int32_t id) {
        return static_cast<std::size_t>(id);
    }
    ModelNode &modelled(std::int32_t id) {
        return model.page.nodes[index(id)];
    }

    // Pushed objects stand where the page has them.
    void take_places() {
        ASSERT_EQ(index(node_total), model.page.nodes.size());
        for (std::int32_t id = 0; id < node_total; id++) {
            ASSERT_TRUE(std::isfinite(node[id].x) && std::isfinite(node[id].y));
            modelled(id).x = node[id].x;
            modelled(id).y = node[id].y;
        }
    }
    // The mouse hits a place on the floor only as exactly as a pixel.
    void take_pasted_place() {
        ModelNode *pasted = &model.page.nodes.back();
        EXPECT_NEAR(node[node_total - 1].x, pasted->x, editor.precision);
        EXPECT_NEAR(node[node_total - 1].y, pasted->y, editor.precision);
        pasted->x = node[node_total - 1].x;
        pasted->y = node[node_total - 1].y;
    }
    // The object just placed stands where it was put, and alone.
    void take_places_around(std::int32_t placed) {
        ASSERT_LT(index(placed), model.page.nodes.size());
        EXPECT_EQ(node[placed].x, modelled(placed).x);
        EXPECT_EQ(node[placed].y, modelled(placed).y);
        for (std::int32_t id = 0; id < node_total; id++)
            EXPECT_FALSE(id != placed && overlaps(node[id], node[placed]))
                << id << " in " << placed;
        take_places();
    }

    // ---- operations

    std::vector<ModelAction> some_actions() {
        std::vector<ModelAction> actions;
        const std::int32_t count = dice.one_in(50) ? NODE_ACTIONS : dice.below(4);
        for (std::int32_t i = 0; i < count; i++) {
            const std::int32_t type = dice.below(3);
            actions.push_back({type, type == ACTION_SUBMENU ? 0 : dice.below(3),
                               type == ACTION_SEPARATOR ? "" : dice.text("Action ", 60),
                               type == ACTION_COMMAND ? dice.text("c:\\program ", 260) : "",
                               type == ACTION_COMMAND ? dice.text("c:\\icon ", 260) : ""});
        }
        return actions;
    }

    void create_file(const std::string &name) {
        const std::string content = "page " + std::to_string(dice.below(1'000'000));
        ASSERT_EQ(file_create_text(folder.file(name.c_str()).c_str(), content), 0);
        model.files[name] = content;
    }

    ModelNode new_object() {
        return {NODE_OBJECT,
                dice.text("object ", 30),
                dice.text("about ", 50),
                0,
                dice.place(),
                dice.place(),
                some_actions()};
    }
    ModelNode new_page() {
        const std::string file = "page" + std::to_string(pages_made++) + ".orvl";
        if (!dice.one_in(8)) // else its file is missing
            create_file(file);
        return {NODE_PAGE,
                dice.text("page ", 30),
                dice.text("about ", 50),
                0,
                dice.place(),
                dice.place(),
                {{ACTION_COMMAND, 0, "", file, ""}}};
    }
    ModelNode new_label() {
        model.labels++;
        return {NODE_LABEL,
                "_lbl" + std::to_string(node_label_total++) + "lbl_",
                dice.text("label ", 50),
                0,
                dice.place(),
                dice.place(),
                {}};
    }

    void create_node(ModelNode (Session::*new_node)()) {
        if (node_total >= NODE_CAPACITY)
            return; // the user is told
        begin_change();
        model.begin_change();
        if (dice.one_in(10)) { // the dialog is cancelled
            undo_reject();
            model.call_off();
            return;
        }
        const ModelNode wanted = (this->*new_node)();
        create(wanted);
        model.page.nodes.push_back(wanted);
        const std::int32_t id = node_total - 1;
        scene_changed = 1;
        take_places_around(id);
        undo_duplicate_check(id);
        model.end_change(index(id));
    }
    void create_object() {
        create_node(&Session::new_object);
    }
    void create_page() {
        create_node(&Session::new_page);
    }
    void create_label() {
        create_node(&Session::new_label);
    }

    // Others are pushed aside; now and then it is only clicked at.
    void move() {
        const std::int32_t id = any_node();
        if (id == -1)
            return;
        const bool moves = !dice.one_in(5);
        const float dx = moves ? dice.place() / 4.0f : 0.0f;
        const float dy = moves ? dice.place() / 4.0f : 0.0f;
        model.push_undo();
        editor.drag(id, dx, dy);
        const bool stands = node[id].x == modelled(id).x && node[id].y == modelled(id).y;
        EXPECT_EQ(stands, !moves);
        take_places();
        model.end_change(index(id));
    }

    bool can_be_linked(std::int32_t id) {
        return modelled(id).type != NODE_LABEL;
    }
    void link() {
        const std::int32_t to = node_total == 0 ? -1 : dice.below(node_total);
        const std::int32_t from = any_node();
        if (from == -1)
            return;
        if (!editor.link(from, to) || from == to || !can_be_linked(from) || !can_be_linked(to))
            return; // nothing is even begun
        model.begin_change();
        if (!model.page.link(from, to))
            model.call_off();
    }

    void remove_links() {
        const std::int32_t id = any_node();
        if (id == -1)
            return;
        editor.remove_links(id);
        model.begin_change();
        model.page.remove_links(id);
    }

    void delete_node() {
        const std::int32_t id = any_node();
        if (id == -1)
            return;
        const ModelNode deleted = modelled(id);
        const bool with_file = dice.one_in(4);
        editor.remove(id, with_file);
        model.begin_change();
        model.page.remove(id);
        if (deleted.type != NODE_PAGE || !with_file)
            return;
        // It cannot be brought back: the page is saved without it.
        model.files.erase(deleted.actions[0].command);
        model.save();
        model.begin_history();
    }

    void copy() {
        const std::int32_t id = any_node();
        if (id == -1)
            return;
        editor.copy(id);
        model.clipboard = modelled(id);
        model.clipboard_filled = true;
        model.clipboard_cut = false;
    }

    void cut() {
        const std::int32_t id = any_node();
        if (id == -1)
            return;
        editor.cut(id);
        model.begin_change();
        model.clipboard = modelled(id);
        model.clipboard_filled = model.clipboard_cut = true;
        model.page.remove(id);
    }

    void paste() {
        const float x = dice.place() / 10.0f;
        const float y = dice.place() / 10.0f;
        if (node_total >= NODE_CAPACITY)
            return; // the user is told
        editor.paste(x, y);
        if (!model.clipboard_filled)
            return;
        model.begin_change();
        model.paste(x + scene_floor.position_x, y + scene_floor.position_y);
        take_pasted_place();
        take_places_around(node_total - 1);
    }

    void paste_actions() {
        const std::int32_t id = any_node();
        if (id == -1)
            return;
        editor.paste_actions(id);
        if (modelled(id).type != NODE_OBJECT)
            return;
        model.begin_change();
        if (model.clipboard_filled && model.clipboard.type == NODE_OBJECT &&
            !model.clipboard.actions.empty())
            modelled(id).actions = model.clipboard.actions;
        model.end_change(index(id));
    }

    void align_with_node() {
        const std::int32_t to = node_total == 0 ? -1 : dice.below(node_total);
        const std::int32_t from = any_node();
        if (from == -1)
            return;
        const std::int32_t alignment = editor.align(from, to);
        if (alignment == ALIGN_NONE)
            return;
        model.begin_change();
        if (alignment == ALIGN_COLUMN)
            modelled(from).x = modelled(to).x;
        else
            modelled(from).y = modelled(to).y;
        model.end_change(index(from));
    }

    void align_with_grid() {
        const std::int32_t id = any_node();
        if (id == -1)
            return;
        model.push_undo();
        editor.align_with_grid(id);
        take_places();
        model.end_change(index(id));
    }

    // Properties: confirmed with or without a change, or with one of an action's command alone.
    void edit_properties() {
        const std::int32_t id = any_node();
        if (id == -1)
            return;
        begin_change();
        model.begin_change();
        ModelNode *wanted = &modelled(id);
        if (dice.one_in(3) && wanted->type != NODE_LABEL)
            wanted->name = dice.text("renamed ", 30);
        if (dice.one_in(3))
            wanted->description = dice.text("rewritten ", 50);
        if (dice.one_in(3) && wanted->type == NODE_OBJECT)
            wanted->actions = some_actions();
        set_texts(id, *wanted);
        set_actions(id, wanted->actions);
        scene_changed = 1;
        undo_duplicate_check(id);
        model.end_change(index(id));
    }

    void scroll() {
        scene_floor.position_x = dice.place();
        scene_floor.position_y = dice.place();
    }

    void take_back() {
        editor.undo();
        model.take_back();
    }
    void do_again() {
        editor.redo();
        model.do_again();
    }

    void save() {
        ASSERT_EQ(xml_save_page(PAGE_FILE), 0);
        model.save();
    }
    void reload() {
        editor.revert();
        model.load();
    }
    void finish_editing() {
        editor.finish_editing();
        model.save();
        model.begin_history();
    }

    // ---- steps

    struct Operation {
        const char *name;
        void (Session::*carry_out)();
        std::int32_t share;
    };
    static constexpr std::array OPERATIONS = {
        Operation{"create an object", &Session::create_object, 8},
        Operation{"create a page object", &Session::create_page, 4},
        Operation{"create a label", &Session::create_label, 4},
        Operation{"move", &Session::move, 12},
        Operation{"link", &Session::link, 10},
        Operation{"remove links", &Session::remove_links, 2},
        Operation{"delete", &Session::delete_node, 6},
        Operation{"copy", &Session::copy, 4},
        Operation{"cut", &Session::cut, 4},
        Operation{"paste", &Session::paste, 8},
        Operation{"paste actions", &Session::paste_actions, 4},
        Operation{"align with an object", &Session::align_with_node, 5},
        Operation{"align with the grid", &Session::align_with_grid, 3},
        Operation{"edit properties", &Session::edit_properties, 6},
        Operation{"scroll", &Session::scroll, 2},
        Operation{"undo", &Session::take_back, 14},
        Operation{"redo", &Session::do_again, 8},
        Operation{"save", &Session::save, 2},
        Operation{"reload", &Session::reload, 1},
        Operation{"finish editing", &Session::finish_editing, 1},
    };

    const Operation &throw_operation() {
        std::int32_t total = 0;
        for (const Operation &candidate : OPERATIONS)
            total += candidate.share;
        std::int32_t thrown = dice.below(total);
        std::size_t chosen = 0;
        while (thrown >= OPERATIONS[chosen].share)
            thrown -= OPERATIONS[chosen++].share;
        return OPERATIONS[chosen];
    }

    void step() {
        const Operation &chosen = throw_operation();
        operation = chosen.name;
        (this->*chosen.carry_out)();
        check();
    }

    static bool is_at_rest(const Node &record) {
        return record.alpha == 1.0f && record.scale == 1.0f && record.height == 10.0f &&
               record.fade_state == 0 && record.grab_state != GRAB_GRABBED &&
               record.grab_state != GRAB_ANCHORED;
    }

    void check() const {
        EXPECT_EQ(first_difference(read_page(), model.page), "");
        EXPECT_EQ(undo_total, static_cast<std::int32_t>(model.undo.size()));
        EXPECT_EQ(redo_total, static_cast<std::int32_t>(model.redo.size()));
        EXPECT_EQ(scene_page_hosts_total, model.page.count(NODE_OBJECT));
        EXPECT_EQ(scene_page_links_total, model.page.count(NODE_PAGE));
        EXPECT_EQ(node_label_total, model.labels);
        EXPECT_TRUE(std::all_of(node, node + node_total, is_at_rest));
    }

    // The files of the page objects are what the model says, no more and no less.
    void check_files() const {
        for (const auto &[name, content] : model.files)
            EXPECT_EQ(folder.read(name.c_str()), content) << name;
        const FolderScanHandle scan = folder_scan_open(folder.file("page*").c_str());
        FolderEntry entry;
        while (scan != nullptr && folder_scan_next(scan.get(), &entry))
            EXPECT_EQ(model.files.count(entry.name), 1u) << entry.name;
    }

    // All the way back and all the way forth again.
    void walk_through_history() {
        operation = "undo everything";
        const ModelPage newest = model.page;
        const std::size_t done = model.undo.size();
        while (undo_available() == 0) {
            take_back();
            check();
        }
        if (!model.first_lost) {
            EXPECT_EQ(first_difference(read_page(), model.first), "");
        }
        operation = "redo everything";
        for (std::size_t i = 0; i < done; i++) {
            do_again();
            check();
        }
        EXPECT_EQ(first_difference(read_page(), newest), "");
    }
};

// False when the program and the model have come apart.
inline bool agree(const Session &session, std::uint32_t seed, int step) {
    if (!testing::Test::HasFailure())
        return true;
    ADD_FAILURE() << "seed " << seed << ", step " << step << ": " << session.operation;
    return false;
}

// A page with something on it, saved.
inline void begin_session(Session *session, std::int32_t nodes) {
    node_total = line_total = 0;
    scene_page_hosts_total = scene_page_links_total = node_label_total = 0;
    clipboard_used = CLIPBOARD_EMPTY;
    undo_reset();
    while (node_total < nodes)
        session->create_object();
    for (std::int32_t i = 0; i < nodes; i++)
        session->link();
    session->save();
    session->reload();
}

// Edits for so many steps a page that begins with so many nodes. False when it went wrong.
inline bool play(const Editor &editor, std::uint32_t seed, std::int32_t nodes, int steps) {
    const TestFolder pages;
    text_copy(page_dir_location, pages.path);
    Session session(seed, pages, editor);
    begin_session(&session, nodes);
    for (int step = 0; step < steps; step++) {
        session.step();
        if (step % 100 == 49)
            session.walk_through_history();
        if (!agree(session, seed, step))
            return false;
    }
    session.walk_through_history();
    session.check_files();
    return agree(session, seed, steps);
}
