// SoundBackend on OpenAL. Distance plays no part: every source sits at unit
// distance in front of the listener, and only its angle carries the pan.
#include <AL/al.h>
#include <AL/alc.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "foundation/single_instance.h"
#include "platform/sound_backend.h"

namespace SoundBackend {

namespace {

// The samples of one file, shared by a buffer and its duplicates.
struct Samples {
    ALuint buffer = 0;
    uint32_t byteCount = 0;
    uint32_t rate = 0;
    uint16_t blockAlign = 0;
    uint32_t frameCount = 0;
    int users = 0;
};

struct Voice {
    uint32_t samples = 0;
    // Made when the buffer first has to sound: master copies never play, so
    // they hold no source of the device's limited number.
    ALuint source = 0;
    int32_t volume = loudestVolume;
    int32_t pan = 0;
    uint32_t frequency = 0;
    // OpenAL reports 0 for a stopped source whose position was set; the
    // position that its next play starts from is kept here for reading.
    uint32_t pendingPosition = 0;
};

struct State {
    ALCdevice* device = nullptr;
    ALCcontext* context = nullptr;
    bool primary = false;
    std::map<BufferId, Voice> voices;
    std::map<uint32_t, Samples> samples;
    BufferId nextBuffer = 1;
    uint32_t nextSamples = 1;
};

State& state() {
    return singleInstance<State>();
}

// Enough sources for every handle a level makes; OpenAL Soft gives 256 unless asked.
constexpr ALCint requestedMonoSources = 1024;
constexpr ALCint requestedStereoSources = 64;
constexpr float pi = 3.14159265f;

Voice* findVoice(BufferId buffer) {
    State& s = state();
    const auto found = s.voices.find(buffer);
    return found == s.voices.end() ? nullptr : &found->second;
}

Samples& samplesOf(const Voice& voice) {
    return state().samples.at(voice.samples);
}

float gainFor(int32_t hundredths) {
    const int32_t clamped = std::clamp(hundredths, quietestVolume, loudestVolume);
    return std::pow(10.0f, static_cast<float>(clamped) / 2000.0f);
}

// The pan takes |pan| hundredths of a decibel off the far side. Under a sine
// law the gains are cos and sin of an angle phi from 0 to a quarter turn,
// centred at an eighth; the far side's share r fixes phi, and the source is
// placed at twice phi's distance from the centre, from straight ahead to the side.
void placeForPan(ALuint source, int32_t pan) {
    const int32_t clamped = std::clamp(pan, leftmostPan, rightmostPan);
    const float farShare = std::pow(10.0f, -static_cast<float>(std::abs(clamped)) / 2000.0f);
    const float phi = std::atan2(1.0f, farShare);
    const float angle = (phi - pi / 4.0f) * 2.0f * (clamped < 0 ? -1.0f : 1.0f);
    alSource3f(source, AL_POSITION, std::sin(angle), 0.0f, -std::cos(angle));
}

float pitchFor(const Voice& voice) {
    const uint32_t rate = std::clamp(voice.frequency, lowestRate, highestRate);
    return static_cast<float>(rate) / static_cast<float>(samplesOf(voice).rate);
}

// The voice's source, made and set up on first use; 0 if the device has none left.
ALuint sourceOf(Voice& voice) {
    if (voice.source != 0) return voice.source;
    alGetError();
    ALuint source = 0;
    alGenSources(1, &source);
    if (alGetError() != AL_NO_ERROR) return 0;
    alSourcei(source, AL_BUFFER, static_cast<ALint>(samplesOf(voice).buffer));
    alSourcei(source, AL_SOURCE_RELATIVE, AL_TRUE);
    alSourcef(source, AL_GAIN, gainFor(voice.volume));
    alSourcef(source, AL_PITCH, pitchFor(voice));
    placeForPan(source, voice.pan);
    voice.source = source;
    return source;
}

ALint sourceState(const Voice& voice) {
    if (voice.source == 0) return AL_INITIAL;
    ALint value = AL_INITIAL;
    alGetSourcei(voice.source, AL_SOURCE_STATE, &value);
    return value;
}

bool isRunning(ALint value) {
    return value == AL_PLAYING || value == AL_PAUSED;
}

void dropUser(uint32_t samplesKey) {
    State& s = state();
    const auto found = s.samples.find(samplesKey);
    if (found == s.samples.end() || --found->second.users > 0) return;
    alDeleteBuffers(1, &found->second.buffer);
    s.samples.erase(found);
}

void deleteVoice(Voice& voice) {
    if (voice.source != 0) {
        alSourceStop(voice.source);
        alSourcei(voice.source, AL_BUFFER, 0);
        alDeleteSources(1, &voice.source);
    }
    dropUser(voice.samples);
}

ALenum alFormat(const Format& format) {
    if (format.channels == 1) return format.bitsPerSample == 8 ? AL_FORMAT_MONO8 : AL_FORMAT_MONO16;
    return format.bitsPerSample == 8 ? AL_FORMAT_STEREO8 : AL_FORMAT_STEREO16;
}

bool formatAccepted(const Format& format) {
    return (format.channels == 1 || format.channels == 2) &&
           (format.bitsPerSample == 8 || format.bitsPerSample == 16) &&
           format.blockAlign == format.channels * format.bitsPerSample / 8 &&
           format.samplesPerSecond >= lowestRate && format.samplesPerSecond <= highestRate;
}

}  // namespace

bool openDevice() {
    State& s = state();
    if (s.device) return true;
    s.device = alcOpenDevice(nullptr);
    return s.device != nullptr;
}

bool createContext() {
    State& s = state();
    if (!s.device) return false;
    if (s.context) return true;
    const ALCint attributes[] = {ALC_MONO_SOURCES, requestedMonoSources, ALC_STEREO_SOURCES,
                                 requestedStereoSources, 0};
    s.context = alcCreateContext(s.device, attributes);
    if (!s.context) return false;
    if (alcMakeContextCurrent(s.context) == ALC_TRUE) return true;
    alcDestroyContext(s.context);
    s.context = nullptr;
    return false;
}

bool createPrimary() {
    State& s = state();
    if (!s.context) return false;
    alGetError();
    alDistanceModel(AL_NONE);
    alListener3f(AL_POSITION, 0.0f, 0.0f, 0.0f);
    alListenerf(AL_GAIN, 1.0f);
    s.primary = alGetError() == AL_NO_ERROR;
    return s.primary;
}

void releasePrimary() {
    state().primary = false;
}

void closeDevice() {
    State& s = state();
    if (s.context) {
        for (auto& [id, voice] : s.voices) deleteVoice(voice);
        alcMakeContextCurrent(nullptr);
        alcDestroyContext(s.context);
    }
    if (s.device) alcCloseDevice(s.device);
    // Ids go on counting, so that no id of the old device names a new buffer.
    const BufferId nextBuffer = s.nextBuffer;
    const uint32_t nextSamples = s.nextSamples;
    s = State();
    s.nextBuffer = nextBuffer;
    s.nextSamples = nextSamples;
}

bool hasDevice() {
    return state().context != nullptr;
}

BufferId createBuffer(const Format& format, const void* samples, uint32_t byteCount) {
    State& s = state();
    if (!s.context || !samples || !formatAccepted(format)) return noBuffer;
    const uint32_t frameCount = byteCount / format.blockAlign;
    if (frameCount == 0) return noBuffer;
    const uint32_t wholeBytes = frameCount * format.blockAlign;
    alGetError();
    ALuint alBuffer = 0;
    alGenBuffers(1, &alBuffer);
    if (alGetError() != AL_NO_ERROR) return noBuffer;
    alBufferData(alBuffer, alFormat(format), samples, static_cast<ALsizei>(wholeBytes),
                 static_cast<ALsizei>(format.samplesPerSecond));
    if (alGetError() != AL_NO_ERROR) {
        alDeleteBuffers(1, &alBuffer);
        return noBuffer;
    }
    const uint32_t samplesKey = s.nextSamples++;
    s.samples[samplesKey] = {alBuffer, byteCount, format.samplesPerSecond, format.blockAlign, frameCount, 1};
    const BufferId id = s.nextBuffer++;
    Voice& voice = s.voices[id];
    voice.samples = samplesKey;
    voice.frequency = format.samplesPerSecond;
    return id;
}

BufferId duplicateBuffer(BufferId source) {
    State& s = state();
    const Voice* original = findVoice(source);
    if (!original) return noBuffer;
    Voice copy;
    copy.samples = original->samples;
    copy.volume = original->volume;
    copy.pan = original->pan;
    copy.frequency = original->frequency;
    ++samplesOf(copy).users;
    if (sourceOf(copy) == 0) {
        dropUser(copy.samples);
        return noBuffer;
    }
    const BufferId id = s.nextBuffer++;
    s.voices[id] = copy;
    return id;
}

void releaseBuffer(BufferId buffer) {
    State& s = state();
    const auto found = s.voices.find(buffer);
    if (found == s.voices.end()) return;
    deleteVoice(found->second);
    s.voices.erase(found);
}

uint32_t getBufferBytes(BufferId buffer) {
    const Voice* voice = findVoice(buffer);
    return voice ? samplesOf(*voice).byteCount : 0;
}

int32_t getVolume(BufferId buffer) {
    const Voice* voice = findVoice(buffer);
    return voice ? voice->volume : quietestVolume;
}

bool setVolume(BufferId buffer, int32_t hundredthsOfDecibel) {
    Voice* voice = findVoice(buffer);
    if (!voice || hundredthsOfDecibel < quietestVolume || hundredthsOfDecibel > loudestVolume) return false;
    voice->volume = hundredthsOfDecibel;
    if (voice->source != 0) alSourcef(voice->source, AL_GAIN, gainFor(voice->volume));
    return true;
}

bool setPan(BufferId buffer, int32_t hundredthsOfDecibel) {
    Voice* voice = findVoice(buffer);
    if (!voice || hundredthsOfDecibel < leftmostPan || hundredthsOfDecibel > rightmostPan) return false;
    voice->pan = hundredthsOfDecibel;
    if (voice->source != 0) placeForPan(voice->source, voice->pan);
    return true;
}

uint32_t getFrequency(BufferId buffer) {
    const Voice* voice = findVoice(buffer);
    return voice ? voice->frequency : 0;
}

bool setFrequency(BufferId buffer, uint32_t hertz) {
    Voice* voice = findVoice(buffer);
    if (!voice || hertz < lowestRate || hertz > highestRate) return false;
    voice->frequency = hertz;
    if (voice->source != 0) alSourcef(voice->source, AL_PITCH, pitchFor(*voice));
    return true;
}

bool play(BufferId buffer, bool looping) {
    Voice* voice = findVoice(buffer);
    if (!voice) return false;
    const ALuint source = sourceOf(*voice);
    if (source == 0) return false;
    alSourcei(source, AL_LOOPING, looping ? AL_TRUE : AL_FALSE);
    // OpenAL starts a playing source over; a playing buffer here just goes on.
    if (sourceState(*voice) != AL_PLAYING) alSourcePlay(source);
    voice->pendingPosition = 0;
    return true;
}

bool stop(BufferId buffer) {
    Voice* voice = findVoice(buffer);
    if (!voice) return false;
    // Pausing, unlike OpenAL's stop, keeps the position for the next play.
    if (sourceState(*voice) == AL_PLAYING) alSourcePause(voice->source);
    return true;
}

bool isPlaying(BufferId buffer) {
    const Voice* voice = findVoice(buffer);
    return voice && sourceState(*voice) == AL_PLAYING;
}

bool isLooping(BufferId buffer) {
    const Voice* voice = findVoice(buffer);
    if (!voice || sourceState(*voice) != AL_PLAYING) return false;
    ALint looping = AL_FALSE;
    alGetSourcei(voice->source, AL_LOOPING, &looping);
    return looping == AL_TRUE;
}

bool getPosition(BufferId buffer, uint32_t& bytes) {
    const Voice* voice = findVoice(buffer);
    if (!voice) return false;
    if (!isRunning(sourceState(*voice))) {
        bytes = voice->pendingPosition;
        return true;
    }
    ALint frame = 0;
    alGetSourcei(voice->source, AL_SAMPLE_OFFSET, &frame);
    bytes = static_cast<uint32_t>(std::max(frame, 0)) * samplesOf(*voice).blockAlign;
    return true;
}

bool setPosition(BufferId buffer, uint32_t bytes) {
    Voice* voice = findVoice(buffer);
    if (!voice) return false;
    const Samples& samples = samplesOf(*voice);
    const uint32_t frame = bytes / samples.blockAlign;
    if (frame >= samples.frameCount) return false;
    const ALuint source = sourceOf(*voice);
    if (source == 0) return false;
    alGetError();
    alSourcei(source, AL_SAMPLE_OFFSET, static_cast<ALint>(frame));
    if (alGetError() != AL_NO_ERROR) return false;
    if (!isRunning(sourceState(*voice))) voice->pendingPosition = frame * samples.blockAlign;
    return true;
}

}  // namespace SoundBackend
