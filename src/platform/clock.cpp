#include <chrono>
#include <thread>

#include "platform/platform.h"

namespace Platform {

namespace {
using SteadyClock = std::chrono::steady_clock;
const SteadyClock::time_point startTime = SteadyClock::now();
bool manualClock = false;
uint64_t manualMicroseconds = 0;
}  // namespace

uint64_t clockMicroseconds() {
    if (manualClock) return manualMicroseconds;
    const auto since = SteadyClock::now() - startTime;
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(since).count());
}

uint32_t clockMilliseconds() { return static_cast<uint32_t>(clockMicroseconds() / 1000); }

void setManualClock(bool manual) {
    if (manual && !manualClock) manualMicroseconds = clockMicroseconds();
    manualClock = manual;
}

bool isManualClock() { return manualClock; }

void advanceClock(uint64_t microseconds) { manualMicroseconds += microseconds; }

void sleepMilliseconds(uint32_t milliseconds) {
    if (manualClock)
        advanceClock(uint64_t{milliseconds} * 1000);
    else
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace Platform
