// The services beside the window's core: anti-aliasing by rebuilding the window,
// gamma, the fade to black, message boxes and file boxes.
#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "foundation/foundation.h"
#include "graphics/window/window_state.h"
#include "platform/image_loading.h"
#include "platform/platform.h"
#include "platform/window_backend.h"

namespace GLWindow {

namespace {

struct SavedWindow {
    std::string title;
    int cursorMode = 1;
    bool fullscreen = false;
    bool resizeable = true;
    int clientWidth = 0;
    int clientHeight = 0;
    int x = 0;
    int y = 0;
    GLWindowEventListener* listener = nullptr;
};

SavedWindow saveWindow() {
    SavedWindow saved;
    saved.title = state().title;
    saved.cursorMode = state().cursorMode;
    saved.fullscreen = state().fullscreen;
    saved.resizeable = isResizeable();
    saved.clientWidth = getClientWidth();
    saved.clientHeight = getClientHeight();
    saved.x = getX();
    saved.y = getY();
    saved.listener = state().eventListener;
    return saved;
}

void restoreWindow(const SavedWindow& saved) {
    WindowBackend::show();
    setPosition(saved.x, saved.y);
    setClientSize(saved.clientWidth, saved.clientHeight);
    setTitle(saved.title.c_str());
    setCursor(saved.cursorMode);
    state().eventListener = saved.listener;
    setResizeable(saved.resizeable);
    setFullscreen(saved.fullscreen, saved.clientWidth, saved.clientHeight);
}

// The one road that loses the OpenGL context: a pixel format is fixed for the
// life of a window, so a new sample count needs a new window. Callers reload
// their textures after it.
bool rebuildWindow(int samples) {
    TRACE_LOCATION("GLWindow::rebuildWindow");
    const SavedWindow saved = saveWindow();
    state().eventListener = nullptr;  // nothing sees the teardown
    close();
    std::string error;
    const bool granted = WindowBackend::create(saved.title.c_str(), saved.clientWidth, saved.clientHeight,
                                               samples, error) == WindowBackend::CreateStage::succeeded;
    if (!granted) failUnlessCreated(saved.title.c_str(), saved.clientWidth, saved.clientHeight);
    state().antiAliasingMode = granted ? samples : 1;
    if (state().antiAliasingMode > 1)
        glEnable(GL_MULTISAMPLE_ARB);
    else
        glDisable(GL_MULTISAMPLE_ARB);
    restoreWindow(saved);
    return granted;
}

bool setHeadlessAntiAliasingMode(int samples) {
    if (!exists()) return false;
    state().antiAliasingMode = samples == 0 ? 1 : samples;
    return true;
}

}  // namespace

int getAntiAliasingMode() {
    TRACE_LOCATION("GLWindow::getAntiAliasingMode");
    return state().antiAliasingMode;
}

bool setAntiAliasingMode(int samples) {
    TRACE_LOCATION("GLWindow::setAntiAliasingMode");
    if (!realWindow()) return setHeadlessAntiAliasingMode(samples);
    if (samples == 0) samples = 1;
    if (samples == state().antiAliasingMode) return true;
    if (static_cast<unsigned>(samples) == 1) return rebuildWindow(1), true;
    const int oldMode = state().antiAliasingMode;
    if (samples > 0 && WindowBackend::samplesAvailable(samples) && rebuildWindow(samples)) return true;
    if (oldMode != 1 && state().antiAliasingMode != oldMode) rebuildWindow(oldMode);
    return false;
}

bool antiAliasingModeAvailable(int samples) {
    TRACE_LOCATION("GLWindow::antiAliasingModeAvailable");
    if (static_cast<unsigned>(samples) < 2) return true;
    if (!realWindow() || !extensionSupported("GL_ARB_multisample")) return false;
    return samples > 0 && WindowBackend::samplesAvailable(samples);
}

void setGamma(float gamma) {
    TRACE_LOCATION("GLWindow::setGamma");
    if (gamma < 0.0f || gamma > 2.0f || !realWindow()) return;
    const int k = static_cast<int>(gamma * 255.0f);
    unsigned short ramp[256];
    for (int i = 0; i < 256; ++i) ramp[i] = static_cast<unsigned short>(std::min(k * i, 65535));
    WindowBackend::setGammaRamp(ramp);
}

void fadeScreen(float seconds) {
    TRACE_LOCATION("GLWindow::fadeScreen");
    if (seconds <= 0.0f || !drawingPossible()) return;
    const float duration = std::min(seconds, 10.0f);
    GLWindowEventListener* const listener = state().eventListener;
    state().eventListener = nullptr;
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glPushAttrib(GL_ENABLE_BIT);
    // The picture waits in the accumulation buffer and is put back under the black each turn.
    glReadBuffer(GL_BACK);
    glAccum(GL_LOAD, 1.0f);
    glDrawBuffer(GL_BACK);
    glBeginDraw2d();
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    FrameClock clock;
    for (float remaining = duration; remaining > 0.0f && exists(); remaining -= clock.deltaSeconds) {
        run();
        glAccum(GL_RETURN, 1.0f);
        const float width = static_cast<float>(getClientWidth());
        const float height = static_cast<float>(getClientHeight());
        glColor4f(0.0f, 0.0f, 0.0f, 1.0f - remaining / duration);
        glRectf(0.0f, 0.0f, width, height);
        swapBuffers();
        clock.update();
    }
    if (drawingPossible()) {
        glPopAttrib();
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
        glPopMatrix();
    }
    state().eventListener = listener;
}

bool saveScreenshot(const std::string& fileName) {
    TRACE_LOCATION("GLWindow::saveScreenshot");
    if (!drawingPossible()) return false;
    const int width = getClientWidth();
    const int height = getClientHeight();
    if (width < 1 || height < 1) return false;
    std::vector<uint8_t> bottomFirst(static_cast<std::size_t>(width) * height * 4);
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, bottomFirst.data());
    // OpenGL counts rows from the bottom; pictures start at the top.
    std::vector<uint8_t> topFirst(bottomFirst.size());
    const std::size_t rowBytes = static_cast<std::size_t>(width) * 4;
    for (int row = 0; row < height; ++row)
        std::copy_n(bottomFirst.begin() + static_cast<std::ptrdiff_t>(rowBytes * (height - 1 - row)),
                    rowBytes, topFirst.begin() + static_cast<std::ptrdiff_t>(rowBytes * row));
    return Platform::savePng(fileName, width, height, topFirst);
}

void showMessageBox(const char* text, const char* boxTitle) {
    TRACE_LOCATION("GLWindow::showMessageBox");
    if (realWindow())
        WindowBackend::showMessage(text, boxTitle);
    else
        Platform::showMessage(text, boxTitle);
}

bool showQuestionBox(const char* text, const char* boxTitle) {
    TRACE_LOCATION("GLWindow::showQuestionBox");
    return realWindow() && WindowBackend::askQuestion(text, boxTitle);
}

namespace {

// The longest path a file box hands back; a longer choice counts as none.
constexpr std::size_t longestPath = 1023;

std::string fileBox(bool save, const char* boxTitle, const char* initialDirectory,
                    const FileFilters& filters) {
    TRACE_LOCATION("GLWindow::fileBox");
    Platform::FileBox box;
    box.save = save;
    box.title = boxTitle ? boxTitle : "";
    box.initialDirectory = initialDirectory ? initialDirectory : "";
    box.filters = filters;
    const std::string chosen = Platform::showFileBox(box);
    return chosen.size() > longestPath ? std::string() : chosen;
}

// The filter's extension joins a name typed without one: "level" with
// "*.rill" becomes "level.rill". The dialog doesn't say which filter was in
// force at the end, so the one it starts with counts. Only the file's own name
// is looked at, since folders may have dots in theirs, and a pattern such as
// "*.*" names no extension to add.
std::string withFilterExtension(const std::string& path, const FileFilters& filters) {
    TRACE_LOCATION("GLWindow::withFilterExtension");
    if (path.empty() || filters.empty()) return path;
    const std::string& pattern = filters.front().second;
    const std::size_t star = pattern.find('*');
    if (star == std::string::npos) return path;
    const std::string extension = pattern.substr(star + 1, pattern.find(';', star) - star - 1);
    if (extension.empty() || extension.find_first_of("*?") != std::string::npos) return path;
    const std::string name = path.substr(path.rfind('/') + 1);
    if (name.find(extension) != std::string::npos || name.find('.') != std::string::npos) return path;
    return path + extension;
}

}  // namespace

std::string showOpenFileBox(const char* boxTitle, const char* initialDirectory, const FileFilters& filters) {
    TRACE_LOCATION("GLWindow::showOpenFileBox");
    return fileBox(false, boxTitle, initialDirectory, filters);
}

std::string showSaveFileBox(const char* boxTitle, const char* initialDirectory, const FileFilters& filters) {
    TRACE_LOCATION("GLWindow::showSaveFileBox");
    return withFilterExtension(fileBox(true, boxTitle, initialDirectory, filters), filters);
}

}  // namespace GLWindow
