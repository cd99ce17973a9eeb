#include "console/console_state.h"
#include "foundation/foundation.h"

template <typename Function>
GLConsoleCommand::GLConsoleCommand(const char* commandName, Function f, int commandType, bool argument,
                                   bool result)
    : name(commandName ? commandName : ""),
      function(reinterpret_cast<void (*)()>(f)),
      type(commandType),
      hasArgument(argument),
      hasResult(result) {}

using Type = GLConsoleCommand::Type;

GLConsoleCommand::GLConsoleCommand(const char* n, void (*f)()) : GLConsoleCommand(n, f, Type::Void, false, false) {}
GLConsoleCommand::GLConsoleCommand(const char* n, void (*f)(int)) : GLConsoleCommand(n, f, Type::Int, true, false) {}
GLConsoleCommand::GLConsoleCommand(const char* n, void (*f)(bool)) : GLConsoleCommand(n, f, Type::Bool, true, false) {}
GLConsoleCommand::GLConsoleCommand(const char* n, void (*f)(float))
    : GLConsoleCommand(n, f, Type::Float, true, false) {}
GLConsoleCommand::GLConsoleCommand(const char* n, void (*f)(std::string))
    : GLConsoleCommand(n, f, Type::String, true, false) {}
GLConsoleCommand::GLConsoleCommand(const char* n, int (*f)()) : GLConsoleCommand(n, f, Type::Int, false, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, bool (*f)()) : GLConsoleCommand(n, f, Type::Bool, false, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, float (*f)()) : GLConsoleCommand(n, f, Type::Float, false, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, std::string (*f)())
    : GLConsoleCommand(n, f, Type::String, false, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, int (*f)(int, bool))
    : GLConsoleCommand(n, f, Type::Int, true, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, bool (*f)(bool, bool))
    : GLConsoleCommand(n, f, Type::Bool, true, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, float (*f)(float, bool))
    : GLConsoleCommand(n, f, Type::Float, true, true) {}
GLConsoleCommand::GLConsoleCommand(const char* n, std::string (*f)(std::string))
    : GLConsoleCommand(n, f, Type::String, true, true) {}

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

const std::map<std::string, GLConsoleCommand>& getCommands() {
    TRACE_LOCATION("GLConsole::getCommands");
    return state().commands;
}

}  // namespace GLConsole
