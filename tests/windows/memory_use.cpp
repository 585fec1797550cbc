#include "tests/windows/memory_use.h"

#include <windows.h>
// Needs windows.h before it.
#include <psapi.h>

#include <algorithm>
#include <array>

static long long bytes_of_heap(HANDLE heap) {
    long long bytes = 0;
    PROCESS_HEAP_ENTRY entry = {};
    HeapLock(heap);
    while (HeapWalk(heap, &entry))
        bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
    HeapUnlock(heap);
    return bytes;
}

long long heap_bytes() {
    std::array<HANDLE, 64> heaps;
    const std::size_t count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    long long bytes = 0;
    for (std::size_t i = 0; i < std::min(count, heaps.size()); i++)
        bytes += bytes_of_heap(heaps[i]);
    return bytes;
}

long long working_set_bytes() {
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof counters;
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<long long>(counters.WorkingSetSize);
}
