// Sound sources in the level: loops that fade with the view's distance and
// rejoin loops of their file in step, the trigger actions, the reset, and the
// console commands.
#include <cmath>

#include "audio/audio.h"
#include "audio/listening.h"
#include "audio/sound_source_state.h"
#include "game/game.h"

using namespace Listening;

namespace {

class SoundSourceTest : public AudioTest {
protected:
    void SetUp() override {
        AudioTest::SetUp();
        Camera::setPosition(Vector2D(0.0f, 0.0f));
        write("tone.wav", waveFile(tone(1.0, 0.5)));
        ASSERT_TRUE(startSound());
        SoundSourceManager::initialise();
    }

    static void addLoop(int32_t id, float x, float strength, const char* file = "tone.wav") {
        SoundSourceManager::addSoundSource(SoundSource(Sound(file), x, 0.0f, true, id, strength));
    }
    // As a level starts: every loop that no trigger starts runs from here.
    static void startLevel(const std::vector<int32_t>& triggered = {}) {
        SoundSourceManager::playExcludedSounds(triggered);
        SoundSourceManager::updateAllSounds();
    }
    static void viewAt(float x) {
        Camera::setPosition(Vector2D(x, 0.0f));
        SoundSourceManager::updateAllSounds();
    }
    static const SoundSource& only(int32_t id) {
        std::vector<const SoundSource*> sources;
        SoundSourceManager::getSoundSources(id, sources);
        EXPECT_EQ(sources.size(), 1u);
        return *sources.front();
    }
};

double curveDecibels(float level) {
    return Sound::volumeToHundredths(level) / 100.0;
}

// The view moves from phase to phase, with a pause out of range between.
TEST_F(SoundSourceTest, ALoopFadesWithTheViewsDistanceOnTheVolumeCurve) {
    struct Phase {
        float distance;
        bool heard;
    };
    const Phase phases[] = {{0.0f, true}, {500.0f, true}, {1000.0f, false}, {900.0f, true}, {990.0f, true}};
    addLoop(1, 0.0f, 1000.0f);
    viewAt(5000.0f);
    startLevel();
    for (const Phase& phase : phases) {
        viewAt(phase.distance);
        EXPECT_EQ(only(1).sound.isPlaying(), phase.heard) << "at " << phase.distance;
        sleepMilliseconds(250);
        viewAt(5000.0f);
        sleepMilliseconds(120);
    }
    const std::vector<float> recording = stopSound();
    const std::vector<Stretch> heard = stretches(recording);
    ASSERT_EQ(heard.size(), 4u) << "silent at exactly the source's strength";
    const double full = middleLevel(recording, heard[0]);
    std::size_t stretch = 0;
    for (const Phase& phase : phases) {
        if (!phase.heard) continue;
        const float level = 1.0f - phase.distance / 1000.0f;
        const double measured = decibels(middleLevel(recording, heard[stretch++]) / full);
        EXPECT_NEAR(measured, curveDecibels(level), 0.1) << "at " << phase.distance;
        std::printf("[ level ] view %4.0f from the source (level %.2f): %.2f dB\n", phase.distance, level,
                    measured);
    }
}

struct EdgeCase {
    float strength;
    float distance;
    bool heard;
};

class AudibleEdge : public SoundSourceTest, public ::testing::WithParamInterface<EdgeCase> {};

TEST_P(AudibleEdge, DecidesWhetherTheLoopPlays) {
    addLoop(4, GetParam().distance, GetParam().strength);
    startLevel();
    EXPECT_EQ(only(4).sound.isPlaying(), GetParam().heard);
}

INSTANTIATE_TEST_SUITE_P(Audio, AudibleEdge,
                         ::testing::Values(EdgeCase{1000.0f, 0.0f, true}, EdgeCase{1000.0f, 990.0f, true},
                                           EdgeCase{1000.0f, 1000.0f, false},
                                           EdgeCase{1000.0f, 1500.0f, false}, EdgeCase{0.0f, 0.0f, false},
                                           EdgeCase{0.0f, 5.0f, false}));

// Two loops of one noise, 800 apart. The view hears the first alone, then
// stands half way, where both play at level 0.6: in step they add to twice
// the level, apart to the square root of two. The walk that finds a loop to
// join stops at the first silent loop, so a silent third loop ahead of both
// in the store leaves the second out of step.
class LoopsOfOneFile : public SoundSourceTest, public ::testing::WithParamInterface<bool> {};

TEST_P(LoopsOfOneFile, RejoinInStepWhenTheViewComesIntoRange) {
    const bool blocked = GetParam();
    write("noise.wav", waveFile(noise(1.0, 0.2)));
    if (blocked) addLoop(1, 5000.0f, 1000.0f, "noise.wav");
    addLoop(2, 0.0f, 1000.0f, "noise.wav");
    addLoop(3, 800.0f, 1000.0f, "noise.wav");
    viewAt(-300.0f);
    startLevel();
    sleepMilliseconds(300);
    viewAt(400.0f);
    EXPECT_TRUE(only(3).sound.isPlaying());
    sleepMilliseconds(300);
    const std::vector<float> recording = stopSound();
    const std::vector<Stretch> heard = stretches(recording);
    ASSERT_EQ(heard.size(), 1u);
    const std::size_t at = heard[0].begin;
    const double gain = decibels(rms(recording, at + rate * 7 / 20, at + rate * 11 / 20) /
                                 rms(recording, at + rate / 20, at + rate / 4));
    const double sum = blocked ? decibels(std::sqrt(2.0)) : decibels(2.0);
    EXPECT_NEAR(gain, sum + curveDecibels(0.6f) - curveDecibels(0.7f), 1.0);
    std::printf("[ level ] second loop %s: %+.2f dB\n", blocked ? "out of step" : "in step", gain);
}

INSTANTIATE_TEST_SUITE_P(Audio, LoopsOfOneFile, ::testing::Bool());

TEST_F(SoundSourceTest, ALoopWithATriggerStaysSilentUntilTheTriggerFires) {
    addLoop(5, 0.0f, 1000.0f);
    addLoop(6, 0.0f, 1000.0f);
    startLevel({5});
    EXPECT_FALSE(only(5).sound.isPlaying());
    EXPECT_TRUE(only(6).sound.isPlaying());
    SoundSourceManager::playSounds(5);
    SoundSourceManager::updateAllSounds();
    EXPECT_TRUE(only(5).sound.isPlaying());
    SoundSourceManager::stopSounds(5);
    SoundSourceManager::updateAllSounds();
    EXPECT_FALSE(only(5).sound.isPlaying());
    EXPECT_TRUE(only(5).stopped);
    SoundSourceManager::pauseAllSounds();
    EXPECT_FALSE(only(6).sound.isPlaying());
    EXPECT_FALSE(only(6).stopped) << "a pause leaves the flag alone";
}

// A loop that ran for a while is rewound by the reset, and the level's start
// plays it again from its first sample.
TEST_F(SoundSourceTest, ResetStopsAndRewindsAndTheLevelsStartPlaysFromTheBeginning) {
    write("rising.wav", waveFile(rising(2.0, 0.8)));
    addLoop(1, 0.0f, 1000.0f, "rising.wav");
    startLevel();
    sleepMilliseconds(400);
    SoundSourceManager::resetSounds();
    EXPECT_FALSE(only(1).sound.isPlaying());
    EXPECT_TRUE(only(1).stopped);
    sleepMilliseconds(150);
    startLevel();
    sleepMilliseconds(300);
    const std::vector<float> recording = stopSound();
    const std::vector<Stretch> heard = stretches(recording, 1e-3);
    ASSERT_EQ(heard.size(), 2u);
    EXPECT_NEAR(startingPosition(recording, heard[1]), 0.0, 0.03);
}

TEST_F(SoundSourceTest, ConsoleSourcesAreSilentUntilTriggeredAndOneShotsPlayOnce) {
    EXPECT_EQ(run("SoundSourceCreate 0 0 1000 true 7 tone.wav"), "");
    EXPECT_EQ(run("SoundSourceCreate 10 0 1000 false 8 tone.wav"), "");
    EXPECT_EQ(run("SoundSourceCount"), "\nSoundSourceCount is 2");
    EXPECT_FALSE(only(7).sound.isPlaying()) << "however near";
    SoundSourceManager::playSounds(7);
    SoundSourceManager::playSounds(8);
    EXPECT_TRUE(only(7).sound.isLooping());
    EXPECT_TRUE(only(8).sound.isPlaying());
    EXPECT_FALSE(only(8).sound.isLooping());
    EXPECT_EQ(only(8).position, Vector2D(10.0f, 0.0f));
}

class BadSourceLine : public SoundSourceTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(BadSourceLine, PrintsTheUsageAndMakesNothing) {
    EXPECT_EQ(run(std::string("SoundSourceCreate ") + GetParam()),
              "\nUSAGE: SoundSourceCreate < x : number > < y : number > < strenght : number > "
              "< looping : true OR false > < id : integer > < fileName > ");
    EXPECT_EQ(run("SoundSourceCount"), "\nSoundSourceCount is 0");
}

INSTANTIATE_TEST_SUITE_P(Audio, BadSourceLine,
                         ::testing::Values("", "1 2 3 true 4", "1 2 3 true 4 a.wav b.wav",
                                           "x 2 3 true 4 a.wav", "1 y 3 true 4 a.wav", "1 2 z true 4 a.wav",
                                           "1 2 3 maybe 4 a.wav", "1 2 3 true 4.5 a.wav"));

TEST_F(SoundSourceTest, TheDrawSwitchIsACommandAndTheResetTurnsItOff) {
    EXPECT_EQ(run("SoundSourceDraw true"), "\nSoundSourceDraw is now true");
    EXPECT_TRUE(SoundSourceManager::state().draw);
    SoundSourceManager::resetSounds();
    EXPECT_EQ(run("SoundSourceDraw"), "\nSoundSourceDraw is false");
}

}  // namespace
