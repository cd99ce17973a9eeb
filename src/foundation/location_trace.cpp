#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "foundation/foundation.h"
#include "graphics/window/window.h"
#include "platform/platform.h"

namespace LocationTrace {

namespace {

constexpr int listedLocations = 16;
constexpr std::size_t reportWidth = 103;

const char* errorTypeText(int signalNumber) {
    switch (signalNumber) {
        case SIGTERM:
            return "Error type: Program requested to terminate abnormally.";
        case SIGSEGV:
            return "Error type: Read or write to memory not owned by program.";
        case SIGINT:
            return "Error type: Abnormal interuption of program by user.";
        case SIGILL:
            return "Error type: Attempted execution of unknown processor instruction.";
        case SIGFPE:
            return "Error type: Arithmetic error. Divide by zero or invalid arithmetic operation.";
        default:
            return "Error type: Abnormal program termination by program.";
    }
}

void appendPaddedLine(std::string& text, const std::string& line) {
    text += line;
    if (line.size() < reportWidth) text.append(reportWidth - line.size(), ' ');
    text += '\n';
}

void fatalSignal(int signalNumber) {
    GLWindow::close();
    const std::string report = buildFatalReport(signalNumber);
    Platform::showMessage(report.c_str(), "A fatal program error has occured.");
    // No destructors or exit handlers: after a fault they may wait for ever on
    // an allocator or a driver that the fault left locked.
    std::fflush(nullptr);
    std::_Exit(1);
}

}  // namespace

void initialise() {
    // The table is too large for a temporary, so it is zeroed in place.
    std::memset(&state(), 0, sizeof(State));
    for (int signalNumber : {SIGABRT, SIGFPE, SIGILL, SIGINT, SIGSEGV, SIGTERM})
        std::signal(signalNumber, fatalSignal);
}

void appendBacktrace(std::string& text) {
    text += "\nBacktrace of locations visited by program: \n";
    int lineNumber = 1;
    for (int slot = state().depth - 1; slot >= 0 && lineNumber <= listedLocations; --slot, ++lineNumber) {
        char lineNumberText[16];
        std::snprintf(lineNumberText, sizeof(lineNumberText), "%d", lineNumber);
        text += "\n";
        text += lineNumberText;
        text += " - ";
        text += state().names[slot] ? state().names[slot] : "Unknown location.";
    }
}

std::string buildFatalReport(int signalNumber) {
    std::string text;
    appendPaddedLine(text,
                     "We are very sorry but 'Brookfall' has encountered a techincal problem and must close "
                     "as a result. ");
    appendPaddedLine(text, "");
    appendPaddedLine(text,
                     "Please help us to improve our software by reporting the error to "
                     "'support@brookfall.game' .");
    appendPaddedLine(text,
                     "Any information you can provide relating to the problem would be extremely helpful "
                     "in resolving the");
    appendPaddedLine(text,
                     "issue. Such information includes when the problem occurred, the specification of the "
                     "PC being used to");
    appendPaddedLine(text, "run the game, and what version of Windows is installed on your computer.");
    appendPaddedLine(text,
                     "The information below relates to the problem that occcured and should also be "
                     "included in your report.");
    appendPaddedLine(text, "Thank you very much for your help.");
    appendPaddedLine(text, "");
    appendPaddedLine(text, std::string(reportWidth, '*'));
    appendPaddedLine(text, std::string(reportWidth, '*'));
    text += "\n";
    text += errorTypeText(signalNumber);
    text += "\n";
    appendBacktrace(text);
    return text;
}

}  // namespace LocationTrace
