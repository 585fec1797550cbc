// Taking over calls to the system's libraries: a test that defines the pointer through which the
// program's calls go sees them, and may let them fail.
//
//     extern "C" decltype(&GetDC) imported_get_dc IMPORTED(GetDC, 4) = get_dc;
//
// argument_bytes are those of the 32-bit function, 4 for each argument.
#pragma once

#include <windows.h>

#ifdef _WIN64
#define IMPORTED(name, argument_bytes) __asm__("__imp_" #name)
#else
#define IMPORTED(name, argument_bytes) __asm__("__imp__" #name "@" #argument_bytes)
#endif

// The system's own function, which a call that was taken over passes on to.
template <typename Function>
Function system_function(const char *library, const char *name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleA(library), name)));
}
