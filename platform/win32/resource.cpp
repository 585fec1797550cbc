#include "platform/resource.h"

#include "platform/dib.h"

#include <windows.h>

int resource_bitmap(int id, BitmapPixels *pixels) {
    *pixels = {};
    const HMODULE module = GetModuleHandleA(nullptr);
    const HRSRC resource =
        FindResourceA(module, MAKEINTRESOURCEA(id), MAKEINTRESOURCEA(2)); // RT_BITMAP
    if (resource == nullptr)
        return 1;
    // Resources lie in the program's image: nothing is to be freed.
    const HGLOBAL loaded = LoadResource(module, resource);
    const void *bytes = loaded == nullptr ? nullptr : LockResource(loaded);
    if (bytes == nullptr)
        return 1;
    return dib_decode({static_cast<const std::uint8_t *>(bytes), SizeofResource(module, resource)},
                      pixels);
}
