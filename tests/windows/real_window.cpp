#include "tests/windows/real_window.h"

#include "app/startup.h"
#include "page/options.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene_page.h"

static void register_once() {
    static const int result = main_window_register(GetModuleHandleA(nullptr));
    if (result != 0)
        abort();
}

RealWindow::RealWindow() {
    register_once();
    options_set_defaults();
    orvanel_options.zoom_transition = 0; // nothing to wait for
    orvanel_options.floor_inertia = 0;
    text_copy(page_dir_location, pages.path);
    write_page("home.orvl");
    write_page("sub.orvl");
    interaction_init();
    if (main_window_create() != 0)
        abort();
    main_window_show();
    startup_modules();
    startup_open_pages("");
    main_window_update();
    reset_frame_timer();
    handle_messages();
}

RealWindow::~RealWindow() {
    startup_stop_modules();
    main_window_destroy();
    handle_messages();
}

void RealWindow::write_page(const char *name, const std::string &nodes) {
    pages.write(name, "<page>\n<offv>004</offv>\n<properties>\n<colour>\n<red>-1.00</red>\n"
                      "<green>-1.00</green>\n<blue>-1.00</blue>\n</colour>\n</properties>\n" +
                          nodes + "</page>\n");
}

bool handle_messages() {
    bool quit = false;
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        quit = quit || message.message == WM_QUIT;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return quit;
}

bool post(UINT message, WPARAM wparam, LPARAM lparam) {
    PostMessageA(hWnd, message, wparam, lparam);
    return handle_messages();
}
