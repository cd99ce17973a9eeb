// Reading the text form of a level: one record a line, named fields in any
// order, polygons followed by their points and "end". Errors name the line.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <set>
#include <sstream>

#include "level_tools/level_text_names.h"
#include "level_tools/level_tools.h"

namespace {

using namespace LevelTextNames;

struct ParseError {
    std::string message;
};

[[noreturn]] void fail(const std::string& message) {
    throw ParseError{message};
}

struct Token {
    std::string text;
    bool quoted = false;
};

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// A quoted name runs to the next quote; %XX stands for the byte XX.
std::size_t readQuoted(const std::string& line, std::size_t at, Token& token) {
    token.quoted = true;
    for (std::size_t i = at + 1; i < line.size(); ++i) {
        if (line[i] == '"') return i + 1;
        if (line[i] != '%') {
            token.text += line[i];
            continue;
        }
        const int high = i + 2 < line.size() ? hexDigit(line[i + 1]) : -1;
        const int low = i + 2 < line.size() ? hexDigit(line[i + 2]) : -1;
        if (high < 0 || low < 0) fail("'%' in a name must be followed by two hex digits");
        token.text += static_cast<char>(high * 16 + low);
        i += 2;
    }
    fail("name without closing quote");
}

std::vector<Token> tokenise(const std::string& line) {
    std::vector<Token> tokens;
    std::size_t i = 0;
    while (i < line.size()) {
        const char c = line[i];
        if (c == '#') break;
        if (c == ' ' || c == '\t' || c == '\r' || c == ',') {
            ++i;
        } else if (c == '"') {
            tokens.emplace_back();
            i = readQuoted(line, i, tokens.back());
        } else {
            std::size_t end = i;
            while (end < line.size() && !std::strchr(" \t\r,#\"", line[end])) ++end;
            tokens.push_back(Token{line.substr(i, end - i), false});
            i = end;
        }
    }
    return tokens;
}

// Decimal, or hexadecimal after "0x"; a leading zero does not make it octal.
bool parseInteger(const std::string& text, int64_t& value) {
    if (text.empty()) return false;
    const std::size_t digits = text[0] == '-' || text[0] == '+' ? 1 : 0;
    const bool hexadecimal = text.compare(digits, 2, "0x") == 0 || text.compare(digits, 2, "0X") == 0;
    errno = 0;
    char* end = nullptr;
    value = std::strtoll(text.c_str(), &end, hexadecimal ? 16 : 10);
    return errno == 0 && *end == '\0';
}

bool parseFloat(const std::string& text, float& value) {
    if (text.rfind("f32:", 0) == 0) {
        int64_t bits;
        if (!parseInteger("0x" + text.substr(4), bits) || bits < 0 || bits > 0xFFFFFFFFll) return false;
        const uint32_t pattern = static_cast<uint32_t>(bits);
        std::memcpy(&value, &pattern, 4);
        return true;
    }
    if (text.empty()) return false;
    char* end = nullptr;
    value = std::strtof(text.c_str(), &end);
    return *end == '\0';
}

// The values of one record line, taken field by field.
class Fields {
public:
    Fields(const std::vector<Token>& line, std::size_t first, const char* recordName,
           std::set<std::string>& fieldsSeen)
        : tokens(line), at(first), record(recordName), seen(fieldsSeen) {}

    bool done() const { return at >= tokens.size(); }
    std::string nextField() {
        field = tokens[at++].text;
        if (!seen.insert(field).second) fail("field '" + field + "' given twice in " + record);
        return field;
    }
    [[noreturn]] void unknown() const { fail("unknown field '" + field + "' in " + record); }

    int64_t integer(int64_t low, int64_t high) {
        int64_t value;
        const std::string& text = take("a whole number");
        if (!parseInteger(text, value))
            fail("field '" + field + "' wants a whole number, not '" + text + "'");
        if (value < low || value > high)
            fail("field '" + field + "' must lie within " + std::to_string(low) + " and " +
                 std::to_string(high));
        return value;
    }
    int32_t int32() { return static_cast<int32_t>(integer(INT32_MIN, INT32_MAX)); }
    float real() {
        float value;
        const std::string& text = take("a number");
        if (!parseFloat(text, value)) fail("field '" + field + "' wants a number, not '" + text + "'");
        return value;
    }
    LevelPoint point() {
        LevelPoint p;
        p.x = int32();
        p.y = int32();
        return p;
    }
    std::string name(std::size_t limit) {
        if (done() || !tokens[at].quoted) fail("field '" + field + "' wants a quoted name");
        std::string text = tokens[at++].text;
        if (text.size() > limit) fail("name of field '" + field + "' is too long");
        return text;
    }
    // A word of the table or its number.
    int32_t named(const Named* table, int count, int64_t low, int64_t high) {
        if (done()) fail("field '" + field + "' needs a value");
        int32_t value;
        if (!tokens[at].quoted && valueOf(table, count, tokens[at].text, value)) {
            ++at;
            return value;
        }
        int64_t number;
        if (!parseInteger(tokens[at].text, number) || number < low || number > high)
            fail("field '" + field + "' has no value '" + tokens[at].text + "'");
        ++at;
        return static_cast<int32_t>(number);
    }
    uint8_t flag() {
        static const Named words[] = {{0, "no"}, {1, "yes"}};
        return static_cast<uint8_t>(named(words, 2, 0, 255));
    }

private:
    const std::string& take(const char* what) {
        if (done() || tokens[at].quoted) fail("field '" + field + "' wants " + what);
        return tokens[at++].text;
    }

    const std::vector<Token>& tokens;
    std::size_t at;
    const char* record;
    std::string field;
    std::set<std::string>& seen;
};

constexpr uint32_t nameLimit = LevelFileFormat::countLimit;

void polygonField(PolygonRecord& polygon, Fields& f, const std::string& field) {
    if (field == "id")
        polygon.id = f.int32();
    else if (field == "texture")
        polygon.textureName = f.name(nameLimit);
    else if (field == "surface")
        polygon.surfaceType = f.named(surfaces, surfaceCount, 1, 5);
    else if (field == "collision")
        polygon.collisionMode = f.named(collisionModes, collisionModeCount, INT32_MIN, INT32_MAX);
    else if (field == "layer")
        polygon.layer = static_cast<uint32_t>(f.integer(0, 4));
    else
        f.unknown();
}

void objectField(ObjectRecord& object, Fields& f, const std::string& field) {
    if (field == "id")
        object.id = f.int32();
    else if (field == "texture")
        object.textureName = f.name(LevelFileFormat::objectNameLimit);
    else if (field == "layer")
        object.layer = static_cast<uint32_t>(f.integer(0, 4));
    else if (field == "at")
        object.position = f.point();
    else if (field == "mirrored")
        object.mirrored = f.flag();
    else
        f.unknown();
}

void forceField(ForceRecord& force, Fields& f, const std::string& field) {
    if (field == "id") {
        force.id = f.int32();
    } else if (field == "at") {
        force.position = f.point();
    } else if (field == "direction") {
        force.directionX = f.real();
        force.directionY = f.real();
    } else if (field == "strength") {
        force.strength = f.real();
    } else {
        f.unknown();
    }
}

void moverField(MoverRecord& mover, Fields& f, const std::string& field) {
    if (field == "id")
        mover.id = f.int32();
    else if (field == "speed")
        mover.speed = f.real();
    else if (field == "from")
        mover.start = f.point();
    else if (field == "to")
        mover.end = f.point();
    else
        f.unknown();
}

void triggerField(TriggerRecord& trigger, Fields& f, const std::string& field) {
    if (field == "type") {
        trigger.type = f.named(triggerTypes, triggerTypeCount, INT32_MIN, INT32_MAX);
    } else if (field == "target") {
        trigger.targetId = f.int32();
    } else if (field == "delay") {
        trigger.delay = f.real();
    } else if (field == "corners") {
        for (LevelPoint& corner : trigger.corners) corner = f.point();
    } else if (field == "rect") {
        const LevelPoint low = f.point(), high = f.point();
        trigger.corners[0] = low;
        trigger.corners[1] = {high.x, low.y};
        trigger.corners[2] = high;
        trigger.corners[3] = {low.x, high.y};
    } else {
        f.unknown();
    }
}

void soundField(SoundSourceRecord& sound, Fields& f, const std::string& field) {
    if (field == "id")
        sound.id = f.int32();
    else if (field == "at")
        sound.position = f.point();
    else if (field == "strength")
        sound.strength = static_cast<int32_t>(f.integer(0, INT32_MAX));
    else if (field == "looping")
        sound.looping = f.flag();
    else if (field == "name")
        sound.soundName = f.name(nameLimit);
    else
        f.unknown();
}

void emitterField(EmitterRecord& emitter, Fields& f, const std::string& field) {
    if (field == "id") {
        emitter.id = f.int32();
    } else if (field == "at") {
        emitter.position = f.point();
    } else if (field == "direction") {
        emitter.directionX = f.real();
        emitter.directionY = f.real();
    } else if (field == "settings") {
        emitter.settingsName = f.name(nameLimit);
    } else {
        f.unknown();
    }
}

template <typename Record, typename Apply>
void readFields(Record& record, Fields& fields, Apply apply) {
    while (!fields.done()) {
        const std::string field = fields.nextField();
        apply(record, fields, field);
    }
}

template <typename Record, typename Apply>
void addRecord(std::vector<Record>& records, const std::vector<Token>& tokens, const char* kind,
               Apply apply) {
    if (records.size() >= LevelFileFormat::countLimit) fail(std::string("too many ") + kind + " records");
    Record record;
    std::set<std::string> seen;
    Fields fields(tokens, 1, kind, seen);
    readFields(record, fields, apply);
    records.push_back(record);
}

class TextParser {
public:
    explicit TextParser(LevelFile& target) : level(target) {}

    void line(const std::vector<Token>& tokens) {
        if (tokens.empty()) return;
        if (polygon) return polygonLine(tokens);
        const std::string& keyword = tokens[0].text;
        if (keyword == "polygon") return beginPolygon(tokens);
        if (keyword == "object") return addRecord(level.objects, tokens, "object", objectField);
        if (keyword == "force") return addRecord(level.forces, tokens, "force", forceField);
        if (keyword == "mover") return addRecord(level.movers, tokens, "mover", moverField);
        if (keyword == "trigger") return addTrigger(tokens);
        if (keyword == "sound") return addRecord(level.sounds, tokens, "sound", soundField);
        if (keyword == "emitter") return addRecord(level.emitters, tokens, "emitter", emitterField);
        if (keyword == "water") return startPoint(tokens, level.waterStart, haveWater);
        if (keyword == "camera") return startPoint(tokens, level.cameraStart, haveCamera);
        if (keyword == "version") return version(tokens);
        if (keyword == "end") fail("'end' without a polygon");
        fail("unknown record '" + keyword + "'");
    }

    void finish() {
        if (polygon) fail("polygon begun on line " + std::to_string(polygonLineNumber) + " has no 'end'");
    }

    int lineNumber = 0;

private:
    void beginPolygon(const std::vector<Token>& tokens) {
        if (level.polygons.size() >= LevelFileFormat::countLimit) fail("too many polygon records");
        level.polygons.emplace_back();
        level.polygons.back().surfaceType = 3;
        polygon = &level.polygons.back();
        polygonSeen.clear();
        polygonLineNumber = lineNumber;
        Fields fields(tokens, 1, "polygon", polygonSeen);
        readFields(*polygon, fields, polygonField);
    }

    // Inside a polygon: points, more fields, or its end.
    void polygonLine(const std::vector<Token>& tokens) {
        if (tokens[0].text == "end" && !tokens[0].quoted) {
            if (tokens.size() > 1) fail("'end' stands alone on its line");
            polygon = nullptr;
            return;
        }
        int64_t probe;
        if (tokens[0].quoted || !parseInteger(tokens[0].text, probe)) {
            Fields fields(tokens, 0, "polygon", polygonSeen);
            readFields(*polygon, fields, polygonField);
            return;
        }
        if (tokens.size() % 2 != 0) fail("points come in pairs: x y");
        for (std::size_t i = 0; i < tokens.size(); i += 2) {
            if (polygon->points.size() >= LevelFileFormat::countLimit) fail("too many polygon points");
            LevelPoint p;
            p.x = toInt32(tokens[i]);
            p.y = toInt32(tokens[i + 1]);
            polygon->points.push_back(p);
        }
    }

    static int32_t toInt32(const Token& token) {
        int64_t value;
        if (token.quoted || !parseInteger(token.text, value) || value < INT32_MIN || value > INT32_MAX)
            fail("'" + token.text + "' is no point coordinate");
        return static_cast<int32_t>(value);
    }

    void addTrigger(const std::vector<Token>& tokens) {
        bool typed = false;
        for (std::size_t i = 1; i < tokens.size(); ++i)
            typed = typed || (tokens[i].text == "type" && !tokens[i].quoted);
        if (!typed) fail("a trigger needs a type");
        addRecord(level.triggers, tokens, "trigger", triggerField);
    }

    void startPoint(const std::vector<Token>& tokens, LevelPoint& point, bool& given) {
        if (given) fail("'" + tokens[0].text + "' given twice");
        if (tokens.size() != 3) fail("'" + tokens[0].text + "' wants x and y");
        point = {toInt32(tokens[1]), toInt32(tokens[2])};
        given = true;
    }

    void version(const std::vector<Token>& tokens) {
        if (tokens.size() != 2) fail("'version' wants one number");
        level.version = toInt32(tokens[1]);
    }

    LevelFile& level;
    PolygonRecord* polygon = nullptr;
    std::set<std::string> polygonSeen;
    int polygonLineNumber = 0;
    bool haveWater = false, haveCamera = false;
};

}  // namespace

namespace LevelText {

bool parse(const std::string& text, const std::string& sourceName, LevelFile& level, std::string& error) {
    TRACE_LOCATION("LevelText::parse");
    level = LevelFile();
    TextParser parser(level);
    std::istringstream lines(text);
    std::string line;
    try {
        while (std::getline(lines, line)) {
            ++parser.lineNumber;
            parser.line(tokenise(line));
        }
        parser.finish();
    } catch (const ParseError& e) {
        error = sourceName + ":" + std::to_string(parser.lineNumber) + ": " + e.message;
        return false;
    }
    return true;
}

}  // namespace LevelText
