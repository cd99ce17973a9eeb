// The output device and the master volume.
#include <algorithm>

#include "audio/audio.h"
#include "console/console.h"

namespace SoundSystem {

namespace {

struct State {
    bool device = false;
    bool primary = false;
    float masterVolume = 1.0f;
};

State& state() {
    return singleInstance<State>();
}

const char* const failureMessage = "\nError initialising sound subsystem.";

}  // namespace

void initialise() {
    TRACE_LOCATION("SoundSystem::initialise");
    State& s = state();
    if (s.device) return;
    s.masterVolume = 1.0f;
    if (!SoundBackend::openDevice()) {
        GLConsole::print(failureMessage);
        return;
    }
    s.device = true;
    if (!SoundBackend::createContext()) {
        GLConsole::print(failureMessage);
        shutdown();
        return;
    }
    // Without the output mix of its own the device still plays every sound.
    s.primary = SoundBackend::createPrimary();
    if (!s.primary) {
        GLConsole::print(failureMessage);
        return;
    }
    GLConsole::print("\nSound subsystem initialised successfully.");
}

void shutdown() {
    TRACE_LOCATION("SoundSystem::shutdown");
    State& s = state();
    if (!s.device) return;
    if (s.primary) SoundBackend::releasePrimary();
    SoundBackend::closeDevice();
    s.device = false;
    s.primary = false;
}

void setVolume(float volume) {
    TRACE_LOCATION("SoundSystem::setVolume");
    state().masterVolume = std::clamp(volume, 0.0f, 1.0f);
}

float getVolume() {
    TRACE_LOCATION("SoundSystem::getVolume");
    return state().masterVolume;
}

bool hasDevice() {
    TRACE_LOCATION("SoundSystem::hasDevice");
    return state().device;
}

}  // namespace SoundSystem
