#include "bench/memory_count.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <unordered_map>

static bool counting;
static std::size_t in_use, peak; // bytes
static std::unordered_map<void *, std::size_t> *sizes;

static void *count(void *block, std::size_t size) {
    if (!counting || block == nullptr)
        return block;
    counting = false; // the table takes memory itself
    sizes->insert_or_assign(block, size);
    counting = true;
    in_use += size;
    peak = std::max(peak, in_use);
    return block;
}

static void *count_freed(void *block) {
    if (!counting || block == nullptr)
        return block;
    counting = false;
    if (const auto entry = sizes->find(block); entry != sizes->end()) {
        in_use -= entry->second;
        sizes->erase(entry);
    }
    counting = true;
    return block;
}

double memory_peak(const std::function<void()> &work) {
    std::unordered_map<void *, std::size_t> table;
    sizes = &table;
    in_use = peak = 0;
    counting = true;
    work();
    counting = false;
    return static_cast<double>(peak);
}

// The linker puts these in the place of the library's for all that is linked into this program
// (bench/CMakeLists.txt).
extern "C" {
void *__real_malloc(std::size_t size);
void *__real_calloc(std::size_t number, std::size_t size);
void *__real_realloc(void *block, std::size_t size);
void __real_free(void *block);

void *__wrap_malloc(std::size_t size) {
    return count(__real_malloc(size), size);
}

void *__wrap_calloc(std::size_t number, std::size_t size) {
    return count(__real_calloc(number, size), number * size);
}

void *__wrap_realloc(void *block, std::size_t size) {
    return count(__real_realloc(count_freed(block), size), size);
}

void __wrap_free(void *block) {
    __real_free(count_freed(block));
}
}

void *operator new(std::size_t size) {
    void *block = std::malloc(size);
    if (block == nullptr)
        std::abort();
    return block;
}

void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
    return std::malloc(size);
}

void operator delete(void *block) noexcept {
    std::free(block);
}

void operator delete(void *block, std::size_t) noexcept {
    std::free(block);
}
