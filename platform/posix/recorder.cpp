#include "platform/posix/recorder.h"

#include "platform/posix/drives.h"

Recorder recorder;

void recorder_reset() {
    recorder = Recorder{};
    drives_reset();
}
