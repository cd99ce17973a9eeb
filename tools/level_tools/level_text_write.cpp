// Writing a level in its text form: every field spelled out, one record a
// line, one polygon point a line, so that two versions of a level diff well.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "level_tools/level_text_names.h"
#include "level_tools/level_tools.h"

namespace {

using namespace LevelTextNames;

std::string quoted(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F || c == '"' || c == '%') {
            char escape[4];
            std::snprintf(escape, sizeof escape, "%%%02X", byte);
            out += escape;
        } else {
            out += c;
        }
    }
    return out + "\"";
}

// Shortest text that reads back to the same float; bit patterns for the rest.
std::string real(float value) {
    char text[32];
    if (std::isfinite(value)) {
        for (int digits = 6; digits <= 9; ++digits) {
            std::snprintf(text, sizeof text, "%.*g", digits, static_cast<double>(value));
            if (std::strtof(text, nullptr) == value) break;
        }
    } else {
        uint32_t bits;
        std::memcpy(&bits, &value, 4);
        std::snprintf(text, sizeof text, "f32:%08X", bits);
    }
    return text;
}

std::string point(const LevelPoint& p) {
    return std::to_string(p.x) + " " + std::to_string(p.y);
}

std::string named(const Named* table, int count, int32_t value) {
    const char* name = nameOf(table, count, value);
    return name ? name : std::to_string(value);
}

std::string flag(uint8_t value) {
    if (value == 0) return "no";
    if (value == 1) return "yes";
    return std::to_string(value);
}

void writeRecord(std::string& out, const PolygonRecord& polygon) {
    out += "polygon id " + std::to_string(polygon.id) + " texture " + quoted(polygon.textureName) +
           " surface " + named(surfaces, surfaceCount, polygon.surfaceType) + " collision " +
           named(collisionModes, collisionModeCount, polygon.collisionMode) + " layer " +
           std::to_string(polygon.layer) + "\n";
    for (const LevelPoint& p : polygon.points) out += "  " + point(p) + "\n";
    out += "end\n";
}

void writeRecord(std::string& out, const ObjectRecord& object) {
    out += "object id " + std::to_string(object.id) + " texture " + quoted(object.textureName) + " layer " +
           std::to_string(object.layer) + " at " + point(object.position) + " mirrored " +
           flag(object.mirrored) + "\n";
}

void writeRecord(std::string& out, const ForceRecord& force) {
    out += "force id " + std::to_string(force.id) + " at " + point(force.position) + " direction " +
           real(force.directionX) + " " + real(force.directionY) + " strength " + real(force.strength) + "\n";
}

void writeRecord(std::string& out, const MoverRecord& mover) {
    out += "mover id " + std::to_string(mover.id) + " speed " + real(mover.speed) + " from " +
           point(mover.start) + " to " + point(mover.end) + "\n";
}

void writeRecord(std::string& out, const TriggerRecord& trigger) {
    out += "trigger type " + named(triggerTypes, triggerTypeCount, trigger.type) + " target " +
           std::to_string(trigger.targetId) + " delay " + real(trigger.delay) + " corners";
    for (const LevelPoint& corner : trigger.corners) out += "  " + point(corner);
    out += "\n";
}

void writeRecord(std::string& out, const SoundSourceRecord& sound) {
    out += "sound id " + std::to_string(sound.id) + " at " + point(sound.position) + " strength " +
           std::to_string(sound.strength) + " looping " + flag(sound.looping) + " name " +
           quoted(sound.soundName) + "\n";
}

void writeRecord(std::string& out, const EmitterRecord& emitter) {
    out += "emitter id " + std::to_string(emitter.id) + " at " + point(emitter.position) + " direction " +
           real(emitter.directionX) + " " + real(emitter.directionY) + " settings " +
           quoted(emitter.settingsName) + "\n";
}

template <typename Record>
void writeSection(std::string& out, const std::vector<Record>& records) {
    if (records.empty()) return;
    out += "\n";
    for (const Record& record : records) writeRecord(out, record);
}

}  // namespace

namespace LevelText {

std::string write(const LevelFile& level) {
    TRACE_LOCATION("LevelText::write");
    std::string out = "# Brookfall level\n";
    if (level.version != LevelFileFormat::version) out += "version " + std::to_string(level.version) + "\n";
    out += "water " + point(level.waterStart) + "\n";
    out += "camera " + point(level.cameraStart) + "\n";
    forEachSection(level, [&out](const auto& records) { writeSection(out, records); });
    return out;
}

}  // namespace LevelText
