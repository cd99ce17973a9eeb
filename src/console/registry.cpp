#include "console/console_state.h"
#include "foundation/foundation.h"

GLConsoleCommand::GLConsoleCommand(const char* commandName, void (*f)(), int commandType, bool argument,
                                   bool result)
    : name(commandName ? commandName : ""),
      function(f),
      type(commandType),
      hasArgument(argument),
      hasResult(result) {}

namespace {
// The registry keeps every function as void(*)(); its shape fields say how to call it.
template <typename Function>
void (*stored(Function f))() {
    return reinterpret_cast<void (*)()>(f);
}
}  // namespace

using Type = GLConsoleCommand::Type;

GLConsoleCommand::GLConsoleCommand(const char* n, void (*f)())
    : GLConsoleCommand(n, stored(f), Type::Void, false, false) {}
GLConsoleCommand::GLConsoleCommand(const char* n, void (*f)(int))
    : GLConsoleCommand(n, stored(f), Type::Int, true, false) {}
GLConsoleCommand::GLConsoleCommand(const char* n, void (*f)(bool))
    : GLConsoleCommand(n, stored(f), Type::Bool, true, false) {}
GLConsoleCommand::GLConsoleCommand(const char* n, void (*f)(float))
    : GLConsoleCommand(n, stored(f), Type::Float, true, false) {}
GLConsoleCommand::GLConsoleCommand(const char* n, void (*f)(std::string))
    : GLConsoleCommand(n, stored(f), Type::String, true, false) {}
GLConsoleCommand::GLConsoleCommand(const char* n, int (*f)())
    : GLConsoleCommand(n, stored(f), Type::Int, false, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, bool (*f)())
    : GLConsoleCommand(n, stored(f), Type::Bool, false, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, float (*f)())
    : GLConsoleCommand(n, stored(f), Type::Float, false, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, std::string (*f)())
    : GLConsoleCommand(n, stored(f), Type::String, false, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, int (*f)(int, bool))
    : GLConsoleCommand(n, stored(f), Type::Int, true, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, bool (*f)(bool, bool))
    : GLConsoleCommand(n, stored(f), Type::Bool, true, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, float (*f)(float, bool))
    : GLConsoleCommand(n, stored(f), Type::Float, true, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, std::string (*f)(std::string))
    : GLConsoleCommand(n, stored(f), Type::String, true, true) {}

namespace GLConsole {

void addCommandInternal(const GLConsoleCommand& command) {
    TRACE_LOCATION("GLConsole::addCommandInternal");
    if (command.name.empty() || !command.function || command.type > Type::String) return;
    if (command.name.find(' ') != std::string::npos) return;
    std::string key = command.name;
    slStringUpper(key);
    state().commands[key] = command;
}

void removeCommand(const char* name) {
    TRACE_LOCATION("GLConsole::removeCommand");
    if (!name) return;
    std::string key = name;
    slStringUpper(key);
    state().commands.erase(key);
}

void addCommands(const GLConsoleCommand* table, std::size_t count) {
    TRACE_LOCATION("GLConsole::addCommands");
    for (std::size_t i = 0; i < count; ++i) addCommandInternal(table[i]);
}

void removeCommands(const GLConsoleCommand* table, std::size_t count) {
    TRACE_LOCATION("GLConsole::removeCommands");
    for (std::size_t i = 0; i < count; ++i) removeCommand(table[i].name.c_str());
}

void startSubsystem(const Subsystem& subsystem) {
    TRACE_LOCATION("GLConsole::startSubsystem");
    print(subsystem.startLine);
    addCommands(subsystem.commands, subsystem.commandCount);
}

void stopSubsystem(const Subsystem& subsystem) {
    TRACE_LOCATION("GLConsole::stopSubsystem");
    print(subsystem.stopLine);
    removeCommands(subsystem.commands, subsystem.commandCount);
}

}  // namespace GLConsole
