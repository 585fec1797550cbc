#include "tests/windows/dialog_layout.h"

#include <commctrl.h>

#include <algorithm>
#include <cctype>
#include <cstring>

static constexpr int EDGE = 7;          // dialog units between controls and the edge
static constexpr int PAGE_EDGE = 4;     // dialog units: the frame of a tab takes of the edge
static constexpr int CHECK_MARK = 16;   // pixels at 96 dots an inch, with the gap to the text
static constexpr int BUTTON_EDGES = 8;  // pixels that a push button's frame takes of its width
static constexpr int POINT_SIZE = 8;    // of the templates
static constexpr std::size_t HEAD = 26; // bytes of an extended template before its menu

static INT_PTR CALLBACK do_nothing(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

// Behind a name: a number, a text, or nothing.
static const WORD *skip_name(const WORD *at) {
    if (*at == 0xFFFF)
        return at + 2;
    while (*at != 0)
        at++;
    return at + 1;
}

static std::vector<char> template_of_size(int template_id, int point_size) {
    const HMODULE module = GetModuleHandleA(nullptr);
    const HRSRC resource =
        FindResourceA(module, MAKEINTRESOURCEA(template_id), reinterpret_cast<LPCSTR>(RT_DIALOG));
    const char *bytes = static_cast<const char *>(LockResource(LoadResource(module, resource)));
    std::vector<char> copy(bytes, bytes + SizeofResource(module, resource));
    WORD *at = reinterpret_cast<WORD *>(copy.data() + HEAD);
    for (int i = 0; i < 3; i++) // menu, class, title
        at += skip_name(at) - at;
    *at = static_cast<WORD>(point_size);
    return copy;
}

struct Control {
    HWND window;
    RECT area; // in the dialog's client area, pixels
    std::string kind, text;
    LONG style;
};

static BOOL CALLBACK add_control(HWND window, LPARAM parameter) {
    auto *controls = reinterpret_cast<std::vector<Control> *>(parameter);
    char kind[40], text[200];
    Control control = {.window = window, .area = {}, .kind = "", .text = "", .style = 0};
    GetWindowRect(window, &control.area);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT *>(&control.area), 2);
    GetClassNameA(window, kind, sizeof kind);
    GetWindowTextA(window, text, sizeof text);
    control.kind = kind;
    control.text = text;
    control.style = GetWindowLongA(window, GWL_STYLE);
    if (GetParent(window) == GetAncestor(window, GA_ROOT)) // not the parts of a combo box
        controls->push_back(control);
    return TRUE;
}

static std::vector<Control> controls_of(HWND dialog) {
    std::vector<Control> controls;
    EnumChildWindows(dialog, add_control, reinterpret_cast<LPARAM>(&controls));
    return controls;
}

static bool is_button(const Control &control, LONG type) {
    return lstrcmpiA(control.kind.c_str(), "Button") == 0 && (control.style & BS_TYPEMASK) == type;
}

static std::string name_of(const Control &control) {
    return control.kind + " " + std::to_string(GetDlgCtrlID(control.window)) + " \"" +
           control.text + "\"";
}

static void check_edges(HWND dialog, const Control &control, std::vector<std::string> *faults) {
    RECT inner = {EDGE, EDGE, EDGE, EDGE}, client;
    MapDialogRect(dialog, &inner);
    GetClientRect(dialog, &client);
    if (control.area.left < inner.left || control.area.top < inner.top ||
        control.area.right > client.right - inner.right + 1 ||
        control.area.bottom > client.bottom - inner.bottom + 1)
        faults->push_back(name_of(control) + " is too near to the edge");
}

static void check_overlap(const Control &a, const Control &b, std::vector<std::string> *faults) {
    RECT common, inside;
    if (!IntersectRect(&common, &a.area, &b.area))
        return;
    const bool frames = is_button(a, BS_GROUPBOX) || is_button(b, BS_GROUPBOX);
    const RECT &inner = is_button(a, BS_GROUPBOX) ? b.area : a.area;
    const bool within = IntersectRect(&inside, &common, &inner) && EqualRect(&inside, &inner);
    if (!frames || !within)
        faults->push_back(name_of(a) + " overlaps " + name_of(b));
}

static SIZE text_size(const Control &control) {
    std::string text = control.text;
    if (const std::size_t mark = text.find('&'); mark != std::string::npos)
        text.erase(mark, 1);
    const HDC dc = GetDC(control.window);
    const HGDIOBJ font = reinterpret_cast<HGDIOBJ>(SendMessageA(control.window, WM_GETFONT, 0, 0));
    const HGDIOBJ before = SelectObject(dc, font);
    SIZE size = {};
    GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(dc, before);
    ReleaseDC(control.window, dc);
    return size;
}

// Texts of one line only: those of several break where they like.
static void check_text(const Control &control, int point_size, std::vector<std::string> *faults) {
    const bool is_static = lstrcmpiA(control.kind.c_str(), "Static") == 0;
    const bool is_any_button = lstrcmpiA(control.kind.c_str(), "Button") == 0;
    if ((!is_static && !is_any_button) || control.text.empty())
        return;
    const bool has_mark =
        is_button(control, BS_AUTOCHECKBOX) || is_button(control, BS_AUTORADIOBUTTON);
    const int extra = is_static  ? 0
                      : has_mark ? CHECK_MARK * point_size / POINT_SIZE
                                 : BUTTON_EDGES;
    const SIZE size = text_size(control);
    const LONG width = control.area.right - control.area.left - extra;
    const LONG height = control.area.bottom - control.area.top;
    const LONG lines = is_static ? std::max<LONG>(1, height / std::max<LONG>(1, size.cy)) : 1;
    if (size.cx > width * lines || size.cy > height)
        faults->push_back(name_of(control) + " does not fit");
}

// Pages of tabs need a parent.
static HWND make_dialog(int template_id, int point_size) {
    const std::vector<char> bytes = template_of_size(template_id, point_size);
    return CreateDialogIndirectParamA(GetModuleHandleA(nullptr),
                                      reinterpret_cast<LPCDLGTEMPLATEA>(bytes.data()),
                                      GetDesktopWindow(), do_nothing, 0);
}

std::vector<std::string> dialog_layout_faults(int template_id, int point_size) {
    const HWND dialog = make_dialog(template_id, point_size);
    if (dialog == nullptr)
        return {"the dialog cannot be made"};
    const std::vector<Control> controls = controls_of(dialog);
    std::vector<std::string> faults;
    for (std::size_t i = 0; i < controls.size(); i++) {
        check_edges(dialog, controls[i], &faults);
        check_text(controls[i], point_size, &faults);
        for (std::size_t j = i + 1; j < controls.size(); j++)
            check_overlap(controls[i], controls[j], &faults);
    }
    DestroyWindow(dialog);
    return faults;
}

static RECT free_area(HWND dialog, int tab_id) {
    const HWND tab = GetDlgItem(dialog, tab_id);
    char caption[] = "Page";
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    item.pszText = caption;
    SendMessageA(tab, TCM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    RECT area = {};
    GetClientRect(tab, &area);
    SendMessageA(tab, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    return area;
}

std::vector<std::string> dialog_page_faults(int dialog_id, int tab_id, int page_id,
                                            int point_size) {
    const HWND dialog = make_dialog(dialog_id, point_size);
    const HWND page = make_dialog(page_id, point_size);
    const RECT area = free_area(dialog, tab_id);
    RECT edge = {PAGE_EDGE, PAGE_EDGE, PAGE_EDGE, PAGE_EDGE};
    MapDialogRect(page, &edge);
    std::vector<std::string> faults;
    for (const Control &control : controls_of(page)) {
        if (control.area.right > area.right - area.left - edge.right ||
            control.area.bottom > area.bottom - area.top - edge.bottom)
            faults.push_back(name_of(control) + " is too near to the edge of the tab");
    }
    DestroyWindow(page);
    DestroyWindow(dialog);
    return faults;
}

std::string dialog_shared_access_keys(int template_id) {
    const HWND dialog = make_dialog(template_id, POINT_SIZE);
    if (dialog == nullptr)
        return "the dialog cannot be made";
    std::string keys, shared;
    for (const Control &control : controls_of(dialog)) {
        const std::size_t mark = control.text.find('&');
        if (mark == std::string::npos || mark + 1 >= control.text.size())
            continue;
        const char key =
            static_cast<char>(std::toupper(static_cast<unsigned char>(control.text[mark + 1])));
        if (keys.find(key) != std::string::npos)
            shared += key;
        keys += key;
    }
    DestroyWindow(dialog);
    return shared;
}
