// Turns a typed line into a call of a registered command: the command word is
// looked up without regard to case, the argument words are checked against the
// function's parameter type, and the result is reported in a fixed wording.
#include <algorithm>

#include "console/console_state.h"
#include "foundation/foundation.h"

namespace GLConsole {

namespace {

const char* const nothingTail = " < nothing >";

// What a value type needs for dispatch: its test and conversion of an argument
// word and the usage tails that describe it.
template <typename T>
struct ValueType;

template <>
struct ValueType<bool> {
    static constexpr const char* argumentTail = " < true OR false >";
    static constexpr const char* valueTail = " < true OR false OR nothing >";
    static bool isValid(const std::string& word) { return slStringIsBoolean(word); }
    static bool convert(const std::string& word) { return slStringToBool(word); }
};

template <>
struct ValueType<int> {
    static constexpr const char* argumentTail = " < integer number >";
    static constexpr const char* valueTail = " < integer number OR nothing >";
    static bool isValid(const std::string& word) { return slStringIsInteger(word); }
    static int convert(const std::string& word) { return slStringToInt(word); }
};

template <>
struct ValueType<float> {
    static constexpr const char* argumentTail = " < number >";
    static constexpr const char* valueTail = " < number OR nothing >";
    static bool isValid(const std::string& word) { return slStringIsNumeric(word); }
    static float convert(const std::string& word) { return slStringToFloat(word); }
};

void printUsage(const GLConsoleCommand& command, const char* tail) {
    print("\nUSAGE: ");
    print(command.name);
    print(tail);
}

template <typename T>
void printResult(const GLConsoleCommand& command, const char* verb, T value) {
    print("\n");
    print(command.name);
    print(verb);
    print(value);
}

void printBadShape() {
    print("\nBAD COMMAND. NON VOID FUNCTION WITH NO RETURN OR ARGUMENT !");
}

// The registry stores every function as void(*)(); the shape fields say which
// form it really has, and the call goes through that form.
template <typename Form>
Form functionAs(const GLConsoleCommand& command) {
    return reinterpret_cast<Form>(command.function);
}

template <typename T>
void callTypedFunction(const GLConsoleCommand& command, const std::vector<std::string>& args) {
    using Type = ValueType<T>;
    if (!command.hasArgument && !command.hasResult) return printBadShape();
    if (!command.hasArgument) {
        if (!args.empty()) return printUsage(command, nothingTail);
        return printResult(command, " is ", functionAs<T (*)()>(command)());
    }
    const bool oneValidWord = args.size() == 1 && Type::isValid(args[0]);
    if (!command.hasResult) {
        if (!oneValidWord) return printUsage(command, Type::argumentTail);
        return functionAs<void (*)(T)>(command)(Type::convert(args[0]));
    }
    const auto function = functionAs<T (*)(T, bool)>(command);
    if (args.empty()) return printResult(command, " is ", function(T(), false));
    if (!oneValidWord) return printUsage(command, Type::valueTail);
    printResult(command, " is now ", function(Type::convert(args[0]), true));
}

void dispatch(const GLConsoleCommand& command, const std::string& rest) {
    std::vector<std::string> args;
    slSeparateArgs(rest, args);
    switch (command.type) {
        case GLConsoleCommand::Void:
            return callVoidFunction(command, args);
        case GLConsoleCommand::Int:
            return callIntFunction(command, args);
        case GLConsoleCommand::Bool:
            return callBoolFunction(command, args);
        case GLConsoleCommand::Float:
            return callFloatFunction(command, args);
        case GLConsoleCommand::String:
            return callStringFunction(command, rest);
        default:
            print("\nBAD COMMAND. FUNCTION RETURN / ARGUMENT TYPES ARE NOT KNOWN !");
    }
}

}  // namespace

void runCommand() {
    TRACE_LOCATION("GLConsole::runCommand");
    // A copy, because the command may edit the input line or the registry.
    const std::string line(state().inputBuffer);
    const std::size_t wordStart = line.find_first_not_of(' ');
    if (wordStart == std::string::npos) return;
    const std::size_t wordEnd = std::min(line.find(' ', wordStart), line.size());
    std::string word = line.substr(wordStart, wordEnd - wordStart);
    slStringUpper(word);
    const std::string rest = wordEnd < line.size() ? line.substr(wordEnd + 1) : std::string();

    const auto found = state().commands.find(word);
    if (found == state().commands.end()) {
        print("\nUNKNOWN COMMAND. USE 'COMMANDS' FOR A LIST OF AVAILABLE COMMANDS.");
        return;
    }
    const GLConsoleCommand command = found->second;
    dispatch(command, rest);
}

void callVoidFunction(const GLConsoleCommand& command, const std::vector<std::string>& args) {
    TRACE_LOCATION("GLConsole::callVoidFunction");
    if (!args.empty()) return printUsage(command, nothingTail);
    command.function();
}

void callBoolFunction(const GLConsoleCommand& command, const std::vector<std::string>& args) {
    TRACE_LOCATION("GLConsole::callBoolFunction");
    callTypedFunction<bool>(command, args);
}

void callIntFunction(const GLConsoleCommand& command, const std::vector<std::string>& args) {
    TRACE_LOCATION("GLConsole::callIntFunction");
    callTypedFunction<int>(command, args);
}

void callFloatFunction(const GLConsoleCommand& command, const std::vector<std::string>& args) {
    TRACE_LOCATION("GLConsole::callFloatFunction");
    callTypedFunction<float>(command, args);
}

void callStringFunction(const GLConsoleCommand& command, const std::string& text) {
    TRACE_LOCATION("GLConsole::callStringFunction");
    if (!command.hasArgument && !command.hasResult) return printBadShape();
    if (!command.hasArgument) {
        if (!text.empty()) return printUsage(command, nothingTail);
        return printResult(command, " is ", functionAs<std::string (*)()>(command)());
    }
    if (!command.hasResult) return functionAs<void (*)(std::string)>(command)(text);
    const std::string result = functionAs<std::string (*)(std::string)>(command)(text);
    printResult(command, text.empty() ? " is " : " is now ", result);
}

}  // namespace GLConsole
