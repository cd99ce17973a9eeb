// DynamicPolygonRenderer: the visible polygons that can move or vanish, picked
// near the view each frame and drawn at their offset in immediate mode.
#include <algorithm>

#include "console/console.h"
#include "game/game.h"
#include "graphics/graphics_state.h"
#include "graphics/polygon_batches.h"
#include "graphics/window/window.h"
#include "level/level.h"

namespace DynamicPolygonRenderer {

State& state() {
    return singleInstance<State>();
}

namespace {

bool isDynamic(const Polygon2D& polygon) {
    return !polygon.isDegenerate() && polygon.triangleCount > 0 && polygon.visible &&
           (polygon.moveable || polygon.destructable);
}

// Ends included, so a polygon touching the box is drawn.
bool overlaps(const Entry& entry, const Vector2D& centre, float half) {
    const Vector2D offset = entry.polygon->offset;
    return entry.maxX + offset.x >= centre.x - half && entry.minX + offset.x <= centre.x + half &&
           entry.maxY + offset.y >= centre.y - half && entry.minY + offset.y <= centre.y + half;
}
}  // namespace

void findPolygonBounds(const Polygon2D& polygon, float& minX, float& maxX, float& minY, float& maxY) {
    TRACE_LOCATION("DynamicPolygonRenderer::findPolygonBounds");
    minX = maxX = minY = maxY = 0.0f;
    if (polygon.pointsX.empty()) return;
    const auto [lowX, highX] = std::minmax_element(polygon.pointsX.begin(), polygon.pointsX.end());
    const auto [lowY, highY] = std::minmax_element(polygon.pointsY.begin(), polygon.pointsY.end());
    minX = *lowX;
    maxX = *highX;
    minY = *lowY;
    maxY = *highY;
}

void initialise() {
    TRACE_LOCATION("DynamicPolygonRenderer::initialise");
    shutdown();
    GLConsole::print("\nIntialising dynamic polygon renderer..");
    for (Polygon2D& polygon : Level::getPolygons()) {
        if (!isDynamic(polygon)) continue;
        Entry& entry = state().entries.emplace_back();
        entry.polygon = &polygon;
        if (polygon.texture) entry.texture = *polygon.texture;
        findPolygonBounds(polygon, entry.minX, entry.maxX, entry.minY, entry.maxY);
    }
}

void shutdown() {
    TRACE_LOCATION("DynamicPolygonRenderer::shutdown");
    GLConsole::print("\nShuttrng down dynamic polygon renderer..");
    state() = State();
}

void prepareDraw() {
    TRACE_LOCATION("DynamicPolygonRenderer::prepareDraw");
    const Vector2D centre = Camera::getViewCentre();
    const float half = 0.65f * std::max(Game::getViewAreaX(), Game::getViewAreaY()) * Camera::getZoom();
    for (const Entry& entry : state().entries) {
        if (!entry.polygon->present || !overlaps(entry, centre, half)) continue;
        const uint32_t layer = entry.polygon->layer < drawLayerCount ? entry.polygon->layer : 0;
        state().queues[layer].push_back({entry.polygon, &entry.texture});
    }
}

void drawLayer(int layer) {
    TRACE_LOCATION("DynamicPolygonRenderer::drawLayer");
    if (layer < 0 || layer >= drawLayerCount) return;
    if (GLWindow::contextAvailable()) drawPolygonBatches(state().queues[layer], true);
    state().queues[layer].clear();
}

}  // namespace DynamicPolygonRenderer
