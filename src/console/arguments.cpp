// Checking the argument words of commands that take several.
#include <cstring>

#include "console/console.h"
#include "foundation/foundation.h"

namespace GLConsole {

namespace {

bool wordFits(const std::string& word, char kind) {
    switch (kind) {
        case 'n':
            return slStringIsNumeric(word);
        case 'i':
            return slStringIsInteger(word);
        case 'b':
            return slStringIsBoolean(word);
        default:
            return true;
    }
}

bool wordsFit(const std::vector<std::string>& words, const char* pattern) {
    if (words.size() != std::strlen(pattern)) return false;
    for (std::size_t i = 0; i < words.size(); ++i)
        if (!wordFits(words[i], pattern[i])) return false;
    return true;
}

}  // namespace

bool readArguments(const std::string& arguments, const char* pattern, const char* usage,
                   std::vector<std::string>& words) {
    TRACE_LOCATION("GLConsole::readArguments");
    words.clear();
    slSeparateArgs(arguments, words);
    if (wordsFit(words, pattern)) return true;
    print(usage);
    return false;
}

}  // namespace GLConsole
