#include "app/hand_over.h"

#include "app/startup.h"
#include "platform/text.h"

#include <algorithm>
#include <cstring>

static char kept[HAND_OVER_SIZE]; // empty = none

bool hand_over_write(const char *command_line, char (&path)[HAND_OVER_SIZE]) {
    std::memset(path, 0, sizeof path); // all of it is sent
    if (!startup_names_page(command_line))
        return false;
    text_copy(path, command_line);
    return true;
}

bool hand_over_read(std::uintptr_t id, const void *data, std::size_t size,
                    char (&path)[HAND_OVER_SIZE]) {
    path[0] = '\0';
    if (id != HAND_OVER_ID || data == nullptr)
        return false;
    const char *text = static_cast<const char *>(data);
    const std::size_t length = strnlen(text, std::min(size, HAND_OVER_SIZE - 1));
    std::memcpy(path, text, length);
    path[length] = '\0';
    return length > 0;
}

void hand_over_keep(const char *path) {
    text_copy(kept, path);
}

bool hand_over_take(char (&path)[HAND_OVER_SIZE]) {
    text_copy(path, kept);
    kept[0] = '\0';
    return path[0] != '\0';
}
