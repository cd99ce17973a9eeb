// The game's window on SDL2 with an OpenGL compatibility context.
#include <SDL.h>

#include <set>

#include "foundation/single_instance.h"
#include "platform/platform.h"
#include "platform/window_backend.h"

namespace WindowBackend {

namespace {
struct State {
    SDL_Window* window = nullptr;
    SDL_GLContext context = nullptr;
    SDL_Cursor* arrowCursor = nullptr;
    SDL_Cursor* crossCursor = nullptr;
    std::set<int> keysDown;
    bool insertToggled = false;
};

State& state() {
    return singleInstance<State>();
}

void setContextAttributes(int samples, bool accumulation) {
    SDL_GL_ResetAttributes();
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_COMPATIBILITY);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
    SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, 8);
    const int accumulationBits = accumulation ? 8 : 0;
    SDL_GL_SetAttribute(SDL_GL_ACCUM_RED_SIZE, accumulationBits);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_GREEN_SIZE, accumulationBits);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_BLUE_SIZE, accumulationBits);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_ALPHA_SIZE, accumulationBits);
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, samples > 1 ? 1 : 0);
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, samples > 1 ? samples : 0);
}

bool initialiseVideo(std::string& error) {
    // The game installs its own fatal signal handlers; SDL must not replace them.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    // Losing the foreground is the game's business (it minimises and pauses itself).
    SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
    // Video stays up once started: closing the display would unload the GL driver,
    // and a rebuilt window (a new sample count) needs it again at once.
    if (SDL_WasInit(SDL_INIT_VIDEO) || SDL_InitSubSystem(SDL_INIT_VIDEO) == 0) return true;
    error = SDL_GetError();
    return false;
}

SDL_Window* openWindow(const char* title, int width, int height, int samples, bool accumulation) {
    setContextAttributes(samples, accumulation);
    return SDL_CreateWindow(title, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width, height,
                            SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE);
}

int buttonFor(Uint8 sdlButton) {
    switch (sdlButton) {
        case SDL_BUTTON_LEFT:
            return 1;
        case SDL_BUTTON_RIGHT:
            return 2;
        case SDL_BUTTON_MIDDLE:
            return 4;
        default:
            return 0;
    }
}

bool translateKey(const SDL_KeyboardEvent& key, Event& event) {
    event.key = virtualKeyFor(key.keysym.sym, key.keysym.scancode);
    if (event.key == 0) return false;
    if (key.type == SDL_KEYDOWN) {
        if (event.key == 45 && !key.repeat) state().insertToggled = !state().insertToggled;
        state().keysDown.insert(event.key);
        event.type = Event::KeyPressed;
    } else {
        state().keysDown.erase(event.key);
        event.type = Event::KeyReleased;
    }
    return true;
}

bool translateWindowEvent(const SDL_WindowEvent& windowEvent, Event& event) {
    switch (windowEvent.event) {
        case SDL_WINDOWEVENT_SIZE_CHANGED:
            event.type = Event::Resized;
            return true;
        case SDL_WINDOWEVENT_CLOSE:
            event.type = Event::Closing;
            return true;
        case SDL_WINDOWEVENT_EXPOSED:
            event.type = Event::Exposed;
            return true;
        case SDL_WINDOWEVENT_FOCUS_LOST:
            state().keysDown.clear();
            event.type = Event::FocusLost;
            return true;
        default:
            return false;
    }
}

bool translate(const SDL_Event& sdlEvent, Event& event) {
    event = Event{};
    switch (sdlEvent.type) {
        case SDL_MOUSEMOTION:
            event.type = Event::MouseMoved;
            event.x = sdlEvent.motion.x;
            event.y = sdlEvent.motion.y;
            return true;
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            event.button = buttonFor(sdlEvent.button.button);
            event.type = sdlEvent.type == SDL_MOUSEBUTTONDOWN ? Event::MousePressed : Event::MouseReleased;
            event.x = sdlEvent.button.x;
            event.y = sdlEvent.button.y;
            return event.button != 0;
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            return translateKey(sdlEvent.key, event);
        case SDL_WINDOWEVENT:
            return translateWindowEvent(sdlEvent.window, event);
        default:
            return false;
    }
}
}  // namespace

// Whether the OpenGL driver can be loaded at all; the window holds it otherwise.
bool openGLLoads() {
    if (SDL_GL_LoadLibrary(nullptr) != 0) return false;
    SDL_GL_UnloadLibrary();
    return true;
}

CreateStage failedAt(CreateStage stage, std::string& error) {
    error = SDL_GetError();
    destroy();
    return stage;
}

CreateStage create(const char* title, int clientWidth, int clientHeight, int samples, std::string& error) {
    if (state().window) return CreateStage::succeeded;
    if (!initialiseVideo(error)) return CreateStage::videoSystem;
    state().window = openWindow(title, clientWidth, clientHeight, samples, true);
    // A display without accumulation visuals still gets a window; only the fade needs it.
    if (!state().window && samples <= 1)
        state().window = openWindow(title, clientWidth, clientHeight, samples, false);
    if (!state().window) return failedAt(openGLLoads() ? CreateStage::window : CreateStage::glLibrary, error);
    if (!(SDL_GetWindowFlags(state().window) & SDL_WINDOW_OPENGL))
        return failedAt(CreateStage::glWindow, error);
    state().context = SDL_GL_CreateContext(state().window);
    if (!state().context) return failedAt(CreateStage::renderContext, error);
    SDL_GL_MakeCurrent(state().window, state().context);
    state().arrowCursor = SDL_CreateSystemCursor(SDL_SYSTEM_CURSOR_ARROW);
    state().crossCursor = SDL_CreateSystemCursor(SDL_SYSTEM_CURSOR_CROSSHAIR);
    state().keysDown.clear();
    return CreateStage::succeeded;
}

void destroy() {
    if (state().context) SDL_GL_DeleteContext(state().context);
    if (state().window) SDL_DestroyWindow(state().window);
    if (state().arrowCursor) SDL_FreeCursor(state().arrowCursor);
    if (state().crossCursor) SDL_FreeCursor(state().crossCursor);
    state().context = nullptr;
    state().window = nullptr;
    state().arrowCursor = state().crossCursor = nullptr;
    state().keysDown.clear();
}

bool exists() {
    return state().window != nullptr;
}
bool hasContext() {
    return state().window && SDL_GL_GetCurrentContext() != nullptr;
}

bool samplesAvailable(int samples) {
    std::string error;
    if (!initialiseVideo(error)) return false;
    setContextAttributes(samples, true);
    SDL_Window* probe = SDL_CreateWindow("", 0, 0, 1, 1, SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN);
    SDL_GLContext probeContext = probe ? SDL_GL_CreateContext(probe) : nullptr;
    int granted = 0;
    if (probeContext) SDL_GL_GetAttribute(SDL_GL_MULTISAMPLESAMPLES, &granted);
    if (probeContext) SDL_GL_DeleteContext(probeContext);
    if (probe) SDL_DestroyWindow(probe);
    if (state().window) SDL_GL_MakeCurrent(state().window, state().context);
    return granted >= samples;
}

bool pollEvent(Event& event) {
    if (!state().window) return false;
    SDL_Event sdlEvent;
    while (SDL_PollEvent(&sdlEvent))
        if (translate(sdlEvent, event)) return true;
    return false;
}

void swapBuffers() {
    if (state().window) SDL_GL_SwapWindow(state().window);
}

void* createThreadContext() {
    if (!state().window) return nullptr;
    SDL_GL_SetAttribute(SDL_GL_SHARE_WITH_CURRENT_CONTEXT, 0);
    SDL_GLContext context = SDL_GL_CreateContext(state().window);
    if (context) SDL_GL_MakeCurrent(state().window, context);
    return context;
}

void deleteThreadContext(void* context) {
    if (!context) return;
    SDL_GL_MakeCurrent(state().window, nullptr);
    SDL_GL_DeleteContext(static_cast<SDL_GLContext>(context));
}

void getClientSize(int& width, int& height) {
    width = height = 0;
    if (state().window) SDL_GetWindowSize(state().window, &width, &height);
}

void getPosition(int& x, int& y) {
    x = y = 0;
    if (state().window) SDL_GetWindowPosition(state().window, &x, &y);
}

void getBorders(int& left, int& top, int& right, int& bottom) {
    left = top = right = bottom = 0;
    if (state().window) SDL_GetWindowBordersSize(state().window, &top, &left, &bottom, &right);
}

void setPosition(int x, int y) {
    if (state().window) SDL_SetWindowPosition(state().window, x, y);
}

void setClientSize(int width, int height) {
    if (state().window) SDL_SetWindowSize(state().window, width, height);
}

void getDesktopSize(int& width, int& height) {
    SDL_DisplayMode mode{};
    const int display = state().window ? SDL_GetWindowDisplayIndex(state().window) : 0;
    if (SDL_WasInit(SDL_INIT_VIDEO) && SDL_GetDesktopDisplayMode(display < 0 ? 0 : display, &mode) == 0) {
        width = mode.w;
        height = mode.h;
        return;
    }
    width = 1920;
    height = 1080;
}

void setTitle(const char* title) {
    if (state().window) SDL_SetWindowTitle(state().window, title);
}

std::string getTitle() {
    return state().window ? SDL_GetWindowTitle(state().window) : "";
}

void setResizeable(bool resizeable) {
    if (state().window) SDL_SetWindowResizable(state().window, resizeable ? SDL_TRUE : SDL_FALSE);
}

bool isResizeable() {
    return state().window && (SDL_GetWindowFlags(state().window) & SDL_WINDOW_RESIZABLE);
}
bool isMinimised() {
    return state().window && (SDL_GetWindowFlags(state().window) & SDL_WINDOW_MINIMIZED);
}
bool isMaximised() {
    return state().window && (SDL_GetWindowFlags(state().window) & SDL_WINDOW_MAXIMIZED);
}
bool hasFocus() {
    return state().window && (SDL_GetWindowFlags(state().window) & SDL_WINDOW_INPUT_FOCUS);
}

void show() {
    if (state().window) SDL_ShowWindow(state().window);
}
void minimize() {
    if (state().window) SDL_MinimizeWindow(state().window);
}
void maximize() {
    if (state().window) SDL_MaximizeWindow(state().window);
}
void restore() {
    if (state().window) SDL_RestoreWindow(state().window);
}
void raise() {
    if (state().window) SDL_RaiseWindow(state().window);
}

bool setFullscreen(bool fullscreen, int width, int height) {
    if (!state().window) return false;
    if (!fullscreen) return SDL_SetWindowFullscreen(state().window, 0) == 0;
    int desktopWidth = 0, desktopHeight = 0;
    getDesktopSize(desktopWidth, desktopHeight);
    if (width == desktopWidth && height == desktopHeight)
        return SDL_SetWindowFullscreen(state().window, SDL_WINDOW_FULLSCREEN_DESKTOP) == 0;
    SDL_DisplayMode wanted{SDL_PIXELFORMAT_UNKNOWN, width, height, 0, nullptr};
    SDL_DisplayMode closest{};
    if (!SDL_GetClosestDisplayMode(0, &wanted, &closest) || closest.w != width || closest.h != height)
        return false;
    if (SDL_SetWindowDisplayMode(state().window, &closest) != 0) return false;
    return SDL_SetWindowFullscreen(state().window, SDL_WINDOW_FULLSCREEN) == 0;
}

bool keyDown(int virtualKey) {
    return state().keysDown.count(virtualKey) != 0;
}

bool keyToggled(int virtualKey) {
    if (!state().window) return false;
    switch (virtualKey) {
        case 20:
            return (SDL_GetModState() & KMOD_CAPS) != 0;
        case 45:
            return state().insertToggled;
        case 144:
            return (SDL_GetModState() & KMOD_NUM) != 0;
        default:
            return false;
    }
}

bool mouseButtonDown(int button) {
    if (!state().window) return false;
    const Uint32 state = SDL_GetMouseState(nullptr, nullptr);
    switch (button) {
        case 1:
            return state & SDL_BUTTON_LMASK;
        case 2:
            return state & SDL_BUTTON_RMASK;
        case 4:
            return state & SDL_BUTTON_MMASK;
        default:
            return false;
    }
}

void getWindowMouse(int& x, int& y) {
    x = y = 0;
    if (state().window) SDL_GetMouseState(&x, &y);
}

void warpMouse(int clientX, int clientY) {
    if (state().window) SDL_WarpMouseInWindow(state().window, clientX, clientY);
}

void restrictMouse(int x, int y, int width, int height) {
    if (!state().window) return;
    int windowX = 0, windowY = 0;
    getPosition(windowX, windowY);
    const SDL_Rect rect{x - windowX, y - windowY, width, height};
    SDL_SetWindowMouseRect(state().window, &rect);
}

void unRestrictMouse() {
    if (state().window) SDL_SetWindowMouseRect(state().window, nullptr);
}

void setCursor(int mode) {
    if (!state().window) return;
    SDL_ShowCursor(mode == 0 ? SDL_DISABLE : SDL_ENABLE);
    if (mode == 1 && state().arrowCursor) SDL_SetCursor(state().arrowCursor);
    if (mode == 2 && state().crossCursor) SDL_SetCursor(state().crossCursor);
}

bool setSwapInterval(int interval) {
    return hasContext() && SDL_GL_SetSwapInterval(interval) == 0;
}

int getSwapInterval() {
    return hasContext() ? SDL_GL_GetSwapInterval() : -1;
}

void setGammaRamp(const unsigned short* ramp256) {
    if (state().window) SDL_SetWindowGammaRamp(state().window, ramp256, ramp256, ramp256);
}

void showMessage(const char* text, const char* title) {
    if (!state().window ||
        SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_INFORMATION, title, text, state().window) != 0)
        Platform::showMessage(text, title);
}

bool askQuestion(const char* text, const char* title) {
    const SDL_MessageBoxButtonData buttons[] = {
        {SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT, 0, "No"},
        {SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT, 1, "Yes"},
    };
    const SDL_MessageBoxData box{
        SDL_MESSAGEBOX_INFORMATION, state().window, title, text, 2, buttons, nullptr};
    int answer = 0;
    return SDL_ShowMessageBox(&box, &answer) == 0 && answer == 1;
}

void queueKey(const char* keyName, bool down) {
    if (!state().window) return;
    SDL_Event event{};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.windowID = SDL_GetWindowID(state().window);
    event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.key.keysym.sym = SDL_GetKeyFromName(keyName);
    event.key.keysym.scancode = SDL_GetScancodeFromKey(event.key.keysym.sym);
    SDL_PushEvent(&event);
}

void queueMouseMotion(int x, int y) {
    if (!state().window) return;
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.windowID = SDL_GetWindowID(state().window);
    event.motion.x = x;
    event.motion.y = y;
    SDL_PushEvent(&event);
}

void queueMouseButton(int x, int y, int button, bool down) {
    if (!state().window) return;
    SDL_Event event{};
    event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    event.button.windowID = SDL_GetWindowID(state().window);
    event.button.button = button == 2 ? SDL_BUTTON_RIGHT : button == 4 ? SDL_BUTTON_MIDDLE : SDL_BUTTON_LEFT;
    event.button.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.button.x = x;
    event.button.y = y;
    SDL_PushEvent(&event);
}

void queueClose() {
    if (!state().window) return;
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.windowID = SDL_GetWindowID(state().window);
    event.window.event = SDL_WINDOWEVENT_CLOSE;
    SDL_PushEvent(&event);
}

}  // namespace WindowBackend
