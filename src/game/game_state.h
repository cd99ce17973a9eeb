// The file-level state of the running level, shared by Game's files.
#pragma once

#include <cstdint>
#include <string>

#include "foundation/foundation.h"

namespace GameState {

struct State {
    bool running = false;
    bool stopRequested = false;
    bool mapRequested = false;
    bool restartRequested = false;
    bool paused = false;
    bool freeCamera = false;
    bool consoleVisible = false;
    bool showGameSpeeds = false;
    bool showDrawSpeeds = false;
    bool showSimSpeeds = false;
    std::string mapName;
    std::string currentMapName;
    std::string musicName;
    FrameClock clock;
    float frameTimeSum = 0.0f;
    int frameCounter = 0;
    float frameTime = 0.0f;
    float stepTime = 0.013333334f;
    float background[3] = {0.0f, 0.0f, 0.0f};
    Vector2D freeCameraPosition;
    float freeCameraZoom = 1.0f;
    uint64_t simulationTicsSum = 0;
    int simulationTimings = 0;
    uint64_t drawTicsSum = 0;
    int drawTimings = 0;
    uint64_t gameSteps = 0;
    uint64_t simulationSteps = 0;
};

State& state();

// Turns the player's pause on or off, with the music.
void setPaused(bool paused);
// The console's free camera: arrows move it, Page Up and Page Down zoom it.
void checkFreeCameraInput();

}  // namespace GameState

// What Game asks of the subsystems around it that are not part of the game
// flow itself: menus, the rules of winning, music and the level store.
namespace GameLinks {

bool menuIsOpen();
void openMainMenu();
void openInGameMenu();
void closeMenus();
// A key for the open menu, with Escape going back as the menus expect.
void sendKeyToMenu(int key);
void sendKeyReleaseToMenu(int key);
void sendMouseMoveToMenu(int x, int y);
void sendMousePressToMenu(int x, int y, int button);
void sendMouseReleaseToMenu(int x, int y, int button);
bool gameIsFinished();
// The rules of winning and the level timer, which stands still while they don't run.
void updateRules(float dt);
void unpauseLevelTimer();
// What moves in a level besides the water: movers and effects before it, then
// the triggers that test it and the animations.
void stepLevelBeforeWater(float dt);
void stepLevelAfterWater(float dt);
void updateSounds(float dt);
void pauseMusic();
void resumeMusic();

// Reads the level; false leaves the old one standing.
bool loadLevel(const std::string& levelName);
void resetLevelStore();
void clearLevel();
Vector2D waterStart();
Vector2D cameraStart();

}  // namespace GameLinks
