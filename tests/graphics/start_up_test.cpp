// The start as the player sees it on the baked data, screenshots kept in the build folder.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "audio/audio.h"
#include "console/console.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "menus/menus.h"
#include "platform/image_loading.h"
#include "platform/window_backend.h"
#include "private_display.h"
#include "real_window.h"
#include "support/content_support.h"
#include "support/test_support.h"

namespace fs = std::filesystem;

namespace {

fs::path screenshotFolder() {
    const char* build = std::getenv("BROOKFALL_BINARY_DIR");
    const fs::path folder = fs::path(build ? build : fs::temp_directory_path().string()) / "screenshots";
    fs::create_directories(folder);
    return folder;
}

// The turns of the intro's loop and then of the game's, one frame of the video
// (25 a second) or about one of the game's steps a turn on the hand-run clock.
struct StartUp {
    static inline ManualClock* clock = nullptr;
    static inline int turns = 0;
    static inline std::vector<std::string> shots;
    static void shoot(const std::string& name) {
        const std::string path = (screenshotFolder() / name).string();
        if (GLWindow::saveScreenshot(path)) shots.push_back(path);
    }
    static void introTurn() {
        clock->advanceMilliseconds(41);
        ++turns;
        // What the turn before drew: frames from the fall of the drop to the risen logo.
        for (const int frame : {30, 60, 95})
            if (turns == frame + 2) shoot("intro-frame-" + std::to_string(frame) + ".png");
        if (turns == 100) WindowBackend::queueKey("Space", true);
    }
    static void gameTurn() {
        clock->advanceMilliseconds(14);
        if (++turns == 200) shoot("main-menu.png");
        if (turns >= 200) Game::stop();
    }
};

// Mean brightness and how much it varies over a picture in memory (4 bytes a pixel).
struct Look {
    double mean = 0.0;
    double spread = 0.0;
    double top = 0.0;  // the means of the top and the bottom tenth
    double bottom = 0.0;
};
Look look(const std::string& path) {
    Platform::LoadedImage image;
    Look result;
    if (!Platform::loadImage(path, image) || image.pixels.empty()) return result;
    const std::size_t count = image.pixels.size() / 4, band = count / 10;
    auto brightness = [&image](std::size_t i) {
        return (image.pixels[i * 4] + image.pixels[i * 4 + 1] + image.pixels[i * 4 + 2]) / 3.0;
    };
    double sum = 0.0, squares = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        sum += brightness(i);
        squares += brightness(i) * brightness(i);
        if (i < band) result.top += brightness(i) / static_cast<double>(band);
        if (i >= count - band) result.bottom += brightness(i) / static_cast<double>(band);
    }
    result.mean = sum / static_cast<double>(count);
    result.spread = std::sqrt(squares / static_cast<double>(count) - result.mean * result.mean);
    return result;
}

// The baked data, read-only, beside a fresh folder for the scores; the
// console's log is on, so that a program run can be followed from outside.
void linkBakedData(const ScratchFolder& folder) {
    for (const char* part : {"gfx", "snd", "maps", "text", "fx", "vid"})
        fs::create_directory_symlink(bakedDataFolder() / part, folder.path() / part);
    fs::create_directory(folder.path() / "cfg");
    for (const auto& file : fs::directory_iterator(bakedDataFolder() / "cfg"))
        if (file.path().filename() != "console.cfg")
            fs::create_symlink(file.path(), folder.path() / "cfg" / file.path().filename());
    folder.write("cfg/console.cfg",
                 readBytes(bakedDataFolder() / "cfg" / "console.cfg") + "\nenableLogging = true\n");
}

TEST(StartUp, TheIntroPlaysUntilAKeyThenTheMainMenuStandsOverTheLevel) {
    ScratchFolder folder;
    linkBakedData(folder);
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    ManualClock clock;
    StartUp::clock = &clock;
    StartUp::turns = 0;
    StartUp::shots.clear();
    RealWindow window(800, 600);
    ConsoleCapture capture;
    GLTextureManager::initialise();
    GLConsole::initialise();
    MusicSystem::initialise();
    SoundSystem::initialise();
    SoundManager::initialise();

    GLWindow::Headless::setModalLoopDriver(StartUp::introTurn);
    {
        IntroScreen intro;
        intro.run();
    }
    EXPECT_EQ(StartUp::turns, 101) << "the key ends the intro on the turn it arrives";
    EXPECT_EQ(capture.text().find("Unable to open AVI file"), std::string::npos);
    HighScores::loadScores();
    StartUp::turns = 0;
    GLWindow::Headless::setModalLoopDriver(StartUp::gameTurn);
    Game::run("maps\\testLevel.rill");
    GLWindow::Headless::setModalLoopDriver(nullptr);

    HighScores::saveScores();
    SoundManager::shutdown();
    SoundSystem::shutdown();
    MusicSystem::shutdown();
    GLConsole::shutdown();
    GLTextureManager::shutdown();
    unsetenv("SDL_AUDIODRIVER");

    ASSERT_EQ(StartUp::shots.size(), 4u);
    std::vector<Look> looks;
    for (const std::string& shot : StartUp::shots) looks.push_back(look(shot));
    for (std::size_t i = 0; i < looks.size(); ++i) {
        EXPECT_GT(looks[i].mean, 10.0) << StartUp::shots[i] << " is black";
        EXPECT_GT(looks[i].spread, 5.0) << StartUp::shots[i] << " is one flat colour";
    }
    for (std::size_t i = 1; i < looks.size(); ++i)
        EXPECT_NE(looks[i].mean, looks[i - 1].mean) << StartUp::shots[i] << " repeats the picture before it";
    // The intro is water lit from above: its top stands lighter than its bottom.
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_GT(looks[i].top, looks[i].bottom + 10.0) << StartUp::shots[i] << " is upside down";
}

// The program as it ships: its intro runs in the real entry sequence, a key
// ends it, and the game goes on to set up the level, as its console log
// shows. The program has no way out but its menus or its window, so it is
// ended from outside.
TEST(StartUp, TheGameProgramGoesFromItsIntroToTheGame) {
    if (!installed("xdotool") || !installed("Xvfb")) GTEST_SKIP() << "xdotool and Xvfb are needed";
    ScratchFolder folder;
    linkBakedData(folder);
    PrivateDisplay display;
    ASSERT_FALSE(display.name.empty()) << "no display could be started";
    const Setting displayName("DISPLAY", display.name), audio("SDL_AUDIODRIVER", "dummy"),
        sound("ALSOFT_DRIVERS", "null");
    const pid_t game = startProgram(toolPath("brookfall").string());
    ASSERT_NE(game, 0);
    auto running = [game] { return waitpid(game, nullptr, WNOHANG) == 0; };
    auto log = [] { return readBytes("ConsoleLog.txt"); };
    const bool shown = runCommand(
                           "timeout 30 xdotool search --sync --name 'Brookfall: Version 1.00' windowfocus "
                           "--sync %1 > /dev/null 2>&1") == 0;
    EXPECT_TRUE(shown) << "no window";
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_TRUE(running()) << "ended during its intro";
    EXPECT_EQ(log().find("Game initialisation"), std::string::npos) << "no intro before the game";
    const auto keyed = std::chrono::steady_clock::now();
    runCommand("timeout 5 xdotool key space");
    for (int wait = 0; wait < 300 && running() && log().find("Game initialisation") == std::string::npos;
         ++wait)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_NE(log().find("Game initialisation"), std::string::npos) << "the game did not follow the intro";
    // Else the five seconds of the intro would still run, slower on a slow machine.
    EXPECT_LT(std::chrono::steady_clock::now() - keyed, std::chrono::seconds(4))
        << "the key did not end the intro";
    EXPECT_EQ(log().find("Unable to open AVI file"), std::string::npos);
    EXPECT_TRUE(running()) << "ended after its intro";
    kill(game, SIGKILL);  // its signal handlers would show a report and wait for a player
    waitpid(game, nullptr, 0);
}

}  // namespace
