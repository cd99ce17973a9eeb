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

// The logo over a column of buttons. The last button, Quit, goes up past the
// one before it to the high scores, and Tab from it starts the column again.
void buildColumnMenu(GuiScreen& screen, const char* file, const std::vector<MenuButton>& buttons) {
    TRACE_LOCATION("Menus::buildColumnMenu");
    drawOverGame(screen);
    const MenuConfig config(file);
    screen.addWidget(config.makeLogo());
    const auto column = addButtonColumn(screen, config, buttons);
    GuiAnimatedButton* quit = column.back();
    quit->addFocusTraversal(VirtualKey::up, column[column.size() - 3]);
    quit->addFocusTraversal(VirtualKey::tab, column.front());
}

// Below the first button, both menus offer the same ways on.
std::vector<MenuButton> withWaysOn(const MenuButton& first) {
    TRACE_LOCATION("Menus::withWaysOn");
    return {first,
            menuButton<goTo<GameMenus::loadMap>>("loadButton"),
            menuButton<goTo<GameMenus::options>>("optionsButton"),
            menuButton<goTo<GameMenus::instructions>>("instructionsButton"),
            menuButton<goTo<GameMenus::highScores>>("highScoresButton"),
            menuButton<goTo<GameMenus::credits>>("creditsButton"),
            menuButton<goTo<GameMenus::quitGame>>("quitButton")};
}

}  // namespace

Menu_Main::Menu_Main() {
    TRACE_LOCATION("Menu_Main::Menu_Main");
    buildColumnMenu(*this, "cfg\\menu_main.cfg", withWaysOn(menuButton<startGame>("startButton")));
}

Menu_InGame::Menu_InGame() {
    TRACE_LOCATION("Menu_InGame::Menu_InGame");
    std::vector<MenuButton> buttons = withWaysOn(menuButton<continueGame>("continueButton"));
    buttons.insert(buttons.begin() + 1, menuButton<goTo<GameMenus::restart>>("restartButton"));
    buildColumnMenu(*this, "cfg\\menu_inGame.cfg", buttons);
}
