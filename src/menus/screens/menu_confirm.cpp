// The two questions: quit the game, or restart the level.
#include "audio/audio.h"
#include "game/game.h"
#include "menus/screens/screens.h"

namespace {

void quitGame(GuiWidget* button) {
    TRACE_LOCATION("Menu_QuitGame::quitGame");
    MenuHandlers::settle(button);
    Game::stop();
}

void answerNo(GuiWidget* button) {
    TRACE_LOCATION("Menus::answerNo");
    MenuHandlers::settle(button);
    MenuHandlers::goBack(button);
}

void restartLevel(GuiWidget* button) {
    TRACE_LOCATION("Menu_Restart::restartLevel");
    MenuHandlers::settle(button);
    Game::requestRestart();
    Game::startPlaying();
}

void buildQuestion(GuiScreen& screen, const MenuConfig& config, const char* question,
                   const std::string& label, const MenuButton& yes) {
    TRACE_LOCATION("Menus::buildQuestion");
    drawOverGame(screen);
    screen.addWidget(config.makeLogo());
    screen.addWidget(config.makeLabel(question, label, config.ownFloat(label + "_fontSize")));
    GuiAnimatedButton* yesButton = config.makeButton(yes.name, yes.clicked, yes.pressed);
    GuiAnimatedButton* noButton =
        config.makeButton("noButton", MenuHandlers::clicked<answerNo>, MenuHandlers::pressed<answerNo>);
    screen.addWidget(yesButton);
    screen.addWidget(noButton);
    linkYesNo(yesButton, noButton);
    screen.setDefaultFocusWidget(noButton);
}

}  // namespace

Menu_QuitGame::Menu_QuitGame() {
    TRACE_LOCATION("Menu_QuitGame::Menu_QuitGame");
    buildQuestion(*this, MenuConfig("cfg\\menu_quitGame.cfg"), "Quit game: are you sure?", "quitLabel",
                  menuButton<quitGame>("yesButton"));
}

Menu_Restart::Menu_Restart() {
    TRACE_LOCATION("Menu_Restart::Menu_Restart");
    buildQuestion(*this, MenuConfig("cfg\\menu_restart.cfg"), "Restart game: are you sure?", "restartLabel",
                  menuButton<restartLevel>("yesButton"));
}
