#include "support/content_support.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

fs::path fromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value ? fs::path(value) : fs::path();
}

uint16_t readLittle16(const std::string& bytes, size_t at) {
    return static_cast<uint16_t>(static_cast<uint8_t>(bytes[at]) |
                                 (static_cast<uint8_t>(bytes[at + 1]) << 8));
}

// Run-length rows, each packet held within its row as the game's decoder expects.
bool decodeRunLength(const std::string& bytes, size_t at, TgaPicture& picture) {
    const size_t rowBytes = static_cast<size_t>(picture.width) * 4;
    for (int row = 0; row < picture.height; ++row) {
        size_t filled = 0;
        while (filled < rowBytes) {
            if (at >= bytes.size()) return false;
            const uint8_t header = static_cast<uint8_t>(bytes[at++]);
            const size_t count = (header & 0x7F) + 1u;
            if (filled + count * 4 > rowBytes) return false;
            const size_t dataBytes = (header & 0x80) ? 4 : count * 4;
            if (at + dataBytes > bytes.size()) return false;
            for (size_t i = 0; i < count; ++i) {
                const size_t source = (header & 0x80) ? at : at + i * 4;
                picture.pixels.insert(picture.pixels.end(), bytes.begin() + source,
                                      bytes.begin() + source + 4);
            }
            at += dataBytes;
            filled += count * 4;
        }
    }
    return true;
}

void flipRows(TgaPicture& picture) {
    const size_t rowBytes = static_cast<size_t>(picture.width) * 4;
    for (int top = 0, bottom = picture.height - 1; top < bottom; ++top, --bottom)
        std::swap_ranges(picture.pixels.begin() + top * rowBytes,
                         picture.pixels.begin() + (top + 1) * rowBytes,
                         picture.pixels.begin() + bottom * rowBytes);
}

// The build folder: from the environment when ctest gives it, otherwise the
// folder above the test program's own, where the build puts test programs.
fs::path buildFolder() {
    const fs::path given = fromEnvironment("BROOKFALL_BINARY_DIR");
    if (!given.empty()) return given;
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path().parent_path();
}

}  // namespace

fs::path bakedDataFolder() {
    return buildFolder() / "data";
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
    const int status = std::system(commandLine.c_str());
    if (status == -1 || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

std::string quoted(const fs::path& path) {
    return "'" + path.string() + "'";
}

TgaPicture readTga(const std::string& bytes) {
    TgaPicture picture;
    if (bytes.size() < 18) {
        picture.error = "shorter than the header";
        return picture;
    }
    const uint8_t idLength = static_cast<uint8_t>(bytes[0]);
    picture.type = static_cast<uint8_t>(bytes[2]);
    picture.width = readLittle16(bytes, 12);
    picture.height = readLittle16(bytes, 14);
    const uint8_t bits = static_cast<uint8_t>(bytes[16]);
    const uint8_t descriptor = static_cast<uint8_t>(bytes[17]);
    if (bytes[1] == 1) picture.error = "has a colour map";
    if (picture.type != 2 && picture.type != 10) picture.error = "is not true colour";
    if (picture.width < 4 || picture.height < 4) picture.error = "is smaller than 4 by 4";
    if (bits != 32) picture.error = "is not 32 bits a pixel";
    if (descriptor & 1) picture.error = "has descriptor bit 0 set";
    if (!picture.ok()) return picture;
    const size_t start = 18u + idLength;
    const size_t pixelBytes = static_cast<size_t>(picture.width) * picture.height * 4;
    if (picture.type == 2) {
        if (bytes.size() < start + pixelBytes)
            picture.error = "ends before its pixels";
        else
            picture.pixels.assign(bytes.begin() + start, bytes.begin() + start + pixelBytes);
    } else if (!decodeRunLength(bytes, start, picture)) {
        picture.error = "has broken run-length packets";
    }
    if (picture.ok() && !(descriptor & 0x20)) flipRows(picture);
    return picture;
}

WorkingFolder::WorkingFolder(const fs::path& folder) : previous(fs::current_path()) {
    fs::current_path(folder);
}

WorkingFolder::~WorkingFolder() {
    std::error_code error;
    fs::current_path(previous, error);
}
