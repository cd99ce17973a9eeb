// The pages with one way back: the high score table, the instructions and the credits.
#include "menus/screens/screens.h"

namespace {

GuiAnimatedButton* addBackButton(GuiScreen& screen, const MenuConfig& config) {
    TRACE_LOCATION("Menus::addBackButton");
    GuiAnimatedButton* back = config.makeButton("backButton", MenuHandlers::clicked<MenuHandlers::goBack>,
                                                MenuHandlers::pressed<MenuHandlers::goBack>);
    screen.addWidget(back);
    screen.setDefaultFocusWidget(back);
    return back;
}

}  // namespace

Menu_HighScores::Menu_HighScores() {
    TRACE_LOCATION("Menu_HighScores::Menu_HighScores");
    clearBackground = false;
    swapBuffers = false;
    const MenuConfig config("cfg\\menu_highScores.cfg");
    auto* table = new GuiHighScores();
    config.styleText(*table);
    table->setPosition(config.ownInt("highScores_x"), config.ownInt("highScores_y"));
    table->setEntryFontSize(config.ownFloat("highScores_entryFontSize"));
    table->setTitleFontSize(config.ownFloat("highScores_titleFontSize"));
    // The table stands behind the logo.
    addWidget(table);
    addWidget(config.makeLogo());
    addBackButton(*this, config);
}

Menu_Instructions::Menu_Instructions() {
    TRACE_LOCATION("Menu_Instructions::Menu_Instructions");
    clearBackground = false;
    swapBuffers = false;
    const MenuConfig config("cfg\\menu_instructions.cfg");
    addWidget(config.makeLogo());
    addBackButton(*this, config);
    addWidget(config.makeTextBox("instructionsText"));
}

Menu_Credits::Menu_Credits() {
    TRACE_LOCATION("Menu_Credits::Menu_Credits");
    clearBackground = false;
    swapBuffers = false;
    const MenuConfig config("cfg\\menu_credits.cfg");
    addWidget(config.makeLogo());
    addBackButton(*this, config);
    addWidget(config.makeTextBox("creditsText"));
}
