#include "app/main_window.h"

#include "actions/menu.h"
#include "app/held_models.h"
#include "app/startup.h"
#include "assets/model.h"
#include "dialogs/model_viewer.h"
#include "page/node.h"
#include "platform/console.h"
#include "platform/text.h"
#include "platform/window.h"
#include "resources/resource_ids.h"
#include "scene/gl_window.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"

HINSTANCE hInst;
HWND hWnd;
HDC hDC;
HGLRC hRC;

static HICON program_icon(int width_metric, int height_metric) {
    return static_cast<HICON>(LoadImageA(hInst, MAKEINTRESOURCEA(RESOURCE_ICON), IMAGE_ICON,
                                         GetSystemMetrics(width_metric),
                                         GetSystemMetrics(height_metric), LR_SHARED));
}

int main_window_register(HINSTANCE instance) {
    hInst = instance;
    WNDCLASSEXA window_class = {};
    window_class.cbSize = sizeof window_class;
    // A device context of its own, because OpenGL draws into it as long as the window lives.
    window_class.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS | CS_OWNDC;
    window_class.lpfnWndProc = WndProc;
    window_class.hInstance = instance;
    window_class.hIcon = program_icon(SM_CXICON, SM_CYICON);
    window_class.hIconSm = program_icon(SM_CXSMICON, SM_CYSMICON);
    window_class.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    window_class.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    window_class.lpszClassName = MAIN_WINDOW_CLASS;
    if (RegisterClassExA(&window_class) == 0)
        return 1;
    model_viewer_init();
    return 0;
}

int main_window_create() {
    screen_size(&screen_size_x, &screen_size_y);
    const WindowSize size = startup_window_size(screen_size_x, screen_size_y);
    scene_floor.window_width = size.width;
    scene_floor.window_height = size.height;
    hWnd = gl_create_window(&hDC, &hRC, WINDOW_TITLE);
    return hWnd != nullptr ? 0 : 1;
}

void main_window_show() {
    ShowWindow(hWnd, SW_SHOW);
    SetForegroundWindow(hWnd);
    SetFocus(hWnd);
}

void main_window_destroy() {
    gl_destroy_window(hWnd, hDC, hRC);
    hWnd = nullptr;
    hDC = nullptr;
    hRC = nullptr;
}

void main_window_update() {
    scene_request_redraw();
    window_invalidate();
    UpdateWindow(hWnd);
}

// What the user sees of the page and cannot be read from its file again.
struct KeptView {
    char file_name[SCENE_FILE_NAME_SIZE];
    char title[SCENE_TITLE_SIZE];
    std::int32_t zoom_level;
    float x, y;
};

static KeptView keep_view() {
    KeptView view = {};
    text_copy(view.file_name, scene_page_file_name);
    text_copy(view.title, scene_page_title);
    view.zoom_level = scene_floor.zoom_level;
    view.x = scene_floor.position_x;
    view.y = scene_floor.position_y;
    return view;
}

static void restore_view(const KeptView &view) {
    const std::uint32_t result = scene_load_page(view.file_name, view.title);
    if (result != PAGE_LOADED)
        startup_report_page(result);
    if (template_object_check() != 0)
        template_object_delete(); // one of a page below is in force again
    scene_floor.zoom_level = view.zoom_level;
    scene_floor.position_x = view.x;
    scene_floor.position_y = view.y;
    scene_invalidate_floor();
}

// Everything that lives in the OpenGL context, in the order of start-up.
static void start_scene() {
    console_start();
    mouse_init();
    model_init();
    held_models_find_again();
    scene_init();
    scene_floor.drag_state = 0;
    node_init_effects();
    menu_init();
}

static void recreate_window() {
    held_models_remember();
    scene_stop();
    menu_stop();
    console_stop();
    main_window_destroy();
    hWnd = gl_create_window(&hDC, &hRC, WINDOW_TITLE);
    app_line_draw_mode = 0;
    app_node_grabbed = 0;
    app_mode = APP_VIEW;
    app_align_mode = 0;
    start_scene();
}

// A new window opens in the middle of the first screen; this one stays where the user has put it.
static void recreate_window_in_place() {
    RECT place;
    GetWindowRect(hWnd, &place);
    recreate_window();
    SetWindowPos(hWnd, nullptr, static_cast<int>(place.left), static_cast<int>(place.top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void toggle_fsaa() {
    const bool maximised = IsZoomed(hWnd) != 0;
    if (maximised)
        ShowWindow(hWnd, SW_RESTORE); // the new window takes this one's size as its normal size
    ShowWindow(hWnd, SW_HIDE);
    const KeptView view = keep_view();
    recreate_window_in_place();
    if (maximised)
        ShowWindow(hWnd, SW_MAXIMIZE);
    main_window_show();
    restore_view(view);
    main_window_update();
}
