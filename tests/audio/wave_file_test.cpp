// The wave reader on good and bad files: what it refuses gives a silent handle
// that SoundList shows as failed, and nothing it is given crashes it.
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>

#include "audio/audio.h"
#include "audio/listening.h"

using namespace Listening;

namespace {

struct WaveCase {
    const char* what;
    std::function<std::string()> bytes;
};

std::ostream& operator<<(std::ostream& out, const WaveCase& c) {
    return out << c.what;
}

constexpr double shortSeconds = 0.05;
constexpr uint32_t shortDataBytes = 2 * 2205;
// A few milliseconds, so that the fuzz tests can try thousands of variants.
constexpr double tinySeconds = 0.005;
constexpr uint32_t tinyDataBytes = 2 * 220;

std::string shortSound(
    const std::function<void(WaveLayout&)>& change = [](WaveLayout&) {}, double seconds = shortSeconds) {
    WaveLayout layout;
    change(layout);
    return waveFile(tone(seconds, 0.5), layout);
}

// The file of a real recorder: an 18-byte format chunk and a "LIST" chunk of
// text ahead of the samples.
std::string recorderSound() {
    return shortSound(
        [](WaveLayout& l) {
            l.formatSize = 18;
            l.beforeData = chunk("LIST", std::string("INFOISFT\x06\0\0\0Brook\0", 18));
        },
        tinySeconds);
}

// Loops the file through a handle (a short sound played once may be over before
// it is asked about); true if it was heard. (The fuzz tests write
// each variant to a new file and remove it after: rewriting one file over and
// over is slow on some disks, and a full folder slows the search by name.)
bool loadsAndPlays(const std::string& name, std::string* listLine = nullptr) {
    Sound sound(name);
    sound.loop();
    const bool playing = sound.isPlaying();
    std::vector<std::string> list;
    SoundManager::getSoundList(list);
    if (listLine && !list.empty()) *listLine = list.back();
    return playing;
}

class RefusedWave : public AudioTest, public ::testing::WithParamInterface<WaveCase> {};

TEST_P(RefusedWave, GivesASilentHandleListedAsFailed) {
    write("bad.wav", GetParam().bytes());
    ASSERT_TRUE(startSound());
    std::string line;
    EXPECT_FALSE(loadsAndPlays("bad.wav", &line));
    EXPECT_EQ(line, "BAD.WAV (loading failed)");
    const Sound kept("bad.wav");
    EXPECT_NE(run("SoundList").find("\nBAD.WAV (loading failed)"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    Audio, RefusedWave,
    ::testing::Values(
        WaveCase{"another chunk before fmt",
                 [] { return shortSound([](WaveLayout& l) { l.beforeFormat = chunk("LIST", "INFO"); }); }},
        WaveCase{"format tag 3", [] { return shortSound([](WaveLayout& l) { l.formatTag = 3; }); }},
        WaveCase{"3 channels", [] { return shortSound([](WaveLayout& l) { l.channels = 3; }); }},
        WaveCase{"0 channels", [] { return shortSound([](WaveLayout& l) { l.channels = 0; }); }},
        WaveCase{"0 samples a second",
                 [] { return shortSound([](WaveLayout& l) { l.samplesPerSecond = 0; }); }},
        WaveCase{"0 bytes a second", [] { return shortSound([](WaveLayout& l) { l.bytesPerSecond = 0; }); }},
        WaveCase{"0 block alignment", [] { return shortSound([](WaveLayout& l) { l.blockAlign = 0; }); }},
        WaveCase{"0 bits a sample", [] { return shortSound([](WaveLayout& l) { l.bitsPerSample = 0; }); }},
        WaveCase{"a data chunk of size 0", [] { return waveFile({}); }},
        WaveCase{"data claiming more than the file holds",
                 [] { return shortSound([](WaveLayout& l) { l.dataSizeField = shortDataBytes + 2; }); }},
        WaveCase{"data claiming 4 GB",
                 [] { return shortSound([](WaveLayout& l) { l.dataSizeField = 0xFFFFFFFF; }); }},
        WaveCase{"no data chunk", [] { return shortSound().substr(0, 44 - 8) + chunk("LIST", "only"); }},
        WaveCase{"not RIFF", [] { return "RIFX" + shortSound().substr(4); }},
        WaveCase{"not WAVE", [] { return shortSound().replace(8, 4, "AVI "); }},
        WaveCase{"12 bits a sample, which the device doesn't play",
                 [] { return shortSound([](WaveLayout& l) { l.bitsPerSample = 12, l.blockAlign = 2; }); }},
        WaveCase{"an empty file", [] { return std::string(); }}));

class AcceptedWave : public AudioTest, public ::testing::WithParamInterface<WaveCase> {};

TEST_P(AcceptedWave, LoadsAndPlays) {
    write("good.wav", GetParam().bytes());
    ASSERT_TRUE(startSound());
    std::string line;
    EXPECT_TRUE(loadsAndPlays("good.wav", &line));
    EXPECT_EQ(line, "GOOD.WAV");
}

INSTANTIATE_TEST_SUITE_P(
    Audio, AcceptedWave,
    ::testing::Values(
        WaveCase{"plain 16-bit mono", [] { return shortSound(); }},
        WaveCase{"an 18-byte fmt chunk and a LIST chunk before data", recorderSound},
        WaveCase{"8-bit stereo",
                 [] { return shortSound([](WaveLayout& l) { l.bitsPerSample = 8, l.channels = 2; }); }},
        WaveCase{"an odd-sized chunk skipped without padding",
                 [] { return shortSound([](WaveLayout& l) { l.beforeData = chunk("junk", "abc"); }); }}));

using WaveFuzz = AudioTest;

// The samples come last, so every cut short of the whole file leaves a data
// chunk claiming more than there is, or no header at all.
TEST_F(WaveFuzz, EveryCutOfARealSoundIsRefused) {
    const std::string whole = recorderSound();
    ASSERT_TRUE(startSound());
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const std::string name = "cut" + std::to_string(size) + ".wav";
        write(name, whole.substr(0, size));
        EXPECT_EQ(loadsAndPlays(name), size == whole.size()) << "cut at " << size;
        std::filesystem::remove(scratch->path() / name);
    }
}

// Changes one byte of a file in place: every variant has the same size, so
// the file needs neither truncating nor making anew.
void overwriteByte(const std::filesystem::path& file, std::size_t at, char value) {
    std::fstream out(file, std::ios::in | std::ios::out | std::ios::binary);
    out.seekp(static_cast<std::streamoff>(at));
    out.put(value);
}

// A flip among the samples changes nothing the reader looks at; a flip in the
// header may be refused, but a refused file is always silent and listed as
// failed, and an accepted one always plays.
TEST_F(WaveFuzz, RandomByteFlipsNeverCrashAndEveryFileIsEitherHeardOrListedAsFailed) {
    const std::string whole = recorderSound();
    const std::size_t samplesStart = whole.size() - tinyDataBytes;
    write("flip.wav", whole);
    ASSERT_TRUE(startSound());
    std::mt19937 random(20240601);
    int refused = 0;
    for (int i = 0; i < 3000; ++i) {
        // Half the flips land in the header, where they matter.
        const std::size_t at = i % 2 ? random() % samplesStart : random() % whole.size();
        overwriteByte(scratch->path() / "flip.wav", at, static_cast<char>(whole[at] ^ (1 + random() % 255)));
        std::string line;
        const bool heard = loadsAndPlays("flip.wav", &line);
        EXPECT_EQ(line, heard ? "FLIP.WAV" : "FLIP.WAV (loading failed)") << "flip at " << at;
        if (at >= samplesStart) {
            EXPECT_TRUE(heard) << "a flip among the samples at " << at;
        }
        refused += !heard;
        overwriteByte(scratch->path() / "flip.wav", at, whole[at]);
    }
    EXPECT_GT(refused, 300) << "the header flips should have been refused often";
}

}  // namespace
