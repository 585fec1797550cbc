// Servers that break off, lie, never end or say nothing, and how a download from each of them ends:
// by the client's code, and by the last step that the download of an update tells its dialog.
#pragma once

#include "tests/support/http_server.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

// The bound of one body for these servers (http_client_limits): those that never end come beyond it
// soon.
inline constexpr std::int64_t HOSTILE_DISK_BYTES = 2 * 1024 * 1024;

// How long a silent server is silent before it sees to it that the client's time-out is over, in
// milliseconds. No real time-out: a loaded machine would run into it before everything is sent.
extern std::atomic<std::uint32_t> hostile_silence;

// What answers any request, with a body that is short.
struct HostileServer {
    std::string name;
    HttpScript script;
    std::int32_t memory; // code of the download to memory
    std::string in_memory;
    std::int32_t disk; // code of the one to disk
    std::string on_disk;
    bool reads_request = true; // the server does
    // No length is announced, or that of a byte: the first one counts as the whole installer.
    bool byte_is_installer = false;
};

extern const std::vector<HostileServer> HOSTILE_CLOSED, HOSTILE_SPLIT, HOSTILE_STATUS,
    HOSTILE_LINES, HOSTILE_LENGTHS, HOSTILE_BODIES, HOSTILE_URGENT, HOSTILE_WITHOUT_END,
    HOSTILE_SILENT;

// What answers the requests for an update: installers of the usual size, with their signatures.
struct HostileUpdate {
    std::string name;
    HttpScript installer;
    std::int32_t end;      // AutoUpdateStep
    std::string file = ""; // what was written when it is complete
    const char *key = "";  // that the program knows; empty = it asks for no signature
    HttpScript signature = {};
    bool reads_request = true;
};

extern const std::vector<HostileUpdate> HOSTILE_INSTALLERS, HOSTILE_SIGNATURES;

// A server of the first kind as one of the second.
HostileUpdate hostile_update(const HostileServer &server);
// These of the first kind, and all of the second.
std::vector<HostileUpdate>
hostile_updates(std::initializer_list<const std::vector<HostileServer> *> servers);

inline void PrintTo(const HostileServer &server, std::ostream *stream) {
    *stream << server.name;
}

inline void PrintTo(const HostileUpdate &update, std::ostream *stream) {
    *stream << update.name;
}

// Names the tests of such a table.
template <typename Hostile>
std::string hostile_name(const testing::TestParamInfo<Hostile> &info) {
    return info.param.name;
}
