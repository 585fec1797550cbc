#include "platform/message.h"

#include "platform/win32/message_over.h"
#include "platform/win32/window_attach.h"

#include <string>

static std::wstring decode(unsigned code_page, DWORD flags, const char *text) {
    const int length = MultiByteToWideChar(code_page, flags, text, -1, nullptr, 0);
    if (length <= 0)
        return {};
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(code_page, flags, text, -1, wide.data(), length);
    wide.resize(static_cast<std::size_t>(length) - 1);
    return wide;
}

// Our own texts are UTF-8, but paths inside them come in the system's code page: what is no valid
// UTF-8 is taken as that.
static std::wstring wide_text(const char *text) {
    const std::wstring wide = decode(CP_UTF8, MB_ERR_INVALID_CHARS, text);
    return wide.empty() ? decode(CP_ACP, 0, text) : wide;
}

static UINT icon_flag(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::Information:
        return MB_ICONINFORMATION;
    case MessageIcon::Exclamation:
        return MB_ICONEXCLAMATION;
    case MessageIcon::Question:
        return MB_ICONQUESTION;
    case MessageIcon::Error:
        return MB_ICONERROR;
    default:
        return 0;
    }
}

static UINT button_flag(MessageButtons buttons) {
    switch (buttons) {
    case MessageButtons::YesNo:
        return MB_YESNO;
    case MessageButtons::YesNoCancel:
        return MB_YESNOCANCEL;
    case MessageButtons::YesNoCareful:
        return MB_YESNO | MB_DEFBUTTON2;
    default:
        return MB_OK;
    }
}

// An owner that takes no input, because a dialog is open over it, is left like that: not every
// system does so by itself.
static int show_box(HWND owner, const char *text, const char *caption, UINT flags) {
    const bool was_disabled = owner != nullptr && IsWindowEnabled(owner) == 0;
    const int answer =
        MessageBoxW(owner, wide_text(text).c_str(), wide_text(caption).c_str(), flags);
    if (was_disabled)
        EnableWindow(owner, FALSE);
    return answer;
}

MessageAnswer message_box_over(HWND owner, const char *text, const char *caption, MessageIcon icon,
                               MessageButtons buttons) {
    switch (show_box(owner, text, caption, icon_flag(icon) | button_flag(buttons))) {
    case IDYES:
        return MessageAnswer::Yes;
    case IDNO:
        return MessageAnswer::No;
    case IDOK:
        return MessageAnswer::Ok;
    default:
        return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Cancel;
    }
}

MessageAnswer message_box(const char *text, const char *caption, MessageIcon icon,
                          MessageButtons buttons) {
    return message_box_over(static_cast<HWND>(window_in_front()), text, caption, icon, buttons);
}
