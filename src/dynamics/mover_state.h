// The mover manager's file-level state, shared by its source files only.
#pragma once

#include <list>
#include <map>
#include <vector>

#include "dynamics/dynamics.h"

namespace MoverManager {

struct State {
    std::list<Mover> movers;
    std::map<Mover*, std::vector<LevelObject*>> moverObjects;
    std::map<Mover*, std::vector<Polygon2D*>> moverPolygons;
    std::list<DynamicPolygon> dynamicPolygons;
    bool moverDraw = false;
    bool dynamicNodeDraw = false;
    // This step's edges near the view, built here and swapped into the water's
    // collision test, so that neither list allocates from step to step.
    std::vector<BspNode> collideableNodes;
};
State& state();

// The entry's bounds moved by its polygon's offset overlap the square of the
// given half-width about the view's centre.
bool nearView(const DynamicPolygon& entry, float halfWidth);

}  // namespace MoverManager
