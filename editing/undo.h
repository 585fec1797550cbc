// Undo and redo: two stacks of snapshots of the whole page, its nodes and its links. An editing
// command pushes one before it changes the page and rejects it when nothing came of the change.
// All memory is taken at start-up but for action records, made when a slot is first needed.
#pragma once

#include "page/node.h"

#include <cstdint>

inline constexpr std::int32_t UNDO_CAPACITY = 50; // snapshots in each stack

struct UndoSnapshot {
    std::int32_t node_count; // node_total and line_total when it was taken
    std::int32_t line_count;
    Node *nodes; // owned, NODE_CAPACITY records with actions of their own
    Line *lines; // owned, LINE_CAPACITY records
};

// The newest snapshot is the last one in use. A stack that could not be allocated whole is never
// used: pushing does nothing then.
extern UndoSnapshot *undo_stack, *redo_stack;
extern std::int32_t undo_total, redo_total; // snapshots in use

// ---- life (undo.cpp)
void undo_init(); // once, after node_init_nodes; a message for each stack that there is no memory
                  // for
void undo_stop();

// Nothing to undo or redo any more: whenever another page is shown, or the file's state of this
// one.
void undo_reset();
void redo_reset();

// ---- around a change (undo.cpp)
// Snapshot of the page as it is; the oldest of a full stack is lost for it. The redo stack stays: a
// command that changes the page calls redo_reset itself.
void undo_push();
void redo_push();

// After a change to one node: forgets the newest snapshot again when place, model, number of
// actions, name and description are as they were, else redo_reset. What the actions say is not
// compared, on purpose. An index that the snapshot or the page does not hold counts as changed.
void undo_duplicate_check(std::int32_t index);

// Forgets the newest snapshot: the change was called off. Nothing is restored.
void undo_reject();

// ---- going back and forth (undo.cpp)
// 1 when there is nothing to undo or redo, else 0: the sense is inverted on purpose.
std::int32_t undo_available();
std::int32_t redo_available();

void undo_pop(); // the page goes onto the redo stack
void redo_pop(); // the page goes onto the undo stack; what is left to redo stays

// ---- what both stacks share
// False when memory for actions ran out: the snapshot is not fit to be restored.
bool undo_common_stack_push(UndoSnapshot *entry); // undo.cpp

// Puts the page back: the floor glides to what changes place when that is out of view, what goes
// fades out, what comes fades in. Marks the snapshot's nodes while doing so (undo_restore.cpp).
void undo_common_stack_pop(UndoSnapshot *entry);
