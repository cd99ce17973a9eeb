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

}  // namespace LevelTextNames
