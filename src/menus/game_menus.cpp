// The game's ten menus: made once and kept across levels, one of them open at
// a time (or none, while the game is played), with the one open before it
// remembered for the way back.
#include <memory>

#include "audio/audio.h"
#include "game/game.h"
#include "menus/menus.h"
#include "menus/screens/screens.h"

namespace GameMenus {

namespace {

constexpr int menuCount = 10;

struct State {
    // Indexed by menu id less one.
    std::array<std::unique_ptr<GuiScreen>, menuCount> screens;
    GuiScreen* currentMenu = nullptr;
    GuiScreen* lastMenu = nullptr;
    std::unique_ptr<Sound> menuBgSound;
};

State& state() {
    return singleInstance<State>();
}

template <class Screen>
void make(MenuId id) {
    TRACE_LOCATION("GameMenus::make");
    std::unique_ptr<GuiScreen>& screen = state().screens[static_cast<std::size_t>(id - 1)];
    if (!screen) screen = std::make_unique<Screen>();
}

int idOf(const GuiScreen* screen) {
    TRACE_LOCATION("GameMenus::idOf");
    for (int id = 1; id <= menuCount; ++id)
        if (screen && state().screens[static_cast<std::size_t>(id - 1)].get() == screen) return id;
    return none;
}

}  // namespace

void initialise() {
    TRACE_LOCATION("GameMenus::initialise");
    state().currentMenu = nullptr;
    state().lastMenu = nullptr;
    make<Menu_Main>(main);
    make<Menu_InGame>(inGame);
    make<Menu_Options>(options);
    make<Menu_Instructions>(instructions);
    make<Menu_HighScores>(highScores);
    make<Menu_LoadMap>(loadMap);
    make<Menu_QuitGame>(quitGame);
    make<Menu_Credits>(credits);
    make<Menu_LevelFinished>(levelFinished);
    make<Menu_Restart>(restart);
    if (!state().menuBgSound)
        state().menuBgSound =
            std::make_unique<Sound>(ConfigFile("cfg\\menu_general.cfg").getVarAsString("menuBgSound"));
}

void shutdown() {
    TRACE_LOCATION("GameMenus::shutdown");
    state() = State();
}

GuiScreen* getMenu(int id) {
    TRACE_LOCATION("GameMenus::getMenu");
    if (id < 1 || id > menuCount) return nullptr;
    return state().screens[static_cast<std::size_t>(id - 1)].get();
}

// Going back is a change like any other, so going back twice returns to the same menu.
void setCurrentMenu(int id) {
    TRACE_LOCATION("GameMenus::setCurrentMenu");
    State& s = state();
    s.lastMenu = s.currentMenu;
    if (id >= none && id <= menuCount) s.currentMenu = getMenu(id);
    if (s.currentMenu) {
        s.currentMenu->reset();
        if (s.menuBgSound) {
            s.menuBgSound->setVolume(1.0f);
            s.menuBgSound->loop();
        }
    } else {
        if (s.menuBgSound) s.menuBgSound->stop();
        GameRules::unpauseLevelTimer();
    }
}

int getCurrentMenu() {
    TRACE_LOCATION("GameMenus::getCurrentMenu");
    return idOf(state().currentMenu);
}

int getLastMenu() {
    TRACE_LOCATION("GameMenus::getLastMenu");
    return idOf(state().lastMenu);
}

void sendMenuEvent_windowRedrawing() {
    TRACE_LOCATION("GameMenus::sendMenuEvent_windowRedrawing");
    if (state().currentMenu) state().currentMenu->windowRedrawing();
}

void sendMenuEvent_mouseMoved(int x, int y) {
    TRACE_LOCATION("GameMenus::sendMenuEvent_mouseMoved");
    if (state().currentMenu) state().currentMenu->mouseMoved(x, y);
}

void sendMenuEvent_mousePressed(int x, int y, int button) {
    TRACE_LOCATION("GameMenus::sendMenuEvent_mousePressed");
    if (state().currentMenu) state().currentMenu->mousePressed(x, y, button);
}

void sendMenuEvent_mouseReleased(int x, int y, int button) {
    TRACE_LOCATION("GameMenus::sendMenuEvent_mouseReleased");
    if (state().currentMenu) state().currentMenu->mouseReleased(x, y, button);
}

void sendMenuEvent_keyboardPressed(int key) {
    TRACE_LOCATION("GameMenus::sendMenuEvent_keyboardPressed");
    if (state().currentMenu) state().currentMenu->keyboardPressed(key);
}

void sendMenuEvent_keyboardReleased(int key) {
    TRACE_LOCATION("GameMenus::sendMenuEvent_keyboardReleased");
    if (state().currentMenu) state().currentMenu->keyboardReleased(key);
}

}  // namespace GameMenus
