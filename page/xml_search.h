// The search behind xml_get_element. Each tag remembers what earlier searches of the same text
// found out about it, so that none is looked for twice in the same stretch.
#pragma once

// Makes everything that tags remember void: for a new text.
void xml_search_forget();
