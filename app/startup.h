// Start and stop of the program as far as no window handle is needed for it: folders, options, the
// window's size, the modules in their order, the first pages, and the messages when something is
// amiss.
#pragma once

#include <cstdint>

inline constexpr char WINDOW_TITLE[] = "Orvanel";

// ---- command line
bool startup_names_page(const char *command_line); // a page file, whichever
bool startup_names_home(const char *command_line);

// ---- before the window
// The network library, and the name that the program tells to servers. 0, or 1 after a message.
std::int32_t startup_network();

// exe_location and what hangs on it. 0, or 1 when the system does not tell.
std::int32_t startup_program_folders();

// Defaults, then the user's options over them; the floor takes the default page colour. 0, or 1
// after a message: the program may not go on.
std::int32_t startup_options();

// When the options want it, shows the splash screen and gives it time to be painted before the
// loading begins.
void startup_splash_screen();

// Finds page_dir_location; a new user gets a folder with the pages shipped.
void startup_page_folder();

struct WindowSize {
    std::int32_t width, height; // client area, pixels
};
WindowSize startup_window_size(std::int32_t screen_width, std::int32_t screen_height);

// ---- with the window
// software_renderer: 1 when the system draws OpenGL itself. Tells the user once, and lowers and
// saves the options.
void startup_graphics_check(std::int32_t software_renderer);

// All modules in their order; needs the window's OpenGL context.
void startup_modules();

// Pages of an older release get their new extension.
void startup_migrate_pages();

// The home page, and above it the page that the command line names. PageResult of the last one.
std::uint32_t startup_open_pages(const char *command_line);
void startup_report_page(std::uint32_t result);

// The pages are shown. Starts the check for a new version when the options want it; nothing is sent
// before or without that.
void startup_update_check();

// ---- the end
// Stops the modules; the OpenGL context must still be there.
void startup_stop_modules();
