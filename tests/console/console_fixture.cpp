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

void play(const std::string& script) {
    const std::map<std::string, int> keys = {
        {"up", ConsoleKeys::up},         {"down", ConsoleKeys::down},   {"left", ConsoleKeys::left},
        {"right", ConsoleKeys::right},   {"home", ConsoleKeys::home},   {"end", ConsoleKeys::end},
        {"bs", ConsoleKeys::backspace},  {"del", ConsoleKeys::del},     {"esc", ConsoleKeys::escape},
        {"insert", ConsoleKeys::insert}, {"shift", ConsoleKeys::shift}, {"tab", ConsoleKeys::tab},
        {"enter", ConsoleKeys::enter}};
    for (std::size_t at = 0; at < script.size(); ++at) {
        if (script[at] != '{') {
            typeText(std::string(1, script[at]));
            continue;
        }
        const std::size_t close = script.find('}', at);
        const std::string name = script.substr(at + 1, close - at - 1);
        at = close;
        if (name == "insertOn")
            setInsertMode(true);
        else if (keys.count(name))
            pressKeys({keys.at(name)});
        else
            pressKeys({std::stoi(name)});
    }
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
