#include "editing/undo.h"

#include "platform/message.h"
#include "platform/text.h"
#include "scene/scene_page.h"

#include <new>

UndoSnapshot *undo_stack, *redo_stack;
std::int32_t undo_total, redo_total;

// The page that the stacks hold snapshots of.
static char history_page[SCENE_FILE_NAME_SIZE];

// ---- life

struct StackMessages {
    const char *stack, *nodes, *lines;
};
static constexpr char NO_LINES[] = "Failed to allocate undo memory (3)"; // of either stack
static constexpr StackMessages UNDO_MESSAGES = {"Failed to allocate undo memory (1)",
                                                "Failed to allocate undo memory (2)", NO_LINES};
static constexpr StackMessages REDO_MESSAGES = {"Failed to allocate undo memory (4)",
                                                "Failed to allocate undo memory (5)", NO_LINES};

// What there was no memory for, or null. The action slots of the nodes start empty.
static const char *allocate_entry(UndoSnapshot *entry, const StackMessages &messages) {
    entry->nodes = new (std::nothrow) Node[NODE_CAPACITY]{};
    if (entry->nodes == nullptr)
        return messages.nodes;
    entry->lines = new (std::nothrow) Line[LINE_CAPACITY]{};
    return entry->lines == nullptr ? messages.lines : nullptr;
}

static const char *allocate_entries(UndoSnapshot *stack, const StackMessages &messages) {
    if (stack == nullptr)
        return messages.stack;
    const char *missing = nullptr;
    for (std::int32_t i = 0; i < UNDO_CAPACITY && missing == nullptr; i++)
        missing = allocate_entry(&stack[i], messages);
    return missing;
}

static UndoSnapshot *allocate_stack(const StackMessages &messages) {
    UndoSnapshot *stack = new (std::nothrow) UndoSnapshot[UNDO_CAPACITY]{};
    const char *missing = allocate_entries(stack, messages);
    if (missing != nullptr)
        message_box(missing, MESSAGE_CAPTION, MessageIcon::Exclamation);
    return stack;
}

static void free_stack(UndoSnapshot *stack) {
    if (stack == nullptr)
        return;
    for (std::int32_t i = 0; i < UNDO_CAPACITY; i++) {
        for (std::int32_t id = 0; stack[i].nodes != nullptr && id < NODE_CAPACITY; id++)
            node_free_node_actions(&stack[i].nodes[id]);
        delete[] stack[i].nodes;
        delete[] stack[i].lines;
    }
    delete[] stack;
}

void undo_init() {
    undo_reset();
    undo_stack = allocate_stack(UNDO_MESSAGES);
    redo_stack = allocate_stack(REDO_MESSAGES);
}

void undo_stop() {
    undo_reset();
    free_stack(undo_stack);
    free_stack(redo_stack);
    undo_stack = nullptr;
    redo_stack = nullptr;
}

void undo_reset() {
    undo_total = 0;
    redo_reset();
}

void redo_reset() {
    redo_total = 0;
}

// Snapshots of one page are never put into another, even when nobody said that it has changed.
static void forget_other_page() {
    if (text_equal(history_page, scene_page_file_name))
        return;
    undo_reset();
    text_copy(history_page, scene_page_file_name);
}

// ---- snapshots

// Memory is taken in order: the last of it is there when all is.
static bool is_whole(const UndoSnapshot *stack) {
    return stack != nullptr && stack[UNDO_CAPACITY - 1].lines != nullptr;
}

static bool has_all_actions(const Node &copy, const Node &original) {
    for (std::int32_t i = 0; i < original.action_count && i < NODE_ACTIONS; i++) {
        if (copy.actions[i] == nullptr && original.actions[i] != nullptr)
            return false;
    }
    return true;
}

// False when memory ran out.
static bool copy_nodes(Node *target, const Node *source, std::int32_t count) {
    bool complete = true;
    for (std::int32_t id = 0; id < count; id++) {
        node_copy_node2(&target[id], &source[id]);
        complete = has_all_actions(target[id], source[id]) && complete;
    }
    return complete;
}

static void copy_lines(Line *target, const Line *source, std::int32_t count) {
    for (std::int32_t i = 0; i < count; i++)
        line_copy_line2(&target[i], &source[i]);
}

bool undo_common_stack_push(UndoSnapshot *entry) {
    if (entry->nodes == nullptr || entry->lines == nullptr)
        return false;
    entry->node_count = node_total;
    const bool complete = copy_nodes(entry->nodes, node, node_total);
    entry->line_count = line_total;
    copy_lines(entry->lines, line, line_total);
    return complete;
}

// Makes room at the end by copying every snapshot over the one before. Records are copied rather
// than handed on, on purpose: each entry keeps its own.
static bool discard_oldest(UndoSnapshot *stack) {
    bool complete = true;
    for (std::int32_t k = 1; k < UNDO_CAPACITY; k++) {
        UndoSnapshot *target = &stack[k - 1];
        const UndoSnapshot *source = &stack[k];
        target->node_count = source->node_count;
        complete = copy_nodes(target->nodes, source->nodes, source->node_count) && complete;
        target->line_count = source->line_count;
        copy_lines(target->lines, source->lines, source->line_count);
    }
    return complete;
}

// When memory runs out the stack is emptied: a page without some of its actions is worse than no
// way back, and one snapshot less would make undo_reject take another one's.
static void push(UndoSnapshot *stack, std::int32_t *total) {
    forget_other_page();
    if (!is_whole(stack))
        return;
    bool complete = true;
    if (*total >= UNDO_CAPACITY) {
        complete = discard_oldest(stack);
        *total = UNDO_CAPACITY - 1;
    }
    complete = undo_common_stack_push(&stack[*total]) && complete;
    *total = complete ? *total + 1 : 0;
}

void undo_push() {
    push(undo_stack, &undo_total);
}

void redo_push() {
    push(redo_stack, &redo_total);
}

// ---- after a change

static bool is_same(const Node &saved, const Node &live) {
    return saved.x == live.x && saved.y == live.y && saved.model_id == live.model_id &&
           saved.action_count == live.action_count && text_equal(saved.name, live.name) &&
           text_equal(saved.description, live.description);
}

static bool is_unchanged(const UndoSnapshot &snapshot, std::int32_t index) {
    return node_is_live(index) && index < snapshot.node_count &&
           is_same(snapshot.nodes[index], node[index]);
}

void undo_duplicate_check(std::int32_t index) {
    forget_other_page();
    if (undo_total <= 0)
        return;
    if (is_unchanged(undo_stack[undo_total - 1], index))
        undo_total--;
    else
        redo_reset();
}

void undo_reject() {
    if (undo_total > 0)
        undo_total--;
}

// ---- going back and forth

std::int32_t undo_available() {
    forget_other_page();
    return undo_total <= 0 ? 1 : 0;
}

std::int32_t redo_available() {
    forget_other_page();
    return redo_total <= 0 ? 1 : 0;
}

void undo_pop() {
    forget_other_page();
    if (undo_total <= 0)
        return;
    redo_push();
    undo_total--;
    undo_common_stack_pop(&undo_stack[undo_total]);
}

void redo_pop() {
    forget_other_page();
    if (redo_total <= 0)
        return;
    undo_push();
    redo_total--;
    undo_common_stack_pop(&redo_stack[redo_total]);
}
