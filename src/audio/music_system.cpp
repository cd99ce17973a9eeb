// Streamed music: one file at a time, the intro's sound track once and the
// level's music in a loop. Without an audio output everything here is silent.
#include <algorithm>

#include "audio/audio.h"
#include "console/console.h"
#include "platform/music_backend.h"

namespace MusicSystem {

namespace {

struct State {
    bool initialised = false;
    MusicBackend::Stream* stream = nullptr;
    uint8_t volume = 255;
    uint32_t position = 0;  // where pause left the stream, in milliseconds
};

State& state() {
    return singleInstance<State>();
}

constexpr int outputRate = 44100;
constexpr int loudestVolume = 255;

bool conCmdMusicSystemInitialised() {
    TRACE_LOCATION("MusicSystem::conCmdMusicSystemInitialised");
    return state().initialised;
}

void conCmdMusicPlay(std::string fileName) {
    TRACE_LOCATION("MusicSystem::conCmdMusicPlay");
    if (fileName.empty()) {
        GLConsole::print("\nUSAGE: MusicPlay < file name >");
        return;
    }
    if (play(fileName, true))
        GLConsole::print("\nFile opened successfully.");
    else
        GLConsole::print("\nFailed to open file.");
}

int conCmdMusicVolume(int value, bool set) {
    TRACE_LOCATION("MusicSystem::conCmdMusicVolume");
    if (set) setVolume(static_cast<uint8_t>(std::clamp(value, 0, loudestVolume)));
    return getVolume();
}

const GLConsoleCommand commands[] = {
    {"MusicSystemInitialised", conCmdMusicSystemInitialised},
    {"MusicPlay", conCmdMusicPlay},
    {"MusicVolume", conCmdMusicVolume},
};

}  // namespace

void initialise() {
    TRACE_LOCATION("MusicSystem::initialise");
    shutdown();
    State& s = state();
    s.initialised = MusicBackend::open(outputRate);
    s.position = 0;
    GLConsole::print(s.initialised ? "\nMusic subsystem initialised successfully."
                                   : "\nError initialising music subsystem.");
    s.volume = loudestVolume;
    GLConsole::addCommands(commands);
}

void shutdown() {
    TRACE_LOCATION("MusicSystem::shutdown");
    State& s = state();
    if (s.initialised) {
        if (s.stream) MusicBackend::closeStream(s.stream);
        MusicBackend::close();
    }
    state() = State();
    GLConsole::removeCommands(commands);
}

bool play(const std::string& fileName, bool loop) {
    TRACE_LOCATION("MusicSystem::play");
    State& s = state();
    s.position = 0;
    if (!s.initialised || fileName.empty()) return false;
    if (s.stream) {
        MusicBackend::stopStream(s.stream);
        if (!MusicBackend::closeStream(s.stream)) return false;
        s.stream = nullptr;
    }
    s.stream = MusicBackend::openStream(fileName);
    if (!s.stream) return false;
    MusicBackend::setLooping(s.stream, loop);
    MusicBackend::playStream(s.stream);
    // After the start, so that a stream plays at the stored volume, 0 included.
    MusicBackend::setVolume(s.volume);
    return true;
}

bool stop() {
    TRACE_LOCATION("MusicSystem::stop");
    State& s = state();
    if (!s.initialised || !s.stream) return true;
    MusicBackend::stopStream(s.stream);
    if (!MusicBackend::closeStream(s.stream)) return false;
    s.stream = nullptr;
    return true;
}

bool pause() {
    TRACE_LOCATION("MusicSystem::pause");
    State& s = state();
    if (!s.stream) return false;
    s.position = MusicBackend::getPosition(s.stream);
    MusicBackend::stopStream(s.stream);
    return true;
}

bool resume() {
    TRACE_LOCATION("MusicSystem::resume");
    State& s = state();
    if (!s.stream) return false;
    MusicBackend::playStream(s.stream);
    MusicBackend::setPosition(s.stream, s.position);
    return true;
}

void setVolume(uint8_t volume) {
    TRACE_LOCATION("MusicSystem::setVolume");
    State& s = state();
    if (!s.initialised) return;
    MusicBackend::setVolume(volume);
    s.volume = volume;
}

uint8_t getVolume() {
    TRACE_LOCATION("MusicSystem::getVolume");
    return state().initialised ? state().volume : 0;
}

}  // namespace MusicSystem
