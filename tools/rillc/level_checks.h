// The warnings of "rillc check": traps in a level that the game loads without
// a word but that do not play as the designer meant.
#pragma once

#include <string>
#include <vector>

#include "level/level.h"

namespace LevelChecks {

// A warning names the record by its kind and index and says what the player
// will see.
struct Warnings {
    std::vector<std::string> lines;
    void add(const std::string& record, const std::string& text) { lines.push_back(record + ": " + text); }
};

// "polygon 3 (id 7)", "trigger 2 (Level_end_a)" and the like.
std::string polygonName(std::size_t index, const Polygon2D& polygon);

// Inside the polygon's outline (even-odd), as water at that point would be
// inside the rock.
bool insideOutline(const Polygon2D& polygon, const Vector2D& point);

// Every check, on the level that Level::load has just loaded from these records.
// Names of files are looked up under dataDirectory, as the game looks them up
// under its working directory.
Warnings checkLevel(const LevelFile& records, const std::string& dataDirectory);

// The edges that the BSP tree loses from the polygons of the loaded level:
// overlapping solids whose edges run the same way, caulk inside a solid, and
// runs of almost straight edges that merge into one edge that leaves the outline.
void checkTreeEdges(Warnings& warnings);

}  // namespace LevelChecks
