// The search behind xml_get_element. It remembers what earlier searches of the same text found out
// about each tag, so that no tag is looked for twice in the same stretch.
#pragma once

// Drops what is remembered: for a new text.
void xml_search_forget();
