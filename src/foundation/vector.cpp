#include <cmath>

#include "foundation/foundation.h"

float length(const Vector2D& v) {
    TRACE_LOCATION("length");
    return static_cast<float>(std::sqrt(static_cast<double>(v.x) * v.x + static_cast<double>(v.y) * v.y));
}

float lengthSquared(const Vector2D& v) {
    TRACE_LOCATION("lengthSquared");
    return static_cast<float>(static_cast<double>(v.x) * v.x + static_cast<double>(v.y) * v.y);
}

float dot(const Vector2D& a, const Vector2D& b) {
    TRACE_LOCATION("dot");
    return static_cast<float>(static_cast<double>(a.x) * b.x + static_cast<double>(a.y) * b.y);
}

float distance(const Vector2D& a, const Vector2D& b) {
    TRACE_LOCATION("distance");
    return length(a - b);
}

void normalise(Vector2D& v) {
    TRACE_LOCATION("normalise");
    if (v.x == 0.0f && v.y == 0.0f) {
        v = Vector2D(1.0f, 0.0f);
        return;
    }
    const double size = std::sqrt(static_cast<double>(v.x) * v.x + static_cast<double>(v.y) * v.y);
    v.x = static_cast<float>(v.x / size);
    v.y = static_cast<float>(v.y / size);
}

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
