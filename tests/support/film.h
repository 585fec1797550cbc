// A transition as somebody standing by sees it: a value of the scene, sampled whenever the program
// waits for the clock. For tests that link orvanel_manual_clock; one film at a time.
#pragma once

#include <cstdint>
#include <vector>

struct Film {
    // Fresh manual clock and frame timer. From now on each value that differs from the one before
    // is kept; so is the first.
    explicit Film(float (*sample)());
    ~Film();
    Film(const Film &) = delete;
    Film &operator=(const Film &) = delete;

    const std::vector<float> &values() const;
    std::uint32_t milliseconds() const; // since the start
};
