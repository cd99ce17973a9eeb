// ":overview FILE.png": the whole level in one picture, for a designer to see
// at a glance what a level holds. The layers and the water are drawn by the
// game's own renderers; over them the start points, the trigger areas, the
// movers' paths and the sound sources' ranges are marked in plain lines.
#include <GL/gl.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "audio/audio.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"
#include "headless.h"
#include "level/level.h"
#include "water/water.h"

namespace Headless {

namespace {

struct Box {
    float minX = FLT_MAX, minY = FLT_MAX, maxX = -FLT_MAX, maxY = -FLT_MAX;
    void add(const Vector2D& p) {
        minX = std::min(minX, p.x);
        maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y);
        maxY = std::max(maxY, p.y);
    }
    bool empty() const { return minX > maxX; }
};

struct Colour {
    float r, g, b;
};

constexpr Colour waterColour{0.3f, 0.6f, 1.0f};
constexpr Colour cameraColour{1.0f, 1.0f, 1.0f};
constexpr Colour moverColour{1.0f, 0.6f, 0.1f};
constexpr Colour soundColour{0.8f, 0.5f, 1.0f};

// Trigger areas by what they do: the end green, the water's state in its
// colours, harm red, forces yellow, everything else magenta.
Colour triggerColour(int32_t type) {
    if (type == 801) return {0.1f, 1.0f, 0.2f};
    if (type == 0) return {0.6f, 1.0f, 1.0f};
    if (type == 1) return {0.2f, 0.4f, 1.0f};
    if (type == 2) return {0.9f, 0.9f, 0.9f};
    if (type == 701 || type == 702) return {1.0f, 0.1f, 0.1f};
    if (type >= 200 && type <= 203) return {1.0f, 0.9f, 0.1f};
    return {1.0f, 0.2f, 1.0f};
}

Vector2D centreOf(const Polygon2D& polygon) {
    Box box;
    for (std::size_t i = 0; i < polygon.pointCount(); ++i) box.add(polygon.point(i));
    return {(box.minX + box.maxX) * 0.5f, (box.minY + box.maxY) * 0.5f};
}

// What the picture must hold: every polygon where it stands and where its
// mover takes it, and every marked thing.
Box levelBox(const LevelFile& level) {
    Box box;
    for (const Polygon2D& polygon : Level::getPolygons()) {
        for (std::size_t i = 0; i < polygon.pointCount(); ++i) {
            box.add(polygon.point(i));
            for (const MoverRecord& mover : level.movers)
                if (mover.id == polygon.id)
                    box.add(polygon.point(i) + mover.end.toVector() - mover.start.toVector());
        }
    }
    for (const ObjectRecord& object : level.objects) box.add(object.position.toVector());
    for (const TriggerRecord& trigger : level.triggers)
        for (const LevelPoint& corner : trigger.corners) box.add(corner.toVector());
    for (const SoundSourceRecord& sound : level.sounds) box.add(sound.position.toVector());
    box.add(Level::getWaterStart());
    box.add(Level::getCameraStart());
    return box;
}

void colour(const Colour& c, float alpha = 1.0f) {
    glColor4f(c.r, c.g, c.b, alpha);
}

void cross(const Vector2D& at, float arm) {
    glBegin(GL_LINES);
    glVertex2f(at.x - arm, at.y - arm);
    glVertex2f(at.x + arm, at.y + arm);
    glVertex2f(at.x - arm, at.y + arm);
    glVertex2f(at.x + arm, at.y - arm);
    glEnd();
}

void circle(const Vector2D& at, float radius) {
    glBegin(GL_LINE_LOOP);
    for (int i = 0; i < 64; ++i) {
        const float angle = static_cast<float>(i) * fullTurn / 64.0f;
        glVertex2f(at.x + radius * std::cos(angle), at.y + radius * std::sin(angle));
    }
    glEnd();
}

void drawTriggers(const LevelFile& level) {
    for (const TriggerRecord& trigger : level.triggers) {
        const Colour c = triggerColour(trigger.type);
        colour(c, 0.15f);
        glBegin(GL_QUADS);
        for (const LevelPoint& corner : trigger.corners) glVertex2f(corner.toVector().x, corner.toVector().y);
        glEnd();
        colour(c);
        glBegin(GL_LINE_LOOP);
        for (const LevelPoint& corner : trigger.corners) glVertex2f(corner.toVector().x, corner.toVector().y);
        glEnd();
    }
}

// Each carried polygon's outline where the path ends, and a line from its
// centre to there.
void drawMovers(const LevelFile& level, float pixel) {
    colour(moverColour);
    for (const MoverRecord& mover : level.movers) {
        const Vector2D travel = mover.end.toVector() - mover.start.toVector();
        for (const Polygon2D& polygon : Level::getPolygons()) {
            if (polygon.id != mover.id) continue;
            glBegin(GL_LINE_LOOP);
            for (std::size_t i = 0; i < polygon.pointCount(); ++i) {
                const Vector2D p = polygon.point(i) + travel;
                glVertex2f(p.x, p.y);
            }
            glEnd();
            const Vector2D from = centreOf(polygon), to = from + travel;
            glBegin(GL_LINES);
            glVertex2f(from.x, from.y);
            glVertex2f(to.x, to.y);
            glEnd();
            circle(to, 4.0f * pixel);
        }
    }
}

void drawSounds(const LevelFile& level, float pixel) {
    colour(soundColour);
    for (const SoundSourceRecord& sound : level.sounds) {
        circle(sound.position.toVector(), static_cast<float>(sound.strength));
        cross(sound.position.toVector(), 4.0f * pixel);
    }
}

// The moving and destructable polygons and the objects are queued for drawing
// only near the view, so the view visits the whole level, square by square.
void queueEverywhere(const Box& box) {
    const Vector2D camera = Camera::getPosition();
    const float half = 0.65f * std::max(Game::getViewAreaX(), Game::getViewAreaY()) * Camera::getZoom();
    const float side = std::max(2.0f * half, 1.0f);
    const float columns = std::min(64.0f, std::ceil((box.maxX - box.minX) / side) + 1.0f);
    const float rows = std::min(64.0f, std::ceil((box.maxY - box.minY) / side) + 1.0f);
    for (float i = 0; i < columns; ++i)
        for (float j = 0; j < rows; ++j) {
            Camera::setPosition({box.minX + i * side, box.minY + j * side});
            DynamicPolygonRenderer::prepareDraw();
            LevelObjectsManager::prepareDraw();
        }
    Camera::setPosition(camera);
}

}  // namespace

bool drawOverview() {
    if (!GLWindow::contextAvailable()) return false;
    const LevelFile level = readLevelRecords(Game::getCurrentMapName());
    Box box = levelBox(level);
    if (box.empty()) box.add({0.0f, 0.0f});
    const float width = static_cast<float>(GLWindow::getClientWidth());
    const float height = static_cast<float>(GLWindow::getClientHeight());
    // A margin of a twentieth round the level.
    const float levelWidth = std::max(box.maxX - box.minX, 1.0f) * 1.1f;
    const float levelHeight = std::max(box.maxY - box.minY, 1.0f) * 1.1f;
    const float scale = std::min(width / levelWidth, height / levelHeight);
    const float pixel = 1.0f / scale;

    GLWindow::glBeginDraw2d();
    glClearColor(0.1f, 0.1f, 0.12f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_DEPTH_TEST);
    glLoadIdentity();
    glTranslatef(width * 0.5f, height * 0.5f, 0.0f);
    glScalef(scale, scale, 1.0f);
    glTranslatef(-(box.minX + box.maxX) * 0.5f, -(box.minY + box.maxY) * 0.5f, 0.0f);

    queueEverywhere(box);
    Game::drawQueuedLayers();

    glDisable(GL_TEXTURE_2D);
    glLineWidth(2.0f);
    drawTriggers(level);
    drawMovers(level, pixel);
    drawSounds(level, pixel);
    colour(waterColour);
    cross(Level::getWaterStart(), 8.0f * pixel);
    circle(Level::getWaterStart(), Game::waterStartRadius);
    colour(cameraColour);
    cross(Level::getCameraStart(), 8.0f * pixel);
    glLineWidth(1.0f);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    glEnable(GL_TEXTURE_2D);
    return true;
}

}  // namespace Headless
