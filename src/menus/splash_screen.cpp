// The loading splash: a background and an animation drawn by a thread of its
// own, with an OpenGL context of its own on the game's window, while the main
// thread is busy reading a level or reloading textures.
//
// No lock is needed: the thread touches shared state (the texture store, the
// configuration) only while the main thread waits for it, at its start in
// run() and at its end in stop(). Its loop uses only its own objects and the
// two flags, and calls nothing that leaves a name in the location trace.
#include <GL/gl.h>

#include <algorithm>
#include <atomic>
#include <memory>

#include "graphics/graphics.h"
#include "menus/menus.h"
#include "platform/platform.h"
#include "platform/window_backend.h"

namespace {

constexpr int largestClientSide = 65535;
constexpr float slowestAnimation = 0.000001f;
constexpr uint32_t frameSleepMilliseconds = 25;

struct State {
    std::atomic<bool> running{false};
    std::atomic<bool> ready{false};
    GLWindowEventListener* savedListener = nullptr;
    std::unique_ptr<WorkerThread> thread;
};

State& state() {
    return singleInstance<State>();
}

// What the thread draws with, made and freed by the thread itself.
struct SplashPicture {
    GLTexture background;
    LevelObject animation;
    float s0 = 0.0f, s1 = 1.0f, t0 = 0.0f, t1 = 1.0f;
    float centreX = 0.0f, centreY = 0.0f;
    float speed = slowestAnimation;
    float frameTimer = 0.0f;
    int frame = 0;
};

void readPicture(SplashPicture& picture) {
    TRACE_LOCATION("SplashScreen::readPicture");
    const ConfigFile config("cfg\\splashScreen.cfg");
    picture.background = GLTexture(config.getVarAsString("splashBackground"));
    picture.animation.setTexture(config.getVarAsString("splashAnimation"));
    picture.centreX = config.getVarAsFloat("splashAnimationX");
    picture.centreY = config.getVarAsFloat("splashAnimationY");
    const float speed = config.getVarAsFloat("splashAnimationSpeed");
    picture.speed = speed > 0.0f ? speed : slowestAnimation;
    // The part of the background shown, centred on the image.
    const float a = picture.background.width > 0 ? config.getVarAsFloat("splashBackgroundW") /
                                                       static_cast<float>(picture.background.width) * 0.5f
                                                 : 0.0f;
    const float b = picture.background.height > 0 ? config.getVarAsFloat("splashBackgroundH") /
                                                        static_cast<float>(picture.background.height) * 0.5f
                                                  : 0.0f;
    picture.s0 = 0.5f - a;
    picture.s1 = 0.5f + a;
    picture.t0 = 0.5f - b;
    picture.t1 = 0.5f + b;
}

void quad(float left, float top, float right, float bottom, float s0, float t0, float s1, float t1) {
    glBegin(GL_QUADS);
    glTexCoord2f(s0, t0);
    glVertex2f(left, top);
    glTexCoord2f(s1, t0);
    glVertex2f(right, top);
    glTexCoord2f(s1, t1);
    glVertex2f(right, bottom);
    glTexCoord2f(s0, t1);
    glVertex2f(left, bottom);
    glEnd();
}

void advanceAnimation(SplashPicture& picture, float seconds) {
    picture.frameTimer += seconds;
    if (picture.frameTimer <= 1.0f / picture.speed) return;
    picture.frameTimer = 0.0f;
    const int frames = static_cast<int>(picture.animation.frames.size());
    picture.frame = picture.frame + 1 >= frames ? 0 : picture.frame + 1;
}

// One frame, set up as glBeginDraw2d does but without the traced window layer.
void drawFrame(const SplashPicture& picture) {
    int width = 0, height = 0;
    WindowBackend::getClientSize(width, height);
    width = std::clamp(width, 1, largestClientSide);
    height = std::clamp(height, 1, largestClientSide);
    const float w = static_cast<float>(width);
    const float h = static_cast<float>(height);
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glScalef(1.0f / (w * 0.5f), -1.0f / (h * 0.5f), 1.0f);
    glTranslatef(-w * 0.5f, -h * 0.5f, 0.0f);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glScalef(w / Gui::virtualWidth, h / Gui::virtualHeight, 0.0f);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    glBindTexture(GL_TEXTURE_2D, picture.background.id);
    quad(0.0f, 0.0f, Gui::virtualWidth, Gui::virtualHeight, picture.s0, picture.t0, picture.s1, picture.t1);
    const std::vector<GLTexture>& frames = picture.animation.frames;
    if (frames.empty()) return;
    const GLTexture& frame =
        frames[static_cast<std::size_t>(std::clamp(picture.frame, 0, static_cast<int>(frames.size()) - 1))];
    const float left = picture.centreX - static_cast<float>(frame.width) * 0.5f;
    const float top = picture.centreY - static_cast<float>(frame.height) * 0.5f;
    const float fw = static_cast<float>(frame.width);
    const float fh = static_cast<float>(frame.height);
    glBindTexture(GL_TEXTURE_2D, frame.id);
    glColor4f(0.0f, 0.0f, 0.0f, 1.0f);
    quad(left + 1.0f, top + 1.0f, left + 1.0f + fw, top + 1.0f + fh, 0.0f, 0.0f, 1.0f, 1.0f);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    quad(left, top, left + fw, top + fh, 0.0f, 0.0f, 1.0f, 1.0f);
}

void splashRoutine(void*) {
    void* context = WindowBackend::createThreadContext();
    auto picture = std::make_unique<SplashPicture>();
    readPicture(*picture);
    FrameClock clock;
    clock.update();
    state().ready = true;
    while (state().running) {
        clock.update();
        if (context) {
            advanceAnimation(*picture, clock.deltaSeconds);
            drawFrame(*picture);
            WindowBackend::swapBuffers();
        }
        Platform::sleepMilliseconds(frameSleepMilliseconds);
    }
    picture.reset();
    WindowBackend::deleteThreadContext(context);
}

}  // namespace

namespace SplashScreen {

// Returns once the thread has its pictures, so that the main thread may use
// the texture store and the configuration reader again.
void run() {
    TRACE_LOCATION("SplashScreen::run");
    // Without a window there is nothing to show it on.
    if (state().running || !GLWindow::contextAvailable()) return;
    state().savedListener = GLWindow::getEventListener();
    GLWindow::setEventListener(nullptr);
    state().running = true;
    state().thread = std::make_unique<WorkerThread>(splashRoutine);
    state().thread->setPriority(0);
    state().ready = false;
    state().thread->resume();
    if (state().thread->isSuspended()) {
        // The system gave no thread: the work goes on without a splash.
        state().thread.reset();
        state().running = false;
        GLWindow::setEventListener(state().savedListener);
        return;
    }
    while (!state().ready) Platform::sleepMilliseconds(5);
}

void stop() {
    TRACE_LOCATION("SplashScreen::stop");
    if (!state().running) return;
    state().running = false;
    state().thread.reset();
    GLWindow::setEventListener(state().savedListener);
}

bool isRunning() {
    TRACE_LOCATION("SplashScreen::isRunning");
    return state().running;
}

}  // namespace SplashScreen
