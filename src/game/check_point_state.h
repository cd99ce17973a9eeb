// The split-time display's file-level state, private to its file and to the
// tests that look inside.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "foundation/foundation.h"
#include "game/game.h"
#include "graphics/graphics.h"

namespace CheckPointTimesManager {

// The display's states: each fade lasts fadeTime.
constexpr int hidden = 0;
constexpr int timeFadingIn = 1;
constexpr int timeFadingOut = 2;
constexpr int splitFadingIn = 3;
constexpr int splitFadingOut = 4;
constexpr float shortestFade = 0.01f;

struct Colour {
    float r = 0.0f, g = 0.0f, b = 0.0f, a = 0.0f;
};

// From "cfg\checkPoints.cfg"; none has a default of its own.
struct Settings {
    float fontSize = 0.0f;
    Colour fontColor;
    Colour slowerFontColor;
    Colour fasterFontColor;
    float yPosition = 0.0f;  // top of the text in the screen of 800 by 600
    float fadeTime = shortestFade;
};

struct State {
    Settings settings;
    FrameClock clock;
    std::unique_ptr<GLFont> font;
    int state = hidden;
    float fadeTimer = 0.0f;
    uint32_t lastTime = 0;
    uint32_t previousTime = 0;
    // The last pass of each check point, kept across restarts of the level.
    std::map<const Trigger*, uint32_t> times;
};
State& state();

// What the display shows at this level time: its text, and its colour with the fade in the alpha.
struct Display {
    std::string text;
    Colour colour;
};
Display currentDisplay(uint32_t levelTime);

}  // namespace CheckPointTimesManager
