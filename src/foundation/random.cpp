#include <cstring>

#include "foundation/foundation.h"

namespace {

// Nothing seeds the generator: a run's numbers are the same from start to start.
uint32_t randomSeed = 0;

// Both stages are worked in extended precision, as the products pass 2^53.
void advanceSeed() {
    constexpr double a = 32452843.11;
    constexpr double b = 275604541.11;
    constexpr float c = 0.31830987f;

    long double s = randomSeed;
    const unsigned long long whole = static_cast<unsigned long long>(s * static_cast<long double>(a) + static_cast<long double>(b));
    randomSeed = static_cast<uint32_t>(whole);

    s = randomSeed;
    const float mixed = static_cast<float>(s * static_cast<long double>(a) + static_cast<long double>(b) +
                                             s * static_cast<long double>(c));
    std::memcpy(&randomSeed, &mixed, sizeof(randomSeed));
}

}  // namespace

uint32_t randomBits() {
    TRACE_LOCATION("randomBits");
    advanceSeed();
    return randomSeed;
}

double randomUnit() {
    TRACE_LOCATION("randomUnit");
    advanceSeed();
    return static_cast<double>(randomSeed & 0xFFFFFFu) / 16777215.0;
}

uint32_t getRandomSeed() { return randomSeed; }
void setRandomSeed(uint32_t seed) { randomSeed = seed; }
