// The check for a newer version, and when it is offered.
#include "update/auto_update.h"

#include "page/options.h"
#include "platform/clock.h"
#include "tests/support/manual_clock.h"
#include "tests/support/user_options.h"
#include "tests/unit/update_fixture.h"

#include <chrono>
#include <limits>

static constexpr std::uint32_t DAY = 86'400;        // seconds
static constexpr std::uint32_t WEEK = 7 * DAY;      // seconds
static constexpr std::uint32_t MILLISECONDS = 1000; // in a second
static constexpr std::uint32_t LONG_WAIT = 600'000; // milliseconds; no test waits as long
static constexpr std::uint32_t SHORT_WAIT = 20;     // milliseconds

class AutoUpdateTest : public UpdateTest {
protected:
    UserOptionsFile options;

    AutoUpdateTest() {
        manual_clock_reset();
        advance(WEEK);
    }

    static void advance(std::uint32_t seconds) {
        manual_clock_advance(seconds * MILLISECONDS);
    }

    void give_document(const std::string &text) {
        server.give(VERSION_PATH, http_answer(text));
    }

    void give_version(const std::string &version) {
        give_document(
            "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n<orvanel>\n\t<current_version>" +
            version + "</current_version>\n</orvanel>\n");
    }

    // What a check on this thread finds.
    static std::int32_t check() {
        new_version = 0;
        current_version = AUTO_UPDATE_THIS_VERSION;
        auto_update_check_for_updates_thread_func();
        return auto_update_new_version_available();
    }

    // Idle passes of the main loop until the offer is made or the check has ended without one.
    static bool offered() {
        bool offer = false;
        wait_until([&] {
            offer = auto_update_poll();
            return offer || new_version != 0;
        });
        return offer || auto_update_poll();
    }

    // Only when its thread has ended can the check be started again.
    void expect_ended() {
        auto_update_waits.before_check = 0;
        give_version("1.5");
        auto_update_start();
        EXPECT_TRUE(offered());
    }

    // The program starts again with the options as they were saved.
    static void restart() {
        auto_update_stop();
        options_set_defaults();
        xml_load_options();
        auto_update_start();
    }
};

TEST_F(AutoUpdateTest, the_version_text_1_4_1_is_not_offered_it_is_equal) {
    give_version("1.4.1");
    EXPECT_EQ(AUTO_UPDATE_SAME_OR_OLDER, check());
    EXPECT_EQ(10401, new_version);
    auto_update_start();
    EXPECT_FALSE(offered());
}

TEST_F(AutoUpdateTest, the_version_text_1_4_10_gives_10410_and_is_offered) {
    give_version("1.4.10");
    EXPECT_EQ(AUTO_UPDATE_NEWER, check());
    EXPECT_EQ(10410, new_version);
    EXPECT_STREQ("1.4.10", new_version_string);
    auto_update_start();
    EXPECT_TRUE(offered());
}

TEST_F(AutoUpdateTest, the_version_text_1_5_gives_10500_and_is_offered) {
    give_version("1.5");
    EXPECT_EQ(AUTO_UPDATE_NEWER, check());
    EXPECT_EQ(10500, new_version);
    auto_update_start();
    EXPECT_TRUE(offered());
}

TEST_F(AutoUpdateTest, an_older_version_is_not_offered) {
    give_version("1.4.0");
    auto_update_start();
    EXPECT_FALSE(offered());
    EXPECT_EQ(10400, new_version);
    EXPECT_EQ(10401, current_version);
}

TEST_F(AutoUpdateTest, a_check_that_starts_forgets_what_one_before_found) {
    new_version = 20000;
    current_version = 0;
    auto_update_waits.before_check = LONG_WAIT;
    auto_update_start();
    EXPECT_EQ(0, new_version);
    EXPECT_EQ(10401, current_version);
    EXPECT_FALSE(auto_update_poll());
}

TEST_F(AutoUpdateTest, with_check_for_updates_0_there_is_no_network_traffic_at_all) {
    give_version("1.5");
    orvanel_options.check_for_updates = 0;
    auto_update_start();
    for (int i = 0; i < 50; i++) {
        EXPECT_FALSE(auto_update_poll());
        thread_sleep(2);
    }
    auto_update_stop();
    EXPECT_EQ(0, server.connections());
    EXPECT_EQ(0, new_version);
#ifndef _WIN32
    EXPECT_EQ(0, recorder.name_lookups + recorder.address_lookups + recorder.connects);
    orvanel_options.check_for_updates = 1;
    auto_update_start();
    EXPECT_TRUE(offered());
    auto_update_stop();
    EXPECT_EQ(1, recorder.address_lookups) << "which counts";
    EXPECT_EQ(1, recorder.connects);
#endif
}

TEST_F(AutoUpdateTest, checking_switched_off_while_the_check_runs_makes_no_offer) {
    give_version("1.5");
    auto_update_start();
    orvanel_options.check_for_updates = 0;
    EXPECT_TRUE(wait_until([] { return new_version != 0; }));
    EXPECT_FALSE(auto_update_poll());
    orvanel_options.check_for_updates = 1;
    EXPECT_TRUE(auto_update_poll());
}

TEST_F(
    AutoUpdateTest,
    cancelling_the_dialog_sets_check_for_updates_next_one_day_ahead_a_restart_within_that_day_shows_no_offer) {
    give_version("1.5");
    auto_update_start();
    ASSERT_TRUE(offered());
    auto_update_declined();
    EXPECT_EQ(WEEK + DAY, orvanel_options.check_for_updates_next);
    EXPECT_NE(std::string::npos, options.text().find("<check_for_updates_next>691200<"));
    restart();
    EXPECT_FALSE(offered());
    advance(DAY); // only later than the moment itself counts
    restart();
    EXPECT_FALSE(offered());
    advance(1);
    restart();
    EXPECT_TRUE(offered());
}

TEST_F(AutoUpdateTest, the_offer_is_made_once_a_run) {
    give_version("1.5");
    auto_update_start();
    ASSERT_TRUE(offered());
    auto_update_declined();
    advance(2 * DAY);
    for (int i = 0; i < 10; i++)
        EXPECT_FALSE(auto_update_poll());
}

TEST_F(AutoUpdateTest, an_offer_that_rests_is_not_made_later_in_the_run) {
    give_version("1.5");
    orvanel_options.check_for_updates_next = WEEK + DAY;
    auto_update_start();
    EXPECT_FALSE(offered());
    advance(2 * DAY);
    EXPECT_FALSE(auto_update_poll());
}

TEST_F(AutoUpdateTest, declining_at_the_end_of_time_does_not_wrap) {
    static constexpr std::uint32_t LAST = std::numeric_limits<std::uint32_t>::max();
    manual_clock_reset();
    for (std::uint32_t i = 0; i < MILLISECONDS; i++)
        manual_clock_advance(LAST); // milliseconds
    ASSERT_EQ(LAST, clock_unix_seconds());
    auto_update_declined();
    EXPECT_EQ(LAST, orvanel_options.check_for_updates_next);
}

TEST_F(AutoUpdateTest, the_check_waits_before_it_asks) {
    give_version("1.5");
    auto_update_waits.before_check = LONG_WAIT;
    auto_update_start();
    thread_sleep(100);
    EXPECT_EQ(0, server.connections());
    auto_update_stop();
    auto_update_waits.before_check = SHORT_WAIT;
    auto_update_start();
    EXPECT_TRUE(offered());
    EXPECT_EQ(1, server.connections());
}

TEST_F(AutoUpdateTest, the_waits_are_those_of_the_program) {
    EXPECT_EQ(2000u, program_waits().before_check);
    EXPECT_EQ(1500u, program_waits().after_connect);
    EXPECT_EQ(2000u, program_waits().after_installer);
}

TEST_F(AutoUpdateTest, stopping_while_the_check_waits_ends_it_and_asks_nobody) {
    auto_update_waits.before_check = LONG_WAIT;
    auto_update_start();
    auto_update_stop();
    EXPECT_EQ(0, server.connections());
    expect_ended();
}

TEST_F(AutoUpdateTest, stopping_while_the_server_is_silent_ends_the_check) {
    http_client_limits.timeout = LONG_WAIT;
    server.give(VERSION_PATH, {http_wait_for_close()});
    auto_update_start();
    EXPECT_TRUE(wait_until([this] { return server.connections() == 1; }));
    auto_update_stop();
    EXPECT_EQ(0, new_version);
    expect_ended();
}

TEST_F(AutoUpdateTest, stopping_what_never_began_and_stopping_twice_does_nothing) {
    auto_update_stop();
    auto_update_stop();
    give_version("1.5");
    auto_update_start();
    EXPECT_TRUE(offered()) << "a start after a stop works";
    auto_update_stop();
    auto_update_stop();
}

TEST_F(AutoUpdateTest, the_request_is_for_the_version_document) {
    give_version("1.5");
    check();
    server.stop();
    ASSERT_EQ(1u, server.requests.size());
    EXPECT_TRUE(server.requests[0].starts_with("GET /current_version.xml HTTP/1.1\r\n"));
}

TEST_F(AutoUpdateTest, every_failure_of_the_check_is_silent) {
    const HttpScript silences[] = {
        NOT_FOUND,
        {},
        {http_reset()},
        {http_send(http_head(500) + "<current_version>1.5")},
        {http_send("HTTP/1.1 302 Found\r\nLocation: /other\r\n\r\n<current_version>1.5<")},
        {http_send(http_head(std::numeric_limits<std::int64_t>::max()) + "<current_version>1.5<")},
    };
    for (const HttpScript &silence : silences) {
        server.give(VERSION_PATH, silence);
        EXPECT_EQ(AUTO_UPDATE_UNKNOWN, check()) << (&silence - silences);
        EXPECT_STREQ("", new_version_string);
    }
}

TEST_F(AutoUpdateTest, a_server_that_cannot_be_reached_is_silence) {
    server.stop();
    EXPECT_EQ(AUTO_UPDATE_UNKNOWN, check());
    auto_update_server.host = "no-such-host.invalid";
    EXPECT_EQ(AUTO_UPDATE_UNKNOWN, check());
}

TEST_F(AutoUpdateTest, a_document_without_a_version_offers_nothing) {
    std::string every_byte;
    for (int i = 0; i < 4096; i++)
        every_byte += static_cast<char>(i * 7);
    for (const std::string &text :
         {std::string(), every_byte, std::string("\0<current_version>1.5", 21),
          std::string("<version>1.5</version>"), std::string("<current_version></current_version>"),
          std::string("<current_version>newest</current_version>"),
          std::string("<current_version>-1.5</current_version>")}) {
        give_document(text);
        EXPECT_EQ(AUTO_UPDATE_UNKNOWN, check()) << text.substr(0, 50);
    }
}

TEST_F(AutoUpdateTest, a_version_of_9999999999_9_9_does_not_wrap) {
    give_version("9999999999.9.9");
    EXPECT_EQ(AUTO_UPDATE_NEWER, check());
    EXPECT_EQ(std::numeric_limits<std::int32_t>::max(), new_version);
    EXPECT_STREQ("9999999999.", new_version_string) << "cut after the eleventh character";
    give_version("-999999999");
    EXPECT_EQ(AUTO_UPDATE_UNKNOWN, check());
    give_version("0.0.10402");
    EXPECT_EQ(AUTO_UPDATE_NEWER, check());
}

TEST_F(AutoUpdateTest, a_huge_document_is_read_up_to_its_limit) {
    const std::string filler(64 * 1024, ' ');
    server.give(VERSION_PATH,
                {http_send(http_head() + "<current_version>1.5<"), http_repeat(filler, 10'000)});
    EXPECT_EQ(AUTO_UPDATE_NEWER, check());
    server.give(VERSION_PATH, {http_send(http_head()), http_repeat(filler, 10'000),
                               http_send("<current_version>1.5<")});
    EXPECT_EQ(AUTO_UPDATE_UNKNOWN, check());
}

TEST_F(AutoUpdateTest, a_document_that_comes_a_byte_at_a_time_without_a_length_is_read) {
    server.give(VERSION_PATH,
                {http_send_bytewise(http_head() + "<current_version>1.5</current_version>")});
    EXPECT_EQ(AUTO_UPDATE_NEWER, check());
}

static std::atomic<int> race; // its number; negative = no more

static void publish_in_each_race() {
    for (int last = 0; race >= 0;) {
        if (race == last)
            continue;
        last = race;
        auto_update_publish_version("<current_version>1.4.99</current_version>");
    }
}

// This thread looks as fast as it can, again and again: a wrong order loses a race now and then.
TEST_F(AutoUpdateTest, the_number_is_seen_only_when_the_string_is_whole) {
    static constexpr std::chrono::milliseconds RACING_TIME{500};
    race = 0;
    Thread *thread = thread_start(publish_in_each_race);
    ASSERT_NE(nullptr, thread);
    int lost = 0;
    const auto end = std::chrono::steady_clock::now() + RACING_TIME;
    while (std::chrono::steady_clock::now() < end) {
        new_version_string[0] = '\0';
        new_version = 0;
        race++;
        while (new_version == 0) {
        }
        lost += new_version != 10499 || std::string_view("1.4.99") != new_version_string;
    }
    race = -1;
    EXPECT_TRUE(thread_join(thread, 10'000));
    EXPECT_EQ(0, lost);
}

TEST_F(AutoUpdateTest, addresses_are_on_the_server_that_the_program_was_built_with) {
    const std::string site = auto_update_site();
    char url[AUTO_UPDATE_URL_SIZE];
    auto_update_url(url, AUTO_UPDATE_PAGE);
    EXPECT_EQ("http://" + site + "/download.html", url);
    auto_update_url(url, "");
    EXPECT_EQ("http://" + site + "/", url);
}

TEST(AutoUpdateServer, a_program_built_without_settings_asks_a_host_that_does_not_exist) {
    EXPECT_STREQ("www.orvanel.example", auto_update_server.host);
    EXPECT_STREQ("", auto_update_server.key);
    EXPECT_STREQ("www.orvanel.example", auto_update_site());
}
