// Polygons grouped by texture for drawing, shared by the two level renderers.
#pragma once

#include <vector>

#include "graphics/graphics.h"

struct TexturedPolygon {
    const Polygon2D* polygon = nullptr;
    const GLTexture* texture = nullptr;
};

// Draws the polygons as triangles with one texture bind and one glBegin for each
// run of equal textures, smallest texture name first. Texture coordinates come
// from the unmoved points, one texel to one world unit, so that adjoining
// polygons share one continuous image and a moving polygon carries its image.
void drawPolygonBatches(std::vector<TexturedPolygon>& polygons, bool withOffset);
