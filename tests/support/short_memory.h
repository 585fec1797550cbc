// Memory that runs out when a test wants it to. Only requests that are prepared for a refusal,
// those of new (std::nothrow), are counted and refused. One at a time.
#pragma once

#include <cstddef>
#include <cstdint>

struct ShortMemory {
    // Refuses the request of this number, 1 being the next one; 0 = only counts.
    explicit ShortMemory(std::int32_t refused = 0);
    ~ShortMemory();
    ShortMemory(const ShortMemory &) = delete;
    ShortMemory &operator=(const ShortMemory &) = delete;

    std::int32_t requests() const; // so far
    std::size_t bytes() const;     // asked for by them all
};
