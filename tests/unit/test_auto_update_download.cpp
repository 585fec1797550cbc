// The download of the installer, step by step, and what becomes of its file.
#include "tests/support/signature_vectors.h"
#include "tests/unit/update_fixture.h"

#ifndef _WIN32
#include "platform/posix/drives.h"
#include "platform/posix/recorder.h"
#include "tests/support/full_disk.h"

#include <unistd.h>
#endif

static constexpr std::uint32_t LONG_WAIT = 600'000; // milliseconds; no test waits as long
static constexpr std::uint32_t SHORT_WAIT = 20;     // milliseconds

class AutoUpdateDownloadTest : public UpdateTest {
protected:
    // Half of the installer, then silence.
    void give_half_and_be_silent() {
        server.give(INSTALLER_PATH,
                    {http_send(http_head(TEST_INSTALLER_SIZE)),
                     http_send(test_installer(TEST_INSTALLER_SIZE / 2)), http_wait_for_close()});
    }

    void begin_and_stall() {
        http_client_limits.timeout = LONG_WAIT;
        give_half_and_be_silent();
        ASSERT_EQ(0, auto_update_download(dialog));
        ASSERT_TRUE(wait_told(1 + 10)) << "connected and half of the chunks";
    }

    // Begins a download and cancels it once the server has been asked so often.
    void cancel_after(std::int32_t connections) {
        ASSERT_EQ(0, auto_update_download(dialog));
        EXPECT_TRUE(wait_until([&] { return server.connections() == connections; }));
        EXPECT_TRUE(file_is_there());
        auto_update_cancel_download();
        EXPECT_TRUE(wait_until([this] { return !file_is_there(); })) << "long before the time-out";
        auto_update_stop();
    }

    static void expect_not_started() {
        EXPECT_NE(0, auto_update_start_installer());
#ifndef _WIN32
        EXPECT_TRUE(recorder.installers.empty());
#endif
    }
};

TEST_F(AutoUpdateDownloadTest, a_whole_installer_comes_in_twenty_chunks) {
    give_installer();
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
    EXPECT_EQ(test_installer(), temporary.read(INSTALLER_NAME));
    EXPECT_EQ(temporary.file(INSTALLER_NAME), auto_update_file_name);
    EXPECT_EQ(1, server.connections());
}

TEST_F(AutoUpdateDownloadTest, what_a_division_by_twenty_leaves_over_is_one_more_chunk) {
    give_installer(test_installer(4019));
    EXPECT_EQ(steps(21, AUTO_UPDATE_COMPLETE), download());
    EXPECT_EQ(test_installer(4019), temporary.read(INSTALLER_NAME));
}

TEST_F(AutoUpdateDownloadTest, the_steps_have_the_codes_that_the_dialog_knows) {
    EXPECT_EQ(0, AUTO_UPDATE_CONNECTED);
    EXPECT_EQ(1, AUTO_UPDATE_NO_FILE);
    EXPECT_EQ(2, AUTO_UPDATE_NO_CONNECT);
    EXPECT_EQ(3, AUTO_UPDATE_CHUNK);
    EXPECT_EQ(4, AUTO_UPDATE_FAILED);
    EXPECT_EQ(5, AUTO_UPDATE_COMPLETE);
}

TEST_F(
    AutoUpdateDownloadTest,
    without_a_content_length_the_chunk_size_is_0_each_chunk_reads_one_byte_and_the_loop_stops_after_the_first_one_the_1_byte_file_then_counts_as_complete) {
    server.give(INSTALLER_PATH, {http_send(http_head() + test_installer())});
    EXPECT_EQ(steps(1, AUTO_UPDATE_COMPLETE), download());
    EXPECT_EQ(test_installer(1), temporary.read(INSTALLER_NAME));
}

TEST_F(AutoUpdateDownloadTest, a_download_that_breaks_off_midway_deletes_the_file) {
    server.give(INSTALLER_PATH, {http_send(http_head(TEST_INSTALLER_SIZE) +
                                           test_installer(TEST_INSTALLER_SIZE / 2))});
    bool there_when_told = true;
    on_step = [&](std::int32_t step, std::int32_t) {
        if (step == AUTO_UPDATE_FAILED)
            there_when_told = file_is_there();
    };
    EXPECT_EQ(steps(10, AUTO_UPDATE_FAILED), download());
    EXPECT_FALSE(there_when_told) << "the dialog may end the program at once";
    EXPECT_FALSE(file_is_there());
    expect_not_started();
}

TEST_F(AutoUpdateDownloadTest, a_chunk_of_one_byte_is_the_last_one) {
    give_installer(test_installer(39)); // the chunk size is 1
    EXPECT_EQ(steps(1, AUTO_UPDATE_FAILED), download());
    give_installer(test_installer(40)); // it is 2
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
    EXPECT_EQ(test_installer(40), temporary.read(INSTALLER_NAME));
}

TEST_F(AutoUpdateDownloadTest, an_answer_without_a_single_byte_is_no_installer) {
    server.give(INSTALLER_PATH, {http_send(http_head())});
    EXPECT_EQ(steps(0, AUTO_UPDATE_FAILED), download());
    EXPECT_FALSE(file_is_there());
}

TEST_F(AutoUpdateDownloadTest,
       after_a_request_that_failed_no_file_is_left_and_it_can_be_tried_again) {
    EXPECT_EQ((std::vector<Step>{{AUTO_UPDATE_NO_CONNECT, 0}}), download());
    EXPECT_FALSE(file_is_there());
    give_installer();
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
    EXPECT_EQ(test_installer(), temporary.read(INSTALLER_NAME));
}

TEST_F(AutoUpdateDownloadTest, it_waits_before_it_says_that_it_is_connected_or_that_it_is_not) {
    for (const HttpScript &script : {http_answer(test_installer()), NOT_FOUND}) {
        server.give(INSTALLER_PATH, script);
        const std::int32_t connections = server.connections();
        const std::size_t before = told().size();
        auto_update_waits.after_connect = LONG_WAIT;
        ASSERT_EQ(0, auto_update_download(dialog));
        EXPECT_TRUE(wait_until([&] { return server.connections() > connections; }));
        thread_sleep(100);
        EXPECT_EQ(before, told().size());
        auto_update_stop();
        auto_update_waits.after_connect = SHORT_WAIT;
        download();
    }
}

TEST_F(AutoUpdateDownloadTest, a_second_download_never_runs_beside_the_first) {
    begin_and_stall();
    EXPECT_EQ(AUTO_UPDATE_STILL_ENDING, auto_update_download(dialog));
    EXPECT_EQ(1, server.connections());
    auto_update_stop();
    EXPECT_FALSE(file_is_there());
    give_installer();
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
}

TEST_F(AutoUpdateDownloadTest, cancelling_ends_the_download_deletes_the_file_and_says_no_more) {
    begin_and_stall();
    const std::vector<Step> before = told();
    auto_update_cancel_download();
    EXPECT_TRUE(wait_until([this] { return !file_is_there(); }));
    auto_update_stop();
    EXPECT_EQ(before, told());
    expect_not_started();
}

TEST_F(AutoUpdateDownloadTest, cancelling_while_it_connects_says_no_more) {
    http_client_limits.timeout = LONG_WAIT;
    server.give(INSTALLER_PATH, {http_wait_for_close()});
    cancel_after(1);
    EXPECT_TRUE(told().empty());
}

TEST_F(AutoUpdateDownloadTest, cancelling_during_the_wait_cuts_it_short) {
    auto_update_waits.after_connect = LONG_WAIT;
    give_installer();
    cancel_after(1);
    EXPECT_TRUE(told().empty());
}

TEST_F(AutoUpdateDownloadTest, cancelled_in_the_last_report_the_whole_file_is_deleted) {
    give_installer();
    on_step = [](std::int32_t step, std::int32_t value) {
        if (step == AUTO_UPDATE_CHUNK && value == 20)
            auto_update_cancel_download();
    };
    ASSERT_EQ(0, auto_update_download(dialog));
    EXPECT_TRUE(wait_told(1 + 20));
    EXPECT_TRUE(wait_until([this] { return !file_is_there(); }));
    auto_update_stop();
    EXPECT_EQ(21u, told().size());
    expect_not_started();
}

TEST_F(AutoUpdateDownloadTest, cancelling_nothing_does_nothing) {
    auto_update_cancel_download();
    give_installer();
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
}

TEST_F(AutoUpdateDownloadTest, the_end_of_the_program_ends_the_download_and_deletes_the_file) {
    begin_and_stall();
    auto_update_stop();
    EXPECT_FALSE(file_is_there());
}

TEST_F(AutoUpdateDownloadTest, an_installer_that_was_not_started_is_deleted_at_the_end) {
    give_installer();
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
    EXPECT_TRUE(file_is_there());
    auto_update_stop();
    EXPECT_FALSE(file_is_there());
    expect_not_started();
}

TEST_F(AutoUpdateDownloadTest, without_a_download_there_is_nothing_to_start) {
    expect_not_started();
}

TEST_F(AutoUpdateDownloadTest, a_leftover_is_replaced_whole) {
    temporary.write(INSTALLER_NAME, test_installer(9000) + "leftover");
    give_installer();
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
    EXPECT_EQ(test_installer(), temporary.read(INSTALLER_NAME));
}

TEST_F(AutoUpdateDownloadTest,
       the_request_is_for_the_installer_and_without_a_key_for_nothing_else) {
    give_installer();
    download();
    server.stop();
    ASSERT_EQ(1u, server.requests.size());
    EXPECT_TRUE(server.requests[0].starts_with("GET /orvanel_setup.exe HTTP/1.1\r\n"));
}

TEST_F(AutoUpdateDownloadTest, with_a_key_an_installer_that_the_vendor_signed_is_complete) {
    auto_update_server.key = VENDOR_KEY;
    give_installer();
    for (const char *signature : {INSTALLER_SIGNATURE, INSTALLER_SIGNATURE_SHORT}) {
        server.give(SIGNATURE_PATH, http_answer(std::string(signature) + "\n"));
        EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
        EXPECT_EQ(test_installer(), temporary.read(INSTALLER_NAME));
    }
}

TEST_F(AutoUpdateDownloadTest, cancelling_while_the_signature_is_awaited_deletes_the_file) {
    auto_update_server.key = VENDOR_KEY;
    http_client_limits.timeout = LONG_WAIT;
    give_installer();
    server.give(SIGNATURE_PATH, {http_wait_for_close()});
    cancel_after(2);
    EXPECT_FALSE(ended(told()));
}

TEST_F(AutoUpdateDownloadTest, an_installer_whose_dialog_goes_while_it_is_told_is_deleted) {
    give_installer();
    on_step = [](std::int32_t step, std::int32_t) {
        if (step == AUTO_UPDATE_COMPLETE)
            auto_update_cancel_download();
    };
    download();
    EXPECT_TRUE(wait_until([this] { return !file_is_there(); }));
    EXPECT_NE(0, auto_update_start_installer());
}

TEST_F(AutoUpdateDownloadTest, an_installer_whose_dialog_goes_after_its_end_was_told_is_deleted) {
    give_installer();
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
    thread_sleep(20); // the thread has told all and ends
    auto_update_cancel_download();
    EXPECT_TRUE(wait_until([this] { return !file_is_there(); }));
    EXPECT_NE(0, auto_update_start_installer());
}

TEST_F(AutoUpdateDownloadTest, a_download_that_waits_in_its_last_report_is_not_over_yet) {
    std::atomic<bool> held = true;
    on_step = [&](std::int32_t step, std::int32_t) {
        while (step == AUTO_UPDATE_NO_CONNECT && held)
            thread_sleep(1);
    };
    ASSERT_EQ(0, auto_update_download(dialog)); // not found
    EXPECT_TRUE(wait_told(1));
    EXPECT_EQ(AUTO_UPDATE_STILL_ENDING, auto_update_download(dialog));
    EXPECT_EQ(1, server.connections());
    held = false;
    give_installer();
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download()) << "its end is waited for";
}

#ifndef _WIN32
// Only this side lets others write into the file.
TEST_F(AutoUpdateDownloadTest, a_file_that_somebody_else_changed_is_not_started) {
    give_installer();
    on_step = [this](std::int32_t step, std::int32_t value) {
        if (step == AUTO_UPDATE_CHUNK && value == 20)
            temporary.write(INSTALLER_NAME, "X" + test_installer().substr(1));
    };
    EXPECT_EQ(steps(20, AUTO_UPDATE_FAILED), download());
    EXPECT_FALSE(file_is_there());
}

TEST_F(AutoUpdateDownloadTest, a_disk_that_is_full_fails_the_download) {
    give_installer();
    const FullDisk disk(1000);
    const std::vector<Step> all = download();
    EXPECT_EQ(AUTO_UPDATE_FAILED, all.back().first);
    EXPECT_LE(all.size(), 1u + 6 + 1);
    EXPECT_FALSE(file_is_there());
}

TEST_F(AutoUpdateDownloadTest, newer_systems_are_asked_for_the_administrators_rights) {
    give_installer();
    for (const std::int32_t major : {5, 6, 10}) {
        recorder.system_major_version = major;
        recorder.installers.clear();
        ASSERT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
        EXPECT_EQ(0, auto_update_start_installer());
        ASSERT_EQ(1u, recorder.installers.size());
        EXPECT_EQ(temporary.file(INSTALLER_NAME), recorder.installers[0].path);
        EXPECT_EQ(major > 5 ? "runas" : "open", recorder.installers[0].verb);
    }
    EXPECT_NE(0, auto_update_start_installer()) << "it is started once";
    auto_update_stop();
    EXPECT_TRUE(file_is_there()) << "the installer may still be running";
}

TEST_F(AutoUpdateDownloadTest, an_installer_that_the_user_refuses_to_start_is_deleted) {
    recorder.installer_refused = true;
    give_installer();
    ASSERT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
    EXPECT_NE(0, auto_update_start_installer());
    EXPECT_TRUE(wait_until([this] { return !file_is_there(); }));
    EXPECT_NE(0, auto_update_start_installer()) << "it is asked for once";
    EXPECT_EQ(1u, recorder.installers.size());
}

TEST_F(AutoUpdateDownloadTest, an_installer_refused_while_its_end_is_told_is_deleted) {
    recorder.installer_refused = true;
    give_installer();
    on_step = [](std::int32_t step, std::int32_t) {
        if (step == AUTO_UPDATE_COMPLETE) {
            EXPECT_NE(0, auto_update_start_installer());
        }
    };
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
    EXPECT_TRUE(wait_until([this] { return !file_is_there(); }));
}

TEST_F(AutoUpdateDownloadTest, without_a_thread_there_is_no_download_until_there_is_one_again) {
    give_installer();
    recorder.threads_refused = true;
    EXPECT_EQ(AUTO_UPDATE_NO_THREAD, auto_update_download(dialog));
    EXPECT_EQ(AUTO_UPDATE_NO_THREAD, auto_update_download(dialog)) << "not because one runs";
    EXPECT_EQ(0, server.connections());
    EXPECT_FALSE(file_is_there());
    recorder.threads_refused = false;
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
}

TEST_F(AutoUpdateDownloadTest, without_a_thread_what_was_not_started_is_deleted_all_the_same) {
    recorder.installer_refused = true;
    for (const bool starts : {true, false}) {
        give_installer();
        ASSERT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
        thread_sleep(20); // the thread has told all and ends
        recorder.threads_refused = true;
        if (starts) {
            EXPECT_NE(0, auto_update_start_installer());
        } else {
            auto_update_cancel_download();
        }
        EXPECT_TRUE(wait_until([this] { return !file_is_there(); })) << starts;
        recorder.threads_refused = false;
    }
}

static std::atomic<int> reads; // of the installer

static void cancel_at_the_second_read() {
    if (++reads == 2)
        auto_update_cancel_download();
}

TEST_F(AutoUpdateDownloadTest, cancelling_while_a_large_installer_is_read_again_ends_that_too) {
    static constexpr std::size_t BYTES = 4'000'000; // many blocks
    http_client_limits.disk_bytes = 2 * BYTES;
    give_installer(test_installer(BYTES));
    reads = 0;
    recorder.installer_read = cancel_at_the_second_read;
    ASSERT_EQ(0, auto_update_download(dialog));
    EXPECT_TRUE(wait_told(1 + 20));
    EXPECT_TRUE(wait_until([this] { return !file_is_there(); }));
    auto_update_stop();
    EXPECT_EQ(2, reads);
    EXPECT_EQ(21u, told().size()) << "its end is not told";
    expect_not_started();
}

class AutoUpdatePlacesTest : public UpdateTest {
protected:
    TestFolder drive;

    AutoUpdatePlacesTest() {
        drive_map('c', drive.path);
        use_temporary(temporary.file("missing"));
        give_installer();
    }

    void make(const char *folder) {
        EXPECT_EQ(0, folder_create(drive.file(folder).c_str()));
    }

    // Where the installer comes to; empty when it comes nowhere.
    std::string place() {
        const std::vector<Step> all = download();
        EXPECT_EQ(all.back().first == AUTO_UPDATE_NO_FILE, auto_update_file_name[0] == '\0');
        return auto_update_file_name;
    }
};

TEST_F(AutoUpdatePlacesTest, the_first_place_that_takes_the_file_is_chosen_in_this_order) {
    EXPECT_EQ("c:\\orvanel_setup.exe", place());
    EXPECT_EQ(test_installer(), drive.read(INSTALLER_NAME));
    make("temp");
    EXPECT_EQ("c:\\temp\\orvanel_setup.exe", place());
    make("windows");
    EXPECT_EQ("c:\\temp\\orvanel_setup.exe", place());
    make("windows\\temp");
    EXPECT_EQ("c:\\windows\\temp\\orvanel_setup.exe", place());
    EXPECT_EQ(0, folder_create(temporary.file("missing").c_str()));
    EXPECT_EQ(temporary.file("missing\\orvanel_setup.exe"), place());
}

TEST_F(AutoUpdatePlacesTest,
       a_link_or_folder_of_that_name_is_left_alone_and_the_next_place_is_tried) {
    make("temp");
    make("windows");
    make("windows\\temp");
    make("windows\\temp\\orvanel_setup.exe");
    drive.write("users file", "the user's");
    ASSERT_EQ(0, symlink(native_path(drive.file("users file").c_str()).c_str(),
                         native_path(drive.file("temp\\orvanel_setup.exe").c_str()).c_str()));
    EXPECT_EQ("c:\\orvanel_setup.exe", place());
    EXPECT_EQ("the user's", drive.read("users file"));
}

TEST_F(AutoUpdatePlacesTest, without_a_place_nobody_is_asked_and_it_can_be_tried_again) {
    make(INSTALLER_NAME);
    EXPECT_EQ((std::vector<Step>{{AUTO_UPDATE_NO_FILE, 0}}), download());
    EXPECT_STREQ("", auto_update_file_name);
    EXPECT_EQ(0, server.connections());
    EXPECT_NE(0, auto_update_start_installer());
    make("temp");
    EXPECT_EQ(steps(20, AUTO_UPDATE_COMPLETE), download());
}

TEST_F(AutoUpdatePlacesTest, a_temporary_folder_under_which_the_name_would_be_cut_is_passed_over) {
    std::string folder = temporary.path;
    folder += std::string(PATH_SIZE - 1 - sizeof INSTALLER_NAME - folder.size(), 'x');
    ASSERT_EQ(0, folder_create(folder.c_str()));
    use_temporary(folder);
    EXPECT_EQ(folder + "\\orvanel_setup.exe", place()) << "just fits";
    EXPECT_EQ(PATH_SIZE - 1, place().size());
    folder += 'x';
    ASSERT_EQ(0, folder_create(folder.c_str()));
    use_temporary(folder);
    EXPECT_EQ("c:\\orvanel_setup.exe", place());
}

TEST_F(AutoUpdatePlacesTest, without_a_temporary_folder_the_other_places_are_tried) {
    use_temporary("");
    EXPECT_EQ("c:\\orvanel_setup.exe", place());
}
#endif
