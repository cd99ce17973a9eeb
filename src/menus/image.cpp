// A portion of an image, given in the image's pixels, stretched over the widget.
#include <GL/gl.h>

#include "graphics/textured_quad.h"
#include "menus/menus.h"

void GuiImage::setImage(const std::string& name) {
    TRACE_LOCATION("GuiImage::setImage");
    image = GLTexture(name);
    setImagePortion(0.0f, 0.0f, static_cast<float>(image.width), static_cast<float>(image.height));
}

void GuiImage::setImagePortion(float left, float top, float newWidth, float newHeight) {
    TRACE_LOCATION("GuiImage::setImagePortion");
    portionX = left;
    portionY = top;
    portionWidth = newWidth;
    portionHeight = newHeight;
}

void GuiImage::windowRedrawing() {
    TRACE_LOCATION("GuiImage::windowRedrawing");
    if (!GLWindow::contextAvailable()) return;
    float s0 = 0.0f, s1 = 0.0f, t0 = 0.0f, t1 = 0.0f;
    if (image.width > 0 && image.height > 0) {
        const float w = static_cast<float>(image.width);
        const float h = static_cast<float>(image.height);
        s0 = portionX / w;
        s1 = s0 + portionWidth / w;
        t0 = portionY / h;
        t1 = t0 + portionHeight / h;
    }
    const float left = static_cast<float>(x);
    const float top = static_cast<float>(y);
    const float right = left + static_cast<float>(width);
    const float bottom = top + static_cast<float>(height);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, image.id);
    glColor4f(r, g, b, a);
    drawTexturedQuad(left, top, right, bottom, s0, t0, s1, t1);
}
