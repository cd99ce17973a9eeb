// One effect emitter: the ranges each new particle draws from, its own clock,
// and its settings file. The emitter's operations have always stood in the
// location trace under ForceManager, and fatal reports keep that name.
#include <algorithm>

#include "dynamics/dynamics.h"

namespace {

// a x t + b x (1 - t) with a fresh t, so that a particle's properties vary
// independently of each other.
float blend(float a, float b) {
    const float t = static_cast<float>(randomUnit());
    return a * t + b * (1.0f - t);
}

FxColour blend(const FxColour& a, const FxColour& b) {
    const float t = static_cast<float>(randomUnit());
    return {a.r * t + b.r * (1.0f - t), a.g * t + b.g * (1.0f - t), a.b * t + b.b * (1.0f - t),
            a.a * t + b.a * (1.0f - t)};
}

// A pair is taken only when both of its keys are there.
bool readPair(const ConfigFile& config, const char* key1, const char* key2, float& value1, float& value2) {
    if (!config.variableExists(key1) || !config.variableExists(key2)) return false;
    value1 = config.getVarAsFloat(key1);
    value2 = config.getVarAsFloat(key2);
    return true;
}

// All eight keys or none.
void readColours(const ConfigFile& config, FxParticleEmitter& emitter) {
    const char* keys[8] = {"color_1_r", "color_1_g", "color_1_b", "color_1_a",
                           "color_2_r", "color_2_g", "color_2_b", "color_2_a"};
    for (const char* key : keys)
        if (!config.variableExists(key)) return;
    float v[8];
    for (int i = 0; i < 8; ++i) v[i] = config.getVarAsFloat(keys[i]);
    emitter.setColors({v[0], v[1], v[2], v[3]}, {v[4], v[5], v[6], v[7]});
}

}  // namespace

FxParticleEmitter::FxParticleEmitter() {
    TRACE_LOCATION("ForceManager::FxParticleEmitter");
    textures.reserve(textureRoom);
}

FxParticleEmitter::FxParticleEmitter(const FxParticleEmitter& other) : FxParticleEmitterFields(other) {
    TRACE_LOCATION("ForceManager::FxParticleEmitter");
}

FxParticleEmitter& FxParticleEmitter::operator=(const FxParticleEmitter& other) {
    TRACE_LOCATION("ForceManager::operator =");
    FxParticleEmitterFields::operator=(other);
    return *this;
}

void FxParticleEmitter::setDirection(float x, float y) {
    TRACE_LOCATION("ForceManager::setDirection");
    if (x == 0.0f && y == 0.0f) {
        direction = randomDirection();  // x drawn first, normalised
        return;
    }
    direction = Vector2D(x, y);
    normalise(direction);
}

void FxParticleEmitter::setFrequency(float seconds) {
    TRACE_LOCATION("ForceManager::setFrequency");
    frequency = std::max(seconds, shortestFrequency);
}

void FxParticleEmitter::setColors(const FxColour& first, const FxColour& second) {
    TRACE_LOCATION("ForceManager::setColors");
    color1 = first;
    color2 = second;
}

void FxParticleEmitter::setLiveTime(float time1, float time2) {
    TRACE_LOCATION("ForceManager::setLiveTime");
    liveTime1 = std::max(time1, shortestLiveTime);
    liveTime2 = std::max(time2, shortestLiveTime);
}

void FxParticleEmitter::setBurstSize(int32_t size) {
    TRACE_LOCATION("ForceManager::setBurstSize");
    burstSize = static_cast<uint32_t>(size < 0 || size > largestBurst ? largestBurst : size);
}

// Particles are spaced by time whatever the frame rate: a slow step gives several at once.
void FxParticleEmitter::run(float dt) {
    TRACE_LOCATION("ForceManager::run");
    if (!active) return;
    timer += dt;
    while (timer >= frequency) {
        timer -= frequency;
        spawnParticle();
    }
}

void FxParticleEmitter::createBurst() {
    TRACE_LOCATION("ForceManager::createBurst");
    for (uint32_t i = 0; i < burstSize; ++i) spawnParticle();
}

// The draws come in a fixed order: direction, colour, speed, gravity, size,
// life, texture.
void FxParticleEmitter::spawnParticle() {
    TRACE_LOCATION("ForceManager::spawnParticle");
    if (textures.empty()) return;
    FxParticle particle;
    particle.position = position;
    particle.useAlphaBlending = useAlphaBlending;
    Vector2D heading = direction;
    rotate(heading, static_cast<float>(randomUnit()) * spread - spread * 0.5f);
    particle.color = blend(color1, color2);
    particle.velocity = heading * blend(velocity1, velocity2);
    particle.gravity = blend(gravity1, gravity2);
    particle.size = blend(size1, size2);
    particle.lifeTotal = blend(liveTime1, liveTime2);
    particle.lifeLeft = particle.lifeTotal;
    particle.texture = &textures[randomBits() % textures.size()];
    FxParticleManager::addParticle(particle);
}

// Every value passes the same clamps as when it is set in code, so a number
// written as text (which reads as 0) or out of range can't stop an emitter or
// flood the level. The textures are always replaced: a file without them
// leaves an emitter that gives off nothing.
void FxParticleEmitter::loadEmitterSettings(const std::string& fileName) {
    TRACE_LOCATION("ForceManager::loadEmitterSettings");
    const ConfigFile config(fileName.c_str());
    if (config.variableExists("active")) active = config.getVarAsBool("active");
    if (config.variableExists("frequency")) setFrequency(config.getVarAsFloat("frequency"));
    if (config.variableExists("burstSize")) setBurstSize(config.getVarAsInt("burstSize"));
    if (config.variableExists("spread")) spread = config.getVarAsFloat("spread") * degreesToRadians;
    readPair(config, "gravity_1", "gravity_2", gravity1, gravity2);
    readPair(config, "size_1", "size_2", size1, size2);
    float time1 = 0.0f, time2 = 0.0f;
    if (readPair(config, "liveTime_1", "liveTime_2", time1, time2)) setLiveTime(time1, time2);
    readPair(config, "velocity_1", "velocity_2", velocity1, velocity2);
    if (config.variableExists("useAlphaBlending")) useAlphaBlending = config.getVarAsBool("useAlphaBlending");
    readColours(config, *this);
    textures.clear();
    for (std::size_t i = 1; i <= textureRoom; ++i) {
        const std::string key = "texture" + std::to_string(i);
        if (config.variableExists(key)) addTexture(config.getVarAsString(key));
    }
}

// A picture that won't load stays in the list as the texture store's stand-in.
void FxParticleEmitter::addTexture(const std::string& fileName) {
    TRACE_LOCATION("ForceManager::addTexture");
    textures.emplace_back(fileName);
}
