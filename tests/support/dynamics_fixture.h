// A bare stage for the level's dynamics: no level file, the camera at the
// origin, the managers fresh, the water empty, the console captured.
#pragma once

#include <gtest/gtest.h>

#include "dynamics/dynamics.h"
#include "game/game.h"
#include "graphics/window/window.h"
#include "support/test_support.h"
#include "water/water.h"

class DynamicsTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A particle at a point, alone in its own record; returns the particle in the list.
    static Particle& addParticle(const Vector2D& at, float temperature = 20.0f);
    // A square trigger with its top left at (x, y).
    static Trigger& addSquare(int32_t type, int32_t targetId, float x, float y, float size,
                              float delay = 0.0f);

    ScratchFolder folder;
    ConsoleCapture console;
};
