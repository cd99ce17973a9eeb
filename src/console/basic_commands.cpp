#include "console/console_state.h"
#include "foundation/foundation.h"

namespace GLConsole {

void addBasicGLConsoleCommands() { TRACE_LOCATION("GLConsole::addBasicGLConsoleCommands"); }

}  // namespace GLConsole
