// Sounds of events: winning, losing the water, a new high score, and the
// sounds that levels place.
#include <cmath>

#include "sounds.h"

namespace {

float note(int semitonesFromA4) {
    return 440.0f * std::pow(2.0f, static_cast<float>(semitonesFromA4) / 12.0f);
}

// A short, soft blip: what a missing sound would have been.
Samples stand_in() {
    Samples s = bell(note(7), 0.18f, 18.0f);
    normalise(s, 0.5f);
    return s;
}

// A rising arpeggio of bells, C E G C.
Samples finish() {
    Samples s;
    const int steps[] = {3, 7, 10, 15};
    for (int i = 0; i < 4; ++i)
        mixInto(s, bell(note(steps[i]), 1.3f, 3.0f), samplesFor(0.12f * static_cast<float>(i)),
                1.0f - 0.1f * static_cast<float>(i));
    normalise(s, 0.8f);
    return s;
}

// A fanfare: a quick climb, then the full chord rings out.
Samples highScore() {
    Samples s;
    const int climb[] = {-2, 3, 7, 10};
    for (int i = 0; i < 4; ++i)
        mixInto(s, bell(note(climb[i]), 0.4f, 6.0f), samplesFor(0.1f * static_cast<float>(i)), 0.8f);
    for (int step : {3, 7, 10, 15}) mixInto(s, bell(note(step), 1.8f, 1.6f), samplesFor(0.45f), 0.6f);
    normalise(s, 0.8f);
    return s;
}

// The water is gone: a falling, wobbling gulp.
Samples dead() {
    Samples s = sweep(640.0f, 140.0f, 0.8f);
    for (size_t i = 0; i < s.size(); ++i)
        s[i] *= 0.7f + 0.3f * std::sin(twoPi * 14.0f * static_cast<float>(i) / sampleRate);
    applyEnvelope(s, 0.01f, 3.5f);
    normalise(s, 0.7f);
    return s;
}

// A wooden dam giving way: a dull burst of noise and a few knocks of timber.
Samples crash() {
    Samples s = lowPass(whiteNoise(1.2f, 401u), 900.0f);
    applyEnvelope(s, 0.005f, 4.0f);
    Noise timing(402u);
    for (int knock = 0; knock < 6; ++knock) {
        const float centreHz = 180.0f + 60.0f * static_cast<float>(knock);
        Samples k = bandPass(whiteNoise(0.12f, 410u + knock), centreHz, 3.0f);
        applyEnvelope(k, 0.002f, 30.0f);
        mixInto(s, k, samplesFor(0.05f + 0.18f * static_cast<float>(knock) + 0.05f * timing.next()), 2.5f);
    }
    normalise(s, 0.85f);
    return s;
}

// A mill at work: churning water and the thump of paddles, once a second.
Samples mill() {
    Samples s = bandPass(whiteNoise(4.5f, 501u), 600.0f, 0.8f);
    for (size_t i = 0; i < s.size(); ++i)
        s[i] *= 0.6f + 0.4f * std::sin(twoPi * 0.5f * static_cast<float>(i) / sampleRate);
    for (int beat = 0; beat < 5; ++beat) {
        Samples thump = sweep(120.0f, 60.0f, 0.25f);
        applyEnvelope(thump, 0.003f, 14.0f);
        mixInto(s, thump, samplesFor(0.9f * static_cast<float>(beat)), 1.2f);
    }
    Samples loop = makeLoop(s, 0.5f);
    normalise(loop, 0.6f);
    return loop;
}

// Menus: a soft underwater pad behind them, a tick when a button takes the
// focus, a plop when one is pressed, and a tick for the score counters.
Samples menuAmbient() {
    Samples s(samplesFor(8.5f), 0.0f);
    for (int step : {-21, -14, -9, -5}) {
        Samples tone = sweep(note(step), note(step), 8.5f);
        const float wobbleHz = 0.13f + 0.02f * static_cast<float>(step);
        for (size_t i = 0; i < tone.size(); ++i)
            tone[i] *= 0.6f + 0.4f * std::sin(twoPi * wobbleHz * static_cast<float>(i) / sampleRate);
        mixInto(s, tone, 0, 0.25f);
    }
    mixInto(s, lowPass(whiteNoise(8.5f, 551u), 500.0f), 0, 0.5f);
    Samples loop = makeLoop(s, 1.0f);
    normalise(loop, 0.35f);
    return loop;
}

Samples menuOver() {
    Samples s = bell(note(19), 0.12f, 30.0f);
    normalise(s, 0.35f);
    return s;
}

Samples menuClick() {
    Samples s = sweep(300.0f, 900.0f, 0.09f);
    applyEnvelope(s, 0.002f, 30.0f);
    normalise(s, 0.6f);
    return s;
}

Samples scoreCount() {
    Samples s(samplesFor(0.5f), 0.0f);
    for (int tick = 0; tick < 5; ++tick)
        mixInto(s, bell(note(14 + tick), 0.06f, 60.0f), samplesFor(0.1f * static_cast<float>(tick)), 0.8f);
    normalise(s, 0.4f);
    return s;
}

}  // namespace

std::vector<BakedSound> bakeEventSounds() {
    return {{"snd/default.wav", stand_in()},
            {"snd/finish.wav", finish()},
            {"snd/highscore.wav", highScore()},
            {"snd/dead.wav", dead()},
            {"snd/crash.wav", crash()},
            {"snd/mill.wav", mill()},
            {"snd/menu/ambient.wav", menuAmbient()},
            {"snd/menu/over.wav", menuOver()},
            {"snd/menu/click.wav", menuClick()},
            {"snd/menu/count.wav", scoreCount()}};
}
