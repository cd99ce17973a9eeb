// Helpers of the audio tests, which listen to what is really played: OpenAL's
// wave-file device and SDL's disk driver record the sound and the music to
// files of the test process. These make the wave files that are played, read
// the recordings back and measure them.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/test_support.h"

namespace Listening {

constexpr int rate = 44100;

// A 441 Hz tone at a share of full scale; the same tone rising from silence,
// so that its loudness tells the play position; white noise, which two copies
// double only when they play in step.
std::vector<int16_t> tone(double seconds, double amplitude);
std::vector<int16_t> rising(double seconds, double amplitude);
std::vector<int16_t> noise(double seconds, double amplitude);

// The layout of a generated wave file; -1 fields follow from the others.
struct WaveLayout {
    uint16_t formatTag = 1;
    uint16_t channels = 1;
    uint32_t samplesPerSecond = rate;
    int64_t bytesPerSecond = -1;
    int32_t blockAlign = -1;
    uint16_t bitsPerSample = 16;
    uint32_t formatSize = 16;  // written past 16 as zeros
    std::string beforeFormat;  // whole chunks ahead of "fmt "
    std::string beforeData;    // whole chunks between "fmt " and "data"
    int64_t dataSize = -1;     // the size the "data" header claims
    std::string dataId = "data";
};
std::string chunk(const char* id, const std::string& body);
std::string waveFile(const std::vector<int16_t>& samples, const WaveLayout& layout = WaveLayout());

// The left channel of what the devices wrote, full scale 1.
std::vector<float> soundRecording();
std::vector<float> musicRecording();
std::string soundRecordingPath();

// Stretches louder than threshold over 10 ms windows; gaps shorter than 50 ms don't part them.
struct Stretch {
    std::size_t begin = 0;
    std::size_t end = 0;
    double seconds() const { return static_cast<double>(end - begin) / rate; }
};
std::vector<Stretch> stretches(const std::vector<float>& samples, double threshold = 1e-4);
double rms(const std::vector<float>& samples, std::size_t begin, std::size_t end);
// From `from` to `to` seconds into the stretch.
double rms(const std::vector<float>& samples, const Stretch& stretch, double from, double to);
// The middle three fifths, away from where the level ramps.
double middleLevel(const std::vector<float>& samples, const Stretch& stretch);
// Where in the rising tone a stretch began, in seconds.
double startingPosition(const std::vector<float>& samples, const Stretch& stretch);
double decibels(double ratio);
void sleepMilliseconds(int milliseconds);

// A test in a scratch folder with the console up and its output collected;
// whatever it starts of the audio is shut down after it in the game's order.
class AudioTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    void write(const std::string& name, const std::string& bytes) { scratch->write(name, bytes); }
    std::string printed() { return capture->take(); }
    // What a console line printed after its echo.
    std::string run(const std::string& line);
    // Opens the sound device and the store; false without a device.
    bool startSound();
    // Shuts the sound down, which completes the recording, and reads it.
    std::vector<float> stopSound();

    std::unique_ptr<ScratchFolder> scratch;
    std::unique_ptr<ConsoleCapture> capture;
};

}  // namespace Listening
