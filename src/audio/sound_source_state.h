// The sound source manager's state, shared by its files (and tests that look inside).
#pragma once

#include <list>
#include <map>

#include "audio/audio.h"

namespace SoundSourceManager {

struct State {
    // Looping sources and one-shot sources, each by id, newest first in a list.
    std::map<int32_t, std::list<SoundSource>> looping;
    std::map<int32_t, std::list<SoundSource>> oneShot;
    bool draw = false;
};
State& state();

}  // namespace SoundSourceManager
