// The trigger manager's console commands.
#include "console/console.h"
#include "dynamics/dynamics.h"
#include "dynamics/trigger_state.h"

using TriggerManager::state;

namespace {}  // namespace

namespace TriggerManager {

void conCmdTriggerTypeList() {
    TRACE_LOCATION("TriggerManager::conCmdTriggerTypeList");
    GLConsole::printTitle("Trigger types");
    for (const auto& [number, type] : state().types) {
        GLConsole::print("\nTrigger id: ");
        GLConsole::print(number);
        GLConsole::print("\t\t");
        GLConsole::print("Trigger name:   ");
        GLConsole::print(type.name);
    }
}

// The id of the usage line is the trigger's type number.
void conCmdTriggerCreate(std::string arguments) {
    TRACE_LOCATION("TriggerManager::conCmdTriggerCreate");
    std::vector<std::string> args;
    if (!GLConsole::readArguments(
            arguments, "iinnnn",
            "\nUSAGE: TriggerCreate < id : integer > < target id : integer > < x : number > "
            "< y : number > < w : number > < h : number > ",
            args))
        return;
    const float x = slStringToFloat(args[2]), y = slStringToFloat(args[3]);
    const float w = slStringToFloat(args[4]), h = slStringToFloat(args[5]);
    addTrigger(slStringToInt(args[0]), slStringToInt(args[1]), 0.0f, Vector2D(x, y), Vector2D(x + w, y),
               Vector2D(x + w, y + h), Vector2D(x, y + h));
}

int conCmdTriggerCount() {
    TRACE_LOCATION("TriggerManager::conCmdTriggerCount");
    return static_cast<int>(state().triggers.size());
}

}  // namespace TriggerManager
