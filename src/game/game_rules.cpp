// The rules of a level: its timer, the water that must stand in the end area
// at one moment, the finish, the scores, and the water given back at the last
// check point once all of it is lost.
#include <GL/gl.h>

#include <algorithm>
#include <cstdio>

#include "console/console.h"
#include "game/game.h"
#include "game/game_state.h"
#include "graphics/window/window.h"
#include "level/level.h"
#include "menus/menus.h"
#include "water/water.h"

namespace {

using GameRules::shortestFinish;
using GameRules::state;

void readSettings() {
    TRACE_LOCATION("GameRules::readSettings");
    const ConfigFile config("cfg\\game.cfg");
    state().finishAnimationTime = std::max(config.getVarAsFloat("finishAnimationTime"), shortestFinish);
    state().finishWaterVolume = config.getVarAsFloat("finishWaterVolume");
    if (!state().finishSound)
        state().finishSound = std::make_unique<Sound>(config.getVarAsString("finishSound"));
    if (!state().deadSound) state().deadSound = std::make_unique<Sound>(config.getVarAsString("deadSound"));
    if (!state().finishAnimation) {
        auto animation = std::make_unique<GuiAnimatedButton>();
        const std::string frames = config.getVarAsString("finishAnimationFrames");
        animation->setFramesOutOfFocus(frames);
        animation->setFramesInFocus(frames);
        animation->setFramesClicked(frames);
        animation->frameRate = config.getVarAsFloat("finishAnimationFrameRate");
        state().finishAnimation = std::move(animation);
    }
}

// Over the whole view, fading in as the finish timer runs down, so that it
// stands fully opaque when the level-finished menu opens.
void drawFinishAnimation() {
    TRACE_LOCATION("GameRules::drawFinishAnimation");
    GuiAnimatedButton& animation = *state().finishAnimation;
    animation.setSize(static_cast<int>(Game::getViewAreaX()), static_cast<int>(Game::getViewAreaY()));
    animation.setPosition(0, 0);
    animation.focused = true;
    animation.setState(GuiAnimatedButton::outOfFocus);
    animation.setColor(1.0f, 1.0f, 1.0f, 1.0f - state().finishTimer / state().finishAnimationTime);
    animation.windowRedrawing();
}

void playFromTheStart(Sound& sound) {
    TRACE_LOCATION("GameRules::playFromTheStart");
    sound.rewind();
    sound.setVolume(1.0f);
    sound.play();
}

// All water lost: what the check point saw comes back there, and the camera
// glides to it while the water rests. The clock goes on.
void giveWaterBack() {
    TRACE_LOCATION("GameRules::giveWaterBack");
    if (state().deadSound) playFromTheStart(*state().deadSound);
    ParticleManager::createParticles(state().checkPoint.x, state().checkPoint.y, GameRules::checkPointRadius,
                                     static_cast<int>(state().checkPointCount));
    Camera::setState(Camera::movingToWaypoint);
}

// The share asked for must stand in the end at one moment, not trickle in.
void checkForWin() {
    TRACE_LOCATION("GameRules::checkForWin");
    const float share = static_cast<float>(GameRules::getParticleCount()) * state().finishWaterVolume;
    const uint32_t needed = std::max<uint32_t>(1, static_cast<uint32_t>(std::max(share, 0.0f)));
    if (state().endCount < needed) {
        state().endCount = 0;
        return;
    }
    state().finished = true;
    state().endCount = 0;
    state().finishTimer = state().finishAnimationTime;
    if (state().finishSound) playFromTheStart(*state().finishSound);
}

}  // namespace

namespace GameRules {

State& state() {
    return singleInstance<State>();
}

namespace {
const GLConsoleCommand commands[] = {
    {"TimePrint", GLConsole::settingCommand<state, &State::timePrint>},
};
}  // namespace

void initialise() {
    TRACE_LOCATION("GameRules::initialise");
    // The sounds and the animation are made once; everything else starts afresh.
    std::unique_ptr<Sound> finishSound = std::move(state().finishSound);
    std::unique_ptr<Sound> deadSound = std::move(state().deadSound);
    std::unique_ptr<GuiAnimatedButton> finishAnimation = std::move(state().finishAnimation);
    state() = State();
    state().finishSound = std::move(finishSound);
    state().deadSound = std::move(deadSound);
    state().finishAnimation = std::move(finishAnimation);
    state().checkPoint = Level::getWaterStart();
    readSettings();
    state().finishTimer = state().finishAnimationTime;
    GLConsole::addCommands(commands);
}

void update(float dt) {
    TRACE_LOCATION("GameRules::update");
    if (!state().finished) {
        if (Camera::getState() != Camera::movingToWaypoint)
            state().levelTimer.update();
        else
            state().levelTimer.unpause();
    }
    if (ParticleManager::getParticles().empty() && ParticleGroupMover::getGroups().empty()) giveWaterBack();
    if (state().finished && state().finishTimer > 0.0f) {
        state().finishTimer -= dt;
        // The level falls silent as the finish animation ends.
        if (state().finishTimer <= 0.0f) {
            SoundSourceManager::pauseAllSounds();
            MusicSystem::stop();
            GameMenus::setCurrentMenu(GameMenus::levelFinished);
        }
    }
    if (!state().finished) checkForWin();
}

bool gameIsFinished() {
    TRACE_LOCATION("GameRules::gameIsFinished");
    return state().finished && state().finishTimer <= 0.0f;
}

bool levelIsWon() {
    TRACE_LOCATION("GameRules::levelIsWon");
    return state().finished;
}

int getParticleCount() {
    TRACE_LOCATION("GameRules::getParticleCount");
    std::size_t count = ParticleManager::getParticles().size();
    for (const ParticleGroup& group : ParticleGroupMover::getGroups()) count += group.particles.size();
    return static_cast<int>(count);
}

int getWaterScore() {
    TRACE_LOCATION("GameRules::getWaterScore");
    return static_cast<int>(static_cast<double>(getParticleCount()) / fullLevelParticles *
                            fullLevelWaterScore);
}

int getTimeScore() {
    TRACE_LOCATION("GameRules::getTimeScore");
    const double t = static_cast<double>(state().levelTimer.elapsed);
    const double r = std::clamp((t - bestTime) / (static_cast<double>(worstTime) - bestTime), 0.0, 1.0);
    return static_cast<int>((1.0 - r) * timeScoreRange) + timeScoreFloor;
}

int getTotalScore() {
    TRACE_LOCATION("GameRules::getTotalScore");
    return getWaterScore() + getTimeScore();
}

uint32_t getLevelTime() {
    TRACE_LOCATION("GameRules::getLevelTime");
    return state().levelTimer.elapsed;
}

void setCheckPoint(float x, float y) {
    TRACE_LOCATION("GameRules::setCheckPoint");
    state().checkPointCount = static_cast<uint32_t>(getParticleCount());
    state().checkPoint = Vector2D(x, y);
}

void incrementEndOfLevelTriggerParticleCount(uint32_t n) {
    TRACE_LOCATION("GameRules::incrementEndOfLevelTriggerParticleCount");
    state().endCount += n;
}

void unpauseLevelTimer() {
    TRACE_LOCATION("GameRules::unpauseLevelTimer");
    state().levelTimer.unpause();
}

// Hours, minutes, seconds and hundredths of the level time, every frame while asked for.
void draw() {
    TRACE_LOCATION("GameRules::draw");
    // What follows in the frame draws in the virtual screen of 800 by 600.
    if (GLWindow::contextAvailable()) {
        GLWindow::glBeginDraw2d();
        Gui::scaleToWindow();
    }
    if (state().finished && state().finishTimer > 0.0f && state().finishAnimation) drawFinishAnimation();
    if (!state().timePrint) return;
    uint32_t t = state().levelTimer.elapsed;
    const uint32_t hours = t / 3600000;
    t %= 3600000;
    const uint32_t minutes = t / 60000;
    t %= 60000;
    const uint32_t seconds = t / 1000;
    t %= 1000;
    char text[64];
    std::snprintf(text, sizeof(text), "\n%01i::%2i::%3i.%4i", static_cast<int>(hours),
                  static_cast<int>(minutes), static_cast<int>(seconds), static_cast<int>(t / 10));
    GLConsole::print(text);
}

}  // namespace GameRules
