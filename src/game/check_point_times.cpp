// Split times at check points. The first pass of a check point since the level
// was loaded shows the running level time; each later pass, as after a
// restart, shows the gain or loss against the pass before it, so a player sees
// at once whether this run is ahead.
#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "console/console.h"
#include "foundation/foundation.h"
#include "game/check_point_state.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"
#include "menus/menus.h"

namespace CheckPointTimesManager {

State& state() {
    return singleInstance<State>();
}

namespace {

Colour readColour(const ConfigFile& config, const std::string& name) {
    return {config.getVarAsFloat(name + "_r"), config.getVarAsFloat(name + "_g"),
            config.getVarAsFloat(name + "_b"), config.getVarAsFloat(name + "_a")};
}

bool fadingIn(int displayState) {
    return displayState == timeFadingIn || displayState == splitFadingIn;
}

// After a fade in comes the fade out of the same text; after that, nothing.
void advanceFade(State& s, float dt) {
    s.fadeTimer -= dt;
    if (s.fadeTimer > 0.0f) return;
    if (fadingIn(s.state)) {
        s.state = s.state == timeFadingIn ? timeFadingOut : splitFadingOut;
        s.fadeTimer = s.settings.fadeTime;
    } else {
        s.state = hidden;
    }
}

}  // namespace

void initialise() {
    TRACE_LOCATION("CheckPointTimesManager::initialise");
    shutdown();
    GLConsole::print("\nInitialising check point times manager..");
    State& s = state();
    const ConfigFile config("cfg\\checkPoints.cfg");
    if (!s.font) s.font = std::make_unique<GLFont>(GLTexture(config.getVarAsString("font")));
    s.settings.fontSize = config.getVarAsFloat("fontSize");
    s.settings.fontColor = readColour(config, "fontColor");
    s.settings.slowerFontColor = readColour(config, "slowerFontColor");
    s.settings.fasterFontColor = readColour(config, "fasterFontColor");
    s.settings.yPosition = config.getVarAsFloat("y_position");
    // A fade of no length would divide by zero.
    s.settings.fadeTime = std::max(config.getVarAsFloat("fadeTime"), shortestFade);
    s.lastTime = 0;
    s.previousTime = 0;
    s.state = hidden;
    s.clock.reset();
}

// The comparisons end with the level: the next load starts them afresh.
void shutdown() {
    TRACE_LOCATION("CheckPointTimesManager::shutdown");
    GLConsole::print("\nShutting down check point times manager..");
    state() = State();
}

// A later pass compares with the pass before it, not with the best one. A pass
// while a display runs replaces it at once.
void recordTime(const Trigger* trigger, uint32_t time) {
    TRACE_LOCATION("CheckPointTimesManager::recordTime");
    State& s = state();
    const auto found = s.times.find(trigger);
    if (found != s.times.end()) {
        s.previousTime = found->second;
        s.lastTime = time;
        s.state = splitFadingIn;
    } else {
        s.state = timeFadingIn;
    }
    s.times[trigger] = time;
    s.fadeTimer = s.settings.fadeTime;
}

std::string formatTime(uint32_t milliseconds) {
    TRACE_LOCATION("CheckPointTimesManager::formatTime");
    const unsigned minutes = (milliseconds % 3600000u) / 60000u;
    const unsigned seconds = (milliseconds % 60000u) / 1000u;
    const unsigned hundredths = (milliseconds % 1000u) / 10u;
    char text[16];
    std::snprintf(text, sizeof(text), "%02u:%02u:%02u", minutes, seconds, hundredths);
    return text;
}

// The level time runs on while its display fades. A split at exactly the same
// time counts as slower: "+ " with every field "00". The square root makes a
// fade rise fast and end slowly.
Display currentDisplay(uint32_t levelTime) {
    TRACE_LOCATION("CheckPointTimesManager::currentDisplay");
    const State& s = state();
    if (s.state == hidden) return Display();
    Display display;
    if (s.state == timeFadingIn || s.state == timeFadingOut) {
        display.text = formatTime(levelTime);
        display.colour = s.settings.fontColor;
    } else {
        const int64_t difference = int64_t{s.lastTime} - int64_t{s.previousTime};
        const bool faster = difference < 0;
        display.text =
            (faster ? "- " : "+ ") + formatTime(static_cast<uint32_t>(faster ? -difference : difference));
        display.colour = faster ? s.settings.fasterFontColor : s.settings.slowerFontColor;
    }
    const float share = s.fadeTimer / s.settings.fadeTime;
    const float fade = fadingIn(s.state) ? 1.0f - share : share;
    display.colour.a = fade > 0.0f ? display.colour.a * std::sqrt(fade) : fade;
    return display;
}

// On the display's own clock, which runs on during a pause.
void draw() {
    TRACE_LOCATION("CheckPointTimesManager::draw");
    State& s = state();
    s.clock.update();
    if (!s.font || s.state == hidden) return;
    if (GLWindow::contextAvailable()) {
        GLWindow::glBeginDraw2d();
        Gui::scaleToWindow();
        const Display display = currentDisplay(GameRules::getLevelTime());
        const Colour& c = display.colour;
        s.font->drawStringCentered(display.text.c_str(), 0.0f, s.settings.yPosition, Gui::virtualWidth,
                                   s.settings.fontSize, s.settings.fontSize, c.r, c.g, c.b, c.a);
    }
    advanceFade(s, s.clock.deltaSeconds);
}

}  // namespace CheckPointTimesManager
