#include <cstdio>
#include <list>
#include <vector>

#include "console/console.h"
#include "foundation/foundation.h"
#include "platform/platform.h"

namespace {

bool isEquals(const std::string& token) {
    return token == "=";
}

// Reads the whole file; reports and returns false on any failure.
bool readWholeFile(const char* fileName, std::vector<char>& text) {
    FILE* file = Platform::openFile(fileName, "rb");
    if (!file) {
        GLConsole::print("\nCould not open config file: ");
        GLConsole::print(fileName);
        return false;
    }
    if (std::ferror(file)) {
        GLConsole::print("\nError when opening config file: ");
        GLConsole::print(fileName);
        std::fclose(file);
        return false;
    }
    long length = -1;
    if (std::fseek(file, 0, SEEK_END) == 0) length = std::ftell(file);
    if (length < 0 || std::fseek(file, 0, SEEK_SET) != 0) {
        GLConsole::print("Error reading config file: ");
        GLConsole::print(fileName);
        std::fclose(file);
        return false;
    }
    text.assign(static_cast<std::size_t>(length) + 1, '\0');
    if (length > 0 && std::fread(text.data(), static_cast<std::size_t>(length), 1, file) != 1) {
        GLConsole::print("Error reading config file: ");
        GLConsole::print(fileName);
        std::fclose(file);
        return false;
    }
    std::fclose(file);
    return true;
}

// An "=" goes if it stands first or last or beside another "=".
void cleanEqualsSigns(std::list<std::string>& tokens) {
    for (auto it = tokens.begin(); it != tokens.end();) {
        const auto next = std::next(it);
        const bool first = it == tokens.begin();
        const bool last = next == tokens.end();
        if (isEquals(*it) && (first || last || isEquals(*std::prev(it)) || isEquals(*next)))
            it = tokens.erase(it);
        else
            it = next;
    }
}

// A word stays only if exactly one of its neighbours is an "=".
void cleanWords(std::list<std::string>& tokens) {
    for (auto it = tokens.begin(); it != tokens.end();) {
        const auto next = std::next(it);
        if (isEquals(*it)) {
            it = next;
            continue;
        }
        const bool equalsBefore = it != tokens.begin() && isEquals(*std::prev(it));
        const bool equalsAfter = next != tokens.end() && isEquals(*next);
        if (equalsBefore == equalsAfter)
            it = tokens.erase(it);
        else
            it = next;
    }
}

}  // namespace

namespace {
struct KeysAsked {
    std::map<std::string, std::set<std::string>> byFile;
};
std::map<std::string, std::set<std::string>>& keysAskedState() {
    return singleInstance<KeysAsked>().byFile;
}
}  // namespace

const std::map<std::string, std::set<std::string>>& ConfigFile::keysAsked() {
    TRACE_LOCATION("ConfigFile::keysAsked");
    return keysAskedState();
}

ConfigFile::ConfigFile(const char* fileName) {
    TRACE_LOCATION("ConfigFile::ConfigFile");
    loadConfigFile(fileName);
}

void ConfigFile::loadConfigFile(const char* fileName) {
    TRACE_LOCATION("ConfigFile::loadConfigFile");
    values.clear();
    name = fileName ? fileName : "";
    slStringUpper(name);
    if (!fileName) {
        GLConsole::print("\nError in configuration Loader: no file name given");
        return;
    }
    std::vector<char> text;
    if (!readWholeFile(fileName, text) || text.size() == 1) return;

    std::vector<std::string> tokenVector;
    separateTokens(text.data(), tokenVector);
    std::list<std::string> tokens(tokenVector.begin(), tokenVector.end());
    cleanEqualsSigns(tokens);
    cleanWords(tokens);
    tokens.remove_if(isEquals);

    for (auto it = tokens.begin(); it != tokens.end() && std::next(it) != tokens.end(); std::advance(it, 2)) {
        std::string key = *it;
        slStringUpper(key);
        values[key] = *std::next(it);
    }
}

void ConfigFile::separateTokens(const char* text, std::vector<std::string>& tokens) {
    TRACE_LOCATION("ConfigFile::separateTokens");
    const char* c = text;
    while (*c) {
        if (slIsSeparator(*c)) {
            ++c;
        } else if (*c == '=') {
            tokens.emplace_back("=");
            ++c;
        } else {
            const char* start = c;
            while (*c && *c != '=' && !slIsSeparator(*c)) ++c;
            tokens.emplace_back(start, c);
        }
    }
}

const std::string* ConfigFile::find(const std::string& key) const {
    TRACE_LOCATION("ConfigFile::find");
    std::string upper = key;
    slStringUpper(upper);
    keysAskedState()[name].insert(upper);
    const auto it = values.find(upper);
    return it == values.end() ? nullptr : &it->second;
}

std::string ConfigFile::getVarAsString(const char* key) const {
    TRACE_LOCATION("ConfigFile::getVarAsString");
    return getVarAsString(std::string(key ? key : ""));
}

std::string ConfigFile::getVarAsString(const std::string& key) const {
    TRACE_LOCATION("ConfigFile::getVarAsString");
    const std::string* value = find(key);
    return value ? *value : std::string();
}

float ConfigFile::getVarAsFloat(const char* key) const {
    TRACE_LOCATION("ConfigFile::getVarAsFloat");
    return getVarAsFloat(std::string(key ? key : ""));
}

float ConfigFile::getVarAsFloat(const std::string& key) const {
    TRACE_LOCATION("ConfigFile::getVarAsFloat");
    const std::string* value = find(key);
    return value ? slStringToFloat(*value) : 0.0f;
}

int ConfigFile::getVarAsInt(const char* key) const {
    TRACE_LOCATION("ConfigFile::getVarAsInt");
    return getVarAsInt(std::string(key ? key : ""));
}

int ConfigFile::getVarAsInt(const std::string& key) const {
    TRACE_LOCATION("ConfigFile::getVarAsInt");
    const std::string* value = find(key);
    return value ? slStringToInt(*value) : 0;
}

bool ConfigFile::getVarAsBool(const char* key) const {
    TRACE_LOCATION("ConfigFile::getVarAsBool");
    return getVarAsBool(std::string(key ? key : ""));
}

bool ConfigFile::getVarAsBool(const std::string& key) const {
    TRACE_LOCATION("ConfigFile::getVarAsBool");
    const std::string* value = find(key);
    return value ? slStringToBool(*value) : false;
}

bool ConfigFile::variableExists(const char* key) const {
    TRACE_LOCATION("ConfigFile::variableExists");
    return variableExists(std::string(key ? key : ""));
}

bool ConfigFile::variableExists(const std::string& key) const {
    TRACE_LOCATION("ConfigFile::variableExists");
    return find(key) != nullptr;
}
