// The game's menus: which one is open and which was open before, the keys of
// the game with a menu open, the ways between the screens, and the map list.
#include <gtest/gtest.h>

#include "audio/audio.h"
#include "game/game.h"
#include "menus/menus.h"
#include "menus/screens/screens.h"
#include "support/test_support.h"

namespace {

class GameMenusTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder.write("maps/b.rill", "");
        folder.write("maps/A.rill", "");
        folder.write("maps/c.RILL", "");
        folder.write("maps/notes.txt", "");
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

struct EscapeCase {
    int from;
    int before;
    int expected;
};

class EscapeInMenus : public GameMenusTest, public ::testing::WithParamInterface<EscapeCase> {};

TEST_P(EscapeInMenus, GoesBackExceptOnTheMainMenuAndAtTheLevelsEnd) {
    GameMenus::setCurrentMenu(GetParam().before);
    GameMenus::setCurrentMenu(GetParam().from);
    Game listener;
    listener.keyboardPressed(VirtualKey::escape);
    EXPECT_EQ(GameMenus::getCurrentMenu(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Menus, EscapeInMenus,
    ::testing::Values(EscapeCase{GameMenus::main, GameMenus::none, GameMenus::quitGame},
                      EscapeCase{GameMenus::levelFinished, GameMenus::none, GameMenus::levelFinished},
                      EscapeCase{GameMenus::credits, GameMenus::inGame, GameMenus::inGame},
                      EscapeCase{GameMenus::none, GameMenus::none, GameMenus::inGame}));

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

}  // namespace
