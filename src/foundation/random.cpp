#include <cstring>

#include "foundation/foundation.h"

namespace {

// The generator's one word. Nothing seeds it: a run's numbers are the same
// from start to start.
struct State {
    uint32_t seed = 0;
};

State& state() {
    return singleInstance<State>();
}

// Both stages are worked in extended precision, as the products pass 2^53.
void advanceSeed() {
    constexpr double a = 32452843.11;
    constexpr double b = 275604541.11;
    constexpr float c = 0.31830987f;

    long double s = state().seed;
    const unsigned long long whole =
        static_cast<unsigned long long>(s * static_cast<long double>(a) + static_cast<long double>(b));
    state().seed = static_cast<uint32_t>(whole);

    s = state().seed;
    const float mixed = static_cast<float>(s * static_cast<long double>(a) + static_cast<long double>(b) +
                                           s * static_cast<long double>(c));
    std::memcpy(&state().seed, &mixed, sizeof(state().seed));
}

}  // namespace

uint32_t randomBits() {
    TRACE_LOCATION("randomBits");
    advanceSeed();
    return state().seed;
}

double randomUnit() {
    TRACE_LOCATION("randomUnit");
    advanceSeed();
    return static_cast<double>(state().seed & 0xFFFFFFu) / 16777215.0;
}

uint32_t getRandomSeed() {
    TRACE_LOCATION("getRandomSeed");
    return state().seed;
}
void setRandomSeed(uint32_t seed) {
    TRACE_LOCATION("setRandomSeed");
    state().seed = seed;
}

Vector2D randomDirection() {
    TRACE_LOCATION("randomDirection");
    const float x = static_cast<float>(randomUnit() - 0.5);
    const float y = static_cast<float>(randomUnit() - 0.5);
    Vector2D direction(x, y);
    normalise(direction);
    return direction;
}
