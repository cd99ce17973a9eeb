// The splash's picture: a part of a background over the whole window and an
// animation centred on its point. Its frames are drawn on the splash's own
// thread, so drawing calls nothing that leaves a name in the location trace.
#include "menus/splash_picture.h"

#include <GL/gl.h>

#include <algorithm>

#include "graphics/pixel_view.h"
#include "graphics/textured_quad.h"
#include "menus/menus.h"
#include "platform/window_backend.h"

namespace {
constexpr int largestClientSide = 65535;
}  // namespace

void SplashPicture::read() {
    TRACE_LOCATION("SplashPicture::read");
    const ConfigFile config("cfg\\splashScreen.cfg");
    background = GLTexture(config.getVarAsString("splashBackground"));
    animation.setTexture(config.getVarAsString("splashAnimation"));
    centreX = config.getVarAsFloat("splashAnimationX");
    centreY = config.getVarAsFloat("splashAnimationY");
    const float configuredSpeed = config.getVarAsFloat("splashAnimationSpeed");
    speed = configuredSpeed > 0.0f ? configuredSpeed : slowestAnimation;
    // The part of the background shown, centred on the image.
    const float a = background.width > 0 ? config.getVarAsFloat("splashBackgroundW") /
                                               static_cast<float>(background.width) * 0.5f
                                         : 0.0f;
    const float b = background.height > 0 ? config.getVarAsFloat("splashBackgroundH") /
                                                static_cast<float>(background.height) * 0.5f
                                          : 0.0f;
    s0 = 0.5f - a;
    s1 = 0.5f + a;
    t0 = 0.5f - b;
    t1 = 0.5f + b;
}

void SplashPicture::advance(float seconds) {
    frameTimer += seconds;
    if (frameTimer <= 1.0f / speed) return;
    frameTimer = 0.0f;
    const int frames = static_cast<int>(animation.frames.size());
    frame = frame + 1 >= frames ? 0 : frame + 1;
}

// The same pixel view as glBeginDraw2d, without the traced window layer.
void SplashPicture::draw() const {
    int width = 0, height = 0;
    WindowBackend::getClientSize(width, height);
    width = std::clamp(width, 1, largestClientSide);
    height = std::clamp(height, 1, largestClientSide);
    setPixelView(width, height);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glScalef(static_cast<float>(width) / Gui::virtualWidth, static_cast<float>(height) / Gui::virtualHeight,
             0.0f);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    glBindTexture(GL_TEXTURE_2D, background.id);
    drawTexturedQuad(0.0f, 0.0f, Gui::virtualWidth, Gui::virtualHeight, s0, t0, s1, t1);
    const std::vector<GLTexture>& frames = animation.frames;
    if (frames.empty()) return;
    const GLTexture& shown =
        frames[static_cast<std::size_t>(std::clamp(frame, 0, static_cast<int>(frames.size()) - 1))];
    const float fw = static_cast<float>(shown.width);
    const float fh = static_cast<float>(shown.height);
    const float left = centreX - fw * 0.5f;
    const float top = centreY - fh * 0.5f;
    glBindTexture(GL_TEXTURE_2D, shown.id);
    glColor4f(0.0f, 0.0f, 0.0f, 1.0f);
    drawTexturedQuad(left + 1.0f, top + 1.0f, left + 1.0f + fw, top + 1.0f + fh, 0.0f, 0.0f, 1.0f, 1.0f);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    drawTexturedQuad(left, top, left + fw, top + fh, 0.0f, 0.0f, 1.0f, 1.0f);
}
