// The music streams behind MusicSystem, on SDL2_mixer: an output opened once,
// and at most one stream playing at a time. A stream that stops keeps its
// position, so that playing it again goes on from there.
#pragma once

#include <cstdint>
#include <string>

namespace MusicBackend {

struct Stream;

// Opens the output at the rate in hertz. False if there is no audio device.
bool open(int rate);
void close();

// Opens a music file (Ogg Vorbis, wave and whatever else the mixer reads);
// null if it can't be read.
Stream* openStream(const std::string& gameName);
// Stops the stream if it plays and frees it. False if it was no open stream.
bool closeStream(Stream* stream);
void setLooping(Stream* stream, bool looping);
// Plays from the stream's position; another stream that was playing stops.
void playStream(Stream* stream);
void stopStream(Stream* stream);
bool isPlaying(const Stream* stream);
// The stream's position in milliseconds.
uint32_t getPosition(const Stream* stream);
void setPosition(Stream* stream, uint32_t milliseconds);

// The volume of all music, 0 (silent) to 255 (as recorded).
void setVolume(uint8_t volume);

}  // namespace MusicBackend
