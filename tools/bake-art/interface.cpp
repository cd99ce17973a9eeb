// The default texture that stands in for missing images, and the mouse cursor.
#include <vector>

#include "art.h"
#include "shapes.h"

namespace {

// Two greys in squares of eight: plainly a placeholder, never mistaken for art.
Image checkerboard() {
    Image image(64, 64);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x)
            image.at(x, y) = ((x / 8 + y / 8) % 2 == 0) ? rgb(0.85f, 0.85f, 0.85f) : rgb(0.45f, 0.45f, 0.5f);
    return image;
}

// A classic arrow with its tip at the top left texel, where the game puts the
// mouse position; white with a dark rim, so that it reads on any background.
Image cursor() {
    const std::vector<Point> arrow = {{1, 1},         {1, 23},     {6.5f, 18}, {10.5f, 27},
                                      {14.5f, 25.5f}, {10.5f, 17}, {17.5f, 17}};
    Image image = renderSupersampled(32, 32, 4, [&arrow](float x, float y) {
        const Point p{x, y};
        const float edge = distanceToOutline(p, arrow);
        const bool inside = insidePolygon(p, arrow);
        const float rimWidth = 1.4f;
        if (!inside) return Rgba{0.08f, 0.1f, 0.14f, coverage(edge - rimWidth * 0.5f)};
        const Rgba fill = edge < rimWidth ? rgb(0.08f, 0.1f, 0.14f) : rgb(0.97f, 0.98f, 1.0f);
        return fill;
    });
    bleedTransparentEdges(image, 4);
    return image;
}

}  // namespace

ArtSet bakeInterface() {
    ArtSet set;
    set.push_back({"gfx/default.tga", checkerboard(), false});
    set.push_back({"gfx/cursor.tga", cursor(), false});
    return set;
}
