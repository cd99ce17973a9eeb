// The loading splash: a deep-water backdrop with the game's title, and a drop
// whose ripples spread while a level loads.
#include <cmath>
#include <cstdio>

#include "art.h"
#include "noise.h"
#include "text.h"

namespace {

constexpr int backgroundWidth = 1024;
constexpr int backgroundHeight = 768;
constexpr int rippleSize = 128;
constexpr int rippleFrames = 16;

// Light through moving water: bright threads where cells of the pattern meet.
Rgba backdropTexel(int x, int y) {
    const float u = static_cast<float>(x) / backgroundWidth, v = static_cast<float>(y) / backgroundHeight;
    const CellDistances cell = cellular(u, v, 9, 301u);
    const float caustic = 1.0f - smoothstep(0.0f, 0.09f, cell.second - cell.nearest);
    const float depth = clamp01(v * 1.1f);
    const Rgba surface = rgb(0.10f, 0.42f, 0.58f), deep = rgb(0.02f, 0.07f, 0.16f);
    const Rgba base = mix(surface, deep, depth);
    const float glow = caustic * (1.0f - depth) * 0.35f * (0.6f + 0.4f * fractal(u, v, 3, 3, 302u));
    return {clamp01(base.r + glow), clamp01(base.g + glow), clamp01(base.b + glow * 0.8f), 1.0f};
}

Image backdrop(const std::string& fontFolder, std::string& error) {
    Image image(backgroundWidth, backgroundHeight);
    for (int y = 0; y < backgroundHeight; ++y)
        for (int x = 0; x < backgroundWidth; ++x) image.at(x, y) = backdropTexel(x, y);
    const std::string font = fontFolder + "/DejaVuSans-Bold.ttf";
    const bool shadow =
        drawTextLine(image, {font, 120, rgb(0.0f, 0.03f, 0.08f, 0.6f)}, "Brookfall", 518, 318);
    const bool title = drawTextLine(image, {font, 120, rgb(0.88f, 0.96f, 1.0f)}, "Brookfall", 512, 312);
    if (!shadow || !title) error += std::string(error.empty() ? "" : "; ") + "cannot read " + font;
    return image;
}

// Four times a loop a drop falls and lands as a ring is born; the rings spread and fade.
Rgba rippleShader(float x, float y, float t) {
    const float dx = x - rippleSize * 0.5f, dy = (y - rippleSize * 0.62f) * 2.2f;
    const float r = std::hypot(dx, dy);
    Rgba out;
    for (int ring = 0; ring < 4; ++ring) {
        const float age = std::fmod(t + static_cast<float>(ring) / 4.0f, 1.0f);
        const float radius = age * rippleSize * 0.48f;
        const float strength = (1.0f - age) * smoothstep(0.0f, 0.08f, age);
        const float line = 1.0f - smoothstep(1.0f, 3.0f, std::fabs(r - radius));
        out = over(out, {0.85f, 0.95f, 1.0f, line * strength});
    }
    const float fall = std::fmod(t * 4.0f, 1.0f);
    const float dropY = rippleSize * (0.1f + 0.5f * fall * fall);
    const float drop = 1.0f - smoothstep(4.0f, 5.5f, std::hypot(x - rippleSize * 0.5f, (y - dropY) * 0.8f));
    return over(out, {0.75f, 0.9f, 1.0f, drop * (1.0f - fall * 0.3f)});
}

}  // namespace

ArtSet bakeSplash(const std::string& fontFolder, std::string& error) {
    ArtSet set;
    set.push_back({"gfx/splash/background.tga", backdrop(fontFolder, error), false});
    for (int frame = 0; frame < rippleFrames; ++frame) {
        const float t = static_cast<float>(frame) / rippleFrames;
        Image image = renderSupersampled(rippleSize, rippleSize, 3,
                                         [t](float x, float y) { return rippleShader(x, y, t); });
        bleedTransparentEdges(image, 4);
        char name[64];
        std::snprintf(name, sizeof name, "gfx/splash/ripple_FRAME%02d.tga", frame + 1);
        set.push_back({name, std::move(image), false});
    }
    return set;
}
