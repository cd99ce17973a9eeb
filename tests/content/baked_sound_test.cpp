// The sounds the sound bake ships: wave files the game's loader takes, heard
// (not silent), and loops that wrap without a click. tests/tools holds the
// tests of the bake itself; the menus' test checks that every named file exists.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "support/content_support.h"

namespace {

uint32_t read32(const std::string& b, size_t at) {
    uint32_t v = 0;
    for (int i = 3; i >= 0; --i) v = (v << 8) | static_cast<uint8_t>(b[at + i]);
    return v;
}

uint16_t read16(const std::string& b, size_t at) {
    return static_cast<uint16_t>(static_cast<uint8_t>(b[at]) | (static_cast<uint8_t>(b[at + 1]) << 8));
}

// The samples of a 16-bit mono wave as the game's loader would accept it; empty if refused.
std::vector<int16_t> acceptedSamples(const std::string& b) {
    if (b.size() < 44 || b.compare(0, 4, "RIFF") || b.compare(8, 4, "WAVE") || b.compare(12, 4, "fmt "))
        return {};
    if (read16(b, 20) != 1 || read16(b, 22) != 1 || read32(b, 24) == 0 || read16(b, 34) != 16) return {};
    size_t at = 20 + read32(b, 16);
    while (at + 8 <= b.size()) {
        const uint32_t size = read32(b, at + 4);
        if (b.compare(at, 4, "data") == 0) {
            if (size == 0 || at + 8 + size > b.size()) return {};
            std::vector<int16_t> samples(size / 2);
            std::memcpy(samples.data(), b.data() + at + 8, samples.size() * 2);
            return samples;
        }
        at += 8 + size;
    }
    return {};
}

double rms(const std::vector<int16_t>& samples) {
    double sum = 0.0;
    for (int16_t s : samples) sum += static_cast<double>(s) * s;
    return std::sqrt(sum / static_cast<double>(samples.size()));
}

}  // namespace

TEST(BakedSound, EverySoundIsAWaveTheGameLoaderAcceptsAndIsHeard) {
    const std::vector<std::string> names = bakedSounds();
    EXPECT_GE(names.size(), 30u);
    for (const std::string& name : names) {
        const std::vector<int16_t> samples = acceptedSamples(readBytes(bakedDataFolder() / name));
        ASSERT_FALSE(samples.empty()) << name << " would be refused";
        EXPECT_GT(rms(samples), 300.0) << name << " is silent";
        int clipped = 0;
        for (int16_t s : samples) clipped += s == 32767 || s == -32767;
        EXPECT_LT(clipped, 4) << name << " clips";
    }
}

TEST(BakedSound, LoopsWrapWithoutAClick) {
    for (const char* name : {"snd/water/ambient.wav", "snd/ice/freeze.wav", "snd/ice/friction.wav",
                             "snd/steam/evaporate.wav", "snd/steam/ambient.wav", "snd/mill.wav"}) {
        const std::vector<int16_t> s = acceptedSamples(readBytes(bakedDataFolder() / name));
        ASSERT_GT(s.size(), 1000u) << name;
        double typicalStep = 0.0;
        for (size_t i = 1; i < s.size(); ++i) typicalStep += std::abs(s[i] - s[i - 1]);
        typicalStep /= static_cast<double>(s.size() - 1);
        EXPECT_LT(std::abs(s.front() - s.back()), typicalStep * 6 + 200) << name;
    }
}
