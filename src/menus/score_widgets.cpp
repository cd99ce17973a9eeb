// The three counters of the level's end: the water column, the score numbers
// and the level time, each climbing to its value once the one it waits for is done.
#include <GL/gl.h>

#include <algorithm>
#include <cstdio>

#include "game/game.h"
#include "menus/menus.h"

namespace {

constexpr float shortestRampUp = 0.01f;
constexpr float shortestRampUpPerParticle = 0.0001f;

bool done(const GuiScoreLabel* label) {
    return !label || label->counted();
}

}  // namespace

void GuiRamp::setTime(float seconds, float shortest) {
    TRACE_LOCATION("GuiRamp::setTime");
    time = std::max(seconds, shortest);
    remaining = time;
}

void GuiRamp::restart() {
    TRACE_LOCATION("GuiRamp::restart");
    clock.reset();
    remaining = time;
}

float GuiRamp::tick() {
    TRACE_LOCATION("GuiRamp::tick");
    clock.update();
    return clock.deltaSeconds;
}

float GuiRamp::climb(float seconds) {
    TRACE_LOCATION("GuiRamp::climb");
    remaining -= seconds;
    return std::clamp(1.0f - remaining / time, 0.0f, 1.0f);
}

void GuiScoreLabel::setRampUpTime(float seconds) {
    TRACE_LOCATION("GuiScoreLabel::setRampUpTime");
    ramp.setTime(seconds, shortestRampUp);
}

void GuiScoreLabel::setRampUpSound(const std::string& name) {
    TRACE_LOCATION("GuiScoreLabel::setRampUpSound");
    rampUpSound = Sound(name);
}

void GuiScoreLabel::reset() {
    TRACE_LOCATION("GuiScoreLabel::reset");
    ramp.restart();
    shownValue = 0;
    rampUpSound.stop();
}

void GuiScoreLabel::windowRedrawing() {
    TRACE_LOCATION("GuiScoreLabel::windowRedrawing");
    const float seconds = ramp.tick();
    shownValue = 0;
    if (done(waitFor)) {
        if (ramp.atStart()) {
            rampUpSound.setVolume(1.0f);
            rampUpSound.rewind();
            rampUpSound.play();
        }
        if (ramp.done()) rampUpSound.stop();
        const int target = getValue ? getValue() : 0;
        shownValue = static_cast<unsigned int>(static_cast<float>(target) * ramp.climb(seconds));
    }
    drawText(std::to_string(shownValue), static_cast<float>(x), static_cast<float>(y));
}

void GuiLevelTimeDisplay::setRampUpTime(float seconds) {
    TRACE_LOCATION("GuiLevelTimeDisplay::setRampUpTime");
    ramp.setTime(seconds, shortestRampUp);
}

void GuiLevelTimeDisplay::reset() {
    TRACE_LOCATION("GuiLevelTimeDisplay::reset");
    ramp.restart();
}

std::string GuiLevelTimeDisplay::formatTime(uint32_t milliseconds) {
    TRACE_LOCATION("GuiLevelTimeDisplay::formatTime");
    char text[32];
    std::snprintf(text, sizeof(text), "%02u:%02u:%02u", (milliseconds % 3600000u) / 60000u,
                  (milliseconds % 60000u) / 1000u, (milliseconds % 1000u) / 10u);
    return text;
}

void GuiLevelTimeDisplay::windowRedrawing() {
    TRACE_LOCATION("GuiLevelTimeDisplay::windowRedrawing");
    const float seconds = ramp.tick();
    uint32_t shown = 0;
    if (waitFor && done(waitFor))
        shown = static_cast<uint32_t>(static_cast<float>(GameRules::getLevelTime()) * ramp.climb(seconds));
    shownText = formatTime(shown);
    const float left = static_cast<float>(x);
    const float top = static_cast<float>(y);
    const float w = static_cast<float>(width);
    const float h = static_cast<float>(height);
    if (dropShadow.on)
        font.drawStringCentered(shownText.c_str(), left + dropShadow.offsetX, top + dropShadow.offsetY, w, h,
                                fontSize, dropShadow.r, dropShadow.g, dropShadow.b, dropShadow.a);
    font.drawStringCentered(shownText.c_str(), left, top, w, h, fontSize, r, g, b, a);
}

void GuiWaterLevel::setRampUpTimePerParticle(float seconds) {
    TRACE_LOCATION("GuiWaterLevel::setRampUpTimePerParticle");
    ramp.setTime(seconds, shortestRampUpPerParticle);
    ramp.finish();
}

void GuiWaterLevel::reset() {
    TRACE_LOCATION("GuiWaterLevel::reset");
    ramp.restart();
}

void GuiWaterLevel::windowRedrawing() {
    TRACE_LOCATION("GuiWaterLevel::windowRedrawing");
    level = ramp.climb(ramp.tick()) * static_cast<float>(GameRules::getParticleCount()) /
            static_cast<float>(GameRules::fullLevelParticles);
    if (!GLWindow::contextAvailable()) return;
    const float left = static_cast<float>(x);
    const float right = left + static_cast<float>(width);
    const float bottom = static_cast<float>(y + height);
    const float top = static_cast<float>(y) + (1.0f - level) * static_cast<float>(height);
    glDisable(GL_BLEND);
    glDisable(GL_TEXTURE_2D);
    glBegin(GL_QUADS);
    glColor4f(0.8f, 0.85f, 1.0f, 1.0f);
    glVertex2f(left, top);
    glVertex2f(right, top);
    glColor4f(0.7f, 0.75f, 1.0f, 1.0f);
    glVertex2f(right, bottom);
    glVertex2f(left, bottom);
    glEnd();
}
