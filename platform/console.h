// Debug console. It is empty on purpose: the calls mark where diagnostics would go and cost
// nothing.
#pragma once

#include "platform/text.h"

inline void console_start() {}
inline void console_stop() {}
inline void console_printf(const char *, ...) TEXT_PRINTF_LIKE(1, 2);
inline void console_printf(const char *, ...) {}
inline void console_draw() {}
inline void console_toggle() {}
inline void console_cls() {}
