// LevelObjectsManager: every sprite of the level, their animations, and their
// drawing by layer with one texture bind for each run of equal textures.
#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "console/console.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "graphics/graphics_state.h"
#include "graphics/window/window.h"

namespace LevelObjectsManager {

State& state() {
    return singleInstance<State>();
}

namespace {

struct HalfSize {
    float x = 0.0f, y = 0.0f;
};

HalfSize halfSize(const GLTexture& frame) {
    return {static_cast<float>(frame.width) * 0.5f, static_cast<float>(frame.height) * 0.5f};
}

void queue(const LevelObject& object) {
    state().drawQueues[object.layer < drawLayerCount ? object.layer : 0].push_back(&object);
}

bool inView(const LevelObject& object, const Vector2D& centre, float half) {
    if (!object.visible || !object.currentTexture()) return false;
    const HalfSize size = halfSize(*object.currentTexture());
    const Vector2D at = object.position + object.offset;
    return at.x + size.x >= centre.x - half && at.x - size.x <= centre.x + half &&
           at.y + size.y >= centre.y - half && at.y - size.y <= centre.y + half;
}

void quad(const LevelObject& object, const HalfSize& size) {
    const Vector2D at = object.position + object.offset;
    const float left = object.mirrored ? 1.0f : 0.0f;
    const float right = 1.0f - left;
    glTexCoord2f(left, 0.0f);
    glVertex2f(at.x - size.x, at.y - size.y);
    glTexCoord2f(right, 0.0f);
    glVertex2f(at.x + size.x, at.y - size.y);
    glTexCoord2f(right, 1.0f);
    glVertex2f(at.x + size.x, at.y + size.y);
    glTexCoord2f(left, 1.0f);
    glVertex2f(at.x - size.x, at.y + size.y);
}

int conCmdObjectsCount() {
    TRACE_LOCATION("LevelObjectsManager::conCmdObjectsCount");
    return static_cast<int>(state().staticObjects.size() + state().animatedObjects.size());
}

void conCmdObjectsCreate(std::string line) {
    TRACE_LOCATION("LevelObjectsManager::conCmdObjectsCreate");
    std::vector<std::string> args;
    if (!GLConsole::readArguments(
            line, "nnis",
            "\nUSAGE: ObjectsCreate < x : number > < y : number > < object id : integer > "
            "< textureName : string >",
            args))
        return;
    LevelObject object;
    object.position = Vector2D(slStringToFloat(args[0]), slStringToFloat(args[1]));
    object.id = slStringToInt(args[2]);
    object.setTexture(args[3]);
    addObject(object);
}

const GLConsoleCommand commands[] = {
    {"ObjectsDraw", GLConsole::settingCommand<state, &State::objectsDraw>},
    {"ObjectsCull", GLConsole::settingCommand<state, &State::objectsCull>},
    {"ObjectsCount", conCmdObjectsCount},
    {"ObjectsDrawIds", GLConsole::settingCommand<state, &State::objectsDrawIds>},
    {"ObjectsCreate", conCmdObjectsCreate},
};
const GLConsole::Subsystem console("\nInitialising level objects manager..",
                                   "\nShutting down level objects manager..", commands);
}  // namespace

void initialise() {
    TRACE_LOCATION("LevelObjectsManager::initialise");
    shutdown();
    GLConsole::startSubsystem(console);
    ConfigFile config("cfg\\animation.cfg");
    state().animationSpeed = std::fabs(config.getVarAsFloat("animationSpeeds"));
}

void shutdown() {
    TRACE_LOCATION("LevelObjectsManager::shutdown");
    GLConsole::stopSubsystem(console);
    state() = State();
}

void addObject(const LevelObject& object) {
    TRACE_LOCATION("LevelObjectsManager::addObject");
    // Objects of one frame never animate, so they sit apart from those that do.
    if (object.frameCount == 1)
        state().staticObjects.push_front(object);
    else if (object.frameCount > 1)
        state().animatedObjects.push_front(object);
}

void resetObjects() {
    TRACE_LOCATION("LevelObjectsManager::resetObjects");
    state().objectsDraw = state().objectsCull = true;
    state().objectsDrawIds = false;
    for (auto* objects : {&state().staticObjects, &state().animatedObjects})
        for (LevelObject& object : *objects) {
            object.resetAnimation();
            object.visible = true;
            object.offset = Vector2D();
            object.stopped = true;
        }
}

void runAnimations(float seconds) {
    TRACE_LOCATION("LevelObjectsManager::runAnimations");
    for (LevelObject& object : state().animatedObjects) object.runAnimation(seconds, state().animationSpeed);
}

void prepareDraw() {
    TRACE_LOCATION("LevelObjectsManager::prepareDraw");
    if (!state().objectsDraw) return;
    const Vector2D centre = Camera::getViewCentre();
    const float half = std::max(Game::getViewAreaX(), Game::getViewAreaY()) * 0.65f * Camera::getZoom();
    for (const auto* objects : {&state().staticObjects, &state().animatedObjects})
        for (const LevelObject& object : *objects)
            if (!state().objectsCull || inView(object, centre, half)) queue(object);
}

void drawLayer(int layer) {
    TRACE_LOCATION("LevelObjectsManager::drawLayer");
    if (layer < 0 || layer >= drawLayerCount) return;
    std::vector<const LevelObject*>& drawQueue = state().drawQueues[layer];
    drawQueue.erase(std::remove_if(drawQueue.begin(), drawQueue.end(),
                                   [](const LevelObject* object) { return !object->currentTexture(); }),
                    drawQueue.end());
    std::stable_sort(drawQueue.begin(), drawQueue.end(), [](const LevelObject* a, const LevelObject* b) {
        return a->currentTexture()->id < b->currentTexture()->id;
    });
    if (GLWindow::contextAvailable()) {
        for (std::size_t first = 0; first < drawQueue.size();) {
            const GLTexture& texture = *drawQueue[first]->currentTexture();
            // A run of one texture takes the size of its first object's frame.
            const HalfSize size = halfSize(texture);
            glBindTexture(GL_TEXTURE_2D, texture.id);
            glBegin(GL_QUADS);
            std::size_t next = first;
            for (; next < drawQueue.size() && drawQueue[next]->currentTexture()->id == texture.id; ++next)
                quad(*drawQueue[next], size);
            glEnd();
            first = next;
        }
    }
    drawQueue.clear();
}

void debugDraw() {
    TRACE_LOCATION("LevelObjectsManager::debugDraw");
    if (!state().objectsDrawIds || !GLWindow::contextAvailable()) return;
    const GLFont font(GLConsole::getFontTexture());
    char label[32];
    for (const auto* objects : {&state().staticObjects, &state().animatedObjects})
        for (const LevelObject& object : *objects) {
            const GLTexture* frame = object.currentTexture();
            if (!frame) continue;
            std::snprintf(label, sizeof(label), "OBJ ID: %1i", object.id);
            const HalfSize size = halfSize(*frame);
            font.drawString(label, object.position.x - size.x, object.position.y - size.y - 12.0f, 8.0f, 1.0f,
                            1.0f, 1.0f, 1.0f);
        }
}

std::list<LevelObject>& getStaticObjects() {
    TRACE_LOCATION("LevelObjectsManager::getStaticObjects");
    return state().staticObjects;
}
std::list<LevelObject>& getAnimatedObjects() {
    TRACE_LOCATION("LevelObjectsManager::getAnimatedObjects");
    return state().animatedObjects;
}

}  // namespace LevelObjectsManager
