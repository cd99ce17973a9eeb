#include "wave_writer.h"

#include <algorithm>
#include <cmath>

#include "bake-common/bake_common.h"

namespace {

void put32(std::vector<uint8_t>& out, uint32_t v) {
    for (int i = 0; i < 4; ++i) out.push_back(static_cast<uint8_t>(v >> (8 * i)));
}

void put16(std::vector<uint8_t>& out, uint16_t v) {
    out.push_back(static_cast<uint8_t>(v & 0xFF));
    out.push_back(static_cast<uint8_t>(v >> 8));
}

void putTag(std::vector<uint8_t>& out, const char* tag) {
    out.insert(out.end(), tag, tag + 4);
}

}  // namespace

std::vector<uint8_t> encodeWave(const Samples& samples) {
    const uint32_t dataBytes = static_cast<uint32_t>(samples.size() * 2);
    std::vector<uint8_t> out;
    putTag(out, "RIFF");
    put32(out, 36 + dataBytes);
    putTag(out, "WAVE");
    putTag(out, "fmt ");
    put32(out, 16);
    put16(out, 1);
    put16(out, 1);
    put32(out, sampleRate);
    put32(out, sampleRate * 2);
    put16(out, 2);
    put16(out, 16);
    putTag(out, "data");
    put32(out, dataBytes);
    for (float s : samples) {
        const long value = std::lround(std::clamp(s, -1.0f, 1.0f) * 32767.0f);
        put16(out, static_cast<uint16_t>(static_cast<int16_t>(value)));
    }
    return out;
}

bool writeWave(const std::string& path, const Samples& samples) {
    return writeBakedFile(path, encodeWave(samples));
}
