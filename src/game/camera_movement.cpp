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

// Water near the camera counts for more, so that a stray drop does not pull the view away.
Vector2D waterTarget() {
    TRACE_LOCATION("Camera::waterTarget");
    float totalWeight = 0.0f;
    Vector2D sum;
    for (const Particle& particle : ParticleManager::getParticles()) {
        if (!isFinite(particle.position)) continue;  // gone at the next step; never followed
        const float weight = 1.0f / (distance(particle.position, state().position) + 1.0f);
        totalWeight += weight;
        sum += particle.position * weight;
    }
    for (const ParticleGroup& group : ParticleGroupMover::getGroups()) {
        if (!isFinite(group.position)) continue;
        const float members = static_cast<float>(group.particles.size());
        const float weight = members / (distance(group.position, state().position) + 1.0f);
        totalWeight += weight;
        sum += group.position * weight;
    }
    if (totalWeight == 0.0f) return Vector2D();
    const Vector2D target = sum / totalWeight;
    // Water far enough away to overflow the sums leaves the view where it is.
    return isFinite(target) ? target : state().position;
}

float turnInput() {
    TRACE_LOCATION("Camera::turnInput");
    float input = 0.0f;
    if (GLWindow::keyboardKeyPressed(VirtualKey::left)) input += state().settings.keyboardTurnSpeed;
    if (GLWindow::keyboardKeyPressed(VirtualKey::right)) input -= state().settings.keyboardTurnSpeed;
    if (GLWindow::hasFocus() && GLWindow::mouseInClientArea()) {
        input -= static_cast<float>(GLWindow::getMouseScreenX() - GLWindow::getClientCenterX()) *
                 state().settings.mouseTurnSpeed;
        GLWindow::centerMouse();
    }
    return input;
}

void runShakeToTarget(float travel) {
    TRACE_LOCATION("Camera::runShakeToTarget");
    Vector2D toTarget = state().shakeOffset - state().shakeTarget;
    if (travel >= length(toTarget)) {
        state().shakeOffset = state().shakeTarget;
        state().shakeTarget = drawShakeTarget();
        return;
    }
    normalise(toTarget);
    state().shakeOffset -= toTarget * travel;
}

void runShakeToRest(float travel) {
    TRACE_LOCATION("Camera::runShakeToRest");
    if (travel > length(state().shakeOffset)) {
        state().shakeOffset = Vector2D();
        return;
    }
    Vector2D direction = state().shakeOffset;
    normalise(direction);
    state().shakeOffset -= direction * travel;
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
    if (state().state != movingToWaypoint) {
        const float k = std::pow(state().settings.movementInterpolateSpeed, dt);
        state().position = target * (1.0f - k) + state().position * k;
        return;
    }
    const float k = std::pow(state().settings.waypointInterpolateSpeed, dt);
    const float distanceToTarget = distance(state().position, target);
    state().position = target * (1.0f - k) + state().position * k;
    if (distanceToTarget <= state().settings.waypointInterpolateDistance) state().state = following;
}

void doZooming(float dt) {
    TRACE_LOCATION("Camera::doZooming");
    if (state().state == zoomingOut) {
        state().zoom += dt * state().settings.zoomSpeed;
        if (state().zoom >= largestZoom) {
            state().zoom = largestZoom;
            state().state = holdingZoom;
            state().zoomTimer = state().settings.zoomWait;
        }
    } else if (state().state == holdingZoom) {
        state().zoomTimer -= dt;
        if (state().zoomTimer <= 0.0f) {
            state().zoomTimer = 0.0f;
            state().state = zoomingIn;
        }
    } else if (state().state == zoomingIn) {
        state().zoom -= dt * state().settings.zoomSpeed;
        if (state().zoom <= 1.0f) {
            state().zoom = 1.0f;
            state().state = following;
        }
    }
}

void doShaking(float dt) {
    TRACE_LOCATION("Camera::doShaking");
    const float travel = dt * state().settings.shakeSpeed;
    if (!state().shaking) {
        runShakeToRest(travel);
        return;
    }
    state().shakeTimer -= dt;
    if (state().shakeTimer <= 0.0f) {
        state().shakeTimer = 0.0f;
        state().shaking = false;
    }
    runShakeToTarget(travel);
}

void doTurning(float dt) {
    TRACE_LOCATION("Camera::doTurning");
    const float k = std::pow(state().settings.rotationSmooth, dt);
    state().turnSpeed = (1.0f - k) * turnInput() + k * state().turnSpeed;
    state().tilt += dt * state().turnSpeed;
    if (state().tilt < -state().settings.maxAngle || state().tilt > state().settings.maxAngle) {
        state().tilt = state().tilt < 0.0f ? -state().settings.maxAngle : state().settings.maxAngle;
        state().turnSpeed = 0.0f;
    }
}

}  // namespace Camera
