// The calls on a socket that both systems name alike: for the two sides of platform/network.h, and
// for servers in tests, which are no clients.
#pragma once

#include "platform/network.h"

#ifdef _WIN32
#include <winsock2.h>
using SocketNumber = SOCKET;
using SocketLength = int;
#else
#include <netinet/in.h>
#include <sys/socket.h>
using SocketNumber = int;
using SocketLength = socklen_t;
#endif

inline SocketNumber socket_number(NetworkSocket socket) {
    return static_cast<SocketNumber>(socket);
}

// address is in the order of the network, port in the machine's.
inline sockaddr_in socket_address(std::uint32_t address, std::uint16_t port) {
    sockaddr_in target{};
    target.sin_family = AF_INET;
    target.sin_port = htons(port);
    target.sin_addr.s_addr = address;
    return target;
}

// False as well when a socket that does not wait has only begun: the system's error tells.
inline bool socket_connect(NetworkSocket socket, std::uint32_t address, std::uint16_t port) {
    const sockaddr_in target = socket_address(address, port);
    return connect(socket_number(socket), reinterpret_cast<const sockaddr *>(&target),
                   sizeof target) == 0;
}

// Whether the socket has not failed since it was last asked.
inline bool socket_is_sound(NetworkSocket socket) {
    int error = 0;
    SocketLength size = sizeof error;
    return getsockopt(socket_number(socket), SOL_SOCKET, SO_ERROR, reinterpret_cast<char *>(&error),
                      &size) == 0 &&
           error == 0;
}

template <typename Value>
void socket_set(NetworkSocket socket, int level, int option, const Value &value) {
    setsockopt(socket_number(socket), level, option, reinterpret_cast<const char *>(&value),
               sizeof value);
}
