// The intro: light through water, a drop that falls and rings out, and the
// logo that rises out of the ripple.
#include <cmath>
#include <cstdio>

#include "media.h"

namespace {

float clamp01(float v) {
    return std::fmin(1.0f, std::fmax(0.0f, v));
}

// A cheap moving caustic: interfering waves, sharpened into bright threads.
float caustic(float x, float y, float t) {
    const float a = std::sin(x * 0.031f + t * 1.3f) + std::sin(y * 0.027f - t * 0.9f);
    const float b = std::sin((x + y) * 0.019f + t * 0.7f) + std::sin((x - y) * 0.023f - t * 1.1f);
    return std::pow(1.0f - std::fabs(std::sin((a + b) * 1.3f)), 8.0f);
}

uint32_t read16(const std::vector<uint8_t>& b, size_t at) {
    return b[at] | (b[at + 1] << 8);
}

}  // namespace

Logo readLogo(const std::string& path) {
    Logo logo;
    FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) return logo;
    std::vector<uint8_t> bytes;
    uint8_t buffer[4096];
    for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, file)) > 0;)
        bytes.insert(bytes.end(), buffer, buffer + n);
    std::fclose(file);
    // Only the layout the art bake writes: uncompressed, 32 bits, top row first.
    if (bytes.size() < 18 || bytes[2] != 2 || bytes[16] != 32 || !(bytes[17] & 0x20)) return logo;
    const int width = static_cast<int>(read16(bytes, 12)), height = static_cast<int>(read16(bytes, 14));
    const size_t start = 18u + bytes[0];
    if (bytes.size() < start + static_cast<size_t>(width) * height * 4) return logo;
    logo.width = width;
    logo.height = height;
    logo.rgba.resize(static_cast<size_t>(width) * height * 4);
    for (size_t i = 0; i < logo.rgba.size(); i += 4) {
        logo.rgba[i] = bytes[start + i + 2];
        logo.rgba[i + 1] = bytes[start + i + 1];
        logo.rgba[i + 2] = bytes[start + i];
        logo.rgba[i + 3] = bytes[start + i + 3];
    }
    return logo;
}

std::vector<uint8_t> introFrame(int frame, const Logo& logo) {
    const float t = static_cast<float>(frame) / introFramesPerSecond;
    const float fadeIn = clamp01(t / 0.8f), fadeOut = clamp01((5.0f - t) / 0.6f);
    const float dropY = 40.0f + 200.0f * clamp01(t / 1.6f) * clamp01(t / 1.6f);
    const float ringAge = t - 1.6f;
    const float logoShow = clamp01((t - 1.9f) / 1.0f);
    std::vector<uint8_t> rgb(static_cast<size_t>(introWidth) * introHeight * 3);
    for (int y = 0; y < introHeight; ++y) {
        for (int x = 0; x < introWidth; ++x) {
            const float depth = static_cast<float>(y) / introHeight;
            float r = 0.05f + 0.05f * (1 - depth), g = 0.16f + 0.2f * (1 - depth),
                  b = 0.3f + 0.25f * (1 - depth);
            const float light =
                caustic(static_cast<float>(x), static_cast<float>(y), t) * (1.0f - depth) * 0.35f;
            r += light * 0.6f, g += light * 0.9f, b += light;
            const float dx = static_cast<float>(x) - introWidth * 0.5f;
            const float dy = (static_cast<float>(y) - 240.0f) * 3.0f;
            if (t < 1.6f && std::hypot(dx, (static_cast<float>(y) - dropY) * 0.8f) < 7.0f)
                r = 0.75f, g = 0.9f, b = 1.0f;
            if (ringAge > 0.0f) {
                const float ring = std::exp(-std::pow((std::hypot(dx, dy) - ringAge * 260.0f) / 6.0f, 2.0f));
                const float strength = ring * std::exp(-ringAge * 1.2f) * 0.8f;
                r += strength, g += strength, b += strength;
            }
            const int lx = x - (introWidth - logo.width) / 2, ly = y - (200 - logo.height / 2);
            if (logoShow > 0.0f && lx >= 0 && ly >= 0 && lx < logo.width && ly < logo.height) {
                const uint8_t* p = &logo.rgba[(static_cast<size_t>(ly) * logo.width + lx) * 4];
                const float a = p[3] / 255.0f * logoShow;
                r = r * (1 - a) + p[0] / 255.0f * a, g = g * (1 - a) + p[1] / 255.0f * a,
                b = b * (1 - a) + p[2] / 255.0f * a;
            }
            const float fade = fadeIn * fadeOut;
            uint8_t* out = &rgb[(static_cast<size_t>(y) * introWidth + x) * 3];
            out[0] = static_cast<uint8_t>(std::lround(clamp01(r) * fade * 255.0f));
            out[1] = static_cast<uint8_t>(std::lround(clamp01(g) * fade * 255.0f));
            out[2] = static_cast<uint8_t>(std::lround(clamp01(b) * fade * 255.0f));
        }
    }
    return rgb;
}
