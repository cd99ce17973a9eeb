// The operating-system services the game uses, behind small operations of our own:
// file names, the millisecond clock, message boxes, memory status, directories.
// The window, sound, music and video stand-ins have headers of their own here.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace Platform {

// Game file names are written "cfg\game.cfg" and in any case. Backslashes become
// slashes and each component is matched case-insensitively against the folder it
// stands in, so that a name reaches the real file. A component that matches no
// entry is kept as written (so new files are created under the given name).
std::string resolvePath(const std::string& gameName);
FILE* openFile(const std::string& gameName, const char* mode);
bool fileExists(const std::string& gameName);
bool createDirectory(const std::string& gameName);
// Writes a whole file under a new name and renames it over the old one, so
// that a crash or a full disk during the write leaves the old file as it was.
bool replaceFile(const std::string& gameName, const void* data, std::size_t size);
// Names of the entries of a folder whose names match a pattern with "*" and "?"
// (case-insensitive), sorted by name. "gfx\\anim_FRAME*.tga" lists one folder.
std::vector<std::string> findFiles(const std::string& gamePattern);

// The one millisecond clock every timer reads. In manual mode it stands still
// until advanced by hand, so that timed behaviour replays exactly.
uint32_t clockMilliseconds();
// A finer reading of the same clock, in microseconds.
uint64_t clockMicroseconds();
void setManualClock(bool manual);
void advanceClock(uint64_t microseconds);

// Shows a blocking message to the player. Without a display it writes the text
// to standard error instead.
void showMessage(const char* text, const char* caption);

struct MemoryStatus {
    uint64_t totalPhysical = 0;
    uint64_t availablePhysical = 0;
};
MemoryStatus memoryStatus();

void sleepMilliseconds(uint32_t milliseconds);

// A desktop file box, shown by a dialog program of its own (zenity) while the
// caller waits. Filter patterns are written "*.rill;*.txt"; the first filter
// is the one selected at the start.
struct FileBox {
    bool save = false;  // asks before overwriting; otherwise the file must exist
    std::string title;
    std::string initialDirectory;                              // a game name; none when empty
    std::vector<std::pair<std::string, std::string>> filters;  // description, patterns
};
// The chosen path; empty when the player cancels or no dialog program can be run.
std::string showFileBox(const FileBox& box);

}  // namespace Platform
