// LevelGeometryRenderer: the polygons that never move, compiled into one display
// list per layer when a level is loaded, so that a layer costs one call a frame.
#include <GL/gl.h>

#include "console/console.h"
#include "graphics/polygon_batches.h"
#include "graphics/window/window.h"
#include "level/level.h"

namespace LevelGeometryRenderer {

namespace {
GLuint firstList = 0;
bool drawLevelGeometry = false;
// The textures the lists were compiled with stay held as long as the lists.
std::vector<GLTexture> listTextures;

bool isStatic(const Polygon2D& polygon) {
    return polygon.visible && !polygon.moveable && !polygon.destructable && !polygon.isDegenerate() &&
           polygon.triangleCount > 0;
}

void compileLayers() {
    std::vector<TexturedPolygon> layers[drawLayerCount];
    listTextures.clear();
    listTextures.reserve(Level::getPolygons().size());
    for (const Polygon2D& polygon : Level::getPolygons()) {
        if (!isStatic(polygon)) continue;
        // Reserved above, so the handles never move.
        listTextures.emplace_back(polygon.textureName);
        const uint32_t layer = polygon.layer < drawLayerCount ? polygon.layer : 0;
        layers[layer].push_back({&polygon, &listTextures.back()});
    }
    firstList = glGenLists(drawLayerCount);
    for (int layer = 0; layer < drawLayerCount; ++layer) {
        glNewList(firstList + layer, GL_COMPILE);
        drawPolygonBatches(layers[layer], false);
        glEndList();
    }
}
}  // namespace

void initialise() {
    TRACE_LOCATION("LevelGeometryRenderer::initialise");
    shutdown();
    GLConsole::print("\nInitialising level geometry renderer...");
    drawLevelGeometry = true;
    GLConsole::addCommand("DrawLevelGeometry", conCmdDrawLevelGeometry);
    FrameClock clock;
    if (GLWindow::contextAvailable()) compileLayers();
    clock.update();
    GLConsole::print("\nLevel geometry prepared for rendering in ");
    GLConsole::print(clock.deltaSeconds);
    GLConsole::print("\nseconds.");
}

void shutdown() {
    TRACE_LOCATION("LevelGeometryRenderer::shutdown");
    GLConsole::print("\nShutting down level geometry renderer...");
    GLConsole::removeCommand("DrawLevelGeometry");
    if (firstList != 0 && GLWindow::contextAvailable()) glDeleteLists(firstList, drawLayerCount);
    firstList = 0;
    listTextures.clear();
}

void drawLayer(int layer) {
    if (firstList == 0 || !drawLevelGeometry || layer < 0 || layer >= drawLayerCount) return;
    glCallList(firstList + layer);
}

bool conCmdDrawLevelGeometry(bool value, bool set) {
    if (set) drawLevelGeometry = value;
    return drawLevelGeometry;
}

}  // namespace LevelGeometryRenderer
