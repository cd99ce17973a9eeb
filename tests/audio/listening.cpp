#include "audio/listening.h"

#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

#include "audio/audio.h"
#include "console/console.h"
#include "support/content_support.h"

namespace fs = std::filesystem;

namespace Listening {

namespace {

constexpr std::size_t window = rate / 100;

fs::path recordingFolder() {
    return fs::temp_directory_path() / ("brookfall-audio-" + std::to_string(getpid()));
}

// Points OpenAL at a configuration of our own before any device opens: the
// wave-file device writing 32-bit float stereo at 44100 Hz, with no limiter
// or dither between the mix and the file. SDL's disk driver writes raw 16-bit stereo.
class RecordingEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        fs::create_directories(recordingFolder());
        const fs::path config = recordingFolder() / "openal.conf";
        std::ofstream(config)
            << "drivers=wave\n[general]\nchannels=stereo\nsample-type=float32\nfrequency=44100\n"
            << "output-limiter=false\ndither=false\nhrtf=false\n[wave]\nfile=" << soundRecordingPath()
            << "\n";
        setenv("ALSOFT_CONF", config.c_str(), 1);
        setenv("ALSOFT_DRIVERS", "wave", 1);
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", (recordingFolder() / "music.raw").c_str(), 1);
    }
    void TearDown() override {
        std::error_code error;
        fs::remove_all(recordingFolder(), error);
    }
};

::testing::Environment* const recordingEnvironment =
    ::testing::AddGlobalTestEnvironment(new RecordingEnvironment);

template <typename T>
T get(const std::string& bytes, std::size_t at) {
    T value{};
    std::memcpy(&value, bytes.data() + at, sizeof(value));
    return value;
}

template <typename... T>
void put(std::string& bytes, T... values) {
    (bytes.append(reinterpret_cast<const char*>(&values), sizeof(values)), ...);
}

template <typename Shape>
std::vector<int16_t> generate(double seconds, Shape shape) {
    std::vector<int16_t> samples(static_cast<std::size_t>(seconds * rate));
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<int16_t>(std::lround(shape(i, samples.size()) * 32767.0));
    return samples;
}

double sine(std::size_t i) {
    return std::sin(2.0 * 3.14159265358979 * 441.0 * static_cast<double>(i) / rate);
}

}  // namespace

std::vector<int16_t> tone(double seconds, double amplitude) {
    return generate(seconds, [=](std::size_t i, std::size_t) { return amplitude * sine(i); });
}

std::vector<int16_t> rising(double seconds, double amplitude) {
    return generate(seconds, [=](std::size_t i, std::size_t n) {
        return amplitude * static_cast<double>(i) / static_cast<double>(n) * sine(i);
    });
}

std::vector<int16_t> noise(double seconds, double amplitude) {
    uint32_t state = 12345;
    return generate(seconds, [&](std::size_t, std::size_t) {
        state = state * 1664525u + 1013904223u;
        return amplitude * (static_cast<double>(state >> 8) / (1u << 23) - 1.0);
    });
}

std::string chunk(const char* id, const std::string& body) {
    std::string out(id, 4);
    put(out, static_cast<uint32_t>(body.size()));
    return out + body;
}

std::string waveFile(const std::vector<int16_t>& samples, const WaveLayout& layout) {
    const int32_t block =
        layout.blockAlign >= 0 ? layout.blockAlign : layout.channels * layout.bitsPerSample / 8;
    std::string format;
    put(format, layout.formatTag, layout.channels, layout.samplesPerSecond,
        static_cast<uint32_t>(layout.bytesPerSecond >= 0 ? layout.bytesPerSecond
                                                         : layout.samplesPerSecond * block),
        static_cast<uint16_t>(block), layout.bitsPerSample);
    format.resize(layout.formatSize, '\0');
    std::string data(reinterpret_cast<const char*>(samples.data()), samples.size() * 2);
    std::string dataChunk = chunk(layout.dataId.c_str(), data);
    const uint32_t claimed = static_cast<uint32_t>(layout.dataSize);
    if (layout.dataSize >= 0) std::memcpy(&dataChunk[4], &claimed, sizeof(claimed));
    return chunk("RIFF",
                 "WAVE" + layout.beforeFormat + chunk("fmt ", format) + layout.beforeData + dataChunk);
}

// The wave device writes an extensible header: a 40-byte "fmt " chunk
// naming float samples.
std::vector<float> soundRecording() {
    const std::string b = readBytes(soundRecordingPath());
    std::vector<float> left;
    uint16_t channels = 0;
    for (std::size_t at = 12; at + 8 <= b.size(); at += 8 + get<uint32_t>(b, at + 4)) {
        if (b.compare(at, 4, "fmt ") == 0) channels = get<uint16_t>(b, at + 10);
        if (b.compare(at, 4, "data") != 0 || channels == 0) continue;
        for (std::size_t f = at + 8; f + 4u * channels <= b.size(); f += 4u * channels)
            left.push_back(get<float>(b, f));
        break;
    }
    return left;
}

std::vector<float> musicRecording() {
    const std::string b = readBytes(recordingFolder() / "music.raw");
    std::vector<float> left;
    for (std::size_t at = 0; at + 4 <= b.size(); at += 4) left.push_back(get<int16_t>(b, at) / 32768.0f);
    return left;
}

std::string soundRecordingPath() {
    return (recordingFolder() / "sound.wav").string();
}

std::vector<Stretch> stretches(const std::vector<float>& samples, double threshold) {
    std::vector<Stretch> found;
    std::size_t quiet = 0;
    for (std::size_t at = 0; at + window <= samples.size(); at += window) {
        if (rms(samples, at, at + window) <= threshold) {
            ++quiet;
        } else {
            if (found.empty() || quiet >= 5) found.push_back({at, at});
            found.back().end = at + window;
            quiet = 0;
        }
    }
    return found;
}

double rms(const std::vector<float>& samples, std::size_t begin, std::size_t end) {
    double sum = 0.0;
    for (std::size_t i = begin; i < end && i < samples.size(); ++i)
        sum += static_cast<double>(samples[i]) * samples[i];
    return end > begin ? std::sqrt(sum / static_cast<double>(end - begin)) : 0.0;
}

double rms(const std::vector<float>& samples, const Stretch& stretch, double from, double to) {
    return rms(samples, stretch.begin + static_cast<std::size_t>(from * rate),
               stretch.begin + static_cast<std::size_t>(to * rate));
}

double middleLevel(const std::vector<float>& samples, const Stretch& stretch) {
    return rms(samples, stretch, stretch.seconds() / 5, stretch.seconds() * 4 / 5);
}

// The level of the rising tone grows with the play position, so a straight
// line fitted to the levels along the stretch meets zero that far before it.
double startingPosition(const std::vector<float>& samples, const Stretch& stretch) {
    double n = 0, sumT = 0, sumL = 0, sumTT = 0, sumTL = 0;
    for (double t = 0.02; t + 0.04 <= stretch.seconds(); t += 0.02) {
        const double level = rms(samples, stretch, t, t + 0.02);
        n += 1, sumT += t + 0.01, sumL += level, sumTT += (t + 0.01) * (t + 0.01),
            sumTL += (t + 0.01) * level;
    }
    const double slope = (n * sumTL - sumT * sumL) / (n * sumTT - sumT * sumT);
    return (sumL - slope * sumT) / n / slope;
}

double decibels(double ratio) {
    return 20.0 * std::log10(ratio);
}

void sleepMilliseconds(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
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
    EXPECT_EQ(text.substr(0, line.size() + 1), "\n" + line);
    return text.substr(std::min(line.size() + 1, text.size()));
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
