// Text broken into lines that fit the widget's width, at blanks where it can:
// the blank that ends a line stays at its end, and a word longer than a line
// gives up its first character to a line of its own.
#include <algorithm>

#include "menus/menus.h"

namespace {

constexpr float smallestFontSize = 4.0f;

bool breaksLine(char c) {
    return c == '\r' || c == '\n' || c == ' ';
}

}  // namespace

GuiTextBox::GuiTextBox() {
    TRACE_LOCATION("GuiTextBox::GuiTextBox");
    fontSize = 8.0f;
    setColor(1.0f, 1.0f, 1.0f, 1.0f);
}

void GuiTextBox::setText(const std::string& newText) {
    TRACE_LOCATION("GuiTextBox::setText");
    text = newText;
    formatText();
}

void GuiTextBox::setFontSize(float size) {
    TRACE_LOCATION("GuiTextBox::setFontSize");
    fontSize = std::max(size, smallestFontSize);
    formatText();
}

void GuiTextBox::formatText() {
    TRACE_LOCATION("GuiTextBox::formatText");
    lines.clear();
    const std::size_t perLine =
        static_cast<std::size_t>(std::max(static_cast<int>(static_cast<float>(width) / fontSize), 1));
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = start;
        while (end < text.size() && text[end] != '\n' && text[end] != '\r' && end - start < perLine) ++end;
        if (end < text.size()) {
            if (!breaksLine(text[end]) && end > start) {
                while (end > start && !breaksLine(text[end])) --end;
            }
            ++end;
        }
        lines.push_back(text.substr(start, end - start));
        start = end;
    }
}

void GuiTextBox::drawLines(float red, float green, float blue, float alpha, float offsetX,
                           float offsetY) const {
    TRACE_LOCATION("GuiTextBox::drawLines");
    float top = static_cast<float>(y) + offsetY;
    for (const std::string& line : lines) {
        float left = static_cast<float>(x) + offsetX;
        if (centered)
            left += static_cast<float>(width) * 0.5f - fontSize * static_cast<float>(line.size()) * 0.5f;
        font.drawString(line.c_str(), left, top, fontSize, red, green, blue, alpha);
        top += fontSize;
    }
}

void GuiTextBox::windowRedrawing() {
    TRACE_LOCATION("GuiTextBox::windowRedrawing");
    if (dropShadow.on)
        drawLines(dropShadow.r, dropShadow.g, dropShadow.b, dropShadow.a, dropShadow.offsetX,
                  dropShadow.offsetY);
    drawLines(r, g, b, a, 0.0f, 0.0f);
}
