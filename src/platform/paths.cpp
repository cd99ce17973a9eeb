#include <fnmatch.h>
#include <strings.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/platform.h"

namespace fs = std::filesystem;

namespace Platform {

namespace {

std::vector<std::string> splitComponents(const std::string& path) {
    std::vector<std::string> components;
    std::string current;
    for (char c : path) {
        if (c == '/' || c == '\\') {
            if (!current.empty()) components.push_back(current);
            current.clear();
        } else {
            current += c;
        }
    }
    if (!current.empty()) components.push_back(current);
    return components;
}

// The entry of `folder` whose name equals `name` but for case; the name itself if none does.
std::string matchEntry(const fs::path& folder, const std::string& name) {
    std::error_code error;
    if (name == "." || name == ".." || fs::exists(folder / name, error)) return name;
    std::vector<std::string> matches;
    for (fs::directory_iterator it(folder, error), last; !error && it != last; it.increment(error))
        if (strcasecmp(it->path().filename().c_str(), name.c_str()) == 0)
            matches.push_back(it->path().filename().string());
    if (matches.empty()) return name;
    std::sort(matches.begin(), matches.end());
    return matches.front();
}

}  // namespace

std::string resolvePath(const std::string& gameName) {
    const bool absolute = !gameName.empty() && (gameName[0] == '/' || gameName[0] == '\\');
    fs::path resolved = absolute ? fs::path("/") : fs::path();
    for (const std::string& component : splitComponents(gameName))
        resolved /= matchEntry(resolved.empty() ? fs::path(".") : resolved, component);
    return resolved.string();
}

FILE* openFile(const std::string& gameName, const char* mode) {
    if (gameName.empty()) return nullptr;
    const std::string path = resolvePath(gameName);
    // A folder opens as a stream on Linux and then reports absurd sizes; it is never a game file.
    std::error_code error;
    if (fs::is_directory(path, error)) return nullptr;
    return std::fopen(path.c_str(), mode);
}

bool fileExists(const std::string& gameName) {
    std::error_code error;
    return !gameName.empty() && fs::exists(resolvePath(gameName), error);
}

bool createDirectory(const std::string& gameName) {
    std::error_code error;
    return fs::create_directory(resolvePath(gameName), error);
}

bool replaceFile(const std::string& gameName, const void* data, std::size_t size) {
    if (gameName.empty()) return false;
    const std::string path = resolvePath(gameName);
    const std::string temporary = path + ".new";
    FILE* file = std::fopen(temporary.c_str(), "wb");
    if (!file) return false;
    bool written =
        std::fwrite(data, 1, size, file) == size && std::fflush(file) == 0 && fsync(fileno(file)) == 0;
    written = std::fclose(file) == 0 && written;
    // The old file stands until the new one is whole on disk.
    if (written && std::rename(temporary.c_str(), path.c_str()) == 0) return true;
    std::remove(temporary.c_str());
    return false;
}

std::vector<std::string> findFiles(const std::string& gamePattern) {
    std::string pattern = gamePattern;
    std::replace(pattern.begin(), pattern.end(), '\\', '/');
    const std::size_t slash = pattern.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : resolvePath(pattern.substr(0, slash));
    const std::string filePattern = slash == std::string::npos ? pattern : pattern.substr(slash + 1);

    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), last; !error && it != last; it.increment(error)) {
        const std::string name = it->path().filename().string();
        if (fnmatch(filePattern.c_str(), name.c_str(), FNM_CASEFOLD) == 0) names.push_back(name);
    }
    // By name, case aside, as the game's lists (levels, frames) are shown in that order.
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const int byLetters = strcasecmp(a.c_str(), b.c_str());
        return byLetters != 0 ? byLetters < 0 : a < b;
    });
    return names;
}

}  // namespace Platform
