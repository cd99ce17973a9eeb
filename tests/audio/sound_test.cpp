// Sound handles heard through the recording device: the volume curve and the
// master volume, looping, stopping and going on; one entry per file; and what
// happens without a device at all.
#include <filesystem>

#include "audio/audio.h"
#include "audio/listening.h"

using namespace Listening;

namespace {

using SoundTest = AudioTest;

// Each phase plays the tone from its start; its level is measured against the first.
TEST_F(SoundTest, HandleAndMasterVolumePlayAtTheCurvesLevel) {
    const struct {
        float handle, master;
        double decibels;
    } phases[] = {{1.0f, 1.0f, 0.0},
                  {0.5f, 1.0f, -12.94},
                  {1.0f, 0.5f, -12.94},
                  {0.1f, 1.0f, -36.90},
                  {2.0f, 1.0f, 0.0}};
    write("tone.wav", waveFile(tone(1.0, 0.5)));
    ASSERT_TRUE(startSound());
    Sound sound("tone.wav");
    for (const auto& phase : phases) {
        SoundSystem::setVolume(phase.master);
        sound.setVolume(phase.handle);
        sound.rewind();
        sound.play();
        sleepMilliseconds(250);
        sound.stop();
        sleepMilliseconds(120);
    }
    const std::vector<float> recording = stopSound();
    const std::vector<Stretch> heard = stretches(recording);
    ASSERT_EQ(heard.size(), std::size(phases));
    for (std::size_t i = 0; i < heard.size(); ++i) {
        const double measured = decibels(middleLevel(recording, heard[i]) / middleLevel(recording, heard[0]));
        EXPECT_NEAR(measured, phases[i].decibels, 0.1) << "phase " << i;
    }
}

// A tenth of a second of tone, played for half a second.
TEST_F(SoundTest, ALoopWrapsAndAPlayEndsWithTheSound) {
    write("short.wav", waveFile(tone(0.1, 0.5)));
    for (const bool looping : {false, true}) {
        ASSERT_TRUE(startSound());
        Sound sound("short.wav");
        looping ? sound.loop() : sound.play();
        EXPECT_EQ(sound.isLooping(), looping);
        sleepMilliseconds(500);
        sound.stop();
        const std::vector<Stretch> heard = stretches(stopSound());
        ASSERT_EQ(heard.size(), 1u);
        EXPECT_NEAR(heard[0].seconds(), looping ? 0.5 : 0.1, 0.04) << (looping ? "looped" : "once");
    }
}

TEST_F(SoundTest, StopThenPlayGoesOnWhereItStoppedAndRewindStartsOver) {
    write("rising.wav", waveFile(rising(2.0, 0.8)));
    ASSERT_TRUE(startSound());
    Sound sound("rising.wav");
    for (const bool rewindFirst : {false, false, true}) {
        if (rewindFirst) sound.rewind();
        sound.play();
        sleepMilliseconds(300);
        sound.stop();
        sleepMilliseconds(150);
    }
    const std::vector<float> recording = stopSound();
    const std::vector<Stretch> heard = stretches(recording, 1e-3);
    ASSERT_EQ(heard.size(), 3u);
    const double firstEnd = startingPosition(recording, heard[0]) + heard[0].seconds();
    EXPECT_NEAR(startingPosition(recording, heard[0]), 0.0, 0.02);
    EXPECT_NEAR(startingPosition(recording, heard[1]), firstEnd, 0.03) << "the second play went on";
    EXPECT_NEAR(startingPosition(recording, heard[2]), 0.0, 0.02) << "after rewind it started over";
}

// The file is gone before the second handle: it plays what the first read.
TEST_F(SoundTest, OneEntryPerFileWhateverTheCaseOfItsNameAndItsHandles) {
    write("snd/Drip.wav", waveFile(tone(0.5, 0.5)));
    write("b.wav", waveFile(tone(0.1, 0.5)));
    ASSERT_TRUE(startSound());
    {
        const Sound first("snd\\drip.wav"), other("b.wav"), copy(other);
        std::filesystem::remove(scratch->path() / "snd" / "Drip.wav");
        Sound second("SND\\DRIP.WAV");
        second.play();
        EXPECT_TRUE(second.isPlaying());
        EXPECT_EQ(SoundManager::loadSound("Snd\\Drip.Wav")->refCount, 3u);
        SoundManager::freeSound("snd\\drip.wav");
        const std::string list = run("SoundList");
        EXPECT_EQ(list.substr(list.rfind("*\n\n") + 3), "\nB.WAV\nSND\\DRIP.WAV");
        const std::string memory = run("SoundMemory");
        EXPECT_EQ(memory.substr(memory.rfind('\n')), "\n" + std::to_string(2 * (22050 + 4410)) + " bytes.");
    }
    EXPECT_EQ(run("SoundList").find("DRIP"), std::string::npos) << "the last handle took the entry with it";
}

TEST_F(SoundTest, WithoutADeviceEverythingIsSilentAndSafe) {
    // The device can't write its file where a folder stands.
    std::filesystem::remove(soundRecordingPath());
    std::filesystem::create_directories(soundRecordingPath());
    write("tone.wav", waveFile(tone(0.5, 0.5)));
    EXPECT_FALSE(startSound());
    std::filesystem::remove(soundRecordingPath());
    EXPECT_EQ(printed(), "\nError initialising sound subsystem.");
    Sound sound("tone.wav");
    const Sound other(sound);
    sound.loop();
    EXPECT_FALSE(sound.isPlaying() || sound.isLooping() || sound.synchroniseWith(other));
    sound.setVolume(0.3f);
    sound.setPan(0.5f);
    EXPECT_EQ(sound.getVolume(), 0.3f) << "the volume is stored even so";
    EXPECT_EQ(sound.getPan(), 0.0f);
    EXPECT_NE(run("SoundList").find("\nTONE.WAV (loading failed)"), std::string::npos);
}

// A handle may outlive the device, and a device that comes back doesn't take it up.
TEST_F(SoundTest, HandlesThatOutliveTheDeviceStaySilent) {
    write("tone.wav", waveFile(tone(0.5, 0.5)));
    ASSERT_TRUE(startSound());
    auto kept = std::make_unique<Sound>("tone.wav");
    kept->loop();
    stopSound();
    EXPECT_FALSE(kept->isPlaying());
    ASSERT_TRUE(startSound());
    kept->loop();
    Sound fresh("tone.wav");
    fresh.loop();
    EXPECT_FALSE(kept->isPlaying());
    kept.reset();
    EXPECT_TRUE(fresh.isPlaying());
}

}  // namespace
