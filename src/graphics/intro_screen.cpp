// The intro at start-up. It runs a loop of its own, as a modal screen does,
// and hands the window's listener back when the video ends or the player has
// seen enough: any key or mouse button will do.
#include "audio/audio.h"
#include "graphics/graphics.h"

IntroScreen::IntroScreen() {
    TRACE_LOCATION("IntroScreen::IntroScreen");
    player = std::make_unique<GLAviPlayer>(videoName);
}

IntroScreen::~IntroScreen() {
    TRACE_LOCATION("IntroScreen::~IntroScreen");
    player.reset();
}

void IntroScreen::run() {
    TRACE_LOCATION("IntroScreen::run");
    GLWindowEventListener* const savedListener = GLWindow::getEventListener();
    GLWindow::setEventListener(this);
    player->rewind();
    MusicSystem::play(soundTrackName, false);
    running = true;
    while (GLWindow::exists() && running && !player->finished()) {
        GLWindow::requestRepaint();
        GLWindow::run();
        GLWindow::setCursor(GLWindow::mouseInClientArea() ? 0 : 1);
        player->play();
        player->draw();
    }
    MusicSystem::stop();
    GLWindow::setEventListener(savedListener);
}

void IntroScreen::mousePressed(int, int, int) {
    TRACE_LOCATION("IntroScreen::mousePressed");
    running = false;
}

void IntroScreen::keyboardPressed(int) {
    TRACE_LOCATION("IntroScreen::keyboardPressed");
    running = false;
}

void IntroScreen::windowClosing() {
    TRACE_LOCATION("IntroScreen::windowClosing");
    GLWindow::close();
}
