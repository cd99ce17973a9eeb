// Deterministic, tileable noise. Every lattice wraps at its period, so a
// texture sampled over one period joins its own edges without a seam; all
// randomness comes from integer hashing of the lattice point and a seed.
#pragma once

#include <cstdint>

uint32_t hashPoint(int x, int y, uint32_t seed);
// 0 to 1, from the hash.
float hashUnit(int x, int y, uint32_t seed);

// Gradient noise at (x, y) in lattice units, wrapping at period; about -1 to 1.
float perlin(float x, float y, int period, uint32_t seed);
// The same with a period of its own in each axis, for streaked patterns.
float perlin(float x, float y, int periodX, int periodY, uint32_t seed);
// Sum of octaves of perlin over a unit square (u, v in 0..1 for one tile),
// starting with basePeriod cells across; mapped to about 0 to 1.
float fractal(float u, float v, int basePeriod, int octaves, uint32_t seed, float gain = 0.5f);

// Cellular noise: distances to the nearest and second nearest feature point,
// one point in each of period by period cells over the unit square.
struct CellDistances {
    float nearest = 0.0f;
    float second = 0.0f;
    uint32_t cellHash = 0;
};
CellDistances cellular(float u, float v, int period, uint32_t seed);
