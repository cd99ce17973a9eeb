#include <cstdlib>

#include "foundation/foundation.h"

namespace {

const char* orEmpty(const char* text) {
    return text ? text : "";
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Digits, a "-" only as first character and at most `dotsAllowed` dots.
bool isNumberText(const char* text, int dotsAllowed) {
    if (*text == '\0') return false;
    int dots = 0;
    for (const char* c = text; *c; ++c) {
        if (isDigit(*c)) continue;
        if (*c == '-' && c == text) continue;
        if (*c == '.' && ++dots <= dotsAllowed) continue;
        return false;
    }
    return true;
}

}  // namespace

bool slIsSeparator(char c) {
    TRACE_LOCATION("slIsSeparator");
    return c == ' ' || c == '\r' || c == '\n' || c == '\t' || c == 27 || c == 8;
}

void slStringUpper(char* text) {
    TRACE_LOCATION("slStringUpper");
    for (; text && *text; ++text)
        if (*text >= 'a' && *text <= 'z') *text = static_cast<char>(*text - 'a' + 'A');
}

void slStringUpper(std::string& text) {
    TRACE_LOCATION("slStringUpper");
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
}

void slStringLower(char* text) {
    TRACE_LOCATION("slStringLower");
    for (; text && *text; ++text)
        if (*text >= 'A' && *text <= 'Z') *text = static_cast<char>(*text - 'A' + 'a');
}

void slStringLower(std::string& text) {
    TRACE_LOCATION("slStringLower");
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
}

bool slStringIsNumeric(const char* text) {
    TRACE_LOCATION("slStringIsNumeric");
    return isNumberText(orEmpty(text), 1);
}

bool slStringIsNumeric(const std::string& text) {
    TRACE_LOCATION("slStringIsNumeric");
    return slStringIsNumeric(text.c_str());
}

bool slStringIsInteger(const char* text) {
    TRACE_LOCATION("slStringIsInteger");
    return isNumberText(orEmpty(text), 0);
}

bool slStringIsInteger(const std::string& text) {
    TRACE_LOCATION("slStringIsInteger");
    return slStringIsInteger(text.c_str());
}

bool slStringIsBoolean(const char* text) {
    TRACE_LOCATION("slStringIsBoolean");
    std::string upper = orEmpty(text);
    slStringUpper(upper);
    return upper == "TRUE" || upper == "FALSE";
}

bool slStringIsBoolean(const std::string& text) {
    TRACE_LOCATION("slStringIsBoolean");
    return slStringIsBoolean(text.c_str());
}

int slStringToInt(const char* text) {
    TRACE_LOCATION("slStringToInt");
    return slStringIsInteger(text) ? std::atoi(text) : 0;
}

int slStringToInt(const std::string& text) {
    TRACE_LOCATION("slStringToInt");
    return slStringToInt(text.c_str());
}

float slStringToFloat(const std::string& text) {
    TRACE_LOCATION("slStringToFloat");
    return slStringIsNumeric(text) ? static_cast<float>(std::atof(text.c_str())) : 0.0f;
}

bool slStringToBool(const char* text) {
    TRACE_LOCATION("slStringToBool");
    std::string upper = orEmpty(text);
    slStringUpper(upper);
    return upper == "TRUE";
}

bool slStringToBool(const std::string& text) {
    TRACE_LOCATION("slStringToBool");
    return slStringToBool(text.c_str());
}

void slSeparateArgs(const char* text, std::vector<std::string>& args) {
    TRACE_LOCATION("slSeparateArgs");
    const char* c = orEmpty(text);
    while (*c) {
        while (*c && slIsSeparator(*c)) ++c;
        const char* start = c;
        while (*c && !slIsSeparator(*c)) ++c;
        if (c != start) args.emplace_back(start, c);
    }
}

void slSeparateArgs(const std::string& text, std::vector<std::string>& args) {
    TRACE_LOCATION("slSeparateArgs");
    slSeparateArgs(text.c_str(), args);
}
