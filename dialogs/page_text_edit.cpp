#include "dialogs/page_text_edit.h"

#include <commctrl.h>

#include <algorithm>
#include <string>

static constexpr UINT_PTR SUBCLASS_ID = 1;
static constexpr wchar_t BALLOON_TITLE[] = L"This character cannot be used";
static constexpr wchar_t BALLOON_TEXT[] =
    L"Page files mark their values with <, so no text of a page can contain it.";

// Other signs too turn into it in the code page that page files are written in: the wide form of
// East Asian fonts, for one.
static bool is_refused(wchar_t character) {
    char narrow[4] = "";
    WideCharToMultiByte(CP_ACP, 0, &character, 1, narrow, sizeof narrow, nullptr, nullptr);
    return narrow[0] == PAGE_TEXT_REFUSED;
}

static void tell_why(HWND edit) {
    EDITBALLOONTIP balloon = {};
    balloon.cbStruct = sizeof balloon;
    balloon.pszTitle = BALLOON_TITLE;
    balloon.pszText = BALLOON_TEXT;
    balloon.ttiIcon = TTI_WARNING;
    SendMessageW(edit, EM_SHOWBALLOONTIP, 0, reinterpret_cast<LPARAM>(&balloon));
}

static std::wstring text_of(HWND edit) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(edit)) + 1, L'\0');
    const int length = GetWindowTextW(edit, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

// Takes the character out of the text, whatever way it came in; the caret stays where it is in what
// is left. Nothing of it can be undone, as that would bring the character back.
static void clean(HWND edit) {
    std::wstring text = text_of(edit);
    if (std::ranges::none_of(text, is_refused))
        return;
    DWORD caret = 0;
    SendMessageW(edit, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&caret));
    const std::wstring before = text.substr(0, caret);
    const auto left = static_cast<LPARAM>(caret) - std::ranges::count_if(before, is_refused);
    std::erase_if(text, is_refused);
    SetWindowTextW(edit, text.c_str());
    SendMessageW(edit, EM_SETSEL, static_cast<WPARAM>(left), left);
    SendMessageW(edit, EM_SETMODIFY, TRUE, 0);
    tell_why(edit);
}

static std::wstring clipboard_text(HWND edit) {
    std::wstring text;
    if (OpenClipboard(edit) == 0)
        return text;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
        if (const wchar_t *locked = static_cast<const wchar_t *>(GlobalLock(data)))
            text.assign(locked, wcsnlen(locked, GlobalSize(data) / sizeof(wchar_t)));
        GlobalUnlock(data);
    }
    CloseClipboard();
    return text;
}

// Replacing the selection does not keep to the limit by itself.
static std::size_t room(HWND edit) {
    DWORD begin = 0, end = 0;
    SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    const LRESULT limit = SendMessageW(edit, EM_GETLIMITTEXT, 0, 0);
    const LRESULT rest = GetWindowTextLengthW(edit) - static_cast<LRESULT>(end - begin);
    return limit > rest ? static_cast<std::size_t>(limit - rest) : 0;
}

// True when the clipboard held the character, so that the rest of its first line has been pasted.
static bool paste_rest(HWND edit) {
    std::wstring text = clipboard_text(edit);
    if (std::ranges::none_of(text, is_refused))
        return false;
    text.resize(std::min(text.find_first_of(L"\r\n"), text.size()));
    std::erase_if(text, is_refused);
    text.resize(std::min(text.size(), room(edit)));
    SendMessageW(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    return true;
}

// Typing and pasting are seen to beforehand. Text that an input method is still composing is left
// alone: it may turn into something else.
static bool brings_text(UINT message, LPARAM lparam) {
    switch (message) {
    case WM_SETTEXT: // helpers for people who do not type send it, too
    case WM_UNDO:
    case EM_UNDO:
    case EM_REPLACESEL:
        return true;
    case WM_IME_COMPOSITION:
        return (lparam & GCS_RESULTSTR) != 0;
    default:
        return false;
    }
}

static LRESULT CALLBACK filter(HWND edit, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                               DWORD_PTR) {
    switch (message) {
    case WM_CHAR:
        if (!is_refused(static_cast<wchar_t>(wparam)))
            break;
        tell_why(edit);
        return 0;
    case WM_PASTE:
        if (!paste_rest(edit))
            break;
        tell_why(edit);
        return 0;
    case WM_NCDESTROY:
        RemoveWindowSubclass(edit, filter, id);
        break;
    default:
        break;
    }
    const LRESULT result = DefSubclassProc(edit, message, wparam, lparam);
    if (brings_text(message, lparam))
        clean(edit);
    return result;
}

void page_text_edit_attach(HWND edit, int length) {
    SendMessageA(edit, EM_SETLIMITTEXT, static_cast<WPARAM>(length), 0);
    SetWindowSubclass(edit, filter, SUBCLASS_ID, 0);
}
