// The drawing tests' view of the world: a window of 400 by 300 that shows 800
// by 600 units about the origin, so that world (x, y) is the pixel
// (200 + x / 2, 150 + y / 2) while the camera stands there untilted; white
// textures, and the console, its output collected.
#pragma once

#include <gtest/gtest.h>

#include "console/console.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "real_window.h"
#include "support/test_support.h"
#include "test_images.h"
#include "water/water.h"

class WorldView : public ::testing::Test {
protected:
    ScratchFolder folder;
    ConsoleCapture console;
    RealWindow window{400, 300};

    WorldView() {
        for (const char* name : {"gfx/white.tga", "gfx/white2.tga"})
            folder.write(name, makeRawTga(16, 16, true, solid(255, 255, 255)));
        GLTextureManager::initialise();
        GLConsole::initialise();
        Camera::initialise();
        Camera::setPosition(Vector2D());
    }
    ~WorldView() override {
        GLConsole::shutdown();
        GLTextureManager::shutdown();
    }

    static Rgb world(float x, float y) {
        return readPixel(static_cast<int>(200 + x / 2), static_cast<int>(150 + y / 2));
    }
    // A particle standing still.
    static Particle particleAt(float x, float y, float temperature) {
        Particle particle;
        particle.position = Vector2D(x, y);
        for (Vector2D& previous : particle.previousPosition) previous = particle.position;
        particle.temperature = temperature;
        return particle;
    }
};
