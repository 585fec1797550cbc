// The update service: asks the vendor's server on a thread of its own whether there is a newer
// version, says when it is to be offered, and downloads and starts its installer. Everything here
// is called by the main thread but what says otherwise.
#pragma once

#include "platform/files.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

inline constexpr std::int32_t AUTO_UPDATE_THIS_VERSION = 10401; // 1.4.1
inline constexpr std::size_t AUTO_UPDATE_VERSION_SIZE = 25;     // 24 characters

// Versions are major * 10000 + minor * 100 + patch.
extern std::int32_t current_version;          // set when the check starts
extern std::atomic<std::int32_t> new_version; // 0 = not known (yet); once set, the string is whole
extern char new_version_string[AUTO_UPDATE_VERSION_SIZE]; // as the server wrote it
extern char auto_update_file_name[PATH_SIZE];             // where the installer is written

// How long is waited on the way, in milliseconds. Tests shorten it.
struct AutoUpdateWaits {
    std::uint32_t before_check;    // so that the program starts undisturbed
    std::uint32_t after_connect;   // the text that says so can be read
    std::uint32_t after_installer; // the installer comes up before the dialog goes
};
extern AutoUpdateWaits auto_update_waits;

enum AutoUpdateAvailable : std::int32_t {
    AUTO_UPDATE_UNKNOWN = 0, // the check still runs, or found nothing
    AUTO_UPDATE_NEWER = 1,
    AUTO_UPDATE_SAME_OR_OLDER = 2,
};

// Start-up, when the window stands and the proxy settings have been read. Starts the check when the
// option check_for_updates is 1; else there is none in this run.
void auto_update_start();

// On every idle pass of the main loop. True when the new version is to be offered now: once a run
// at most, and never while check_for_updates_next is not over.
bool auto_update_poll();

// The offer was not taken up: it rests for a day. Saves the options.
void auto_update_declined();

// The steps of start and poll.
void auto_update_check_for_updates();
void auto_update_check_for_updates_thread_func();
void auto_update_publish_version(std::string_view document); // from any thread, one at a time
std::int32_t auto_update_new_version_available();            // AutoUpdateAvailable

// What the download tells its dialog. After 1 and 2 the download may be started again.
enum AutoUpdateStep : std::int32_t {
    AUTO_UPDATE_CONNECTED = 0,
    AUTO_UPDATE_NO_FILE = 1,    // no place for the installer
    AUTO_UPDATE_NO_CONNECT = 2, // the request failed
    AUTO_UPDATE_CHUNK = 3,      // the value is the number of chunks so far, mostly 20 in all
    AUTO_UPDATE_FAILED = 4,     // incomplete or not the vendor's; the file is gone
    AUTO_UPDATE_COMPLETE = 5,   // auto_update_start_installer may be called, even in the report
};

// report is called by the download's thread and may wait for the dialog's; never after
// auto_update_cancel_download has returned, except for a report that had begun before.
struct AutoUpdateDialog {
    void (*report)(void *dialog, std::int32_t step, std::int32_t value);
    void *dialog;
};

enum AutoUpdateStart : std::int32_t {
    AUTO_UPDATE_STARTED = 0,
    AUTO_UPDATE_NO_THREAD = 1,    // the system gives none
    AUTO_UPDATE_STILL_ENDING = 2, // the download before; nothing was done, try again soon
};

// Starts the download on a thread of its own. AutoUpdateStart.
std::int32_t auto_update_download(const AutoUpdateDialog &dialog);
void auto_update_check_download_new_version_thread_func(const AutoUpdateDialog *dialog);

// The dialog goes. The download ends by itself soon and leaves no file, unless the installer has
// been started. Does not wait. Nothing happens when none runs.
void auto_update_cancel_download();

// Starts the installer that was downloaded, asking for the administrator's rights where the system
// knows such. Until its process stands nobody can have written or replaced the file. 0, or 1 when
// there is none or it was not started; the file goes soon then.
std::int32_t auto_update_start_installer();

// The server's name for the dialog, and the address of a file or page there. The page for a
// download by hand is AUTO_UPDATE_PAGE.
const char *auto_update_site();
inline constexpr char AUTO_UPDATE_PAGE[] = "download.html";
inline constexpr std::size_t AUTO_UPDATE_URL_SIZE = 300; // the longest host and a file
void auto_update_url(char (&url)[AUTO_UPDATE_URL_SIZE], const char *file);

// Shutdown, before network_stop. Ends what still runs, the download first; waits a few seconds at
// most. An installer that was not started is deleted. auto_update_download_stop is a part of it.
void auto_update_stop();
void auto_update_download_stop();
