#include "support/content_support.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "graphics/graphics.h"

namespace fs = std::filesystem;

namespace {

fs::path fromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value ? fs::path(value) : fs::path();
}

// The build folder: from the environment when ctest gives it, otherwise the
// folder above the test program's own, where the build puts test programs.
fs::path buildFolder() {
    const fs::path given = fromEnvironment("BROOKFALL_BINARY_DIR");
    if (!given.empty()) return given;
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path().parent_path();
}

int exitStatus(int status) {
    return status == -1 || !WIFEXITED(status) ? -1 : WEXITSTATUS(status);
}

// Walks the packets of a run-length picture (type 10) row by row.
bool packetsKeepToRows(const std::string& bytes, int width, int height) {
    std::size_t at = 18u + static_cast<uint8_t>(bytes[0]);
    for (int row = 0; row < height; ++row)
        for (int filled = 0; filled < width;) {
            if (at >= bytes.size()) return false;
            const uint8_t header = static_cast<uint8_t>(bytes[at]);
            filled += (header & 0x7F) + 1;
            if (filled > width) return false;
            at += 1 + ((header & 0x80) ? 4u : 4u * ((header & 0x7Fu) + 1));
        }
    return true;
}

}  // namespace

fs::path bakedDataFolder() {
    return buildFolder() / "data";
}

fs::path sourceDataFolder() {
    return fromEnvironment("BROOKFALL_SOURCE_DIR") / "data";
}

fs::path toolPath(const std::string& tool) {
    return buildFolder() / tool;
}

fs::path levelRunner() {
    const fs::path fast = fromEnvironment("BROOKFALL_FAST_RUNNER");
    return fast.empty() ? toolPath("brookfall-headless") : fast;
}

std::vector<std::string> listFiles(const fs::path& root) {
    std::vector<std::string> files;
    std::error_code error;
    for (fs::recursive_directory_iterator it(root, error), end; !error && it != end; it.increment(error))
        if (it->is_regular_file()) files.push_back(fs::relative(it->path(), root).generic_string());
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> bakedSounds() {
    std::vector<std::string> names;
    for (const std::string& name : listFiles(bakedDataFolder() / "snd"))
        if (fs::path(name).extension() == ".wav") names.push_back("snd/" + name);
    return names;
}

std::string readBytes(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

int runCommand(const std::string& commandLine) {
    return exitStatus(std::system(commandLine.c_str()));
}

std::string quoted(const fs::path& path) {
    return "'" + path.string() + "'";
}

ToolRun runTool(const std::string& commandLine) {
    ToolRun run;
    FILE* pipe = popen((commandLine + " 2>&1").c_str(), "r");
    if (!pipe) return run;
    char buffer[4096];
    for (std::size_t count; (count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        run.output.append(buffer, count);
    run.exitCode = exitStatus(pclose(pipe));
    return run;
}

std::vector<std::string> stateLines(const std::string& output) {
    std::vector<std::string> lines;
    std::istringstream in(output);
    for (std::string line; std::getline(in, line);)
        if (line.rfind("{", 0) == 0) lines.push_back(line);
    return lines;
}

TgaPicture readTga(const std::string& bytes) {
    TgaPicture picture;
    if (!GLTga32Loader::decode(reinterpret_cast<const uint8_t*>(bytes.data()),
                               static_cast<uint32_t>(bytes.size()), picture.pixels, picture.width,
                               picture.height))
        picture.error = "is refused by the game's reader";
    else if (bytes[2] == 10 && !packetsKeepToRows(bytes, picture.width, picture.height))
        picture.error = "has a run-length packet that runs past its row";
    return picture;
}

WorkingFolder::WorkingFolder(const fs::path& folder) : previous(fs::current_path()) {
    fs::current_path(folder);
}

WorkingFolder::~WorkingFolder() {
    std::error_code error;
    fs::current_path(previous, error);
}
