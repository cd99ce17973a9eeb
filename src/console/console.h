// The command console: a circular text store that everything prints to, an
// optional log file, a one-line editor with history and completion, and a
// registry of typed commands that typed lines are dispatched to.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "foundation/foundation.h"

class GLTexture;

// One registered command. The function's real form follows from type,
// hasArgument and hasResult. A subsystem lists its commands once, as a table of
// these made from a name and a function of one of the thirteen shapes.
struct GLConsoleCommand {
    enum Type { Void = 0, Int = 1, Bool = 2, Float = 3, String = 4 };

    std::string name;
    void (*function)() = nullptr;
    int type = Void;
    bool hasArgument = false;
    bool hasResult = false;

    GLConsoleCommand() = default;
    GLConsoleCommand(const char* commandName, void (*f)());
    GLConsoleCommand(const char* commandName, void (*f)(int));
    GLConsoleCommand(const char* commandName, void (*f)(bool));
    GLConsoleCommand(const char* commandName, void (*f)(float));
    GLConsoleCommand(const char* commandName, void (*f)(std::string));
    GLConsoleCommand(const char* commandName, int (*f)());
    GLConsoleCommand(const char* commandName, bool (*f)());
    GLConsoleCommand(const char* commandName, float (*f)());
    GLConsoleCommand(const char* commandName, std::string (*f)());
    GLConsoleCommand(const char* commandName, int (*f)(int, bool));
    GLConsoleCommand(const char* commandName, bool (*f)(bool, bool));
    GLConsoleCommand(const char* commandName, float (*f)(float, bool));
    GLConsoleCommand(const char* commandName, std::string (*f)(std::string));
    // Any shape, as the registry stores it.
    GLConsoleCommand(const char* commandName, void (*f)(), int commandType, bool argument, bool result);
};

namespace GLConsole {

constexpr int outputBufferSize = 65535;
constexpr int inputBufferSize = 256;
constexpr int historySize = 16;

// Output. Print adds no newline; messages begin with "\n" by convention.
void print(const char* text);
void print(const std::string& text);
void print(char c);
void print(unsigned int value);
void print(int value);
void print(bool value);
void print(float value);
void print(double value);
void printTitle(const char* text);
void printTitle(const std::string& text);

// Set-up and service.
void initialise();
void clear();
void loadConfiguration();
void shutdown();
void enableLogging();
void disableLogging();
bool isLogging();
void keyPressed(int key);
void draw();
// The console font, a 16 by 16 grid of character cells; the default texture when
// there is none. Other subsystems draw their debug labels with it.
const GLTexture& getFontTexture();
void setFontTexture(const GLTexture& texture);

// The words of a command that takes several arguments, when they are as the
// pattern says, a letter a word: 'n' a number, 'i' an integer, 'b' true or
// false, 's' any word. Otherwise prints the usage and gives false.
bool readArguments(const std::string& arguments, const char* pattern, const char* usage,
                   std::vector<std::string>& words);

// Registry. addCommand takes a function of any of the thirteen command shapes.
// The body of a command that reads and sets one value: the value now in force.
template <typename T>
T setting(T& value, T newValue, bool set) {
    if (set) value = newValue;
    return value;
}

// The function behind a command that reads and sets one field of a
// subsystem's state and does nothing else, made from the state's accessor and
// the field: {"TriggerDraw", GLConsole::settingCommand<state, &State::drawTriggers>}.
template <typename Member>
struct MemberValue;
template <typename Owner, typename T>
struct MemberValue<T Owner::*> {
    using Type = T;
};
template <auto stateOf, auto field>
typename MemberValue<decltype(field)>::Type settingCommand(typename MemberValue<decltype(field)>::Type value,
                                                           bool set) {
    TRACE_LOCATION("GLConsole::settingCommand");
    return setting(stateOf().*field, value, set);
}

void addCommandInternal(const GLConsoleCommand& command);
template <typename Function>
void addCommand(const char* name, Function function) {
    TRACE_LOCATION("GLConsole::addCommand");
    addCommandInternal(GLConsoleCommand(name, function));
}
void removeCommand(const char* name);
// A subsystem's whole table, added in its order and removed again.
void addCommands(const GLConsoleCommand* table, std::size_t count);
void removeCommands(const GLConsoleCommand* table, std::size_t count);
template <std::size_t N>
void addCommands(const GLConsoleCommand (&table)[N]) {
    addCommands(table, N);
}
template <std::size_t N>
void removeCommands(const GLConsoleCommand (&table)[N]) {
    removeCommands(table, N);
}
// How a subsystem shows on the console while it runs: the line it prints as
// it starts, the line it prints as it stops and its command table, so that
// starting and stopping keep the three together.
struct Subsystem {
    template <std::size_t N>
    Subsystem(const char* starting, const char* stopping, const GLConsoleCommand (&table)[N])
        : startLine(starting), stopLine(stopping), commands(table), commandCount(N) {}
    const char* startLine;
    const char* stopLine;
    const GLConsoleCommand* commands;
    std::size_t commandCount;
};
// Prints the start line and adds the table.
void startSubsystem(const Subsystem& subsystem);
// Prints the stop line and removes the table.
void stopSubsystem(const Subsystem& subsystem);
void clearCommands();
void addBasicGLConsoleCommands();

// Runs a typed line as if entered on the console (tools and tests use it).
void enterLine(const std::string& line);
// Executes the input line.
void runCommand();
// Completes the command word on the input line, cycling through the candidates.
void autoCompleteCommand();

// Dispatchers: check the argument words against the command's shape, call it and
// report the result. A string command receives the unsplit rest of the line.
void callVoidFunction(const GLConsoleCommand& command, const std::vector<std::string>& args);
void callBoolFunction(const GLConsoleCommand& command, const std::vector<std::string>& args);
void callIntFunction(const GLConsoleCommand& command, const std::vector<std::string>& args);
void callFloatFunction(const GLConsoleCommand& command, const std::vector<std::string>& args);
void callStringFunction(const GLConsoleCommand& command, const std::string& text);

// Where printed text also goes as it is printed (the headless runner's standard
// output); null for none.
using PrintHook = void (*)(const char* text, std::size_t length);
void setPrintHook(PrintHook hook);

}  // namespace GLConsole
