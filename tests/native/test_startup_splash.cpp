#include "app/startup.h"

#include "page/options.h"
#include "platform/clock.h"
#include "platform/locations.h"
#include "platform/posix/recorder.h"
#include "platform/text.h"
#include "scene/scene_page.h"
#include "tests/support/manual_clock.h"
#include "tests/support/user_options.h"

#include <gtest/gtest.h>

struct StartupSplash : testing::Test {
    UserOptionsFile file;

    StartupSplash() {
        manual_clock_reset();
        manual_clock_high_resolution(false);
    }
    ~StartupSplash() override {
        page_dir_location[0] = '\0';
    }
};

TEST_F(StartupSplash, it_is_shown_and_given_500_milliseconds_when_the_option_is_on) {
    const std::uint32_t before = clock_milliseconds();
    startup_splash_screen();
    EXPECT_EQ(recorder.splash_displays, 1);
    EXPECT_EQ(recorder.splash_hides, 0);
    EXPECT_EQ(clock_milliseconds() - before, 500u);
}

TEST_F(StartupSplash, without_the_option_nothing_is_shown_and_no_time_is_lost) {
    orvanel_options.splash_screen = 0;
    const std::uint32_t before = clock_milliseconds();
    startup_splash_screen();
    EXPECT_EQ(recorder.splash_displays, 0);
    EXPECT_EQ(clock_milliseconds(), before);
}

TEST_F(StartupSplash, it_is_hidden_before_the_graphics_check_says_something) {
    startup_graphics_check(0);
    EXPECT_EQ(recorder.splash_hides, 0);
    startup_graphics_check(1);
    EXPECT_EQ(recorder.splash_hides, 1);
    EXPECT_EQ(recorder.messages.size(), 1u);
}

TEST_F(StartupSplash, it_is_hidden_before_a_failed_page_is_reported) {
    startup_report_page(PAGE_SYNTAX);
    EXPECT_EQ(recorder.splash_hides, 1);
    EXPECT_EQ(recorder.messages.size(), 1u);
}

TEST_F(StartupSplash, it_is_hidden_before_a_missing_page_folder_is_reported) {
    text_copy(orvanel_options.page_folder, file.folder.file("missing").c_str());
    startup_page_folder();
    EXPECT_EQ(recorder.splash_hides, 1);
    EXPECT_EQ(recorder.messages.size(), 1u);
}
