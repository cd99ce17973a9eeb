// What the water behaviours share: making their handles, driving a loop by its
// level, the hiss of particles changing phase, and the disturbance samples picked
// from a bank.
#include <cmath>

#include "audio/game_sfx_state.h"

namespace GameSfx {

void makeSound(std::unique_ptr<Sound>& sound, const ConfigFile& config, const char* key) {
    TRACE_LOCATION("GameSfx::makeSound");
    if (!sound) sound = std::make_unique<Sound>(config.getVarAsString(key));
}

void makeBank(SoundBank& bank, const ConfigFile& config, const std::string& prefix) {
    TRACE_LOCATION("GameSfx::makeBank");
    for (int level = 1; level <= disturbanceLevels; ++level) {
        for (int variant = 1; variant <= disturbanceVariants; ++variant) {
            const std::string key = prefix + std::to_string(level) + "_" + std::to_string(variant);
            makeSound(bank[static_cast<std::size_t>((level - 1) * disturbanceVariants + variant - 1)], config,
                      key.c_str());
        }
    }
}

DisturbanceSettings readDisturbanceSettings(const ConfigFile& config, const std::string& prefix,
                                            bool absolute) {
    TRACE_LOCATION("GameSfx::readDisturbanceSettings");
    const auto read = [&](const char* name) {
        const float value = config.getVarAsFloat(prefix + name);
        return absolute ? std::fabs(value) : value;
    };
    DisturbanceSettings settings;
    settings.level1Speed = read("level1_speed");
    settings.level2Speed = read("level2_speed");
    settings.level3Speed = read("level3_speed");
    settings.randomnessPitch = read("randomness_pitch");
    settings.randomnessVolume = read("randomness_volume");
    return settings;
}

void driveLoop(Sound* sound, float level, bool allowed, bool startFirst) {
    TRACE_LOCATION("GameSfx::driveLoop");
    if (!sound) return;
    if (!allowed || level < quietestLoopLevel) {
        if (sound->isPlaying()) sound->stop();
        return;
    }
    if (startFirst && !sound->isPlaying()) sound->loop();
    sound->setVolume(level);
    if (!startFirst && !sound->isPlaying()) sound->loop();
}

void hearPhaseChanges(PhaseChanges& changes, uint32_t count, const PhaseChangeSettings& settings, float dt) {
    TRACE_LOCATION("GameSfx::hearPhaseChanges");
    if (count > changes.lastCount) changes.pending += static_cast<float>(count - changes.lastCount);
    changes.lastCount = count;
    const float heard = (1.0f - std::pow(settings.effectSpeed, dt)) * changes.pending;
    changes.pending -= heard;
    changes.level += heard * settings.volume;
    changes.level *= std::pow(settings.fadeRate, dt);
}

int disturbanceLevel(float loss, const DisturbanceSettings& settings) {
    TRACE_LOCATION("GameSfx::disturbanceLevel");
    if (loss < settings.level1Speed) return 0;
    if (loss < settings.level2Speed) return 1;
    if (loss < settings.level3Speed) return 2;
    return 3;
}

// The three random draws are taken on every call, heard or not, so that the
// sequence of numbers doesn't depend on what the water did.
void playDisturbance(float loss, float amount, const DisturbanceSettings& settings, SoundBank& bank) {
    TRACE_LOCATION("GameSfx::playDisturbance");
    const int variant = static_cast<int>(randomBits() % disturbanceVariants);
    float volume = amount - static_cast<float>(randomUnit()) * settings.randomnessVolume;
    if (volume > 0.0f) volume = std::sqrt(volume);
    const float pitch = (static_cast<float>(randomUnit()) - 0.5f) * settings.randomnessPitch;
    const int level = disturbanceLevel(loss, settings);
    if (level == 0) return;
    const std::size_t first = static_cast<std::size_t>((level - 1) * disturbanceVariants);
    Sound* sample = bank[first + static_cast<std::size_t>(variant)].get();
    if (!sample) return;
    // One sample of a level at a time: a new disturbance during it is dropped.
    for (std::size_t i = first; i < first + disturbanceVariants; ++i)
        if (bank[i] && bank[i]->isPlaying()) return;
    sample->setVolume(volume);
    sample->setFrequency(pitch);
    sample->rewind();
    sample->play();
}

}  // namespace GameSfx
