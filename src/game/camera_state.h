// The camera's file-level state, shared by its files.
#pragma once

#include "foundation/foundation.h"
#include "game/game.h"

namespace Camera {

struct Settings {
    float rotationSmooth = 0.0f;
    float movementInterpolateSpeed = 0.0f;
    float maxAngle = 0.0f;
    float keyboardTurnSpeed = 0.0f;
    float mouseTurnSpeed = 0.0f;
    float zoomSpeed = 0.0f;
    float zoomWait = 0.0f;
    float waypointInterpolateSpeed = 0.0f;
    float waypointInterpolateDistance = 0.0f;
    float shakeTime = 0.0f;
    float shakeStrenght = 0.0f;
    float shakeSpeed = 0.0f;
};

struct State {
    Settings settings;
    Vector2D position{-1000.0f, 0.0f};
    Vector2D shakeOffset;
    Vector2D shakeTarget;
    bool shaking = false;
    float shakeTimer = 0.0f;
    float tilt = 0.0f;
    float turnSpeed = 0.0f;
    float zoom = 1.0f;
    float zoomTimer = 0.0f;
    int state = movingToWaypoint;
};

State& state();

// A new point for the shake offset to run to.
Vector2D drawShakeTarget();

}  // namespace Camera
