#include <gtest/gtest.h>

#include <atomic>

#include "foundation/foundation.h"
#include "support/test_support.h"

TEST(LongTimer, UnpauseLeavesThePausedSpanOut) {
    ManualClock clock;
    LongTimer timer;
    clock.advanceMilliseconds(100);
    timer.update();
    EXPECT_EQ(timer.elapsed, 100u);

    clock.advanceMilliseconds(500);  // paused: no updates
    timer.unpause();
    clock.advanceMilliseconds(20);
    timer.update();
    EXPECT_EQ(timer.elapsed, 120u);

    clock.advanceMilliseconds(300);  // paused but resumed without unpause
    timer.update();
    timer.update();
    EXPECT_EQ(timer.elapsed, 420u);

    timer.reset();
    EXPECT_EQ(timer.elapsed, 0u);
}

TEST(FrameClock, DeltaNeverFallsToZero) {
    ManualClock clock;
    FrameClock frame;
    EXPECT_EQ(frame.deltaTicks, 0);
    EXPECT_EQ(frame.deltaSeconds, 0.0f);
    frame.update();
    frame.update();
    EXPECT_EQ(frame.deltaTicks, 0);
    EXPECT_EQ(frame.deltaSeconds, 1e-8f);
    clock.advanceMilliseconds(16);
    frame.update();
    EXPECT_EQ(frame.deltaTicks, 16);
    EXPECT_FLOAT_EQ(frame.deltaSeconds, 0.016f);
}

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
