#include "platform/network.h"

#include "platform/posix/recorder.h"

int network_start() {
    if (recorder.network_missing)
        return 1;
    recorder.network_users++;
    return 0;
}

void network_stop() {
    recorder.network_users--;
}
