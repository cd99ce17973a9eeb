// The input line: typing, cursor keys, overwrite and insert, and the history.
#include <string>

#include "console/console_state.h"
#include "console_fixture.h"

using namespace ConsoleKeys;

using LineEditorTest = ConsoleTest;

TEST_F(LineEditorTest, TypingAppendsAndMovesTheCursor) {
    typeText("Hello World 42!");
    EXPECT_EQ(input(), "Hello World 42!");
    EXPECT_EQ(cursor(), 15);
    EXPECT_EQ(printed(), "");
}

TEST_F(LineEditorTest, CursorKeys) {
    typeText("abc");
    pressKeys({home});
    EXPECT_EQ(cursor(), 0);
    pressKeys({left});
    EXPECT_EQ(cursor(), 0);
    pressKeys({right, right});
    EXPECT_EQ(cursor(), 2);
    pressKeys({end});
    EXPECT_EQ(cursor(), 3);
    pressKeys({right});
    EXPECT_EQ(cursor(), 3);
    pressKeys({left});
    EXPECT_EQ(cursor(), 2);
    EXPECT_EQ(input(), "abc");
}

TEST_F(LineEditorTest, TypingOverwritesByDefault) {
    typeText("abcdef");
    pressKeys({home, right});
    typeText("XY");
    EXPECT_EQ(input(), "aXYdef");
    EXPECT_EQ(cursor(), 3);
    pressKeys({end});
    typeText("g");
    EXPECT_EQ(input(), "aXYdefg");
}

TEST_F(LineEditorTest, TypingInsertsWhileInsertIsToggledOn) {
    typeText("abcdef");
    pressKeys({home, right});
    setInsertMode(true);
    typeText("XY");
    EXPECT_EQ(input(), "aXYbcdef");
    EXPECT_EQ(cursor(), 3);
    // The Insert key itself types nothing.
    pressKeys({insert});
    EXPECT_EQ(input(), "aXYbcdef");
}

TEST_F(LineEditorTest, BackspaceAndDelete) {
    typeText("abcdef");
    pressKeys({left, left, backspace});
    EXPECT_EQ(input(), "abcef");
    EXPECT_EQ(cursor(), 3);
    pressKeys({del});
    EXPECT_EQ(input(), "abcf");
    EXPECT_EQ(cursor(), 3);
    pressKeys({end, del});
    EXPECT_EQ(input(), "abcf");
    pressKeys({home, backspace});
    EXPECT_EQ(input(), "abcf");
    EXPECT_EQ(cursor(), 0);
    pressKeys({backspace, del, del, del, del, del});
    EXPECT_EQ(input(), "");
    EXPECT_EQ(cursor(), 0);
}

TEST_F(LineEditorTest, BackspaceAtTheEndLeavesNoStaleCharacters) {
    typeText("abc");
    pressKeys({backspace, backspace});
    typeText("Z");
    EXPECT_EQ(input(), "aZ");
}

TEST_F(LineEditorTest, FullLineRefusesFurtherCharactersSilently) {
    const std::string full(255, 'x');
    typeText(full);
    typeText("y");
    EXPECT_EQ(input(), full);
    EXPECT_EQ(cursor(), 255);
    pressKeys({home});
    typeText("y");
    EXPECT_EQ(input(), full);
    setInsertMode(true);
    typeText("y");
    EXPECT_EQ(input(), full);
    EXPECT_EQ(printed(), "");
    pressKeys({end, backspace});
    typeText("y");
    EXPECT_EQ(input(), std::string(254, 'x') + "y");
}

TEST_F(LineEditorTest, InsertNearTheEndDropsNothingOfTheLine) {
    typeText(std::string(254, 'x'));
    pressKeys({home});
    setInsertMode(true);
    typeText("y");
    EXPECT_EQ(input(), "y" + std::string(254, 'x'));
}

TEST_F(LineEditorTest, KeysWithoutACharacterDoNothing) {
    typeText("ab");
    pressKeys({left, shift, 112, 0, 255});
    EXPECT_EQ(input(), "ab");
    EXPECT_EQ(cursor(), 1);
}

TEST_F(LineEditorTest, EnterEchoesTheLineAndClearsIt) {
    typeText("no such thing");
    pressKeys({enter});
    EXPECT_EQ(printed(),
              "\nno such thing\nUNKNOWN COMMAND. USE 'COMMANDS' FOR A LIST OF AVAILABLE COMMANDS.");
    EXPECT_EQ(input(), "");
    EXPECT_EQ(cursor(), 0);
}

TEST_F(LineEditorTest, EscapeClearsTheLineAndKeepsTheHistory) {
    typeLine("first");
    typeText("second");
    pressKeys({escape});
    EXPECT_EQ(input(), "");
    EXPECT_EQ(cursor(), 0);
    pressKeys({up});
    EXPECT_EQ(input(), "first");
}

TEST_F(LineEditorTest, UpOnAnEmptyHistoryDoesNothing) {
    typeText("draft");
    pressKeys({up});
    EXPECT_EQ(input(), "draft");
    pressKeys({down});
    EXPECT_EQ(input(), "draft");
}

TEST_F(LineEditorTest, UpAndDownWalkTheHistory) {
    typeLine("one");
    typeLine("two");
    typeLine("three");
    pressKeys({up});
    EXPECT_EQ(input(), "three");
    EXPECT_EQ(cursor(), 5);
    pressKeys({up, up});
    EXPECT_EQ(input(), "one");
    pressKeys({up});
    EXPECT_EQ(input(), "one");
    pressKeys({down});
    EXPECT_EQ(input(), "two");
    pressKeys({down, down});
    // Coming back past the latest line keeps the line shown.
    EXPECT_EQ(input(), "three");
}

TEST_F(LineEditorTest, UpThenEnterRunsTheEarlierLineAndPushesItAgain) {
    typeLine("version");
    typeLine("other");
    pressKeys({up, up});
    printed();
    pressKeys({enter});
    EXPECT_EQ(printed(), "\nversion\nVersion is 1.00");
    pressKeys({up});
    EXPECT_EQ(input(), "version");
    pressKeys({up});
    EXPECT_EQ(input(), "other");
}

TEST_F(LineEditorTest, EditingLeavesTheHistory) {
    typeLine("one");
    typeLine("two");
    pressKeys({up, up});
    EXPECT_EQ(input(), "one");
    typeText("!");
    // After an edit, Up starts again from the latest line.
    pressKeys({up});
    EXPECT_EQ(input(), "two");
}

TEST_F(LineEditorTest, AnEmptyLineTakesAHistorySlot) {
    typeLine("one");
    typeLine("");
    // Slot 0 is empty, so Up has nowhere to go.
    pressKeys({up});
    EXPECT_EQ(input(), "");
}

TEST_F(LineEditorTest, HistoryKeepsSixteenLines) {
    for (int i = 0; i < 20; ++i) typeLine("line" + std::to_string(i));
    for (int i = 0; i < 20; ++i) pressKeys({up});
    EXPECT_EQ(input(), "line4");
}

TEST_F(LineEditorTest, ShutdownForgetsTheHistory) {
    typeLine("one");
    GLConsole::shutdown();
    GLConsole::initialise();
    pressKeys({up});
    EXPECT_EQ(input(), "");
}

TEST_F(LineEditorTest, EnterLineActsAsEnter) {
    typeText("half typed");
    GLConsole::enterLine("Version");
    EXPECT_EQ(printed(), "\nVersion\nVersion is 1.00");
    EXPECT_EQ(input(), "");
    pressKeys({up});
    EXPECT_EQ(input(), "Version");
    GLConsole::enterLine(std::string(300, 'q'));
    EXPECT_EQ(printed(), "\n" + std::string(255, 'q') +
                             "\nUNKNOWN COMMAND. USE 'COMMANDS' FOR A LIST OF AVAILABLE COMMANDS.");
}

TEST_F(LineEditorTest, ClearCommandEmptiesOutputAndLeavesHistory) {
    typeLine("version");
    typeLine("clear");
    EXPECT_EQ(GLConsole::state().outputPosition, 0);
    EXPECT_EQ(std::string(GLConsole::state().outputBuffer, 16), std::string(16, '\n'));
    EXPECT_EQ(input(), "");
    pressKeys({up});
    EXPECT_EQ(input(), "clear");
}
