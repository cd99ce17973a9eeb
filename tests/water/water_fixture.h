// A world for water tests: a scratch folder with the given water settings, a
// camera at the origin looking through an 800 by 600 window, no level.
#pragma once

#include <gtest/gtest.h>

#include "console/console.h"
#include "game/game.h"
#include "support/test_support.h"
#include "water/water.h"

class WaterWorld : public ::testing::Test {
protected:
    // Water settings without gravity, heat or steam, unless a test asks for them.
    void SetUp() override { useSettings(""); }
    void TearDown() override { ParticleManager::shutdown(); }

    void useSettings(const std::string& waterConfig, const std::string& cameraConfig = "") {
        folder.write("cfg/water.cfg", waterConfig);
        folder.write("cfg/camera.cfg", cameraConfig);
        GLWindow::Headless::setClientSize(800, 600);
        setRandomSeed(12345);
        Camera::initialise();
        Camera::setPosition(Vector2D());
        Camera::setState(Camera::following);
        ParticleManager::initialise();
    }

    Particle& addParticle(const Vector2D& position, const Vector2D& velocity = Vector2D(),
                          float temperature = 20.0f) {
        ParticleManager::createParticles(position.x, position.y, 0.0f, 1);
        Particle& particle = ParticleManager::getParticles().front();
        particle.velocity = velocity;
        particle.temperature = temperature;
        return particle;
    }

    // Turns the camera to a tilt by a full second of the left or right arrow with no smoothing.
    static void tiltCamera(float degrees) {
        const int key = degrees >= 0.0f ? 37 : 39;
        GLWindow::Headless::setKeyDown(key, true);
        Camera::doTurning(1.0f);
        GLWindow::Headless::setKeyDown(key, false);
    }

    static std::string turningSettings(float degrees) {
        return "rotationSmooth = 0\nmaxAngle = 180\nkeyboardTurnSpeed = " +
               std::to_string(std::fabs(degrees)) + "\n";
    }

    ScratchFolder folder;
    ConsoleCapture console;
};
