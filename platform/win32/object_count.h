// Counts what the program makes and destroys of the system's drawing and user objects: a leak of a
// few shows nowhere else. Whoever makes such an object passes it through object_made and destroys
// it with object_destroy.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>

enum ObjectKind : std::int32_t {
    OBJECT_BITMAP,
    OBJECT_FONT,
    OBJECT_DC,
    OBJECT_MENU,
    OBJECT_ICON,
    OBJECT_RECORD, // memory attached to one of the others
    OBJECT_KINDS,
};

// Made and not destroyed yet, by kind, on whatever thread. Falls below zero when something was made
// past the count.
extern std::atomic<std::int32_t> object_count[OBJECT_KINDS];

// Counts a new object and passes it on; null (it could not be made) is not counted.
template <typename Handle>
Handle object_made(ObjectKind kind, Handle handle) {
    if (handle != nullptr)
        object_count[kind]++;
    return handle;
}

// Null is allowed everywhere. A menu destroys the submenus attached to it: take them off before.
void object_destroy(HBITMAP bitmap);
void object_destroy(HFONT font);
void object_destroy(HDC memory_dc);
void object_destroy(HMENU menu);
void object_destroy(HICON icon);

template <typename Record>
void object_destroy_record(Record *record) {
    if (record != nullptr)
        object_count[OBJECT_RECORD]--;
    delete record;
}
