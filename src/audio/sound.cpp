// Sound: the handle everything plays through, a duplicate of its own over the
// samples of the file it names.
#include <algorithm>
#include <cmath>

#include "audio/audio.h"

namespace {

constexpr float volumeCurvePower = 0.2f;
constexpr float silenceHundredths = static_cast<float>(SoundBackend::quietestVolume);
constexpr float panHundredths = static_cast<float>(SoundBackend::rightmostPan);
constexpr double lowestRate = SoundBackend::lowestRate;
constexpr double highestRate = SoundBackend::highestRate;

}  // namespace

Sound::Sound() : Sound(SoundManager::defaultSoundName) {
    TRACE_LOCATION("Sound::Sound");
}

Sound::Sound(const char* soundName) : Sound(std::string(soundName ? soundName : "")) {
    TRACE_LOCATION("Sound::Sound");
}

Sound::Sound(const std::string& soundName) : name(soundName) {
    TRACE_LOCATION("Sound::Sound");
    const SoundManager::SoundInternal* entry = SoundManager::loadSound(name);
    duplicateFrom(entry->buffer);
}

// Pitch and pan are copied as numbers only: the new duplicate's real settings
// are whatever the device gives a duplicate.
Sound::Sound(const Sound& other) : name(other.name), frequency(other.frequency), pan(other.pan) {
    TRACE_LOCATION("Sound::Sound");
    SoundManager::loadSound(name);
    duplicateFrom(other.buffer);
}

Sound& Sound::operator=(const Sound& other) {
    TRACE_LOCATION("Sound::operator=");
    if (this == &other) return *this;
    stop();
    if (buffer != SoundBackend::noBuffer && SoundSystem::hasDevice()) SoundBackend::releaseBuffer(buffer);
    buffer = SoundBackend::noBuffer;
    SoundManager::freeSound(name);
    volume = other.volume;
    frequency = other.frequency;
    pan = other.pan;
    name = other.name;
    SoundManager::loadSound(name);
    duplicateFrom(other.buffer);
    return *this;
}

Sound::~Sound() {
    TRACE_LOCATION("Sound::~Sound");
    if (audible()) {
        SoundBackend::stop(buffer);
        SoundBackend::releaseBuffer(buffer);
    }
    SoundManager::freeSound(name);
}

void Sound::duplicateFrom(SoundBackend::BufferId source) {
    TRACE_LOCATION("Sound::duplicateFrom");
    buffer = SoundBackend::noBuffer;
    if (SoundSystem::hasDevice() && source != SoundBackend::noBuffer) {
        const int32_t sourceVolume = SoundBackend::getVolume(source);
        buffer = SoundBackend::duplicateBuffer(source);
        if (buffer != SoundBackend::noBuffer) {
            // Some devices ignore a volume equal to the one a duplicate already
            // has, so it first gets one just off the source's, then the real one.
            const int32_t offset =
                sourceVolume == SoundBackend::quietestVolume ? sourceVolume + 1 : sourceVolume - 1;
            SoundBackend::setVolume(buffer, offset);
            volume = 1.0f;
            applyVolume();
            SoundBackend::stop(buffer);
            baseFrequency = SoundBackend::getFrequency(buffer);
        }
    }
    volume = 1.0f;
}

bool Sound::audible() const {
    TRACE_LOCATION("Sound::audible");
    return buffer != SoundBackend::noBuffer && SoundSystem::hasDevice();
}

void Sound::applyVolume() {
    TRACE_LOCATION("Sound::applyVolume");
    const float level = std::clamp(volume * SoundSystem::getVolume(), 0.0f, 1.0f);
    SoundBackend::setVolume(buffer, volumeToHundredths(level));
}

void Sound::play() {
    TRACE_LOCATION("Sound::play");
    if (!audible()) return;
    applyVolume();
    SoundBackend::play(buffer, false);
}

void Sound::loop() {
    TRACE_LOCATION("Sound::loop");
    if (!audible()) return;
    applyVolume();
    SoundBackend::play(buffer, true);
}

void Sound::stop() {
    TRACE_LOCATION("Sound::stop");
    if (audible()) SoundBackend::stop(buffer);
}

void Sound::rewind() {
    TRACE_LOCATION("Sound::rewind");
    if (audible()) SoundBackend::setPosition(buffer, 0);
}

void Sound::setVolume() {
    TRACE_LOCATION("Sound::setVolume");
    if (audible()) applyVolume();
}

void Sound::setVolume(float newVolume) {
    TRACE_LOCATION("Sound::setVolume");
    volume = std::clamp(newVolume, 0.0f, 1.0f);
    if (audible()) applyVolume();
}

void Sound::setPan(float newPan) {
    TRACE_LOCATION("Sound::setPan");
    if (!audible()) return;
    const float clamped = std::clamp(newPan, -1.0f, 1.0f);
    SoundBackend::setPan(buffer, panToHundredths(clamped));
    pan = clamped;
}

void Sound::setFrequency(float newFrequency) {
    TRACE_LOCATION("Sound::setFrequency");
    if (!audible()) return;
    const float clamped = std::clamp(newFrequency, -1.0f, 1.0f);
    SoundBackend::setFrequency(buffer, frequencyToRate(clamped, baseFrequency));
    frequency = clamped;
}

bool Sound::isPlaying() const {
    TRACE_LOCATION("Sound::isPlaying");
    return audible() && SoundBackend::isPlaying(buffer);
}

bool Sound::isLooping() const {
    TRACE_LOCATION("Sound::isLooping");
    return audible() && SoundBackend::isLooping(buffer);
}

bool Sound::synchroniseWith(const Sound& other) {
    TRACE_LOCATION("Sound::synchroniseWith");
    if (buffer == SoundBackend::noBuffer || other.buffer == SoundBackend::noBuffer) return false;
    uint32_t position = 0;
    return SoundBackend::getPosition(other.buffer, position) && SoundBackend::setPosition(buffer, position);
}

int32_t Sound::volumeToHundredths(float level) {
    TRACE_LOCATION("Sound::volumeToHundredths");
    const float rise = std::pow(std::clamp(level, 0.0f, 1.0f), volumeCurvePower);
    return static_cast<int32_t>((1.0f - rise) * silenceHundredths);
}

int32_t Sound::panToHundredths(float newPan) {
    TRACE_LOCATION("Sound::panToHundredths");
    return static_cast<int32_t>(std::clamp(newPan, -1.0f, 1.0f) * panHundredths);
}

// Below 0 the rate falls linearly to 100 Hz, above it rises linearly to 200000 Hz.
uint32_t Sound::frequencyToRate(float newFrequency, uint32_t base) {
    TRACE_LOCATION("Sound::frequencyToRate");
    const double f = std::clamp(static_cast<double>(newFrequency), -1.0, 1.0);
    const double b = base;
    const double rate = f <= 0.0 ? b * (f + 1.0) - f * lowestRate : f * highestRate + b * (1.0 - f);
    return static_cast<uint32_t>(rate);
}
