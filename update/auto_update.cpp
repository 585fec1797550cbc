#include "update/auto_update.h"

#include "page/options.h"
#include "platform/clock.h"
#include "platform/text.h"
#include "platform/thread.h"
#include "update/auto_update_server.h"
#include "update/auto_update_version.h"
#include "update/http_client.h"

#include <limits>
#include <string>

static constexpr std::uint32_t POSTPONED = 86'400; // seconds; a day
static constexpr std::uint32_t STOP_TIME = 2000;   // milliseconds that the check has to end

std::int32_t current_version;
std::atomic<std::int32_t> new_version;
char new_version_string[AUTO_UPDATE_VERSION_SIZE];
char auto_update_file_name[PATH_SIZE];

AutoUpdateWaits auto_update_waits = {
    .before_check = 2000, .after_connect = 1500, .after_installer = 2000};

static std::int32_t poll_state = AUTO_UPDATE_SAME_OR_OLDER; // AutoUpdateAvailable
static Thread *check_thread;
static std::atomic<bool> stop_requested;

void auto_update_start() {
    poll_state = AUTO_UPDATE_SAME_OR_OLDER; // nothing to ask for
    if (orvanel_options.check_for_updates != 1)
        return;
    poll_state = AUTO_UPDATE_UNKNOWN;
    auto_update_check_for_updates();
}

bool auto_update_poll() {
    if (poll_state != AUTO_UPDATE_UNKNOWN || orvanel_options.check_for_updates != 1)
        return false;
    poll_state = auto_update_new_version_available();
    return poll_state == AUTO_UPDATE_NEWER &&
           clock_unix_seconds() > orvanel_options.check_for_updates_next;
}

void auto_update_declined() {
    const std::uint32_t now = clock_unix_seconds();
    const std::uint32_t latest = std::numeric_limits<std::uint32_t>::max();
    orvanel_options.check_for_updates_next = now > latest - POSTPONED ? latest : now + POSTPONED;
    xml_save_options();
}

// Without a thread to give there is no check.
void auto_update_check_for_updates() {
    new_version = 0;
    current_version = AUTO_UPDATE_THIS_VERSION;
    check_thread = thread_start(auto_update_check_for_updates_thread_func);
}

// The number is what makes the version known, so it comes last.
void auto_update_publish_version(std::string_view document) {
    const std::string text(auto_update_version_text(document));
    text_copy(new_version_string, text.c_str());
    new_version = auto_update_version_number(text);
}

void auto_update_check_for_updates_thread_func() {
    if (!thread_sleep_unless(stop_requested, auto_update_waits.before_check))
        return;
    char url[AUTO_UPDATE_URL_SIZE];
    auto_update_url(url, "current_version.xml");
    char *document = nullptr;
    if (http_client_download(url, &document) != HTTP_OK)
        return;
    auto_update_publish_version(document);
    http_client_release(document);
}

std::int32_t auto_update_new_version_available() {
    const std::int32_t offered = new_version;
    if (offered == 0)
        return AUTO_UPDATE_UNKNOWN;
    return current_version < offered ? AUTO_UPDATE_NEWER : AUTO_UPDATE_SAME_OR_OLDER;
}

void auto_update_url(char (&url)[AUTO_UPDATE_URL_SIZE], const char *file) {
    text_format(url, sizeof url, "http://%s/%s", auto_update_server.host, file);
}

const char *auto_update_site() {
    return auto_update_server.host;
}

void auto_update_stop() {
    stop_requested = true;
    http_client_abort_all();
    auto_update_download_stop();
    const bool ended = check_thread == nullptr || thread_join(check_thread, STOP_TIME);
    check_thread = nullptr;
    if (!ended)
        return; // it ends when the system lets go of it, or with the process
    stop_requested = false;
    http_client_allow_all();
}
