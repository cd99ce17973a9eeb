// Split times at check points: the format, the comparison with the previous
// pass (signed, on unsigned times), and the fades on the display's own clock.
#include <gtest/gtest.h>

#include "dynamics/dynamics.h"
#include "game/check_point_state.h"
#include "support/test_support.h"

namespace {

using namespace CheckPointTimesManager;

class CheckPointTimes : public ::testing::Test {
protected:
    void SetUp() override {
        GLWindow::Headless::setClientSize(800, 600);
        settings("fadeTime = 0.5\nfontColor_a = 0.8\nslowerFontColor_r = 1\nfasterFontColor_g = 1\n");
    }
    void TearDown() override { shutdown(); }

    void settings(const std::string& text) {
        folder.write("cfg/checkPoints.cfg", text);
        initialise();
    }
    // Draws one frame after the given time on the display's clock.
    void drawAfter(unsigned milliseconds) {
        clock.advanceMilliseconds(milliseconds);
        draw();
    }

    ScratchFolder folder;
    ConsoleCapture console;
    ManualClock clock;
    // Only their addresses count: they are the keys of the passes.
    Trigger firstTrigger, secondTrigger;
    const Trigger* first = &firstTrigger;
    const Trigger* second = &secondTrigger;
};

TEST_F(CheckPointTimes, AFirstPassShowsTheRunningTimeThroughBothFades) {
    recordTime(first, 1200);
    drawAfter(0);
    EXPECT_EQ(currentDisplay(1500).text, "00:01:50");  // the time counts on as it shows
    drawAfter(250);
    EXPECT_EQ(state().state, timeFadingIn);
    EXPECT_NEAR(currentDisplay(0).colour.a, 0.8f * std::sqrt(0.5f), 1e-5f);
    drawAfter(260);
    EXPECT_EQ(state().state, timeFadingOut);
    drawAfter(490);
    EXPECT_EQ(state().state, timeFadingOut);
    EXPECT_NEAR(currentDisplay(0).colour.a, 0.8f * std::sqrt(0.02f), 1e-4f);
    drawAfter(20);
    EXPECT_EQ(state().state, hidden);
}

TEST_F(CheckPointTimes, ALaterPassShowsTheDifferenceInItsOwnColour) {
    const std::tuple<uint32_t, uint32_t, const char*, bool> cases[] = {
        {1000, 1500, "+ 00:00:50", false},
        {1500, 1000, "- 00:00:50", true},
        {7000, 7000, "+ 00:00:00", false},
        {4000000000u, 10, "- 06:39:99", true},
        {10, 4000000000u, "+ 06:39:99", false}};
    for (const auto& [previous, last, text, faster] : cases) {
        initialise();
        recordTime(first, previous);
        recordTime(first, last);
        EXPECT_EQ(state().state, splitFadingIn);
        const Display display = currentDisplay(0);
        EXPECT_EQ(display.text, text) << previous << " then " << last;
        EXPECT_EQ(display.colour.g, faster ? 1.0f : 0.0f);
        EXPECT_EQ(display.colour.r, faster ? 0.0f : 1.0f);
    }
}

TEST_F(CheckPointTimes, PassesCompareWithThePassBeforeUntilTheNextLevelLoad) {
    recordTime(first, 5000);
    recordTime(second, 6000);  // another check point within the fade replaces the display at once
    EXPECT_EQ(state().state, timeFadingIn);
    EXPECT_FLOAT_EQ(state().fadeTimer, 0.5f);
    recordTime(first, 4000);
    recordTime(first, 4500);
    EXPECT_EQ(std::tuple(state().previousTime, currentDisplay(0).text), std::tuple(4000u, "+ 00:00:50"));
    drawAfter(600);
    EXPECT_EQ(state().state, splitFadingOut);
    initialise();
    recordTime(first, 4500);
    EXPECT_EQ(state().state, timeFadingIn);
}

TEST_F(CheckPointTimes, AFadeOfNoLengthLastsAHundredthOfASecond) {
    settings("fadeTime = 0\n");
    EXPECT_FLOAT_EQ(state().settings.fadeTime, 0.01f);
    recordTime(first, 0);
    drawAfter(0);
    EXPECT_EQ(state().state, timeFadingIn);
    drawAfter(10);
    EXPECT_EQ(state().state, timeFadingOut);
}

}  // namespace
