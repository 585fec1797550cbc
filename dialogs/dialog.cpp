#include "dialogs/dialog.h"

#include "dialogs/dialogs.h"
#include "dialogs/rules/dialog_place.h"
#include "platform/win32/window_attach.h"
#include "platform/window.h"

static constexpr DWORD THEME_ENABLE_TAB = 6; // ETDT_ENABLETAB

using EnableThemeDialogTextureFunction = HRESULT(WINAPI *)(HWND, DWORD);

static PlaceArea client_area_of(HWND parent) {
    RECT client = {};
    GetClientRect(parent != nullptr ? parent : GetDesktopWindow(), &client);
    if (parent != nullptr)
        MapWindowPoints(parent, nullptr, reinterpret_cast<POINT *>(&client), 2);
    return {client.left, client.top, client.right, client.bottom};
}

void dialog_center_on_parent(HWND parent, HWND dialog) {
    RECT area = {};
    GetWindowRect(dialog, &area);
    std::int32_t screen_width = 0;
    std::int32_t screen_height = 0;
    screen_size(&screen_width, &screen_height);
    const PlacePoint point = dialog_place_on_parent(client_area_of(parent),
                                                    {area.left, area.top, area.right, area.bottom},
                                                    screen_width, screen_height);
    SetWindowPos(dialog, nullptr, point.x, point.y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

static EnableThemeDialogTextureFunction find_theme_function() {
    const HMODULE library = LoadLibraryA("uxtheme.dll");
    if (library == nullptr)
        return nullptr;
    void *function = reinterpret_cast<void *>(GetProcAddress(library, "EnableThemeDialogTexture"));
    return reinterpret_cast<EnableThemeDialogTextureFunction>(function);
}

void enable_xp_theme(HWND dialog) {
    static const EnableThemeDialogTextureFunction enable = find_theme_function();
    if (enable != nullptr)
        enable(dialog, THEME_ENABLE_TAB);
}

bool dialog_pass_to_page(HWND dialog, WPARAM wparam, LPARAM lparam) {
    const HWND page = GetParent(reinterpret_cast<HWND>(lparam));
    if (!IsChild(dialog, page))
        return false;
    SendMessageA(page, WM_COMMAND, wparam, lparam);
    return true;
}

std::int32_t dialog_run(int template_id, DLGPROC procedure) {
    const INT_PTR result = DialogBoxParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(template_id),
                                           static_cast<HWND>(window_attached()), procedure, 0);
    return result > 0 ? static_cast<std::int32_t>(result) : DIALOG_CANCEL;
}
