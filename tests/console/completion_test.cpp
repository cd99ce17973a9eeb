// Tab completes the command word, cycling through the registry in key order.
#include "console/console_state.h"
#include "console_fixture.h"

using namespace ConsoleKeys;

using CompletionTest = ConsoleTest;

TEST_F(CompletionTest, CyclesThroughCandidatesInKeyOrder) {
    typeText("Te");
    for (const char* expected : {"TextureList", "TextureMemory", "TextureQuality", "TextureReload",
                                 "TextureList", "TextureMemory"}) {
        pressKeys({tab});
        EXPECT_EQ(input(), expected);
        EXPECT_EQ(cursor(), static_cast<int>(input().size()));
    }
}

TEST_F(CompletionTest, TabOnAnEmptyLineShowsTheFirstCommand) {
    pressKeys({tab});
    EXPECT_EQ(input(), GLConsole::state().commands.begin()->second.name);
    EXPECT_EQ(input(), "AnisotropicFilteringLevel");
}

TEST_F(CompletionTest, SingleCandidateStaysOnTheLine) {
    typeText("vers");
    pressKeys({tab});
    EXPECT_EQ(input(), "Version");
    pressKeys({tab});
    EXPECT_EQ(input(), "Version");
    pressKeys({tab});
    EXPECT_EQ(input(), "Version");
}

TEST_F(CompletionTest, NoCandidateLeavesTheLine) {
    typeText("zz");
    pressKeys({tab, tab});
    EXPECT_EQ(input(), "zz");
    EXPECT_EQ(cursor(), 2);
}

TEST_F(CompletionTest, TypingStartsANewCompletionFromTheWholeLine) {
    typeText("te");
    pressKeys({tab});
    EXPECT_EQ(input(), "TextureList");
    pressKeys({backspace, backspace, backspace, backspace});
    EXPECT_EQ(input(), "Texture");
    typeText("q");
    pressKeys({tab});
    EXPECT_EQ(input(), "TextureQuality");
    pressKeys({tab});
    EXPECT_EQ(input(), "TextureQuality");
}

TEST_F(CompletionTest, ChangedLineRestartsTheCompletion) {
    typeText("te");
    pressKeys({tab});
    EXPECT_EQ(input(), "TextureList");
    // Up with an empty history changes nothing; the cycle goes on.
    pressKeys({up, tab});
    EXPECT_EQ(input(), "TextureMemory");
    pressKeys({end, left});
    pressKeys({tab});
    EXPECT_EQ(input(), "TextureQuality");
}

TEST_F(CompletionTest, BackspaceAtTheStartKeepsARunningCompletion) {
    typeText("te");
    pressKeys({tab, home, backspace, tab});
    EXPECT_EQ(input(), "TextureMemory");
}

TEST_F(CompletionTest, OnlyTheCommandWordIsCompleted) {
    typeText("map te");
    pressKeys({tab});
    EXPECT_EQ(input(), "map te");
}

TEST_F(CompletionTest, CompletedLineRuns) {
    typeText("versi");
    pressKeys({tab, enter});
    EXPECT_EQ(printed(), "\nVersion\nVersion is 1.00");
}

namespace {
void nothing() {}
}  // namespace

TEST_F(CompletionTest, NewCommandsJoinTheCycle) {
    GLConsole::addCommand("TextureBoost", nothing);
    typeText("tex");
    pressKeys({tab});
    EXPECT_EQ(input(), "TextureBoost");
    pressKeys({tab});
    EXPECT_EQ(input(), "TextureList");
}
