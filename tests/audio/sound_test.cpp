// Sound handles heard through the recording device: the volume curve and the
// master volume, looping, stopping and going on; one entry per file; and what
// happens without a device at all. The wave reader on good and bad files: what
// it refuses gives a silent handle that SoundList shows as failed, and nothing
// it is given crashes it.
// Streamed music heard through SDL's disk driver: once through or looped,
// stopped, at the music volume, and going on after a pause; the console
// commands; a file that won't open; a machine without audio output.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>

#include "audio/audio.h"
#include "audio/listening.h"

using namespace Listening;

namespace {

using SoundTest = AudioTest;

// Each phase plays the tone from its start; its level is measured against the first.
TEST_F(SoundTest, HandleAndMasterVolumePlayAtTheCurvesLevel) {
    const float handle[] = {1.0f, 0.5f, 1.0f, 0.1f, 2.0f}, master[] = {1.0f, 1.0f, 0.5f, 1.0f, 1.0f};
    const double expected[] = {0.0, -12.94, -12.94, -36.90, 0.0};
    write("tone.wav", waveFile(tone(1.0, 0.5)));
    ASSERT_TRUE(startSound());
    Sound sound("tone.wav");
    for (std::size_t phase = 0; phase < std::size(expected); ++phase) {
        SoundSystem::setVolume(master[phase]);
        sound.setVolume(handle[phase]);
        sound.rewind();
        sound.play();
        sleepMilliseconds(250);
        sound.stop();
        sleepMilliseconds(120);
    }
    const std::vector<float> recording = stopSound();
    const std::vector<Stretch> heard = stretches(recording);
    ASSERT_EQ(heard.size(), std::size(expected));
    for (std::size_t i = 0; i < heard.size(); ++i)
        EXPECT_NEAR(decibels(middleLevel(recording, heard[i]) / middleLevel(recording, heard[0])),
                    expected[i], 0.1)
            << "phase " << i;
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

class MusicTest : public AudioTest {
protected:
    void SetUp() override {
        AudioTest::SetUp();
        write("music.wav", waveFile(tone(0.2, 0.5)));
        write("long.wav", waveFile(tone(2.0, 0.5)));
        write("rising.wav", waveFile(rising(2.0, 0.8)));
    }
    // Shutting the music down completes the recording.
    static std::vector<float> stopMusic() {
        MusicSystem::shutdown();
        return musicRecording();
    }
};

TEST_F(MusicTest, PlaysOnceThroughOrLoopsUntilStopped) {
    for (const bool loop : {false, true}) {
        MusicSystem::initialise();
        EXPECT_EQ(printed(), "\nMusic subsystem initialised successfully.");
        ASSERT_TRUE(MusicSystem::play("music.wav", loop));
        sleepMilliseconds(800);
        EXPECT_TRUE(MusicSystem::stop());
        sleepMilliseconds(100);
        const std::vector<Stretch> heard = stretches(stopMusic(), 1e-3);
        ASSERT_EQ(heard.size(), 1u);
        EXPECT_NEAR(heard[0].seconds(), loop ? 0.8 : 0.2, 0.07) << (loop ? "looped" : "once");
    }
}

// Volume 0 between the phases parts them in the recording.
TEST_F(MusicTest, TheVolumeScalesTheMusicAndZeroSilencesIt) {
    MusicSystem::initialise();
    MusicSystem::setVolume(0);
    ASSERT_TRUE(MusicSystem::play("long.wav", true));
    sleepMilliseconds(200);
    for (const uint8_t volume : std::initializer_list<uint8_t>{255, 0, 128, 0, 64}) {
        MusicSystem::setVolume(volume);
        sleepMilliseconds(volume ? 300 : 150);
    }
    const std::vector<float> recording = stopMusic();
    const std::vector<Stretch> heard = stretches(recording, 1e-3);
    ASSERT_EQ(heard.size(), 3u) << "nothing heard at volume 0, not even at the start";
    const double half = decibels(middleLevel(recording, heard[1]) / middleLevel(recording, heard[0]));
    const double quarter = decibels(middleLevel(recording, heard[2]) / middleLevel(recording, heard[0]));
    EXPECT_NEAR(half, -6.02, 0.1);
    EXPECT_NEAR(quarter, -12.04, 0.1);
}

TEST_F(MusicTest, PauseAndResumeGoOnFromTheStoredPosition) {
    MusicSystem::initialise();
    ASSERT_TRUE(MusicSystem::play("rising.wav", false));
    sleepMilliseconds(400);
    EXPECT_TRUE(MusicSystem::pause());
    EXPECT_TRUE(MusicSystem::pause()) << "a second pause keeps the stopped stream's position";
    sleepMilliseconds(200);
    EXPECT_TRUE(MusicSystem::resume());
    sleepMilliseconds(400);
    const std::vector<float> recording = stopMusic();
    const std::vector<Stretch> heard = stretches(recording, 2e-3);
    ASSERT_EQ(heard.size(), 2u);
    const double pausedAt = startingPosition(recording, heard[0]) + heard[0].seconds();
    EXPECT_NEAR(startingPosition(recording, heard[1]), pausedAt, 0.06);
}

TEST_F(MusicTest, ConsoleCommandsAndAFileThatWontOpen) {
    MusicSystem::initialise();
    const std::pair<const char*, const char*> lines[] = {
        {"MusicSystemInitialised", "\nMusicSystemInitialised is true"},
        {"MusicVolume 300", "\nMusicVolume is now 255"},
        {"MusicVolume -1", "\nMusicVolume is now 0"},
        {"MusicPlay", "\nUSAGE: MusicPlay < file name >"},
        {"MusicPlay music.wav", "\nFile opened successfully."},
    };
    for (const auto& [line, answer] : lines) EXPECT_EQ(run(line), answer) << line;
    EXPECT_FALSE(MusicSystem::play("", true));
    EXPECT_TRUE(MusicSystem::pause()) << "an empty name leaves the stream playing";
    EXPECT_EQ(run("MusicPlay missing.ogg"), "\nFailed to open file.");
    EXPECT_FALSE(MusicSystem::pause()) << "the old stream went before the new one failed";
    EXPECT_TRUE(MusicSystem::stop());
}

TEST_F(MusicTest, WithoutAnAudioOutputTheGameRunsOnSilently) {
    const std::string driver = std::getenv("SDL_AUDIODRIVER");
    setenv("SDL_AUDIODRIVER", "no-such-driver", 1);
    MusicSystem::initialise();
    setenv("SDL_AUDIODRIVER", driver.c_str(), 1);
    EXPECT_EQ(printed(), "\nError initialising music subsystem.");
    EXPECT_EQ(run("MusicVolume 200"), "\nMusicVolume is now 0");
    EXPECT_FALSE(MusicSystem::play("music.wav", true) || MusicSystem::pause() || MusicSystem::resume());
}

}  // namespace
