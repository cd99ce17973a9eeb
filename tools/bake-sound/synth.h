// Small sound synthesis kit: mono float buffers, noise, filters, envelopes.
#pragma once

#include <cstdint>
#include <vector>

#include "bake-common/bake_common.h"

constexpr int sampleRate = 22050;

using Samples = std::vector<float>;

int samplesFor(float seconds);

// A fixed-seed generator, so that every bake gives the same noise.
class Noise : public BakeRandom {
public:
    explicit Noise(uint32_t seed) : BakeRandom(seed, 12345u) {}
};

// Two-pole band-pass (constant peak gain), run over a whole buffer.
Samples bandPass(const Samples& input, float centreHz, float q);
Samples lowPass(const Samples& input, float cutoffHz);
Samples highPass(const Samples& input, float cutoffHz);

// Adds source into target from startSample on, scaled.
void mixInto(Samples& target, const Samples& source, int startSample, float gain = 1.0f);
// Multiplies by an envelope that rises over attack seconds and falls off exponentially.
void applyEnvelope(Samples& samples, float attack, float decayPerSecond);
// A decaying bell-like tone: a sine and some inharmonic partials.
Samples bell(float frequency, float seconds, float decayPerSecond);
// A sine sweeping from one frequency to another over its length.
Samples sweep(float fromHz, float toHz, float seconds);
Samples whiteNoise(float seconds, uint32_t seed);
// Folds the tail of a buffer over its start, so that it loops without a click.
Samples makeLoop(const Samples& samples, float crossfadeSeconds);
// Scales the buffer so that its loudest sample reaches peak.
void normalise(Samples& samples, float peak);
