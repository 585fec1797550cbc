#include "platform/network.h"

#include <gtest/gtest.h>

TEST(Network, it_starts_and_stops_and_starts_again) {
    EXPECT_EQ(0, network_start());
    network_stop();
    EXPECT_EQ(0, network_start());
    network_stop();
}
