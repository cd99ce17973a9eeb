// Drawing the frame, and the console's free camera that looks at the level
// without moving the real one.
#include <algorithm>

#include "foundation/foundation.h"
#include "game/game.h"
#include "game/game_state.h"
#include "graphics/window/window.h"

using GameState::game;

namespace {
constexpr int pageUp = 33;
constexpr int pageDown = 34;
constexpr int leftArrow = 37;
constexpr int upArrow = 38;
constexpr int rightArrow = 39;
constexpr int downArrow = 40;
constexpr float freeCameraSpeed = 500.0f;
constexpr float closestFreeZoom = 0.01f;
constexpr float widestFreeZoom = 100.0f;
}  // namespace

void GameState::checkFreeCameraInput() {
    TRACE_LOCATION("Game::checkFreeCameraInput");
    if (game.consoleVisible) return;
    const float travel = freeCameraSpeed / game.freeCameraZoom * game.frameTime;
    if (GLWindow::keyboardKeyPressed(upArrow)) game.freeCameraPosition.y -= travel;
    if (GLWindow::keyboardKeyPressed(downArrow)) game.freeCameraPosition.y += travel;
    if (GLWindow::keyboardKeyPressed(leftArrow)) game.freeCameraPosition.x -= travel;
    if (GLWindow::keyboardKeyPressed(rightArrow)) game.freeCameraPosition.x += travel;
    const float zoomFactor = 5.0f * game.frameTime + 1.0f;
    if (GLWindow::keyboardKeyPressed(pageUp))
        game.freeCameraZoom = std::max(game.freeCameraZoom * zoomFactor, closestFreeZoom);
    if (GLWindow::keyboardKeyPressed(pageDown))
        game.freeCameraZoom = std::min(game.freeCameraZoom / zoomFactor, widestFreeZoom);
}

// The level's layers, the water and the overlays are drawn here once their
// renderers exist; until then a frame is only presented.
void Game::draw() {
    TRACE_LOCATION("Game::draw");
    GLWindow::swapBuffers();
}
