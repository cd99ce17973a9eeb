// The input line: typing, cursor keys, overwrite and insert, the history, and Tab,
// which completes the command word, cycling through the registry in key order.

#include "console_fixture.h"

using namespace ConsoleKeys;

using LineEditorTest = ConsoleTest;

namespace {

// Lines entered first, then a script played by play(), and the line and cursor it leaves.
using Edit = std::tuple<std::vector<std::string>, std::string, std::string, int>;

class LineEdits : public LineEditorTest, public ::testing::WithParamInterface<Edit> {};

TEST_P(LineEdits, LeaveTheLineAndCursor) {
    const auto& [history, script, line, at] = GetParam();
    for (const std::string& entered : history) typeLine(entered);
    printed();
    play(script);
    EXPECT_EQ(input(), line);
    EXPECT_EQ(cursor(), at);
    EXPECT_EQ(printed(), "");
}

INSTANTIATE_TEST_SUITE_P(
    KeysAndHistory, LineEdits,
    ::testing::Values(
        Edit{{}, "Hello World 42!", "Hello World 42!", 15},
        // Cursor keys stop at both ends.
        Edit{{}, "abc{home}{left}", "abc", 0}, Edit{{}, "abc{home}{left}{right}{right}", "abc", 2},
        Edit{{}, "abc{end}{right}", "abc", 3}, Edit{{}, "abc{end}{right}{left}", "abc", 2},
        // Typing overwrites unless insert is toggled on; the Insert key itself types nothing.
        Edit{{}, "abcdef{home}{right}XY", "aXYdef", 3}, Edit{{}, "abcdef{home}{right}XY{end}g", "aXYdefg", 7},
        Edit{{}, "abcdef{home}{right}{insertOn}XY", "aXYbcdef", 3},
        Edit{{}, "abcdef{home}{right}{insertOn}XY{insert}", "aXYbcdef", 3},
        // Backspace and Delete, at the ends too, leave no stale characters.
        Edit{{}, "abcdef{left}{left}{bs}", "abcef", 3}, Edit{{}, "abcdef{left}{left}{bs}{del}", "abcf", 3},
        Edit{{}, "abcdef{left}{left}{bs}{del}{end}{del}", "abcf", 4},
        Edit{{}, "abcdef{left}{left}{bs}{del}{home}{bs}", "abcf", 0},
        Edit{{}, "abcf{home}{bs}{del}{del}{del}{del}{del}", "", 0}, Edit{{}, "abc{bs}{bs}Z", "aZ", 2},
        // Keys without a character do nothing.
        Edit{{}, "ab{left}{shift}{112}{0}{255}", "ab", 1},
        // Escape clears the line and keeps the history.
        Edit{{"first"}, "second{esc}", "", 0}, Edit{{"first"}, "second{esc}{up}", "first", 5},
        // Up and Down walk the history and stop at its ends.
        Edit{{}, "draft{up}{down}", "draft", 5}, Edit{{"one", "two", "three"}, "{up}", "three", 5},
        Edit{{"one", "two", "three"}, "{up}{up}{up}{up}", "one", 3},
        Edit{{"one", "two", "three"}, "{up}{up}{up}{up}{down}", "two", 3},
        Edit{{"one", "two", "three"}, "{up}{up}{up}{up}{down}{down}{down}", "three", 5},
        // After an edit, Up starts again from the latest line.
        Edit{{"one", "two"}, "{up}{up}!{up}", "two", 3},
        // An empty line takes a slot of its own.
        Edit{{"one", ""}, "{up}", "", 0}));

}  // namespace

TEST_F(LineEditorTest, AFullLineRefusesFurtherCharactersSilentlyAndInsertDropsNothing) {
    const std::string full(255, 'x');
    typeText(full + "y");
    EXPECT_EQ(std::tuple(input(), cursor()), std::tuple(full, 255));
    play("{home}y{insertOn}y");
    EXPECT_EQ(input(), full);
    EXPECT_EQ(printed(), "");
    play("{end}{bs}{home}y");
    EXPECT_EQ(input(), "y" + std::string(254, 'x'));
}

TEST_F(LineEditorTest, AnEarlierLineRunAgainIsPushedAgainAndTheHistoryKeepsSixteen) {
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
    for (int i = 0; i < 20; ++i) typeLine("line" + std::to_string(i));
    for (int i = 0; i < 20; ++i) pressKeys({up});
    EXPECT_EQ(input(), "line4");
    GLConsole::shutdown();
    GLConsole::initialise();
    pressKeys({up});
    EXPECT_EQ(input(), "") << "shutdown forgets the history";
}

using CompletionTest = ConsoleTest;

namespace {

// A script played on an empty line and the completed line it leaves, the cursor at its end.
using Completion = std::pair<const char*, const char*>;

class Completions : public CompletionTest, public ::testing::WithParamInterface<Completion> {};

TEST_P(Completions, LeaveTheLine) {
    play(GetParam().first);
    EXPECT_EQ(std::tuple(input(), cursor()), std::tuple(GetParam().second, static_cast<int>(input().size())));
}

INSTANTIATE_TEST_SUITE_P(Tab, Completions,
                         ::testing::Values(
                             // Candidates cycle in key order; an empty line shows the first command.
                             Completion{"Te{tab}", "TextureList"},
                             Completion{"Te{tab}{tab}{tab}{tab}", "TextureReload"},
                             Completion{"Te{tab}{tab}{tab}{tab}{tab}{tab}", "TextureMemory"},
                             Completion{"{tab}", "AnisotropicFilteringLevel"},
                             // A single candidate stays; no candidate leaves the line.
                             Completion{"vers{tab}{tab}{tab}", "Version"}, Completion{"zz{tab}{tab}", "zz"},
                             // Typing starts a new completion from the whole line.
                             Completion{"te{tab}{bs}{bs}{bs}{bs}", "Texture"},
                             Completion{"te{tab}{bs}{bs}{bs}{bs}q{tab}{tab}", "TextureQuality"},
                             // Keys that leave the line as it is keep the cycle going.
                             Completion{"te{tab}{up}{tab}", "TextureMemory"},
                             Completion{"te{tab}{up}{tab}{end}{left}{tab}", "TextureQuality"},
                             Completion{"te{tab}{home}{bs}{tab}", "TextureMemory"},
                             // Only the command word is completed.
                             Completion{"map te{tab}", "map te"}));

}  // namespace
