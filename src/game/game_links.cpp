// Game's side of the subsystems that are not built yet: until the menus
// arrive, no menu is ever open.
#include "foundation/foundation.h"
#include "game/game.h"
#include "game/game_state.h"

namespace GameLinks {

bool menuIsOpen() {
    TRACE_LOCATION("GameLinks::menuIsOpen");
    return false;
}

void openMainMenu() {
    TRACE_LOCATION("GameLinks::openMainMenu");
}
void openInGameMenu() {
    TRACE_LOCATION("GameLinks::openInGameMenu");
}
void closeMenus() {
    TRACE_LOCATION("GameLinks::closeMenus");
}
void sendKeyToMenu(int) {
    TRACE_LOCATION("GameLinks::sendKeyToMenu");
}
void sendKeyReleaseToMenu(int) {
    TRACE_LOCATION("GameLinks::sendKeyReleaseToMenu");
}
void sendMouseMoveToMenu(int, int) {
    TRACE_LOCATION("GameLinks::sendMouseMoveToMenu");
}
void sendMousePressToMenu(int, int, int) {
    TRACE_LOCATION("GameLinks::sendMousePressToMenu");
}
void sendMouseReleaseToMenu(int, int, int) {
    TRACE_LOCATION("GameLinks::sendMouseReleaseToMenu");
}
}  // namespace GameLinks
