// The water's own voice: a babbling loop and splashes at three strengths;
// ice that crackles, scrapes and knocks; steam that hisses.
#include <cmath>
#include <cstdio>

#include "sounds.h"

namespace {

// A bubble: a short sine whose pitch rises as it closes.
Samples bubble(float fromHz, float seconds) {
    Samples s = sweep(fromHz, fromHz * 1.8f, seconds);
    applyEnvelope(s, 0.002f, 6.0f / seconds);
    return s;
}

// Slowly wandering loudness, so that noise sounds like moving water.
void wander(Samples& s, uint32_t seed, float rateHz) {
    Noise noise(seed);
    float level = 0.5f, target = 0.5f;
    const int hold = static_cast<int>(sampleRate / rateHz);
    for (size_t i = 0; i < s.size(); ++i) {
        if (i % hold == 0) target = 0.5f + 0.5f * noise.next();
        level += (target - level) * 0.0005f;
        s[i] *= level;
    }
}

Samples brook() {
    Samples s(samplesFor(6.5f), 0.0f);
    for (int band = 0; band < 3; ++band) {
        Samples b = bandPass(whiteNoise(6.5f, 601u + band), 350.0f * static_cast<float>(band + 1), 1.2f);
        wander(b, 611u + band, 3.0f + static_cast<float>(band));
        mixInto(s, b, 0, 1.0f);
    }
    Noise timing(620u);
    for (int i = 0; i < 40; ++i)
        mixInto(s, bubble(380.0f + 300.0f * (0.5f + 0.5f * timing.next()), 0.05f),
                samplesFor(6.0f * (0.5f + 0.5f * timing.next())), 0.25f);
    Samples loop = makeLoop(s, 0.5f);
    normalise(loop, 0.5f);
    return loop;
}

// Level 1 a drip, level 2 a splash, level 3 a crash of water; four takes each.
Samples waterDisturbance(int level, int take) {
    const uint32_t seed = 700u + level * 10u + take;
    Noise noise(seed);
    const float strength = static_cast<float>(level);
    const float length = 0.15f + 0.3f * strength;
    const float centreHz = 900.0f + 500.0f * static_cast<float>(take) - 150.0f * strength;
    Samples s = bandPass(whiteNoise(length, seed), centreHz, 0.9f);
    applyEnvelope(s, 0.003f, 9.0f / strength);
    const int bubbles = 2 + level * 4;
    for (int i = 0; i < bubbles; ++i)
        mixInto(s, bubble(500.0f + 400.0f * (0.5f + 0.5f * noise.next()), 0.04f + 0.02f * strength),
                samplesFor(length * 0.6f * (0.5f + 0.5f * noise.next())), 0.6f);
    normalise(s, 0.5f + 0.12f * strength);
    return s;
}

// Ice freezing: sparse clicks whose density drifts.
Samples freeze() {
    Samples s(samplesFor(3.5f), 0.0f);
    Noise noise(801u);
    for (size_t i = 0; i < s.size(); ++i) {
        const float density = 0.002f + 0.0015f * std::sin(twoPi * 0.7f * static_cast<float>(i) / sampleRate);
        if (0.5f + 0.5f * noise.next() < density) s[i] = noise.next();
    }
    s = highPass(bandPass(s, 3200.0f, 0.7f), 1200.0f);
    Samples loop = makeLoop(s, 0.3f);
    normalise(loop, 0.6f);
    return loop;
}

// Ice sliding: a bright scrape that breathes a little.
Samples friction() {
    Samples s = bandPass(highPass(whiteNoise(3.5f, 811u), 1500.0f), 2600.0f, 1.5f);
    for (size_t i = 0; i < s.size(); ++i)
        s[i] *= 0.75f + 0.25f * std::sin(twoPi * 2.0f * static_cast<float>(i) / sampleRate);
    Samples loop = makeLoop(s, 0.3f);
    normalise(loop, 0.5f);
    return loop;
}

// Level 1 a tink, level 2 a clonk, level 3 a cracking thud.
Samples iceDisturbance(int level, int take) {
    const float strength = static_cast<float>(level);
    const float basePitch = level == 1 ? 2200.0f : level == 2 ? 900.0f : 300.0f;
    const float pitch = basePitch * (1.0f + 0.07f * static_cast<float>(take));
    Samples s = bell(pitch, 0.2f + 0.25f * strength, 14.0f / strength);
    if (level > 1) {
        Samples crack = highPass(whiteNoise(0.08f * strength, 900u + level * 10u + take), 2000.0f);
        applyEnvelope(crack, 0.001f, 40.0f / strength);
        mixInto(s, crack, 0, 0.6f);
    }
    normalise(s, 0.5f + 0.12f * strength);
    return s;
}

Samples hiss(float cutoffHz, uint32_t seed, float seconds, float wobbleHz) {
    Samples s = highPass(whiteNoise(seconds, seed), cutoffHz);
    for (size_t i = 0; i < s.size(); ++i)
        s[i] *= 0.7f + 0.3f * std::sin(twoPi * wobbleHz * static_cast<float>(i) / sampleRate);
    Samples loop = makeLoop(s, 0.4f);
    normalise(loop, 0.45f);
    return loop;
}

std::string bankName(const char* folder, int level, int take) {
    char name[64];
    std::snprintf(name, sizeof name, "snd/%s/disturbance_%d_%d.wav", folder, level, take);
    return name;
}

}  // namespace

std::vector<BakedSound> bakeWaterSounds() {
    std::vector<BakedSound> set = {{"snd/water/ambient.wav", brook()},
                                   {"snd/ice/freeze.wav", freeze()},
                                   {"snd/ice/friction.wav", friction()},
                                   {"snd/steam/evaporate.wav", hiss(3500.0f, 1001u, 3.5f, 3.0f)},
                                   {"snd/steam/ambient.wav", hiss(1200.0f, 1002u, 4.5f, 0.5f)}};
    for (int level = 1; level <= 3; ++level) {
        for (int take = 1; take <= 4; ++take) {
            set.push_back({bankName("water", level, take), waterDisturbance(level, take)});
            set.push_back({bankName("ice", level, take), iceDisturbance(level, take)});
        }
    }
    return set;
}
