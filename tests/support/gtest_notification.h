// GoogleTest makes its threads wait for one another with <mutex>, which the cross compiler's
// Windows threads come without. This class is all it needs it for; tests/CMakeLists.txt has it
// included before GoogleTest's own headers.
#pragma once

#include <atomic>

#define GTEST_HAS_NOTIFICATION_ 1

namespace testing::internal {
class Notification {
public:
    void Notify() {
        notified = true;
    }
    void WaitForNotification() {
        while (!notified) {
        }
    }

private:
    std::atomic<bool> notified = false;
};
} // namespace testing::internal
