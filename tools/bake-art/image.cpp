#include "image.h"

#include <algorithm>

Image::Image(int w, int h, Rgba fill) : width(w), height(h), pixels(static_cast<size_t>(w) * h, fill) {}

float clamp01(float v) {
    return std::min(1.0f, std::max(0.0f, v));
}

float smoothstep(float edge0, float edge1, float x) {
    const float t = clamp01((x - edge0) / (edge1 - edge0));
    return t * t * (3.0f - 2.0f * t);
}

float lerp(float a, float b, float t) {
    return a + (b - a) * t;
}

Rgba rgb(float r, float g, float b, float a) {
    return {r, g, b, a};
}

Rgba mix(const Rgba& a, const Rgba& b, float t) {
    return {lerp(a.r, b.r, t), lerp(a.g, b.g, t), lerp(a.b, b.b, t), lerp(a.a, b.a, t)};
}

Rgba over(const Rgba& destination, const Rgba& source) {
    const float a = source.a + destination.a * (1.0f - source.a);
    if (a <= 0.0f) return {};
    const float keep = destination.a * (1.0f - source.a);
    return {(source.r * source.a + destination.r * keep) / a,
            (source.g * source.a + destination.g * keep) / a,
            (source.b * source.a + destination.b * keep) / a, a};
}

Image renderSupersampled(int width, int height, int samples, const Shader& shader) {
    Image image(width, height);
    const float step = 1.0f / static_cast<float>(samples);
    const float weight = step * step;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            Rgba sum;
            for (int sy = 0; sy < samples; ++sy) {
                for (int sx = 0; sx < samples; ++sx) {
                    const float u = static_cast<float>(x) + (static_cast<float>(sx) + 0.5f) * step;
                    const float v = static_cast<float>(y) + (static_cast<float>(sy) + 0.5f) * step;
                    const Rgba c = shader(u, v);
                    sum.r += c.r * c.a;
                    sum.g += c.g * c.a;
                    sum.b += c.b * c.a;
                    sum.a += c.a;
                }
            }
            Rgba& out = image.at(x, y);
            out.a = sum.a * weight;
            if (sum.a > 0.0f) out = {sum.r / sum.a, sum.g / sum.a, sum.b / sum.a, out.a};
        }
    }
    return image;
}

namespace {

// The mean colour of the visible four-neighbours of a pixel, if it has any.
bool neighbourColour(const Image& image, const std::vector<bool>& known, int x, int y, Rgba& colour) {
    static const int offsets[4][2] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
    Rgba sum;
    int count = 0;
    for (const auto& o : offsets) {
        const int nx = x + o[0];
        const int ny = y + o[1];
        if (nx < 0 || ny < 0 || nx >= image.width || ny >= image.height) continue;
        if (!known[static_cast<size_t>(ny) * image.width + nx]) continue;
        const Rgba& c = image.at(nx, ny);
        sum.r += c.r;
        sum.g += c.g;
        sum.b += c.b;
        ++count;
    }
    if (count == 0) return false;
    const float n = static_cast<float>(count);
    colour = {sum.r / n, sum.g / n, sum.b / n, 0.0f};
    return true;
}

}  // namespace

void bleedTransparentEdges(Image& image, int passes) {
    std::vector<bool> known(image.pixels.size());
    for (size_t i = 0; i < known.size(); ++i) known[i] = image.pixels[i].a > 0.0f;
    for (int pass = 0; pass < passes; ++pass) {
        std::vector<bool> next = known;
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x) {
                const size_t i = static_cast<size_t>(y) * image.width + x;
                Rgba colour;
                if (known[i] || !neighbourColour(image, known, x, y, colour)) continue;
                image.pixels[i] = colour;
                next[i] = true;
            }
        }
        known.swap(next);
    }
}
