// Handing a page file to the instance that runs already: what its WM_COPYDATA message carries.
#pragma once

#include "platform/files.h"

#include <cstddef>
#include <cstdint>

inline constexpr std::uintptr_t HAND_OVER_ID = 392817;   // tells our messages from others'
inline constexpr std::size_t HAND_OVER_SIZE = PATH_SIZE; // bytes sent, whatever the path's length

// True when a command line names a page file and is worth handing over; path then holds it.
bool hand_over_write(const char *command_line, char (&path)[HAND_OVER_SIZE]);

// Takes the path out of a message that any program may have sent: data holds size bytes, perhaps
// none, perhaps without a terminator. False when there is nothing to open.
bool hand_over_read(std::uintptr_t id, const void *data, std::size_t size,
                    char (&path)[HAND_OVER_SIZE]);

// The message may arrive while a dialog, a menu or a question is open, or before everything is
// started. The page shown must not be exchanged under any of them: the path is kept until the main
// loop takes it. Of several the last one counts.
void hand_over_keep(const char *path);
bool hand_over_take(char (&path)[HAND_OVER_SIZE]); // false when none is kept
