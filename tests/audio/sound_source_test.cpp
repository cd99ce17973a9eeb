// Sound sources in the level: loops that fade with the view's distance and
// rejoin loops of their file in step, the trigger actions, the reset, and the
// console's sources.
#include <cmath>

#include "audio/audio.h"
#include "audio/listening.h"
#include "game/game.h"

using namespace Listening;

namespace {

class SoundSourceTest : public AudioTest {
protected:
    void SetUp() override {
        AudioTest::SetUp();
        write("tone.wav", waveFile(tone(1.0, 0.5)));
        ASSERT_TRUE(startSound());
        SoundSourceManager::initialise();
        viewAt(5000.0f);
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

// The view stands at each distance in turn, out of range between them.
TEST_F(SoundSourceTest, ALoopFadesWithTheViewsDistanceOnTheVolumeCurve) {
    const float distances[] = {0.0f, 500.0f, 1000.0f, 900.0f, 990.0f};
    addLoop(1, 0.0f, 1000.0f);
    startLevel();
    for (const float distance : distances) {
        viewAt(distance);
        EXPECT_EQ(only(1).sound.isPlaying(), distance < 1000.0f) << "at " << distance;
        sleepMilliseconds(250);
        viewAt(5000.0f);
        sleepMilliseconds(120);
    }
    const std::vector<float> recording = stopSound();
    const std::vector<Stretch> heard = stretches(recording);
    ASSERT_EQ(heard.size(), 4u) << "silent at exactly the source's strength";
    const float audible[] = {0.0f, 500.0f, 900.0f, 990.0f};
    for (std::size_t i = 0; i < heard.size(); ++i) {
        const float level = 1.0f - audible[i] / 1000.0f;
        const double measured = decibels(middleLevel(recording, heard[i]) / middleLevel(recording, heard[0]));
        EXPECT_NEAR(measured, curveDecibels(level), 0.1) << "at " << audible[i];
    }
}

// Two loops of one noise, 800 apart. The view hears the first alone, then
// stands half way, where both play at level 0.6: in step they add up to twice
// the level, apart to the square root of two. The walk that finds a loop to
// join stops at the first silent loop, so a silent loop ahead of both in the
// store leaves the second out of step.
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
    const double gain = decibels(rms(recording, heard[0], 0.35, 0.55) / rms(recording, heard[0], 0.05, 0.25));
    const double sum = decibels(blocked ? std::sqrt(2.0) : 2.0);
    EXPECT_NEAR(gain, sum + curveDecibels(0.6f) - curveDecibels(0.7f), 1.0);
}

INSTANTIATE_TEST_SUITE_P(Audio, LoopsOfOneFile, ::testing::Bool());

TEST_F(SoundSourceTest, ALoopWithATriggerStaysSilentUntilTheTriggerFires) {
    addLoop(5, 0.0f, 1000.0f);
    addLoop(6, 0.0f, 1000.0f);
    addLoop(1, 0.0f, 0.0f);  // a strength of 0 is silent even at the source's own place
    addLoop(2, 5.0f, 0.0f);
    viewAt(0.0f);
    startLevel({5});
    EXPECT_FALSE(only(1).sound.isPlaying() || only(2).sound.isPlaying());
    EXPECT_FALSE(only(5).sound.isPlaying());
    EXPECT_TRUE(only(6).sound.isPlaying());
    SoundSourceManager::playSounds(5);
    EXPECT_TRUE(only(5).sound.isLooping());
    SoundSourceManager::stopSounds(5);
    SoundSourceManager::updateAllSounds();
    EXPECT_FALSE(only(5).sound.isPlaying());
    SoundSourceManager::pauseAllSounds();
    EXPECT_FALSE(only(6).sound.isPlaying());
    EXPECT_FALSE(only(6).stopped) << "a pause leaves the flag alone";
}

// A loop that ran for a while is rewound by the reset and starts from its
// first sample with the level.
TEST_F(SoundSourceTest, ResetStopsAndRewindsAndTheLevelsStartPlaysFromTheBeginning) {
    write("rising.wav", waveFile(rising(2.0, 0.8)));
    addLoop(1, 0.0f, 1000.0f, "rising.wav");
    viewAt(0.0f);
    startLevel();
    sleepMilliseconds(400);
    SoundSourceManager::resetSounds();
    EXPECT_TRUE(only(1).stopped && !only(1).sound.isPlaying());
    sleepMilliseconds(150);
    startLevel();
    sleepMilliseconds(300);
    const std::vector<float> recording = stopSound();
    const std::vector<Stretch> heard = stretches(recording, 1e-3);
    ASSERT_EQ(heard.size(), 2u);
    EXPECT_NEAR(startingPosition(recording, heard[1]), 0.0, 0.03);
}

TEST_F(SoundSourceTest, ConsoleSourcesAreSilentUntilTriggeredAndBadLinesMakeNone) {
    viewAt(0.0f);
    for (const char* bad :
         {"", "1 2 3 true 4", "1 2 3 true 4 a.wav b.wav", "x 2 3 true 4 a.wav", "1 y 3 true 4 a.wav",
          "1 2 z true 4 a.wav", "1 2 3 maybe 4 a.wav", "1 2 3 true 4.5 a.wav"})
        EXPECT_EQ(run(std::string("SoundSourceCreate ") + bad),
                  "\nUSAGE: SoundSourceCreate < x : number > < y : number > < strenght : number > "
                  "< looping : true OR false > < id : integer > < fileName > ");
    EXPECT_EQ(run("SoundSourceCreate 0 0 1000 true 7 tone.wav"), "");
    EXPECT_EQ(run("SoundSourceCreate 10 0 1000 false 8 tone.wav"), "");
    EXPECT_EQ(run("SoundSourceCount"), "\nSoundSourceCount is 2");
    EXPECT_FALSE(only(7).sound.isPlaying()) << "however near";
    SoundSourceManager::playSounds(7);
    SoundSourceManager::playSounds(8);
    EXPECT_TRUE(only(7).sound.isLooping());
    EXPECT_TRUE(only(8).sound.isPlaying() && !only(8).sound.isLooping());
}

}  // namespace
