#include "noise.h"

#include <cmath>

#include "bake-common/bake_common.h"

namespace {

int wrap(int v, int period) {
    const int r = v % period;
    return r < 0 ? r + period : r;
}

float fade(float t) {
    return t * t * t * (t * (t * 6.0f - 15.0f) + 10.0f);
}

float gradientDot(int ix, int iy, int periodX, int periodY, uint32_t seed, float dx, float dy) {
    const uint32_t h = hashPoint(wrap(ix, periodX), wrap(iy, periodY), seed);
    const float angle = static_cast<float>(h & 0xFFFF) * (twoPi / 65536.0f);
    return std::cos(angle) * dx + std::sin(angle) * dy;
}

}  // namespace

uint32_t hashPoint(int x, int y, uint32_t seed) {
    uint32_t h = seed ^ 0x9E3779B9u;
    h ^= static_cast<uint32_t>(x) * 0x85EBCA6Bu;
    h = (h << 13) | (h >> 19);
    h ^= static_cast<uint32_t>(y) * 0xC2B2AE35u;
    h ^= h >> 16;
    h *= 0x7FEB352Du;
    h ^= h >> 15;
    h *= 0x846CA68Bu;
    h ^= h >> 16;
    return h;
}

float hashUnit(int x, int y, uint32_t seed) {
    return static_cast<float>(hashPoint(x, y, seed) >> 8) / 16777215.0f;
}

float perlin(float x, float y, int period, uint32_t seed) {
    return perlin(x, y, period, period, seed);
}

float perlin(float x, float y, int periodX, int periodY, uint32_t seed) {
    const int x0 = static_cast<int>(std::floor(x));
    const int y0 = static_cast<int>(std::floor(y));
    const float fx = x - static_cast<float>(x0);
    const float fy = y - static_cast<float>(y0);
    const float n00 = gradientDot(x0, y0, periodX, periodY, seed, fx, fy);
    const float n10 = gradientDot(x0 + 1, y0, periodX, periodY, seed, fx - 1.0f, fy);
    const float n01 = gradientDot(x0, y0 + 1, periodX, periodY, seed, fx, fy - 1.0f);
    const float n11 = gradientDot(x0 + 1, y0 + 1, periodX, periodY, seed, fx - 1.0f, fy - 1.0f);
    const float u = fade(fx);
    const float v = fade(fy);
    const float top = n00 + (n10 - n00) * u;
    const float bottom = n01 + (n11 - n01) * u;
    return (top + (bottom - top) * v) * 1.41421356f;
}

float fractal(float u, float v, int basePeriod, int octaves, uint32_t seed, float gain) {
    float sum = 0.0f;
    float amplitude = 1.0f;
    float total = 0.0f;
    int period = basePeriod;
    for (int o = 0; o < octaves; ++o) {
        const float scale = static_cast<float>(period);
        sum += amplitude * perlin(u * scale, v * scale, period, seed + static_cast<uint32_t>(o) * 1013u);
        total += amplitude;
        amplitude *= gain;
        period *= 2;
    }
    return 0.5f + 0.5f * sum / total;
}

CellDistances cellular(float u, float v, int period, uint32_t seed) {
    const float x = u * static_cast<float>(period);
    const float y = v * static_cast<float>(period);
    const int cx = static_cast<int>(std::floor(x));
    const int cy = static_cast<int>(std::floor(y));
    CellDistances result;
    result.nearest = 1e9f;
    result.second = 1e9f;
    for (int oy = -1; oy <= 1; ++oy) {
        for (int ox = -1; ox <= 1; ++ox) {
            const int gx = cx + ox;
            const int gy = cy + oy;
            const int wx = ((gx % period) + period) % period;
            const int wy = ((gy % period) + period) % period;
            const float px = static_cast<float>(gx) + 0.1f + 0.8f * hashUnit(wx, wy, seed);
            const float py = static_cast<float>(gy) + 0.1f + 0.8f * hashUnit(wx, wy, seed + 77u);
            const float d = std::sqrt((px - x) * (px - x) + (py - y) * (py - y));
            if (d < result.nearest) {
                result.second = result.nearest;
                result.nearest = d;
                result.cellHash = hashPoint(wx, wy, seed + 5u);
            } else if (d < result.second) {
                result.second = d;
            }
        }
    }
    return result;
}
