// The level's sound sources: two stores by id, the trigger actions on them, and
// the step that fades the loops with the view's distance and keeps loops of
// one file in step.
#include <algorithm>

#include "audio/audio.h"
#include "audio/audio_links.h"
#include "audio/sound_source_state.h"
#include "console/console.h"

namespace SoundSourceManager {

State& state() {
    return singleInstance<State>();
}

namespace {

template <typename Action>
void forEachOfId(int32_t id, Action action) {
    TRACE_LOCATION("SoundSourceManager::forEachOfId");
    State& s = state();
    for (auto* store : {&s.looping, &s.oneShot}) {
        const auto found = store->find(id);
        if (found == store->end()) continue;
        for (SoundSource& source : found->second) action(source);
    }
}

template <typename Action>
void forEachSource(Action action) {
    TRACE_LOCATION("SoundSourceManager::forEachSource");
    State& s = state();
    for (auto* store : {&s.looping, &s.oneShot})
        for (auto& [id, list] : *store)
            for (SoundSource& source : list) action(source);
}

// A source made here is stopped until a trigger or the level's reset starts it.
void conCmdSoundSourceCreate(std::string arguments) {
    TRACE_LOCATION("SoundSourceManager::conCmdSoundSourceCreate");
    std::vector<std::string> args;
    if (!GLConsole::readArguments(
            arguments, "nnnbis",
            "\nUSAGE: SoundSourceCreate < x : number > < y : number > < strenght : number > "
            "< looping : true OR false > < id : integer > < fileName > ",
            args))
        return;
    const Sound sound(args[5]);
    const SoundSource source(sound, slStringToFloat(args[0]), slStringToFloat(args[1]),
                             slStringToBool(args[3]), slStringToInt(args[4]), slStringToFloat(args[2]));
    addSoundSource(source);
    updateAllSounds();
}

int conCmdSoundSourceCount() {
    TRACE_LOCATION("SoundSourceManager::conCmdSoundSourceCount");
    std::size_t count = 0;
    State& s = state();
    for (auto* store : {&s.looping, &s.oneShot})
        for (const auto& [id, list] : *store) count += list.size();
    return static_cast<int>(count);
}

const GLConsoleCommand commands[] = {
    {"SoundSourceCreate", conCmdSoundSourceCreate},
    {"SoundSourceCount", conCmdSoundSourceCount},
    {"SoundSourceDraw", GLConsole::settingCommand<state, &State::draw>},
};
const GLConsole::Subsystem console("\nInitialising sound source manager..",
                                   "\nShutting down sound source manager..", commands);

}  // namespace

void initialise() {
    TRACE_LOCATION("SoundSourceManager::initialise");
    shutdown();
    GLConsole::startSubsystem(console);
    state().draw = false;
}

void shutdown() {
    TRACE_LOCATION("SoundSourceManager::shutdown");
    GLConsole::stopSubsystem(console);
    state() = State();
}

void addSoundSource(const SoundSource& source) {
    TRACE_LOCATION("SoundSourceManager::addSoundSource");
    State& s = state();
    std::list<SoundSource>& list = (source.looping ? s.looping : s.oneShot)[source.id];
    list.push_front(source);
    if (source.looping && !source.stopped) list.front().sound.loop();
}

void getSoundSources(int32_t id, std::vector<const SoundSource*>& list) {
    TRACE_LOCATION("SoundSourceManager::getSoundSources");
    forEachOfId(id, [&list](const SoundSource& source) { list.push_back(&source); });
}

void playSounds(int32_t id) {
    TRACE_LOCATION("SoundSourceManager::playSounds");
    forEachOfId(id, [](SoundSource& source) {
        source.stopped = false;
        if (source.looping)
            source.sound.loop();
        else
            source.sound.play();
    });
}

void stopSounds(int32_t id) {
    TRACE_LOCATION("SoundSourceManager::stopSounds");
    forEachOfId(id, [](SoundSource& source) {
        source.stopped = true;
        source.sound.stop();
    });
}

void playExcludedSounds(const std::vector<int32_t>& ids) {
    TRACE_LOCATION("SoundSourceManager::playExcludedSounds");
    for (auto& [id, list] : state().looping) {
        if (std::find(ids.begin(), ids.end(), id) != ids.end()) continue;
        for (SoundSource& source : list) {
            source.sound.setVolume(0.0f);
            source.sound.loop();
            source.stopped = false;
        }
    }
}

void pauseAllSounds() {
    TRACE_LOCATION("SoundSourceManager::pauseAllSounds");
    forEachSource([](SoundSource& source) { source.sound.stop(); });
}

void resetSounds() {
    TRACE_LOCATION("SoundSourceManager::resetSounds");
    state().draw = false;
    forEachSource([](SoundSource& source) { source.reset(); });
}

void updateAllSounds() {
    TRACE_LOCATION("SoundSourceManager::updateAllSounds");
    const Vector2D listener = AudioLinks::listenerPosition();
    const bool allowed = AudioLinks::soundAllowed();
    for (auto& [id, list] : state().looping) {
        for (SoundSource& source : list) {
            if (source.stopped) continue;
            const float level = 1.0f - distance(listener, source.position) / source.strength;
            // Written so that a strength of 0 at the listener's own place, which
            // gives no number at all, counts as silent too.
            if (!(level >= quietestLevel) || !allowed) {
                if (source.sound.isPlaying()) {
                    source.sound.stop();
                    syncLoopingSound(source);
                }
                continue;
            }
            if (!source.sound.isPlaying()) {
                syncLoopingSound(source);
                source.sound.loop();
            }
            source.sound.setVolume(level);
        }
    }
}

// Only a run of playing loops from the start of the store is looked at: the
// walk ends at the first loop that is silent. The last match wins.
void syncLoopingSound(SoundSource& source) {
    TRACE_LOCATION("SoundSourceManager::syncLoopingSound");
    for (auto& [id, list] : state().looping) {
        for (SoundSource& other : list) {
            if (&other == &source) continue;
            if (!other.sound.isPlaying()) return;
            if (other.sound.getName() == source.sound.getName()) source.sound.synchroniseWith(other.sound);
        }
    }
}

}  // namespace SoundSourceManager
