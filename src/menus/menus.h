// The menus: pages of widgets in a virtual screen of 800 by 600 units, the ten
// screens of the game, and the table of high scores with its name screen.
//
// A widget's callbacks may run a set time after the event (a delayed event),
// so that a button's animation and sound play before the menu acts. The game
// keeps running under the menus: GameMenus forwards the window's events to the
// open screen, and the game draws it over the level.
#pragma once

#include <array>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "audio/audio.h"
#include "foundation/foundation.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"

class GuiScreen;
class GuiWidget;

// A callback gives true when it has moved to another menu or ended one, so
// that nothing queued for the old state fires.
using GuiMouseCallback = bool (*)(GuiWidget* widget, int x, int y, int button);
using GuiMoveCallback = bool (*)(GuiWidget* widget, int x, int y);
using GuiKeyCallback = bool (*)(GuiWidget* widget, int key);

namespace Gui {
constexpr float virtualWidth = 800.0f;
constexpr float virtualHeight = 600.0f;
// A window position in units of the virtual screen.
int toVirtualX(int windowX);
int toVirtualY(int windowY);
// Scales the drawing so that units of the virtual screen fill the window.
void scaleToWindow();
// The mouse pointer at its own size, its top left at the mouse, in window
// pixels; with a shadow 2 pixels below and to the right if asked.
void drawCursor(const GLTexture& cursor, bool withShadow);
}  // namespace Gui

class GuiWidget : public GLWindowEventListener {
public:
    float r = 1.0f, g = 1.0f, b = 1.0f, a = 1.0f;
    int width = 100, height = 20;
    int x = 0, y = 0;
    bool visible = true;
    bool enabled = true;  // the mouse can reach it
    bool focused = false;
    GuiMouseCallback onMousePressed = nullptr;
    GuiMouseCallback onMouseReleased = nullptr;
    GuiMoveCallback onMouseMoved = nullptr;
    GuiKeyCallback onKeyboardPressed = nullptr;
    GuiKeyCallback onKeyboardReleased = nullptr;
    // Seconds before each callback runs, in the same order; 0 runs it at once.
    float onMousePressedDelay = 0.0f;
    float onMouseReleasedDelay = 0.0f;
    float onMouseMovedDelay = 0.0f;
    float onKeyboardPressedDelay = 0.0f;
    float onKeyboardReleasedDelay = 0.0f;
    GuiScreen* screen = nullptr;
    std::map<int, GuiWidget*> focusTraversal;  // key to the widget that takes the focus

    void setColor(float red, float green, float blue, float alpha);
    void setPosition(int left, int top);
    void setSize(int newWidth, int newHeight);
    void addFocusTraversal(int key, GuiWidget* widget);
    void doFocusTraversal(int key);
    bool contains(int pointX, int pointY) const;

    virtual void gainedFocus() {}
    virtual void lostFocus() {}
    virtual void reset() {}
};

// A callback waiting for its time, with the arguments of its event.
struct DelayedEvent {
    float remaining = 0.0f;
    GuiMouseCallback mouseCallback = nullptr;
    GuiMoveCallback moveCallback = nullptr;
    GuiKeyCallback keyCallback = nullptr;
    GuiWidget* widget = nullptr;
    int x = 0, y = 0, button = 0, key = 0;

    bool fire() const;
};

class GuiScreen : public GLWindowEventListener {
public:
    enum Queue { mousePressedQueue, mouseReleasedQueue, mouseMovedQueue, keyPressedQueue, keyReleasedQueue };

    float clearR = 0.0f, clearG = 0.0f, clearB = 0.0f;
    bool clearBackground = true;
    bool swapBuffers = true;

    GuiScreen();
    ~GuiScreen() override;
    GuiScreen(const GuiScreen&) = delete;
    GuiScreen& operator=(const GuiScreen&) = delete;

    // The screen owns every widget it accepts.
    void addWidget(GuiWidget* widget);
    void setFocusedWidget(GuiWidget* widget);
    void setDefaultFocusWidget(GuiWidget* widget);
    GuiWidget* getFocusedWidget() const { return focusedWidget; }
    const std::vector<GuiWidget*>& getWidgets() const { return widgets; }

    // The screen's own modal loop, until exit() or the window's end.
    void run();
    void exit();
    virtual void reset();
    void clearDelayedEvents();
    bool delayedEventPending(GuiMouseCallback callback) const;
    bool delayedEventPending(GuiMoveCallback callback) const;
    bool delayedEventPending(GuiKeyCallback callback) const;
    void runDelayedEvents(float seconds);

    void mouseMoved(int x, int y) override;
    void mousePressed(int x, int y, int button) override;
    void mouseReleased(int x, int y, int button) override;
    void keyboardPressed(int key) override;
    void keyboardReleased(int key) override;
    void windowResized() override {}
    void windowClosing() override;
    void windowClosed() override;
    void windowRedrawing() override;

private:
    bool owns(const GuiWidget* widget) const;
    void focus(GuiWidget* widget);
    void unfocus(GuiWidget* widget);
    void runCallback(DelayedEvent event, float delay, Queue queue);
    void mouseButton(int windowX, int windowY, int button, bool pressed);
    template <typename Callback>
    bool pending(Callback DelayedEvent::*field, Callback callback) const;
    void deleteWidgets();

    FrameClock clock;
    bool running = false;
    GuiWidget* focusedWidget = nullptr;
    GuiWidget* defaultFocusWidget = nullptr;
    std::vector<GuiWidget*> widgets;
    std::array<std::list<DelayedEvent>, 5> queues;
};

// ---------------------------------------------------------------------------
// Widgets.

struct GuiDropShadow {
    bool on = false;
    float offsetX = 0.0f, offsetY = 0.0f;
    float r = 0.0f, g = 0.0f, b = 0.0f, a = 1.0f;
};

// What buttons and text widgets share: a drop shadow and its two setters.
class GuiShadowCaster {
public:
    GuiDropShadow dropShadow;

    void setDropShadowColor(float red, float green, float blue, float alpha);
    void setDropShadowOffset(float offsetX, float offsetY);
};

// An image button with three animated frame sets: out of focus (looping), in
// focus and clicked (each played once and held).
class GuiAnimatedButton : public GuiWidget, public GuiShadowCaster {
public:
    enum State { outOfFocus = 0, inFocus = 1, clicked = 2 };

    float frameRate = 10.0f;

    GuiAnimatedButton();
    void setFramesOutOfFocus(const std::string& name);
    void setFramesInFocus(const std::string& name);
    void setFramesClicked(const std::string& name);
    void setOverSound(const std::string& name);
    void setClickedSound(const std::string& name);
    void resetAnimation();
    const GLTexture* getCurrentFrame() const;
    int getState() const { return state; }
    void setState(int newState) { state = newState; }
    int getCurrentFrameIndex() const { return currentFrame; }
    void runAnimation(float seconds, float rate);
    // The file names of a frame set: one name, or every "_FRAME" file beside it.
    static void findFrames(const std::string& name, std::vector<std::string>& list);

    void mousePressed(int x, int y, int button) override;
    void keyboardPressed(int key) override;
    void windowRedrawing() override;
    void gainedFocus() override;
    void lostFocus() override {}
    void reset() override;

private:
    void setFrames(std::vector<GLTexture>& frames, const std::string& name);
    const std::vector<GLTexture>& framesOfState() const;
    void press();

    std::vector<GLTexture> framesOutOfFocus, framesInFocus, framesClicked;
    std::unique_ptr<Sound> overSound, clickedSound;
    int currentFrame = 0;
    float frameTime = 0.0f;
    int state = outOfFocus;
    FrameClock clock;
};

// What every text widget carries: a font, a size and a drop shadow. The text
// colour is the widget's colour, opaque black at the start.
class GuiTextWidget : public GuiWidget, public GuiShadowCaster {
public:
    GLFont font;
    float fontSize = 16.0f;

    GuiTextWidget();
    void setFont(const std::string& textureName);
    virtual void setFontSize(float size);

protected:
    // The text at (left, top), its shadow first when that is on.
    void drawText(const std::string& text, float left, float top) const;
};

// One text out of a list, between a left and a right arrow button.
class GuiOptionChooser : public GuiTextWidget {
public:
    unsigned int currentOption = 0;

    void addOption(const std::string& text);
    void setCurrentOption(unsigned int index);
    const std::vector<std::string>& getOptions() const { return options; }
    void setLeftButtonFramesOutOfFocus(const std::string& name);
    void setLeftButtonFramesInFocus(const std::string& name);
    void setLeftButtonFramesClicked(const std::string& name);
    void setRightButtonFramesOutOfFocus(const std::string& name);
    void setRightButtonFramesInFocus(const std::string& name);
    void setRightButtonFramesClicked(const std::string& name);
    void setOverSound(const std::string& name);
    void setClickedSound(const std::string& name);
    void setButtonStates(int state);
    void setDropShadowColor(float red, float green, float blue, float alpha);
    void setDropShadowOffset(float offsetX, float offsetY);

    void mousePressed(int x, int y, int button) override;
    void keyboardPressed(int key) override;
    void windowRedrawing() override;
    void gainedFocus() override;
    void lostFocus() override;
    void reset() override;

private:
    bool hasNext() const { return currentOption + 1 < options.size(); }
    void drawArrow(GuiAnimatedButton& button, float left, float middleY, bool atEnd);

    std::vector<std::string> options;
    GuiAnimatedButton leftButton, rightButton;
    std::unique_ptr<Sound> overSound, clickedSound;
};

class GuiLabel : public GuiTextWidget {
public:
    void setText(const std::string& newText) { text = newText; }
    const std::string& getText() const { return text; }
    void windowRedrawing() override;

private:
    std::string text;
};

// A part of an image, given in pixels, stretched over the widget.
class GuiImage : public GuiWidget {
public:
    void setImage(const std::string& name);
    void setImagePortion(float left, float top, float portionWidth, float portionHeight);
    const GLTexture& getImage() const { return image; }
    void windowRedrawing() override;

private:
    GLTexture image;
    float portionX = 0.0f, portionY = 0.0f, portionWidth = 0.0f, portionHeight = 0.0f;
};

// Text broken into lines at blanks to fit the widget's width.
class GuiTextBox : public GuiTextWidget {
public:
    bool centered = false;

    GuiTextBox();
    void setText(const std::string& newText);
    void setFontSize(float size) override;
    const std::vector<std::string>& getLines() const { return lines; }
    void windowRedrawing() override;

private:
    void formatText();
    void drawLines(float red, float green, float blue, float alpha, float offsetX, float offsetY) const;

    std::string text;
    std::vector<std::string> lines;
};

// The table of the ten best scores.
class GuiHighScores : public GuiTextWidget {
public:
    float entryFontSize = 16.0f;
    float titleFontSize = 32.0f;

    void setTitleFontSize(float size);
    void setEntryFontSize(float size);
    void windowRedrawing() override;

private:
    void drawTable(float red, float green, float blue, float alpha) const;
};

// The climb of an end-of-level counter from 0 to its value: a time, the
// seconds of it that remain, and a clock of its own.
class GuiRamp {
public:
    explicit GuiRamp(float seconds) : time(seconds) {}
    // At least `shortest` seconds; the climb starts again.
    void setTime(float seconds, float shortest);
    void restart();
    // The climb is over before it starts.
    void finish() { remaining = 0.0f; }
    // Seconds on the clock since the last tick.
    float tick();
    // Runs on by some seconds; the share climbed after them, 0 to 1.
    float climb(float seconds);
    bool atStart() const { return remaining == time; }
    bool done() const { return !(remaining > 0.0f); }

private:
    FrameClock clock;
    float time;
    float remaining = 0.0f;
};

// A number that counts up from 0 to its target, after the label it waits for.
class GuiScoreLabel : public GuiTextWidget {
public:
    int (*getValue)() = nullptr;
    GuiScoreLabel* waitFor = nullptr;

    void setRampUpTime(float seconds);
    void setRampUpSound(const std::string& name);
    // Its count has reached the target: whoever waits for it starts.
    bool counted() const { return ramp.done(); }
    unsigned int getShownValue() const { return shownValue; }
    void windowRedrawing() override;
    void reset() override;

private:
    GuiRamp ramp{4.0f};
    unsigned int shownValue = 0;
    Sound rampUpSound;
};

// The level time as it climbs, as minutes:seconds:hundredths.
class GuiLevelTimeDisplay : public GuiTextWidget {
public:
    GuiScoreLabel* waitFor = nullptr;

    void setRampUpTime(float seconds);
    const std::string& getShownText() const { return shownText; }
    void windowRedrawing() override;
    void reset() override;
    static std::string formatTime(uint32_t milliseconds);

private:
    GuiRamp ramp{5.0f};
    std::string shownText = "00:00:00";
};

// A column of water that rises to the share of the level's water that came through.
class GuiWaterLevel : public GuiWidget {
public:
    void setRampUpTimePerParticle(float seconds);
    float getLevel() const { return level; }
    void windowRedrawing() override;
    void reset() override;

private:
    GuiRamp ramp{1.0f};
    float level = 0.0f;
};

// ---------------------------------------------------------------------------
// The game's ten menus. Id 0 is no menu: the game is in play.

namespace GameMenus {

enum MenuId {
    none = 0,
    main = 1,
    inGame = 2,
    options = 3,
    highScores = 4,
    instructions = 5,
    quitGame = 6,
    loadMap = 7,
    credits = 8,
    levelFinished = 9,
    restart = 10,
};

void initialise();
void shutdown();
void setCurrentMenu(int id);
int getCurrentMenu();
int getLastMenu();
GuiScreen* getMenu(int id);

void sendMenuEvent_windowRedrawing();
void sendMenuEvent_mouseMoved(int x, int y);
void sendMenuEvent_mousePressed(int x, int y, int button);
void sendMenuEvent_mouseReleased(int x, int y, int button);
void sendMenuEvent_keyboardPressed(int key);
void sendMenuEvent_keyboardReleased(int key);

}  // namespace GameMenus

// ---------------------------------------------------------------------------
// The loading splash: a moving picture drawn by a thread of its own while the
// main thread works. Callers bracket slow work with run and stop, and draw
// nothing themselves in between; window events meanwhile reach no listener.

namespace SplashScreen {
void run();
void stop();
bool isRunning();
}  // namespace SplashScreen

// ---------------------------------------------------------------------------
// High scores: the ten best, kept in "sav\scores.sav", and the screen on
// which a player who made the table types a name.

struct HighScoreEntry {
    char name[21];
    uint8_t padding[3];
    uint32_t score;
};
static_assert(sizeof(HighScoreEntry) == 28, "an entry is stored as it is held");

class HighScores : public GLWindowEventListener {
public:
    static constexpr uint32_t magicNumber = 0x1231230F;
    static constexpr int entryCount = 10;
    static constexpr uint32_t maxNameLength = 20;
    static constexpr float closeDelay = 0.8f;

    static void loadScores();
    static void saveScores();
    static void setDefaultScores();
    static void addHighScore(HighScoreEntry entry);
    static void checkScore(uint32_t score, GuiScreen* background);
    static const std::array<HighScoreEntry, entryCount>& getScores();

    explicit HighScores(GuiScreen* backgroundScreen);
    ~HighScores() override;
    HighScores(const HighScores&) = delete;
    HighScores& operator=(const HighScores&) = delete;

    const char* getName() const { return name; }
    bool isRunning() const { return running; }
    bool isClosing() const { return closing; }

    void mouseMoved(int x, int y) override;
    void mousePressed(int x, int y, int button) override;
    void keyboardPressed(int key) override;
    void windowClosing() override;
    void windowRedrawing() override;

private:
    void readSettings();
    void draw() const;
    void finish();

    char name[21] = {};
    uint32_t nameLength = 0;
    GuiScreen* background = nullptr;
    bool running = true;
    std::unique_ptr<GLTexture> cursor;
    std::unique_ptr<GLFont> font;
    std::unique_ptr<Sound> sound;
    std::unique_ptr<GuiAnimatedButton> continueButton;
    float fontColor[4] = {};
    float shadowOffset[2] = {};
    float shadowColor[4] = {};
    bool closing = false;
    float closeTimer = closeDelay;
    FrameClock clock;
};
