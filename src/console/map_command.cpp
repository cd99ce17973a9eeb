// The console's way into a level: "Map" names the level in play, or asks the
// game to change to another one, or starts the game on it.
#include "console/console_commands.h"
#include "console/console_state.h"
#include "foundation/foundation.h"
#include "game/game.h"

namespace GLConsole {

void conCmdMap(std::string name) {
    TRACE_LOCATION("GLConsole::conCmdMap");
    if (name.empty()) {
        print("\nMap is ");
        print(Game::getCurrentMapName());
    } else if (Game::isRunning()) {
        // The change happens at the end of the frame, not inside key handling.
        Game::map(name);
    } else {
        Game::run(name);
    }
}

}  // namespace GLConsole
