#include "console_fixture.h"

namespace {

const int typingKeys[] = {32,  '0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'A', 'B', 'C', 'D', 'E',
                          'F', 'G', 'H', 'I', 'J', 'K', 'L', 'M', 'N', 'O', 'P', 'Q', 'R', 'S', 'T', 'U',
                          'V', 'W', 'X', 'Y', 'Z', 186, 187, 188, 189, 190, 191, 192, 219, 220, 221, 222};

void typeCharacter(char character) {
    for (bool shifted : {false, true}) {
        GLWindow::Headless::setKeyDown(ConsoleKeys::shift, shifted);
        for (int key : typingKeys) {
            if (GLWindow::keyboardKeyToAscii(key) != character) continue;
            GLConsole::keyPressed(key);
            GLWindow::Headless::setKeyDown(ConsoleKeys::shift, false);
            return;
        }
    }
    GLWindow::Headless::setKeyDown(ConsoleKeys::shift, false);
    ADD_FAILURE() << "no key types '" << character << "'";
}

}  // namespace

void typeText(const std::string& text) {
    for (char character : text) typeCharacter(character);
}

void typeLine(const std::string& text) {
    typeText(text);
    GLConsole::keyPressed(ConsoleKeys::enter);
}

void pressKeys(std::initializer_list<int> keys) {
    for (int key : keys) GLConsole::keyPressed(key);
}

void setInsertMode(bool on) {
    GLWindow::Headless::setKeyToggled(ConsoleKeys::insert, on);
}

void ConsoleTest::SetUp() {
    scratch = std::make_unique<ScratchFolder>();
    GLWindow::Headless::setKeyDown(ConsoleKeys::shift, false);
    GLWindow::Headless::setKeyToggled(ConsoleKeys::capsLock, false);
    setInsertMode(false);
    GLConsole::shutdown();
    GLConsole::initialise();
    capture = std::make_unique<ConsoleCapture>();
}

void ConsoleTest::TearDown() {
    capture.reset();
    GLConsole::shutdown();
    setInsertMode(false);
    scratch.reset();
}

std::string ConsoleTest::run(const std::string& line) {
    printed();
    typeLine(line);
    const std::string text = printed();
    const std::string echo = "\n" + line;
    EXPECT_EQ(text.substr(0, echo.size()), echo);
    return text.substr(std::min(echo.size(), text.size()));
}
