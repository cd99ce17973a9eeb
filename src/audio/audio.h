// The game's sound: the output device and master volume (SoundSystem), one
// buffer of samples for each sound file shared by name (SoundManager), the
// handle that everything else plays through (Sound), sounds placed in the
// level (SoundSource, SoundSourceManager), streamed music (MusicSystem), and
// the behaviours that turn the state of the water into sound (GameSfx_Water,
// GameSfx_Ice, GameSfx_Steam).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/foundation.h"
#include "platform/sound_backend.h"

namespace SoundSystem {

// Opens the output device. Without one the game goes on silent: every handle
// then does nothing.
void initialise();
void shutdown();
// The master volume, 0 to 1. A playing sound keeps its level until its next
// play, loop or setVolume.
void setVolume(float volume);
float getVolume();
bool hasDevice();

}  // namespace SoundSystem

namespace SoundManager {

constexpr const char* defaultSoundName = "snd\\default.wav";

// The master copy of one sound file, shared by every handle on its name.
struct SoundInternal {
    SoundBackend::BufferId buffer = SoundBackend::noBuffer;  // none if loading failed
    uint32_t refCount = 0;
};

void initialise();
// Releases every entry whatever its count; handles still alive stay silent.
void shutdown();
// The entry of the name, in any case of letters, with one reference more. A
// name is read from its file once: a file that failed stays listed as failed.
SoundInternal* loadSound(const std::string& name);
void freeSound(const std::string& name);
// Reads a PCM wave file into a new buffer; noBuffer if there is no device or
// the file isn't a wave the game reads.
SoundBackend::BufferId createSoundBuffer(const std::string& name);
// One line per entry in name order: the upper-cased name, with
// " (loading failed)" after a file that gave no buffer.
void getSoundList(std::vector<std::string>& list);

}  // namespace SoundManager

// A handle on a sound file: a playing copy of its own, with its own position,
// volume, pan and pitch, over the shared samples. Cheap to copy, and silent
// rather than failing when there is no device or the file didn't load.
class Sound {
public:
    Sound();
    explicit Sound(const char* name);
    explicit Sound(const std::string& name);
    // The copy plays the same samples from the start, at volume 1.
    Sound(const Sound& other);
    Sound& operator=(const Sound& other);
    ~Sound();

    // Plays once from the current position at the stored volume.
    void play();
    void loop();
    // Stops where it is; play goes on from there, rewind starts over.
    void stop();
    void rewind();
    // Applies the stored volume, as after a change of the master volume.
    void setVolume();
    // 0 to 1, stored even without a device.
    void setVolume(float volume);
    // -1 left to 1 right.
    void setPan(float pan);
    // -1 (100 Hz) through 0 (the file's own rate) to 1 (200000 Hz).
    void setFrequency(float frequency);
    bool isPlaying() const;
    bool isLooping() const;
    // Takes the other handle's play position, so that two loops of one file
    // sound as one. False if either handle is silent.
    bool synchroniseWith(const Sound& other);

    const std::string& getName() const { return name; }
    float getVolume() const { return volume; }
    float getFrequency() const { return frequency; }
    float getPan() const { return pan; }

    // A level from 0 to 1 as the device's volume in hundredths of a decibel:
    // the curve rises steeply from silence, so that 0.5 is only -12.94 dB.
    static int32_t volumeToHundredths(float level);
    static int32_t panToHundredths(float pan);
    // The rate in hertz for a pitch setting, from the buffer's own rate.
    static uint32_t frequencyToRate(float frequency, uint32_t baseFrequency);

private:
    // This handle's own copy of the source's samples, stopped, at volume 1.
    void duplicateFrom(SoundBackend::BufferId source);
    void applyVolume();
    bool audible() const;

    SoundBackend::BufferId buffer = SoundBackend::noBuffer;
    std::string name;
    uint32_t baseFrequency = 0;
    float volume = 1.0f;
    float frequency = 0.0f;
    float pan = 0.0f;
};

// A sound placed in the level. Looping sources run as long as the level and
// fade with the view's distance; one-shot sources are fired by triggers.
struct SoundSource {
    Vector2D position;
    float strength = 1000.0f;  // the distance at which it falls silent
    Sound sound;
    bool looping = false;
    bool stopped = false;  // silenced; the sound update passes it over
    int32_t id = -1;

    SoundSource() = default;
    // A source read from a level or typed on the console starts stopped.
    SoundSource(const Sound& sourceSound, float x, float y, bool isLooping, int32_t sourceId,
                float sourceStrength);
    // Stopped and rewound, as at the start of the level.
    void reset();
};

namespace SoundSourceManager {

constexpr float quietestLevel = 0.0001f;

void initialise();
void shutdown();
// Adds a copy; a looping source that isn't stopped starts at once.
void addSoundSource(const SoundSource& source);
// The sources of the id, the looping ones first.
void getSoundSources(int32_t id, std::vector<const SoundSource*>& list);
// The trigger actions: start or silence every source of the id.
void playSounds(int32_t id);
void stopSounds(int32_t id);
// Starts, at volume 0, every looping source whose id isn't in the list: the
// loops that no trigger starts run from the beginning of the level.
void playExcludedSounds(const std::vector<int32_t>& ids);
// Silences everything without marking it stopped.
void pauseAllSounds();
void resetSounds();
// Fades the running loops by the view's distance, silences them while the
// game doesn't run, and brings them back in step with loops of the same file.
void updateAllSounds();
// The source takes the play position of a running loop of its file.
void syncLoopingSound(SoundSource& source);
void debugDraw();

}  // namespace SoundSourceManager

namespace MusicSystem {

void initialise();
void shutdown();
// Plays one music file, once or looped, in place of what played before.
bool play(const std::string& fileName, bool loop);
// False only if the stream wouldn't close.
bool stop();
bool pause();
bool resume();
// 0 to 255.
void setVolume(uint8_t volume);
uint8_t getVolume();

}  // namespace MusicSystem

// The sound of the water, the ice and the steam, heard from the whole body of
// water once a step: how much there is, how fast it moves, how much it has
// just slowed down. Each reads the water and changes nothing in it.
namespace GameSfx {
// Amounts are counts of particles over this: a full start of water gives 1.
constexpr float referenceParticleCount = 128.0f;
// A loop below this level is stopped.
constexpr float quietestLoopLevel = 0.001f;
}  // namespace GameSfx

namespace GameSfx_Water {
// Reads "cfg\game_sfx.cfg"; makes the handles on the first call only.
void initialise();
void shutdown();
void update();
// Free particles above freezing and below boiling.
uint32_t getWaterParticleCount();
// The mean length of their velocity; 0 without water.
void getAverageWaterVelocity(float& result);
// A splash from the bank for a loss of average speed, if none of its level sounds.
void playDisturbanceSounds(float loss, float amount);
}  // namespace GameSfx_Water

namespace GameSfx_Ice {
void initialise();
void shutdown();
void update(float dt);
// Every particle held in an ice body.
uint32_t getIceParticleCount();
// The mean speed of the ice bodies, weighed by their particles; 0 without ice.
void getAverageIceVelocity(float& result);
void calculateFrictionLevel(float dt);
void playDisturbanceSounds(float loss, float amount);
}  // namespace GameSfx_Ice

namespace GameSfx_Steam {
void initialise();
void shutdown();
void update(float dt);
// Free particles at boiling or above.
uint32_t getSteamParticleCount();
}  // namespace GameSfx_Steam
