// The mover manager's file-level state, shared by its source files only.
#pragma once

#include <list>
#include <map>
#include <vector>

#include "dynamics/dynamics.h"

namespace MoverState {

extern std::list<Mover> movers;
extern std::map<Mover*, std::vector<LevelObject*>> moverObjects;
extern std::map<Mover*, std::vector<Polygon2D*>> moverPolygons;
extern std::list<DynamicPolygon> dynamicPolygons;
extern bool moverDraw;
extern bool dynamicNodeDraw;

// The entry's bounds moved by its polygon's offset overlap the square of the
// given half-width about the view's centre.
bool nearView(const DynamicPolygon& entry, float halfWidth);

}  // namespace MoverState
