// File name patterns: '*' stands for any run of characters, '?' for any one, ASCII letters match
// in either case. Both sides use it, so that a short file name behind a long one never counts.
#pragma once

bool wildcard_match(const char *pattern, const char *name);
