#include "console/console_state.h"
#include "foundation/foundation.h"

namespace GLConsole {

namespace State {
std::map<std::string, GLConsoleCommand> commands;
}  // namespace State

namespace {

template <typename Function>
void add(const char* name, Function function, int type, bool hasArgument, bool hasResult) {
    TRACE_LOCATION("GLConsole::addCommand");
    GLConsoleCommand command;
    command.name = name ? name : "";
    command.function = reinterpret_cast<void (*)()>(function);
    command.type = type;
    command.hasArgument = hasArgument;
    command.hasResult = hasResult;
    addCommandInternal(command);
}

}  // namespace

using Type = GLConsoleCommand::Type;

void addCommand(const char* name, void (*f)()) {
    add(name, f, Type::Void, false, false);
}
void addCommand(const char* name, void (*f)(int)) {
    add(name, f, Type::Int, true, false);
}
void addCommand(const char* name, void (*f)(bool)) {
    add(name, f, Type::Bool, true, false);
}
void addCommand(const char* name, void (*f)(float)) {
    add(name, f, Type::Float, true, false);
}
void addCommand(const char* name, void (*f)(std::string)) {
    add(name, f, Type::String, true, false);
}
void addCommand(const char* name, int (*f)()) {
    add(name, f, Type::Int, false, true);
}
void addCommand(const char* name, bool (*f)()) {
    add(name, f, Type::Bool, false, true);
}
void addCommand(const char* name, float (*f)()) {
    add(name, f, Type::Float, false, true);
}
void addCommand(const char* name, std::string (*f)()) {
    add(name, f, Type::String, false, true);
}
void addCommand(const char* name, int (*f)(int, bool)) {
    add(name, f, Type::Int, true, true);
}
void addCommand(const char* name, bool (*f)(bool, bool)) {
    add(name, f, Type::Bool, true, true);
}
void addCommand(const char* name, float (*f)(float, bool)) {
    add(name, f, Type::Float, true, true);
}
void addCommand(const char* name, std::string (*f)(std::string)) {
    add(name, f, Type::String, true, true);
}

void addCommandInternal(const GLConsoleCommand& command) {
    TRACE_LOCATION("GLConsole::addCommandInternal");
    if (command.name.empty() || !command.function || command.type > Type::String) return;
    if (command.name.find(' ') != std::string::npos) return;
    std::string key = command.name;
    slStringUpper(key);
    State::commands[key] = command;
}

void removeCommand(const char* name) {
    TRACE_LOCATION("GLConsole::removeCommand");
    if (!name) return;
    std::string key = name;
    slStringUpper(key);
    State::commands.erase(key);
}

const std::map<std::string, GLConsoleCommand>& getCommands() {
    TRACE_LOCATION("GLConsole::getCommands");
    return State::commands;
}

}  // namespace GLConsole
