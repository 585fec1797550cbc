// A disk that is full, for native tests: no file grows beyond so many bytes, and writing fails
// there.
#pragma once

#include <csignal>
#include <sys/resource.h>

struct FullDisk {
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &usual);
        const rlimit limit = {bytes, usual.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &usual);
        std::signal(SIGXFSZ, handler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

    rlimit usual = {};
    void (*handler)(int) = std::signal(SIGXFSZ, SIG_IGN); // else it ends the program
};
