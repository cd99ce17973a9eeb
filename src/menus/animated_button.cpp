// An image button in three states, each with its own frames: out of focus the
// frames loop, in focus they play once and stay, and when the focus goes they
// play backwards into the loop again. A press sends every button of the screen
// into its clicked frames together, and only the pressed one sounds.
#include <GL/gl.h>

#include <algorithm>
#include <cctype>

#include "graphics/textured_quad.h"
#include "menus/menus.h"
#include "platform/platform.h"

namespace {

void playFromTheStart(Sound* sound) {
    TRACE_LOCATION("GuiAnimatedButton::playFromTheStart");
    if (!sound) return;
    sound->rewind();
    sound->setVolume(1.0f);
    sound->play();
}

std::unique_ptr<Sound> stoppedSound(const std::string& name) {
    TRACE_LOCATION("GuiAnimatedButton::stoppedSound");
    auto sound = std::make_unique<Sound>(name);
    sound->stop();
    return sound;
}

void texturedQuad(const GLTexture& frame, float left, float top, float red, float green, float blue,
                  float alpha) {
    TRACE_LOCATION("GuiAnimatedButton::texturedQuad");
    glColor4f(red, green, blue, alpha);
    drawTexturedQuad(left, top, left + static_cast<float>(frame.width),
                     top + static_cast<float>(frame.height));
}

}  // namespace

GuiAnimatedButton::GuiAnimatedButton() {
    TRACE_LOCATION("GuiAnimatedButton::GuiAnimatedButton");
    clock.reset();
}

void GuiAnimatedButton::findFrames(const std::string& name, std::vector<std::string>& list) {
    TRACE_LOCATION("GuiAnimatedButton::findFrames");
    list.clear();
    std::string upper = name;
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    const std::size_t frameMark = upper.rfind("_FRAME");
    if (frameMark == std::string::npos) {
        list.push_back(upper);
        return;
    }
    const std::size_t dot = upper.rfind('.');
    const std::string extension = dot == std::string::npos ? "" : upper.substr(dot);
    const std::string pattern = upper.substr(0, frameMark) + "_FRAME*" + extension;
    const std::size_t slash = pattern.rfind('\\');
    const std::string directory = slash == std::string::npos ? "" : pattern.substr(0, slash + 1);
    for (const std::string& file : Platform::findFiles(pattern)) list.push_back(directory + file);
}

void GuiAnimatedButton::setFrames(std::vector<GLTexture>& frames, const std::string& name) {
    TRACE_LOCATION("GuiAnimatedButton::setFrames");
    frames.clear();
    std::vector<std::string> names;
    findFrames(name, names);
    for (const std::string& file : names) frames.emplace_back(file);
}

void GuiAnimatedButton::setFramesOutOfFocus(const std::string& name) {
    TRACE_LOCATION("GuiAnimatedButton::setFramesOutOfFocus");
    setFrames(framesOutOfFocus, name);
}

void GuiAnimatedButton::setFramesInFocus(const std::string& name) {
    TRACE_LOCATION("GuiAnimatedButton::setFramesInFocus");
    setFrames(framesInFocus, name);
}

void GuiAnimatedButton::setFramesClicked(const std::string& name) {
    TRACE_LOCATION("GuiAnimatedButton::setFramesClicked");
    setFrames(framesClicked, name);
}

void GuiAnimatedButton::setOverSound(const std::string& name) {
    TRACE_LOCATION("GuiAnimatedButton::setOverSound");
    overSound = stoppedSound(name);
}

void GuiAnimatedButton::setClickedSound(const std::string& name) {
    TRACE_LOCATION("GuiAnimatedButton::setClickedSound");
    clickedSound = stoppedSound(name);
}

void GuiAnimatedButton::resetAnimation() {
    TRACE_LOCATION("GuiAnimatedButton::resetAnimation");
    currentFrame = 0;
    frameTime = 0.0f;
}

const std::vector<GLTexture>& GuiAnimatedButton::framesOfState() const {
    TRACE_LOCATION("GuiAnimatedButton::framesOfState");
    if (state == inFocus) return framesInFocus;
    if (state == clicked) return framesClicked;
    return framesOutOfFocus;
}

const GLTexture* GuiAnimatedButton::getCurrentFrame() const {
    TRACE_LOCATION("GuiAnimatedButton::getCurrentFrame");
    const std::vector<GLTexture>& frames = framesOfState();
    if (currentFrame < 0 || static_cast<std::size_t>(currentFrame) >= frames.size()) return nullptr;
    return &frames[static_cast<std::size_t>(currentFrame)];
}

void GuiAnimatedButton::reset() {
    TRACE_LOCATION("GuiAnimatedButton::reset");
    state = outOfFocus;
    resetAnimation();
}

void GuiAnimatedButton::runAnimation(float seconds, float rate) {
    TRACE_LOCATION("GuiAnimatedButton::runAnimation");
    if (!(rate > 0.0f)) return;
    frameTime += seconds;
    if (frameTime < 1.0f / rate) return;
    frameTime = 0.0f;
    const int last = static_cast<int>(framesOfState().size()) - 1;
    if (state == outOfFocus) {
        currentFrame = currentFrame + 1 > last ? 0 : currentFrame + 1;
    } else if (state == inFocus && !focused) {
        if (--currentFrame < 0) {
            state = outOfFocus;
            currentFrame = 0;
        }
    } else {
        currentFrame = std::max(std::min(currentFrame + 1, last), 0);
    }
}

void GuiAnimatedButton::gainedFocus() {
    TRACE_LOCATION("GuiAnimatedButton::gainedFocus");
    if (state != outOfFocus) return;
    state = inFocus;
    resetAnimation();
    if (overSound && !overSound->isPlaying()) playFromTheStart(overSound.get());
}

void GuiAnimatedButton::press() {
    TRACE_LOCATION("GuiAnimatedButton::press");
    if (state == clicked) return;
    state = clicked;
    resetAnimation();
    playFromTheStart(clickedSound.get());
    if (!screen) return;
    for (GuiWidget* widget : screen->getWidgets()) {
        auto* other = dynamic_cast<GuiAnimatedButton*>(widget);
        if (!other || other == this || other->state == clicked) continue;
        other->state = clicked;
        other->resetAnimation();
    }
}

void GuiAnimatedButton::mousePressed(int, int, int) {
    TRACE_LOCATION("GuiAnimatedButton::mousePressed");
    press();
}

void GuiAnimatedButton::keyboardPressed(int key) {
    TRACE_LOCATION("GuiAnimatedButton::keyboardPressed");
    if (key == ' ' || key == VirtualKey::enter) press();
}

// The frame stands at its own size, centred on the widget: the widget's size
// is only the area the mouse reaches.
void GuiAnimatedButton::windowRedrawing() {
    TRACE_LOCATION("GuiAnimatedButton::windowRedrawing");
    clock.update();
    runAnimation(clock.deltaSeconds, frameRate);
    const GLTexture* frame = getCurrentFrame();
    if (!frame || !GLWindow::contextAvailable()) return;
    const float left = static_cast<float>(x) + static_cast<float>(width - frame->width) * 0.5f;
    const float top = static_cast<float>(y) + static_cast<float>(height - frame->height) * 0.5f;
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, frame->id);
    if (dropShadow.on)
        texturedQuad(*frame, left + dropShadow.offsetX, top + dropShadow.offsetY, dropShadow.r, dropShadow.g,
                     dropShadow.b, dropShadow.a);
    texturedQuad(*frame, left, top, r, g, b, a);
}
