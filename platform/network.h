// The system's network library: TCP sockets over IPv4, host names, and the system's proxy setting.
// The posix side's sockets are real; whether there is a network, and the proxy setting, tests
// decide there (platform/posix/recorder.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Once at start-up. 0, or 1 when there is no usable network library.
int network_start();
void network_stop();

// Addresses are in the order of the network, as the library has them. False = there is none.
bool network_find_host(const char *name, std::uint32_t *address);      // by name
bool network_find_address(const char *dotted, std::uint32_t *address); // looks the host up as well

using NetworkSocket = std::intptr_t; // as the system numbers it
inline constexpr NetworkSocket NETWORK_NO_SOCKET = -1;

// A TCP socket, or NETWORK_NO_SOCKET. Ends with network_close.
NetworkSocket network_open();
void network_close(NetworkSocket socket);

// Begins to connect. network_wait tells when it has ended, network_connected how; then the other
// functions may be used. False when it cannot even begin.
bool network_connect(NetworkSocket socket, std::uint32_t address, std::uint16_t port);
bool network_connected(NetworkSocket socket);

enum class NetworkWait { ToConnect, ToReceive };

// Waits so many milliseconds at most. False when nothing has happened by then; true as well when
// the socket has failed, which the next function then says.
bool network_wait(NetworkSocket socket, NetworkWait what, std::uint32_t milliseconds);

// How long one receive and one send wait at most.
void network_set_timeouts(NetworkSocket socket, std::uint32_t milliseconds);

inline constexpr int NETWORK_FAILED = -1;
inline constexpr int NETWORK_TIMED_OUT = -2;

// One call of the system each. Bytes, 0 at the end of the data, or a code from above.
int network_receive(NetworkSocket socket, char *bytes, std::size_t size);
int network_send(NetworkSocket socket, const char *bytes, std::size_t size);

enum NetworkAccess : std::int32_t { NETWORK_DIRECT = 1, NETWORK_NAMED_PROXY = 3 };

struct ProxySetting {
    std::int32_t access; // NetworkAccess, or another of the system's
    std::string proxies; // "host:port", or "http=host:port;…" with one for each protocol
    std::string bypass;  // hosts that are reached directly
};

// The setting of the whole process. 0, or 1 when the system tells none.
int network_proxy_setting(ProxySetting *setting);
