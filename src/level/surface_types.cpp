// Friction of the five surfaces a level polygon can be made of.
#include <algorithm>

#include "level/level.h"

namespace {

constexpr int surfaceCount = 5;
const char* const frictionKeys[surfaceCount] = {"surfaceFriction_metal", "surfaceFriction_wood",
                                                "surfaceFriction_stone", "surfaceFriction_cloth",
                                                "surfaceFriction_sand"};

struct State {
    float frictions[surfaceCount] = {1.0f, 1.0f, 1.0f, 1.0f, 1.0f};
};

State& state() {
    return singleInstance<State>();
}

}  // namespace

namespace SurfaceTypeManager {

void initialise() {
    TRACE_LOCATION("SurfaceTypeManager::initialise");
    ConfigFile config("cfg\\surfaces.cfg");
    for (int i = 0; i < surfaceCount; ++i)
        state().frictions[i] = std::clamp(config.getVarAsFloat(frictionKeys[i]), 0.0f, 1.0f);
}

bool validSurfaceType(int type) {
    TRACE_LOCATION("SurfaceTypeManager::validSurfaceType");
    return type >= 1 && type <= surfaceCount;
}

float getSurfaceTypeFriction(int type) {
    TRACE_LOCATION("SurfaceTypeManager::getSurfaceTypeFriction");
    if (!validSurfaceType(type)) return 1.0f;
    return state().frictions[type - 1];
}

}  // namespace SurfaceTypeManager
