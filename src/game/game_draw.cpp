// Drawing the frame, and the console's free camera that looks at the level
// without moving the real one.
#include <GL/gl.h>

#include <algorithm>
#include <cstdio>

#include "audio/audio.h"
#include "console/console.h"
#include "dynamics/dynamics.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "game/game_state.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"
#include "level/level.h"
#include "menus/menus.h"
#include "platform/platform.h"
#include "water/water.h"

using GameState::state;

namespace {
constexpr float freeCameraSpeed = 500.0f;
constexpr float closestFreeZoom = 0.01f;
constexpr float widestFreeZoom = 100.0f;
}  // namespace

void GameState::checkFreeCameraInput() {
    TRACE_LOCATION("Game::checkFreeCameraInput");
    if (state().consoleVisible) return;
    const float travel = freeCameraSpeed / state().views.freeCameraZoom * state().frameTime;
    if (GLWindow::keyboardKeyPressed(VirtualKey::up)) state().views.freeCameraPosition.y -= travel;
    if (GLWindow::keyboardKeyPressed(VirtualKey::down)) state().views.freeCameraPosition.y += travel;
    if (GLWindow::keyboardKeyPressed(VirtualKey::left)) state().views.freeCameraPosition.x -= travel;
    if (GLWindow::keyboardKeyPressed(VirtualKey::right)) state().views.freeCameraPosition.x += travel;
    const float zoomFactor = 5.0f * state().frameTime + 1.0f;
    if (GLWindow::keyboardKeyPressed(VirtualKey::pageUp))
        state().views.freeCameraZoom = std::max(state().views.freeCameraZoom * zoomFactor, closestFreeZoom);
    if (GLWindow::keyboardKeyPressed(VirtualKey::pageDown))
        state().views.freeCameraZoom = std::min(state().views.freeCameraZoom / zoomFactor, widestFreeZoom);
}

namespace {

void freeCameraView() {
    const float areaX = Game::getViewAreaX();
    const float areaY = Game::getViewAreaY();
    glScalef(static_cast<float>(GLWindow::getClientWidth()) / areaX,
             static_cast<float>(GLWindow::getClientHeight()) / areaY, 1.0f);
    glTranslatef(areaX * 0.5f, areaY * 0.5f, 0.0f);
    glScalef(state().views.freeCameraZoom, state().views.freeCameraZoom, 1.0f);
    glTranslatef(-state().views.freeCameraPosition.x, -state().views.freeCameraPosition.y, 0.0f);
}

void drawLayer(int layer) {
    DynamicPolygonRenderer::drawLayer(layer);
    LevelGeometryRenderer::drawLayer(layer);
    LevelObjectsManager::drawLayer(layer);
}

// What the view shows, with the effects over the level.
void drawLevel() {
    LevelObjectsManager::prepareDraw();
    DynamicPolygonRenderer::prepareDraw();
    Game::drawQueuedLayers();
    FxParticleManager::draw();
    // Each is silent unless its own console switch is on.
    Level::debugDraw();
    ForceManager::debugDraw();
    ParticleGroupMover::debugDraw();
    TriggerManager::debugDraw();
    LevelObjectsManager::debugDraw();
    SoundSourceManager::debugDraw();
    MoverManager::debugDraw();
    FxParticleManager::debugDraw();
}

void lineLoop(const Vector2D* corners, int count) {
    glBegin(GL_LINE_LOOP);
    for (int i = 0; i < count; ++i) glVertex2f(corners[i].x, corners[i].y);
    glEnd();
}

// Where the free camera stands, and the rectangle that the real camera sees.
void drawFreeCameraOverlay() {
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    const Vector2D at = state().views.freeCameraPosition;
    const float arm = 4.0f / state().views.freeCameraZoom;
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    glBegin(GL_LINES);
    glVertex2f(at.x - arm, at.y);
    glVertex2f(at.x + arm, at.y);
    glVertex2f(at.x, at.y - arm);
    glVertex2f(at.x, at.y + arm);
    glEnd();
    const float w = Game::getViewAreaX() * 0.5f * Camera::getZoom();
    const float h = Game::getViewAreaY() * 0.5f * Camera::getZoom();
    Vector2D corners[4] = {{-w, -h}, {w, -h}, {w, h}, {-w, h}};
    for (Vector2D& corner : corners) {
        rotate(corner, Camera::getTilt() * degreesToRadians);
        corner += Camera::getViewCentre();
    }
    glColor4f(0.0f, 1.0f, 0.0f, 1.0f);
    lineLoop(corners, 4);
    char text[64];
    std::snprintf(text, sizeof(text), "%1f , %2f", at.x, at.y);
    const GLFont font(GLConsole::getFontTexture());
    font.drawString(text, at.x, at.y + 16.0f / state().views.freeCameraZoom,
                    8.0f / state().views.freeCameraZoom, 1.0f, 1.0f, 1.0f, 1.0f);
}

// The rules' drawing has left the virtual screen of 800 by 600 in place.
void drawPaused() {
    TRACE_LOCATION("Game::drawPaused");
    const GLFont& font = *state().font;
    font.drawStringCentered("Paused", 2.0f, 2.0f, 800.0f, 600.0f, 32.0f, 0.0f, 0.0f, 0.0f, 1.0f);
    font.drawStringCentered("Paused", 0.0f, 0.0f, 800.0f, 600.0f, 32.0f, 1.0f, 1.0f, 1.0f, 1.0f);
}

}  // namespace

void Game::drawQueuedLayers() {
    TRACE_LOCATION("Game::drawQueuedLayers");
    glEnable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_CULL_FACE);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    drawLayer(0);
    drawLayer(1);
    ParticleRenderer::draw();
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    for (int layer = 2; layer < 5; ++layer) drawLayer(layer);
}

void Game::draw() {
    TRACE_LOCATION("Game::draw");
    drawFrame();
    if (GLWindow::contextAvailable()) GLWindow::swapBuffers();
}

// Without a window only the open menu runs its frame: its counters and delayed
// events go on by the clock.
void Game::drawFrame() {
    TRACE_LOCATION("Game::drawFrame");
    if (!GLWindow::contextAvailable()) {
        GameMenus::sendMenuEvent_windowRedrawing();
        return;
    }
    const uint64_t start = Platform::clockMicroseconds();
    GLWindow::glBeginDraw2d();
    glClearColor(state().background[0], state().background[1], state().background[2], 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    if (state().views.freeCamera)
        freeCameraView();
    else
        Camera::viewFrom();
    const bool finished = GameRules::gameIsFinished();
    if (!finished) drawLevel();
    if (state().views.freeCamera && !finished) drawFreeCameraOverlay();
    GameRules::draw();
    if (state().paused && !state().views.freeCamera && state().font) drawPaused();
    CheckPointTimesManager::draw();
    if (GameState::menuIsOpen()) GameMenus::sendMenuEvent_windowRedrawing();
    if (state().cursorTexture && GameState::menuIsOpen()) Gui::drawCursor(*state().cursorTexture, true);
    GameState::recordTics(state().drawTics, Platform::clockMicroseconds() - start,
                          state().views.showDrawSpeeds, "Drawing");
    if (state().consoleVisible) GLConsole::draw();
}
