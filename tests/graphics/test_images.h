// Image files made by the tests themselves: TGA in each layout and BMP for the
// SDL_image road.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

struct Bgra {
    uint8_t b = 0, g = 0, r = 0, a = 255;
};

using PixelAt = std::function<Bgra(int x, int y)>;  // y = 0 is the top row

inline void putWord(std::string& bytes, int value) {
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>((value >> 8) & 0xFF);
}

inline void putLong(std::string& bytes, uint32_t value) {
    putWord(bytes, static_cast<int>(value & 0xFFFF));
    putWord(bytes, static_cast<int>(value >> 16));
}

inline void putLongs(std::string& bytes, std::initializer_list<uint32_t> values) {
    for (const uint32_t value : values) putLong(bytes, value);
}

inline void putPixel(std::string& bytes, const Bgra& p, int bitsPerPixel = 32) {
    bytes += static_cast<char>(p.b);
    bytes += static_cast<char>(p.g);
    bytes += static_cast<char>(p.r);
    if (bitsPerPixel == 32) bytes += static_cast<char>(p.a);
}

inline std::string tgaHeader(int width, int height, int type, bool topFirst, int bitsPerPixel = 32,
                             const std::string& id = "") {
    std::string bytes;
    bytes += static_cast<char>(id.size());
    bytes += '\0';
    bytes += static_cast<char>(type);
    bytes.append(9, '\0');
    putWord(bytes, width);
    putWord(bytes, height);
    bytes += static_cast<char>(bitsPerPixel);
    bytes += static_cast<char>(topFirst ? 0x20 : 0x00);
    return bytes + id;
}

// The file's rows in file order: top first or bottom first.
inline int fileRowToImageRow(int fileRow, int height, bool topFirst) {
    return topFirst ? fileRow : height - 1 - fileRow;
}

inline std::string makeRawTga(int width, int height, bool topFirst, const PixelAt& pixel,
                              int bitsPerPixel = 32) {
    std::string bytes = tgaHeader(width, height, 2, topFirst, bitsPerPixel, "id!");
    for (int row = 0; row < height; ++row)
        for (int x = 0; x < width; ++x)
            putPixel(bytes, pixel(x, fileRowToImageRow(row, height, topFirst)), bitsPerPixel);
    return bytes;
}

// Each row as one run of its first pixel when the row is uniform, else literal packets.
inline std::string makeRunLengthTga(int width, int height, bool topFirst, const PixelAt& pixel) {
    std::string bytes = tgaHeader(width, height, 10, topFirst);
    for (int row = 0; row < height; ++row) {
        const int y = fileRowToImageRow(row, height, topFirst);
        bool uniform = true;
        for (int x = 1; x < width; ++x) {
            const Bgra a = pixel(0, y), b = pixel(x, y);
            uniform = uniform && a.b == b.b && a.g == b.g && a.r == b.r && a.a == b.a;
        }
        if (uniform) {
            bytes += static_cast<char>(0x80 | (width - 1));
            putPixel(bytes, pixel(0, y));
            continue;
        }
        bytes += static_cast<char>(width - 1);
        for (int x = 0; x < width; ++x) putPixel(bytes, pixel(x, y));
    }
    return bytes;
}

// A 24-bit bottom-up BMP.
inline std::string makeBmp24(int width, int height, const PixelAt& pixel) {
    const int rowBytes = (width * 3 + 3) / 4 * 4;
    std::string bytes = "BM";
    putLongs(bytes, {static_cast<uint32_t>(54 + rowBytes * height), 0, 54, 40, static_cast<uint32_t>(width),
                     static_cast<uint32_t>(height), 1 | 24 << 16, 0, 0, 0, 0, 0, 0});
    for (int row = height - 1; row >= 0; --row) {
        for (int x = 0; x < width; ++x) putPixel(bytes, pixel(x, row), 24);
        bytes.append(rowBytes - width * 3, '\0');
    }
    return bytes;
}

inline PixelAt solid(uint8_t r, uint8_t g, uint8_t b, uint8_t a = 255) {
    return [=](int, int) { return Bgra{b, g, r, a}; };
}
