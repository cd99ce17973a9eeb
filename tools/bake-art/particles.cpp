// Particle images. They are white and carry their shape in alpha: the game
// tints them with the colours of its configuration, so one image serves any hue.
#include <cmath>

#include "art.h"
#include "bake-common/bake_common.h"
#include "noise.h"

namespace {

constexpr int particleSize = 64;
constexpr float half = particleSize * 0.5f;

// Distance from the centre, 1 at the middle of an edge.
float radius(float x, float y) {
    return std::hypot(x - half, y - half) / half;
}

Image render(const Shader& shader) {
    Image image = renderSupersampled(particleSize, particleSize, 3, shader);
    bleedTransparentEdges(image, particleSize);
    return image;
}

// A full, soft-edged disc with a faint highlight: side by side, discs melt
// into one surface of water.
Rgba waterShader(float x, float y) {
    const float r = radius(x, y);
    const float body = 1.0f - smoothstep(0.75f, 1.0f, r);
    const float highlight = 1.0f - smoothstep(0.0f, 0.5f, radius(x + 0.22f * half, y + 0.22f * half));
    const float shade = 0.9f + 0.1f * highlight;
    return {shade, shade, shade, body};
}

// A loose puff that fades out from a bright core, broken by wisps.
Rgba steamShader(float x, float y) {
    const float r = radius(x, y);
    const float wisps = fractal(x / particleSize, y / particleSize, 3, 3, 101u);
    const float puff = std::exp(-r * r * 3.0f) * (0.6f + 0.55f * wisps);
    return {1.0f, 1.0f, 1.0f, clamp01(puff) * (1.0f - smoothstep(0.85f, 1.0f, r))};
}

// A hexagonal crystal, its six facets lit from the upper left.
Rgba iceShader(float x, float y) {
    const float dx = (x - half) / half, dy = (y - half) / half;
    const float angle = std::atan2(dy, dx);
    const float sector = std::floor((angle + pi) / (pi / 3.0f));
    const float facetAngle = (sector + 0.5f) * (pi / 3.0f) - pi;
    const float hexRadius = std::hypot(dx, dy) * std::cos(angle - facetAngle);
    const float light = 0.5f + 0.5f * std::cos(facetAngle + 2.356f);
    const float inner = 1.0f - smoothstep(0.36f, 0.42f, hexRadius);
    const float shade = 0.78f + 0.22f * (inner > 0.5f ? 1.0f : light);
    return {shade, shade, 1.0f, 1.0f - smoothstep(0.76f, 0.84f, hexRadius)};
}

// Effects: a hot spark, a smoke puff, a falling drop and a bubble.
Rgba sparkShader(float x, float y) {
    const float r = radius(x, y);
    const float core = std::exp(-r * r * 18.0f);
    const float glow = std::exp(-r * r * 4.0f) * 0.6f;
    return {1.0f, clamp01(0.75f + 0.25f * core), clamp01(0.35f + 0.65f * core), clamp01(core + glow)};
}

Rgba smokeShader(float x, float y) {
    const float r = radius(x, y);
    const float billow = fractal(x / particleSize, y / particleSize, 2, 4, 111u);
    const float puff = clamp01((1.0f - r) * 1.6f) * (0.35f + 0.65f * billow);
    const float shade = 0.7f + 0.3f * billow;
    return {shade, shade, shade, clamp01(puff)};
}

Rgba dropShader(float x, float y) {
    const float dx = (x - half) / half, dy = (y - half) / half;
    // A teardrop: a circle below, pinched to a point above.
    const float width = 0.55f * std::sqrt(clamp01((dy + 1.0f) * 0.5f)) *
                        (dy > 0.2f ? std::sqrt(clamp01(1.0f - (dy - 0.2f) / 0.8f)) : 1.0f);
    const float inside = 1.0f - smoothstep(width - 0.06f, width, std::fabs(dx));
    const float shine = 1.0f - smoothstep(0.0f, 0.25f, std::hypot(dx + 0.18f, dy - 0.25f));
    const float shade = 0.8f + 0.2f * shine;
    return {shade, shade, shade, inside * (1.0f - smoothstep(0.9f, 0.98f, dy)) * (dy > -0.95f ? 1.0f : 0.0f)};
}

Rgba bubbleShader(float x, float y) {
    const float r = radius(x, y);
    const float ring = smoothstep(0.62f, 0.8f, r) * (1.0f - smoothstep(0.82f, 0.92f, r));
    const float fill = (1.0f - smoothstep(0.7f, 0.85f, r)) * 0.15f;
    const float shine = (1.0f - smoothstep(0.0f, 0.18f, radius(x + 0.35f * half, y + 0.35f * half))) * 0.9f;
    return {1.0f, 1.0f, 1.0f, clamp01(ring + fill + shine)};
}

}  // namespace

ArtSet bakeParticles() {
    const struct {
        const char* name;
        Rgba (*shader)(float, float);
    } table[] = {
        {"gfx/particles/water.tga", waterShader}, {"gfx/particles/steam.tga", steamShader},
        {"gfx/particles/ice.tga", iceShader},     {"gfx/fx/spark.tga", sparkShader},
        {"gfx/fx/smoke.tga", smokeShader},        {"gfx/fx/drop.tga", dropShader},
        {"gfx/fx/bubble.tga", bubbleShader},
    };
    ArtSet set;
    for (const auto& entry : table) set.push_back({entry.name, render(entry.shader), false});
    return set;
}
