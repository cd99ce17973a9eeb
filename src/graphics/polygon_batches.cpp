#include "graphics/polygon_batches.h"

#include <GL/gl.h>

#include <algorithm>

#include "level/level.h"

namespace {
void emitTriangles(const Polygon2D& polygon, const GLTexture& texture, bool withOffset) {
    const float width = texture.width > 0 ? static_cast<float>(texture.width) : 1.0f;
    const float height = texture.height > 0 ? static_cast<float>(texture.height) : 1.0f;
    const Vector2D shift = withOffset ? polygon.offset : Vector2D();
    const std::size_t vertices = std::min(polygon.triangleX.size(), polygon.triangleY.size());
    for (std::size_t i = 0; i < vertices; ++i) {
        const float x = polygon.triangleX[i];
        const float y = polygon.triangleY[i];
        glTexCoord2f(x / width, y / height);
        glVertex2f(x + shift.x, y + shift.y);
    }
}
}  // namespace

void drawPolygonBatches(std::vector<TexturedPolygon>& polygons, bool withOffset) {
    TRACE_LOCATION("drawPolygonBatches");
    std::stable_sort(
        polygons.begin(), polygons.end(),
        [](const TexturedPolygon& a, const TexturedPolygon& b) { return *a.texture < *b.texture; });
    for (std::size_t first = 0; first < polygons.size();) {
        const GLTexture& texture = *polygons[first].texture;
        glBindTexture(GL_TEXTURE_2D, texture.id);
        glBegin(GL_TRIANGLES);
        std::size_t next = first;
        for (; next < polygons.size() && *polygons[next].texture == texture; ++next)
            emitTriangles(*polygons[next].polygon, texture, withOffset);
        glEnd();
        first = next;
    }
}
