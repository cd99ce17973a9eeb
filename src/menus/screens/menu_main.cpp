// The main menu and the in-game menu: a column of buttons under the logo.
#include "game/game.h"
#include "menus/screens/screens.h"

namespace {

void startGame(GuiWidget*) {
    TRACE_LOCATION("Menu_Main::startGame");
    Game::startPlaying();
}

void continueGame(GuiWidget*) {
    TRACE_LOCATION("Menu_InGame::continueGame");
    GameMenus::setCurrentMenu(GameMenus::none);
}

using MenuHandlers::goTo;

// The last button goes up past the one before it to the high scores, and Tab
// from it starts the column again.
void closeColumn(const std::vector<GuiAnimatedButton*>& column, GuiAnimatedButton* highScoresButton) {
    TRACE_LOCATION("Menus::closeColumn");
    GuiAnimatedButton* quit = column.back();
    quit->addFocusTraversal(VirtualKey::up, highScoresButton);
    quit->addFocusTraversal(VirtualKey::tab, column.front());
}

}  // namespace

Menu_Main::Menu_Main() {
    TRACE_LOCATION("Menu_Main::Menu_Main");
    clearBackground = false;
    swapBuffers = false;
    const MenuConfig config("cfg\\menu_main.cfg");
    addWidget(config.makeLogo());
    const auto column = addButtonColumn(*this, config,
                                        {
                                            menuButton<startGame>("startButton"),
                                            menuButton<goTo<GameMenus::loadMap>>("loadButton"),
                                            menuButton<goTo<GameMenus::options>>("optionsButton"),
                                            menuButton<goTo<GameMenus::instructions>>("instructionsButton"),
                                            menuButton<goTo<GameMenus::highScores>>("highScoresButton"),
                                            menuButton<goTo<GameMenus::credits>>("creditsButton"),
                                            menuButton<goTo<GameMenus::quitGame>>("quitButton"),
                                        });
    closeColumn(column, column[4]);
}

Menu_InGame::Menu_InGame() {
    TRACE_LOCATION("Menu_InGame::Menu_InGame");
    clearBackground = false;
    swapBuffers = false;
    const MenuConfig config("cfg\\menu_inGame.cfg");
    addWidget(config.makeLogo());
    const auto column = addButtonColumn(*this, config,
                                        {
                                            menuButton<continueGame>("continueButton"),
                                            menuButton<goTo<GameMenus::restart>>("restartButton"),
                                            menuButton<goTo<GameMenus::loadMap>>("loadButton"),
                                            menuButton<goTo<GameMenus::options>>("optionsButton"),
                                            menuButton<goTo<GameMenus::instructions>>("instructionsButton"),
                                            menuButton<goTo<GameMenus::highScores>>("highScoresButton"),
                                            menuButton<goTo<GameMenus::credits>>("creditsButton"),
                                            menuButton<goTo<GameMenus::quitGame>>("quitButton"),
                                        });
    closeColumn(column, column[5]);
}
