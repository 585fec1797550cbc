// The main function of every test program.
#include <gtest/gtest.h>

#ifndef _WIN32
#include "platform/posix/recorder.h"

// What one test recorded is nothing to the next.
class RecorderReset : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo &) override {
        recorder_reset();
    }
};
#endif

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
#ifndef _WIN32
    testing::UnitTest::GetInstance()->listeners().Append(new RecorderReset);
#endif
    return RUN_ALL_TESTS();
}
