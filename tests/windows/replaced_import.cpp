#include "tests/windows/replaced_import.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>

static const char *at(DWORD offset) {
    return reinterpret_cast<const char *>(GetModuleHandleA(nullptr)) + offset;
}

static const IMAGE_IMPORT_DESCRIPTOR *first_library() {
    const auto *dos = reinterpret_cast<const IMAGE_DOS_HEADER *>(at(0));
    const auto *headers =
        reinterpret_cast<const IMAGE_NT_HEADERS *>(at(static_cast<DWORD>(dos->e_lfanew)));
    return reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR *>(
        at(headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress));
}

// Null when the library has no such function, or a number instead of its name.
static void **find_in(const IMAGE_IMPORT_DESCRIPTOR &library, const char *function) {
    const auto *name = reinterpret_cast<const IMAGE_THUNK_DATA *>(at(library.OriginalFirstThunk));
    const auto *place = reinterpret_cast<const IMAGE_THUNK_DATA *>(at(library.FirstThunk));
    for (; name->u1.AddressOfData != 0; name++, place++) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
            continue;
        const auto *import = reinterpret_cast<const IMAGE_IMPORT_BY_NAME *>(
            at(static_cast<DWORD>(name->u1.AddressOfData)));
        if (lstrcmpA(import->Name, function) == 0)
            return reinterpret_cast<void **>(const_cast<IMAGE_THUNK_DATA *>(place));
    }
    return nullptr;
}

static void **find(const char *library, const char *function) {
    for (const IMAGE_IMPORT_DESCRIPTOR *each = first_library(); each->Name != 0; each++) {
        void **place = lstrcmpiA(at(each->Name), library) == 0 ? find_in(*each, function) : nullptr;
        if (place != nullptr)
            return place;
    }
    std::fprintf(stderr, "%s is not imported from %s\n", function, library);
    std::abort();
}

static void write(void **place, void *function) {
    DWORD before;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
    *place = function;
    VirtualProtect(place, sizeof *place, before, &before);
}

ReplacedImport::ReplacedImport(const char *library, const char *function, void *replacement)
    : place(find(library, function)) {
    original = *place;
    write(place, replacement);
}

ReplacedImport::~ReplacedImport() {
    write(place, original);
}
