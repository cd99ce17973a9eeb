// The store of sound files: one master buffer for each upper-cased name,
// counted by the handles on it, and the commands that list them.
#include <map>

#include "audio/audio.h"
#include "console/console.h"

namespace SoundManager {

namespace {

struct State {
    // Entries stay where they are while in the map, so handles may point at them.
    std::map<std::string, SoundInternal> sounds;
};

State& state() {
    return singleInstance<State>();
}

std::string upperCase(const std::string& name) {
    TRACE_LOCATION("SoundManager::upperCase");
    std::string upper = name;
    slStringUpper(upper);
    return upper;
}

void conCmdSoundList() {
    TRACE_LOCATION("SoundManager::conCmdSoundList");
    GLConsole::printTitle("Sounds in use");
    std::vector<std::string> list;
    getSoundList(list);
    for (const std::string& line : list) {
        GLConsole::print("\n");
        GLConsole::print(line);
    }
}

// Duplicates share their master's samples, so only the masters count.
void conCmdSoundMemory() {
    TRACE_LOCATION("SoundManager::conCmdSoundMemory");
    GLConsole::printTitle("Sound memory used");
    unsigned int bytes = 0;
    for (const auto& [name, entry] : state().sounds)
        if (entry.buffer != SoundBackend::noBuffer) bytes += SoundBackend::getBufferBytes(entry.buffer);
    GLConsole::print(bytes);
    GLConsole::print(" bytes.");
}

const GLConsoleCommand commands[] = {
    {"SoundList", conCmdSoundList},
    {"SoundMemory", conCmdSoundMemory},
};

}  // namespace

void initialise() {
    TRACE_LOCATION("SoundManager::initialise");
    shutdown();
    GLConsole::addCommands(commands);
}

void shutdown() {
    TRACE_LOCATION("SoundManager::shutdown");
    for (const auto& [name, entry] : state().sounds) SoundBackend::releaseBuffer(entry.buffer);
    state() = State();
    GLConsole::removeCommands(commands);
}

SoundInternal* loadSound(const std::string& name) {
    TRACE_LOCATION("SoundManager::loadSound");
    const std::string key = upperCase(name);
    std::map<std::string, SoundInternal>& sounds = state().sounds;
    const auto found = sounds.find(key);
    if (found != sounds.end()) {
        ++found->second.refCount;
        return &found->second;
    }
    SoundInternal entry;
    entry.refCount = 1;
    entry.buffer = createSoundBuffer(key);
    return &sounds.emplace(key, entry).first->second;
}

void freeSound(const std::string& name) {
    TRACE_LOCATION("SoundManager::freeSound");
    std::map<std::string, SoundInternal>& sounds = state().sounds;
    const auto found = sounds.find(upperCase(name));
    if (found == sounds.end()) return;
    if (--found->second.refCount > 0) return;
    SoundBackend::releaseBuffer(found->second.buffer);
    sounds.erase(found);
}

void getSoundList(std::vector<std::string>& list) {
    TRACE_LOCATION("SoundManager::getSoundList");
    for (const auto& [name, entry] : state().sounds)
        list.push_back(entry.buffer == SoundBackend::noBuffer ? name + " (loading failed)" : name);
}

}  // namespace SoundManager
