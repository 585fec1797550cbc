// The memory that a piece of work takes.
#pragma once

#include <functional>

// Bytes that the work asks the heap for and holds at its peak, without what the heap itself adds;
// what stood before is not counted. Work that is done by libraries counts when they allocate with
// operator new, or with the functions that this program gives them (std::malloc, std::free).
double memory_peak(const std::function<void()> &work);
