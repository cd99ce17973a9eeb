// The console under test: freshly initialised in a scratch folder, with the
// keyboard in its default state and everything printed collected.
#pragma once

#include <gtest/gtest.h>

#include "console/console_state.h"
#include "support/test_support.h"

namespace ConsoleKeys = VirtualKey;

// Presses the key (with Shift as needed) that gives each character.
void typeText(const std::string& text);
// Types the text and presses Enter.
void typeLine(const std::string& text);
void pressKeys(std::initializer_list<int> keys);
void setInsertMode(bool on);
// Types the characters of a script and presses its {keys}: {up}, {bs}, {tab} and
// the like by name, {N} by code; {insertOn} toggles insert mode on.
void play(const std::string& script);

class ConsoleTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // What was printed since the last call (or since set-up).
    std::string printed() { return capture->take(); }
    // Types a whole line and returns what it printed after the echo of the line.
    std::string run(const std::string& line);
    std::string input() const { return GLConsole::state().inputBuffer; }
    int cursor() const { return GLConsole::state().cursorPosition; }

    std::unique_ptr<ScratchFolder> scratch;
    std::unique_ptr<ConsoleCapture> capture;
};
