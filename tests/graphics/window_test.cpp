// The window: its buffers, its events as the game's codes, its states and modes.
// The file boxes as a player uses them: a dialog on a display of the test's
// own, a name typed and Return or Escape pressed with xdotool, and the path
// that comes back. Without zenity, xdotool or Xvfb these skip; without any
// dialog program a box answers as if cancelled.

#include "graphics/window/window.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "game/game.h"
#include "graphics/window/window_state.h"
#include "platform/window_backend.h"
#include "private_display.h"
#include "real_window.h"
#include "support/content_support.h"
#include "support/test_support.h"

namespace {

// Writes down every event in a readable form; redraws only when asked to.
class RecordingListener : public GLWindowEventListener {
public:
    std::vector<std::string> events;
    bool redraws = false;
    void mouseMoved(int x, int y) override { add("move", x, y); }
    void mousePressed(int x, int y, int button) override { add("press", x, y, button); }
    void mouseReleased(int x, int y, int button) override { add("release", x, y, button); }
    void keyboardPressed(int key) override { add("key", key); }
    void keyboardReleased(int key) override { add("keyup", key); }
    void windowResized() override { events.push_back("resized"); }
    void windowClosing() override { events.push_back("closing"); }
    void windowClosed() override { events.push_back("closed"); }
    void windowRedrawing() override {
        if (redraws) events.push_back("redraw");
    }

private:
    template <typename... Values>
    void add(const char* name, Values... values) {
        std::string text = name;
        ((text += " " + std::to_string(values)), ...);
        events.push_back(text);
    }
};

// A window whose events a recording listener hears.
class WindowEvents : public ::testing::Test {
protected:
    RealWindow window;
    RecordingListener listener;
    WindowEvents() { GLWindow::setEventListener(&listener); }
};

TEST(Window, HasTheRequestedClientAreaAndBuffers) {
    RealWindow window(320, 240);
    ASSERT_TRUE(WindowBackend::exists());
    EXPECT_EQ(std::tuple(GLWindow::exists(), GLWindow::getClientWidth(), GLWindow::getClientHeight(),
                         GLWindow::getTitle(), GLWindow::getAntiAliasingMode()),
              std::tuple(true, 320, 240, "Brookfall test", 1));
    for (const auto& [buffer, bits] :
         {std::pair{GL_DEPTH_BITS, 24}, {GL_STENCIL_BITS, 8}, {GL_ACCUM_RED_BITS, 8}}) {
        GLint got = 0;
        glGetIntegerv(buffer, &got);
        EXPECT_GE(got, bits) << buffer;
    }
    GLboolean doubleBuffered = GL_FALSE;
    glGetBooleanv(GL_DOUBLEBUFFER, &doubleBuffered);
    EXPECT_TRUE(doubleBuffered);
}

TEST_F(WindowEvents, DeliversKeysAsVirtualKeyCodes) {
    for (const char* name : {"A", "7", "Left", "Down", "`", "F1", "Return", "Backspace", "Escape", "Space"})
        WindowBackend::queueKey(name, true);
    WindowBackend::queueKey("A", false);
    GLWindow::run();
    const std::vector<std::string> expected = {"key 65", "key 55", "key 37", "key 40", "key 223", "key 112",
                                               "key 13", "key 8",  "key 27", "key 32", "keyup 65"};
    EXPECT_EQ(listener.events, expected);
    EXPECT_FALSE(GLWindow::keyboardKeyPressed('A'));
    EXPECT_TRUE(GLWindow::keyboardKeyPressed(37));
    EXPECT_EQ(GLWindow::getLastKeyPressed(), 32);
    EXPECT_EQ(GLWindow::getLastKeyPressed(), 0);
    // Insert is kept as a toggle.
    EXPECT_FALSE(GLWindow::keyboardKeyToggled(45));
    for (bool toggled : {true, false}) {
        WindowBackend::queueKey("Insert", true);
        WindowBackend::queueKey("Insert", false);
        GLWindow::run();
        EXPECT_EQ(GLWindow::keyboardKeyToggled(45), toggled);
    }
}

TEST_F(WindowEvents, MouseEventsCarryClientPositionAndButton) {
    WindowBackend::queueMouseMotion(12, 34);
    WindowBackend::queueMouseButton(5, 6, 2, true);
    WindowBackend::queueMouseButton(7, 8, 4, false);
    WindowBackend::queueMouseButton(9, 10, 1, true);
    GLWindow::run();
    const std::vector<std::string> expected = {"move 12 34", "press 5 6 2", "release 7 8 4", "press 9 10 1"};
    EXPECT_EQ(listener.events, expected);
    EXPECT_EQ(GLWindow::getMouseX(), 9);
    EXPECT_EQ(GLWindow::getMouseY(), 10);
    // Without a listener the state still changes.
    GLWindow::setEventListener(nullptr);
    WindowBackend::queueMouseMotion(40, 50);
    GLWindow::run();
    EXPECT_EQ(GLWindow::getMouseX(), 40);
    EXPECT_EQ(GLWindow::getMouseY(), 50);
    // Mouse turning measures the pointer against the client centre each step,
    // so centring must put it exactly there or the view would turn by itself.
    GLWindow::centerMouse();
    GLWindow::run();
    EXPECT_EQ(GLWindow::getMouseScreenX(), GLWindow::getClientCenterX());
    EXPECT_EQ(GLWindow::getMouseScreenY(), GLWindow::getClientCenterY());
}

TEST_F(WindowEvents, ACloseRequestDestroysTheWindowWhateverTheListenerDoes) {
    WindowBackend::queueClose();
    GLWindow::run();
    EXPECT_FALSE(GLWindow::exists());
    EXPECT_EQ(listener.events, (std::vector<std::string>{"closing", "closed"}));
    EXPECT_EQ(GLWindow::getEventListener(), nullptr);
    EXPECT_EQ(GLWindow::getCursor(), 1);
}

TEST(Window, ExtensionTestIsCaseInsensitiveAndWholeWord) {
    RealWindow window;
    std::vector<std::string> extensions;
    GLWindow::getExtensionList(extensions);
    ASSERT_FALSE(extensions.empty());
    std::string lower = extensions.front();
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    EXPECT_TRUE(GLWindow::extensionSupported(lower.c_str()));
    EXPECT_FALSE(GLWindow::extensionSupported(extensions.front().substr(0, 5).c_str()));
    EXPECT_FALSE(GLWindow::extensionSupported(nullptr));
}

TEST(Window, AntiAliasingChangesKeepTheTitleAndRefusedSettingsChangeNothing) {
    RealWindow window(320, 240);
    GLWindow::setClientSize(0, 100);
    GLWindow::setClientSize(100, -1);
    GLWindow::setCursor(2);
    GLWindow::setCursor(7);
    EXPECT_EQ(GLWindow::getCursor(), 2);
    GLWindow::setTitle("Kept title");
    EXPECT_TRUE(GLWindow::setAntiAliasingMode(0));
    EXPECT_EQ(GLWindow::getAntiAliasingMode(), 1);
    const bool granted = GLWindow::setAntiAliasingMode(4);
    EXPECT_EQ(GLWindow::getAntiAliasingMode(), granted ? 4 : 1);
    EXPECT_TRUE(GLWindow::setAntiAliasingMode(1));
    EXPECT_EQ(GLWindow::getAntiAliasingMode(), 1);
    EXPECT_EQ(std::tuple(GLWindow::exists(), GLWindow::getTitle(), GLWindow::getClientWidth(),
                         GLWindow::getClientHeight(), GLWindow::antiAliasingModeAvailable(0)),
              std::tuple(true, "Kept title", 320, 240, true));
    EXPECT_FALSE(GLWindow::setAntiAliasingMode(-3));
}

TEST(Window, FullScreenTakesTheDesktopAndWindowedModeComesBack) {
    RealWindow window(320, 240);
    GLWindow::setFullscreen(true, 123, 77);  // a refused display mode leaves the flag
    EXPECT_FALSE(GLWindow::isFullscreen());
    GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    EXPECT_TRUE(GLWindow::isFullscreen());
    GLWindow::setFullscreen(false, 400, 300);
    EXPECT_FALSE(GLWindow::isFullscreen());
    GLWindow::run();
    EXPECT_EQ(GLWindow::getClientWidth(), 400);
    EXPECT_EQ(GLWindow::getClientHeight(), 300);
}

}  // namespace

// Each stage of making the window that can fail says which, and ends the program.
[[noreturn]] void createWithVideoDriver(const char* driver) {
    setenv("SDL_VIDEODRIVER", driver, 1);
    unsetenv("DISPLAY");  // the message goes to standard error
    GLWindow::Headless::setEnabled(false);
    GLWindow::createWindow("Brookfall", 800, 600);
    std::exit(0);
}

TEST(WindowDeathTest, AnUnreachableDisplayEndsTheProgramWithItsMessage) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(createWithVideoDriver("no_such_driver"), ::testing::ExitedWithCode(1),
                "Game error\nUnable to create window: couldn't get program handle\\.");
}

namespace {

struct Choice {
    const char* name;
    bool save;
    GLWindow::FileFilters filters;
    const char* typed;   // typed into the box, then Return; null: Escape
    const char* chosen;  // in the folder the box opened on; null: nothing chosen
};

void PrintTo(const Choice& choice, std::ostream* out) {
    *out << choice.name;
}

const GLWindow::FileFilters levelFilters = {{"Levels", "*.rill"}, {"All files", "*"}};

const Choice choices[] = {
    {"a new name gets the filter's extension", true, levelFilters, "newLevel", "newLevel.rill"},
    {"a name with a dot keeps it", true, levelFilters, "notes.txt", "notes.txt"},
    {"a filter of any extension adds none", true, {{"All files", "*.*"}}, "plain", "plain"},
    {"an existing file opens", false, levelFilters, "old.rill", "old.rill"},
    {"Escape chooses nothing", true, levelFilters, nullptr, nullptr},
};

class FileBoxes : public ::testing::TestWithParam<Choice> {};

TEST_P(FileBoxes, GiveThePathThePlayerChose) {
    if (!installed("zenity") || !installed("xdotool") || !installed("Xvfb"))
        GTEST_SKIP() << "zenity, xdotool and Xvfb are needed to show and drive a file box";
    ScratchFolder folder;
    folder.write("levels/old.rill", "level");
    PrivateDisplay display;
    ASSERT_FALSE(display.name.empty()) << "no display could be started";
    const Setting displayName("DISPLAY", display.name), home("HOME", folder.path().string());
    const Choice& choice = GetParam();
    const std::string title = "Brookfall file box";

    // The player, on a thread of its own while the box holds the test's thread.
    std::thread player([&] {
        const std::string find = "timeout 20 xdotool search --sync --name '" + title + "'";
        if (runCommand(find + " windowfocus --sync %1 > /dev/null 2>&1") != 0) return display.end();
        if (choice.typed)
            runCommand("timeout 20 xdotool type --delay 30 '" + std::string(choice.typed) + "'");
        // A key pressed while the box still settles may go unseen: again until the box has gone.
        for (int tries = 0; tries < 40; ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
            if (runCommand("timeout 5 xdotool search --name '" + title + "' > /dev/null 2>&1") != 0) return;
            runCommand(std::string("timeout 5 xdotool key ") + (choice.typed ? "Return" : "Escape"));
        }
        display.end();  // the box would not go: ending its display ends it
    });
    const std::string path = choice.save ? GLWindow::showSaveFileBox(title.c_str(), "levels", choice.filters)
                                         : GLWindow::showOpenFileBox(title.c_str(), "levels", choice.filters);
    player.join();
    EXPECT_EQ(path, choice.chosen ? (folder.path() / "levels" / choice.chosen).string() : "");
}
INSTANTIATE_TEST_SUITE_P(Window, FileBoxes, ::testing::ValuesIn(choices));

TEST(FileBoxes, WithoutADialogProgramAnswerAsCancelled) {
    const Setting path("PATH", "/nonexistent");
    EXPECT_EQ(GLWindow::showOpenFileBox("Open", "", levelFilters), "");
    EXPECT_EQ(GLWindow::showSaveFileBox("Save", "", levelFilters), "");
}

}  // namespace
