// Reading a level file field by field. Every read is checked at once, so that a
// file cut at any byte fails with one message and nothing half-read survives.
#include <cstring>

#include "console/console.h"
#include "level/level.h"

namespace {

class Reader {
public:
    explicit Reader(FILE* source) : file(source) {}

    void bytes(void* destination, std::size_t count) {
        if (count == 0) return;
        const std::size_t got = std::fread(destination, 1, count, file);
        if (got != count || std::feof(file) || std::ferror(file)) throw "Unable to read file";
    }
    uint32_t u32() {
        uint8_t b[4];
        bytes(b, 4);
        return decodeU32(b);
    }
    int32_t i32() { return static_cast<int32_t>(u32()); }
    uint8_t u8() {
        uint8_t b;
        bytes(&b, 1);
        return b;
    }
    float f32() { return decodeF32(u32()); }
    LevelPoint point() {
        LevelPoint p;
        p.x = i32();
        p.y = i32();
        return p;
    }
    // A length, tested against its limit before the name is read.
    std::string name(uint32_t limit, const char* tooLong) {
        const uint32_t length = u32();
        if (length > limit) throw tooLong;
        std::string text(length, '\0');
        bytes(text.data(), length);
        return text;
    }
    uint32_t count(const char* tooMany) {
        const uint32_t value = u32();
        if (value > LevelFileFormat::countLimit) throw tooMany;
        return value;
    }

    static uint32_t decodeU32(const uint8_t* b) {
        return uint32_t{b[0]} | uint32_t{b[1]} << 8 | uint32_t{b[2]} << 16 | uint32_t{b[3]} << 24;
    }
    static int32_t decodeI32(const uint8_t* b) { return static_cast<int32_t>(decodeU32(b)); }
    static float decodeF32(uint32_t bits) {
        float value;
        std::memcpy(&value, &bits, 4);
        return value;
    }

private:
    FILE* file;
};

void readHeader(Reader& in, LevelFile& level) {
    if (in.u32() != LevelFileFormat::magic) throw "Not a BKF level file.";
    level.version = in.i32();
    if (level.version != LevelFileFormat::version) {
        GLConsole::print("\nInvalid level file version. Version is " + std::to_string(level.version) +
                         ". Version used by game is " + std::to_string(LevelFileFormat::version) + ".");
        throw "Invalid level file version.";
    }
}

PolygonRecord readPolygon(Reader& in) {
    PolygonRecord polygon;
    polygon.id = in.i32();
    polygon.textureName = in.name(LevelFileFormat::countLimit, "\nPolygon texture name too long.");
    polygon.surfaceType = in.i32();
    if (!SurfaceTypeManager::validSurfaceType(polygon.surfaceType)) throw "Invalid surface type encountered.";
    polygon.collisionMode = in.i32();
    polygon.layer = in.u32();
    if (polygon.layer > 4) throw "Invalid polygon layer.";
    const uint32_t pointCount = in.u32();
    if (pointCount > LevelFileFormat::countLimit) throw "Too many polygon points.";
    std::vector<uint8_t> block(std::size_t{pointCount} * 8);
    in.bytes(block.data(), block.size());
    polygon.points.resize(pointCount);
    for (uint32_t i = 0; i < pointCount; ++i) {
        polygon.points[i].x = Reader::decodeI32(&block[i * 8]);
        polygon.points[i].y = Reader::decodeI32(&block[i * 8 + 4]);
    }
    return polygon;
}

ObjectRecord readObject(Reader& in) {
    ObjectRecord object;
    object.id = in.i32();
    object.textureName = in.name(LevelFileFormat::objectNameLimit, "Object texture name too long.");
    object.layer = in.u32();
    if (object.layer > 4) throw "Invalid polygon layer.";
    object.position = in.point();
    object.mirrored = in.u8();
    return object;
}

ForceRecord readForce(Reader& in) {
    ForceRecord force;
    force.id = in.i32();
    force.position = in.point();
    force.directionX = in.f32();
    force.directionY = in.f32();
    force.strength = in.f32();
    return force;
}

// Movers and triggers are fixed-size records, read as one block a section.
std::vector<uint8_t> readBlock(Reader& in, uint32_t count, std::size_t recordSize) {
    std::vector<uint8_t> block(count * recordSize);
    in.bytes(block.data(), block.size());
    return block;
}

void readMovers(Reader& in, LevelFile& level) {
    const uint32_t count = in.count("Too many movers in level.");
    const std::vector<uint8_t> block = readBlock(in, count, 24);
    for (uint32_t i = 0; i < count; ++i) {
        const uint8_t* b = &block[i * 24];
        MoverRecord mover;
        mover.id = Reader::decodeI32(b);
        mover.speed = Reader::decodeF32(Reader::decodeU32(b + 4));
        mover.start = {Reader::decodeI32(b + 8), Reader::decodeI32(b + 12)};
        mover.end = {Reader::decodeI32(b + 16), Reader::decodeI32(b + 20)};
        level.movers.push_back(mover);
    }
}

void readTriggers(Reader& in, LevelFile& level) {
    const uint32_t count = in.count("Too many triggers in level.");
    const std::vector<uint8_t> block = readBlock(in, count, 44);
    for (uint32_t i = 0; i < count; ++i) {
        const uint8_t* b = &block[i * 44];
        TriggerRecord trigger;
        trigger.targetId = Reader::decodeI32(b);
        trigger.type = Reader::decodeI32(b + 4);
        trigger.delay = Reader::decodeF32(Reader::decodeU32(b + 8));
        for (int c = 0; c < 4; ++c)
            trigger.corners[c] = {Reader::decodeI32(b + 12 + c * 8), Reader::decodeI32(b + 16 + c * 8)};
        level.triggers.push_back(trigger);
    }
}

SoundSourceRecord readSound(Reader& in) {
    SoundSourceRecord sound;
    sound.id = in.i32();
    sound.position = in.point();
    sound.strength = in.i32();
    sound.looping = in.u8();
    if (sound.strength < 0) throw "Invalid sound source strenght.";
    sound.soundName = in.name(LevelFileFormat::countLimit, "Sound source sound name too long.");
    return sound;
}

EmitterRecord readEmitter(Reader& in) {
    EmitterRecord emitter;
    emitter.id = in.i32();
    emitter.position = in.point();
    emitter.directionX = in.f32();
    emitter.directionY = in.f32();
    emitter.settingsName = in.name(LevelFileFormat::countLimit, "Emitter settings file name too long.");
    return emitter;
}

}  // namespace

namespace LevelFileFormat {

void read(FILE* file, LevelFile& level) {
    TRACE_LOCATION("LevelFileFormat::read");
    Reader in(file);
    readHeader(in, level);
    // The count is signed in the file; a negative one is refused like a large one.
    const uint32_t polygonCount = in.count("Too many polygons in level.");
    for (uint32_t i = 0; i < polygonCount; ++i) level.polygons.push_back(readPolygon(in));
    const uint32_t objectCount = in.count("Too many objects in level");
    for (uint32_t i = 0; i < objectCount; ++i) level.objects.push_back(readObject(in));
    const uint32_t forceCount = in.count("Too many forces in level.");
    for (uint32_t i = 0; i < forceCount; ++i) level.forces.push_back(readForce(in));
    readMovers(in, level);
    readTriggers(in, level);
    const uint32_t soundCount = in.count("Too many sounds in level.");
    for (uint32_t i = 0; i < soundCount; ++i) level.sounds.push_back(readSound(in));
    const uint32_t emitterCount = in.count("Too many emitters in level.");
    for (uint32_t i = 0; i < emitterCount; ++i) level.emitters.push_back(readEmitter(in));
    level.waterStart = in.point();
    level.cameraStart = in.point();
}

}  // namespace LevelFileFormat
