// Level code that only the tools, the tests and the benchmarks need: the
// readable text form that levels are written in (see tools/rillc/README.md)
// and the writer of level files. The game itself only ever reads level files,
// so none of this is built into it.
#pragma once

#include <string>

#include "level/level.h"

// Calls visit with each list of records, in the order that both the file and
// the text form keep them.
template <typename Visit>
void forEachSection(const LevelFile& level, Visit&& visit) {
    visit(level.polygons);
    visit(level.objects);
    visit(level.forces);
    visit(level.movers);
    visit(level.triggers);
    visit(level.sounds);
    visit(level.emitters);
}

namespace LevelFileFormat {
// The bytes of a level file. The caller keeps counts and names within limits.
std::string write(const LevelFile& level);
}  // namespace LevelFileFormat

namespace LevelText {
// On failure returns false and sets error to "SOURCE:LINE: what is wrong".
bool parse(const std::string& text, const std::string& sourceName, LevelFile& level, std::string& error);
std::string write(const LevelFile& level);
}  // namespace LevelText
