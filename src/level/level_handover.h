// The commit phase of level loading, shared by the loader and its hand-over.
#pragma once

#include "dynamics/dynamics.h"
#include "level/level.h"

namespace LevelLoader {
// Clears the old level and gives every record to its owner, in the one order
// that lets later owners find what earlier ones hold. Polygons and emitters
// come ready made: their textures and settings files were read before the old
// level was touched.
void handOver(const LevelFile& level, const std::vector<Polygon2D>& polygons,
              const std::vector<FxParticleEmitter>& emitters);
}  // namespace LevelLoader
