#include "tests/windows/menu_player.h"

#include "actions/menu.h"
#include "app/main_window.h"
#include "tests/windows/real_window.h"

#include <cstdlib>

static constexpr UINT_PTR GIVE_UP_TIMER = 1;
static constexpr UINT GIVE_UP_AFTER = 30'000; // milliseconds; a menu that waits for ever is closed

static MenuPlayer *player;

UINT entry_state(HMENU menu, UINT position) {
    MENUITEMINFOA info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STATE;
    GetMenuItemInfoA(menu, position, TRUE, &info);
    return info.fState;
}

static UINT highlighted(HMENU menu) {
    for (int i = 0; i < GetMenuItemCount(menu); i++) {
        if ((entry_state(menu, static_cast<UINT>(i)) & MFS_HILITE) != 0)
            return static_cast<UINT>(i);
    }
    return UINT_MAX;
}

static void step() {
    player->highlights.push_back(highlighted(player->menu));
    if (player->next_step < player->steps.size())
        player->steps[player->next_step++]();
    else
        EndMenu();
}

static LRESULT CALLBACK watch(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_INITMENUPOPUP:
        if (player->menu == nullptr)
            player->menu = reinterpret_cast<HMENU>(wparam);
        break;
    case WM_ENTERIDLE:
        step();
        return 0;
    case WM_COMMAND:
        player->commands.push_back(LOWORD(wparam));
        if (!player->passes_on)
            return 0;
        break;
    case WM_DRAWITEM:
        player->drawn.insert(reinterpret_cast<const DRAWITEMSTRUCT *>(lparam)->itemData);
        break;
    case WM_PAINT: // not the scene behind the menu: it takes longer to draw than any menu
        ValidateRect(window, nullptr);
        return 0;
    case WM_TIMER:
        EndMenu();
        return 0;
    default:
        break;
    }
    return CallWindowProcA(player->previous, window, message, wparam, lparam);
}

MenuPlayer::MenuPlayer(std::vector<std::function<void()>> wanted_steps)
    : steps(std::move(wanted_steps)) {
    if (player != nullptr)
        abort(); // one at a time
    player = this;
    previous = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(watch)));
}

MenuPlayer::~MenuPlayer() {
    SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previous));
    player = nullptr;
}

void MenuPlayer::show(int menu_type, int node_id) {
    play([=] { menu_show_menu(menu_type, node_id); });
}

void MenuPlayer::play(const std::function<void()> &open) {
    menu = nullptr;
    next_step = 0;
    SetTimer(hWnd, GIVE_UP_TIMER, GIVE_UP_AFTER, nullptr);
    open();
    KillTimer(hWnd, GIVE_UP_TIMER);
    handle_messages();
}

std::function<void()> MenuPlayer::choose(UINT id) {
    return [=, this] {
        if (GetMenuItemID(menu, static_cast<int>(highlighted(menu))) == id) {
            press_key(VK_RETURN);
            return;
        }
        press_key(VK_DOWN);
        next_step--; // once more from where that leads
    };
}

void press_key(UINT code) {
    const LPARAM scan_code = static_cast<LPARAM>(MapVirtualKeyA(code, MAPVK_VK_TO_VSC)) << 16 | 1;
    PostMessageA(hWnd, WM_KEYDOWN, code, scan_code);
}

std::function<void()> key(UINT code) {
    return [=] { press_key(code); };
}

std::function<void()> letter(char id) {
    return [=] { PostMessageA(hWnd, WM_CHAR, static_cast<WPARAM>(id), 1); };
}
