// The console's way into a level: "Map" names the level in play, or asks the
// game to change to another one.
#include "console/console_commands.h"
#include "console/console_state.h"
#include "foundation/foundation.h"

namespace GLConsole {

namespace {

// The level in play; empty until a game has loaded one.
std::string currentMapName() {
    return std::string();
}

}  // namespace

void conCmdMap(std::string name) {
    TRACE_LOCATION("GLConsole::conCmdMap");
    if (name.empty()) {
        print("\nMap is ");
        print(currentMapName());
    }
}

}  // namespace GLConsole
