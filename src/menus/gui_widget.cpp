// What every widget has: a colour, a place and size in units of the virtual
// screen, and the keys that pass the focus to another widget.
#include <GL/gl.h>

#include <algorithm>

#include "graphics/textured_quad.h"
#include "menus/menus.h"

namespace Gui {

int toVirtualX(int windowX) {
    TRACE_LOCATION("Gui::toVirtualX");
    const float width = static_cast<float>(std::max(GLWindow::getClientWidth(), 1));
    return static_cast<int>(roundToNearest(static_cast<float>(windowX) * (virtualWidth / width)));
}

int toVirtualY(int windowY) {
    TRACE_LOCATION("Gui::toVirtualY");
    const float height = static_cast<float>(std::max(GLWindow::getClientHeight(), 1));
    return static_cast<int>(roundToNearest(static_cast<float>(windowY) * (virtualHeight / height)));
}

void scaleToWindow() {
    TRACE_LOCATION("Gui::scaleToWindow");
    glScalef(static_cast<float>(GLWindow::getClientWidth()) / virtualWidth,
             static_cast<float>(GLWindow::getClientHeight()) / virtualHeight, 0.0f);
}

void drawCursor(const GLTexture& cursor, bool withShadow) {
    TRACE_LOCATION("Gui::drawCursor");
    GLWindow::glBeginDraw2d();
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBindTexture(GL_TEXTURE_2D, cursor.id);
    const float left = static_cast<float>(GLWindow::getMouseX());
    const float top = static_cast<float>(GLWindow::getMouseY());
    const float w = static_cast<float>(cursor.width);
    const float h = static_cast<float>(cursor.height);
    if (withShadow) {
        glColor4f(0.0f, 0.0f, 0.0f, 1.0f);
        drawTexturedQuad(left + 2.0f, top + 2.0f, left + 2.0f + w, top + 2.0f + h);
    }
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    drawTexturedQuad(left, top, left + w, top + h);
}

}  // namespace Gui

void GuiWidget::setColor(float red, float green, float blue, float alpha) {
    TRACE_LOCATION("GuiWidget::setColor");
    r = std::clamp(red, 0.0f, 1.0f);
    g = std::clamp(green, 0.0f, 1.0f);
    b = std::clamp(blue, 0.0f, 1.0f);
    a = std::clamp(alpha, 0.0f, 1.0f);
}

void GuiWidget::setPosition(int left, int top) {
    TRACE_LOCATION("GuiWidget::setPosition");
    x = left;
    y = top;
}

void GuiWidget::setSize(int newWidth, int newHeight) {
    TRACE_LOCATION("GuiWidget::setSize");
    width = std::max(newWidth, 0);
    height = std::max(newHeight, 0);
}

void GuiWidget::addFocusTraversal(int key, GuiWidget* widget) {
    TRACE_LOCATION("GuiWidget::addFocusTraversal");
    focusTraversal[key] = widget;
}

void GuiWidget::doFocusTraversal(int key) {
    TRACE_LOCATION("GuiWidget::doFocusTraversal");
    const auto target = focusTraversal.find(key);
    if (screen && target != focusTraversal.end()) screen->setFocusedWidget(target->second);
}

bool GuiWidget::contains(int pointX, int pointY) const {
    TRACE_LOCATION("GuiWidget::contains");
    return pointX >= x && pointX < x + width && pointY >= y && pointY < y + height;
}
