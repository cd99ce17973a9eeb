// The command console: a circular text store that everything prints to, an
// optional log file, a one-line editor with history and completion, and a
// registry of typed commands that typed lines are dispatched to.
#pragma once

#include <map>
#include <string>
#include <vector>

class GLTexture;

// One registered command. The function's real form follows from type,
// hasArgument and hasResult.
struct GLConsoleCommand {
    enum Type { Void = 0, Int = 1, Bool = 2, Float = 3, String = 4 };

    std::string name;
    void (*function)() = nullptr;
    int type = Void;
    bool hasArgument = false;
    bool hasResult = false;
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
GLTexture getFontTexture();
void setFontTexture(const GLTexture& texture);

// Registry. One overload for each of the thirteen command shapes.
void addCommand(const char* name, void (*function)());
void addCommand(const char* name, void (*function)(int));
void addCommand(const char* name, void (*function)(bool));
void addCommand(const char* name, void (*function)(float));
void addCommand(const char* name, void (*function)(std::string));
void addCommand(const char* name, int (*function)());
void addCommand(const char* name, bool (*function)());
void addCommand(const char* name, float (*function)());
void addCommand(const char* name, std::string (*function)());
void addCommand(const char* name, int (*function)(int, bool));
void addCommand(const char* name, bool (*function)(bool, bool));
void addCommand(const char* name, float (*function)(float, bool));
void addCommand(const char* name, std::string (*function)(std::string));
void addCommandInternal(const GLConsoleCommand& command);
void removeCommand(const char* name);
void clearCommands();
void addBasicGLConsoleCommands();
const std::map<std::string, GLConsoleCommand>& getCommands();

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

// Read access for drawing and tests.
const char* getOutputBuffer();
int getOutputPosition();
const char* getInputLine();
int getCursorPosition();

// Where printed text also goes as it is printed (the headless runner's standard
// output); null for none.
using PrintHook = void (*)(const char* text, std::size_t length);
void setPrintHook(PrintHook hook);

}  // namespace GLConsole
