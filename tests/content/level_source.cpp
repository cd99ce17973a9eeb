#include "content/level_source.h"

#include <sstream>

namespace {

void readTrigger(std::istringstream& words, LevelSource& level) {
    TriggerArea area;
    std::string word;
    while (words >> word) {
        if (word == "type") words >> area.type;
        if (word == "rect") words >> area.left >> area.top >> area.right >> area.bottom;
    }
    level.triggers.push_back(area);
}

void readNames(const std::string& line, LevelSource& level) {
    for (size_t open = line.find('"'); open != std::string::npos; open = line.find('"', open)) {
        const size_t close = line.find('"', open + 1);
        if (close == std::string::npos) return;
        level.quotedNames.push_back(line.substr(open + 1, close - open - 1));
        open = close + 1;
    }
}

}  // namespace

LevelSource readLevelSource(const std::string& text) {
    LevelSource level;
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        line = line.substr(0, line.find('#'));
        for (char& c : line)
            if (c == ',') c = ' ';
        std::istringstream words(line);
        std::string keyword;
        words >> keyword;
        if (keyword == "trigger") readTrigger(words, level);
        readNames(line, level);
    }
    return level;
}
