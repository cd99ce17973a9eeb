// What the content tests need to know of a level's text source: the names it
// asks for and the areas of its triggers.
#pragma once

#include <string>
#include <vector>

struct TriggerArea {
    std::string type;
    float left = 0, top = 0, right = 0, bottom = 0;
};

struct LevelSource {
    std::vector<std::string> quotedNames;
    std::vector<TriggerArea> triggers;
};

LevelSource readLevelSource(const std::string& text);
