// Stands for the headers that are compiled once for all tests (tests/CMakeLists.txt).
