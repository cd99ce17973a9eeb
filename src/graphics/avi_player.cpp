// A video in one texture: made once at the next powers of two of the video's
// size, and each frame written into its corner as the decoder delivers it
// (blue first, bottom row first), so the processor never converts a frame a
// second time. Without an OpenGL context the frames are still decoded and
// counted, and nothing is drawn.
#include <GL/gl.h>
#include <GL/glext.h>

#include <limits>
#include <vector>

#include "console/console.h"
#include "graphics/graphics.h"

namespace {

constexpr int64_t mostFrames = 65535;

int videoWidth(const VideoBackend::StreamInfo& info) {
    return info.frame.right - info.frame.left;
}
int videoHeight(const VideoBackend::StreamInfo& info) {
    return info.frame.bottom - info.frame.top;
}

}  // namespace

GLAviPlayer::GLAviPlayer() {
    TRACE_LOCATION("GLAviPlayer::GLAviPlayer");
    VideoBackend::startLibrary();
    clock.reset();
}

GLAviPlayer::GLAviPlayer(const std::string& name) : GLAviPlayer() {
    TRACE_LOCATION("GLAviPlayer::GLAviPlayer");
    open(name);
}

GLAviPlayer::~GLAviPlayer() {
    TRACE_LOCATION("GLAviPlayer::~GLAviPlayer");
    close();
    VideoBackend::stopLibrary();
}

void GLAviPlayer::open(const std::string& name) {
    TRACE_LOCATION("GLAviPlayer::open");
    close();
    if (openParts(name)) return;
    GLConsole::print("\nUnable to open AVI file '");
    GLConsole::print(name);
    GLConsole::print("'");
    close();
}

// Each step may fail; close() then frees whatever the steps before it made.
bool GLAviPlayer::openParts(const std::string& name) {
    TRACE_LOCATION("GLAviPlayer::openParts");
    stream = VideoBackend::openStream(name);
    if (!stream) return false;
    streamInfo = VideoBackend::streamInfo(stream);
    const int width = videoWidth(streamInfo), height = videoHeight(streamInfo);
    if (width <= 0 || height <= 0) return false;
    textureWidth = static_cast<int>(nextPowerOfTwo(static_cast<uint32_t>(width)));
    textureHeight = static_cast<int>(nextPowerOfTwo(static_cast<uint32_t>(height)));
    if (GLWindow::contextAvailable()) {
        GLint largest = 0;
        glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
        if (textureWidth > largest || textureHeight > largest) return false;
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_2D, texture);
        const std::vector<uint8_t> black(static_cast<std::size_t>(textureWidth) * textureHeight * 3);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, textureWidth, textureHeight, 0, GL_RGB, GL_UNSIGNED_BYTE,
                     black.data());
    }
    const int64_t frames = VideoBackend::streamLength(stream);
    if (frames < 1 || frames > mostFrames) return false;
    frameCount = static_cast<unsigned int>(frames);
    const int64_t length = VideoBackend::sampleToTime(stream, 1);
    if (length <= 0 || length > std::numeric_limits<unsigned int>::max()) return false;
    frameLength = static_cast<unsigned int>(length);
    getFrame = VideoBackend::openFrameReader(stream);
    if (!getFrame) return false;
    getAviFrame(0);  // a first frame that can't be decoded leaves nothing loaded
    clock.reset();
    return loaded();
}

void GLAviPlayer::close() {
    TRACE_LOCATION("GLAviPlayer::close");
    if (getFrame) VideoBackend::closeFrameReader(getFrame);
    if (stream) VideoBackend::releaseStream(stream);
    // A texture outlived by its window went with the window's context.
    if (texture && GLWindow::contextAvailable()) glDeleteTextures(1, &texture);
    getFrame = nullptr;
    stream = nullptr;
    texture = 0;
    currentFrame = 0;
    frameElapsed = 0;
    frameCount = 0;
}

void GLAviPlayer::getAviFrame(uint32_t index) {
    TRACE_LOCATION("GLAviPlayer::getAviFrame");
    if (!loaded()) return;
    const uint8_t* const pixels = VideoBackend::getFrame(getFrame, index);
    if (!pixels) {
        close();
        return;
    }
    if (!texture || !GLWindow::contextAvailable()) return;
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, videoWidth(streamInfo), videoHeight(streamInfo), GL_BGR_EXT,
                    GL_UNSIGNED_BYTE, pixels);
}

void GLAviPlayer::rewind() {
    TRACE_LOCATION("GLAviPlayer::rewind");
    if (!loaded()) return;
    getAviFrame(0);
    currentFrame = 0;
    frameElapsed = 0;
    clock.reset();
}

// The time over a frame's length is dropped, so a slow machine shows every
// frame, only later.
void GLAviPlayer::play() {
    TRACE_LOCATION("GLAviPlayer::play");
    if (!loaded() || currentFrame >= frameCount) return;
    clock.update();
    const uint64_t elapsed = frameElapsed + static_cast<uint64_t>(clock.deltaSeconds * 1000.0f);
    if (elapsed > frameLength) {
        frameElapsed = 0;
        ++currentFrame;
        if (currentFrame < frameCount) getAviFrame(currentFrame);
    } else {
        frameElapsed = static_cast<unsigned int>(elapsed);
    }
}

// The full height of the window, the video's shape kept and centred: black at
// the sides of a wide window, the sides cut off in a narrow one. The rows came
// bottom first, so t runs from the picture's top row at the top of the screen
// down to 0.
void GLAviPlayer::draw() {
    TRACE_LOCATION("GLAviPlayer::draw");
    if (!loaded() || !GLWindow::contextAvailable()) return;
    GLWindow::glBeginDraw2d();
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_ALPHA_TEST);
    glDisable(GL_BLEND);
    glBindTexture(GL_TEXTURE_2D, texture);
    GLWindow::clearScreen(0.0f, 0.0f, 0.0f);
    const float width = static_cast<float>(videoWidth(streamInfo));
    const float height = static_cast<float>(videoHeight(streamInfo));
    const float clientWidth = static_cast<float>(GLWindow::getClientWidth());
    const float clientHeight = static_cast<float>(GLWindow::getClientHeight());
    const float drawnWidth = clientHeight * (width / height);
    const float left = clientWidth * 0.5f - drawnWidth * 0.5f, right = clientWidth * 0.5f + drawnWidth * 0.5f;
    const float s = width / static_cast<float>(textureWidth), t = height / static_cast<float>(textureHeight);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, t);
    glVertex2f(left, 0.0f);
    glTexCoord2f(s, t);
    glVertex2f(right, 0.0f);
    glTexCoord2f(s, 0.0f);
    glVertex2f(right, clientHeight);
    glTexCoord2f(0.0f, 0.0f);
    glVertex2f(left, clientHeight);
    glEnd();
    GLWindow::swapBuffers();
}

bool GLAviPlayer::loaded() const {
    TRACE_LOCATION("GLAviPlayer::loaded");
    return stream && getFrame;
}

bool GLAviPlayer::finished() const {
    TRACE_LOCATION("GLAviPlayer::finished");
    return !loaded() || currentFrame >= frameCount;
}
