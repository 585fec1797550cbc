#include "dialogs/hyperlinks.h"

#include "platform/win32/object_count.h"

static constexpr char ORIGINAL_PROC[] = "_Hyperlink_Original_Proc_";
static constexpr char ORIGINAL_FONT[] = "_Hyperlink_Original_Font_";
static constexpr char UNDERLINE_FONT[] = "_Hyperlink_Underline_Font_";
static constexpr char FROM_STATIC[] = "_Hyperlink_From_Static_";

static constexpr COLORREF LINK_COLOUR = RGB(0, 0, 0);

static WNDPROC original_proc(HWND window) {
    return reinterpret_cast<WNDPROC>(reinterpret_cast<LONG_PTR>(GetPropA(window, ORIGINAL_PROC)));
}

static bool subclass(HWND window, WNDPROC procedure) {
    const LONG_PTR original = GetWindowLongPtrA(window, GWLP_WNDPROC);
    if (!SetPropA(window, ORIGINAL_PROC, reinterpret_cast<HANDLE>(original)))
        return false;
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    return true;
}

// Returns the procedure that is in force again.
static WNDPROC unsubclass(HWND window) {
    const WNDPROC original = original_proc(window);
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original));
    RemovePropA(window, ORIGINAL_PROC);
    return original;
}

// ---- the parent

static LRESULT colour_static(HWND parent, WPARAM wparam, LPARAM lparam) {
    const LRESULT brush =
        CallWindowProcA(original_proc(parent), parent, WM_CTLCOLORSTATIC, wparam, lparam);
    if (GetPropA(reinterpret_cast<HWND>(lparam), FROM_STATIC) != nullptr)
        SetTextColor(reinterpret_cast<HDC>(wparam), LINK_COLOUR);
    return brush;
}

static LRESULT CALLBACK hyperlink_parent(HWND parent, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_CTLCOLORSTATIC:
        return colour_static(parent, wparam, lparam);
    case WM_DESTROY:
        return CallWindowProcA(unsubclass(parent), parent, message, wparam, lparam);
    default:
        return CallWindowProcA(original_proc(parent), parent, message, wparam, lparam);
    }
}

// ---- the control

static void use_font(HWND control, const char *property) {
    const HANDLE font = GetPropA(control, property);
    if (font != nullptr) // else the underlined one could not be made
        SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    InvalidateRect(control, nullptr, FALSE);
}

static bool is_inside(HWND control, LPARAM point) {
    RECT area;
    GetClientRect(control, &area);
    return PtInRect(&area, {static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point))});
}

static void move_mouse(HWND control, LPARAM point) {
    if (GetCapture() != control) {
        use_font(control, UNDERLINE_FONT);
        SetCapture(control);
    } else if (!is_inside(control, point)) {
        use_font(control, ORIGINAL_FONT);
        ReleaseCapture();
    }
}

static void follow(HWND control) {
    PostMessageA(GetParent(control), WM_COMMAND, 0, 0);
}

static void click(HWND control) {
    ReleaseCapture();
    InvalidateRect(control, nullptr, FALSE);
    follow(control);
}

// ---- by keyboard

static bool is_follow_key(WPARAM key) {
    return key == VK_RETURN || key == VK_SPACE;
}

// Enter would be the default button's else.
static LRESULT wanted_keys(HWND control, WPARAM wparam, LPARAM lparam) {
    const LRESULT wanted =
        CallWindowProcA(original_proc(control), control, WM_GETDLGCODE, wparam, lparam);
    const auto *message = reinterpret_cast<const MSG *>(lparam);
    const bool follows = message != nullptr && is_follow_key(message->wParam);
    return follows ? wanted | DLGC_WANTMESSAGE : wanted;
}

// The frame is drawn over the whole text, or it would be wiped out where it was drawn before.
static LRESULT paint(HWND control, WPARAM wparam, LPARAM lparam) {
    InvalidateRect(control, nullptr, TRUE);
    const LRESULT result =
        CallWindowProcA(original_proc(control), control, WM_PAINT, wparam, lparam);
    if (GetFocus() != control)
        return result;
    RECT area;
    GetClientRect(control, &area);
    const HDC dc = GetDC(control);
    DrawFocusRect(dc, &area);
    ReleaseDC(control, dc);
    return result;
}

static void show_hand() {
    HCURSOR hand = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_HAND));
    if (hand == nullptr)
        hand = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    SetCursor(hand);
}

static LRESULT destroy(HWND control) {
    use_font(control, ORIGINAL_FONT);
    object_destroy(static_cast<HFONT>(GetPropA(control, UNDERLINE_FONT)));
    RemovePropA(control, ORIGINAL_FONT);
    RemovePropA(control, UNDERLINE_FONT);
    RemovePropA(control, FROM_STATIC);
    return CallWindowProcA(unsubclass(control), control, WM_DESTROY, 0, 0);
}

static LRESULT CALLBACK hyperlink(HWND control, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_SETCURSOR:
        show_hand();
        return TRUE;
    case WM_MOUSEMOVE:
        move_mouse(control, lparam);
        return 0;
    case WM_LBUTTONDOWN:
        SetCapture(control);
        return 0;
    case WM_LBUTTONUP:
        click(control);
        return 0;
    case WM_GETDLGCODE:
        return wanted_keys(control, wparam, lparam);
    case WM_KEYDOWN:
        if (is_follow_key(wparam))
            follow(control);
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        InvalidateRect(control, nullptr, TRUE);
        return 0;
    case WM_PAINT:
        return paint(control, wparam, lparam);
    case WM_DESTROY:
        return destroy(control);
    default:
        return CallWindowProcA(original_proc(control), control, message, wparam, lparam);
    }
}

// ---- making one

static HFONT underlined(HFONT font) {
    LOGFONTA description = {};
    if (GetObjectA(font, sizeof description, &description) == 0)
        return nullptr;
    description.lfUnderline = TRUE;
    return object_made(OBJECT_FONT, CreateFontIndirectA(&description));
}

static bool subclass_parent_once(HWND parent) {
    const auto wanted = reinterpret_cast<LONG_PTR>(hyperlink_parent);
    return GetWindowLongPtrA(parent, GWLP_WNDPROC) == wanted || subclass(parent, hyperlink_parent);
}

bool ConvertStaticToHyperlink(HWND control) {
    const HWND parent = GetParent(control);
    if (parent == nullptr || !subclass_parent_once(parent))
        return false;
    const auto font = reinterpret_cast<HFONT>(SendMessageA(control, WM_GETFONT, 0, 0));
    if (!subclass(control, hyperlink))
        return false;
    SetWindowLongPtrA(control, GWL_STYLE,
                      GetWindowLongPtrA(control, GWL_STYLE) | SS_NOTIFY | WS_TABSTOP);
    SetPropA(control, ORIGINAL_FONT, font);
    SetPropA(control, UNDERLINE_FONT, underlined(font));
    SetPropA(control, FROM_STATIC, reinterpret_cast<HANDLE>(1));
    return true;
}
