// The sound device behind SoundSystem and Sound: one OpenAL device and context.
// The game sees buffers: a master buffer per sound file holds the samples, and
// each handle plays a duplicate of it with a position, volume, pan and rate of
// its own. Here a buffer's samples are one OpenAL buffer shared by all its
// duplicates, and each duplicate is an OpenAL source on it.
//
// Buffers are named by ids that are never reused. An id whose buffer has gone,
// because it was released or because its device closed, is ignored by every
// operation, so a handle that outlives the device can't reach freed memory.
#pragma once

#include <cstdint>

namespace SoundBackend {

using BufferId = uint32_t;
constexpr BufferId noBuffer = 0;

// Volume in hundredths of a decibel, 0 (as recorded) down to -10000 (silence).
constexpr int32_t quietestVolume = -10000;
constexpr int32_t loudestVolume = 0;
// Pan in hundredths of a decibel taken off the other side: -10000 is left only.
constexpr int32_t leftmostPan = -10000;
constexpr int32_t rightmostPan = 10000;
// Rates in hertz that a buffer can be played at.
constexpr uint32_t lowestRate = 100;
constexpr uint32_t highestRate = 200000;

// The format of a wave file's samples, as its "fmt " chunk gives it.
struct Format {
    uint16_t formatTag = 0;
    uint16_t channels = 0;
    uint32_t samplesPerSecond = 0;
    uint32_t bytesPerSecond = 0;
    uint16_t blockAlign = 0;
    uint16_t bitsPerSample = 0;
};

// The output device. False when no device opens; then nothing else works.
bool openDevice();
// Makes the device's context the one all sound goes through. False on failure.
bool createContext();
// The output mix that every buffer plays into, at full volume. False on failure;
// buffers still play without it.
bool createPrimary();
void releasePrimary();
// Releases every buffer still held, then the context and the device.
void closeDevice();
bool hasDevice();

// A new buffer holding the samples, or noBuffer if the device refuses the
// format: 8 or 16 bits, one or two channels, a block of channels times bytes a
// sample, a rate from lowestRate to highestRate, and at least one whole block.
// Bytes past the last whole block are dropped.
BufferId createBuffer(const Format& format, const void* samples, uint32_t byteCount);
// A new buffer over the same samples, with the source's volume, pan and rate,
// stopped at the start. noBuffer if the source is unknown or the device has
// no voice left for it.
BufferId duplicateBuffer(BufferId source);
void releaseBuffer(BufferId buffer);

// The byte count the buffer was made with, shared by its duplicates.
uint32_t getBufferBytes(BufferId buffer);
int32_t getVolume(BufferId buffer);
bool setVolume(BufferId buffer, int32_t hundredthsOfDecibel);
bool setPan(BufferId buffer, int32_t hundredthsOfDecibel);
uint32_t getFrequency(BufferId buffer);
bool setFrequency(BufferId buffer, uint32_t hertz);

// Plays from the current position. A buffer that is playing already goes on
// and only takes the new looping setting.
bool play(BufferId buffer, bool looping);
// Stops and keeps the position, so that play goes on from there.
bool stop(BufferId buffer);
bool isPlaying(BufferId buffer);
bool isLooping(BufferId buffer);
// The play position in bytes from the start of the samples.
bool getPosition(BufferId buffer, uint32_t& bytes);
bool setPosition(BufferId buffer, uint32_t bytes);

}  // namespace SoundBackend
