#include "tests/support/short_memory.h"

#include <cstdlib>
#include <new>

static bool counting;
static std::int32_t made, refused_number;
static std::size_t bytes_made;

ShortMemory::ShortMemory(std::int32_t refused) {
    counting = true;
    made = 0;
    bytes_made = 0;
    refused_number = refused;
}

ShortMemory::~ShortMemory() {
    counting = false;
}

std::int32_t ShortMemory::requests() const {
    return made;
}

std::size_t ShortMemory::bytes() const {
    return bytes_made;
}

static void *allocate_or_refuse(std::size_t size) {
    if (counting) {
        bytes_made += size;
        if (++made == refused_number)
            return nullptr;
    }
    return std::malloc(size);
}

static void *allocate(std::size_t size) {
    void *block = std::malloc(size);
    if (block == nullptr)
        std::abort();
    return block;
}

void *operator new(std::size_t size) {
    return allocate(size);
}
void *operator new[](std::size_t size) {
    return allocate(size);
}
void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
    return allocate_or_refuse(size);
}
void *operator new[](std::size_t size, const std::nothrow_t &) noexcept {
    return allocate_or_refuse(size);
}
void operator delete(void *block) noexcept {
    std::free(block);
}
void operator delete[](void *block) noexcept {
    std::free(block);
}
void operator delete(void *block, std::size_t) noexcept {
    std::free(block);
}
void operator delete[](void *block, std::size_t) noexcept {
    std::free(block);
}
void operator delete(void *block, const std::nothrow_t &) noexcept {
    std::free(block);
}
void operator delete[](void *block, const std::nothrow_t &) noexcept {
    std::free(block);
}
