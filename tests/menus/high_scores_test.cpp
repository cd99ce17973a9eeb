// The ten best scores: their order, their file of 284 bytes, and the name screen.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <tuple>

#include "menus/menus.h"
#include "support/test_support.h"

namespace {

HighScoreEntry entry(const char* name, uint32_t score) {
    HighScoreEntry e{};
    std::strncpy(e.name, name, 20);
    e.score = score;
    return e;
}

std::string nameAt(int rank) {
    return HighScores::getScores()[static_cast<std::size_t>(rank - 1)].name;
}

uint32_t scoreAt(int rank) {
    return HighScores::getScores()[static_cast<std::size_t>(rank - 1)].score;
}

class HighScoresTest : public ::testing::Test {
protected:
    void SetUp() override { HighScores::setDefaultScores(); }
    ScratchFolder folder;
};

TEST_F(HighScoresTest, EqualScoresRankBelowAndTheLowestFallsOut) {
    HighScores::addHighScore(entry("first", 1));
    HighScores::addHighScore(entry("second", 1));
    EXPECT_EQ(std::tuple(nameAt(1), nameAt(2), nameAt(3)), std::tuple("first", "second", "NO NAME"));
    for (uint32_t score = 10; score <= 100; score += 10) HighScores::addHighScore(entry("full", score));
    HighScores::addHighScore(entry("equal", 10));
    HighScores::addHighScore(entry("zero", 0));
    EXPECT_EQ(std::tuple(nameAt(10), scoreAt(10), scoreAt(1)), std::tuple("full", 10u, 100u));
}

TEST_F(HighScoresTest, TheFileIs284BytesAndReadsBackAsWritten) {
    HighScores::addHighScore(entry("Brook", 487654));
    HighScores::saveScores();
    const std::string bytes = folder.read("sav/scores.sav");
    ASSERT_EQ(bytes.size(), 284u);
    EXPECT_EQ(bytes.substr(0, 4), std::string("\x0F\x23\x31\x12", 4));
    EXPECT_EQ(bytes.substr(4, 6), std::string("Brook\0", 6));
    EXPECT_EQ(bytes.substr(28, 4), std::string("\xE6\x70\x07\x00", 4));
    HighScores::setDefaultScores();
    HighScores::loadScores();
    EXPECT_EQ(std::tuple(nameAt(1), scoreAt(1)), std::tuple("Brook", 487654u));
}

TEST_F(HighScoresTest, AnyBytesInTheFileReadWithoutHarm) {
    HighScores::addHighScore(entry("Brook", 4));
    HighScores::saveScores();
    const std::string good = folder.read("sav/scores.sav");
    std::string wrongMagic = good;
    wrongMagic[0] = 0x10;
    std::mt19937 random(7);
    std::vector<std::string> files = {"", wrongMagic, good.substr(0, 283)};
    for (std::size_t cut = 0; cut < good.size(); cut += 13) files.push_back(good.substr(0, cut));
    for (int i = 0; i < 200; ++i) {
        std::string flipped = good;
        flipped[random() % flipped.size()] = static_cast<char>(random());
        files.push_back(flipped);
    }
    for (const std::string& bytes : files) {
        folder.write("sav/scores.sav", bytes);
        HighScores::loadScores();
        const bool accepted = bytes.size() >= 284 && bytes.compare(0, 4, good, 0, 4) == 0;
        EXPECT_TRUE(accepted || nameAt(1) == "NO NAME") << nameAt(1);
        for (const HighScoreEntry& e : HighScores::getScores()) EXPECT_LE(std::strlen(e.name), 20u);
    }
}

TEST_F(HighScoresTest, AFailedWriteLeavesTheOldFileWhole) {
    HighScores::addHighScore(entry("kept", 9));
    HighScores::saveScores();
    const std::string before = folder.read("sav/scores.sav");
    // The new file can't be made: its name is taken by a folder.
    std::filesystem::create_directories(folder.path() / "sav" / "scores.sav.new" / "x");
    HighScores::addHighScore(entry("lost", 99));
    HighScores::saveScores();
    EXPECT_EQ(folder.read("sav/scores.sav"), before);
}

// The name screen, without a window: keys and clicks go to it directly.
class NameScreenTest : public HighScoresTest {
protected:
    void type(const std::string& keys) {
        for (char key : keys) screen.keyboardPressed(key);
    }
    ManualClock clock;
    HighScores screen{nullptr};
};

TEST_F(NameScreenTest, TakesLettersDigitsAndBlanksUpToTwenty) {
    type("AB1 ");
    screen.keyboardPressed(VirtualKey::backspace);
    screen.keyboardPressed(0xBC);  // a comma key adds nothing
    EXPECT_STREQ(screen.getName(), "ab1");
    type("CDEFGHIJKLMNOPQRSTUVW");
    EXPECT_EQ(std::strlen(screen.getName()), 20u);
    for (int i = 0; i < 25; ++i) screen.keyboardPressed(VirtualKey::backspace);
    EXPECT_STREQ(screen.getName(), "");
}

TEST_F(NameScreenTest, EscapeEndsLikeEnterAndTheScreenStaysForItsClick) {
    type("AB");
    screen.keyboardPressed(VirtualKey::escape);
    EXPECT_TRUE(screen.isClosing());
    type("C");
    EXPECT_STREQ(screen.getName(), "ab") << "input while closing is ignored";
    screen.windowRedrawing();
    clock.advanceMilliseconds(700);
    screen.windowRedrawing();
    EXPECT_TRUE(screen.isRunning());
    clock.advanceMilliseconds(200);
    screen.windowRedrawing();
    screen.windowRedrawing();
    EXPECT_FALSE(screen.isRunning());
}

}  // namespace
