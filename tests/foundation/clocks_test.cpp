#include <gtest/gtest.h>

#include <atomic>

#include "foundation/foundation.h"
#include "support/test_support.h"

namespace {
std::atomic<int> routineRuns{0};
void countRun(void* argument) {
    EXPECT_EQ(argument, nullptr);
    ++routineRuns;
}
}  // namespace

TEST(WorkerThread, HeldUntilResumedAndJoinedOnDestruction) {
    routineRuns = 0;
    {
        WorkerThread never(countRun);
        EXPECT_TRUE(never.isSuspended());
        EXPECT_EQ(routineRuns, 0);
    }
    EXPECT_EQ(routineRuns, 1) << "destroying a held thread runs it to its end";

    {
        WorkerThread thread(countRun);
        thread.setPriority(3);
        EXPECT_EQ(thread.getPriority(), 0);
        thread.setPriority(-2);
        EXPECT_EQ(thread.getPriority(), -2);
        thread.resume();
        EXPECT_FALSE(thread.isSuspended());
        thread.resume();
    }
    EXPECT_EQ(routineRuns, 2);
}
