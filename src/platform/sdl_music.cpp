// MusicBackend on SDL2_mixer. The mixer has one music slot: the stream in it
// plays or stands paused, and a stopped stream is a paused one, so that it
// goes on from the same sample instead of from a seek.
#include <SDL2/SDL.h>
#include <SDL2/SDL_mixer.h>

#include <cmath>
#include <set>

#include "foundation/single_instance.h"
#include "platform/music_backend.h"
#include "platform/platform.h"

namespace MusicBackend {

struct Stream {
    Mix_Music* music = nullptr;
    bool looping = false;
    bool paused = false;
    uint32_t stoppedAt = 0;
    // Set while the stream goes on from stoppedAt after a stop; a request to
    // move it to that very place then needs no seek.
    bool resumed = false;
};

namespace {

struct State {
    bool open = false;
    Stream* current = nullptr;  // the stream in the mixer's music slot
    std::set<Stream*> streams;
    uint8_t volume = 255;
};

State& state() {
    return singleInstance<State>();
}

constexpr int outputChannels = 2;
constexpr int outputChunkFrames = 2048;

bool inMixer(const Stream* stream) {
    return stream && stream == state().current;
}

void applyVolume() {
    const double scaled = state().volume * static_cast<double>(MIX_MAX_VOLUME) / 255.0;
    Mix_VolumeMusic(static_cast<int>(std::lround(scaled)));
}

uint32_t mixerPosition(Stream* stream) {
    const double seconds = Mix_GetMusicPosition(stream->music);
    return seconds > 0.0 ? static_cast<uint32_t>(seconds * 1000.0) : 0;
}

}  // namespace

bool open(int rate) {
    State& s = state();
    if (s.open) return true;
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return false;
    if (Mix_OpenAudio(rate, AUDIO_S16SYS, outputChannels, outputChunkFrames) != 0) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    Mix_Init(MIX_INIT_OGG);
    s.open = true;
    applyVolume();
    return true;
}

void close() {
    State& s = state();
    if (!s.open) return;
    Mix_HaltMusic();
    for (Stream* stream : s.streams) {
        Mix_FreeMusic(stream->music);
        delete stream;
    }
    s.streams.clear();
    s.current = nullptr;
    Mix_CloseAudio();
    Mix_Quit();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    s.open = false;
}

Stream* openStream(const std::string& gameName) {
    State& s = state();
    if (!s.open) return nullptr;
    FILE* file = Platform::openFile(gameName, "rb");
    if (!file) return nullptr;
    SDL_RWops* reader = SDL_RWFromFP(file, SDL_TRUE);
    if (!reader) {
        std::fclose(file);
        return nullptr;
    }
    Mix_Music* music = Mix_LoadMUS_RW(reader, 1);
    if (!music) return nullptr;
    Stream* stream = new Stream;
    stream->music = music;
    s.streams.insert(stream);
    return stream;
}

bool closeStream(Stream* stream) {
    State& s = state();
    if (s.streams.erase(stream) == 0) return false;
    if (inMixer(stream)) {
        Mix_HaltMusic();
        s.current = nullptr;
    }
    Mix_FreeMusic(stream->music);
    delete stream;
    return true;
}

void setLooping(Stream* stream, bool looping) {
    if (state().streams.count(stream)) stream->looping = looping;
}

void playStream(Stream* stream) {
    State& s = state();
    if (!s.streams.count(stream)) return;
    if (inMixer(stream) && stream->paused) {
        Mix_ResumeMusic();
        stream->paused = false;
        stream->resumed = true;
        return;
    }
    if (inMixer(stream) && Mix_PlayingMusic()) return;
    if (s.current) s.current->paused = false;
    // The mixer takes -1 for ever and 1 for once through.
    Mix_PlayMusic(stream->music, stream->looping ? -1 : 1);
    s.current = stream;
    stream->paused = false;
    stream->resumed = false;
    applyVolume();
}

void stopStream(Stream* stream) {
    if (!inMixer(stream) || stream->paused || !Mix_PlayingMusic()) return;
    stream->stoppedAt = mixerPosition(stream);
    Mix_PauseMusic();
    stream->paused = true;
    stream->resumed = false;
}

bool isPlaying(const Stream* stream) {
    return inMixer(stream) && !stream->paused && Mix_PlayingMusic();
}

uint32_t getPosition(const Stream* stream) {
    if (!inMixer(stream)) return 0;
    if (stream->paused) return stream->stoppedAt;
    return mixerPosition(state().current);
}

void setPosition(Stream* stream, uint32_t milliseconds) {
    if (!inMixer(stream)) return;
    if (stream->resumed && milliseconds == stream->stoppedAt) {
        stream->resumed = false;
        return;
    }
    stream->resumed = false;
    if (stream->paused) stream->stoppedAt = milliseconds;
    Mix_SetMusicPosition(milliseconds / 1000.0);
}

void setVolume(uint8_t volume) {
    state().volume = volume;
    if (state().open) applyVolume();
}

}  // namespace MusicBackend
