#include "support/test_support.h"

#include <fstream>
#include <random>
#include <sstream>

#include "console/console.h"
#include "platform/platform.h"

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() : previous(fs::current_path()) {
    std::random_device seed;
    folder =
        fs::temp_directory_path() / ("brookfall-test-" + std::to_string(seed()) + std::to_string(seed()));
    fs::create_directories(folder);
    fs::current_path(folder);
}

ScratchFolder::~ScratchFolder() {
    std::error_code error;
    fs::current_path(previous, error);
    fs::remove_all(folder, error);
}

void ScratchFolder::write(const std::string& relativeName, const std::string& bytes) const {
    const fs::path target = folder / relativeName;
    fs::create_directories(target.parent_path());
    std::ofstream(target, std::ios::binary) << bytes;
}

std::string ScratchFolder::read(const std::string& relativeName) const {
    std::ifstream in(folder / relativeName, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

namespace {
std::string captured;
void capture(const char* text, std::size_t length) {
    captured.append(text, length);
}
}  // namespace

ConsoleCapture::ConsoleCapture() {
    captured.clear();
    GLConsole::setPrintHook(capture);
}

ConsoleCapture::~ConsoleCapture() {
    GLConsole::setPrintHook(nullptr);
}

const std::string& ConsoleCapture::text() const {
    return captured;
}

std::string ConsoleCapture::take() {
    std::string text;
    text.swap(captured);
    return text;
}

ManualClock::ManualClock() {
    Platform::setManualClock(true);
}
ManualClock::~ManualClock() {
    Platform::setManualClock(false);
}
void ManualClock::advanceMilliseconds(unsigned milliseconds) {
    Platform::advanceClock(uint64_t{milliseconds} * 1000);
}
