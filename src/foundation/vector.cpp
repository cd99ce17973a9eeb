#include <cmath>

#include "foundation/foundation.h"

void rotate(Vector2D& v, float angleRadians) {
    TRACE_LOCATION("rotate");
    const double c = std::cos(static_cast<double>(angleRadians));
    const double s = std::sin(static_cast<double>(angleRadians));
    const double x = v.x;
    const double y = v.y;
    v.x = static_cast<float>(x * c - y * s);
    v.y = static_cast<float>(y * c + x * s);
}

float roundToNearest(float value) {
    TRACE_LOCATION("roundToNearest");
    float whole = std::trunc(value);
    const float fraction = value - whole;
    if (value < 0.0f) {
        if (fraction <= -0.5f) whole -= 1.0f;
    } else if (fraction >= 0.5f) {
        whole += 1.0f;
    }
    return whole;
}

uint32_t nextPowerOfTwo(uint32_t value) {
    TRACE_LOCATION("nextPowerOfTwo");
    if (value == 0) return 0;
    uint32_t power = 1;
    while (power < value && power != 0x80000000u) power <<= 1;
    return power < value ? 0 : power;
}
