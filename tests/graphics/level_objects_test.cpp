#include <gtest/gtest.h>

#include "console/console.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "graphics/graphics_state.h"
#include "support/test_support.h"
#include "test_images.h"

namespace {

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
    EXPECT_TRUE(object.stopped);
    EXPECT_EQ(object.currentFrame, 7u);
    EXPECT_EQ(object.playCount, 0u);

    LevelObject twice = animated(2);
    for (int i = 0; i < 8; ++i) twice.runAnimation(0.1f, 10.0f);
    EXPECT_EQ(twice.playCount, 1u);
    EXPECT_EQ(twice.currentFrame, 0u);
    EXPECT_FALSE(twice.stopped);
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
    EXPECT_EQ(moved.offset, Vector2D());
    EXPECT_TRUE(moved.visible);
    EXPECT_EQ(LevelObjectsManager::getAnimatedObjects().front().currentFrame, 0u);
    EXPECT_TRUE(LevelObjectsManager::getAnimatedObjects().front().stopped);
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
