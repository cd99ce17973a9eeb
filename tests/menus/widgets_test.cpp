// The page of widgets: hits in units of the virtual screen, the focus, and
// callbacks that wait for the frames to bring their time. The menu widgets:
// frame sets and their animation, the option chooser, the wrapped text box and
// the counters of the level's end.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "game/game.h"
#include "menus/menus.h"
#include "support/test_support.h"
#include "water/water.h"

namespace {

struct WrapCase {
    std::string text;
    int width;
    float fontSize;
    std::vector<std::string> lines;
};

class TextBoxWrapping : public ::testing::TestWithParam<WrapCase> {};

TEST_P(TextBoxWrapping, BreaksAtBlanksAndKeepsTheBreakAtTheLineEnd) {
    const WrapCase& c = GetParam();
    GuiTextBox box;
    box.setSize(c.width, 1);
    box.setFontSize(c.fontSize);
    box.setText(c.text);
    EXPECT_EQ(box.getLines(), c.lines);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, TextBoxWrapping,
    ::testing::Values(WrapCase{"aa bbbbbb", 100, 16.0f, {"aa ", "bbbbbb"}},
                      // A word longer than a line gives up letters to lines of their own until the rest fits.
                      WrapCase{"abcdefgh", 100, 16.0f, {"a", "b", "cdefgh"}},
                      WrapCase{"ab\ncd", 100, 16.0f, {"ab\n", "cd"}},
                      // Sizes below 4 are raised to 4; a box narrower than a letter holds one a line.
                      WrapCase{"ab", 1, 1.0f, {"a", "b"}}, WrapCase{"", 100, 16.0f, {}}));

// A button with three frames in each set, stepped one frame at a time.
class AnimatedButtonTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (int i = 1; i <= 3; ++i) folder.write("f_FRAME0" + std::to_string(i) + ".tga", "x");
        button.setFramesOutOfFocus("f_FRAME01.tga");
        button.setFramesInFocus("f_FRAME01.tga");
        button.setFramesClicked("f_FRAME01.tga");
    }
    void step() { button.runAnimation(0.1f, 10.0f); }

    ScratchFolder folder;
    GuiAnimatedButton button;
};

TEST_F(AnimatedButtonTest, OutOfFocusLoopsInFocusHoldsAndLosingFocusPlaysBack) {
    for (int expected : {1, 2, 0}) {
        step();
        EXPECT_EQ(button.getCurrentFrameIndex(), expected);
    }
    button.focused = true;
    button.gainedFocus();
    for (int expected : {1, 2, 2}) {
        step();
        EXPECT_EQ(button.getCurrentFrameIndex(), expected);
    }
    button.focused = false;
    step();
    EXPECT_EQ(button.getCurrentFrameIndex(), 1);
    EXPECT_EQ(button.getState(), GuiAnimatedButton::inFocus);
    step();
    step();
    EXPECT_EQ(button.getState(), GuiAnimatedButton::outOfFocus);
    EXPECT_EQ(button.getCurrentFrameIndex(), 0);
}

TEST_F(AnimatedButtonTest, OnePressSendsEveryButtonOfTheScreenIntoItsClickedFrames) {
    GuiScreen screen;
    std::vector<GuiAnimatedButton*> buttons;
    for (int i = 0; i < 5; ++i) {
        buttons.push_back(new GuiAnimatedButton());
        screen.addWidget(buttons.back());
    }
    buttons[2]->keyboardPressed('A');
    EXPECT_EQ(buttons[2]->getState(), GuiAnimatedButton::outOfFocus) << "only Enter and Space press";
    buttons[2]->keyboardPressed(VirtualKey::enter);
    for (GuiAnimatedButton* other : buttons) EXPECT_EQ(other->getState(), GuiAnimatedButton::clicked);
    screen.reset();
    for (GuiAnimatedButton* other : buttons) EXPECT_EQ(other->getState(), GuiAnimatedButton::outOfFocus);
}

TEST(OptionChooser, StopsAtBothEndsAndTheMouseChoosesBySide) {
    GuiOptionChooser chooser;
    chooser.setPosition(100, 0);
    chooser.setSize(200, 20);
    for (const char* option : {"off", "on", "best"}) chooser.addOption(option);
    chooser.setCurrentOption(7);
    EXPECT_EQ(chooser.currentOption, 2u);
    chooser.keyboardPressed(VirtualKey::right);
    EXPECT_EQ(chooser.currentOption, 2u);
    chooser.mousePressed(200, 5, MouseButton::left);  // the middle counts as left
    EXPECT_EQ(chooser.currentOption, 1u);
    chooser.mousePressed(201, 5, MouseButton::left);
    EXPECT_EQ(chooser.currentOption, 2u);
    chooser.setCurrentOption(0);
    chooser.keyboardPressed(VirtualKey::left);
    EXPECT_EQ(chooser.currentOption, 0u);
    GuiOptionChooser empty;
    empty.setCurrentOption(3);
    EXPECT_EQ(empty.currentOption, 0u);
}

TEST(LevelTimeDisplay, WritesMinutesSecondsAndHundredthsWithTwoDigitsEach) {
    EXPECT_EQ(GuiLevelTimeDisplay::formatTime(0), "00:00:00");
    EXPECT_EQ(GuiLevelTimeDisplay::formatTime(61234), "01:01:23");
    EXPECT_EQ(GuiLevelTimeDisplay::formatTime(3600000 + 5009), "00:05:00") << "hours are not shown";
}

int target() {
    return 1000;
}

TEST(ScoreLabels, CountUpOneAfterTheOther) {
    ManualClock clock;
    GuiScoreLabel first, second;
    first.getValue = target;
    second.getValue = target;
    second.waitFor = &first;
    first.setRampUpTime(1.0f);
    second.setRampUpTime(0.0f);  // held at 0.01 seconds
    GuiLevelTimeDisplay time;
    const std::initializer_list<GuiWidget*> widgets{&first, &second, &time};
    for (GuiWidget* widget : widgets) widget->reset();
    clock.advanceMilliseconds(500);
    for (GuiWidget* widget : widgets) widget->windowRedrawing();
    EXPECT_EQ(std::pair(first.getShownValue(), second.getShownValue()), std::pair(500u, 0u))
        << "the second waits";
    EXPECT_EQ(time.getShownText(), "00:00:00") << "with nothing to wait for it never runs";
    clock.advanceMilliseconds(600);
    for (GuiWidget* widget : widgets) widget->windowRedrawing();
    EXPECT_EQ(std::pair(first.getShownValue(), second.getShownValue()), std::pair(1000u, 1000u));
}

TEST(WaterLevel, RisesToTheShareOfTheWaterThatCameThrough) {
    ManualClock clock;
    ParticleManager::removeAllParticles();
    ParticleManager::createParticles(0.0f, 0.0f, 10.0f, 64);
    GuiWaterLevel column;
    column.setRampUpTimePerParticle(0.5f);
    column.reset();
    clock.advanceMilliseconds(250);
    column.windowRedrawing();
    EXPECT_FLOAT_EQ(column.getLevel(), 0.25f);
    clock.advanceMilliseconds(1000);
    column.windowRedrawing();
    EXPECT_FLOAT_EQ(column.getLevel(), 0.5f);
    ParticleManager::removeAllParticles();
}

int calls = 0;
GuiWidget* lastWidget = nullptr;

bool countPress(GuiWidget* widget, int, int, int) {
    ++calls;
    lastWidget = widget;
    return false;
}
bool moveOn(GuiWidget*, int, int, int) {
    ++calls;
    return true;
}
bool countKey(GuiWidget* widget, int) {
    ++calls;
    lastWidget = widget;
    return false;
}

class GuiScreenTest : public ::testing::Test {
protected:
    void SetUp() override {
        calls = 0;
        lastWidget = nullptr;
        GLWindow::Headless::setClientSize(800, 600);
    }
    void TearDown() override { GLWindow::Headless::setClientSize(800, 600); }

    GuiWidget* add(int x, int y, int width = 100, int height = 20) {
        auto* widget = new GuiWidget();
        widget->setPosition(x, y);
        widget->setSize(width, height);
        screen.addWidget(widget);
        return widget;
    }
    // A widget at the top left that counts its presses after the delay, the mouse on it.
    GuiWidget* pressable(float delay) {
        GuiWidget* widget = add(0, 0);
        widget->onMousePressed = countPress;
        widget->onMousePressedDelay = delay;
        screen.mouseMoved(10, 10);
        return widget;
    }
    // One frame of the screen after the clock has moved on.
    void frameAfter(unsigned milliseconds) {
        clock.advanceMilliseconds(milliseconds);
        screen.windowRedrawing();
    }

    ManualClock clock;
    GuiScreen screen;
};

TEST_F(GuiScreenTest, TheFirstEnabledWidgetUnderTheMouseTakesTheFocusAndPressesGoToTheFocus) {
    GuiWidget* disabled = add(0, 0);
    disabled->enabled = false;
    GuiWidget* hidden = add(0, 0);
    hidden->visible = false;
    hidden->onMousePressed = countPress;
    GuiWidget* behind = add(0, 0);
    screen.mousePressed(10, 10, MouseButton::left);
    EXPECT_EQ(calls, 0) << "a press goes to the focus, and there is none yet";
    screen.mouseMoved(10, 10);
    EXPECT_EQ(screen.getFocusedWidget(), hidden) << "hidden but enabled is still hit";
    EXPECT_FALSE(behind->focused);
    EXPECT_FALSE(disabled->focused);
}

TEST_F(GuiScreenTest, TheFirstKeyOnlyWakesTheDefaultFocus) {
    GuiWidget* widget = add(0, 0);
    widget->onKeyboardPressed = countKey;
    screen.setDefaultFocusWidget(widget);
    screen.keyboardPressed(VirtualKey::enter);
    EXPECT_EQ(screen.getFocusedWidget(), widget);
    EXPECT_EQ(calls, 0);
    screen.keyboardPressed(VirtualKey::enter);
    EXPECT_EQ(calls, 1);
}

TEST_F(GuiScreenTest, FocusTraversalReachesDisabledWidgetsAndRefusesStrangers) {
    GuiWidget* first = add(0, 0);
    GuiWidget* disabled = add(0, 100);
    disabled->enabled = false;
    GuiWidget stranger;
    first->addFocusTraversal(VirtualKey::down, disabled);
    first->addFocusTraversal(VirtualKey::tab, &stranger);
    screen.setFocusedWidget(first);
    screen.keyboardPressed(VirtualKey::tab);
    EXPECT_EQ(screen.getFocusedWidget(), first);
    screen.keyboardPressed(VirtualKey::down);
    EXPECT_EQ(screen.getFocusedWidget(), disabled);
    EXPECT_FALSE(first->focused);
}

// A callback queued twice runs twice.
TEST_F(GuiScreenTest, DelayedClicksFireWithTheFramesEvenAfterTheMouseLeft) {
    GuiWidget* widget = pressable(0.5f);
    screen.mousePressed(10, 10, MouseButton::left);
    screen.mousePressed(10, 10, MouseButton::left);
    screen.mouseMoved(700, 500);
    frameAfter(0);
    frameAfter(400);
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(screen.delayedEventPending(countPress));
    frameAfter(100);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(lastWidget, widget);
    EXPECT_FALSE(screen.delayedEventPending(countPress));
}

TEST_F(GuiScreenTest, ACallbackThatMovesOnCancelsEveryQueue) {
    GuiWidget* widget = pressable(0.1f);
    widget->onMousePressed = moveOn;
    widget->onKeyboardPressed = countKey;
    widget->onKeyboardPressedDelay = 0.1f;
    screen.mousePressed(10, 10, MouseButton::left);
    screen.mousePressed(10, 10, MouseButton::left);
    screen.keyboardPressed('A');
    frameAfter(0);
    frameAfter(200);
    EXPECT_EQ(calls, 1) << "the second click and the key were due in the same frame";
    EXPECT_FALSE(screen.delayedEventPending(countKey));
}

TEST_F(GuiScreenTest, ResetDropsQueuedEventsAndTheFocusButKeepsTheDefault) {
    GuiWidget* widget = pressable(0.1f);
    screen.setDefaultFocusWidget(widget);
    screen.mousePressed(10, 10, MouseButton::left);
    screen.reset();
    EXPECT_EQ(screen.getFocusedWidget(), nullptr);
    frameAfter(0);
    frameAfter(500);
    EXPECT_EQ(calls, 0);
    screen.keyboardPressed(' ');
    EXPECT_EQ(screen.getFocusedWidget(), widget);
}

TEST_F(GuiScreenTest, AWidgetBelongsToOneScreen) {
    GuiWidget* widget = add(0, 0);
    GuiScreen other;
    other.addWidget(widget);
    EXPECT_TRUE(other.getWidgets().empty());
    screen.addWidget(widget);
    EXPECT_EQ(screen.getWidgets().size(), 1u);
    other.setDefaultFocusWidget(widget);
    other.keyboardPressed(' ');
    EXPECT_EQ(other.getFocusedWidget(), nullptr);
}

}  // namespace
