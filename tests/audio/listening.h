// Helpers of the audio tests, which listen to what is really played: OpenAL's
// wave-file device and SDL's disk driver record the output of the sound and the
// music to files in a folder of the test process, and these helpers make the
// wave files that are played, read the recordings back and measure them.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "support/test_support.h"

namespace Listening {

constexpr int rate = 44100;

// 441 Hz, so that a period is 100 samples. amplitude is a share of full scale.
std::vector<int16_t> tone(double seconds, double amplitude);
// The same tone growing from silence to amplitude over its length, so that
// its loudness tells the play position.
std::vector<int16_t> rising(double seconds, double amplitude);
// White noise: two copies sound twice as loud only when they play in step.
std::vector<int16_t> noise(double seconds, double amplitude);

// How a generated wave file is laid out; fields at -1 are worked out from the others.
struct WaveLayout {
    uint16_t formatTag = 1;
    uint16_t channels = 1;
    uint32_t samplesPerSecond = rate;
    int64_t bytesPerSecond = -1;
    int32_t blockAlign = -1;
    uint16_t bitsPerSample = 16;
    uint32_t formatSize = 16;    // bytes past 16 are written as zeros
    std::string beforeFormat;    // whole chunks ahead of "fmt "
    std::string beforeData;      // whole chunks between "fmt " and "data"
    int64_t dataSizeField = -1;  // the size written in the "data" header; -1 for the true one
};
std::string chunk(const char* id, const std::string& body);
std::string waveFile(const std::vector<int16_t>& samples, const WaveLayout& layout = WaveLayout());

// What a device wrote: the left channel, as floats of full scale 1.
std::vector<float> soundRecording();
std::vector<float> musicRecording();

// Stretches of the recording louder than threshold (RMS over 10 ms windows);
// quiet gaps shorter than minimumGap seconds don't split a stretch.
struct Stretch {
    std::size_t begin = 0;
    std::size_t end = 0;
    double seconds() const { return static_cast<double>(end - begin) / rate; }
};
std::vector<Stretch> stretches(const std::vector<float>& samples, double threshold = 1e-4,
                               double minimumGap = 0.05);
double rms(const std::vector<float>& samples, std::size_t begin, std::size_t end);
// RMS of the middle of a stretch, away from where the level ramps.
double middleLevel(const std::vector<float>& samples, const Stretch& stretch);
// Where in the rising tone a stretch of the recording began, in seconds.
double startingPosition(const std::vector<float>& samples, const Stretch& stretch);
double decibels(double ratio);

void sleepMilliseconds(int milliseconds);
// Where the devices record, and the folder they record in.
std::string soundRecordingPath();
std::string musicRecordingPath();

// A test in a scratch folder with the console up and its output collected.
// Whatever a test starts of the audio is shut down after it, in the game's order.
class AudioTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Writes a file into the scratch folder.
    void write(const std::string& name, const std::string& bytes) { scratch->write(name, bytes); }
    std::string printed() { return capture->take(); }
    // Runs a console line and gives what it printed after the line's echo.
    std::string run(const std::string& line);
    // Opens the sound device and the sound store; false if no device came up.
    bool startSound();
    // Shuts both down, which completes the recording, and reads it.
    std::vector<float> stopSound();

    std::unique_ptr<ScratchFolder> scratch;
    std::unique_ptr<ConsoleCapture> capture;
};

}  // namespace Listening
