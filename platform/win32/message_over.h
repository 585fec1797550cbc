// Message boxes of dialogs.
#pragma once

#include "platform/message.h"

#include <windows.h>

// As message_box, but over this window, which takes no input meanwhile.
MessageAnswer message_box_over(HWND owner, const char *text, const char *caption, MessageIcon icon,
                               MessageButtons buttons = MessageButtons::Ok);
