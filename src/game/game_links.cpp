// Game's side of the subsystems it steps but does not own. Until the menus, the
// rules of winning and the music are in the build, no menu is ever open, a
// level never finishes and pausing is silent.
#include "dynamics/dynamics.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "game/game_state.h"
#include "graphics/graphics.h"
#include "level/level.h"

namespace GameLinks {

bool menuIsOpen() {
    TRACE_LOCATION("GameLinks::menuIsOpen");
    return false;
}

void openMainMenu() {
    TRACE_LOCATION("GameLinks::openMainMenu");
}
void openInGameMenu() {
    TRACE_LOCATION("GameLinks::openInGameMenu");
}
void closeMenus() {
    TRACE_LOCATION("GameLinks::closeMenus");
}
void sendKeyToMenu(int) {
    TRACE_LOCATION("GameLinks::sendKeyToMenu");
}
void sendKeyReleaseToMenu(int) {
    TRACE_LOCATION("GameLinks::sendKeyReleaseToMenu");
}
void sendMouseMoveToMenu(int, int) {
    TRACE_LOCATION("GameLinks::sendMouseMoveToMenu");
}
void sendMousePressToMenu(int, int, int) {
    TRACE_LOCATION("GameLinks::sendMousePressToMenu");
}
void sendMouseReleaseToMenu(int, int, int) {
    TRACE_LOCATION("GameLinks::sendMouseReleaseToMenu");
}

bool gameIsFinished() {
    TRACE_LOCATION("GameLinks::gameIsFinished");
    return GameRules::gameIsFinished();
}

void updateRules(float dt) {
    TRACE_LOCATION("GameLinks::updateRules");
    GameRules::update(dt);
}
void unpauseLevelTimer() {
    TRACE_LOCATION("GameLinks::unpauseLevelTimer");
    GameRules::unpauseLevelTimer();
}
// The water collides with the edges of the step's start plus what the movers pushed.
void stepLevelBeforeWater(float dt) {
    TRACE_LOCATION("GameLinks::stepLevelBeforeWater");
    MoverManager::updateCollideableNodes();
    MoverManager::runMovers(dt);
}
void stepLevelAfterWater(float dt) {
    TRACE_LOCATION("GameLinks::stepLevelAfterWater");
    TriggerManager::runTriggers(dt);
    LevelObjectsManager::runAnimations(dt);
}
void updateSounds(float) {
    TRACE_LOCATION("GameLinks::updateSounds");
}

void pauseMusic() {
    TRACE_LOCATION("GameLinks::pauseMusic");
}
void resumeMusic() {
    TRACE_LOCATION("GameLinks::resumeMusic");
}

bool loadLevel(const std::string& levelName) {
    TRACE_LOCATION("GameLinks::loadLevel");
    return Level::load(levelName);
}

void resetLevelStore() {
    TRACE_LOCATION("GameLinks::resetLevelStore");
    Level::reset();
}

void clearLevel() {
    TRACE_LOCATION("GameLinks::clearLevel");
    Level::clear();
}

Vector2D waterStart() {
    TRACE_LOCATION("GameLinks::waterStart");
    return Level::getWaterStart();
}

Vector2D cameraStart() {
    TRACE_LOCATION("GameLinks::cameraStart");
    return Level::getCameraStart();
}

}  // namespace GameLinks
