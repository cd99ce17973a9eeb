// Tileable level textures. A polygon's texture is laid out one texel to one
// world unit and repeats, so every picture here joins its own edges.
#include <cmath>

#include "art.h"
#include "bake-common/bake_common.h"
#include "noise.h"

namespace {

constexpr int tileSize = 256;

using TexelFunction = Rgba (*)(int x, int y);

Image paint(TexelFunction texel) {
    Image image(tileSize, tileSize);
    for (int y = 0; y < tileSize; ++y)
        for (int x = 0; x < tileSize; ++x) image.at(x, y) = texel(x, y);
    return image;
}

float unitX(int x) {
    return static_cast<float>(x) / tileSize;
}

Rgba scaled(const Rgba& c, float k) {
    return {clamp01(c.r * k), clamp01(c.g * k), clamp01(c.b * k), c.a};
}

// Distance in texels to the nearest multiple of spacing, wrapping.
int distanceToLine(int v, int spacing) {
    const int r = ((v % spacing) + spacing) % spacing;
    return r < spacing - r ? r : spacing - r;
}

// Brushed steel panels with bevelled seams and rivets: slick, cold, man-made.
Rgba metalTexel(int x, int y) {
    const float u = unitX(x), v = unitX(y);
    const float brush =
        0.5f + 0.5f * (0.6f * perlin(u * 4, v * 96, 4, 96, 11u) + 0.4f * perlin(u * 8, v * 192, 8, 192, 12u));
    const float tone = fractal(u, v, 2, 3, 13u);
    Rgba c = scaled(rgb(0.50f, 0.54f, 0.58f), 0.8f + 0.25f * brush + 0.2f * (tone - 0.5f));
    // Seams stand inside the tile, so that its border runs through plain metal.
    const int shiftedY = y + 64;
    const int offsetX = 32 + ((shiftedY / 128) % 2) * 64;
    const int seamX = distanceToLine(x + offsetX, 128);
    const int seamY = distanceToLine(shiftedY, 128);
    const int seam = seamX < seamY ? seamX : seamY;
    if (seam == 0) return scaled(c, 0.35f);
    if (seam == 1) return scaled(c, 1.25f);
    const int px = (x + offsetX) % 128, py = shiftedY % 128;
    for (int cx : {9, 119}) {
        for (int cy : {9, 119}) {
            const float dx = static_cast<float>(px) + 0.5f - static_cast<float>(cx);
            const float dy = static_cast<float>(py) + 0.5f - static_cast<float>(cy);
            const float d = std::sqrt(dx * dx + dy * dy);
            if (d < 3.5f) return scaled(c, 1.05f + 0.35f * clamp01(-(dx + dy) / 5.0f) - 0.2f * (d / 3.5f));
            if (d < 4.5f) return scaled(c, 0.55f);
        }
    }
    return c;
}

// Horizontal planks, each its own shade, with grain, knots and butt joints.
Rgba woodTexel(int x, int y) {
    const float u = unitX(x), v = unitX(y);
    // Plank edges stand inside the tile, so that its border runs through wood.
    const int shiftedY = y + 16;
    const int plank = (shiftedY / 32) % 8;
    const int joint = static_cast<int>(hashUnit(plank, 0, 21u) * tileSize);
    const float shade = hashUnit(plank, 1, 21u);
    const float warp = 7.0f * perlin(u * 4, v * 8, 4, 8, 22u);
    const float grain =
        0.5f + 0.5f * std::sin((static_cast<float>(shiftedY % 32) + warp) * 0.85f + shade * twoPi);
    const float fibre = 0.5f + 0.5f * perlin(u * 16, v * 128, 16, 128, 23u);
    const Rgba dark = rgb(0.33f, 0.20f, 0.11f), light = rgb(0.64f, 0.44f, 0.25f);
    Rgba c = mix(dark, light, clamp01(0.25f + 0.35f * shade + 0.25f * grain + 0.2f * fibre));
    const int edge = shiftedY % 32;
    const int jointDistance = distanceToLine(x - joint, tileSize);
    if (edge == 0 || jointDistance == 0) return scaled(c, 0.3f);
    if (edge == 1 || jointDistance == 1) return scaled(c, 0.7f);
    if (edge == 31) return scaled(c, 0.85f);
    return c;
}

// Rounded cobbles set in dark mortar.
Rgba stoneTexel(int x, int y) {
    const float u = unitX(x), v = unitX(y);
    const CellDistances cell = cellular(u, v, 6, 31u);
    const float edge = cell.second - cell.nearest;
    const float grit = fractal(u, v, 8, 4, 32u);
    const Rgba mortar = scaled(rgb(0.22f, 0.21f, 0.19f), 0.8f + 0.4f * grit);
    const float hue = static_cast<float>(cell.cellHash & 0xFF) / 255.0f;
    const Rgba stone = scaled(mix(rgb(0.45f, 0.44f, 0.42f), rgb(0.55f, 0.49f, 0.40f), hue),
                              0.75f + 0.35f * grit + 0.25f * clamp01(edge * 2.5f));
    return mix(mortar, stone, smoothstep(0.05f, 0.12f, edge));
}

// A coarse woven cloth: over-and-under threads four texels wide.
Rgba clothTexel(int x, int y) {
    const float u = unitX(x), v = unitX(y);
    const bool warpOnTop = ((x / 4) + (y / 4)) % 2 == 0;
    const float across = static_cast<float>(warpOnTop ? x % 4 : y % 4) + 0.5f;
    const float thread = std::sin(across / 4.0f * pi);
    const float blotch = fractal(u, v, 4, 3, 41u);
    const Rgba base = mix(rgb(0.42f, 0.08f, 0.10f), rgb(0.64f, 0.16f, 0.16f), blotch);
    return scaled(base, 0.55f + 0.55f * thread + (warpOnTop ? 0.05f : -0.05f));
}

// Fine warm sand with wind ripples.
Rgba sandTexel(int x, int y) {
    const float u = unitX(x), v = unitX(y);
    const float ripple = std::sin((v * 14.0f + 0.35f * perlin(u * 4, v * 4, 4, 51u)) * twoPi);
    const float grain = hashUnit(x, y, 52u) - 0.5f;
    const float tone = fractal(u, v, 4, 4, 53u);
    return scaled(rgb(0.84f, 0.72f, 0.49f), 0.86f + 0.06f * ripple + 0.14f * grain + 0.18f * (tone - 0.5f));
}

// Decoration: a lawn of upright blades.
Rgba grassTexel(int x, int y) {
    const float u = unitX(x), v = unitX(y);
    const float blades = 0.5f + 0.5f * perlin(u * 64, v * 4, 64, 4, 61u);
    const float tone = fractal(u, v, 4, 3, 62u);
    return mix(rgb(0.10f, 0.27f, 0.07f), rgb(0.38f, 0.62f, 0.18f),
               clamp01(0.6f * blades + 0.5f * tone - 0.1f));
}

// Decoration: glacier ice, pale and cracked, with a glossy sheen.
Rgba iceTexel(int x, int y) {
    const float u = unitX(x), v = unitX(y);
    const CellDistances cell = cellular(u, v, 5, 71u);
    const float crack = 1.0f - smoothstep(0.0f, 0.05f, cell.second - cell.nearest);
    const float depth = fractal(u, v, 3, 4, 72u);
    const float sheen = 0.5f + 0.5f * std::sin((u + v) * twoPi * 3.0f);
    Rgba c = mix(rgb(0.48f, 0.70f, 0.86f), rgb(0.80f, 0.93f, 0.98f), clamp01(depth * 0.9f + 0.15f * sheen));
    return mix(c, rgb(0.96f, 0.99f, 1.0f), crack * 0.8f);
}

// Decoration: dark cave rock for the back layers: soft, low in contrast, so
// that the solid surfaces in front of it stand out.
Rgba rockTexel(int x, int y) {
    const float u = unitX(x), v = unitX(y);
    const CellDistances cell = cellular(u, v, 3, 81u);
    const float slabs = smoothstep(0.0f, 0.35f, cell.second - cell.nearest);
    const float tone = fractal(u, v, 4, 5, 82u);
    return scaled(rgb(0.14f, 0.15f, 0.19f), 0.75f + 0.4f * tone + 0.12f * slabs);
}

// Decoration: brown soil with small pebbles.
Rgba earthTexel(int x, int y) {
    const float u = unitX(x), v = unitX(y);
    const CellDistances pebble = cellular(u, v, 8, 91u);
    const float tone = fractal(u, v, 4, 5, 92u);
    const Rgba soil = scaled(rgb(0.36f, 0.25f, 0.16f), 0.7f + 0.5f * tone);
    const float stone = 1.0f - smoothstep(0.2f, 0.28f, pebble.nearest);
    const float show = (pebble.cellHash % 3u) == 0 ? stone * (0.8f + 0.2f * tone) : 0.0f;
    return mix(soil, scaled(rgb(0.46f, 0.38f, 0.30f), 0.8f + 0.3f * tone), show * 0.8f);
}

}  // namespace

ArtSet bakeSurfaces() {
    const struct {
        const char* name;
        TexelFunction texel;
    } table[] = {
        {"gfx/surfaces/metal.tga", metalTexel}, {"gfx/surfaces/wood.tga", woodTexel},
        {"gfx/surfaces/stone.tga", stoneTexel}, {"gfx/surfaces/cloth.tga", clothTexel},
        {"gfx/surfaces/sand.tga", sandTexel},   {"gfx/decor/grass.tga", grassTexel},
        {"gfx/decor/ice.tga", iceTexel},        {"gfx/decor/rock.tga", rockTexel},
        {"gfx/decor/earth.tga", earthTexel},
    };
    ArtSet set;
    for (const auto& entry : table) set.push_back({entry.name, paint(entry.texel), false});
    return set;
}
