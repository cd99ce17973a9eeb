// Streamed music heard through SDL's disk driver: once through or looped,
// stopped, at the music volume, and going on after a pause; the console
// commands; a file that won't open; a machine without audio output.
#include <cstdlib>
#include <filesystem>

#include "audio/audio.h"
#include "audio/listening.h"

using namespace Listening;

namespace {

class MusicTest : public AudioTest {
protected:
    void SetUp() override {
        AudioTest::SetUp();
        write("music.wav", waveFile(tone(0.2, 0.5)));
        write("long.wav", waveFile(tone(2.0, 0.5)));
        write("rising.wav", waveFile(rising(2.0, 0.8)));
    }
    // Shutting the music down completes the recording.
    static std::vector<float> stopMusic() {
        MusicSystem::shutdown();
        return musicRecording();
    }
};

TEST_F(MusicTest, PlaysOnceThroughOrLoopsUntilStopped) {
    for (const bool loop : {false, true}) {
        MusicSystem::initialise();
        EXPECT_EQ(printed(), "\nMusic subsystem initialised successfully.");
        ASSERT_TRUE(MusicSystem::play("music.wav", loop));
        sleepMilliseconds(800);
        EXPECT_TRUE(MusicSystem::stop());
        sleepMilliseconds(100);
        const std::vector<Stretch> heard = stretches(stopMusic(), 1e-3);
        ASSERT_EQ(heard.size(), 1u);
        EXPECT_NEAR(heard[0].seconds(), loop ? 0.8 : 0.2, 0.07) << (loop ? "looped" : "once");
    }
}

// Volume 0 between the phases parts them in the recording.
TEST_F(MusicTest, TheVolumeScalesTheMusicAndZeroSilencesIt) {
    MusicSystem::initialise();
    MusicSystem::setVolume(0);
    ASSERT_TRUE(MusicSystem::play("long.wav", true));
    sleepMilliseconds(200);
    for (const uint8_t volume : std::initializer_list<uint8_t>{255, 0, 128, 0, 64}) {
        MusicSystem::setVolume(volume);
        sleepMilliseconds(volume ? 300 : 150);
    }
    const std::vector<float> recording = stopMusic();
    const std::vector<Stretch> heard = stretches(recording, 1e-3);
    ASSERT_EQ(heard.size(), 3u) << "nothing heard at volume 0, not even at the start";
    const double half = decibels(middleLevel(recording, heard[1]) / middleLevel(recording, heard[0]));
    const double quarter = decibels(middleLevel(recording, heard[2]) / middleLevel(recording, heard[0]));
    EXPECT_NEAR(half, -6.02, 0.1);
    EXPECT_NEAR(quarter, -12.04, 0.1);
}

TEST_F(MusicTest, PauseAndResumeGoOnFromTheStoredPosition) {
    MusicSystem::initialise();
    ASSERT_TRUE(MusicSystem::play("rising.wav", false));
    sleepMilliseconds(400);
    EXPECT_TRUE(MusicSystem::pause());
    EXPECT_TRUE(MusicSystem::pause()) << "a second pause keeps the stopped stream's position";
    sleepMilliseconds(200);
    EXPECT_TRUE(MusicSystem::resume());
    sleepMilliseconds(400);
    const std::vector<float> recording = stopMusic();
    const std::vector<Stretch> heard = stretches(recording, 2e-3);
    ASSERT_EQ(heard.size(), 2u);
    const double pausedAt = startingPosition(recording, heard[0]) + heard[0].seconds();
    EXPECT_NEAR(startingPosition(recording, heard[1]), pausedAt, 0.06);
}

TEST_F(MusicTest, ConsoleCommandsAndAFileThatWontOpen) {
    MusicSystem::initialise();
    const std::pair<const char*, const char*> lines[] = {
        {"MusicSystemInitialised", "\nMusicSystemInitialised is true"},
        {"MusicVolume 300", "\nMusicVolume is now 255"},
        {"MusicVolume -1", "\nMusicVolume is now 0"},
        {"MusicPlay", "\nUSAGE: MusicPlay < file name >"},
        {"MusicPlay music.wav", "\nFile opened successfully."},
    };
    for (const auto& [line, answer] : lines) EXPECT_EQ(run(line), answer) << line;
    EXPECT_FALSE(MusicSystem::play("", true));
    EXPECT_TRUE(MusicSystem::pause()) << "an empty name leaves the stream playing";
    EXPECT_EQ(run("MusicPlay missing.ogg"), "\nFailed to open file.");
    EXPECT_FALSE(MusicSystem::pause()) << "the old stream went before the new one failed";
    EXPECT_TRUE(MusicSystem::stop());
}

TEST_F(MusicTest, WithoutAnAudioOutputTheGameRunsOnSilently) {
    const std::string driver = std::getenv("SDL_AUDIODRIVER");
    setenv("SDL_AUDIODRIVER", "no-such-driver", 1);
    MusicSystem::initialise();
    setenv("SDL_AUDIODRIVER", driver.c_str(), 1);
    EXPECT_EQ(printed(), "\nError initialising music subsystem.");
    EXPECT_EQ(run("MusicVolume 200"), "\nMusicVolume is now 0");
    EXPECT_FALSE(MusicSystem::play("music.wav", true) || MusicSystem::pause() || MusicSystem::resume());
}

// The level's music as the game ships it, in Ogg Vorbis.
TEST_F(MusicTest, TheBakedLevelMusicPlays) {
    const char* binary = std::getenv("BROOKFALL_BINARY_DIR");
    const std::filesystem::path music =
        std::filesystem::path(binary ? binary : "") / "data/snd/music/brookfall.ogg";
    if (!binary || !std::filesystem::exists(music)) GTEST_SKIP() << "no baked data folder";
    MusicSystem::initialise();
    ASSERT_TRUE(MusicSystem::play(music.string(), true));
    sleepMilliseconds(500);
    const std::vector<float> recording = stopMusic();
    EXPECT_GT(rms(recording, 0, recording.size()), 0.01);
}

}  // namespace
