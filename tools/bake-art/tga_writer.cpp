#include "tga_writer.h"

#include <cmath>

#include "bake-common/bake_common.h"

namespace {

constexpr uint8_t typeTrueColour = 2;
constexpr uint8_t typeRunLength = 10;
// Eight alpha bits, and bit 5: the first row in the file is the top row.
constexpr uint8_t descriptorTopFirst = 0x28;

uint8_t toByte(float v) {
    return static_cast<uint8_t>(std::lround(clamp01(v) * 255.0f));
}

struct Pixel {
    uint8_t bytes[4];
    bool operator==(const Pixel& o) const {
        return bytes[0] == o.bytes[0] && bytes[1] == o.bytes[1] && bytes[2] == o.bytes[2] &&
               bytes[3] == o.bytes[3];
    }
};

Pixel toPixel(const Rgba& c) {
    const uint8_t alpha = toByte(c.a);
    return {{toByte(c.b), toByte(c.g), toByte(c.r), alpha}};
}

void appendHeader(std::vector<uint8_t>& out, const Image& image, uint8_t type) {
    const uint8_t header[18] = {0,
                                0,
                                type,
                                0,
                                0,
                                0,
                                0,
                                0,
                                0,
                                0,
                                0,
                                0,
                                static_cast<uint8_t>(image.width & 0xFF),
                                static_cast<uint8_t>(image.width >> 8),
                                static_cast<uint8_t>(image.height & 0xFF),
                                static_cast<uint8_t>(image.height >> 8),
                                32,
                                descriptorTopFirst};
    out.insert(out.end(), header, header + 18);
}

void appendPixel(std::vector<uint8_t>& out, const Pixel& p) {
    out.insert(out.end(), p.bytes, p.bytes + 4);
}

// One row as packets of at most 128 pixels: runs of equal pixels, or literals.
void appendRunLengthRow(std::vector<uint8_t>& out, const std::vector<Pixel>& row) {
    size_t i = 0;
    while (i < row.size()) {
        size_t run = 1;
        while (i + run < row.size() && run < 128 && row[i + run] == row[i]) ++run;
        if (run > 1) {
            out.push_back(static_cast<uint8_t>(0x80 | (run - 1)));
            appendPixel(out, row[i]);
            i += run;
            continue;
        }
        size_t literal = 1;
        while (i + literal < row.size() && literal < 128 &&
               !(i + literal + 1 < row.size() && row[i + literal] == row[i + literal + 1]))
            ++literal;
        out.push_back(static_cast<uint8_t>(literal - 1));
        for (size_t k = 0; k < literal; ++k) appendPixel(out, row[i + k]);
        i += literal;
    }
}

}  // namespace

std::vector<uint8_t> encodeTga(const Image& image, bool runLength) {
    std::vector<uint8_t> out;
    appendHeader(out, image, runLength ? typeRunLength : typeTrueColour);
    std::vector<Pixel> row(static_cast<size_t>(image.width));
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) row[x] = toPixel(image.at(x, y));
        if (runLength) {
            appendRunLengthRow(out, row);
        } else {
            for (const Pixel& p : row) appendPixel(out, p);
        }
    }
    return out;
}

bool writeTga(const std::string& path, const Image& image, bool runLength) {
    return writeBakedFile(path, encodeTga(image, runLength));
}
