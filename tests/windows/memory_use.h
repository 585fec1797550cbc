// What the process holds of memory, for the tests that nothing is left behind.
#pragma once

// Bytes that are allocated in all heaps of the process: exact to the byte, but without what a
// driver takes from the system by other ways.
long long heap_bytes();

// Bytes of all memory in use, the driver's with it. Wine knows no other count of the whole process.
long long working_set_bytes();
