// Helpers shared by the test programs.
#pragma once

#include <filesystem>
#include <string>

// Makes a fresh scratch folder, works in it for the life of the object, then
// goes back and removes it. Game file names resolve relative to it.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& path() const { return folder; }
    // Writes a file (folders made as needed) relative to the scratch folder.
    void write(const std::string& relativeName, const std::string& bytes) const;
    std::string read(const std::string& relativeName) const;

private:
    std::filesystem::path previous;
    std::filesystem::path folder;
};

// Collects everything printed on the console while it lives.
class ConsoleCapture {
public:
    ConsoleCapture();
    ~ConsoleCapture();
    ConsoleCapture(const ConsoleCapture&) = delete;
    ConsoleCapture& operator=(const ConsoleCapture&) = delete;

    const std::string& text() const;
    // Returns what was printed so far and starts collecting afresh.
    std::string take();
};

// Runs the clock by hand for the life of the object.
class ManualClock {
public:
    ManualClock();
    ~ManualClock();
    void advanceMilliseconds(unsigned milliseconds);
};
