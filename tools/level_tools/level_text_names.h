// The names the level text form uses for numbered values.
#pragma once

#include <cstdint>
#include <string>

namespace LevelTextNames {

struct Named {
    int32_t value;
    const char* name;
};

// Null when the value has no name.
const char* nameOf(const Named* table, int count, int32_t value);
// False when the word is no name of the table.
bool valueOf(const Named* table, int count, const std::string& word, int32_t& value);

extern const Named surfaces[];
extern const int surfaceCount;
extern const Named collisionModes[];
extern const int collisionModeCount;
extern const Named triggerTypes[];
extern const int triggerTypeCount;

// What firing a trigger of a type acts on, as bits: the water inside it, or the
// level's things whose id is the trigger's target, or neither (the camera, the
// rules). A type may act on several kinds.
enum ActsOn : unsigned {
    actsOnNothing = 0,
    actsOnWater = 1u << 0,
    actsOnPolygons = 1u << 1,
    actsOnObjects = 1u << 2,
    actsOnForces = 1u << 3,
    actsOnMovers = 1u << 4,
    actsOnEmitters = 1u << 5,
    actsOnSounds = 1u << 6,
    actsOnCamera = 1u << 7,
    actsOnRules = 1u << 8,
};
// The kinds whose id the target must name for the trigger to do anything.
constexpr unsigned actsOnTargets =
    actsOnPolygons | actsOnObjects | actsOnForces | actsOnMovers | actsOnEmitters | actsOnSounds;
// Nothing for a type the game does not know: such a trigger does nothing.
unsigned triggerActsOn(int32_t type);

}  // namespace LevelTextNames
