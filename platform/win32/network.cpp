#include "platform/network.h"

#include <winsock2.h>

static constexpr BYTE WINSOCK_MAJOR = 2;
static constexpr BYTE WINSOCK_MINOR = 2;

int network_start() {
    WSADATA data;
    if (WSAStartup(MAKEWORD(WINSOCK_MAJOR, WINSOCK_MINOR), &data) != 0)
        return 1;
    if (data.wVersion == MAKEWORD(WINSOCK_MAJOR, WINSOCK_MINOR))
        return 0;
    WSACleanup();
    return 1;
}

void network_stop() {
    WSACleanup();
}
