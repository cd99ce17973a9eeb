// One step of the camera: it follows a weighted mean of the water, zooms and
// shakes by its state machines, and turns by the player's keys and mouse.
#include <cmath>

#include "foundation/foundation.h"
#include "game/camera_state.h"
#include "game/game.h"
#include "graphics/window/window.h"
#include "water/water.h"

namespace Camera {

namespace {
constexpr int leftArrow = 37;
constexpr int rightArrow = 39;

// Water near the camera counts for more, so that a stray drop does not pull the view away.
Vector2D waterTarget() {
    TRACE_LOCATION("Camera::waterTarget");
    float totalWeight = 0.0f;
    Vector2D sum;
    for (const Particle& particle : ParticleManager::getParticles()) {
        const float weight = 1.0f / (distance(particle.position, camera.position) + 1.0f);
        totalWeight += weight;
        sum += particle.position * weight;
    }
    for (const ParticleGroup& group : ParticleGroupMover::getGroups()) {
        const float members = static_cast<float>(group.particles.size());
        const float weight = members / (distance(group.position, camera.position) + 1.0f);
        totalWeight += weight;
        sum += group.position * weight;
    }
    return totalWeight != 0.0f ? sum / totalWeight : Vector2D();
}

float turnInput() {
    TRACE_LOCATION("Camera::turnInput");
    float input = 0.0f;
    if (GLWindow::keyboardKeyPressed(leftArrow)) input += settings.keyboardTurnSpeed;
    if (GLWindow::keyboardKeyPressed(rightArrow)) input -= settings.keyboardTurnSpeed;
    if (GLWindow::hasFocus() && GLWindow::mouseInClientArea()) {
        input -= static_cast<float>(GLWindow::getMouseScreenX() - GLWindow::getClientCenterX()) *
                 settings.mouseTurnSpeed;
        GLWindow::centerMouse();
    }
    return input;
}

void runShakeToTarget(float travel) {
    TRACE_LOCATION("Camera::runShakeToTarget");
    Vector2D toTarget = camera.shakeOffset - camera.shakeTarget;
    if (travel >= length(toTarget)) {
        camera.shakeOffset = camera.shakeTarget;
        camera.shakeTarget = drawShakeTarget();
        return;
    }
    normalise(toTarget);
    camera.shakeOffset -= toTarget * travel;
}

void runShakeToRest(float travel) {
    TRACE_LOCATION("Camera::runShakeToRest");
    if (travel > length(camera.shakeOffset)) {
        camera.shakeOffset = Vector2D();
        return;
    }
    Vector2D direction = camera.shakeOffset;
    normalise(direction);
    camera.shakeOffset -= direction * travel;
}
}  // namespace

void doMovements(bool turningAllowed, float dt) {
    TRACE_LOCATION("Camera::doMovements");
    doMovement(dt);
    doZooming(dt);
    doShaking(dt);
    if (turningAllowed) doTurning(dt);
}

void doMovement(float dt) {
    TRACE_LOCATION("Camera::doMovement");
    const Vector2D target = waterTarget();
    if (camera.state != movingToWaypoint) {
        const float k = std::pow(settings.movementInterpolateSpeed, dt);
        camera.position = target * (1.0f - k) + camera.position * k;
        return;
    }
    const float k = std::pow(settings.waypointInterpolateSpeed, dt);
    const float distanceToTarget = distance(camera.position, target);
    camera.position = target * (1.0f - k) + camera.position * k;
    if (distanceToTarget <= settings.waypointInterpolateDistance) camera.state = following;
}

void doZooming(float dt) {
    TRACE_LOCATION("Camera::doZooming");
    if (camera.state == zoomingOut) {
        camera.zoom += dt * settings.zoomSpeed;
        if (camera.zoom >= largestZoom) {
            camera.zoom = largestZoom;
            camera.state = holdingZoom;
            camera.zoomTimer = settings.zoomWait;
        }
    } else if (camera.state == holdingZoom) {
        camera.zoomTimer -= dt;
        if (camera.zoomTimer <= 0.0f) {
            camera.zoomTimer = 0.0f;
            camera.state = zoomingIn;
        }
    } else if (camera.state == zoomingIn) {
        camera.zoom -= dt * settings.zoomSpeed;
        if (camera.zoom <= 1.0f) {
            camera.zoom = 1.0f;
            camera.state = following;
        }
    }
}

void doShaking(float dt) {
    TRACE_LOCATION("Camera::doShaking");
    const float travel = dt * settings.shakeSpeed;
    if (!camera.shaking) {
        runShakeToRest(travel);
        return;
    }
    camera.shakeTimer -= dt;
    if (camera.shakeTimer <= 0.0f) {
        camera.shakeTimer = 0.0f;
        camera.shaking = false;
    }
    runShakeToTarget(travel);
}

void doTurning(float dt) {
    TRACE_LOCATION("Camera::doTurning");
    const float k = std::pow(settings.rotationSmooth, dt);
    camera.turnSpeed = (1.0f - k) * turnInput() + k * camera.turnSpeed;
    camera.tilt += dt * camera.turnSpeed;
    if (camera.tilt < -settings.maxAngle || camera.tilt > settings.maxAngle) {
        camera.tilt = camera.tilt < 0.0f ? -settings.maxAngle : settings.maxAngle;
        camera.turnSpeed = 0.0f;
    }
}

}  // namespace Camera
