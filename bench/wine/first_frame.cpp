#include "bench/wine/first_frame.h"

#include <windows.h>

void first_frame_shown() {
    static bool told = false;
    if (told)
        return;
    told = true;
    const HANDLE event = OpenEventA(EVENT_MODIFY_STATE, FALSE, FIRST_FRAME_EVENT);
    if (event == nullptr)
        return;
    SetEvent(event);
    CloseHandle(event);
}
