// The end of a level: the water that came through rises in a column, then the
// water score, the time and the total count up one after the other, and the
// button leads on to the high scores.
#include "game/game.h"
#include "menus/screens/screens.h"

namespace {

void carryOn(GuiWidget* button) {
    TRACE_LOCATION("Menu_LevelFinished::carryOnFrom");
    if (auto* menu = dynamic_cast<Menu_LevelFinished*>(button->screen)) menu->carryOn();
}

}  // namespace

GuiScoreLabel* Menu_LevelFinished::addCounter(const MenuConfig& config, const std::string& prefix,
                                              int (*value)(), GuiScoreLabel* after) {
    TRACE_LOCATION("Menu_LevelFinished::addCounter");
    auto* counter = new GuiScoreLabel();
    config.styleText(*counter);
    counter->setFontSize(config.ownFloat("labelFontSizes"));
    counter->setPosition(config.ownInt(prefix + "ScoreCount_x"), config.ownInt(prefix + "ScoreCount_y"));
    counter->setRampUpTime(config.ownFloat(prefix + "RampUpTime"));
    counter->setRampUpSound(config.ownText(prefix + "RampUpSound"));
    counter->getValue = value;
    counter->waitFor = after;
    return counter;
}

Menu_LevelFinished::Menu_LevelFinished() {
    TRACE_LOCATION("Menu_LevelFinished::Menu_LevelFinished");
    clearBackground = true;
    swapBuffers = false;
    const MenuConfig config("cfg\\menu_levelFinished.cfg");
    const float labelSize = config.ownFloat("labelFontSizes");
    waterRampUpTime = std::max(config.ownFloat("waterRampUpTime"), 0.0001f);

    waterLevel = new GuiWaterLevel();
    waterLevel->enabled = false;
    waterLevel->setPosition(config.ownInt("waterLevel_x"), config.ownInt("waterLevel_y"));
    waterLevel->setSize(config.ownInt("waterLevel_w"), config.ownInt("waterLevel_h"));
    addWidget(waterLevel);

    auto* backdrop = new GuiImage();
    backdrop->setImage(config.ownText("backgroundImage"));
    backdrop->setPosition(0, 0);
    backdrop->setSize(800, 600);
    backdrop->enabled = false;
    backdrop->setImagePortion(config.ownFloat("backgroundImage_x"), config.ownFloat("backgroundImage_y"),
                              config.ownFloat("backgroundImage_w"), config.ownFloat("backgroundImage_h"));
    addWidget(backdrop);

    addWidget(config.makeLabel("Water score:", "waterScoreLabel", labelSize));
    waterCount = addCounter(config, "water", GameRules::getWaterScore, nullptr);
    addWidget(waterCount);

    auto* time = new GuiLevelTimeDisplay();
    config.styleText(*time);
    config.styleShadow(*time, "button");
    time->setFontSize(config.general().getVarAsFloat("timeDisplay_fontSize"));
    time->setPosition(config.ownInt("timeDisplay_x"), config.ownInt("timeDisplay_y"));
    time->setSize(config.ownInt("timeDisplay_w"), config.ownInt("timeDisplay_h"));
    time->setRampUpTime(config.ownFloat("timeRampUpTime"));
    time->waitFor = waterCount;
    addWidget(time);

    addWidget(config.makeLabel("Time  score:", "timeScoreLabel", labelSize));
    GuiScoreLabel* timeCount = addCounter(config, "time", GameRules::getTimeScore, waterCount);
    addWidget(timeCount);
    addWidget(config.makeLabel("Total score:", "totalScoreLabel", labelSize));
    addWidget(addCounter(config, "total", GameRules::getTotalScore, timeCount));

    GuiAnimatedButton* next = config.makeButton("continueButton", MenuHandlers::clicked<::carryOn>,
                                                MenuHandlers::pressed<::carryOn>);
    addWidget(next);
    setDefaultFocusWidget(next);
}

// The more water came through, the longer the count runs.
void Menu_LevelFinished::reset() {
    TRACE_LOCATION("Menu_LevelFinished::reset");
    continued = false;
    const float share =
        static_cast<float>(GameRules::getParticleCount()) / static_cast<float>(GameRules::fullLevelParticles);
    waterCount->setRampUpTime(waterRampUpTime * share);
    waterLevel->setRampUpTimePerParticle(waterRampUpTime * share);
    GuiScreen::reset();
}

// Main menu first, so that the high scores' way back leads there; the level
// restarts behind the menus.
void Menu_LevelFinished::carryOn() {
    TRACE_LOCATION("Menu_LevelFinished::carryOn");
    if (continued) return;
    clearDelayedEvents();
    HighScores::checkScore(static_cast<uint32_t>(GameRules::getTotalScore()), this);
    Game::requestRestart();
    continued = true;
    GameMenus::setCurrentMenu(GameMenus::main);
    GameMenus::setCurrentMenu(GameMenus::highScores);
}
