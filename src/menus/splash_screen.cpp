// The loading splash: a background and an animation drawn by a thread of its
// own, with an OpenGL context of its own on the game's window, while the main
// thread is busy reading a level or reloading textures.
//
// No lock is needed: the thread touches shared state (the texture store, the
// configuration) only while the main thread waits for it, at its start in
// run() and at its end in stop(). Its loop uses only its own objects and the
// two flags, and calls nothing that leaves a name in the location trace.
#include <atomic>
#include <memory>

#include "menus/menus.h"
#include "menus/splash_picture.h"
#include "platform/platform.h"
#include "platform/window_backend.h"

namespace {

constexpr uint32_t frameSleepMilliseconds = 25;

struct State {
    std::atomic<bool> running{false};
    std::atomic<bool> ready{false};
    // The main thread has left every traced operation and waits for ready.
    std::atomic<bool> mainWaiting{false};
    GLWindowEventListener* savedListener = nullptr;
    std::unique_ptr<WorkerThread> thread;
};

State& state() {
    return singleInstance<State>();
}

void splashRoutine(void*) {
    while (!state().mainWaiting) Platform::sleepMilliseconds(1);
    void* context = WindowBackend::createThreadContext();
    auto picture = std::make_unique<SplashPicture>();
    picture->read();
    // The loop's clock is the platform's own: FrameClock leaves names in the trace.
    uint64_t lastTick = Platform::clockMicroseconds();
    state().ready = true;
    while (state().running) {
        const uint64_t tick = Platform::clockMicroseconds();
        const float seconds = static_cast<float>(tick - lastTick) * 1e-6f;
        lastTick = tick;
        if (context) {
            picture->advance(seconds);
            picture->draw();
            WindowBackend::swapBuffers();
        }
        Platform::sleepMilliseconds(frameSleepMilliseconds);
    }
    while (!state().mainWaiting) Platform::sleepMilliseconds(1);
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
    state().mainWaiting = true;
    while (!state().ready) Platform::sleepMilliseconds(5);
    state().mainWaiting = false;
}

void stop() {
    TRACE_LOCATION("SplashScreen::stop");
    if (!state().running) return;
    state().running = false;
    // Deleting the thread waits for its end, and leaves no name in the trace meanwhile.
    state().mainWaiting = true;
    state().thread.reset();
    state().mainWaiting = false;
    GLWindow::setEventListener(state().savedListener);
}

bool isRunning() {
    TRACE_LOCATION("SplashScreen::isRunning");
    return state().running;
}

}  // namespace SplashScreen
