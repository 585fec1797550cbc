// The system's network library. The posix side needs none and pretends (platform/posix/recorder.h).
#pragma once

// Once at start-up. 0, or 1 when there is no usable network library.
int network_start();
void network_stop();
