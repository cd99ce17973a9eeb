// The video decoder behind GLAviPlayer, on the FFmpeg libraries: the first
// video stream of a file, its size, length and frame rate, and its frames one
// at a time as a frame reader decodes them.
#pragma once

#include <cstdint>
#include <string>

namespace VideoBackend {

struct Stream;
struct FrameReader;

struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

struct StreamInfo {
    Rect frame;  // the picture's size, from (0, 0)
};

// Each player holds the library while it lives; the library says nothing of
// its own on the terminal while any player does.
void startLibrary();
void stopLibrary();

// The first video stream of a file; null when the file can't be read or holds
// no video stream that a decoder here understands.
Stream* openStream(const std::string& gameName);
void releaseStream(Stream* stream);
StreamInfo streamInfo(const Stream* stream);
// Frames in the stream, as the file states them (counted if it doesn't).
int64_t streamLength(const Stream* stream);
// When frame `sample` begins, in whole milliseconds.
int64_t sampleToTime(const Stream* stream, int64_t sample);

// A reader needs its stream until it is closed.
FrameReader* openFrameReader(Stream* stream);
void closeFrameReader(FrameReader* reader);
// Frame `index` decoded: width * height pixels of blue, green and red bytes,
// rows packed without padding, the bottom row first, as a bitmap has them.
// Valid until the reader's next call; null when that frame can't be decoded.
const uint8_t* getFrame(FrameReader* reader, uint32_t index);

}  // namespace VideoBackend
