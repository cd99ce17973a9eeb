// The game's menus: which one is open and which was open before, the keys of
// the game with a menu open, the ways between the screens, and the map list.
// The ten best scores: their order, their file of 284 bytes, and the name screen.

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <tuple>

#include "audio/audio.h"
#include "game/game.h"
#include "menus/menus.h"
#include "menus/screens/screens.h"
#include "support/test_support.h"

namespace {

class GameMenusTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"maps/b.rill", "maps/A.rill", "maps/c.RILL", "maps/notes.txt"})
            folder.write(name, "");
        GameMenus::initialise();
    }
    void TearDown() override { GameMenus::shutdown(); }

    ScratchFolder folder;
    ManualClock clock;
};

TEST_F(GameMenusTest, TheLastMenuFollowsEveryChange) {
    GameMenus::setCurrentMenu(GameMenus::main);
    GameMenus::setCurrentMenu(GameMenus::options);
    GameMenus::setCurrentMenu(GameMenus::getLastMenu());
    EXPECT_EQ(GameMenus::getCurrentMenu(), GameMenus::main);
    EXPECT_EQ(GameMenus::getLastMenu(), GameMenus::options);
    GameMenus::setCurrentMenu(11);
    EXPECT_EQ(GameMenus::getCurrentMenu(), GameMenus::main) << "an id above 10 keeps the menu";
    EXPECT_EQ(GameMenus::getLastMenu(), GameMenus::main);
    GameMenus::setCurrentMenu(GameMenus::none);
    EXPECT_EQ(GameMenus::getCurrentMenu(), GameMenus::none);
}

// The menu before, the menu open, and where Escape leads from there.
TEST_F(GameMenusTest, EscapeGoesBackExceptOnTheMainMenuAndAtTheLevelsEnd) {
    const int cases[][3] = {{GameMenus::none, GameMenus::main, GameMenus::quitGame},
                            {GameMenus::none, GameMenus::levelFinished, GameMenus::levelFinished},
                            {GameMenus::inGame, GameMenus::credits, GameMenus::inGame},
                            {GameMenus::none, GameMenus::none, GameMenus::inGame}};
    for (const auto& [before, from, expected] : cases) {
        GameMenus::setCurrentMenu(before);
        GameMenus::setCurrentMenu(from);
        Game().keyboardPressed(VirtualKey::escape);
        EXPECT_EQ(GameMenus::getCurrentMenu(), expected) << "from " << from << " after " << before;
    }
}

TEST_F(GameMenusTest, TheRightButtonOpensTheInGameMenuOnlyInPlay) {
    Game listener;
    listener.mousePressed(10, 10, MouseButton::right);
    EXPECT_EQ(GameMenus::getCurrentMenu(), GameMenus::inGame);
    listener.mousePressed(10, 10, MouseButton::right);
    EXPECT_EQ(GameMenus::getCurrentMenu(), GameMenus::inGame);
    EXPECT_EQ(GameMenus::getLastMenu(), GameMenus::none);
}

// Keys pressed on a screen, the first of which wakes its default focus.
std::string focusAfter(int menu, std::initializer_list<int> keys) {
    GameMenus::setCurrentMenu(menu);
    GuiScreen* screen = GameMenus::getMenu(menu);
    for (int key : keys) screen->keyboardPressed(key);
    const auto& widgets = screen->getWidgets();
    for (std::size_t i = 0; i < widgets.size(); ++i)
        if (widgets[i] == screen->getFocusedWidget()) return std::to_string(i);
    return "none";
}

TEST_F(GameMenusTest, FocusWalksTheButtonsAsEachScreenOrdersThem) {
    using namespace VirtualKey;
    // Main: the logo, then start, load, options, instructions, high scores, credits, quit.
    EXPECT_EQ(focusAfter(GameMenus::main, {tab}), "1");
    EXPECT_EQ(focusAfter(GameMenus::main, {tab, up}), "1") << "start has no way up";
    EXPECT_EQ(focusAfter(GameMenus::main, {tab, down, down, down, down, down, down, down}), "7");
    EXPECT_EQ(focusAfter(GameMenus::main, {tab, tab, tab, tab, tab, tab, tab, up}), "5")
        << "quit goes up to the high scores";
    EXPECT_EQ(focusAfter(GameMenus::main, {tab, tab, tab, tab, tab, tab, tab, tab}), "1");
    // Quit: the logo, the label, yes, no; no has the default focus.
    EXPECT_EQ(focusAfter(GameMenus::quitGame, {tab, left}), "2");
    EXPECT_EQ(focusAfter(GameMenus::quitGame, {tab, tab, tab}), "3");
    // Options: the logo, four labels, four choosers, back.
    EXPECT_EQ(focusAfter(GameMenus::options, {tab, tab}), "5");
    EXPECT_EQ(focusAfter(GameMenus::options, {tab, up, up, tab}), "8");
    EXPECT_EQ(focusAfter(GameMenus::options, {tab, up, tab}), "5") << "quality's Tab goes to the top";
}

TEST_F(GameMenusTest, TheMapListHoldsTheLevelFilesByNameCaseAside) {
    auto* menu = dynamic_cast<Menu_LoadMap*>(GameMenus::getMenu(GameMenus::loadMap));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->getMapList(), (std::vector<std::string>{"A.rill", "b.rill", "c.RILL"}));
    EXPECT_EQ(menu->chosenMap(), "maps\\b.rill") << "the list starts on its second entry";
}

TEST_F(GameMenusTest, WithoutMapsTheLoadButtonAsksForTheFolderAlone) {
    GameMenus::shutdown();
    ScratchFolder empty;
    GameMenus::initialise();
    auto* menu = dynamic_cast<Menu_LoadMap*>(GameMenus::getMenu(GameMenus::loadMap));
    EXPECT_EQ(menu->chosenMap(), "maps\\");
}

TEST_F(GameMenusTest, OptionsShowAndApplyTheVolumesInForce) {
    for (const float volume : {0.0f, 0.4f}) {
        SoundSystem::setVolume(volume);
        GameMenus::setCurrentMenu(GameMenus::options);
        EXPECT_EQ(SoundSystem::getVolume(), volume == 0.0f ? 0.0f : 1.0f)
            << "sound that is on plays at full volume";
    }
}

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
