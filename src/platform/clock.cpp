#include <chrono>
#include <thread>

#include "foundation/single_instance.h"
#include "platform/platform.h"

namespace Platform {

namespace {
using SteadyClock = std::chrono::steady_clock;

struct State {
    SteadyClock::time_point startTime = SteadyClock::now();
    bool manualClock = false;
    uint64_t manualMicroseconds = 0;
};

State& state() {
    return singleInstance<State>();
}
}  // namespace

uint64_t clockMicroseconds() {
    if (state().manualClock) return state().manualMicroseconds;
    const auto since = SteadyClock::now() - state().startTime;
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(since).count());
}

uint32_t clockMilliseconds() {
    return static_cast<uint32_t>(clockMicroseconds() / 1000);
}

void setManualClock(bool manual) {
    if (manual && !state().manualClock) state().manualMicroseconds = clockMicroseconds();
    state().manualClock = manual;
}

void advanceClock(uint64_t microseconds) {
    state().manualMicroseconds += microseconds;
}

void sleepMilliseconds(uint32_t milliseconds) {
    if (state().manualClock)
        advanceClock(uint64_t{milliseconds} * 1000);
    else
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace Platform
