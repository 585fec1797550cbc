#include "platform/thread.h"

#include <gtest/gtest.h>

#include <atomic>

static std::atomic<int> runs;
static std::atomic<bool> go_on;

static void run_once() {
    runs++;
}

static void run_until_told() {
    while (!go_on)
        thread_sleep(1);
    runs++;
}

TEST(Thread, runs_its_function_once_and_ends) {
    runs = 0;
    Thread *thread = thread_start(run_once);
    ASSERT_NE(thread, nullptr);
    EXPECT_TRUE(thread_join(thread, 30'000));
    EXPECT_EQ(runs, 1);
}

TEST(Thread, waiting_for_one_that_goes_on_is_given_up_and_it_finishes_by_itself) {
    runs = 0;
    go_on = false;
    Thread *thread = thread_start(run_until_told);
    ASSERT_NE(thread, nullptr);
    EXPECT_FALSE(thread_join(thread, 20));
    EXPECT_EQ(runs, 0);
    go_on = true;
    for (int i = 0; i < 3000 && runs == 0; i++)
        thread_sleep(10);
    EXPECT_EQ(runs, 1);
}

TEST(Thread, many_can_run_at_once) {
    runs = 0;
    Thread *threads[20];
    for (Thread *&thread : threads)
        thread = thread_start(run_once);
    for (Thread *thread : threads) {
        ASSERT_NE(thread, nullptr);
        EXPECT_TRUE(thread_join(thread, 30'000));
    }
    EXPECT_EQ(runs, 20);
}
