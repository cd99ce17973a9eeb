// The page of widgets: hits in units of the virtual screen, the focus, and
// callbacks that wait for the frames to bring their time.
#include <gtest/gtest.h>

#include "menus/menus.h"
#include "support/test_support.h"

namespace {

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

TEST_F(GuiScreenTest, WindowPixelsBecomeUnitsOfTheVirtualScreen) {
    GLWindow::Headless::setClientSize(1024, 768);
    GuiWidget* widget = add(400, 300, 10, 10);
    screen.mouseMoved(512, 384);
    EXPECT_EQ(screen.getFocusedWidget(), widget);
    screen.mouseMoved(500, 384);  // 390.6 units: left of the widget
    EXPECT_EQ(screen.getFocusedWidget(), nullptr);
    EXPECT_FALSE(widget->focused);
}

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
