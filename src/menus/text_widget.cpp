// The font, size and drop shadow that every text widget carries, and the plain label.
#include "menus/menus.h"

namespace {
constexpr float smallestFontSize = 4.0f;
}  // namespace

GuiTextWidget::GuiTextWidget() {
    TRACE_LOCATION("GuiTextWidget::GuiTextWidget");
    setColor(0.0f, 0.0f, 0.0f, 1.0f);
}

void GuiTextWidget::setFont(const std::string& textureName) {
    TRACE_LOCATION("GuiTextWidget::setFont");
    font = GLTexture(textureName);
}

void GuiTextWidget::setFontSize(float size) {
    TRACE_LOCATION("GuiTextWidget::setFontSize");
    if (size >= smallestFontSize) fontSize = size;
}

void GuiTextWidget::drawText(const std::string& text, float left, float top) const {
    TRACE_LOCATION("GuiTextWidget::drawText");
    if (dropShadow.on)
        font.drawString(text.c_str(), left + dropShadow.offsetX, top + dropShadow.offsetY, fontSize,
                        dropShadow.r, dropShadow.g, dropShadow.b, dropShadow.a);
    font.drawString(text.c_str(), left, top, fontSize, r, g, b, a);
}

void GuiLabel::windowRedrawing() {
    TRACE_LOCATION("GuiLabel::windowRedrawing");
    drawText(text, static_cast<float>(x), static_cast<float>(y));
}
