// Helpers of the content tests and the tool tests: where the baked data lies,
// the baked pictures read as the game reads them, and a way to run the tools.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

std::filesystem::path bakedDataFolder();
// The data folder of the source tree, where the level sources and solutions lie.
std::filesystem::path sourceDataFolder();
std::filesystem::path toolPath(const std::string& tool);
// The runner that replays and probes whole levels: an optimised build when the
// test command names one in BROOKFALL_FAST_RUNNER (through the sanitized build
// that takes minutes a level), else the runner of this build.
std::filesystem::path levelRunner();

// Every regular file under root, as sorted paths relative to root.
std::vector<std::string> listFiles(const std::filesystem::path& root);
// Every baked wave file, as sorted paths relative to the data folder ("snd/...").
std::vector<std::string> bakedSounds();
std::string readBytes(const std::filesystem::path& file);

// Runs a command line; returns its exit status, or -1 if it could not run.
int runCommand(const std::string& commandLine);
std::string quoted(const std::filesystem::path& path);
// Runs a command line and collects what it writes on both its outputs.
struct ToolRun {
    std::string output;
    int exitCode = -1;
};
ToolRun runTool(const std::string& commandLine);
// The "{...}" lines a runner writes, in order.
std::vector<std::string> stateLines(const std::string& output);

// A 32-bit TGA as the game's own reader decodes it, pixels top row first in
// blue, green, red, alpha order. The bake must also keep each run-length
// packet within its row: the game's reader would cut a packet that runs on.
struct TgaPicture {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> pixels;
    std::string error;

    bool ok() const { return error.empty(); }
    uint8_t alpha(int x, int y) const { return pixels[(static_cast<size_t>(y) * width + x) * 4 + 3]; }
    const uint8_t* pixel(int x, int y) const { return &pixels[(static_cast<size_t>(y) * width + x) * 4]; }
};
TgaPicture readTga(const std::string& bytes);

// Changes the working folder for the life of the object, as the game runs in
// its data folder; game names such as "cfg\\water.cfg" then resolve.
class WorkingFolder {
public:
    explicit WorkingFolder(const std::filesystem::path& folder);
    ~WorkingFolder();
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

private:
    std::filesystem::path previous;
};
