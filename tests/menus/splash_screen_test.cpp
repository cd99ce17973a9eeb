// The loading splash on a real window: its picture, and the thread that draws
// it while the main thread works, during which the game's listener hears nothing.
#include <gtest/gtest.h>

#include "graphics/graphics.h"
#include "graphics/real_window.h"
#include "graphics/test_images.h"
#include "menus/menus.h"
#include "menus/splash_picture.h"
#include "platform/platform.h"
#include "support/test_support.h"

namespace {

struct CountingListener : GLWindowEventListener {
    int keys = 0;
    void keyboardPressed(int) override { ++keys; }
};

class SplashScreenTest : public ::testing::Test {
protected:
    void SetUp() override {
        // A blue background whose middle half is shown, and two red frames of 64 by 64.
        folder.write("gfx/back.tga", makeRawTga(64, 64, true, solid(0, 0, 255)));
        folder.write("gfx/spin_FRAME01.tga", makeRawTga(64, 64, true, solid(255, 0, 0)));
        folder.write("gfx/spin_FRAME02.tga", makeRawTga(64, 64, true, solid(255, 0, 0)));
        writeSettings("32", "20");
        GLTextureManager::initialise();
        GLWindow::setEventListener(&listener);
    }
    void TearDown() override {
        SplashScreen::stop();
        GLTextureManager::shutdown();
    }
    void writeSettings(const std::string& shownWidth, const std::string& speed) {
        folder.write("cfg/splashScreen.cfg",
                     "splashBackground = gfx\\back.tga\nsplashBackgroundW = " + shownWidth +
                         "\nsplashBackgroundH = 32\nsplashAnimation = gfx\\spin_FRAME01.tga\n"
                         "splashAnimationX = 400\nsplashAnimationY = 300\nsplashAnimationSpeed = " +
                         speed + "\n");
    }

    ScratchFolder folder;
    RealWindow window{800, 600};
    CountingListener listener;
};

TEST_F(SplashScreenTest, ThePictureIsTheMiddleOfTheBackgroundWithTheAnimationOnItsPoint) {
    SplashPicture picture;
    picture.read();
    EXPECT_FLOAT_EQ(picture.s0, 0.25f);
    EXPECT_FLOAT_EQ(picture.s1, 0.75f);
    ASSERT_EQ(picture.animation.frames.size(), 2u);
    picture.draw();
    EXPECT_TRUE(near(readPixel(10, 10), {0, 0, 255}));
    EXPECT_TRUE(near(readPixel(400, 300), {255, 0, 0}));
    EXPECT_TRUE(near(readPixel(400 + 40, 300), {0, 0, 255})) << "the frame stands at its own size";
}

TEST_F(SplashScreenTest, WithoutASpeedTheAnimationStandsOnItsFirstFrame) {
    writeSettings("64", "0");
    SplashPicture picture;
    picture.read();
    EXPECT_FLOAT_EQ(picture.s0, 0.0f);
    EXPECT_FLOAT_EQ(picture.s1, 1.0f);
    for (int i = 0; i < 100; ++i) picture.advance(1.0f);
    EXPECT_EQ(picture.frame, 0);
    writeSettings("64", "20");
    picture.read();
    picture.advance(0.06f);
    EXPECT_EQ(picture.frame, 1);
    picture.advance(0.06f);
    EXPECT_EQ(picture.frame, 0) << "the animation loops";
}

TEST_F(SplashScreenTest, WhileItRunsWindowEventsReachNoListener) {
    SplashScreen::stop();  // stop without run does nothing
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
    SplashScreen::run();
    EXPECT_TRUE(SplashScreen::isRunning());
    SplashScreen::run();  // a second run while running is ignored
    EXPECT_EQ(GLWindow::getEventListener(), nullptr);
    GLWindow::Headless::pressKey('A');
    // The main thread works meanwhile with textures of its own.
    const GLTexture mainTexture("gfx\\back.tga");
    Platform::sleepMilliseconds(100);
    SplashScreen::stop();
    EXPECT_FALSE(SplashScreen::isRunning());
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
    EXPECT_EQ(listener.keys, 0);
    EXPECT_EQ(mainTexture.width, 64);
}

}  // namespace
