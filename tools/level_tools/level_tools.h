// Level code that only the tools, the tests and the benchmarks need: the
// readable text form that levels are written in (see tools/rillc/README.md)
// and the writer of level files. The game itself only ever reads level files,
// so none of this is built into it.
#pragma once

#include <string>

#include "level/level.h"

namespace LevelFileFormat {
// The bytes of a level file. The caller keeps counts and names within limits.
std::string write(const LevelFile& level);
}  // namespace LevelFileFormat

namespace LevelText {
// On failure returns false and sets error to "SOURCE:LINE: what is wrong".
bool parse(const std::string& text, const std::string& sourceName, LevelFile& level, std::string& error);
std::string write(const LevelFile& level);
}  // namespace LevelText
