#include "game/camera_state.h"
#include "water/water_fixture.h"

namespace {

constexpr int leftArrow = 37;
constexpr int rightArrow = 39;

class CameraTest : public WaterWorld {
protected:
    void TearDown() override {
        GLWindow::Headless::setKeyDown(leftArrow, false);
        GLWindow::Headless::setKeyDown(rightArrow, false);
        WaterWorld::TearDown();
    }

    // No water, and the camera at the origin with the given settings and state.
    void useCamera(const std::string& settings, int state = Camera::following) {
        useSettings("", settings);
        Camera::setState(state);
    }
};

TEST_F(CameraTest, StartsFarLeftAtRestAndReadsSafeSettings) {
    useCamera("maxAngle = -400\nkeyboardTurnSpeed = -30\nrotationSmooth = 5\n");
    Camera::initialise();
    EXPECT_EQ(std::tuple(Camera::getPosition(), Camera::getState(), Camera::movingTowardsWaypoint(),
                         Camera::getZoom(), Camera::getTilt()),
              std::tuple(Vector2D(-1000, 0), Camera::movingToWaypoint, true, 1.0f, 0.0f));
    // A negative turn speed turns the same way; the smoothing is clamped to 1, so no speed is ever gained.
    GLWindow::Headless::setKeyDown(leftArrow, true);
    Camera::doTurning(1.0f);
    EXPECT_EQ(Camera::getTilt(), 0.0f);
    useCamera("maxAngle = -400\nkeyboardTurnSpeed = -30\n");
    Camera::doTurning(1.0f);
    EXPECT_EQ(Camera::getTilt(), 30.0f);
    for (int i = 0; i < 10; ++i) Camera::doTurning(1.0f);
    EXPECT_EQ(Camera::getTilt(), 180.0f);
    // Unknown states are ignored.
    Camera::setState(Camera::zoomingIn);
    Camera::setState(7);
    Camera::setState(-1);
    EXPECT_EQ(Camera::getState(), Camera::zoomingIn);
}

// Following the water.

TEST_F(CameraTest, FollowingIsSmoothedAlikeAtAnyFrameRateAndWithoutWaterItDriftsToTheOrigin) {
    for (const int steps : {10, 50}) {
        useCamera("movementInterpolateSpeed = 0.25");
        ParticleManager::createParticles(80, 0, 0, 1);
        for (int i = 0; i < steps; ++i) Camera::doMovement(1.0f / static_cast<float>(steps));
        EXPECT_NEAR(Camera::getPosition().x, 60.0f, 1e-3f) << steps;
    }
    useCamera("movementInterpolateSpeed = 0.5");
    Camera::setPosition(Vector2D(100, 0));
    Camera::doMovement(1.0f);
    EXPECT_FLOAT_EQ(Camera::getPosition().x, 50.0f);
}

// Turning.

TEST_F(CameraTest, TheMouseTurnsByItsMoveSinceTheLastStep) {
    useCamera("maxAngle = 90\nmouseTurnSpeed = 0.5\n");
    GLWindow::createWindow("camera", 800, 600);
    GLWindow::Headless::setMouse(GLWindow::getClientCenterX() + 10, 300);
    Camera::doTurning(1.0f);
    EXPECT_FLOAT_EQ(Camera::getTilt(), -5.0f);
    // Put back on the centre, so that the next step turns by nothing.
    EXPECT_EQ(GLWindow::getMouseX(), GLWindow::getClientCenterX());
    EXPECT_EQ(GLWindow::getMouseY(), GLWindow::getClientCenterY());
    Camera::doTurning(1.0f);
    EXPECT_FLOAT_EQ(Camera::getTilt(), -5.0f);
    // Outside the client area the mouse does not turn the camera and is left alone.
    GLWindow::Headless::setMouse(-5, 300);
    Camera::doTurning(1.0f);
    EXPECT_FLOAT_EQ(Camera::getTilt(), -5.0f);
    EXPECT_EQ(GLWindow::getMouseX(), -5);
    GLWindow::close();
}

// Zooming.

TEST_F(CameraTest, ZoomGoesOutHoldsAndComesBack) {
    useCamera("zoomSpeed = 1\nzoomWait = 2\n");
    Camera::zoomOut();
    EXPECT_EQ(Camera::getState(), Camera::zoomingOut);
    Camera::doZooming(1.0f);
    EXPECT_EQ(Camera::getZoom(), 2.0f);
    Camera::doZooming(1.0f);
    EXPECT_EQ(std::tuple(Camera::getZoom(), Camera::getState(), Camera::state().zoomTimer),
              std::tuple(2.5f, Camera::holdingZoom, 2.0f));
    Camera::doZooming(1.5f);
    Camera::zoomOut();  // holds it out for another full wait
    EXPECT_EQ(Camera::state().zoomTimer, 2.0f);
    Camera::doZooming(2.0f);
    EXPECT_EQ(std::tuple(Camera::getState(), Camera::state().zoomTimer), std::tuple(Camera::zoomingIn, 0.0f));
    Camera::doZooming(1.0f);
    EXPECT_EQ(Camera::getZoom(), 1.5f);
    Camera::zoomOut();  // turns back at the zoom reached
    EXPECT_EQ(Camera::getState(), Camera::zoomingOut);
    Camera::doZooming(0.5f);
    EXPECT_EQ(Camera::getZoom(), 2.0f);
}

TEST_F(CameraTest, ZoomComesBackToExactlyOneAndZoomOutIsIgnoredWhileGlidingOrAlreadyZoomingOut) {
    useCamera("zoomSpeed = 10\nzoomWait = 0\n");
    Camera::zoomOut();
    for (const float dt : {1.0f, 0.1f, 1.0f}) Camera::doZooming(dt);
    EXPECT_EQ(std::tuple(Camera::getZoom(), Camera::getState()), std::tuple(1.0f, Camera::following));
    useCamera("zoomSpeed = 1\nzoomWait = 2\n", Camera::movingToWaypoint);
    Camera::zoomOut();
    EXPECT_EQ(Camera::getState(), Camera::movingToWaypoint);
    Camera::doZooming(1.0f);
    EXPECT_EQ(Camera::getZoom(), 1.0f);
    Camera::setState(Camera::zoomingOut);
    Camera::zoomOut();
    EXPECT_EQ(Camera::getState(), Camera::zoomingOut);
    EXPECT_EQ(Camera::state().zoomTimer, 0.0f);
}

// Shaking.

TEST_F(CameraTest, AShakeRunsBetweenTargetsForItsTime) {
    useCamera("shakeTime = 1\nshakeStrenght = 8\nshakeSpeed = 40\n");
    Camera::shake();
    ASSERT_TRUE(Camera::state().shaking);
    const Vector2D target = Camera::state().shakeTarget;
    EXPECT_NEAR(length(target), 8.0f, 1e-4f);
    Camera::doShaking(0.1f);
    EXPECT_NEAR(length(Camera::state().shakeOffset), 4.0f, 1e-4f);
    EXPECT_NEAR(dot(Camera::state().shakeOffset, target), 32.0f, 1e-3f);
    EXPECT_EQ(Camera::getViewCentre(), Camera::getPosition() + Camera::state().shakeOffset);
    Camera::doShaking(0.1f);
    EXPECT_EQ(Camera::state().shakeOffset, target);
    EXPECT_NE(Camera::state().shakeTarget, target);
}

TEST_F(CameraTest, ASecondShakeOnlyProlongsItAndAfterwardsTheOffsetRunsBackWithoutOvershooting) {
    useCamera("shakeTime = 1\nshakeStrenght = 8\nshakeSpeed = 1\n");
    Camera::shake();
    const Vector2D target = Camera::state().shakeTarget;
    Camera::doShaking(0.6f);
    Camera::shake();  // only prolongs it
    EXPECT_EQ(std::tuple(Camera::state().shakeTimer, Camera::state().shakeTarget), std::tuple(1.0f, target));
    Camera::doShaking(0.6f);
    EXPECT_TRUE(Camera::state().shaking);
    useCamera("shakeTime = 0.05\nshakeStrenght = 10\nshakeSpeed = 100\n");
    Camera::shake();
    Camera::doShaking(0.1f);  // ends the shake, and this step still moves all the way to the target
    EXPECT_EQ(std::tuple(Camera::state().shaking, Camera::state().shakeTimer), std::tuple(false, 0.0f));
    EXPECT_NEAR(length(Camera::state().shakeOffset), 10.0f, 1e-4f);
    Camera::doShaking(0.03f);
    EXPECT_NEAR(length(Camera::state().shakeOffset), 7.0f, 1e-4f);
    Camera::doShaking(0.08f);
    EXPECT_EQ(Camera::state().shakeOffset, Vector2D());
}

}  // namespace
