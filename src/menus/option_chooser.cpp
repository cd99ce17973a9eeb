// One text out of a list between two arrow buttons that hug it; an arrow that
// can go no further is dim. Keys change the option silently, clicks with a sound.
#include <GL/gl.h>

#include <algorithm>

#include "menus/menus.h"

namespace {

void playFromTheStart(Sound* sound) {
    TRACE_LOCATION("GuiOptionChooser::playFromTheStart");
    if (!sound) return;
    sound->setVolume(1.0f);
    sound->rewind();
    sound->play();
}

}  // namespace

void GuiOptionChooser::addOption(const std::string& text) {
    TRACE_LOCATION("GuiOptionChooser::addOption");
    options.push_back(text);
}

void GuiOptionChooser::setCurrentOption(unsigned int index) {
    TRACE_LOCATION("GuiOptionChooser::setCurrentOption");
    if (options.empty())
        currentOption = 0;
    else
        currentOption = std::min<unsigned int>(index, static_cast<unsigned int>(options.size() - 1));
}

void GuiOptionChooser::setLeftButtonFramesOutOfFocus(const std::string& name) {
    TRACE_LOCATION("GuiOptionChooser::setLeftButtonFramesOutOfFocus");
    leftButton.setFramesOutOfFocus(name);
}
void GuiOptionChooser::setLeftButtonFramesInFocus(const std::string& name) {
    TRACE_LOCATION("GuiOptionChooser::setLeftButtonFramesInFocus");
    leftButton.setFramesInFocus(name);
}
void GuiOptionChooser::setLeftButtonFramesClicked(const std::string& name) {
    TRACE_LOCATION("GuiOptionChooser::setLeftButtonFramesClicked");
    leftButton.setFramesClicked(name);
}
void GuiOptionChooser::setRightButtonFramesOutOfFocus(const std::string& name) {
    TRACE_LOCATION("GuiOptionChooser::setRightButtonFramesOutOfFocus");
    rightButton.setFramesOutOfFocus(name);
}
void GuiOptionChooser::setRightButtonFramesInFocus(const std::string& name) {
    TRACE_LOCATION("GuiOptionChooser::setRightButtonFramesInFocus");
    rightButton.setFramesInFocus(name);
}
void GuiOptionChooser::setRightButtonFramesClicked(const std::string& name) {
    TRACE_LOCATION("GuiOptionChooser::setRightButtonFramesClicked");
    rightButton.setFramesClicked(name);
}

void GuiOptionChooser::setOverSound(const std::string& name) {
    TRACE_LOCATION("GuiOptionChooser::setOverSound");
    overSound = std::make_unique<Sound>(name);
    overSound->stop();
}

void GuiOptionChooser::setClickedSound(const std::string& name) {
    TRACE_LOCATION("GuiOptionChooser::setClickedSound");
    clickedSound = std::make_unique<Sound>(name);
    clickedSound->stop();
}

void GuiOptionChooser::setButtonStates(int state) {
    TRACE_LOCATION("GuiOptionChooser::setButtonStates");
    leftButton.setState(state);
    rightButton.setState(state);
}

void GuiOptionChooser::setDropShadowColor(float red, float green, float blue, float alpha) {
    TRACE_LOCATION("GuiOptionChooser::setDropShadowColor");
    GuiTextWidget::setDropShadowColor(red, green, blue, alpha);
    leftButton.setDropShadowColor(red, green, blue, alpha);
    rightButton.setDropShadowColor(red, green, blue, alpha);
}

void GuiOptionChooser::setDropShadowOffset(float offsetX, float offsetY) {
    TRACE_LOCATION("GuiOptionChooser::setDropShadowOffset");
    GuiTextWidget::setDropShadowOffset(offsetX, offsetY);
    leftButton.setDropShadowOffset(offsetX, offsetY);
    rightButton.setDropShadowOffset(offsetX, offsetY);
}

void GuiOptionChooser::gainedFocus() {
    TRACE_LOCATION("GuiOptionChooser::gainedFocus");
    for (GuiAnimatedButton* button : {&leftButton, &rightButton}) {
        button->focused = true;
        button->gainedFocus();
    }
    playFromTheStart(overSound.get());
}

void GuiOptionChooser::lostFocus() {
    TRACE_LOCATION("GuiOptionChooser::lostFocus");
    for (GuiAnimatedButton* button : {&leftButton, &rightButton}) {
        button->focused = false;
        button->lostFocus();
    }
}

void GuiOptionChooser::reset() {
    TRACE_LOCATION("GuiOptionChooser::reset");
    leftButton.reset();
    rightButton.reset();
}

void GuiOptionChooser::keyboardPressed(int key) {
    TRACE_LOCATION("GuiOptionChooser::keyboardPressed");
    if (key == VirtualKey::left && currentOption > 0) --currentOption;
    if (key == VirtualKey::right && hasNext()) ++currentOption;
}

void GuiOptionChooser::mousePressed(int pressX, int, int) {
    TRACE_LOCATION("GuiOptionChooser::mousePressed");
    const unsigned int before = currentOption;
    if (static_cast<float>(pressX) <= static_cast<float>(x) + static_cast<float>(width) * 0.5f)
        keyboardPressed(VirtualKey::left);
    else
        keyboardPressed(VirtualKey::right);
    if (currentOption != before) playFromTheStart(clickedSound.get());
}

void GuiOptionChooser::drawArrow(GuiAnimatedButton& button, float left, float middleY, bool atEnd) {
    TRACE_LOCATION("GuiOptionChooser::drawArrow");
    const GLTexture* frame = button.getCurrentFrame();
    if (frame) {
        button.setPosition(
            static_cast<int>(left - (&button == &leftButton ? static_cast<float>(frame->width) : 0.0f)),
            static_cast<int>(middleY - static_cast<float>(frame->height) * 0.5f));
        button.setSize(frame->width, frame->height);
    }
    button.setColor(1.0f, 1.0f, 1.0f, atEnd ? 0.25f : 1.0f);
    button.windowRedrawing();
}

void GuiOptionChooser::windowRedrawing() {
    TRACE_LOCATION("GuiOptionChooser::windowRedrawing");
    const std::string text = currentOption < options.size() ? options[currentOption] : std::string();
    const float centreX = static_cast<float>(x) + static_cast<float>(width) * 0.5f;
    const float centreY = static_cast<float>(y) + static_cast<float>(height) * 0.5f;
    const float textWidth = fontSize * static_cast<float>(text.size());
    drawText(text, centreX - textWidth * 0.5f, centreY - fontSize * 0.5f);
    drawArrow(leftButton, centreX - textWidth * 0.5f, centreY, currentOption == 0);
    drawArrow(rightButton, centreX + textWidth * 0.5f, centreY, !hasNext());
}
