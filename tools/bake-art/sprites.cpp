// Animated sprites. Each is a loop of frames named "<name>_FRAMEnn.tga"; the
// last frame leads smoothly back into the first, so a looping object never jumps.
#include <cmath>
#include <cstdio>
#include <string>

#include "art.h"
#include "bake-common/bake_common.h"
#include "noise.h"
#include "shapes.h"

namespace {

struct SpriteRecipe {
    const char* name;
    int width;
    int height;
    int frames;
    // Colour at (x, y) in frame t of the loop, t running 0 to 1 without reaching it.
    Rgba (*shader)(float x, float y, float t);
};

std::string frameName(const char* name, int frame) {
    char number[32];
    std::snprintf(number, sizeof number, "_FRAME%02d.tga", frame + 1);
    return std::string("gfx/") + name + number;
}

// A paddle wheel of eight boards; it turns one board's spacing per loop.
Rgba wheelShader(float x, float y, float t) {
    const Point c{64.0f, 64.0f};
    const Point p = rotateAbout({x, y}, c, -t * (pi / 4.0f));
    const float dx = p.x - c.x, dy = p.y - c.y;
    const float r = std::hypot(dx, dy);
    const float angle = std::atan2(dy, dx);
    const float nearestSpoke = std::round(angle / (pi / 4.0f)) * (pi / 4.0f);
    const float across = std::fabs(r * std::sin(angle - nearestSpoke));
    const float along = r * std::cos(angle - nearestSpoke);
    const Rgba wood = rgb(0.55f, 0.36f, 0.20f), darkWood = rgb(0.36f, 0.22f, 0.12f);
    const Rgba iron = rgb(0.35f, 0.37f, 0.40f);
    Rgba out;
    if (along > 30.0f)
        out = over(out,
                   {darkWood.r, darkWood.g, darkWood.b, coverage(across - 2.5f) * coverage(along - 60.0f)});
    out = over(out, {wood.r, wood.g, wood.b, coverage(std::fabs(r - 44.0f) - 4.0f)});
    if (along > 40.0f)
        out = over(out, {wood.r * 1.1f, wood.g * 1.1f, wood.b * 1.1f,
                         coverage(across - 7.0f) * coverage(along - 61.0f)});
    if (along > 0.0f && r < 44.0f)
        out = over(out, {darkWood.r, darkWood.g, darkWood.b, coverage(across - 2.0f)});
    out = over(out, {iron.r, iron.g, iron.b, coverage(r - 9.0f)});
    out = over(out, {0.6f, 0.62f, 0.66f, coverage(r - 3.5f)});
    return out;
}

// A pennant on a pole, its cloth waving in a travelling wave.
Rgba flagShader(float x, float y, float t) {
    Rgba out;
    out = over(out, {0.75f, 0.72f, 0.66f,
                     coverage(std::fabs(x - 8.0f) - 2.0f) * coverage(8.0f - y) * coverage(y - 94.0f)});
    out = over(out, {0.95f, 0.8f, 0.3f, coverage(std::hypot(x - 8.0f, y - 7.0f) - 4.0f)});
    if (x > 9.0f) {
        const float along = (x - 10.0f) / 52.0f;
        const float wave = std::sin(along * 2.0f * pi - t * 2.0f * pi) * 5.0f * along;
        const float top = 12.0f + wave + along * 8.0f, bottom = 44.0f + wave - along * 8.0f;
        const float inside = coverage(top - y) * coverage(y - bottom) * coverage(x - 62.0f);
        const float light = 0.8f + 0.2f * std::cos(along * 2.0f * pi - t * 2.0f * pi);
        out = over(out, {0.85f * light, 0.15f * light, 0.12f * light, inside});
    }
    return out;
}

// A flame for heat sources: noise scrolled upward through a tapering mask.
Rgba flameShader(float x, float y, float t) {
    const float u = x / 32.0f, v = y / 64.0f;
    const float flicker = perlin(u * 4.0f, (v + t) * 8.0f, 4, 8, 201u);
    const float heightShare = clamp01((64.0f - y) / 60.0f);
    const float width = 13.0f * std::sqrt(clamp01(1.0f - heightShare)) * (0.8f + 0.35f * flicker) + 1.0f;
    const float sway = 3.0f * heightShare * perlin(2.0f, (v + t) * 4.0f, 4, 4, 202u);
    const float inside = coverage(std::fabs(x - 16.0f - sway) - width) * coverage(y - 62.0f);
    const float heat =
        clamp01(1.0f - std::fabs(x - 16.0f - sway) / (width + 0.01f)) * (1.0f - 0.6f * heightShare);
    const Rgba colour = mix(rgb(0.9f, 0.2f, 0.05f), rgb(1.0f, 0.95f, 0.55f), heat);
    return {colour.r, colour.g, colour.b, inside * clamp01(1.2f - heightShare * 0.5f)};
}

// A snowflake for cold places, six branched arms turning one sixth of a turn per loop.
Rgba snowflakeShader(float x, float y, float t) {
    const Point c{32.0f, 32.0f};
    const Point p = rotateAbout({x, y}, c, -t * (pi / 3.0f));
    const float dx = p.x - c.x, dy = p.y - c.y;
    const float angle = std::atan2(dy, dx);
    const float arm = std::round(angle / (pi / 3.0f)) * (pi / 3.0f);
    const Point local{std::hypot(dx, dy) * std::cos(angle - arm),
                      std::fabs(std::hypot(dx, dy) * std::sin(angle - arm))};
    float d = distanceToSegment(local, {0.0f, 0.0f}, {27.0f, 0.0f});
    d = std::fmin(d, distanceToSegment(local, {12.0f, 0.0f}, {19.0f, 7.0f}));
    d = std::fmin(d, distanceToSegment(local, {19.0f, 0.0f}, {24.0f, 5.0f}));
    const float a = coverage(d - 1.8f);
    return {0.85f, 0.95f, 1.0f, clamp01(a + coverage(std::hypot(dx, dy) - 5.0f))};
}

// Hint arrows for teaching levels: they pulse, and point right or down.
Rgba arrowBody(Point p, float t) {
    const float pulse = 0.5f + 0.5f * std::cos(t * 2.0f * pi);
    const float push = 4.0f * pulse;
    const std::vector<Point> arrow = {{8 + push, 26},  {36 + push, 26}, {36 + push, 14}, {58 + push, 32},
                                      {36 + push, 50}, {36 + push, 38}, {8 + push, 38}};
    const float edge = distanceToOutline(p, arrow);
    const float inside = insidePolygon(p, arrow) ? coverage(-edge) : coverage(edge);
    const float alpha = inside * (0.65f + 0.35f * pulse);
    const float rim = coverage(edge - 1.5f);
    const Rgba fill = mix(rgb(1.0f, 0.85f, 0.25f), rgb(0.55f, 0.35f, 0.05f), rim);
    return {fill.r, fill.g, fill.b, alpha};
}

Rgba arrowRightShader(float x, float y, float t) {
    return arrowBody({x, y}, t);
}
Rgba arrowDownShader(float x, float y, float t) {
    return arrowBody({y, 64.0f - x}, t);
}

// The finish animation: golden rays and a ring that bloom over the level.
Rgba finishShader(float x, float y, float t) {
    const float dx = (x - 128.0f) / 128.0f, dy = (y - 96.0f) / 96.0f;
    const float r = std::hypot(dx, dy);
    const float angle = std::atan2(dy, dx);
    const float grow = std::sin(t * pi * 0.5f + 0.3f);
    const float rays =
        std::pow(0.5f + 0.5f * std::cos(angle * 12.0f + t * pi), 6.0f) * clamp01(1.0f - r / (0.2f + grow));
    const float ring = std::exp(-std::pow((r - 0.55f * grow) * 9.0f, 2.0f));
    const float core = std::exp(-r * r * 14.0f);
    const float a = clamp01(0.8f * rays + ring + core) * 0.9f;
    return {1.0f, clamp01(0.8f + 0.2f * core), clamp01(0.35f + 0.6f * core), a};
}

const SpriteRecipe sprites[] = {
    {"sprites/wheel", 128, 128, 8, wheelShader},         {"sprites/flag", 64, 96, 8, flagShader},
    {"sprites/flame", 32, 64, 8, flameShader},           {"sprites/snowflake", 64, 64, 8, snowflakeShader},
    {"sprites/arrowright", 64, 64, 8, arrowRightShader}, {"sprites/arrowdown", 64, 64, 8, arrowDownShader},
    {"finish/finish", 256, 192, 16, finishShader},
};

}  // namespace

ArtSet bakeSprites() {
    ArtSet set;
    for (const SpriteRecipe& recipe : sprites) {
        for (int frame = 0; frame < recipe.frames; ++frame) {
            const float t = static_cast<float>(frame) / static_cast<float>(recipe.frames);
            Image image = renderSupersampled(recipe.width, recipe.height, 3, [&recipe, t](float x, float y) {
                return recipe.shader(x, y, t);
            });
            bleedTransparentEdges(image, 4);
            set.push_back({frameName(recipe.name, frame), std::move(image), false});
        }
    }
    return set;
}
