// AVI files made by the tests themselves: uncompressed 24-bit frames, so that
// every pixel read back on screen is known exactly, and headers that can claim
// what the frames don't bear out.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "test_images.h"

struct TestVideo {
    int width = 4;
    int height = 4;
    uint32_t rate = 25;  // frames per `scale` seconds
    uint32_t scale = 1;
    int frames = 1;
    int64_t claimedFrames = -1;  // the length the headers state; -1: frames
    // Pixel (x, y) of a frame, y = 0 the top row.
    std::function<Bgra(int frame, int x, int y)> pixel = [](int, int, int) { return Bgra{}; };
};

inline std::string riffChunk(const char* id, const std::string& body) {
    std::string bytes(id, 4);
    putLong(bytes, static_cast<uint32_t>(body.size()));
    bytes += body;
    if (body.size() % 2) bytes += '\0';
    return bytes;
}

inline std::string riffList(const char* type, const char* id, const std::string& body) {
    return riffChunk(type, std::string(id, 4) + body);
}

inline std::string makeAvi(const TestVideo& video) {
    const uint32_t claimed =
        static_cast<uint32_t>(video.claimedFrames < 0 ? video.frames : video.claimedFrames);
    const int rowBytes = (video.width * 3 + 3) / 4 * 4;
    const uint32_t frameBytes = static_cast<uint32_t>(rowBytes * video.height);

    const uint32_t width = static_cast<uint32_t>(video.width), height = static_cast<uint32_t>(video.height);
    std::string main;  // avih: the frame length in microseconds, an index, the frame count
    putLongs(main, {video.rate ? static_cast<uint32_t>(1000000ull * video.scale / video.rate) : 0, 0, 0, 0x10,
                    claimed, 0, 1, frameBytes, width, height, 0, 0, 0, 0});
    std::string header = "vidsDIB ";  // strh: the rate, the length, the frame size
    putLongs(header, {0, 0, 0, video.scale, video.rate, 0, claimed, frameBytes, 0xFFFFFFFF, 0, 0,
                      width | height << 16});
    std::string format;  // strf: a bitmap header, rows bottom-up
    putLongs(format, {40, width, height, 1 | 24 << 16, 0, frameBytes, 0, 0, 0, 0});

    std::string movie, index;
    for (int frame = 0; frame < video.frames; ++frame) {
        std::string pixels;
        for (int y = video.height - 1; y >= 0; --y) {
            for (int x = 0; x < video.width; ++x) putPixel(pixels, video.pixel(frame, x, y), 24);
            pixels.append(static_cast<std::size_t>(rowBytes - video.width * 3), '\0');
        }
        index += "00db";
        putLongs(index, {0x10, static_cast<uint32_t>(movie.size() + 4), frameBytes});  // a key frame
        movie += riffChunk("00db", pixels);
    }
    const std::string streamList =
        riffList("LIST", "strl", riffChunk("strh", header) + riffChunk("strf", format));
    const std::string headerList = riffList("LIST", "hdrl", riffChunk("avih", main) + streamList);
    return riffList("RIFF", "AVI ", headerList + riffList("LIST", "movi", movie) + riffChunk("idx1", index));
}
