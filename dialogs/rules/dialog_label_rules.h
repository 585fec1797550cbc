// What the label dialog does to the page; the dialog itself only shows the text.
#pragma once

#include <cstdint>

inline constexpr char LABEL_TITLE_NEW[] = "New Label";
inline constexpr char LABEL_TITLE_EXISTING[] = "Label Properties";

const char *dialog_label_title(); // for dialog_node_id
const char *dialog_label_text();  // what the edit shows at first, at most 50 characters

// OK with this text, for dialog_node_id. A new label comes to stand where the menu was opened, as
// the last node. An empty text changes no label and adds none: the caller tells by node_total that
// there is nothing to make room for and nothing to undo.
void dialog_label_store(const char *text);
