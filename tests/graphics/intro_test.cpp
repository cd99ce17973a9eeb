// The intro's video player and screen: files it refuses, its pace, the picture upright, and its endings.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>

#include "audio/audio.h"
#include "graphics/graphics.h"
#include "platform/window_backend.h"
#include "real_window.h"
#include "support/content_support.h"
#include "support/test_support.h"
#include "test_videos.h"

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

void PrintTo(const VideoFile& file, std::ostream* out) {
    *out << file.name;
}

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

class VideoFiles : public ::testing::TestWithParam<VideoFile> {};

TEST_P(VideoFiles, OpenOrSayOnceThatTheyCannot) {
    ScratchFolder folder;
    if (GetParam().bytes) folder.write("vid/intro.avi", GetParam().bytes());
    RealWindow window;
    ConsoleCapture capture;
    GLAviPlayer player(videoName);
    EXPECT_EQ(capture.text(), GetParam().opens ? "" : refusal);
    EXPECT_EQ(player.loaded(), GetParam().opens);
    EXPECT_EQ(player.finished(), !GetParam().opens);
    EXPECT_EQ(player.texture != 0, GetParam().opens);
}
INSTANTIATE_TEST_SUITE_P(Intro, VideoFiles, ::testing::ValuesIn(videoFiles));

// The texture is made once at the next powers of two; the frame fills its corner.
TEST(GLAviPlayer, TakesATextureOfTheNextPowersOfTwo) {
    struct Size {
        int width, height, textureWidth, textureHeight;
    };
    ScratchFolder folder;
    RealWindow window;
    for (const Size& size :
         {Size{320, 240, 512, 256}, Size{640, 480, 1024, 512}, Size{257, 129, 512, 256}, Size{1, 1, 1, 1}}) {
        folder.write("vid/intro.avi", makeAvi(testVideo(size.width, size.height, 1)));
        GLAviPlayer player(videoName);
        ASSERT_TRUE(player.loaded()) << size.width << "x" << size.height;
        EXPECT_EQ(player.textureWidth, size.textureWidth);
        EXPECT_EQ(player.textureHeight, size.textureHeight);
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
        EXPECT_EQ(player.currentFrame, turn.frame) << "after " << turn.milliseconds << " ms";
        EXPECT_EQ(player.frameElapsed, turn.elapsed) << "after " << turn.milliseconds << " ms";
    }
    EXPECT_TRUE(player.finished());
    EXPECT_TRUE(player.loaded());
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

void PrintTo(const EndingEvent& event, std::ostream* out) {
    *out << event.name;
}

const EndingEvent endingEvents[] = {
    {"a key", [] { WindowBackend::queueKey("Space", true); }, true},
    {"a mouse button", [] { WindowBackend::queueMouseButton(10, 10, 2, true); }, true},
    {"the window closed", [] { WindowBackend::queueClose(); }, false},
};

class IntroEndings : public ::testing::TestWithParam<EndingEvent> {};

TEST_P(IntroEndings, EndTheIntroOnTheNextTurnAndStopTheMusic) {
    ScratchFolder folder;
    folder.write("vid/intro.avi", makeAvi(testVideo(8, 4, 10)));
    folder.write("vid/intro.ogg", readBytes(bakedDataFolder() / "vid" / "intro.ogg"));
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    ManualClock clock;  // the video stands still: only the event can end it
    RealWindow window;
    MusicSystem::initialise();
    GLWindowEventListener before;
    GLWindow::setEventListener(&before);
    EXPECT_EQ(IntroTurns::run(GetParam().queue), 3);
    EXPECT_EQ(GLWindow::exists(), GetParam().windowStays);
    EXPECT_EQ(GLWindow::getEventListener(), &before);
    EXPECT_TRUE(IntroTurns::musicDuringIntro);
    EXPECT_FALSE(MusicSystem::pause()) << "the sound track still stands after the intro";
    MusicSystem::shutdown();
    unsetenv("SDL_AUDIODRIVER");
}
INSTANTIATE_TEST_SUITE_P(Intro, IntroEndings, ::testing::ValuesIn(endingEvents));

TEST(IntroScreen, WithoutItsVideoSaysSoAndEndsAtOnce) {
    ScratchFolder folder;
    RealWindow window;
    ConsoleCapture capture;
    EXPECT_EQ(IntroTurns::run(nullptr), 0);
    EXPECT_EQ(capture.text(), refusal);
    EXPECT_TRUE(GLWindow::exists());
}

}  // namespace
