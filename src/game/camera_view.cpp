// The camera's view of the world for drawing.
#include <GL/gl.h>

#include "game/game.h"
#include "graphics/window/window.h"

namespace Camera {

void viewFrom() {
    TRACE_LOCATION("Camera::viewFrom");
    if (!GLWindow::contextAvailable()) return;
    const float areaX = Game::getViewAreaX();
    const float areaY = Game::getViewAreaY();
    const float zoom = getZoom();
    const Vector2D centre = getViewCentre();
    glLoadIdentity();
    glScalef(static_cast<float>(GLWindow::getClientWidth()) / areaX,
             static_cast<float>(GLWindow::getClientHeight()) / areaY, 1.0f);
    glTranslatef(areaX * 0.5f, areaY * 0.5f, 0.0f);
    glScalef(1.0f / zoom, 1.0f / zoom, 1.0f);
    glRotatef(-getTilt(), 0.0f, 0.0f, 1.0f);
    glTranslatef(-centre.x, -centre.y, 0.0f);
}

}  // namespace Camera
