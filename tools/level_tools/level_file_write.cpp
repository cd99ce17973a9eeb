// The bytes of a level file, for the level compiler and for tests.
#include <cstring>

#include "level_tools/level_tools.h"

namespace {

class Writer {
public:
    void u32(uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<char>((value >> shift) & 0xFF));
    }
    void i32(int32_t value) { u32(static_cast<uint32_t>(value)); }
    void u8(uint8_t value) { bytes.push_back(static_cast<char>(value)); }
    void f32(float value) {
        uint32_t bits;
        std::memcpy(&bits, &value, 4);
        u32(bits);
    }
    void point(const LevelPoint& p) {
        i32(p.x);
        i32(p.y);
    }
    void name(const std::string& text) {
        u32(static_cast<uint32_t>(text.size()));
        bytes += text;
    }
    std::string bytes;
};

void writeRecord(Writer& out, const PolygonRecord& polygon) {
    out.i32(polygon.id);
    out.name(polygon.textureName);
    out.i32(polygon.surfaceType);
    out.i32(polygon.collisionMode);
    out.u32(polygon.layer);
    out.u32(static_cast<uint32_t>(polygon.points.size()));
    for (const LevelPoint& p : polygon.points) out.point(p);
}

void writeRecord(Writer& out, const ObjectRecord& object) {
    out.i32(object.id);
    out.name(object.textureName);
    out.u32(object.layer);
    out.point(object.position);
    out.u8(object.mirrored);
}

void writeRecord(Writer& out, const ForceRecord& force) {
    out.i32(force.id);
    out.point(force.position);
    out.f32(force.directionX);
    out.f32(force.directionY);
    out.f32(force.strength);
}

void writeRecord(Writer& out, const MoverRecord& mover) {
    out.i32(mover.id);
    out.f32(mover.speed);
    out.point(mover.start);
    out.point(mover.end);
}

void writeRecord(Writer& out, const TriggerRecord& trigger) {
    out.i32(trigger.targetId);
    out.i32(trigger.type);
    out.f32(trigger.delay);
    for (const LevelPoint& corner : trigger.corners) out.point(corner);
}

void writeRecord(Writer& out, const SoundSourceRecord& sound) {
    out.i32(sound.id);
    out.point(sound.position);
    out.i32(sound.strength);
    out.u8(sound.looping);
    out.name(sound.soundName);
}

void writeRecord(Writer& out, const EmitterRecord& emitter) {
    out.i32(emitter.id);
    out.point(emitter.position);
    out.f32(emitter.directionX);
    out.f32(emitter.directionY);
    out.name(emitter.settingsName);
}

template <typename Record>
void writeSection(Writer& out, const std::vector<Record>& records) {
    out.u32(static_cast<uint32_t>(records.size()));
    for (const Record& record : records) writeRecord(out, record);
}

}  // namespace

namespace LevelFileFormat {

std::string write(const LevelFile& level) {
    TRACE_LOCATION("LevelFileFormat::write");
    Writer out;
    out.u32(magic);
    out.i32(level.version);
    forEachSection(level, [&out](const auto& records) { writeSection(out, records); });
    out.point(level.waterStart);
    out.point(level.cameraStart);
    return out.bytes;
}

}  // namespace LevelFileFormat
