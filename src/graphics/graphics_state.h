// File-level state of the renderers that more than one file looks at: the
// level's sprites and the moving polygons, for their files and tests.
#pragma once

#include <list>
#include <vector>

#include "graphics/graphics.h"
#include "graphics/polygon_batches.h"

namespace LevelObjectsManager {

struct State {
    std::list<LevelObject> staticObjects;
    std::list<LevelObject> animatedObjects;
    std::vector<const LevelObject*> drawQueues[drawLayerCount];
    bool objectsDraw = true;
    bool objectsCull = true;
    bool objectsDrawIds = false;
    float animationSpeed = 15.0f;
};
State& state();

}  // namespace LevelObjectsManager

namespace DynamicPolygonRenderer {

struct Entry {
    Polygon2D* polygon = nullptr;
    float minX = 0.0f, maxX = 0.0f, minY = 0.0f, maxY = 0.0f;
    GLTexture texture;
};

struct State {
    std::list<Entry> entries;
    std::vector<TexturedPolygon> queues[drawLayerCount];
};
State& state();

}  // namespace DynamicPolygonRenderer
