// The table of the ten best scores and its file: a magic number and the ten
// entries of 28 bytes, little-endian, 284 bytes in all. Anything else in the
// file counts as no file, and the default table stands.
#include <algorithm>
#include <cstring>

#include "menus/menus.h"
#include "platform/platform.h"

namespace {

constexpr const char* scoresFolder = "sav";
constexpr const char* scoresFile = "sav\\scores.sav";
constexpr uint32_t tableBytes = HighScores::entryCount * sizeof(HighScoreEntry);

struct State {
    std::array<HighScoreEntry, HighScores::entryCount> table{};
};

State& state() {
    return singleInstance<State>();
}

uint32_t readLittleEndian(const uint8_t* bytes) {
    return static_cast<uint32_t>(bytes[0]) | static_cast<uint32_t>(bytes[1]) << 8 |
           static_cast<uint32_t>(bytes[2]) << 16 | static_cast<uint32_t>(bytes[3]) << 24;
}

void writeLittleEndian(uint32_t value, uint8_t* bytes) {
    for (int i = 0; i < 4; ++i) bytes[i] = static_cast<uint8_t>(value >> (8 * i));
}

HighScoreEntry entryFromBytes(const uint8_t* bytes) {
    HighScoreEntry entry{};
    std::memcpy(entry.name, bytes, sizeof(entry.name));
    // A name that fills its field without an end is cut to 20 characters.
    entry.name[HighScores::maxNameLength] = '\0';
    std::memcpy(entry.padding, bytes + sizeof(entry.name), sizeof(entry.padding));
    entry.score = readLittleEndian(bytes + 24);
    return entry;
}

void entryToBytes(const HighScoreEntry& entry, uint8_t* bytes) {
    std::memcpy(bytes, entry.name, sizeof(entry.name));
    std::memcpy(bytes + sizeof(entry.name), entry.padding, sizeof(entry.padding));
    writeLittleEndian(entry.score, bytes + 24);
}

}  // namespace

const std::array<HighScoreEntry, HighScores::entryCount>& HighScores::getScores() {
    TRACE_LOCATION("HighScores::getScores");
    return state().table;
}

void HighScores::setDefaultScores() {
    TRACE_LOCATION("HighScores::setDefaultScores");
    for (HighScoreEntry& entry : state().table) {
        entry = HighScoreEntry{};
        std::strcpy(entry.name, "NO NAME");
    }
}

void HighScores::loadScores() {
    TRACE_LOCATION("HighScores::loadScores");
    setDefaultScores();
    MemoryFile file;
    file.open(scoresFile);
    if (!file.is_open()) return;
    uint8_t magic[4];
    file.read(magic, sizeof(magic));
    if (file.error() || readLittleEndian(magic) != magicNumber) return;
    uint8_t bytes[tableBytes];
    file.read(bytes, tableBytes);
    if (file.error()) return;
    for (int i = 0; i < entryCount; ++i)
        state().table[static_cast<std::size_t>(i)] = entryFromBytes(bytes + i * sizeof(HighScoreEntry));
}

void HighScores::saveScores() {
    TRACE_LOCATION("HighScores::saveScores");
    Platform::createDirectory(scoresFolder);
    uint8_t bytes[4 + tableBytes];
    writeLittleEndian(magicNumber, bytes);
    for (int i = 0; i < entryCount; ++i)
        entryToBytes(state().table[static_cast<std::size_t>(i)], bytes + 4 + i * sizeof(HighScoreEntry));
    // Failing to write loses this run's scores, never the ones already in the file.
    Platform::replaceFile(scoresFile, bytes, sizeof(bytes));
}

// A score equal to one in the table ranks below it.
void HighScores::addHighScore(HighScoreEntry entry) {
    TRACE_LOCATION("HighScores::addHighScore");
    auto& table = state().table;
    const auto place = std::find_if(table.begin(), table.end(), [&entry](const HighScoreEntry& held) {
        return held.score < entry.score;
    });
    if (place == table.end()) return;
    std::move_backward(place, table.end() - 1, table.end());
    *place = entry;
}

// A score that makes the table opens the name screen in a loop of its own:
// the game stands still until the player has typed a name.
void HighScores::checkScore(uint32_t score, GuiScreen* background) {
    TRACE_LOCATION("HighScores::checkScore");
    const auto& table = state().table;
    if (std::none_of(table.begin(), table.end(),
                     [score](const HighScoreEntry& held) { return held.score < score; }))
        return;
    GLWindowEventListener* const savedListener = GLWindow::getEventListener();
    HighScores screen(background);
    GLWindow::setEventListener(&screen);
    while (GLWindow::exists() && screen.isRunning()) {
        GLWindow::requestRepaint();
        GLWindow::run();
    }
    GLWindow::setEventListener(savedListener);
    HighScoreEntry entry{};
    std::memcpy(entry.name, screen.getName(), sizeof(entry.name));
    entry.score = score;
    addHighScore(entry);
}
