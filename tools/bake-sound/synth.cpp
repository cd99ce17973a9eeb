#include "synth.h"

#include <algorithm>
#include <cmath>

namespace {

struct Biquad {
    float b0, b1, b2, a1, a2;

    Samples run(const Samples& input) const {
        Samples out(input.size());
        float x1 = 0, x2 = 0, y1 = 0, y2 = 0;
        for (size_t i = 0; i < input.size(); ++i) {
            const float x = input[i];
            const float y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2;
            x2 = x1;
            x1 = x;
            y2 = y1;
            y1 = y;
            out[i] = y;
        }
        return out;
    }
};

Biquad normalised(float b0, float b1, float b2, float a0, float a1, float a2) {
    return {b0 / a0, b1 / a0, b2 / a0, a1 / a0, a2 / a0};
}

}  // namespace

int samplesFor(float seconds) {
    return static_cast<int>(seconds * sampleRate);
}

Samples bandPass(const Samples& input, float centreHz, float q) {
    const float w = twoPi * centreHz / sampleRate, alpha = std::sin(w) / (2.0f * q);
    return normalised(alpha, 0.0f, -alpha, 1.0f + alpha, -2.0f * std::cos(w), 1.0f - alpha).run(input);
}

Samples lowPass(const Samples& input, float cutoffHz) {
    const float w = twoPi * cutoffHz / sampleRate, alpha = std::sin(w) / 1.4142135f, c = std::cos(w);
    return normalised((1 - c) / 2, 1 - c, (1 - c) / 2, 1 + alpha, -2 * c, 1 - alpha).run(input);
}

Samples highPass(const Samples& input, float cutoffHz) {
    const float w = twoPi * cutoffHz / sampleRate, alpha = std::sin(w) / 1.4142135f, c = std::cos(w);
    return normalised((1 + c) / 2, -(1 + c), (1 + c) / 2, 1 + alpha, -2 * c, 1 - alpha).run(input);
}

void mixInto(Samples& target, const Samples& source, int startSample, float gain) {
    if (startSample < 0) return;
    const size_t needed = static_cast<size_t>(startSample) + source.size();
    if (target.size() < needed) target.resize(needed, 0.0f);
    for (size_t i = 0; i < source.size(); ++i) target[startSample + i] += source[i] * gain;
}

void applyEnvelope(Samples& samples, float attack, float decayPerSecond) {
    const float attackSamples = std::max(1.0f, attack * sampleRate);
    for (size_t i = 0; i < samples.size(); ++i) {
        const float t = static_cast<float>(i) / sampleRate;
        const float rise = std::min(1.0f, static_cast<float>(i) / attackSamples);
        samples[i] *= rise * std::exp(-decayPerSecond * t);
    }
}

Samples bell(float frequency, float seconds, float decayPerSecond) {
    Samples out(samplesFor(seconds));
    const float partials[][2] = {{1.0f, 1.0f}, {2.01f, 0.45f}, {2.98f, 0.25f}, {4.16f, 0.12f}};
    for (size_t i = 0; i < out.size(); ++i) {
        const float t = static_cast<float>(i) / sampleRate;
        float v = 0.0f;
        for (const auto& p : partials)
            v += p[1] * std::sin(twoPi * frequency * p[0] * t) * std::exp(-decayPerSecond * p[0] * 0.7f * t);
        out[i] = v;
    }
    applyEnvelope(out, 0.004f, decayPerSecond * 0.3f);
    return out;
}

Samples sweep(float fromHz, float toHz, float seconds) {
    Samples out(samplesFor(seconds));
    float phase = 0.0f;
    for (size_t i = 0; i < out.size(); ++i) {
        const float share = static_cast<float>(i) / static_cast<float>(out.size());
        const float frequency = fromHz * std::pow(toHz / fromHz, share);
        phase += twoPi * frequency / sampleRate;
        out[i] = std::sin(phase);
    }
    return out;
}

Samples whiteNoise(float seconds, uint32_t seed) {
    Noise noise(seed);
    Samples out(samplesFor(seconds));
    for (float& s : out) s = noise.next();
    return out;
}

Samples makeLoop(const Samples& samples, float crossfadeSeconds) {
    const size_t fade = std::min(samples.size() / 2, static_cast<size_t>(samplesFor(crossfadeSeconds)));
    Samples out(samples.begin(), samples.end() - fade);
    for (size_t i = 0; i < fade; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(fade);
        out[i] = out[i] * t + samples[samples.size() - fade + i] * (1.0f - t);
    }
    return out;
}

void normalise(Samples& samples, float peak) {
    float loudest = 0.0f;
    for (float s : samples) loudest = std::max(loudest, std::fabs(s));
    if (loudest <= 0.0f) return;
    for (float& s : samples) s *= peak / loudest;
}
