// SoundSource: a sound at a fixed place in the level.
#include "audio/audio.h"

SoundSource::SoundSource(const Sound& sourceSound, float x, float y, bool isLooping, int32_t sourceId,
                         float sourceStrength)
    : position(x, y),
      strength(sourceStrength),
      sound(sourceSound),
      looping(isLooping),
      stopped(true),
      id(sourceId) {}

void SoundSource::reset() {
    TRACE_LOCATION("SoundSource::reset");
    stopped = true;
    sound.stop();
    sound.rewind();
}
