// The model in the dialogs of objects and page objects: which catalogue entry stands for it, and
// what OK makes of the entry chosen. The catalogue must be loaded.
#pragma once

#include <cstdint>

// Catalogue entry of a model of the table; OBJECT_NONE for a file that is not in the catalogue,
// which lists what lay in the models folder itself when it was read.
std::int32_t dialog_model_entry(std::int32_t model_id);

// Entry for a new node: the one used last when the options ask for it, else the other.
std::int32_t dialog_model_entry_used_last(std::int32_t used_last, std::int32_t otherwise);

// The node takes the entry's model, read on first use. What is no entry, as OBJECT_NONE is not,
// leaves it the model that it has. The model's extents become the node's in both cases.
void dialog_model_take(std::int32_t id, std::int32_t entry);

// Keeps the entry for the next new node when the options ask for it; OBJECT_NONE, which is no
// choice, leaves the one before.
void dialog_model_remember(std::int32_t *used_last, std::int32_t entry);
