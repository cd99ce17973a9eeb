// The camera's settings, its life and the requests that others make of it:
// state changes, zooming out and shaking.
#include <algorithm>
#include <cmath>

#include "foundation/foundation.h"
#include "game/camera_state.h"
#include "game/game.h"

namespace Camera {

State& state() {
    return singleInstance<State>();
}

namespace {
constexpr float largestMaxAngle = 180.0f;
constexpr float largestWaypointSpeed = 0.99f;

void readSettings() {
    TRACE_LOCATION("Camera::readSettings");
    const ConfigFile config("cfg\\camera.cfg");
    const auto positive = [&config](const char* key) { return std::fabs(config.getVarAsFloat(key)); };
    state().settings.rotationSmooth = std::clamp(config.getVarAsFloat("rotationSmooth"), 0.0f, 1.0f);
    state().settings.movementInterpolateSpeed =
        std::clamp(config.getVarAsFloat("movementInterpolateSpeed"), 0.0f, 1.0f);
    state().settings.maxAngle = std::min(positive("maxAngle"), largestMaxAngle);
    state().settings.keyboardTurnSpeed = positive("keyboardTurnSpeed");
    state().settings.mouseTurnSpeed = positive("mouseTurnSpeed");
    state().settings.zoomSpeed = positive("zoomSpeed");
    state().settings.zoomWait = positive("zoomWait");
    state().settings.waypointInterpolateSpeed =
        std::clamp(positive("waypointInterpolateSpeed"), 0.0f, largestWaypointSpeed);
    state().settings.waypointInterpolateDistance = positive("waypointInterpolateDistance");
    state().settings.shakeTime = positive("shakeTime");
    state().settings.shakeStrenght = positive("shakeStrenght");
    state().settings.shakeSpeed = positive("shakeSpeed");
}
}  // namespace

Vector2D drawShakeTarget() {
    TRACE_LOCATION("Camera::drawShakeTarget");
    return randomDirection() * state().settings.shakeStrenght;
}

void initialise() {
    TRACE_LOCATION("Camera::initialise");
    state() = State();
    readSettings();
}

void setState(int newState) {
    TRACE_LOCATION("Camera::setState");
    if (newState >= movingToWaypoint && newState <= zoomingIn) state().state = newState;
}

bool movingTowardsWaypoint() {
    TRACE_LOCATION("Camera::movingTowardsWaypoint");
    return state().state == movingToWaypoint;
}

void zoomOut() {
    TRACE_LOCATION("Camera::zoomOut");
    if (state().state == following || state().state == zoomingIn)
        state().state = zoomingOut;
    else if (state().state == holdingZoom)
        state().zoomTimer = state().settings.zoomWait;
}

void shake() {
    TRACE_LOCATION("Camera::shake");
    state().shakeTimer = state().settings.shakeTime;
    if (state().shaking) return;
    state().shaking = true;
    state().shakeTarget = drawShakeTarget();
}

Vector2D getPosition() {
    TRACE_LOCATION("Camera::getPosition");
    return state().position;
}

void setPosition(const Vector2D& position) {
    TRACE_LOCATION("Camera::setPosition");
    state().position = position;
}

Vector2D getViewCentre() {
    TRACE_LOCATION("Camera::getViewCentre");
    return state().position + state().shakeOffset;
}

void setTilt(float degrees) {
    TRACE_LOCATION("Camera::setTilt");
    state().tilt = degrees;
    state().turnSpeed = 0.0f;
}

float getTilt() {
    TRACE_LOCATION("Camera::getTilt");
    return state().tilt;
}

float getZoom() {
    TRACE_LOCATION("Camera::getZoom");
    return state().zoom;
}

int getState() {
    TRACE_LOCATION("Camera::getState");
    return state().state;
}

}  // namespace Camera
