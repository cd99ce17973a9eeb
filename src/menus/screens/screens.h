// The ten menu screens. Each builds its widgets from its own configuration
// file and "cfg\menu_general.cfg"; what a file lacks reads as 0 or empty.
#pragma once

#include <string>
#include <vector>

#include "menus/menus.h"

// The two configuration files a screen is built from, and the widgets every
// screen makes the same way from them.
class MenuConfig {
public:
    explicit MenuConfig(const char* ownFile);

    const ConfigFile& own() const { return ownConfig; }
    const ConfigFile& general() const { return generalConfig; }
    float ownFloat(const std::string& key) const { return ownConfig.getVarAsFloat(key); }
    int ownInt(const std::string& key) const { return static_cast<int>(ownConfig.getVarAsFloat(key)); }
    std::string ownText(const std::string& key) const { return ownConfig.getVarAsString(key); }

    // A button named P: P_x, P_y, P_w, P_h and its three frame sets; both its
    // handlers run 0.8 seconds after the event.
    GuiAnimatedButton* makeButton(const std::string& name, GuiMouseCallback clicked,
                                  GuiKeyCallback pressed) const;
    // The logo at its own size, centred on its point.
    GuiImage* makeLogo() const;
    GuiLabel* makeLabel(const std::string& text, const std::string& prefix, float fontSize) const;
    GuiTextBox* makeTextBox(const std::string& prefix) const;
    GuiOptionChooser* makeChooser(const std::string& name, float fontSize) const;
    void styleText(GuiTextWidget& widget) const;
    void styleShadow(GuiShadowCaster& caster, const std::string& kind) const;

private:
    ConfigFile ownConfig;
    ConfigFile generalConfig;
};

// Seconds between a button's click and its action, while its animation plays.
constexpr float buttonActionDelay = 0.8f;

// A button's two handlers around one action: a click with any mouse button,
// or Enter or Space. Both return true, as the menu has moved on.
using MenuAction = void (*)(GuiWidget* button);
namespace MenuHandlers {
template <MenuAction action>
bool clicked(GuiWidget* button, int, int, int) {
    TRACE_LOCATION("MenuHandlers::clicked");
    action(button);
    return true;
}
template <MenuAction action>
bool pressed(GuiWidget* button, int key) {
    TRACE_LOCATION("MenuHandlers::pressed");
    if (key != VirtualKey::enter && key != ' ') return false;
    action(button);
    return true;
}
template <int menu>
void goTo(GuiWidget*) {
    TRACE_LOCATION("MenuHandlers::goTo");
    GameMenus::setCurrentMenu(menu);
}
void goBack(GuiWidget*);
// The button shows itself in focus again, as the menu it leads to may come back.
void settle(GuiWidget* button);
}  // namespace MenuHandlers

struct MenuButton {
    const char* name;
    GuiMouseCallback clicked;
    GuiKeyCallback pressed;
};
template <MenuAction action>
MenuButton menuButton(const char* name) {
    return {name, MenuHandlers::clicked<action>, MenuHandlers::pressed<action>};
}

// A screen drawn over the game's own frame: the game clears behind it and
// shows the frame, so the screen does neither.
void drawOverGame(GuiScreen& screen);

// A column of buttons in order: Down and Tab go to the next, Up to the one before.
std::vector<GuiAnimatedButton*> addButtonColumn(GuiScreen& screen, const MenuConfig& config,
                                                const std::vector<MenuButton>& buttons);
// A pair of buttons side by side, "yes" on the left.
void linkYesNo(GuiAnimatedButton* yes, GuiAnimatedButton* no);

class Menu_Main : public GuiScreen {
public:
    Menu_Main();
};

class Menu_InGame : public GuiScreen {
public:
    Menu_InGame();
};

class Menu_Options : public GuiScreen {
public:
    Menu_Options();
    void detectSettings();
    void commitSettings();
    void reset() override;

private:
    GuiOptionChooser* fullscreenChooser = nullptr;
    GuiOptionChooser* musicChooser = nullptr;
    GuiOptionChooser* soundChooser = nullptr;
    GuiOptionChooser* graphicQualityChooser = nullptr;
};

class Menu_HighScores : public GuiScreen {
public:
    Menu_HighScores();
};

class Menu_Instructions : public GuiScreen {
public:
    Menu_Instructions();
};

class Menu_Credits : public GuiScreen {
public:
    Menu_Credits();
};

class Menu_QuitGame : public GuiScreen {
public:
    Menu_QuitGame();
};

class Menu_Restart : public GuiScreen {
public:
    Menu_Restart();
};

class Menu_LoadMap : public GuiScreen {
public:
    Menu_LoadMap();
    void buildMapList();
    const std::vector<std::string>& getMapList() const { return mapList; }
    std::string chosenMap() const;

private:
    GuiOptionChooser* mapChooser = nullptr;
    std::vector<std::string> mapList;
};

class Menu_LevelFinished : public GuiScreen {
public:
    Menu_LevelFinished();
    void reset() override;
    // Leads on to the high scores, once for each showing.
    void carryOn();

private:
    GuiScoreLabel* addCounter(const MenuConfig& config, const std::string& prefix, int (*value)(),
                              GuiScoreLabel* waitFor);

    GuiWaterLevel* waterLevel = nullptr;
    GuiScoreLabel* waterCount = nullptr;
    float waterRampUpTime = 0.0f;
    bool continued = false;
};
