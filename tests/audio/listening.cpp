#include "audio/listening.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "audio/audio.h"
#include "console/console.h"

namespace fs = std::filesystem;

namespace Listening {

namespace {

constexpr double pi = 3.14159265358979;
constexpr double toneHertz = 441.0;
constexpr std::size_t window = rate / 100;

fs::path recordingFolder() {
    return fs::temp_directory_path() / ("brookfall-audio-" + std::to_string(getpid()));
}

// Points OpenAL at a configuration of our own before any device opens: the
// wave-file device, writing 32-bit float stereo at 44100 Hz with nothing
// between the mix and the file (no limiter, no dither). SDL's disk driver
// writes the music as raw 16-bit stereo.
class RecordingEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        fs::create_directories(recordingFolder());
        const fs::path config = recordingFolder() / "openal.conf";
        std::ofstream(config) << "drivers=wave\n[general]\nchannels=stereo\nsample-type=float32\n"
                              << "frequency=44100\noutput-limiter=false\ndither=false\nhrtf=false\n"
                              << "[wave]\nfile=" << soundRecordingPath() << "\n";
        setenv("ALSOFT_CONF", config.c_str(), 1);
        setenv("ALSOFT_DRIVERS", "wave", 1);
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", musicRecordingPath().c_str(), 1);
    }
    void TearDown() override {
        std::error_code error;
        fs::remove_all(recordingFolder(), error);
    }
};

::testing::Environment* const recordingEnvironment =
    ::testing::AddGlobalTestEnvironment(new RecordingEnvironment);

std::string bytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

uint32_t read32(const std::string& b, std::size_t at) {
    uint32_t v = 0;
    for (int i = 3; i >= 0; --i) v = v << 8 | static_cast<uint8_t>(b[at + static_cast<std::size_t>(i)]);
    return v;
}

uint16_t read16(const std::string& b, std::size_t at) {
    return static_cast<uint16_t>(static_cast<uint8_t>(b[at]) | static_cast<uint8_t>(b[at + 1]) << 8);
}

void put16(std::string& out, uint32_t v) {
    out += static_cast<char>(v & 0xFF);
    out += static_cast<char>(v >> 8 & 0xFF);
}

void put32(std::string& out, uint32_t v) {
    put16(out, v & 0xFFFF);
    put16(out, v >> 16);
}

std::vector<int16_t> shaped(double seconds, double (*amplitudeAt)(double share, double amplitude),
                            double amplitude) {
    const std::size_t count = static_cast<std::size_t>(seconds * rate);
    std::vector<int16_t> samples(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(count);
        const double value = amplitudeAt(share, amplitude) * std::sin(2.0 * pi * toneHertz * i / rate);
        samples[i] = static_cast<int16_t>(std::lround(value * 32767.0));
    }
    return samples;
}

}  // namespace

std::vector<int16_t> tone(double seconds, double amplitude) {
    return shaped(
        seconds, [](double, double a) { return a; }, amplitude);
}

std::vector<int16_t> rising(double seconds, double amplitude) {
    return shaped(
        seconds, [](double share, double a) { return share * a; }, amplitude);
}

std::vector<int16_t> noise(double seconds, double amplitude) {
    std::vector<int16_t> samples(static_cast<std::size_t>(seconds * rate));
    uint32_t state = 12345;
    for (int16_t& sample : samples) {
        state = state * 1664525u + 1013904223u;
        const double unit = static_cast<double>(state >> 8) / static_cast<double>(1u << 24) * 2.0 - 1.0;
        sample = static_cast<int16_t>(std::lround(unit * amplitude * 32767.0));
    }
    return samples;
}

std::string chunk(const char* id, const std::string& body) {
    std::string out(id, 4);
    put32(out, static_cast<uint32_t>(body.size()));
    return out + body;
}

std::string waveFile(const std::vector<int16_t>& samples, const WaveLayout& layout) {
    const uint16_t blockAlign = layout.blockAlign >= 0
                                    ? static_cast<uint16_t>(layout.blockAlign)
                                    : static_cast<uint16_t>(layout.channels * layout.bitsPerSample / 8);
    std::string format;
    put16(format, layout.formatTag);
    put16(format, layout.channels);
    put32(format, layout.samplesPerSecond);
    put32(format, layout.bytesPerSecond >= 0 ? static_cast<uint32_t>(layout.bytesPerSecond)
                                             : layout.samplesPerSecond * blockAlign);
    put16(format, blockAlign);
    put16(format, layout.bitsPerSample);
    format.resize(layout.formatSize, '\0');
    std::string data;
    for (int16_t sample : samples) put16(data, static_cast<uint16_t>(sample));
    std::string dataChunk = chunk("data", data);
    if (layout.dataSizeField >= 0) {
        std::string size;
        put32(size, static_cast<uint32_t>(layout.dataSizeField));
        dataChunk.replace(4, 4, size);
    }
    const std::string body =
        "WAVE" + layout.beforeFormat + chunk("fmt ", format) + layout.beforeData + dataChunk;
    return chunk("RIFF", body);
}

// The wave device writes an extensible header: a 40-byte "fmt " chunk whose
// sub-format names float samples.
std::vector<float> soundRecording() {
    const std::string b = bytesOf(soundRecordingPath());
    std::vector<float> left;
    uint16_t channels = 0;
    std::size_t at = 12;
    while (at + 8 <= b.size()) {
        const uint32_t size = read32(b, at + 4);
        if (b.compare(at, 4, "fmt ") == 0) {
            channels = read16(b, at + 10);
            EXPECT_EQ(read16(b, at + 22), 32) << "the recording is not in 32-bit floats";
        } else if (b.compare(at, 4, "data") == 0 && channels > 0) {
            const std::size_t frameBytes = 4u * channels;
            const std::size_t available = std::min<std::size_t>(size, b.size() - at - 8);
            for (std::size_t f = 0; f + frameBytes <= available; f += frameBytes) {
                float value = 0.0f;
                std::memcpy(&value, b.data() + at + 8 + f, sizeof(value));
                left.push_back(value);
            }
            return left;
        }
        at += 8 + size;
    }
    ADD_FAILURE() << "no recording in " << soundRecordingPath();
    return left;
}

std::vector<float> musicRecording() {
    const std::string b = bytesOf(musicRecordingPath());
    std::vector<float> left;
    for (std::size_t at = 0; at + 4 <= b.size(); at += 4)
        left.push_back(static_cast<float>(static_cast<int16_t>(read16(b, at))) / 32768.0f);
    return left;
}

std::vector<Stretch> stretches(const std::vector<float>& samples, double threshold, double minimumGap) {
    std::vector<Stretch> found;
    const std::size_t gapWindows = static_cast<std::size_t>(minimumGap * rate) / window;
    std::size_t quietWindows = 0;
    for (std::size_t at = 0; at + window <= samples.size(); at += window) {
        if (rms(samples, at, at + window) <= threshold) {
            ++quietWindows;
            continue;
        }
        if (found.empty() || quietWindows >= gapWindows)
            found.push_back({at, at + window});
        else
            found.back().end = at + window;
        quietWindows = 0;
    }
    return found;
}

double rms(const std::vector<float>& samples, std::size_t begin, std::size_t end) {
    double sum = 0.0;
    for (std::size_t i = begin; i < end && i < samples.size(); ++i)
        sum += static_cast<double>(samples[i]) * samples[i];
    return end > begin ? std::sqrt(sum / static_cast<double>(end - begin)) : 0.0;
}

double middleLevel(const std::vector<float>& samples, const Stretch& stretch) {
    const std::size_t fifth = (stretch.end - stretch.begin) / 5;
    return rms(samples, stretch.begin + fifth, stretch.end - fifth);
}

// The level of the rising tone grows in proportion to the play position, so a
// straight line fitted to the levels along the stretch meets zero that far
// before the stretch.
double startingPosition(const std::vector<float>& recording, const Stretch& stretch) {
    const std::size_t step = rate / 50;
    double n = 0, sumT = 0, sumL = 0, sumTT = 0, sumTL = 0;
    for (std::size_t at = stretch.begin + step; at + 2 * step <= stretch.end; at += step) {
        const double t = static_cast<double>(at - stretch.begin) / rate + 0.01;
        const double level = rms(recording, at, at + step);
        n += 1, sumT += t, sumL += level, sumTT += t * t, sumTL += t * level;
    }
    const double slope = (n * sumTL - sumT * sumL) / (n * sumTT - sumT * sumT);
    const double atStart = (sumL - slope * sumT) / n;
    return atStart / slope;
}

double decibels(double ratio) {
    return 20.0 * std::log10(ratio);
}

void sleepMilliseconds(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

std::string soundRecordingPath() {
    return (recordingFolder() / "sound.wav").string();
}

std::string musicRecordingPath() {
    return (recordingFolder() / "music.raw").string();
}

void AudioTest::SetUp() {
    scratch = std::make_unique<ScratchFolder>();
    GLConsole::shutdown();
    GLConsole::initialise();
    capture = std::make_unique<ConsoleCapture>();
}

void AudioTest::TearDown() {
    GameSfx_Ice::shutdown();
    GameSfx_Water::shutdown();
    GameSfx_Steam::shutdown();
    SoundSourceManager::shutdown();
    SoundManager::shutdown();
    SoundSystem::shutdown();
    MusicSystem::shutdown();
    capture.reset();
    GLConsole::shutdown();
    scratch.reset();
}

std::string AudioTest::run(const std::string& line) {
    printed();
    GLConsole::enterLine(line);
    const std::string text = printed();
    const std::string echo = "\n" + line;
    EXPECT_EQ(text.substr(0, echo.size()), echo);
    return text.substr(std::min(echo.size(), text.size()));
}

bool AudioTest::startSound() {
    SoundSystem::initialise();
    SoundManager::initialise();
    return SoundSystem::hasDevice();
}

std::vector<float> AudioTest::stopSound() {
    SoundSourceManager::shutdown();
    SoundManager::shutdown();
    SoundSystem::shutdown();
    return soundRecording();
}

}  // namespace Listening
