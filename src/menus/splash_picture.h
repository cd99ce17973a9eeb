// What the loading splash draws, made and freed by the splash's thread and
// drawn by it on its own context. Private to the menus (and tests).
#pragma once

#include "foundation/foundation.h"
#include "graphics/graphics.h"

struct SplashPicture {
    static constexpr float slowestAnimation = 0.000001f;

    GLTexture background;
    LevelObject animation;
    float s0 = 0.0f, s1 = 1.0f, t0 = 0.0f, t1 = 1.0f;  // the part of the background shown
    float centreX = 0.0f, centreY = 0.0f;
    float speed = slowestAnimation;  // frames a second
    float frameTimer = 0.0f;
    int frame = 0;

    // Reads "cfg\splashScreen.cfg" and makes the images.
    void read();
    void advance(float seconds);
    // One frame over the whole window, in the virtual screen of 800 by 600.
    void draw() const;
};
