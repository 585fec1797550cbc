// A server to be updated from, the folder that the installer comes to, and a dialog that keeps what
// it is told. Nothing waits.
#pragma once

#include "platform/locations.h"
#include "platform/network.h"
#include "platform/text.h"
#include "platform/thread.h"
#include "tests/support/hostile_servers.h"
#include "tests/support/http_server.h"
#include "tests/support/spin_lock.h"
#include "tests/support/test_folder.h"
#include "tests/support/test_installer.h"
#include "update/auto_update.h"
#include "update/auto_update_server.h"
#include "update/http_client.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#ifdef _WIN32
#include <cstdlib>
#else
#include "platform/posix/recorder.h"
#endif

inline constexpr char VERSION_PATH[] = "/current_version.xml";
inline constexpr char INSTALLER_PATH[] = "/orvanel_setup.exe";
inline constexpr char SIGNATURE_PATH[] = "/orvanel_setup.exe.sig";
inline constexpr char INSTALLER_NAME[] = "orvanel_setup.exe";

inline const HttpScript NOT_FOUND = {http_send("HTTP/1.1 404 Not Found\r\n\r\nno such file")};

using Step = std::pair<std::int32_t, std::int32_t>;

// The steps of a download of so many chunks that ends like this.
inline std::vector<Step> steps(std::int32_t chunks, std::int32_t last) {
    std::vector<Step> all = {{AUTO_UPDATE_CONNECTED, 0}};
    for (std::int32_t i = 1; i <= chunks; i++)
        all.emplace_back(AUTO_UPDATE_CHUNK, i);
    all.emplace_back(last, 0);
    return all;
}

class UpdateTest : public testing::Test {
protected:
    TestFolder temporary;
    HttpServer server{NOT_FOUND};
    AutoUpdateDialog dialog = {hear, this};
    std::function<void(std::int32_t step, std::int32_t value)> on_step; // on the download's thread

    UpdateTest() {
        host = "127.0.0.1:" + std::to_string(server.port);
        auto_update_server = {host.c_str(), ""};
        auto_update_waits = {.before_check = 0, .after_connect = 0, .after_installer = 0};
        http_client_limits = {.timeout = 2000, .disk_bytes = 1'000'000};
        new_version = 0;
        new_version_string[0] = '\0';
        use_temporary(temporary.path);
    }

    ~UpdateTest() override {
        auto_update_stop();
        use_temporary(usual_temporary);
        http_client_limits = usual_limits;
        auto_update_waits = usual_waits;
        auto_update_server = usual_server;
    }

    // The system's folder for temporary files, until the end of the test.
    static void use_temporary(const std::string &folder) {
#ifdef _WIN32
        _putenv_s("TMP", folder.c_str());
#else
        recorder.temporary = folder;
#endif
    }

    void give_installer(const std::string &bytes = test_installer()) {
        server.give(INSTALLER_PATH, http_answer(bytes));
    }

    // The server answers like this one, and the program knows its key.
    void give(const HostileUpdate &update) {
        auto_update_server.key = update.key;
        server.reads_requests = update.reads_request;
        server.give("", update.installer);
        server.give(INSTALLER_PATH, update.installer);
        server.give(SIGNATURE_PATH, update.signature);
    }

    // A whole download. Returns what the dialog was told from the beginning.
    std::vector<Step> download() {
        {
            const std::lock_guard guard(lock);
            heard.clear();
        }
        EXPECT_EQ(0, auto_update_download(dialog));
        EXPECT_TRUE(wait_until([this] { return ended(told()); }));
        return told();
    }

    static bool ended(const std::vector<Step> &all) {
        return !all.empty() && all.back().first != AUTO_UPDATE_CONNECTED &&
               all.back().first != AUTO_UPDATE_CHUNK;
    }

    std::vector<Step> told() {
        const std::lock_guard guard(lock);
        return heard;
    }

    // Waits until the dialog was told this many steps, or for long enough to give up.
    bool wait_told(std::size_t count) {
        return wait_until([&] { return told().size() >= count; });
    }

    static bool wait_until(const std::function<bool()> &condition) {
        for (int i = 0; i < 1000; i++) {
            if (condition())
                return true;
            thread_sleep(10);
        }
        return false;
    }

    const AutoUpdateWaits &program_waits() const {
        return usual_waits;
    }

    bool file_is_there() const {
        return file_exists(temporary.file(INSTALLER_NAME).c_str());
    }

private:
    std::string host;
    SpinLock lock;
    std::vector<Step> heard;
    const HttpLimits usual_limits = http_client_limits;
    const std::string usual_temporary = temporary_of_the_system();
    const AutoUpdateWaits usual_waits = auto_update_waits;
    const AutoUpdateServer usual_server = auto_update_server;

    static std::string temporary_of_the_system() {
        char path[PATH_SIZE];
        return location_temporary(path, sizeof path) == 0 ? path : "";
    }

    static void hear(void *self, std::int32_t step, std::int32_t value) {
        UpdateTest *test = static_cast<UpdateTest *>(self);
        {
            const std::lock_guard guard(test->lock);
            test->heard.emplace_back(step, value);
        }
        if (test->on_step)
            test->on_step(step, value);
    }
};
