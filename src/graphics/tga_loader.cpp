// The program's own TGA reader: 32 bits a pixel, true colour, raw (type 2) or
// run-length (type 10), with the first row at the top or at the bottom.
#include <cstring>

#include "foundation/foundation.h"
#include "graphics/graphics.h"

namespace GLTga32Loader {

namespace {
constexpr uint32_t headerSize = 18;
constexpr uint8_t topFirstBit = 0x20;

struct Header {
    uint8_t idLength = 0;
    uint8_t colourMapType = 0;
    uint8_t imageType = 0;
    int width = 0;
    int height = 0;
    uint8_t bitsPerPixel = 0;
    uint8_t descriptor = 0;
};

Header readHeader(const uint8_t* data) {
    Header header;
    header.idLength = data[0];
    header.colourMapType = data[1];
    header.imageType = data[2];
    header.width = data[12] | (data[13] << 8);
    header.height = data[14] | (data[15] << 8);
    header.bitsPerPixel = data[16];
    header.descriptor = data[17];
    return header;
}

bool acceptable(const Header& header) {
    return header.colourMapType != 1 && (header.imageType == 2 || header.imageType == 10) &&
           header.width >= 4 && header.height >= 4 && header.bitsPerPixel == 32 &&
           (header.descriptor & 1) == 0;
}

// The buffer row that the file's n-th row fills, the buffer's first row being the top.
std::size_t targetRow(int fileRow, int height, bool topFirst) {
    return static_cast<std::size_t>(topFirst ? fileRow : height - 1 - fileRow);
}

bool decodeRaw(const uint8_t* source, uint32_t available, const Header& header, bool topFirst,
               std::vector<uint8_t>& pixels) {
    const std::size_t rowBytes = static_cast<std::size_t>(header.width) * 4;
    if (available < rowBytes * static_cast<std::size_t>(header.height)) return false;
    for (int row = 0; row < header.height; ++row)
        std::memcpy(pixels.data() + targetRow(row, header.height, topFirst) * rowBytes,
                    source + row * rowBytes, rowBytes);
    return true;
}

// Packets are limited to what is left of their row; a packet that claims more
// has its surplus data skipped, so nothing is written outside the row.
bool decodeRunLength(const uint8_t* source, uint32_t available, const Header& header, bool topFirst,
                     std::vector<uint8_t>& pixels) {
    const uint8_t* read = source;
    const uint8_t* const end = source + available;
    for (int row = 0; row < header.height; ++row) {
        uint8_t* out = pixels.data() + targetRow(row, header.height, topFirst) * header.width * 4;
        for (int column = 0; column < header.width;) {
            if (read >= end) return false;
            const uint8_t packet = *read++;
            const int count = (packet & 0x7F) + 1;
            const bool run = (packet & 0x80) != 0;
            const uint32_t dataBytes = run ? 4u : 4u * count;
            if (static_cast<uint32_t>(end - read) < dataBytes) return false;
            const int used = count < header.width - column ? count : header.width - column;
            for (int i = 0; i < used; ++i) std::memcpy(out + (column + i) * 4, run ? read : read + i * 4, 4);
            column += used;
            read += dataBytes;
        }
    }
    return true;
}
}  // namespace

bool decode(const uint8_t* data, uint32_t size, std::vector<uint8_t>& pixels, int& width, int& height) {
    TRACE_LOCATION("GLTga32Loader::decode");
    width = height = 0;
    if (!data || size < headerSize) return false;
    const Header header = readHeader(data);
    if (!acceptable(header)) return false;
    width = header.width;
    height = header.height;
    const uint32_t start = headerSize + header.idLength;
    if (size < start) return false;
    pixels.assign(static_cast<std::size_t>(width) * height * 4, 0);
    const bool topFirst = (header.descriptor & topFirstBit) != 0;
    if (header.imageType == 2) return decodeRaw(data + start, size - start, header, topFirst, pixels);
    return decodeRunLength(data + start, size - start, header, topFirst, pixels);
}

bool load(const std::string& path, unsigned int id, int& width, int& height) {
    TRACE_LOCATION("GLTga32Loader::load");
    width = height = 0;
    MemoryFile file;
    file.open(path);
    if (!file.good()) return false;
    const uint8_t* data = file.getDataAhead();
    const uint32_t size = file.size();
    // A raw top-first picture goes to the driver straight from the file's memory.
    if (size >= headerSize) {
        const Header header = readHeader(data);
        const uint32_t start = headerSize + header.idLength;
        const uint64_t pixelBytes = uint64_t{4} * header.width * header.height;
        if (acceptable(header) && header.imageType == 2 && (header.descriptor & topFirstBit) &&
            size >= start + pixelBytes) {
            width = header.width;
            height = header.height;
            GLTextureManager::uploadTexture32(id, data + start, width, height);
            return true;
        }
    }
    std::vector<uint8_t> pixels;
    if (!decode(data, size, pixels, width, height)) return false;
    GLTextureManager::uploadTexture32(id, pixels.data(), width, height);
    return true;
}

}  // namespace GLTga32Loader
