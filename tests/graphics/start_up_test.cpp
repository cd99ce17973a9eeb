// The intro's video player and screen: files it refuses, its pace, the picture upright, and its endings.
// The start as the player sees it on the baked data, screenshots kept in the build folder.

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>
#include <tuple>

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
#include "test_videos.h"

namespace fs = std::filesystem;

namespace {

const std::string videoName = "vid\\intro.avi";
const std::string refusal = "\nUnable to open AVI file 'vid\\intro.avi'";

// Red above, blue below with the frame number in green, the last column green;
// 25 frames a second unless the rate says otherwise.
TestVideo testVideo(int width, int height, int frames, int64_t claimedFrames = -1, uint32_t rate = 25) {
    TestVideo video{width, height, rate, 1, frames, claimedFrames};
    video.pixel = [width, height](int frame, int x, int y) {
        if (x == width - 1) return Bgra{0, 255, 0, 255};
        if (y < height / 2) return Bgra{0, 0, 255, 255};
        return Bgra{255, static_cast<uint8_t>(frame * 100), 0, 255};
    };
    return video;
}

struct VideoFile {
    const char* name;
    std::function<std::string()> bytes;  // none: no file at all
    bool opens;
};

const VideoFile videoFiles[] = {
    {"one frame", [] { return makeAvi(testVideo(8, 4, 1)); }, true},
    {"65,535 frames stated", [] { return makeAvi(testVideo(8, 4, 2, 65535)); }, true},
    {"missing", nullptr, false},
    {"not a video", [] { return std::string("RIFF and nothing else"); }, false},
    {"no frames", [] { return makeAvi(testVideo(8, 4, 0)); }, false},
    {"65,536 frames stated", [] { return makeAvi(testVideo(8, 4, 2, 65536)); }, false},
    {"frames shorter than a millisecond", [] { return makeAvi(testVideo(8, 4, 2, -1, 3000)); }, false},
    {"a first frame that isn't there", [] { return makeAvi(testVideo(8, 4, 0, 1)); }, false},
    {"wider than any texture", [] { return makeAvi(testVideo(40000, 1, 1)); }, false},
    {"cut inside its headers", [] { return makeAvi(testVideo(8, 4, 2)).substr(0, 100); }, false},
};

TEST(GLAviPlayer, OpensAFileOrSaysOnceThatItCannot) {
    for (const VideoFile& file : videoFiles) {
        SCOPED_TRACE(file.name);
        ScratchFolder folder;
        if (file.bytes) folder.write("vid/intro.avi", file.bytes());
        RealWindow window;
        ConsoleCapture capture;
        GLAviPlayer player(videoName);
        EXPECT_EQ(capture.text(), file.opens ? "" : refusal);
        EXPECT_EQ(std::tuple(player.loaded(), player.finished(), player.texture != 0),
                  std::tuple(file.opens, !file.opens, file.opens));
    }
}

// At most one frame a turn, and only once a frame has stood longer than its length.
TEST(GLAviPlayer, AdvancesOneFrameATurnOnceAFrameHasStoodItsLength) {
    ScratchFolder folder;
    folder.write("vid/intro.avi", makeAvi(testVideo(8, 4, 4)));  // 25 a second: 40 ms each
    ManualClock clock;
    GLAviPlayer player(videoName);
    ASSERT_EQ(player.frameLength, 40u);
    ASSERT_EQ(player.frameCount, 4u);
    struct Turn {
        unsigned milliseconds, frame, elapsed;
    };
    for (const Turn& turn : {Turn{40, 0, 40}, Turn{1, 1, 0}, Turn{500, 2, 0}, Turn{10, 2, 10}, Turn{31, 3, 0},
                             Turn{41, 4, 0}, Turn{100, 4, 0}}) {
        clock.advanceMilliseconds(turn.milliseconds);
        player.play();
        EXPECT_EQ(std::pair(player.currentFrame, player.frameElapsed), std::pair(turn.frame, turn.elapsed))
            << "after " << turn.milliseconds << " ms";
    }
    EXPECT_TRUE(player.finished() && player.loaded());
}

// The video fills the window's height, centred, upright, with no edge of the
// texture's unused part; frames come in order, and a rewind shows the first again.
TEST(GLAviPlayer, DrawsTheFrameUprightAcrossTheWindowsHeight) {
    const Rgb red{255, 0, 0}, green{0, 255, 0}, black{0, 0, 0};
    auto blue = [](int frame) { return Rgb{0, frame * 100, 255}; };
    struct Probe {
        int x, y;
        Rgb colour;
    };
    struct Case {
        int windowWidth;
        std::vector<Probe> frame0;
    };
    const Case cases[] = {
        {320, {{1, 1, red}, {318, 1, red}, {1, 238, blue(0)}, {319, 120, green}}},
        {400, {{20, 120, black}, {41, 1, red}, {41, 238, blue(0)}, {359, 120, green}, {380, 120, black}}},
    };
    ScratchFolder folder;
    folder.write("vid/intro.avi", makeAvi(testVideo(320, 240, 3)));
    ManualClock clock;
    for (const Case& c : cases) {
        RealWindow window(c.windowWidth, 240);
        GLAviPlayer player(videoName);
        ASSERT_TRUE(player.loaded());
        player.draw();
        for (const Probe& probe : c.frame0)
            EXPECT_TRUE(near(readPixel(probe.x, probe.y), probe.colour))
                << "window " << c.windowWidth << " at " << probe.x << "," << probe.y;
        const int x = c.windowWidth / 2, y = 200;
        for (int frame = 1; frame < 3; ++frame) {
            clock.advanceMilliseconds(41);
            player.play();
            player.draw();
            EXPECT_TRUE(near(readPixel(x, y), blue(frame))) << "frame " << frame;
        }
        player.rewind();
        player.draw();
        EXPECT_TRUE(near(readPixel(x, y), blue(0))) << "after the rewind";
    }
}

// Shipped intro bytes cut short or overwritten: each file either opens or says
// so in its one line, and playing it ends within its frame count.
TEST(GLAviPlayer, SpoiledIntroFilesEndWithoutHarm) {
    const std::string intro = readBytes(bakedDataFolder() / "vid" / "intro.avi");
    ASSERT_GT(intro.size(), 10000u);
    const std::size_t size = intro.size();
    struct Spoil {
        std::size_t at;
        bool cut;  // else 64 bytes there are inverted
    };
    ScratchFolder folder;
    ManualClock clock;
    for (const Spoil& spoil :
         {Spoil{0, true}, Spoil{12, true}, Spoil{300, true}, Spoil{6000, true}, Spoil{size / 2, true},
          Spoil{size - 9, true}, Spoil{0, false}, Spoil{24, false}, Spoil{200, false}, Spoil{5000, false},
          Spoil{size / 3, false}, Spoil{size - 300, false}}) {
        std::string bytes = intro.substr(0, spoil.cut ? spoil.at : size);
        if (!spoil.cut)
            for (std::size_t i = spoil.at; i < std::min(size, spoil.at + 64); ++i)
                bytes[i] = static_cast<char>(~bytes[i]);
        folder.write("vid/intro.avi", bytes);
        const std::string what = (spoil.cut ? "cut at " : "inverted at ") + std::to_string(spoil.at);
        ConsoleCapture capture;
        GLAviPlayer player(videoName);
        EXPECT_EQ(capture.text(), player.loaded() ? "" : refusal) << what;
        for (unsigned turn = 0; turn <= player.frameCount && !player.finished(); ++turn) {
            clock.advanceMilliseconds(player.frameLength + 1);
            player.play();
        }
        EXPECT_TRUE(player.finished()) << what;
    }
}

// The loop's turns, counted by the window's modal loop hook; on turn 2 the
// case's event is queued, and the loop must end on the turn that delivers it.
struct IntroTurns {
    static inline int turns = 0;
    static inline void (*event)() = nullptr;
    static inline bool musicDuringIntro = false;
    static void turn() {
        if (++turns == 2 && event) {
            musicDuringIntro = MusicSystem::pause() && MusicSystem::resume();
            event();
        }
        if (turns > 100) GLWindow::close();  // the test fails, and ends
    }
    // Runs the intro screen; the turns it took.
    static int run(void (*queued)()) {
        turns = 0;
        event = queued;
        GLWindow::Headless::setModalLoopDriver(turn);
        IntroScreen().run();
        GLWindow::Headless::setModalLoopDriver(nullptr);
        return turns;
    }
};

struct EndingEvent {
    const char* name;
    void (*queue)();
    bool windowStays;
};

const EndingEvent endingEvents[] = {
    {"a key", [] { WindowBackend::queueKey("Space", true); }, true},
    {"a mouse button", [] { WindowBackend::queueMouseButton(10, 10, 2, true); }, true},
    {"the window closed", [] { WindowBackend::queueClose(); }, false},
};

TEST(IntroScreen, EndsOnTheTurnAfterAKeyAButtonOrACloseAndStopsTheMusic) {
    const Setting audio("SDL_AUDIODRIVER", "dummy");
    for (const EndingEvent& ending : endingEvents) {
        SCOPED_TRACE(ending.name);
        ScratchFolder folder;
        folder.write("vid/intro.avi", makeAvi(testVideo(8, 4, 10)));
        folder.write("vid/intro.ogg", readBytes(bakedDataFolder() / "vid" / "intro.ogg"));
        ManualClock clock;  // the video stands still: only the event can end it
        RealWindow window;
        MusicSystem::initialise();
        GLWindowEventListener before;
        GLWindow::setEventListener(&before);
        EXPECT_EQ(IntroTurns::run(ending.queue), 3);
        EXPECT_EQ(GLWindow::exists(), ending.windowStays);
        EXPECT_EQ(GLWindow::getEventListener(), &before);
        EXPECT_TRUE(IntroTurns::musicDuringIntro);
        EXPECT_FALSE(MusicSystem::pause()) << "the sound track still stands after the intro";
        MusicSystem::shutdown();
    }
}

TEST(IntroScreen, WithoutItsVideoSaysSoAndEndsAtOnce) {
    ScratchFolder folder;
    RealWindow window;
    ConsoleCapture capture;
    EXPECT_EQ(IntroTurns::run(nullptr), 0);
    EXPECT_EQ(capture.text(), refusal);
    EXPECT_TRUE(GLWindow::exists());
}

// The turns of the intro's loop and then of the game's, one frame of the video
// (25 a second) or about one of the game's steps a turn on the hand-run clock.
struct StartUp {
    static inline ManualClock* clock = nullptr;
    static inline int turns = 0;
    static inline std::vector<std::string> shots;
    static void shoot(const std::string& name) {
        fs::create_directories(toolPath("screenshots"));
        const std::string path = (toolPath("screenshots") / name).string();
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
    double mean = 0.0, spread = 0.0, top = 0.0, bottom = 0.0;  // top, bottom: the means of those tenths
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
    const Setting audio("SDL_AUDIODRIVER", "dummy");
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
    IntroScreen().run();
    EXPECT_EQ(StartUp::turns, 101) << "the key ends the intro on the turn it arrives";
    EXPECT_EQ(capture.text().find("Unable to open AVI file"), std::string::npos);
    HighScores::loadScores();
    StartUp::turns = 0;
    GLWindow::Headless::setModalLoopDriver(StartUp::gameTurn);
    Game::run("maps\\testLevel.rill");
    GLWindow::Headless::setModalLoopDriver(nullptr);

    Game::stopServices();

    ASSERT_EQ(StartUp::shots.size(), 4u);
    std::vector<Look> looks;
    for (const std::string& shot : StartUp::shots) looks.push_back(look(shot));
    // The intro is water lit from above: its top stands lighter than its bottom.
    for (std::size_t i = 0; i < looks.size(); ++i) {
        EXPECT_GT(looks[i].mean, 10.0) << StartUp::shots[i] << " is black";
        EXPECT_GT(looks[i].spread, 5.0) << StartUp::shots[i] << " is one flat colour";
        EXPECT_TRUE(i == 0 || looks[i].mean != looks[i - 1].mean)
            << StartUp::shots[i] << " repeats the one before";
        EXPECT_TRUE(i == 3 || looks[i].top > looks[i].bottom + 10.0)
            << StartUp::shots[i] << " is upside down";
    }
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
