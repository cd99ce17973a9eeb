// The drop shadow that buttons and text widgets cast.
#include "menus/menus.h"

void GuiShadowCaster::setDropShadowColor(float red, float green, float blue, float alpha) {
    TRACE_LOCATION("GuiShadowCaster::setDropShadowColor");
    dropShadow.r = red;
    dropShadow.g = green;
    dropShadow.b = blue;
    dropShadow.a = alpha;
}

void GuiShadowCaster::setDropShadowOffset(float offsetX, float offsetY) {
    TRACE_LOCATION("GuiShadowCaster::setDropShadowOffset");
    dropShadow.offsetX = offsetX;
    dropShadow.offsetY = offsetY;
}
