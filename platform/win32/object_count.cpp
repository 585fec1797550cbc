#include "platform/win32/object_count.h"

std::atomic<std::int32_t> object_count[OBJECT_KINDS];

// Whether there is an object to destroy; if so it no longer counts.
static bool uncount(ObjectKind kind, const void *handle) {
    if (handle != nullptr)
        object_count[kind]--;
    return handle != nullptr;
}

void object_destroy(HBITMAP bitmap) {
    if (uncount(OBJECT_BITMAP, bitmap))
        DeleteObject(bitmap);
}

void object_destroy(HFONT font) {
    if (uncount(OBJECT_FONT, font))
        DeleteObject(font);
}

void object_destroy(HDC memory_dc) {
    if (uncount(OBJECT_DC, memory_dc))
        DeleteDC(memory_dc);
}

void object_destroy(HMENU menu) {
    if (uncount(OBJECT_MENU, menu))
        DestroyMenu(menu);
}

void object_destroy(HICON icon) {
    if (uncount(OBJECT_ICON, icon))
        DestroyIcon(icon);
}
