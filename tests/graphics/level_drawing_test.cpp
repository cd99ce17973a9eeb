// A level in the frame: its layers in order with the water among them, the
// view's tilt, moving and vanishing polygons, and the debugging switches.
// Level objects: frames of an animation, their steps, and culling.

#include <gtest/gtest.h>

#include <tuple>

#include "console/console.h"
#include "game/game.h"
#include "game/game_state.h"
#include "graphics/graphics.h"
#include "graphics/graphics_state.h"
#include "level/level.h"
#include "support/level_fixtures.h"
#include "support/test_support.h"
#include "test_images.h"
#include "world_view.h"

namespace {

const Rgb red{255, 0, 0}, green{0, 255, 0}, blue{0, 0, 255}, yellow{255, 255, 0}, water{255, 0, 255},
    white{255, 255, 255};

// Layer 0 fills the view red; layer 1 a green square; layer 2 a blue square over
// part of the green; a yellow moving square in layer 3; a white sprite in layer 4.
const char* const levelText = R"(
polygon id 1 texture "gfx\red.tga" layer 0
  -400 -300  400 -300  400 300  -400 300
end
polygon id 2 texture "gfx\green.tga" layer 1
  0 0  200 0  200 200  0 200
end
polygon id 3 texture "gfx\blue.tga" layer 2
  100 100  300 100  300 300  100 300
end
polygon id 6 texture "gfx\yellow.tga" layer 3
  -300 -250  -200 -250  -200 -150  -300 -150
end
mover id 6 from 0 0 to 0 10
object id 4 texture "gfx\white.tga" layer 4 at -300 200
)";

const char* const waterSettings =
    "waterTexture = gfx\\white.tga\nsteamTexture = gfx\\white.tga\niceTexture = gfx\\white.tga\n"
    "water_color_r = 1\nwater_color_b = 1\nwater_color_a = 1\n";

class LevelDrawing : public WorldView {
protected:
    LevelDrawing() {
        for (const auto& [name, colour] : {std::pair{"gfx/red.tga", solid(255, 0, 0)},
                                           {"gfx/green.tga", solid(0, 255, 0)},
                                           {"gfx/blue.tga", solid(0, 0, 255)},
                                           {"gfx/yellow.tga", solid(255, 255, 0)}})
            folder.write(name, makeRawTga(32, 32, true, colour));
        folder.write("cfg/water.cfg", waterSettings);
        folder.write("maps/test.rill", bytesFromText(levelText));
        ParticleManager::initialise();
        ParticleRenderer::initialise();
        EXPECT_TRUE(Level::load("maps\\test.rill"));
    }
    ~LevelDrawing() override {
        Level::clear();
        ParticleRenderer::shutdown();
        ParticleManager::shutdown();
    }
    static void addWater(float x, float y) {
        ParticleManager::getParticles().push_back(particleAt(x, y, 20.0f));
    }
};

TEST_F(LevelDrawing, LayersStandInTheirOrderWithTheWaterBetweenOneAndTwo) {
    addWater(96, 96);
    addWater(106, 106);
    Game::drawFrame();
    EXPECT_TRUE(near(world(-100, -100), red));
    EXPECT_TRUE(near(world(50, 50), green));
    EXPECT_TRUE(near(world(250, 250), blue));
    EXPECT_TRUE(near(world(150, 50), green));
    // Over the green square the water shows; under the blue square it is hidden.
    EXPECT_TRUE(near(world(96, 96), water));
    EXPECT_TRUE(near(world(106, 106), blue));
    EXPECT_TRUE(near(world(-250, -200), yellow));
    EXPECT_TRUE(near(world(-300, 200), white));
}

// Whatever texture and blending the level's drawing left behind, the outlines
// show red: here a clear texture is bound, which would hide a textured line.
TEST_F(LevelDrawing, DrawTrianglesOutlinesEachTriangleInRed) {
    folder.write("gfx/clear.tga", makeRawTga(32, 32, true, solid(0, 0, 0, 0)));
    const GLTexture clear("gfx\\clear.tga");
    Game::drawFrame();
    GLConsole::enterLine("DrawTriangles true");
    GLWindow::glBeginDraw2d();
    Camera::viewFrom();
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBindTexture(GL_TEXTURE_2D, clear.id);
    Level::debugDraw();
    // Either diagonal of the green square crosses its centre; the blue square's
    // diagonals miss (250, 180).
    EXPECT_TRUE(near(world(100, 100), red));
    EXPECT_TRUE(near(world(250, 180), blue));
}

TEST_F(LevelDrawing, ATiltedViewTurnsTheWorld) {
    Camera::setTilt(90.0f);
    Game::drawFrame();
    // Turned against the tilt: world (a, b) appears at the pixel (200 + b / 2, 150 - a / 2).
    EXPECT_TRUE(near(readPixel(230, 120), green));
    EXPECT_TRUE(near(readPixel(230, 180), red));
    Camera::setTilt(0.0f);
    Game::drawFrame();
    EXPECT_TRUE(near(readPixel(230, 120), red));
    EXPECT_TRUE(near(readPixel(230, 180), green));
}

TEST_F(LevelDrawing, MovingPolygonsRideTheirOffsetAndDestructableOnesVanish) {
    Polygon2D* moving = nullptr;
    for (Polygon2D& polygon : Level::getPolygons())
        if (polygon.id == 6) moving = &polygon;
    ASSERT_NE(moving, nullptr);
    EXPECT_EQ(DynamicPolygonRenderer::state().entries.size(), 1u);
    moving->offset = Vector2D(0, 300);
    Game::drawFrame();
    EXPECT_TRUE(near(world(-250, -200), red));
    EXPECT_TRUE(near(world(-250, 100), yellow));
    moving->present = false;
    Game::drawFrame();
    EXPECT_TRUE(near(world(-250, 100), red));
    EXPECT_EQ(DynamicPolygonRenderer::state().queues[3].size(), 0u);
}

TEST_F(LevelDrawing, StaticGeometryCanBeSwitchedOff) {
    GLConsole::enterLine("DrawLevelGeometry false");
    Game::drawFrame();
    EXPECT_TRUE(near(world(-100, -100), {0, 0, 0}));
    EXPECT_TRUE(near(world(-250, -200), yellow));
    GLConsole::enterLine("DrawLevelGeometry true");
}

TEST_F(LevelDrawing, TheConsoleKeyShowsTheConsoleOverTheLevel) {
    Game listener;
    listener.keyboardPressed(223);
    ASSERT_TRUE(GameState::state().consoleVisible);
    Game::drawFrame();
    // The configuration is missing, so the console's bands are black and opaque below the output area.
    EXPECT_TRUE(near(readPixel(200, 299), {0, 0, 0}));
    EXPECT_TRUE(near(world(-100, -100), red));  // the output area's alpha is 0
    listener.keyboardPressed(223);
    EXPECT_FALSE(GameState::state().consoleVisible);
}

bool greenNear(int x, int y) {
    for (int dx = -1; dx <= 1; ++dx)
        if (near(readPixel(x + dx, y), green)) return true;
    return false;
}

TEST_F(LevelDrawing, TheFreeCameraShowsTheWorldUnturnedAndTheRealViewInGreen) {
    Game::initialise("maps\\test.rill");
    GLConsole::enterLine("FreeCamera true");
    Camera::setPosition(Vector2D());
    Camera::setTilt(90.0f);
    Game::drawFrame();
    EXPECT_TRUE(near(readPixel(230, 120), red));  // world (60, -60), as without a tilt
    EXPECT_TRUE(near(readPixel(230, 180), green));
    // The real view, 800 by 600 units turned a quarter, stands upright: its long
    // sides run down the window at x = 50 and x = 350.
    EXPECT_TRUE(greenNear(50, 40));
    EXPECT_TRUE(greenNear(350, 260));
    EXPECT_FALSE(greenNear(120, 40));
    Game::shutdown();
}

// Headless: textures give their sizes without a window.
class LevelObjects : public ::testing::Test {
protected:
    ScratchFolder folder;
    ConsoleCapture console;

    LevelObjects() {
        // Written out of order: frames are taken in file-name order whatever the folder says.
        for (const char* frame : {"05", "01", "08", "03", "02", "07", "04", "06"})
            folder.write(std::string("gfx/Anim_FRAME") + frame + ".tga",
                         makeRawTga(8, 4, true, solid(1, 2, 3)));
        folder.write("gfx/tree.tga", makeRawTga(40, 20, true, solid(1, 2, 3)));
        folder.write("cfg/animation.cfg", "animationSpeeds = -10\n");
        GLConsole::initialise();
        Camera::initialise();
        Camera::setPosition(Vector2D());
        LevelObjectsManager::initialise();
    }
    ~LevelObjects() override {
        LevelObjectsManager::shutdown();
        GLConsole::shutdown();
    }

    static LevelObject animated(uint32_t repeatCount) {
        LevelObject object;
        object.setTexture("gfx\\anim_FRAME01.tga");
        object.repeatCount = repeatCount;
        object.stopped = false;
        return object;
    }
    static std::size_t queued() {
        std::size_t count = 0;
        for (int layer = 0; layer < drawLayerCount; ++layer)
            count += LevelObjectsManager::state().drawQueues[layer].size();
        return count;
    }
};

TEST_F(LevelObjects, FrameNamesStandForEveryMatchingFileInNameOrder) {
    LevelObject object;
    object.setTexture("gfx\\anim_FRAME06.tga");
    ASSERT_EQ(object.frameCount, 8u);
    ASSERT_EQ(object.frames.size(), 8u);
    EXPECT_EQ(object.frames.front().name, "GFX\\ANIM_FRAME01.TGA");
    EXPECT_EQ(object.frames[4].name, "GFX\\ANIM_FRAME05.TGA");
    EXPECT_EQ(object.frames.back().name, "GFX\\ANIM_FRAME08.TGA");
    EXPECT_EQ(object.frames.back().width, 8);

    object.setTexture("gfx\\tree.tga");
    EXPECT_EQ(object.frameCount, 1u);
    EXPECT_EQ(object.currentTexture()->width, 40);

    object.setTexture("gfx\\ghost_FRAME01.tga");
    EXPECT_EQ(object.frameCount, 1u);
    EXPECT_EQ(object.frames.front().name, "GFX\\GHOST_FRAME01.TGA");
    EXPECT_EQ(object.currentTexture()->width, 16);  // the checkerboard
}

TEST_F(LevelObjects, AnimationsStepOneFrameAtATimeAndDropTheRest) {
    LevelObject object = animated(0);
    object.runAnimation(0.05f, 10.0f);
    EXPECT_EQ(object.currentFrame, 0u);
    object.runAnimation(0.5f, 10.0f);  // five frames' worth, one frame taken
    EXPECT_EQ(object.currentFrame, 1u);
    EXPECT_EQ(object.frameTimer, 0.0f);
    for (int i = 0; i < 7; ++i) object.runAnimation(0.1f, 10.0f);
    EXPECT_EQ(object.currentFrame, 0u);  // repeats for ever
    object.runAnimation(1.0f, 0.0f);
    object.runAnimation(1.0f, -5.0f);
    EXPECT_EQ(object.currentFrame, 0u);
}

TEST_F(LevelObjects, ARepeatCountOfOneStopsOnTheLastFrame) {
    LevelObject object = animated(1);
    for (int i = 0; i < 20; ++i) object.runAnimation(0.1f, 10.0f);
    EXPECT_EQ(std::tuple(object.stopped, object.currentFrame, object.playCount), std::tuple(true, 7u, 0u));
    LevelObject twice = animated(2);
    for (int i = 0; i < 8; ++i) twice.runAnimation(0.1f, 10.0f);
    EXPECT_EQ(std::tuple(twice.stopped, twice.currentFrame, twice.playCount), std::tuple(false, 0u, 1u));
}

TEST_F(LevelObjects, TheManagerKeepsStillAndAnimatedObjectsApart) {
    EXPECT_EQ(LevelObjectsManager::state().animationSpeed, 10.0f);
    LevelObject tree;
    tree.setTexture("gfx\\tree.tga");
    LevelObjectsManager::addObject(tree);
    LevelObjectsManager::addObject(animated(0));
    LevelObject empty;
    empty.frameCount = 0;
    LevelObjectsManager::addObject(empty);
    EXPECT_EQ(LevelObjectsManager::getStaticObjects().size(), 1u);
    EXPECT_EQ(LevelObjectsManager::getAnimatedObjects().size(), 1u);
    console.take();
    GLConsole::enterLine("ObjectsCount");
    EXPECT_EQ(console.take(), "\nObjectsCount\nObjectsCount is 2");

    LevelObjectsManager::runAnimations(0.1f);
    EXPECT_EQ(LevelObjectsManager::getAnimatedObjects().front().currentFrame, 1u);
    LevelObject& moved = LevelObjectsManager::getStaticObjects().front();
    moved.offset = Vector2D(5, 5);
    moved.visible = false;
    LevelObjectsManager::resetObjects();
    const LevelObject& animation = LevelObjectsManager::getAnimatedObjects().front();
    EXPECT_EQ(std::tuple(moved.offset, moved.visible, animation.currentFrame, animation.stopped),
              std::tuple(Vector2D(), true, 0u, true));
}

TEST_F(LevelObjects, CullingSkipsHiddenAndDistantObjects) {
    LevelObject near;
    near.setTexture("gfx\\tree.tga");
    LevelObject far = near;
    far.position = Vector2D(5000, 0);
    LevelObject hidden = near;
    hidden.visible = false;
    LevelObject edge = near;
    edge.position = Vector2D(520 + 20, 0);  // touches the box edge: 0.65 * 800
    for (const LevelObject* object : {&near, &far, &hidden, &edge}) LevelObjectsManager::addObject(*object);
    LevelObjectsManager::prepareDraw();
    EXPECT_EQ(queued(), 2u);
    for (int layer = 0; layer < drawLayerCount; ++layer) LevelObjectsManager::drawLayer(layer);
    EXPECT_EQ(queued(), 0u);

    GLConsole::enterLine("ObjectsCull false");
    LevelObjectsManager::prepareDraw();
    EXPECT_EQ(queued(), 4u);
    for (int layer = 0; layer < drawLayerCount; ++layer) LevelObjectsManager::drawLayer(layer);
    GLConsole::enterLine("ObjectsDraw false");
    LevelObjectsManager::prepareDraw();
    EXPECT_EQ(queued(), 0u);
}

TEST_F(LevelObjects, ObjectsCreateChecksItsLine) {
    console.take();
    GLConsole::enterLine("ObjectsCreate 10 20 x gfx\\tree.tga");
    EXPECT_EQ(console.take(),
              "\nObjectsCreate 10 20 x gfx\\tree.tga"
              "\nUSAGE: ObjectsCreate < x : number > < y : number > < object id : integer > < textureName : "
              "string >");
    GLConsole::enterLine("ObjectsCreate 10 20.5 7 gfx\\tree.tga");
    ASSERT_EQ(LevelObjectsManager::getStaticObjects().size(), 1u);
    const LevelObject& made = LevelObjectsManager::getStaticObjects().front();
    EXPECT_EQ(made.id, 7);
    EXPECT_EQ(made.position, Vector2D(10, 20.5f));
    EXPECT_EQ(made.layer, 0u);
}

}  // namespace
