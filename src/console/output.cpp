#include <cstdio>
#include <cstring>

#include "console/console_state.h"
#include "foundation/foundation.h"

namespace GLConsole {

State::State() {
    std::memset(outputBuffer, '\n', sizeof(outputBuffer));
}

State& state() {
    return singleInstance<State>();
}

namespace {

void storeBytes(const char* text, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        state().outputBuffer[state().outputPosition] = text[i];
        if (++state().outputPosition >= outputBufferSize) state().outputPosition = 0;
    }
    if (state().printHook) state().printHook(text, count);
}

void storeText(const char* text) {
    storeBytes(text, std::strlen(text));
}

// Closes the log when the write left the file in a bad state, and says so in the
// store alone. Each write is flushed, so that the log is complete up to the
// moment of a crash and a full disk shows at once.
void writeToLog(const char* text, std::size_t count) {
    std::fwrite(text, 1, count, state().logFile);
    std::fflush(state().logFile);
    if (!std::ferror(state().logFile) && !std::feof(state().logFile)) return;
    std::fclose(state().logFile);
    state().logFile = nullptr;
    state().logging = false;
    storeText("\nLogging to ");
    storeText(logFileName);
    storeText(" stopped because of a write error.");
}

template <typename T>
void printFormatted(const char* format, T value) {
    char text[64];
    std::snprintf(text, sizeof(text), format, value);
    print(text);
}

}  // namespace

void print(const char* text) {
    TRACE_LOCATION("GLConsole::print");
    if (!text) return;
    const std::size_t count = std::strlen(text);
    if (state().logging) writeToLog(text, count);
    storeBytes(text, count);
}

void print(const std::string& text) {
    TRACE_LOCATION("GLConsole::print");
    print(text.c_str());
}

void print(char c) {
    TRACE_LOCATION("GLConsole::print");
    storeBytes(&c, 1);
    if (state().logging) writeToLog(&c, 1);
}

void print(unsigned int value) {
    TRACE_LOCATION("GLConsole::print");
    printFormatted("%1u", value);
}

void print(int value) {
    TRACE_LOCATION("GLConsole::print");
    printFormatted("%1i", value);
}

void print(bool value) {
    TRACE_LOCATION("GLConsole::print");
    print(value ? "true" : "false");
}

void print(float value) {
    TRACE_LOCATION("GLConsole::print");
    printFormatted("%1f", static_cast<double>(value));
}

void print(double value) {
    TRACE_LOCATION("GLConsole::print");
    printFormatted("%1f", value);
}

void printTitle(const char* text) {
    TRACE_LOCATION("GLConsole::printTitle");
    static const std::string rule = "\n\n" + std::string(64, '*') + "\n\n";
    print(rule);
    print(text);
    print(rule);
}

void printTitle(const std::string& text) {
    TRACE_LOCATION("GLConsole::printTitle");
    printTitle(text.c_str());
}

void setPrintHook(PrintHook hook) {
    TRACE_LOCATION("GLConsole::setPrintHook");
    state().printHook = hook;
}

}  // namespace GLConsole
