// The wave file reader: a PCM "fmt " chunk first, then any chunks up to the
// "data" chunk, whose samples become a new master buffer. Every failure gives
// no buffer and no message: a sound that doesn't load is simply silent.
#include <cstdio>
#include <cstring>
#include <vector>

#include "audio/audio.h"
#include "platform/platform.h"

namespace {

constexpr std::size_t headerSize = 36;
constexpr uint32_t basicFormatSize = 16;
constexpr uint16_t pcmFormat = 1;

// Closes the file on every road out.
class WaveFile {
public:
    explicit WaveFile(const std::string& name) : file(Platform::openFile(name, "rb")) {}
    ~WaveFile() {
        if (file) std::fclose(file);
    }
    WaveFile(const WaveFile&) = delete;
    WaveFile& operator=(const WaveFile&) = delete;

    bool isOpen() const { return file != nullptr; }

    // A read fails when it comes short, or leaves the stream at its end or in error.
    bool read(void* destination, std::size_t count) {
        TRACE_LOCATION("SoundManager::WaveFile::read");
        return std::fread(destination, 1, count, file) == count && !std::feof(file) && !std::ferror(file);
    }

    bool skip(uint32_t count) {
        TRACE_LOCATION("SoundManager::WaveFile::skip");
        return std::fseek(file, static_cast<long>(count), SEEK_CUR) == 0;
    }

    // Bytes from here to the end of the file.
    uint64_t remaining() {
        TRACE_LOCATION("SoundManager::WaveFile::remaining");
        const long here = std::ftell(file);
        if (here < 0 || std::fseek(file, 0, SEEK_END) != 0) return 0;
        const long end = std::ftell(file);
        std::fseek(file, here, SEEK_SET);
        return end > here ? static_cast<uint64_t>(end - here) : 0;
    }

private:
    FILE* file;
};

uint16_t little16(const uint8_t* bytes) {
    TRACE_LOCATION("SoundManager::little16");
    return static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
}

uint32_t little32(const uint8_t* bytes) {
    TRACE_LOCATION("SoundManager::little32");
    return static_cast<uint32_t>(bytes[0]) | static_cast<uint32_t>(bytes[1]) << 8 |
           static_cast<uint32_t>(bytes[2]) << 16 | static_cast<uint32_t>(bytes[3]) << 24;
}

bool hasId(const uint8_t* bytes, const char* id) {
    TRACE_LOCATION("SoundManager::hasId");
    return std::memcmp(bytes, id, 4) == 0;
}

// The RIFF head and the format chunk, which must come first.
bool readFormat(WaveFile& file, SoundBackend::Format& format) {
    TRACE_LOCATION("SoundManager::readFormat");
    uint8_t header[headerSize];
    if (!file.read(header, headerSize)) return false;
    if (!hasId(header, "RIFF") || !hasId(header + 8, "WAVE") || !hasId(header + 12, "fmt ")) return false;
    const uint32_t formatSize = little32(header + 16);
    format.formatTag = little16(header + 20);
    format.channels = little16(header + 22);
    format.samplesPerSecond = little32(header + 24);
    format.bytesPerSecond = little32(header + 28);
    format.blockAlign = little16(header + 32);
    format.bitsPerSample = little16(header + 34);
    if (format.formatTag != pcmFormat || (format.channels != 1 && format.channels != 2)) return false;
    if (format.samplesPerSecond == 0 || format.bytesPerSecond == 0 || format.blockAlign == 0 ||
        format.bitsPerSample == 0)
        return false;
    return formatSize <= basicFormatSize || file.skip(formatSize - basicFormatSize);
}

// Walks the chunks up to "data", skipping each other chunk by exactly its
// size, and gives the size of the samples.
bool findData(WaveFile& file, uint32_t& size) {
    TRACE_LOCATION("SoundManager::findData");
    for (;;) {
        uint8_t chunk[8];
        if (!file.read(chunk, sizeof(chunk))) return false;
        size = little32(chunk + 4);
        if (hasId(chunk, "data")) return size != 0;
        if (!file.skip(size)) return false;
    }
}

}  // namespace

namespace SoundManager {

SoundBackend::BufferId createSoundBuffer(const std::string& name) {
    TRACE_LOCATION("SoundManager::createSoundBuffer");
    if (!SoundSystem::hasDevice()) return SoundBackend::noBuffer;
    WaveFile file(name);
    if (!file.isOpen()) return SoundBackend::noBuffer;
    SoundBackend::Format format;
    uint32_t size = 0;
    if (!readFormat(file, format) || !findData(file, size)) return SoundBackend::noBuffer;
    // A chunk that claims more than the file holds would come short anyway;
    // it is refused before its size is allocated.
    if (size > file.remaining()) return SoundBackend::noBuffer;
    std::vector<uint8_t> samples(size);
    if (!file.read(samples.data(), size)) return SoundBackend::noBuffer;
    const SoundBackend::BufferId buffer = SoundBackend::createBuffer(format, samples.data(), size);
    // The master copy is never heard itself: only its duplicates play.
    if (buffer != SoundBackend::noBuffer) SoundBackend::setVolume(buffer, SoundBackend::quietestVolume);
    return buffer;
}

}  // namespace SoundManager
