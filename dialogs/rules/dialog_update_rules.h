// What the dialog "New version available" shows and does: when it opens, when the download is asked
// for, and at each step that the download reports. The dialog itself only puts it on its controls.
#pragma once

#include <cstddef>
#include <cstdint>

inline constexpr std::int32_t UPDATE_PROGRESS_RANGE = 20; // chunks of a whole download
inline constexpr std::size_t UPDATE_SITE_LENGTH = 63;     // characters that the dialog has room for
inline constexpr std::size_t UPDATE_TEXT_SIZE = 160;

struct UpdateView {
    char text[UPDATE_TEXT_SIZE];
    bool can_download; // the download button is enabled
    bool can_cancel;
    bool shows_progress;
    std::int32_t progress; // 0..UPDATE_PROGRESS_RANGE
};

// What is to be done when the view has been shown.
enum class UpdateNext {
    Wait,           // for the user or the download
    DownloadPage,   // open it in the browser and quit
    StartInstaller, // give it time (auto_update_waits), and quit
};

// version as the server wrote it, up to 24 characters.
UpdateView dialog_update_offer(const char *version);

// The download has been started. site is the name shown for the server, here and below.
void dialog_update_connect(UpdateView *view, const char *site);

// A step of the download (AutoUpdateStep) and its value. Unknown ones change nothing.
UpdateNext dialog_update_step(UpdateView *view, const char *site, std::int32_t step,
                              std::int32_t value);
