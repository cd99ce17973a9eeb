// The trigger manager's console commands.
#include "console/console.h"
#include "dynamics/dynamics.h"
#include "dynamics/trigger_state.h"

using TriggerManager::state;

namespace {

bool validCreateArguments(const std::vector<std::string>& args) {
    if (args.size() != 6) return false;
    if (!slStringIsInteger(args[0]) || !slStringIsInteger(args[1])) return false;
    for (std::size_t i = 2; i < 6; ++i)
        if (!slStringIsNumeric(args[i])) return false;
    return true;
}

}  // namespace

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
    slSeparateArgs(arguments, args);
    if (!validCreateArguments(args)) {
        GLConsole::print(
            "\nUSAGE: TriggerCreate < id : integer > < target id : integer > < x : number > < y : number > "
            "< w : number > < h : number > ");
        return;
    }
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
