// The file-level state of the running level, shared by Game's files.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "audio/audio.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "menus/menus.h"

namespace GameState {

// Clock tics of a piece of work done once a frame or step, gathered in batches
// of Game::simulationTimingBatch.
struct TicsMeter {
    uint64_t sum = 0;
    int count = 0;
};

// Whether the loop runs and what it was asked to do next; every start and
// restart of a level puts them back.
struct Loop {
    bool running = false;
    bool stopRequested = false;
    bool mapRequested = false;
    bool restartRequested = false;
};

// The console's views of a level: the free camera and the speed reports.
// Every start and restart of a level puts them back.
struct Views {
    bool freeCamera = false;
    Vector2D freeCameraPosition;
    float freeCameraZoom = 1.0f;
    bool showGameSpeeds = false;
    bool showDrawSpeeds = false;
    bool showSimSpeeds = false;
};

struct State {
    Loop loop;
    Views views;
    bool paused = false;
    bool consoleVisible = false;
    std::string mapName;
    std::string currentMapName;
    std::string musicName;
    // Made at the first level and kept across levels.
    std::unique_ptr<GLTexture> cursorTexture;
    std::unique_ptr<GLFont> font;
    FrameClock clock;
    float frameTimeSum = 0.0f;
    int frameCounter = 0;
    float frameTime = 0.0f;
    float stepTime = 0.013333334f;
    float background[3] = {0.0f, 0.0f, 0.0f};
    TicsMeter simulationTics;
    TicsMeter drawTics;
    uint64_t gameSteps = 0;
    uint64_t simulationSteps = 0;
};

State& state();

// Adds one measure; each full batch prints "<label> - clock tics: <mean>"
// when shown, and starts afresh.
void recordTics(TicsMeter& meter, uint64_t tics, bool shown, const char* label);
// A menu is open: the level stands still under it.
bool menuIsOpen();
// Turns the player's pause on or off, with the music.
void setPaused(bool paused);
// The console's free camera: arrows move it, Page Up and Page Down zoom it.
void checkFreeCameraInput();

}  // namespace GameState

// The rules of the running level.
namespace GameRules {

constexpr float shortestFinish = 0.001f;

struct State {
    // Its constructor reads the clock, so the state is made on first use.
    LongTimer levelTimer;
    bool finished = false;
    float finishTimer = 0.0f;
    float finishAnimationTime = shortestFinish;
    float finishWaterVolume = 0.0f;
    uint32_t endCount = 0;
    uint32_t checkPointCount = GameRules::fullLevelParticles;
    Vector2D checkPoint;
    bool timePrint = false;
    // Made at the first level and kept across levels.
    std::unique_ptr<Sound> finishSound;
    std::unique_ptr<Sound> deadSound;
    // The full-view animation that fades in over the won level.
    std::unique_ptr<GuiAnimatedButton> finishAnimation;
};
State& state();

}  // namespace GameRules
