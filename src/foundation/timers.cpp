#include "foundation/foundation.h"
#include "platform/platform.h"

LongTimer::LongTimer() {
    TRACE_LOCATION("LongTimer::LongTimer");
    reset();
}

void LongTimer::reset() {
    TRACE_LOCATION("LongTimer::reset");
    elapsed = 0;
    lastTicks = Platform::clockMilliseconds();
}

void LongTimer::update() {
    TRACE_LOCATION("LongTimer::update");
    const uint32_t now = Platform::clockMilliseconds();
    elapsed += now - lastTicks;
    lastTicks = now;
}

void LongTimer::unpause() {
    TRACE_LOCATION("LongTimer::unpause");
    lastTicks = Platform::clockMilliseconds();
}

FrameClock::FrameClock() {
    reset();
}

void FrameClock::reset() {
    TRACE_LOCATION("FrameClock::reset");
    lastTicks = static_cast<int32_t>(Platform::clockMilliseconds());
    deltaTicks = 0;
    deltaSeconds = 0.0f;
}

void FrameClock::update() {
    TRACE_LOCATION("FrameClock::update");
    const int32_t now = static_cast<int32_t>(Platform::clockMilliseconds());
    deltaTicks = now - lastTicks;
    lastTicks = now;
    deltaSeconds = static_cast<float>(deltaTicks) * 0.001f;
    if (deltaSeconds < 1e-8f) deltaSeconds = 1e-8f;
}
