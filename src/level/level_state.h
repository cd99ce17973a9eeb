// The loaded level's file-level state, shared by the level's source files only.
#pragma once

#include <list>
#include <map>
#include <vector>

#include "level/level.h"

namespace Level {

struct State {
    std::list<Polygon2D> polygons;
    // Which tree nodes carry each polygon's edges, pieces cut by the tree included.
    std::map<Polygon2D*, std::vector<BspNode*>> polyNodeMap;
    Vector2D waterStart;
    Vector2D cameraStart;
    bool drawTriangles = false;
    // The records kept for their owners (objects, forces, sounds, movers, emitters, triggers).
    LevelRecords records;
};
State& state();

}  // namespace Level
