// Sound handles, heard through the recording device: the volume curve, the
// master volume, looping, stopping and going on, and two handles in step. And
// what happens without a device at all.
#include <filesystem>

#include "audio/audio.h"
#include "audio/listening.h"

using namespace Listening;

namespace {

struct CurvePoint {
    float level;
    int32_t hundredths;
};

class VolumeCurve : public ::testing::TestWithParam<CurvePoint> {};

TEST_P(VolumeCurve, GivesTheDeviceVolumeInHundredthsOfADecibel) {
    EXPECT_EQ(Sound::volumeToHundredths(GetParam().level), GetParam().hundredths);
}

INSTANTIATE_TEST_SUITE_P(Audio, VolumeCurve,
                         ::testing::Values(CurvePoint{1.0f, 0}, CurvePoint{0.0f, -10000},
                                           CurvePoint{0.5f, -1294}, CurvePoint{0.25f, -2421},
                                           CurvePoint{0.1f, -3690}, CurvePoint{2.0f, 0},
                                           CurvePoint{-1.0f, -10000}));

struct RatePoint {
    float frequency;
    uint32_t base;
    uint32_t rate;
};

class PitchRates : public ::testing::TestWithParam<RatePoint> {};

TEST_P(PitchRates, RunFrom100HzThroughTheFilesOwnRateTo200000Hz) {
    EXPECT_EQ(Sound::frequencyToRate(GetParam().frequency, GetParam().base), GetParam().rate);
}

INSTANTIATE_TEST_SUITE_P(Audio, PitchRates,
                         ::testing::Values(RatePoint{-1.0f, 22050, 100}, RatePoint{0.0f, 22050, 22050},
                                           RatePoint{1.0f, 22050, 200000}, RatePoint{-0.5f, 22050, 11075},
                                           RatePoint{0.5f, 44100, 122050}, RatePoint{-3.0f, 8000, 100}));

using SoundTest = AudioTest;

// Each phase plays the tone from its start for a quarter second; the level of
// each is measured against the first, at full volume.
TEST_F(SoundTest, HandleAndMasterVolumePlayAtTheCurvesLevel) {
    struct Phase {
        float handleVolume;
        float masterVolume;
        double decibels;
    };
    const Phase phases[] = {{1.0f, 1.0f, 0.0},     {0.5f, 1.0f, -12.94}, {1.0f, 0.5f, -12.94},
                            {0.25f, 1.0f, -24.21}, {0.1f, 1.0f, -36.90}, {2.0f, 1.0f, 0.0}};
    write("tone.wav", waveFile(tone(1.0, 0.5)));
    ASSERT_TRUE(startSound());
    {
        Sound sound("tone.wav");
        for (const Phase& phase : phases) {
            SoundSystem::setVolume(phase.masterVolume);
            sound.setVolume(phase.handleVolume);
            sound.rewind();
            sound.play();
            sleepMilliseconds(250);
            sound.stop();
            sleepMilliseconds(120);
        }
    }
    const std::vector<float> recording = stopSound();
    const std::vector<Stretch> heard = stretches(recording);
    ASSERT_EQ(heard.size(), std::size(phases));
    const double full = middleLevel(recording, heard[0]);
    for (std::size_t i = 0; i < heard.size(); ++i) {
        const double measured = decibels(middleLevel(recording, heard[i]) / full);
        EXPECT_NEAR(measured, phases[i].decibels, 0.1) << "phase " << i;
        std::printf("[ level ] handle %.2f master %.2f: %.2f dB\n", phases[i].handleVolume,
                    phases[i].masterVolume, measured);
    }
}

TEST_F(SoundTest, ALoopKeepsItsLevelWhenTheMasterChangesUntilItsNextSetVolume) {
    write("tone.wav", waveFile(tone(1.0, 0.5)));
    ASSERT_TRUE(startSound());
    {
        Sound sound("tone.wav");
        sound.loop();
        sleepMilliseconds(300);
        SoundSystem::setVolume(0.5f);
        sleepMilliseconds(300);
        sound.setVolume();
        sleepMilliseconds(300);
    }
    const std::vector<float> recording = stopSound();
    const std::vector<Stretch> heard = stretches(recording);
    ASSERT_EQ(heard.size(), 1u);
    auto levelAt = [&](double from, double to) {
        const std::size_t begin = heard[0].begin + static_cast<std::size_t>(from * rate);
        return rms(recording, begin, begin + static_cast<std::size_t>((to - from) * rate));
    };
    const double before = levelAt(0.05, 0.25);
    EXPECT_NEAR(decibels(levelAt(0.35, 0.55) / before), 0.0, 0.1);
    EXPECT_NEAR(decibels(levelAt(0.65, 0.85) / before), -12.94, 0.1);
}

// A tenth of a second of tone, played for half a second: once through it
// stops, looped it wraps and goes on.
TEST_F(SoundTest, ALoopWrapsAndAPlayEndsWithTheSound) {
    for (const bool looping : {false, true}) {
        SCOPED_TRACE(looping ? "looping" : "once");
        write("short.wav", waveFile(tone(0.1, 0.5)));
        ASSERT_TRUE(startSound());
        {
            Sound sound("short.wav");
            looping ? sound.loop() : sound.play();
            EXPECT_EQ(sound.isLooping(), looping);
            sleepMilliseconds(500);
            sound.stop();
        }
        const std::vector<float> recording = stopSound();
        const std::vector<Stretch> heard = stretches(recording);
        ASSERT_EQ(heard.size(), 1u);
        EXPECT_NEAR(heard[0].seconds(), looping ? 0.5 : 0.1, 0.04);
    }
}

TEST_F(SoundTest, StopThenPlayGoesOnWhereItStoppedAndRewindStartsOver) {
    write("rising.wav", waveFile(rising(2.0, 0.8)));
    ASSERT_TRUE(startSound());
    {
        Sound sound("rising.wav");
        for (const bool rewindFirst : {false, false, true}) {
            if (rewindFirst) sound.rewind();
            sound.play();
            sleepMilliseconds(300);
            sound.stop();
            sleepMilliseconds(150);
        }
    }
    const std::vector<float> recording = stopSound();
    const std::vector<Stretch> heard = stretches(recording, 1e-3);
    ASSERT_EQ(heard.size(), 3u);
    const double firstEnd = startingPosition(recording, heard[0]) + heard[0].seconds();
    EXPECT_NEAR(startingPosition(recording, heard[0]), 0.0, 0.02);
    EXPECT_NEAR(startingPosition(recording, heard[1]), firstEnd, 0.03)
        << "the second play took up where the first stopped";
    EXPECT_NEAR(startingPosition(recording, heard[2]), 0.0, 0.02) << "after rewind it started over";
    std::printf("[ position ] first play ended at %.3f s, second began at %.3f s, third at %.3f s\n",
                firstEnd, startingPosition(recording, heard[1]), startingPosition(recording, heard[2]));
}

// Noise adds up to twice its level only where two copies play the same samples
// at once; out of step it adds up to the square root of two.
TEST_F(SoundTest, ASynchronisedHandlePlaysInStepWithTheOther) {
    for (const bool synchronise : {true, false}) {
        SCOPED_TRACE(synchronise ? "synchronised" : "free");
        write("noise.wav", waveFile(noise(1.0, 0.2)));
        ASSERT_TRUE(startSound());
        {
            Sound first("noise.wav");
            first.loop();
            sleepMilliseconds(300);
            Sound second("noise.wav");
            if (synchronise) {
                EXPECT_TRUE(second.synchroniseWith(first));
            }
            second.loop();
            sleepMilliseconds(300);
        }
        const std::vector<float> recording = stopSound();
        const std::vector<Stretch> heard = stretches(recording);
        ASSERT_EQ(heard.size(), 1u);
        const std::size_t at = heard[0].begin;
        const double one = rms(recording, at + rate / 20, at + rate / 4);
        const double two = rms(recording, at + rate * 7 / 20, at + rate * 11 / 20);
        const double gain = decibels(two / one);
        EXPECT_NEAR(gain, synchronise ? 6.02 : 3.01, 1.0);
        std::printf("[ level ] two loops %s: +%.2f dB\n", synchronise ? "in step" : "apart", gain);
    }
}

TEST_F(SoundTest, NamesThatDifferInCaseShareOneEntryReadOnce) {
    write("snd/Drip.wav", waveFile(tone(0.5, 0.5)));
    ASSERT_TRUE(startSound());
    {
        Sound first("snd\\drip.wav");
        std::filesystem::remove(scratch->path() / "snd" / "Drip.wav");
        Sound second("SND\\DRIP.WAV");
        second.play();
        EXPECT_TRUE(second.isPlaying()) << "the second handle plays what the first read";
        EXPECT_EQ(SoundManager::loadSound("Snd\\Drip.Wav")->refCount, 3u);
        SoundManager::freeSound("snd\\drip.wav");
        EXPECT_EQ(run("SoundList"), "\n\n" + std::string(64, '*') + "\n\nSounds in use\n\n" +
                                        std::string(64, '*') + "\n\n\nSND\\DRIP.WAV");
    }
    EXPECT_EQ(run("SoundList").find("DRIP"), std::string::npos) << "the last handle took the entry with it";
}

TEST_F(SoundTest, SoundMemoryCountsEachFileOnceWhateverItsHandles) {
    write("a.wav", waveFile(tone(0.1, 0.5)));
    write("b.wav", waveFile(tone(0.3, 0.5)));
    ASSERT_TRUE(startSound());
    const Sound a1("a.wav"), a2("a.wav"), b("b.wav"), copy(b);
    const std::string text = run("SoundMemory");
    EXPECT_EQ(text.substr(text.rfind('\n')), "\n" + std::to_string(2 * (4410 + 13230)) + " bytes.");
}

TEST_F(SoundTest, WithoutADeviceEverythingIsSilentAndSafe) {
    // A folder where the device would write its file: the device can't open.
    std::filesystem::remove(soundRecordingPath());
    std::filesystem::create_directories(soundRecordingPath());
    write("tone.wav", waveFile(tone(0.5, 0.5)));
    SoundSystem::initialise();
    SoundManager::initialise();
    std::filesystem::remove(soundRecordingPath());
    EXPECT_EQ(printed(), "\nError initialising sound subsystem.");
    EXPECT_FALSE(SoundSystem::hasDevice());
    Sound sound("tone.wav");
    const Sound other("tone.wav");
    sound.loop();
    EXPECT_FALSE(sound.isPlaying());
    EXPECT_FALSE(sound.isLooping());
    EXPECT_FALSE(sound.synchroniseWith(other));
    sound.setVolume(0.3f);
    sound.setPan(0.5f);
    sound.setFrequency(0.5f);
    EXPECT_FLOAT_EQ(sound.getVolume(), 0.3f) << "the volume is stored even so";
    EXPECT_FLOAT_EQ(sound.getPan(), 0.0f);
    EXPECT_FLOAT_EQ(sound.getFrequency(), 0.0f);
    EXPECT_NE(run("SoundList").find("\nTONE.WAV (loading failed)"), std::string::npos);
    EXPECT_EQ(printed(), "");
}

// Handles may outlive the device, and a device that comes back doesn't take
// them up again.
TEST_F(SoundTest, HandlesThatOutliveTheDeviceStaySilent) {
    write("tone.wav", waveFile(tone(0.5, 0.5)));
    ASSERT_TRUE(startSound());
    auto kept = std::make_unique<Sound>("tone.wav");
    kept->loop();
    EXPECT_TRUE(kept->isPlaying());
    SoundManager::shutdown();
    SoundSystem::shutdown();
    EXPECT_FALSE(kept->isPlaying());
    ASSERT_TRUE(startSound());
    kept->loop();
    EXPECT_FALSE(kept->isPlaying());
    Sound fresh("tone.wav");
    fresh.loop();
    EXPECT_TRUE(fresh.isPlaying());
    kept.reset();
    EXPECT_TRUE(fresh.isPlaying());
}

}  // namespace
