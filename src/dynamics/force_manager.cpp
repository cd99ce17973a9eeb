// The level's forces: points with a direction and a strength that do nothing
// by themselves and act on the water through the force triggers.
#include <GL/gl.h>

#include <cstdio>

#include "console/console.h"
#include "dynamics/dynamics.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"

namespace {

struct State {
    std::list<Force> forces;
    bool drawForces = false;
};

State& state() {
    return singleInstance<State>();
}

constexpr float arrowLength = 32.0f;
constexpr float arrowHead = 8.0f;

void drawForce(const Force& force, const GLFont& font) {
    glPointSize(3.0f);
    glBegin(GL_POINTS);
    if (force.enabled)
        glColor3f(0.0f, 1.0f, 0.0f);
    else
        glColor3f(1.0f, 0.0f, 0.0f);
    GLWindow::glVertex(force.position);
    glEnd();
    const Vector2D tip = force.position + force.direction * arrowLength;
    const Vector2D side(-force.direction.y, force.direction.x);
    glColor3f(1.0f, 1.0f, 0.0f);
    glBegin(GL_LINES);
    GLWindow::glVertex(force.position);
    GLWindow::glVertex(tip);
    GLWindow::glVertex(tip);
    GLWindow::glVertex(tip - (force.direction - side * 0.5f) * arrowHead);
    GLWindow::glVertex(tip);
    GLWindow::glVertex(tip - (force.direction + side * 0.5f) * arrowHead);
    glEnd();
    char text[128];
    std::snprintf(text, sizeof(text), "Id: %1i , Strenght: %1f", force.id, force.strength);
    font.drawString(text, force.position.x, force.position.y + 40.0f, 8.0f, 1.0f, 1.0f, 1.0f, 1.0f);
}

}  // namespace

namespace ForceManager {

namespace {
const GLConsoleCommand commands[] = {
    {"ForceCount", conCmdForceCount},
    {"ForceCreate", conCmdForceCreate},
    {"ForceDraw", GLConsole::settingCommand<state, &State::drawForces>},
};
const GLConsole::Subsystem console("\nInitialising force manager.", "\nShutting down force manager.",
                                   commands);
}  // namespace

void initialise() {
    TRACE_LOCATION("ForceManager::initialise");
    shutdown();
    GLConsole::startSubsystem(console);
}

void shutdown() {
    TRACE_LOCATION("ForceManager::shutdown");
    GLConsole::stopSubsystem(console);
    state() = State();
}

void addForce(int32_t id, float x, float y, float directionX, float directionY, float strength) {
    TRACE_LOCATION("ForceManager::addForce");
    Force force;
    force.id = id;
    force.position = Vector2D(x, y);
    force.direction = Vector2D(directionX, directionY);
    normalise(force.direction);
    force.strength = strength;
    state().forces.push_back(force);
}

void debugDraw() {
    TRACE_LOCATION("ForceManager::debugDraw");
    if (!state().drawForces || !GLWindow::contextAvailable()) return;
    GLWindow::glPushState();
    const GLFont font(GLConsole::getFontTexture());
    for (const Force& force : state().forces) {
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_BLEND);
        drawForce(force, font);
    }
    GLWindow::glPopState();
}

std::list<Force>& getForces() {
    TRACE_LOCATION("ForceManager::getForces");
    return state().forces;
}

int conCmdForceCount() {
    TRACE_LOCATION("ForceManager::conCmdForceCount");
    return static_cast<int>(state().forces.size());
}

void conCmdForceCreate(std::string arguments) {
    TRACE_LOCATION("ForceManager::conCmdForceCreate");
    std::vector<std::string> args;
    if (!GLConsole::readArguments(arguments, "innnnn",
                                  "\nUSAGE: ForceCreate  < id : integer > < x : number > < y : number > "
                                  "< dir_x : number > < dir_y : number > < strenght : number >",
                                  args))
        return;
    addForce(slStringToInt(args[0]), slStringToFloat(args[1]), slStringToFloat(args[2]),
             slStringToFloat(args[3]), slStringToFloat(args[4]), slStringToFloat(args[5]));
}

}  // namespace ForceManager
