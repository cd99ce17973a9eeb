// Tab completion of the command word. The first Tab remembers the line as the
// prefix and shows the first command that starts with it; each further Tab shows
// the next one in registry order, and after the last the cycle starts again.
// Any other edit of the line clears the prefix, so the next Tab starts afresh.
#include <cstring>

#include "console/console_state.h"
#include "foundation/foundation.h"

namespace GLConsole {

using namespace State;

namespace {

using Registry = std::map<std::string, GLConsoleCommand>;

void setLine(const std::string& text) {
    if (text.size() >= inputBufferSize) return;
    std::memset(inputBuffer, 0, sizeof(inputBuffer));
    text.copy(inputBuffer, text.size());
    cursorPosition = static_cast<int>(text.size());
}

std::string upperCasedLine() {
    std::string line(inputBuffer);
    slStringUpper(line);
    return line;
}

void showCandidate(Registry::const_iterator candidate) {
    if (candidate != commands.end() && keyStartsWith(candidate->first, completionPrefix))
        setLine(candidate->second.name);
}

void startCompletion() {
    completionPrefix = upperCasedLine();
    showCandidate(commands.lower_bound(completionPrefix));
}

// Moves on from the command on the line; false when the line no longer holds a
// candidate (the user changed it) or the candidates are used up.
bool showNextCandidate() {
    const auto shown = commands.find(upperCasedLine());
    if (shown == commands.end()) return false;
    const auto next = std::next(shown);
    if (next == commands.end() || !keyStartsWith(next->first, completionPrefix)) {
        setLine(completionPrefix);
        return false;
    }
    setLine(next->second.name);
    return true;
}

}  // namespace

void autoCompleteCommand() {
    TRACE_LOCATION("GLConsole::autoCompleteCommand");
    if (!completionPrefix.empty() && showNextCandidate()) return;
    completionPrefix.clear();
    startCompletion();
}

}  // namespace GLConsole
