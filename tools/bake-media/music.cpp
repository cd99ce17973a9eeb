// Music and the intro's sound: plucked strings (Karplus-Strong) over a pad.
#include <cmath>

#include "encoder.h"
#include "media.h"

namespace {

float noteHz(int semitonesFromA4) {
    return 440.0f * std::pow(2.0f, static_cast<float>(semitonesFromA4) / 12.0f);
}

void mixAt(std::vector<float>& target, const std::vector<float>& source, size_t start, float gain) {
    if (target.size() < start + source.size()) target.resize(start + source.size(), 0.0f);
    for (size_t i = 0; i < source.size(); ++i) target[start + i] += source[i] * gain;
}

// A plucked string: a burst of noise circulating through a damped delay line.
std::vector<float> pluck(float frequency, float seconds, uint32_t seed) {
    MediaRandom random(seed);
    const size_t period = static_cast<size_t>(audioRate / frequency);
    std::vector<float> line(period);
    for (float& s : line) s = random.next();
    std::vector<float> out(static_cast<size_t>(seconds * audioRate));
    for (size_t i = 0; i < out.size(); ++i) {
        const size_t at = i % period;
        const float next = line[(at + 1) % period];
        out[i] = line[at];
        line[at] = 0.4985f * (line[at] + next);
    }
    return out;
}

std::vector<float> pad(const int* chord, int notes, float seconds) {
    std::vector<float> out(static_cast<size_t>(seconds * audioRate));
    for (size_t i = 0; i < out.size(); ++i) {
        const float t = static_cast<float>(i) / audioRate;
        const float swell = std::sin(pi * t / seconds);
        float v = 0.0f;
        for (int n = 0; n < notes; ++n) {
            const float shimmer = 0.8f + 0.2f * std::sin(twoPi * 0.3f * t + static_cast<float>(n));
            v += std::sin(twoPi * noteHz(chord[n]) * t) * shimmer;
        }
        out[i] = v * swell * swell / static_cast<float>(notes);
    }
    return out;
}

void normalise(std::vector<float>& samples, float peak) {
    float loudest = 0.0f;
    for (float s : samples) loudest = std::fmax(loudest, std::fabs(s));
    if (loudest > 0.0f)
        for (float& s : samples) s *= peak / loudest;
}

}  // namespace

std::vector<float> levelMusic() {
    // Four chords of a calm progression, each held for eight beats at 84 a minute.
    const int chords[4][3] = {{-9, -5, -2}, {-14, -10, -7}, {-12, -9, -5}, {-16, -12, -9}};
    const int melody[4][8] = {{3, 7, 10, 7, 15, 10, 7, 10},
                              {-2, 3, 5, 3, 10, 5, 3, 5},
                              {0, 3, 7, 3, 12, 7, 3, 7},
                              {-4, 0, 3, 0, 8, 3, 0, 3}};
    const float beat = 60.0f / 84.0f;
    std::vector<float> music(static_cast<size_t>(4 * 4 * 8 * beat * audioRate), 0.0f);
    for (int pass = 0; pass < 4; ++pass) {
        for (int c = 0; c < 4; ++c) {
            const int firstBeat = (pass * 4 + c) * 8;
            const size_t barStart = static_cast<size_t>(static_cast<float>(firstBeat) * beat * audioRate);
            mixAt(music, pad(chords[c], 3, 8 * beat), barStart, 0.35f);
            for (int b = 0; b < 8; ++b) {
                if (pass == 0 && b % 2 == 1) continue;
                const int shift = pass == 3 ? 12 : 0;
                mixAt(music, pluck(noteHz(melody[c][b] + shift), 2.5f, 9000u + pass * 100u + c * 10u + b),
                      barStart + static_cast<size_t>(static_cast<float>(b) * beat * audioRate), 0.5f);
            }
        }
    }
    // The tails of the last notes ring on into the start of the loop.
    const size_t length = static_cast<size_t>(4 * 4 * 8 * beat * audioRate);
    for (size_t i = length; i < music.size(); ++i) music[i - length] += music[i];
    music.resize(length);
    normalise(music, 0.7f);
    return music;
}

std::vector<float> introSoundTrack() {
    const int chord[] = {-9, -5, -2, 3};
    std::vector<float> track = pad(chord, 4, 5.0f);
    for (float& s : track) s *= 0.6f;
    std::vector<float> drop(static_cast<size_t>(0.3f * audioRate));
    float phase = 0.0f;
    for (size_t i = 0; i < drop.size(); ++i) {
        const float t = static_cast<float>(i) / audioRate;
        phase += twoPi * (500.0f + 2500.0f * t) / audioRate;
        drop[i] = std::sin(phase) * std::exp(-14.0f * t);
    }
    mixAt(track, drop, static_cast<size_t>(1.6f * audioRate), 0.8f);
    for (int n = 0; n < 4; ++n)
        mixAt(track, pluck(noteHz(chord[n] + 12), 3.0f, 9900u + n),
              static_cast<size_t>((1.7f + 0.15f * static_cast<float>(n)) * audioRate), 0.5f);
    normalise(track, 0.7f);
    return track;
}
