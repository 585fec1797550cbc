// Puts a function in the place of one of the system's, for what the system does not do at a test's
// wish, such as to fail, or does not tell. Only calls from the program's own code are led there;
// the system's libraries go on calling the real one.
#pragma once

struct ReplacedImport {
    // Of the library and the type of the function that it replaces. Ends the test program when that
    // is not imported.
    ReplacedImport(const char *library, const char *function, void *replacement);
    ~ReplacedImport();
    ReplacedImport(const ReplacedImport &) = delete;
    ReplacedImport &operator=(const ReplacedImport &) = delete;

    void *original;
    void **place; // that all calls go by
};

// For a function as it is written in the program; the compiler sees to its type.
#define REPLACED_IMPORT(name, library, function, replacement)                                      \
    const decltype(&function) name##_function = replacement;                                       \
    const ReplacedImport name {                                                                    \
        library, #function, reinterpret_cast<void *>(name##_function)                              \
    }
