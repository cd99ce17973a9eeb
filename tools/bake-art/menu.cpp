// Menu art: labelled buttons in three states, the option chooser's arrows,
// the logo and the level-finished backdrop. Labels are drawn with FreeType.
#include <cmath>
#include <cstdio>

#include "art.h"
#include "bake-common/bake_common.h"
#include "noise.h"
#include "shapes.h"
#include "text.h"

namespace {

constexpr int buttonWidth = 256;
constexpr int buttonHeight = 64;
constexpr int animationFrames = 8;

struct ButtonLook {
    Rgba top, bottom, border, label;
    float glow;
};

// Signed distance to a rounded rectangle inset by margin from the picture's edges.
float roundedBox(float x, float y, float width, float height, float margin, float radius) {
    const float dx = std::fabs(x - width * 0.5f) - (width * 0.5f - margin - radius);
    const float dy = std::fabs(y - height * 0.5f) - (height * 0.5f - margin - radius);
    const float outside = std::hypot(std::fmax(dx, 0.0f), std::fmax(dy, 0.0f));
    return outside + std::fmin(std::fmax(dx, dy), 0.0f) - radius;
}

Image panel(const ButtonLook& look) {
    Image image = renderSupersampled(buttonWidth, buttonHeight, 3, [&look](float x, float y) {
        const float d = roundedBox(x, y, buttonWidth, buttonHeight, 6.0f, 14.0f);
        const Rgba fill = mix(look.top, look.bottom, y / buttonHeight);
        Rgba out = {fill.r, fill.g, fill.b, fill.a * coverage(d)};
        out = over(out, {look.border.r, look.border.g, look.border.b,
                         look.border.a * coverage(std::fabs(d + 1.5f) - 1.5f)});
        const float halo = look.glow * std::exp(-std::fmax(d, 0.0f) / 3.0f) * (d > 0.0f ? 1.0f : 0.0f);
        return over(out, {0.55f, 0.9f, 1.0f, halo * 0.8f});
    });
    return image;
}

Image button(const std::string& label, const ButtonLook& look, const std::string& fontFolder, bool& fontOk) {
    Image image = panel(look);
    const std::string font = fontFolder + "/DejaVuSans-Bold.ttf";
    fontOk = drawTextLine(image, {font, 26, rgb(0.0f, 0.05f, 0.1f, 0.5f)}, label, 129, 43) && fontOk;
    fontOk = drawTextLine(image, {font, 26, look.label}, label, 128, 42) && fontOk;
    bleedTransparentEdges(image, 4);
    return image;
}

const ButtonLook restingLook = {rgb(0.10f, 0.22f, 0.38f, 0.85f), rgb(0.04f, 0.10f, 0.20f, 0.85f),
                                rgb(0.35f, 0.55f, 0.75f, 0.9f), rgb(0.78f, 0.86f, 0.94f), 0.0f};

// In focus the panel brightens and its rim glows in a slow pulse.
ButtonLook focusedLook(float t) {
    const float pulse = 0.5f + 0.5f * std::cos(t * twoPi);
    return {rgb(0.16f, 0.42f, 0.64f, 0.95f), rgb(0.06f, 0.20f, 0.36f, 0.95f), rgb(0.6f, 0.9f, 1.0f, 1.0f),
            rgb(1.0f, 1.0f, 1.0f), 0.4f + 0.6f * pulse};
}

// Clicked, it flashes white and settles back to the focused look.
ButtonLook clickedLook(float t) {
    const ButtonLook focused = focusedLook(0.0f);
    const float flash = 1.0f - t;
    return {mix(focused.top, rgb(0.85f, 0.97f, 1.0f, 1.0f), flash),
            mix(focused.bottom, rgb(0.5f, 0.8f, 1.0f, 1.0f), flash), focused.border,
            mix(focused.label, rgb(0.05f, 0.2f, 0.4f), flash), 1.0f};
}

std::string frameName(const std::string& stem, int frame) {
    char number[32];
    std::snprintf(number, sizeof number, "_FRAME%02d.tga", frame + 1);
    return stem + number;
}

void addButton(ArtSet& set, const char* name, const char* label, const std::string& fontFolder,
               bool& fontOk) {
    const std::string stem = std::string("gfx/menu/buttons/") + name;
    set.push_back({stem + "_off.tga", button(label, restingLook, fontFolder, fontOk), false});
    for (int frame = 0; frame < animationFrames; ++frame) {
        const float t = static_cast<float>(frame) / animationFrames;
        set.push_back(
            {frameName(stem + "_on", frame), button(label, focusedLook(t), fontFolder, fontOk), false});
        set.push_back(
            {frameName(stem + "_click", frame), button(label, clickedLook(t), fontFolder, fontOk), false});
    }
}

// The option chooser's arrows: a triangle in a disc.
Image arrow(bool right, const Rgba& disc, const Rgba& mark) {
    Image image = renderSupersampled(32, 32, 4, [right, disc, mark](float x, float y) {
        const float px = right ? x : 32.0f - x;
        Rgba out = {disc.r, disc.g, disc.b, disc.a * coverage(std::hypot(x - 16.0f, y - 16.0f) - 14.0f)};
        const std::vector<Point> triangle = {{11, 8}, {24, 16}, {11, 24}};
        const float edge = distanceToOutline({px, y}, triangle);
        const float inside = insidePolygon({px, y}, triangle) ? coverage(-edge) : coverage(edge);
        return over(out, {mark.r, mark.g, mark.b, inside});
    });
    bleedTransparentEdges(image, 4);
    return image;
}

void addArrows(ArtSet& set) {
    const struct {
        const char* state;
        Rgba disc, mark;
    } looks[] = {{"off", rgb(0.08f, 0.18f, 0.32f, 0.85f), rgb(0.75f, 0.85f, 0.95f)},
                 {"on", rgb(0.16f, 0.42f, 0.64f, 0.95f), rgb(1.0f, 1.0f, 1.0f)},
                 {"click", rgb(0.8f, 0.95f, 1.0f, 1.0f), rgb(0.05f, 0.2f, 0.4f)}};
    for (const auto& look : looks) {
        set.push_back({std::string("gfx/menu/arrowleft_") + look.state + ".tga",
                       arrow(false, look.disc, look.mark), false});
        set.push_back({std::string("gfx/menu/arrowright_") + look.state + ".tga",
                       arrow(true, look.disc, look.mark), false});
    }
}

Image logo(const std::string& fontFolder, bool& fontOk) {
    Image image(512, 128, rgb(0.8f, 0.95f, 1.0f, 0.0f));
    const std::string font = fontFolder + "/DejaVuSans-Bold.ttf";
    for (int ring = 6; ring >= 1; --ring) {
        for (int a = 0; a < 8; ++a) {
            const float radius = static_cast<float>(ring), angle = static_cast<float>(a) * 0.785f;
            const int x = 256 + static_cast<int>(std::lround(radius * std::cos(angle)));
            const int y = 96 + static_cast<int>(std::lround(radius * std::sin(angle)));
            fontOk =
                drawTextLine(image, {font, 84, rgb(0.2f, 0.6f, 1.0f, 0.05f)}, "Brookfall", x, y) && fontOk;
        }
    }
    fontOk = drawTextLine(image, {font, 84, rgb(0.9f, 0.97f, 1.0f)}, "Brookfall", 256, 96) && fontOk;
    bleedTransparentEdges(image, 8);
    return image;
}

// The level-finished backdrop, 1024 by 768 for the 800 by 600 screen: deep
// water with a clear glass tube on the left where the water column rises.
constexpr float tubeLeft = 80, tubeTop = 120, tubeRight = 200, tubeBottom = 520;

Rgba finishedBackdrop(float x, float y) {
    const float sx = x * 800.0f / 1024.0f, sy = y * 600.0f / 768.0f;
    const float d = roundedBox(sx - tubeLeft + 0.0f, sy - tubeTop, tubeRight - tubeLeft, tubeBottom - tubeTop,
                               0.0f, 10.0f);
    const float v = sy / 600.0f;
    const Rgba back = mix(rgb(0.05f, 0.14f, 0.26f), rgb(0.01f, 0.03f, 0.08f), v);
    const float caustic = 1.0f - smoothstep(0.0f, 0.08f, [&] {
                              const CellDistances c = cellular(sx / 800.0f, sy / 600.0f, 7, 311u);
                              return c.second - c.nearest;
                          }());
    Rgba out = {back.r + caustic * 0.06f, back.g + caustic * 0.09f, back.b + caustic * 0.1f, 1.0f};
    if (d < 0.0f) out = {0.6f, 0.75f, 0.9f, 0.12f};
    const float rim = coverage(std::fabs(d) - 3.0f);
    return over(out, {0.7f, 0.85f, 1.0f, rim * 0.9f});
}

}  // namespace

ArtSet bakeMenus(const std::string& fontFolder, std::string& error) {
    ArtSet set;
    bool fontOk = true;
    const struct {
        const char* name;
        const char* label;
    } buttons[] = {{"start", "Start"},
                   {"load", "Load level"},
                   {"options", "Options"},
                   {"instructions", "Instructions"},
                   {"highscores", "High scores"},
                   {"credits", "Credits"},
                   {"quit", "Quit"},
                   {"continue", "Continue"},
                   {"restart", "Restart"},
                   {"back", "Back"},
                   {"yes", "Yes"},
                   {"no", "No"},
                   {"loadmap", "Load"}};
    for (const auto& b : buttons) addButton(set, b.name, b.label, fontFolder, fontOk);
    addArrows(set);
    set.push_back({"gfx/menu/logo.tga", logo(fontFolder, fontOk), false});
    set.push_back({"gfx/menu/levelFinished.tga", renderSupersampled(1024, 768, 1, finishedBackdrop), false});
    if (!fontOk)
        error +=
            std::string(error.empty() ? "" : "; ") + "cannot read " + fontFolder + "/DejaVuSans-Bold.ttf";
    return set;
}
