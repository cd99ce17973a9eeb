// LevelGeometryRenderer: the polygons that never move, compiled into one display
// list per layer when a level is loaded, so that a layer costs one call a frame.
#include <GL/gl.h>

#include <optional>

#include "console/console.h"
#include "graphics/polygon_batches.h"
#include "graphics/window/window.h"
#include "level/level.h"

namespace LevelGeometryRenderer {

namespace {

struct State {
    GLuint firstList = 0;
    bool drawLevelGeometry = false;
    // For polygons made without a texture; the others hold theirs as long as
    // the lists that bind them.
    std::optional<GLTexture> fallbackTexture;
};

State& state() {
    return singleInstance<State>();
}

bool isStatic(const Polygon2D& polygon) {
    return polygon.visible && !polygon.moveable && !polygon.destructable && !polygon.isDegenerate() &&
           polygon.triangleCount > 0;
}

void compileLayers() {
    std::vector<TexturedPolygon> layers[drawLayerCount];
    for (const Polygon2D& polygon : Level::getPolygons()) {
        if (!isStatic(polygon)) continue;
        if (!polygon.texture && !state().fallbackTexture) state().fallbackTexture.emplace();
        const GLTexture* texture = polygon.texture ? &*polygon.texture : &*state().fallbackTexture;
        const uint32_t layer = polygon.layer < drawLayerCount ? polygon.layer : 0;
        layers[layer].push_back({&polygon, texture});
    }
    state().firstList = glGenLists(drawLayerCount);
    for (int layer = 0; layer < drawLayerCount; ++layer) {
        glNewList(state().firstList + layer, GL_COMPILE);
        drawPolygonBatches(layers[layer], false);
        glEndList();
    }
}

const GLConsoleCommand commands[] = {
    {"DrawLevelGeometry", GLConsole::settingCommand<state, &State::drawLevelGeometry>},
};
const GLConsole::Subsystem console("\nInitialising level geometry renderer...",
                                   "\nShutting down level geometry renderer...", commands);
}  // namespace

void initialise() {
    TRACE_LOCATION("LevelGeometryRenderer::initialise");
    shutdown();
    GLConsole::startSubsystem(console);
    state().drawLevelGeometry = true;
    FrameClock clock;
    if (GLWindow::contextAvailable()) compileLayers();
    clock.update();
    GLConsole::print("\nLevel geometry prepared for rendering in ");
    GLConsole::print(clock.deltaSeconds);
    GLConsole::print("\nseconds.");
}

void shutdown() {
    TRACE_LOCATION("LevelGeometryRenderer::shutdown");
    GLConsole::stopSubsystem(console);
    if (state().firstList != 0 && GLWindow::contextAvailable())
        glDeleteLists(state().firstList, drawLayerCount);
    state() = State();
}

void drawLayer(int layer) {
    TRACE_LOCATION("LevelGeometryRenderer::drawLayer");
    if (state().firstList == 0 || !state().drawLevelGeometry || layer < 0 || layer >= drawLayerCount) return;
    glCallList(state().firstList + layer);
}

}  // namespace LevelGeometryRenderer
