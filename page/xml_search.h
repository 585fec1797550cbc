// The search behind xml_get_element. Each tag remembers what earlier searches of the same text
// found out about it, so that beyond the next few brackets no stretch is searched twice for it.
#pragma once

// Makes everything that tags remember void: for a new text.
void xml_search_forget();
