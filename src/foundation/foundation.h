// The runtime foundation: location trace and fatal report, configuration files,
// string helpers, vectors, random numbers, memory files, clocks, worker threads
// and the segment tests that all level geometry shares.
#pragma once

#include <cmath>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "foundation/single_instance.h"

// ---------------------------------------------------------------------------
// Location trace: every named operation records itself here so that the fatal
// report can say where the program was when it died.
namespace LocationTrace {
constexpr int tableSize = 65536;

struct State {
    // Slot 0 is the oldest location; slots at and above depth hold old names.
    const char* names[tableSize];
    uint16_t depth;
};
// Zero-initialised at load time, so reaching it costs no guard on the hot path.
inline State& state() {
    static State instance;
    return instance;
}

// Zeroes the table and installs the six fatal signal handlers.
void initialise();
// The counter is 16 bits and the table has a slot for each value, so no bound test is needed.
inline void push(const char* name) {
    State& trace = state();
    trace.names[trace.depth] = name;
    ++trace.depth;
}
inline void pop() {
    --state().depth;
}
// Appends the 16 newest locations, newest first.
void appendBacktrace(std::string& text);

// Builds the whole fatal report text for a signal (head, error type and listing).
std::string buildFatalReport(int signalNumber);

class Scope {
public:
    explicit Scope(const char* name) { push(name); }
    ~Scope() { pop(); }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
};
}  // namespace LocationTrace

#define TRACE_LOCATION_JOIN2(a, b) a##b
#define TRACE_LOCATION_JOIN(a, b) TRACE_LOCATION_JOIN2(a, b)
// Pushes the operation's name for the rest of the enclosing scope.
#define TRACE_LOCATION(name) ::LocationTrace::Scope TRACE_LOCATION_JOIN(locationScope_, __LINE__)(name)

// ---------------------------------------------------------------------------
// Vectors and numbers.
constexpr float pi = 3.14159265f;
constexpr float fullTurn = 2.0f * pi;
constexpr float degreesToRadians = pi / 180.0f;

struct Vector2D {
    float x = 0.0f;
    float y = 0.0f;

    Vector2D() = default;
    Vector2D(float xValue, float yValue) : x(xValue), y(yValue) {}

    Vector2D operator+(const Vector2D& o) const { return {x + o.x, y + o.y}; }
    Vector2D operator-(const Vector2D& o) const { return {x - o.x, y - o.y}; }
    Vector2D operator-() const { return {-x, -y}; }
    Vector2D operator*(float s) const { return {x * s, y * s}; }
    Vector2D operator/(float s) const { return {x / s, y / s}; }
    Vector2D& operator+=(const Vector2D& o) {
        x += o.x;
        y += o.y;
        return *this;
    }
    Vector2D& operator-=(const Vector2D& o) {
        x -= o.x;
        y -= o.y;
        return *this;
    }
    Vector2D& operator*=(float s) {
        x *= s;
        y *= s;
        return *this;
    }
    Vector2D& operator/=(float s) {
        x /= s;
        y /= s;
        return *this;
    }
    bool operator==(const Vector2D& o) const { return x == o.x && y == o.y; }
    bool operator!=(const Vector2D& o) const { return !(*this == o); }
};

inline Vector2D operator*(float s, const Vector2D& v) {
    return v * s;
}

// Neither coordinate infinite nor undefined.
inline bool isFinite(const Vector2D& v) {
    return std::isfinite(v.x) && std::isfinite(v.y);
}

// Single-precision operands with double-precision intermediates. Inline and
// traced, since the particle loops call them for every pair of neighbours.
inline float dot(const Vector2D& a, const Vector2D& b) {
    TRACE_LOCATION("dot");
    return static_cast<float>(static_cast<double>(a.x) * b.x + static_cast<double>(a.y) * b.y);
}
inline float lengthSquared(const Vector2D& v) {
    TRACE_LOCATION("lengthSquared");
    return static_cast<float>(static_cast<double>(v.x) * v.x + static_cast<double>(v.y) * v.y);
}
inline float length(const Vector2D& v) {
    TRACE_LOCATION("length");
    return static_cast<float>(std::sqrt(static_cast<double>(v.x) * v.x + static_cast<double>(v.y) * v.y));
}
inline float distance(const Vector2D& a, const Vector2D& b) {
    TRACE_LOCATION("distance");
    return length(a - b);
}
// The exact zero vector becomes (1, 0).
inline void normalise(Vector2D& v) {
    TRACE_LOCATION("normalise");
    if (v.x == 0.0f && v.y == 0.0f) {
        v = Vector2D(1.0f, 0.0f);
        return;
    }
    const double size = std::sqrt(static_cast<double>(v.x) * v.x + static_cast<double>(v.y) * v.y);
    v.x = static_cast<float>(v.x / size);
    v.y = static_cast<float>(v.y / size);
}
// Counter-clockwise in a y-up frame.
void rotate(Vector2D& v, float angleRadians);

uint32_t randomBits();
// 0 to 1 inclusive.
double randomUnit();
// A unit direction from two uniform draws, x first; it crowds towards the diagonals.
Vector2D randomDirection();
// The generator's one word of state; tests read and set it to replay sequences.
uint32_t getRandomSeed();
void setRandomSeed(uint32_t seed);

// Rounds half away from zero.
float roundToNearest(float value);
uint32_t nextPowerOfTwo(uint32_t value);

// ---------------------------------------------------------------------------
// String helpers. Only ASCII letters count as letters; a null text is empty.
void slStringUpper(char* text);
void slStringUpper(std::string& text);
void slStringLower(char* text);
void slStringLower(std::string& text);
bool slStringIsNumeric(const char* text);
bool slStringIsNumeric(const std::string& text);
bool slStringIsInteger(const char* text);
bool slStringIsInteger(const std::string& text);
bool slStringIsBoolean(const char* text);
bool slStringIsBoolean(const std::string& text);
int slStringToInt(const char* text);
int slStringToInt(const std::string& text);
float slStringToFloat(const std::string& text);
bool slStringToBool(const char* text);
bool slStringToBool(const std::string& text);
// Splits at blank, CR, LF, tab, escape and backspace; appends to the list.
void slSeparateArgs(const char* text, std::vector<std::string>& args);
void slSeparateArgs(const std::string& text, std::vector<std::string>& args);
// True for the characters that separate tokens and arguments.
bool slIsSeparator(char c);

// ---------------------------------------------------------------------------
// Text configuration: a map from upper-cased key to the value as written.
class ConfigFile {
public:
    ConfigFile() = default;
    explicit ConfigFile(const char* fileName);

    void loadConfigFile(const char* fileName);
    static void separateTokens(const char* text, std::vector<std::string>& tokens);

    std::string getVarAsString(const char* key) const;
    std::string getVarAsString(const std::string& key) const;
    float getVarAsFloat(const char* key) const;
    float getVarAsFloat(const std::string& key) const;
    int getVarAsInt(const char* key) const;
    int getVarAsInt(const std::string& key) const;
    bool getVarAsBool(const char* key) const;
    bool getVarAsBool(const std::string& key) const;
    bool variableExists(const char* key) const;
    bool variableExists(const std::string& key) const;

    const std::map<std::string, std::string>& variables() const { return values; }
    // Every key asked of every file since the program started, both upper-cased:
    // what the game reads, as the shipped configuration must hold it.
    static const std::map<std::string, std::set<std::string>>& keysAsked();

private:
    const std::string* find(const std::string& key) const;
    std::map<std::string, std::string> values;
    std::string name;  // upper-cased, as asked for
};

// ---------------------------------------------------------------------------
// A binary file read whole into memory and then read by position.
class MemoryFile {
public:
    MemoryFile() = default;
    MemoryFile(const MemoryFile& other);
    MemoryFile& operator=(const MemoryFile& other);
    ~MemoryFile();

    void open(const std::string& fileName);
    void close();
    bool is_open() const;
    uint32_t size() const;
    uint32_t tell() const;
    bool eof() const;
    bool error() const;
    bool good() const;
    const uint8_t* getDataAhead() const;
    // Origins: 0 from the current position, 1 back from the end, 2 from the start.
    void seek(int32_t offset, int origin);
    // All or nothing: a read past the end sets the error flag and copies nothing.
    void read(void* destination, uint32_t count);

private:
    uint8_t* data = nullptr;
    uint8_t* position = nullptr;
    uint8_t* end = nullptr;
    bool errorFlag = true;
};

// A pausable millisecond accumulator: the owner stops calling update while paused
// and calls unpause when time counts again.
struct LongTimer {
    uint32_t elapsed = 0;
    uint32_t lastTicks = 0;

    LongTimer();
    void reset();
    void update();
    void unpause();
};

// The time between the last two updates.
struct FrameClock {
    int32_t lastTicks = 0;
    int32_t deltaTicks = 0;
    float deltaSeconds = 0.0f;

    FrameClock();
    void reset();
    void update();
};

// One operating-system thread, created held: the routine starts on resume, and
// the destructor waits for it to return.
class WorkerThread {
public:
    using Routine = void (*)(void* argument);

    explicit WorkerThread(Routine routine);
    ~WorkerThread();
    WorkerThread(const WorkerThread&) = delete;
    WorkerThread& operator=(const WorkerThread&) = delete;

    void resume();
    void suspend();
    // -2 to 2; anything else is ignored.
    void setPriority(int priority);

    bool isSuspended() const { return suspended != 0; }
    int getPriority() const { return priority; }

private:
    struct Gate;
    void openGate();
    std::thread handle;
    Gate* gate = nullptr;
    int suspended = 1;
    Routine routine = nullptr;
    int priority = 0;
};

// ---------------------------------------------------------------------------
// Segment and triangle tests.
bool edgesCross(const Vector2D& a1, const Vector2D& a2, const Vector2D& b1, const Vector2D& b2);
void lineIntersection(const Vector2D& a1, const Vector2D& a2, const Vector2D& b1, const Vector2D& b2,
                      Vector2D& result);
// The crossing of the two infinite lines by edgesCross's formula, kept in
// double precision; false for parallel lines, which leave x and y as they were.
bool lineCrossing(const Vector2D& a1, const Vector2D& a2, const Vector2D& b1, const Vector2D& b2, double& x,
                  double& y);
bool pointInConvexPolygon(float x, float y, const Vector2D* vertices, int count);
// Makes the triangle's winding the one pointInConvexPolygon expects.
void fixTriangleWinding(Vector2D& p0, Vector2D& p1, Vector2D& p2);
