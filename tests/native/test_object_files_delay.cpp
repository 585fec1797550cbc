// How long the thread of the catalogue sleeps, counted instead of measured: the linker puts the
// sleep of this file into the place of the system's (tests/CMakeLists.txt).
#include "assets/object_files.h"

#include "platform/locations.h"
#include "platform/text.h"
#include "platform/thread.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

static const std::thread::id test_thread = std::this_thread::get_id();

// Of all threads but the test's own, since sleeps_reset.
static std::atomic<std::uint32_t> sleeps, slept; // slept in milliseconds
static std::atomic<bool> seen_running;        // the scan had begun when one of them was asked for
static std::atomic<std::uint32_t> last_sleep; // milliseconds

static void sleeps_reset() {
    sleeps = slept = last_sleep = 0;
    seen_running = false;
}

extern "C" void __wrap__Z12thread_sleepj(std::uint32_t milliseconds) {
    if (std::this_thread::get_id() != test_thread) {
        seen_running = seen_running || object_files_loaded_flag != CATALOGUE_NOT_STARTED;
        last_sleep = milliseconds;
        slept += milliseconds;
        sleeps++;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

static constexpr int LOOKS = 30'000; // a millisecond each, before a test gives up

template <typename Condition>
static bool wait_for(Condition condition) {
    for (int look = 0; look < LOOKS && !condition(); look++)
        thread_sleep(1);
    return condition();
}

struct ObjectFilesDelay : testing::Test {
    TestFolder folder;

    ObjectFilesDelay() {
        text_copy(object_dir_location, folder.path);
        object_files_init();
        sleeps_reset();
    }
    ~ObjectFilesDelay() override {
        object_files_stop();
        object_dir_location[0] = '\0';
    }
};

TEST_F(ObjectFilesDelay, the_scan_begins_when_500_milliseconds_have_been_slept_and_no_sooner) {
    object_files_background_load();
    ASSERT_TRUE(wait_for(object_files_loaded));
    EXPECT_FALSE(seen_running);
    EXPECT_EQ(slept, 500u);
}

TEST_F(ObjectFilesDelay, a_scan_that_another_thread_makes_is_looked_after_every_15_milliseconds) {
    object_files_loaded_flag = CATALOGUE_RUNNING;
    Thread *waiting = thread_start(object_files_load);
    ASSERT_NE(waiting, nullptr);
    EXPECT_TRUE(wait_for([] { return sleeps >= 3; }));
    EXPECT_EQ(last_sleep, 15u);
    object_files_loaded_flag = CATALOGUE_LOADED;
    EXPECT_TRUE(thread_join(waiting, LOOKS));
    EXPECT_EQ(slept, 15u * sleeps);
}
