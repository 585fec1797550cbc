// The download of the installer, from the choice of its place to its start.
#include "update/auto_update.h"

#include "platform/signature.h"
#include "platform/text.h"
#include "platform/thread.h"
#include "update/auto_update_installer.h"
#include "update/auto_update_server.h"
#include "update/auto_update_signature.h"
#include "update/http_client.h"

static constexpr std::int64_t CHUNKS = 20;    // that the progress bar shows
static constexpr std::int64_t LAST_CHUNK = 1; // bytes; a chunk that gave no more was the last
// Chunks that are reported. The bar is full by then; a server that announces a few bytes and sends
// without end would keep the dialog busy with reports, which go before what the user does.
static constexpr std::int32_t CHUNKS_TOLD = 1000;
static constexpr std::uint32_t STOP_TIME = 2000; // milliseconds that the download has to end
// From its last report to its end, in milliseconds. The main thread waits for it, and a step may
// take twice as long as it says.
static constexpr std::uint32_t END_TIME = 100;
static constexpr std::uint32_t END_STEP = 10; // between two looks

static Thread *download_thread;
static AutoUpdateDialog download_dialog; // handed to the thread
static std::atomic<bool> running;
static std::atomic<bool> cancelled;
static HttpConnection connection; // the thread's, but for its abort

// The thread's, until installer_ready hands it to the main thread.
static AutoUpdateInstaller installer;
static std::atomic<bool> installer_ready;

// False when there is no dialog any more.
static bool report(const AutoUpdateDialog *dialog, AutoUpdateStep step, std::int32_t value = 0) {
    if (cancelled)
        return false;
    dialog->report(dialog->dialog, step, value);
    return true;
}

static bool write_installer(void *, const char *bytes, std::size_t size) {
    return auto_update_installer_write(&installer, {bytes, size});
}

static std::int32_t connect(std::int64_t *length) {
    char url[AUTO_UPDATE_URL_SIZE];
    auto_update_url(url, "orvanel_setup.exe");
    const std::int32_t result = http_client_download_to_disk_chunked_open(url, &connection, length);
    const bool goes_on = thread_sleep_unless(cancelled, auto_update_waits.after_connect);
    if (result == HTTP_OK && !goes_on)
        http_client_close(&connection);
    return goes_on ? result : HTTP_NO_CONNECTION;
}

// False when fewer bytes arrived than the server announced, none at all, or they never ended.
static bool receive(const AutoUpdateDialog *dialog, std::int64_t length) {
    const HttpSink sink = {write_installer, nullptr};
    std::int64_t total = 0, got = 0;
    std::int32_t chunks = 0;
    do {
        got = http_client_download_to_disk_chunked_get(length / CHUNKS, &connection, sink);
        if (got <= 0)
            break;
        total += got;
        if (chunks < CHUNKS_TOLD)
            report(dialog, AUTO_UPDATE_CHUNK, ++chunks);
    } while (got > LAST_CHUNK && !cancelled);
    http_client_close(&connection);
    return total > 0 && total >= length && total < http_client_limits.disk_bytes;
}

static bool fetch_signature(Signature *signature) {
    char url[AUTO_UPDATE_URL_SIZE];
    auto_update_url(url, "orvanel_setup.exe.sig");
    char *text = nullptr;
    if (http_client_download_over(&connection, url, &text) != HTTP_OK)
        return false;
    const bool parsed = auto_update_signature_parse(text, signature);
    http_client_release(text);
    return parsed;
}

// A program that knows no key takes every installer.
static bool is_vendors() {
    if (auto_update_server.key[0] == '\0')
        return true;
    SignatureKey key;
    Signature signature;
    return auto_update_key_parse(auto_update_server.key, &key) && fetch_signature(&signature) &&
           signature_verify(key, installer.digest, signature);
}

// The file goes before the dialog hears of it: it may then try again, or end the program.
static void fail(const AutoUpdateDialog *dialog, AutoUpdateStep step) {
    auto_update_installer_discard(&installer);
    report(dialog, step);
}

static void complete(const AutoUpdateDialog *dialog) {
    installer_ready = true;
    report(dialog, AUTO_UPDATE_COMPLETE);
}

static void discard_unstarted() {
    if (installer_ready.exchange(false))
        auto_update_installer_discard(&installer);
}

void auto_update_check_download_new_version_thread_func(const AutoUpdateDialog *dialog) {
    if (auto_update_installer_open(&installer) != 0) {
        report(dialog, AUTO_UPDATE_NO_FILE);
        return;
    }
    std::int64_t length = 0;
    if (connect(&length) != HTTP_OK) {
        fail(dialog, AUTO_UPDATE_NO_CONNECT);
        return;
    }
    report(dialog, AUTO_UPDATE_CONNECTED);
    if (!receive(dialog, length) || auto_update_installer_finish(&installer, cancelled) != 0 ||
        !is_vendors())
        fail(dialog, AUTO_UPDATE_FAILED);
    else
        complete(dialog);
}

// Whichever of the two comes last, the end of the thread or the cancelling, sees the other and
// discards what is complete.
static void end_thread() {
    running = false;
    if (cancelled)
        discard_unstarted();
}

static void run_download() {
    auto_update_check_download_new_version_thread_func(&download_dialog);
    end_thread();
}

// The thread that has reported its last is about to end. False when it has not.
static bool download_ended() {
    for (std::uint32_t waited = 0; running && waited < END_TIME; waited += END_STEP)
        thread_sleep(END_STEP);
    return !running;
}

static void join_download() {
    if (download_thread != nullptr)
        thread_join(download_thread, STOP_TIME);
    download_thread = nullptr;
}

// Null when the system gives no thread.
static Thread *start_thread(void (*function)()) {
    join_download(); // its end is all that is left of it
    running = true;
    download_thread = thread_start(function);
    if (download_thread == nullptr)
        running = false;
    return download_thread;
}

// The dialog has no more use for what is complete. Its thread discards that, or one of its own:
// somebody who looks at the file keeps it from being deleted for a while, which the caller, the
// main thread, must not wait for.
static void discard_aside() {
    cancelled = true;
    if (!running && installer_ready && start_thread(end_thread) == nullptr)
        discard_unstarted();
}

std::int32_t auto_update_download(const AutoUpdateDialog &dialog) {
    if (!download_ended())
        return AUTO_UPDATE_STILL_ENDING; // two would write one file
    join_download();
    discard_unstarted();
    download_dialog = dialog;
    cancelled = false;
    http_client_allow(&connection);
    return start_thread(run_download) != nullptr ? AUTO_UPDATE_STARTED : AUTO_UPDATE_NO_THREAD;
}

void auto_update_cancel_download() {
    http_client_abort(&connection);
    discard_aside();
}

std::int32_t auto_update_start_installer() {
    if (cancelled || !installer_ready.exchange(false))
        return 1;
    if (auto_update_installer_start(&installer) == 0)
        return 0;
    installer_ready = true; // as it was
    discard_aside();
    return 1;
}

void auto_update_download_stop() {
    auto_update_cancel_download();
    join_download();
    discard_unstarted();
}
