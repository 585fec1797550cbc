// The page, its history and the clipboard, written down as plainly as the rules of editing read:
// whole pages are copied, nothing is shared. What the program must agree with after every step.
#pragma once

#include "page/node.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

struct ModelAction {
    std::int32_t type, owner;
    std::string name, command, icon; // empty where the type has none
    bool operator==(const ModelAction &) const = default;
};

struct ModelNode {
    std::int32_t type;
    std::string name, description;
    std::int32_t model;
    float x, y;
    std::vector<ModelAction> actions;
    bool operator==(const ModelNode &) const = default;
};

struct ModelLink {
    std::int32_t from, to;
    bool operator==(const ModelLink &) const = default;
};

struct ModelPage {
    std::vector<ModelNode> nodes;
    std::vector<ModelLink> links;
    bool operator==(const ModelPage &) const = default;

    std::int32_t count(std::int32_t type) const {
        return static_cast<std::int32_t>(std::count_if(
            nodes.begin(), nodes.end(), [=](const ModelNode &n) { return n.type == type; }));
    }
    bool is_full() const {
        return nodes.size() >= 255;
    }
    // False when there is no room for it or it is there already.
    bool link(std::int32_t from, std::int32_t to) {
        for (const ModelLink &known : links) {
            if (known == ModelLink{from, to} || known == ModelLink{to, from})
                return false;
        }
        if (links.size() >= 255)
            return false;
        links.push_back({from, to});
        return true;
    }
    void remove_links(std::int32_t id) {
        std::erase_if(links, [=](const ModelLink &l) { return l.from == id || l.to == id; });
    }
    void remove(std::int32_t id) {
        remove_links(id);
        nodes.erase(nodes.begin() + id);
        for (ModelLink &l : links) {
            l.from -= l.from > id ? 1 : 0;
            l.to -= l.to > id ? 1 : 0;
        }
    }
};

struct PageModel {
    ModelPage page;
    std::vector<ModelPage> undo, redo; // the newest last
    ModelPage first;                   // where the history began
    bool first_lost = false;           // more than 50 changes since, or one that leaves no trace
    ModelPage saved;
    ModelNode clipboard = {};
    bool clipboard_filled = false, clipboard_cut = false;
    std::map<std::string, std::string> files; // pages in the page folder and what they hold
    std::int32_t labels = 0;                  // made so far, for their names

    // ---- history
    void begin_history() {
        undo.clear();
        redo.clear();
        first = page;
        first_lost = false;
    }
    void push_undo() {
        first_lost = first_lost || undo.size() == 50;
        push(&undo, page);
    }
    void begin_change() {
        push_undo();
        redo.clear();
    }
    // The change to one node is over: it is forgotten when nothing that counts came of it, although
    // actions may say something else now, and others may have been pushed.
    void end_change(std::size_t id) {
        const ModelPage &before = undo.back();
        if (id < before.nodes.size() && id < page.nodes.size() &&
            is_same(before.nodes[id], page.nodes[id])) {
            first_lost = first_lost || before != page;
            undo.pop_back();
        } else {
            redo.clear();
        }
    }
    void call_off() {
        undo.pop_back();
    }
    void take_back() {
        if (undo.empty())
            return;
        push(&redo, page);
        page = undo.back();
        undo.pop_back();
    }
    void do_again() {
        if (redo.empty())
            return;
        push_undo();
        page = redo.back();
        redo.pop_back();
    }

    // ---- clipboard
    void paste(float x, float y) {
        if (!clipboard_filled || page.is_full())
            return;
        ModelNode pasted = clipboard;
        if (pasted.type == NODE_PAGE && clipboard_cut)
            clipboard_cut = false;
        else if (pasted.type == NODE_PAGE)
            duplicate(&pasted);
        pasted.x = x;
        pasted.y = y;
        page.nodes.push_back(pasted);
    }

    // ---- file
    void save() {
        saved = page;
        for (ModelNode &n : saved.nodes) {
            n.x = as_written(n.x);
            n.y = as_written(n.y);
        }
    }
    // Labels get new names; a page whose table of nodes is full comes back without its links.
    void load() {
        page = saved;
        labels = 0;
        for (ModelNode &n : page.nodes) {
            if (n.type == NODE_LABEL)
                n.name = "_lbl" + std::to_string(labels++) + "lbl_";
        }
        if (page.is_full())
            page.links.clear();
        begin_history();
    }

private:
    static void push(std::vector<ModelPage> *stack, const ModelPage &page) {
        if (stack->size() == 50)
            stack->erase(stack->begin());
        stack->push_back(page);
    }
    static bool is_same(const ModelNode &a, const ModelNode &b) {
        return a.x == b.x && a.y == b.y && a.model == b.model &&
               a.actions.size() == b.actions.size() && a.name == b.name &&
               a.description == b.description;
    }
    static float as_written(float value) {
        char digits[64];
        std::snprintf(digits, sizeof digits, "%0.2f", static_cast<double>(value));
        return static_cast<float>(std::atof(digits));
    }
    static std::string before(const std::string &text, const char *part) {
        return text.substr(0, text.find(part));
    }
    // Files are named name.orvl here, objects at most 30 characters.
    void duplicate(ModelNode *pasted) {
        const std::string source = pasted->actions[0].command;
        const std::string stem = before(before(source, ".orvl"), "_copy_") + "_copy_";
        int k = 1;
        while (files.count(stem + std::to_string(k) + ".orvl") > 0)
            k++;
        const std::string target = stem + std::to_string(k) + ".orvl";
        if (files.count(source) > 0)
            files[target] = files[source];
        pasted->actions[0].command = target;
        const std::string end = k == 1 ? " (Copy)" : " (Copy " + std::to_string(k) + ")";
        const std::string name = before(before(pasted->name, " (Copy)"), " (Copy ");
        pasted->name = name.substr(0, 30 - end.size()) + end;
    }
};

// ---- the program's page, in the same words

inline ModelAction read_action(const Action &action) {
    const bool command = action.type == ACTION_COMMAND;
    const bool named = action.type != ACTION_SEPARATOR;
    return {action.type, action.owner, named ? action.name : "", command ? action.command : "",
            command ? action.icon : ""};
}

inline ModelNode read_node(const Node &record) {
    ModelNode read = {record.type, record.name, record.description, record.model_id, record.x,
                      record.y,    {}};
    for (std::int32_t i = 0; i < record.action_count; i++)
        read.actions.push_back(read_action(*record.actions[i]));
    return read;
}

inline ModelPage read_page() {
    ModelPage read;
    for (std::int32_t id = 0; id < node_total; id++)
        read.nodes.push_back(read_node(node[id]));
    for (std::int32_t i = 0; i < line_total; i++)
        read.links.push_back({line[i].from, line[i].to});
    return read;
}

// What differs first, for a failed test.
inline std::string describe(const ModelNode &n) {
    char place[80];
    std::snprintf(place, sizeof place, "%a, %a", static_cast<double>(n.x),
                  static_cast<double>(n.y));
    std::string text = "type " + std::to_string(n.type) + " '" + n.name + "' '" + n.description +
                       "' model " + std::to_string(n.model) + " at " + place;
    for (const ModelAction &a : n.actions)
        text += " [" + std::to_string(a.type) + " " + std::to_string(a.owner) + " " + a.name + "|" +
                a.command + "|" + a.icon + "]";
    return text;
}

inline std::string first_difference(const ModelPage &program, const ModelPage &model) {
    if (program.nodes.size() != model.nodes.size())
        return std::to_string(program.nodes.size()) + " nodes instead of " +
               std::to_string(model.nodes.size());
    for (std::size_t i = 0; i < model.nodes.size(); i++) {
        if (program.nodes[i] != model.nodes[i])
            return "node " + std::to_string(i) + ": " + describe(program.nodes[i]) +
                   " instead of " + describe(model.nodes[i]);
    }
    if (program.links.size() != model.links.size())
        return std::to_string(program.links.size()) + " links instead of " +
               std::to_string(model.links.size());
    for (std::size_t i = 0; i < model.links.size(); i++) {
        if (program.links[i] != model.links[i])
            return "link " + std::to_string(i);
    }
    return "";
}
