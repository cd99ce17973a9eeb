// The camera's settings, its life and the requests that others make of it:
// state changes, zooming out and shaking.
#include <algorithm>
#include <cmath>

#include "foundation/foundation.h"
#include "game/camera_state.h"
#include "game/game.h"

namespace Camera {

Settings settings;
State camera;

namespace {
constexpr float largestMaxAngle = 180.0f;
constexpr float largestWaypointSpeed = 0.99f;

float clamped(float value, float low, float high) {
    TRACE_LOCATION("Camera::clamped");
    return std::min(std::max(value, low), high);
}

void readSettings() {
    TRACE_LOCATION("Camera::readSettings");
    const ConfigFile config("cfg\\camera.cfg");
    const auto positive = [&config](const char* key) { return std::fabs(config.getVarAsFloat(key)); };
    settings.rotationSmooth = clamped(config.getVarAsFloat("rotationSmooth"), 0.0f, 1.0f);
    settings.movementInterpolateSpeed = clamped(config.getVarAsFloat("movementInterpolateSpeed"), 0.0f, 1.0f);
    settings.maxAngle = std::min(positive("maxAngle"), largestMaxAngle);
    settings.keyboardTurnSpeed = positive("keyboardTurnSpeed");
    settings.mouseTurnSpeed = positive("mouseTurnSpeed");
    settings.zoomSpeed = positive("zoomSpeed");
    settings.zoomWait = positive("zoomWait");
    settings.waypointInterpolateSpeed =
        clamped(positive("waypointInterpolateSpeed"), 0.0f, largestWaypointSpeed);
    settings.waypointInterpolateDistance = positive("waypointInterpolateDistance");
    settings.shakeTime = positive("shakeTime");
    settings.shakeStrenght = positive("shakeStrenght");
    settings.shakeSpeed = positive("shakeSpeed");
}
}  // namespace

Vector2D drawShakeTarget() {
    TRACE_LOCATION("Camera::drawShakeTarget");
    const float x = static_cast<float>(randomUnit() - 0.5);
    const float y = static_cast<float>(randomUnit() - 0.5);
    Vector2D target(x, y);
    normalise(target);
    return target * settings.shakeStrenght;
}

void initialise() {
    TRACE_LOCATION("Camera::initialise");
    readSettings();
    camera = State();
}

void setState(int state) {
    TRACE_LOCATION("Camera::setState");
    if (state >= movingToWaypoint && state <= zoomingIn) camera.state = state;
}

bool movingTowardsWaypoint() {
    TRACE_LOCATION("Camera::movingTowardsWaypoint");
    return camera.state == movingToWaypoint;
}

void zoomOut() {
    TRACE_LOCATION("Camera::zoomOut");
    if (camera.state == following || camera.state == zoomingIn)
        camera.state = zoomingOut;
    else if (camera.state == holdingZoom)
        camera.zoomTimer = settings.zoomWait;
}

void shake() {
    TRACE_LOCATION("Camera::shake");
    camera.shakeTimer = settings.shakeTime;
    if (camera.shaking) return;
    camera.shaking = true;
    camera.shakeTarget = drawShakeTarget();
}

Vector2D getPosition() {
    TRACE_LOCATION("Camera::getPosition");
    return camera.position;
}

void setPosition(const Vector2D& position) {
    TRACE_LOCATION("Camera::setPosition");
    camera.position = position;
}

Vector2D getShakeOffset() {
    TRACE_LOCATION("Camera::getShakeOffset");
    return camera.shakeOffset;
}

Vector2D getViewCentre() {
    TRACE_LOCATION("Camera::getViewCentre");
    return camera.position + camera.shakeOffset;
}

void setTilt(float degrees) {
    TRACE_LOCATION("Camera::setTilt");
    camera.tilt = degrees;
    camera.turnSpeed = 0.0f;
}

float getTilt() {
    TRACE_LOCATION("Camera::getTilt");
    return camera.tilt;
}

float getTurnSpeed() {
    TRACE_LOCATION("Camera::getTurnSpeed");
    return camera.turnSpeed;
}

float getZoom() {
    TRACE_LOCATION("Camera::getZoom");
    return camera.zoom;
}

float getZoomTimer() {
    TRACE_LOCATION("Camera::getZoomTimer");
    return camera.zoomTimer;
}

int getState() {
    TRACE_LOCATION("Camera::getState");
    return camera.state;
}

bool isShaking() {
    TRACE_LOCATION("Camera::isShaking");
    return camera.shaking;
}

float getShakeTimer() {
    TRACE_LOCATION("Camera::getShakeTimer");
    return camera.shakeTimer;
}

Vector2D getShakeTarget() {
    TRACE_LOCATION("Camera::getShakeTarget");
    return camera.shakeTarget;
}

}  // namespace Camera
