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

using Layout = std::function<void(WaveLayout&)>;

std::string shortSound(const Layout& change, double seconds = 0.05) {
    WaveLayout layout;
    change(layout);
    return waveFile(tone(seconds, 0.5), layout);
}

// As a recorder writes them: an 18-byte format chunk and a "LIST" chunk ahead
// of the samples. 5 ms long, so that the fuzz tests can try thousands of variants.
std::string recorderSound() {
    return shortSound(
        [](WaveLayout& l) {
            l.formatSize = 18;
            l.beforeData = chunk("LIST", std::string("INFOISFT\x06\0\0\0Brook\0", 18));
        },
        0.005);
}

// Loops the file through a handle (a short sound played once may be over
// before it is asked about); true if it was heard, with the line SoundList has for it.
bool heard(const std::string& name, std::string& listLine) {
    Sound sound(name);
    sound.loop();
    std::vector<std::string> list;
    SoundManager::getSoundList(list);
    listLine = list.empty() ? "" : list.back();
    return sound.isPlaying();
}

struct WaveCase {
    const char* what;
    Layout change;
    bool loads;
};

std::ostream& operator<<(std::ostream& out, const WaveCase& c) {
    return out << c.what;
}

class WaveFile : public AudioTest, public ::testing::WithParamInterface<WaveCase> {};

TEST_P(WaveFile, LoadsOrGivesASilentHandleListedAsFailed) {
    write("sound.wav", GetParam().change ? shortSound(GetParam().change) : recorderSound());
    ASSERT_TRUE(startSound());
    std::string line;
    EXPECT_EQ(heard("sound.wav", line), GetParam().loads);
    EXPECT_EQ(line, GetParam().loads ? "SOUND.WAV" : "SOUND.WAV (loading failed)");
}

INSTANTIATE_TEST_SUITE_P(
    Audio, WaveFile,
    ::testing::Values(WaveCase{"plain 16-bit mono", [](WaveLayout&) {}, true},
                      WaveCase{"an 18-byte fmt chunk and a LIST chunk before data", nullptr, true},
                      WaveCase{"8-bit stereo", [](WaveLayout& l) { l.bitsPerSample = 8, l.channels = 2; },
                               true},
                      WaveCase{"an odd-sized chunk, skipped without padding",
                               [](WaveLayout& l) { l.beforeData = chunk("junk", "abc"); }, true},
                      WaveCase{"another chunk before fmt",
                               [](WaveLayout& l) { l.beforeFormat = chunk("LIST", "INFO"); }, false},
                      WaveCase{"format tag 3", [](WaveLayout& l) { l.formatTag = 3; }, false},
                      WaveCase{"3 channels", [](WaveLayout& l) { l.channels = 3; }, false},
                      WaveCase{"0 samples a second", [](WaveLayout& l) { l.samplesPerSecond = 0; }, false},
                      WaveCase{"0 bytes a second", [](WaveLayout& l) { l.bytesPerSecond = 0; }, false},
                      WaveCase{"0 block alignment", [](WaveLayout& l) { l.blockAlign = 0; }, false},
                      WaveCase{"0 bits a sample", [](WaveLayout& l) { l.bitsPerSample = 0; }, false},
                      WaveCase{"12 bits a sample, which the device doesn't play",
                               [](WaveLayout& l) { l.bitsPerSample = 12, l.blockAlign = 2; }, false},
                      WaveCase{"a data chunk of size 0", [](WaveLayout& l) { l.dataSize = 0; }, false},
                      WaveCase{"data claiming more than the file holds",
                               [](WaveLayout& l) { l.dataSize = 2 * 2205 + 2; }, false},
                      WaveCase{"data claiming 4 GB", [](WaveLayout& l) { l.dataSize = 0xFFFFFFFF; }, false},
                      WaveCase{"no data chunk", [](WaveLayout& l) { l.dataId = "DATA"; }, false}));

using WaveFuzz = AudioTest;

// The samples come last, so every cut short of the whole file leaves no
// header or a data chunk claiming more than there is.
TEST_F(WaveFuzz, EveryCutOfARealSoundIsRefused) {
    const std::string whole = recorderSound();
    ASSERT_TRUE(startSound());
    std::string line;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        // A new file each time: rewriting one over and over is slow on some disks.
        const std::string name = "cut" + std::to_string(size) + ".wav";
        write(name, whole.substr(0, size));
        EXPECT_EQ(heard(name, line), size == whole.size()) << "cut at " << size;
        std::filesystem::remove(scratch->path() / name);
    }
}

// A flip among the samples changes nothing the reader looks at. A flip in the
// header may be refused, but a file is always either heard or listed as failed.
TEST_F(WaveFuzz, RandomByteFlipsNeverCrashAndEveryFileIsHeardOrListedAsFailed) {
    const std::string whole = recorderSound();
    const std::size_t samplesStart = whole.size() - 2 * 220;
    write("flip.wav", whole);
    ASSERT_TRUE(startSound());
    std::mt19937 random(20240601);
    int refused = 0;
    for (int i = 0; i < 3000; ++i) {
        // Half the flips land in the header, where they matter. Each changes
        // one byte in place, and the next puts it back.
        const std::size_t at = i % 2 ? random() % samplesStart : random() % whole.size();
        std::fstream file(scratch->path() / "flip.wav", std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(at)).put(static_cast<char>(whole[at] ^ (1 + random() % 255)));
        file.close();
        std::string line;
        const bool loaded = heard("flip.wav", line);
        EXPECT_EQ(line, loaded ? "FLIP.WAV" : "FLIP.WAV (loading failed)") << "flip at " << at;
        EXPECT_TRUE(loaded || at < samplesStart) << "a flip among the samples at " << at;
        refused += !loaded;
        file.open(scratch->path() / "flip.wav", std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(at)).put(whole[at]);
    }
    EXPECT_GT(refused, 300) << "header flips should often be refused";
}

}  // namespace
