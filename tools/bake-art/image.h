// The bake tool's picture: straight (not premultiplied) RGBA in floats, first
// row at the top, and the small drawing helpers every generator shares.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

struct Rgba {
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 0.0f;
};

struct Image {
    int width = 0;
    int height = 0;
    std::vector<Rgba> pixels;

    Image() = default;
    Image(int w, int h, Rgba fill = {});
    Rgba& at(int x, int y) { return pixels[static_cast<size_t>(y) * width + x]; }
    const Rgba& at(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

// A shape in pixel coordinates: the colour at a point, alpha 0 outside.
using Shader = std::function<Rgba(float x, float y)>;

// Renders a shader with samples by samples points in each pixel and averages
// them with premultiplied alpha, so that edges come out smooth.
Image renderSupersampled(int width, int height, int samples, const Shader& shader);

// Source over destination, straight alpha in and out.
Rgba over(const Rgba& destination, const Rgba& source);
Rgba mix(const Rgba& a, const Rgba& b, float t);
Rgba rgb(float r, float g, float b, float a = 1.0f);

float clamp01(float v);
float smoothstep(float edge0, float edge1, float x);
float lerp(float a, float b, float t);

// Gives fully transparent pixels the colour of their visible neighbours, so
// that filtering and mipmaps don't pull a dark fringe into the edges.
void bleedTransparentEdges(Image& image, int passes);
