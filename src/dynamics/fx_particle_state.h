// The effect particle manager's file-level state, shared by its source files only.
#pragma once

#include <list>
#include <vector>

#include "dynamics/dynamics.h"

namespace FxParticleManager {

struct State {
    // Triggers hold pointers to emitters, so they live in a list.
    std::list<FxParticleEmitter> emitters;
    // New ones at the end. Nothing outside a step or a frame points into it.
    std::vector<FxParticle> particles;
    bool emitterDraw = false;
    // The draw order of one frame, kept so that it stops allocating once it has grown.
    std::vector<const FxParticle*> drawHeap;
};
State& state();

}  // namespace FxParticleManager
