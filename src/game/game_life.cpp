// The life of a level: loading and setting up every subsystem for it, putting
// it back to its start, and shutting it down.
#include <memory>

#include "audio/audio.h"
#include "console/console.h"
#include "dynamics/dynamics.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "game/game_state.h"
#include "graphics/graphics.h"
#include "level/level.h"
#include "menus/menus.h"
#include "water/water.h"

namespace GameState {
State& state() {
    return singleInstance<State>();
}
}  // namespace GameState

using GameState::state;

namespace {

GameState::Views& views() {
    return state().views;
}

void conCmdZoomCamera() {
    TRACE_LOCATION("Game::conCmdZoomCamera");
    Camera::zoomOut();
}

void conCmdShakeCamera() {
    TRACE_LOCATION("Game::conCmdShakeCamera");
    Camera::shake();
}

void conCmdRestart() {
    TRACE_LOCATION("Game::conCmdRestart");
    Game::requestRestart();
}

bool conCmdPause(bool value, bool set) {
    TRACE_LOCATION("Game::conCmdPause");
    if (set && value != state().paused) GameState::setPaused(value);
    return state().paused;
}

const GLConsoleCommand commands[] = {
    {"ShowGameSpeeds", GLConsole::settingCommand<views, &GameState::Views::showGameSpeeds>},
    {"ShowDrawSpeeds", GLConsole::settingCommand<views, &GameState::Views::showDrawSpeeds>},
    {"ShowSimSpeeds", GLConsole::settingCommand<views, &GameState::Views::showSimSpeeds>},
    {"FreeCamera", GLConsole::settingCommand<views, &GameState::Views::freeCamera>},
    {"ZoomCamera", conCmdZoomCamera},
    {"ShakeCamera", conCmdShakeCamera},
    {"Restart", conCmdRestart},
    {"Pause", conCmdPause},
};

// Every start and restart of a level runs the loop afresh, with no request pending.
void startRunning() {
    TRACE_LOCATION("Game::startRunning");
    state().loop = GameState::Loop();
    state().loop.running = true;
}

// A level's water is always 128 particles at its start point, and the camera glides to them.
void placeWaterAndCamera() {
    TRACE_LOCATION("Game::placeWaterAndCamera");
    const Vector2D water = Level::getWaterStart();
    ParticleManager::createParticles(water.x, water.y, Game::waterStartRadius, Game::waterParticles);
    Camera::setPosition(Level::getCameraStart());
    Camera::setState(Camera::movingToWaypoint);
}

// The pointer and the font are made once and outlive changes of level.
void readSettings() {
    TRACE_LOCATION("Game::readSettings");
    const ConfigFile config("cfg\\game.cfg");
    state().background[0] = config.getVarAsFloat("background_r");
    state().background[1] = config.getVarAsFloat("background_g");
    state().background[2] = config.getVarAsFloat("background_b");
    state().musicName = config.getVarAsString("music");
    state().clock.reset();
    if (!state().cursorTexture)
        state().cursorTexture = std::make_unique<GLTexture>(config.getVarAsString("cursor"));
    if (!state().font) state().font = std::make_unique<GLFont>(GLTexture(config.getVarAsString("font")));
}

void startWaterSounds() {
    TRACE_LOCATION("Game::startWaterSounds");
    GameSfx_Ice::initialise();
    GameSfx_Water::initialise();
    GameSfx_Steam::initialise();
}

void setUpLoadedLevel(const std::string& levelName) {
    TRACE_LOCATION("Game::setUpLoadedLevel");
    state().currentMapName = levelName;
    state().stepTime = Game::stepThreshold;
    state().views = GameState::Views();  // back to the player's view
    GLConsole::addCommands(commands);
    GLConsole::printTitle("Game initialisation");
    Triggers_HeatSources_LoadSettings();
    ParticleManager::initialise();
    ParticleRenderer::initialise();
    Camera::initialise();
    placeWaterAndCamera();
    readSettings();
    startWaterSounds();
    GameRules::initialise();
}

}  // namespace

void Game::initialise(const std::string& levelName) {
    TRACE_LOCATION("Game::initialise");
    startRunning();
    SplashScreen::run();
    GameMenus::initialise();
    GameMenus::setCurrentMenu(GameMenus::main);
    if (Level::load(levelName)) setUpLoadedLevel(levelName);
    SplashScreen::stop();
}

void Game::resetLevel() {
    TRACE_LOCATION("Game::resetLevel");
    startRunning();
    state().views = GameState::Views();  // back to the player's view
    ParticleManager::removeAllParticles();
    ParticleGroupMover::removeAllGroups();
    ParticleMover::clearParticleGrid();
    // Emitters stay as they are, timers and active flags included.
    FxParticleManager::removeAllParticles();
    Level::reset();
    Camera::initialise();
    placeWaterAndCamera();
    startWaterSounds();
    GameRules::initialise();
}

void Game::shutdown() {
    TRACE_LOCATION("Game::shutdown");
    GLConsole::printTitle("Game shutdown");
    GLConsole::removeCommands(commands);
    Level::clear();
    // The effects outlive Level::clear, to be replaced by the next level's; at
    // the end of the game nothing is left to replace them, and their textures
    // must go while the texture store still stands.
    FxParticleManager::shutdown();
    ParticleManager::shutdown();
    ParticleRenderer::shutdown();
    GameSfx_Ice::shutdown();
    GameSfx_Water::shutdown();
    GameSfx_Steam::shutdown();
    GameMenus::shutdown();
    // A game shut down is as one never started: the next run measures its frames afresh.
    state() = GameState::State();
}
