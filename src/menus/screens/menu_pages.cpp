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

// The logo over a text read from a file, with the way back.
void buildTextPage(GuiScreen& page, const char* file, const std::string& textKey) {
    TRACE_LOCATION("Menus::buildTextPage");
    drawOverGame(page);
    const MenuConfig config(file);
    page.addWidget(config.makeLogo());
    addBackButton(page, config);
    page.addWidget(config.makeTextBox(textKey));
}

}  // namespace

Menu_HighScores::Menu_HighScores() {
    TRACE_LOCATION("Menu_HighScores::Menu_HighScores");
    drawOverGame(*this);
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
    buildTextPage(*this, "cfg\\menu_instructions.cfg", "instructionsText");
}

Menu_Credits::Menu_Credits() {
    TRACE_LOCATION("Menu_Credits::Menu_Credits");
    buildTextPage(*this, "cfg\\menu_credits.cfg", "creditsText");
}
