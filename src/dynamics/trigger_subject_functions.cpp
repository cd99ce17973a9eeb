// The trigger actions that work on the particle or ice body inside the area:
// heating and cooling, forces, killing and counting water into the level's end.
#include <cmath>

#include "dynamics/dynamics.h"
#include "game/game.h"
#include "water/water.h"

namespace {

// The heat sources' settings; these values are in force until "cfg\water.cfg" is read.
struct State {
    float temperatureChangeSpeed = 1000.0f;
    float temperatureChangeAmountIce = 100.0f;
    float temperatureChangeAmountSteam = 200.0f;
};

State& state() {
    return singleInstance<State>();
}

constexpr float waterTemperature = 50.0f;
constexpr float killChancePerSecond = 0.5f;
constexpr float multiDirectionMinimum = 0.0001f;

// The two kinds of subject share what the functions read and write.
struct SubjectView {
    Vector2D* position = nullptr;
    Vector2D* velocity = nullptr;
    float* temperature = nullptr;
};

SubjectView view(void* subject, TriggerSubjectKind kind) {
    if (!subject) return {};
    if (kind == subjectGroup) {
        auto* group = static_cast<ParticleGroup*>(subject);
        return {&group->position, &group->velocity, &group->temperature};
    }
    auto* particle = static_cast<Particle*>(subject);
    return {&particle->position, &particle->velocity, &particle->temperature};
}

// Each enabled force among the targets, in list order.
template <typename Apply>
void forEachEnabledForce(Trigger& trigger, Apply&& apply) {
    for (const TriggerTarget& target : trigger.targets) {
        if (target.kind != targetForce) continue;
        const Force& force = *static_cast<const Force*>(target.target);
        if (force.enabled) apply(force);
    }
}

// The unit direction from the force to the subject, scaled by the falling
// strength of a force that is spread over all directions.
Vector2D radialPush(const Force& force, const Vector2D& position, float dt) {
    Vector2D d = position - force.position;
    const float l = length(d);
    if (l > multiDirectionMinimum) d /= l;
    return d * (std::sqrt(1.0f / (l + 1.0f)) * dt * force.strength);
}

void kill(void* subject, TriggerSubjectKind kind) {
    if (!subject) return;
    if (kind == subjectGroup)
        ParticleGroupMover::killGroup(*static_cast<ParticleGroup*>(subject));
    else
        ParticleManager::killParticle(*static_cast<Particle*>(subject));
}

}  // namespace

void Triggers_HeatSources_LoadSettings() {
    TRACE_LOCATION("Triggers_HeatSources_LoadSettings");
    const ConfigFile config("cfg\\water.cfg");
    state().temperatureChangeSpeed = std::fabs(config.getVarAsFloat("triggerTemperatureChangeSpeed"));
    state().temperatureChangeAmountIce = std::fabs(config.getVarAsFloat("triggerTemperatureChangeAmountIce"));
    state().temperatureChangeAmountSteam =
        std::fabs(config.getVarAsFloat("triggerTemperatureChangeAmountSteam"));
}

void trigFuncNull(Trigger&, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncNull");
}

void trigFuncToIce(Trigger&, void* subject, TriggerSubjectKind kind, float dt) {
    TRACE_LOCATION("trigFuncToIce");
    const SubjectView s = view(subject, kind);
    if (!s.temperature) return;
    *s.temperature -= state().temperatureChangeSpeed * dt;
    if (*s.temperature < -state().temperatureChangeAmountIce)
        *s.temperature = -state().temperatureChangeAmountIce;
}

// Water is led to 50 from either side; ice warms for as long as it stays.
void trigFuncToWater(Trigger&, void* subject, TriggerSubjectKind kind, float dt) {
    TRACE_LOCATION("trigFuncToWater");
    const SubjectView s = view(subject, kind);
    if (!s.temperature) return;
    const float rate = state().temperatureChangeSpeed * dt;
    float& t = *s.temperature;
    if (kind == subjectGroup)
        t += rate;
    else if (t < waterTemperature)
        t = std::fmin(t + rate, waterTemperature);
    else
        t = std::fmax(t - rate, waterTemperature);
}

void trigFuncToSteam(Trigger&, void* subject, TriggerSubjectKind kind, float dt) {
    TRACE_LOCATION("trigFuncToSteam");
    const SubjectView s = view(subject, kind);
    if (!s.temperature) return;
    *s.temperature += state().temperatureChangeSpeed * dt;
    if (kind == subjectParticle && *s.temperature > state().temperatureChangeAmountSteam)
        *s.temperature = state().temperatureChangeAmountSteam;
}

void trigFuncForceDirectional(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt) {
    TRACE_LOCATION("trigFuncForceDirectional");
    const SubjectView s = view(subject, kind);
    if (!s.velocity) return;
    forEachEnabledForce(trigger,
                        [&](const Force& force) { *s.velocity += force.direction * force.strength * dt; });
}

// With several forces the last one enabled wins.
void trigFuncForceInstantenous(Trigger& trigger, void* subject, TriggerSubjectKind kind, float) {
    TRACE_LOCATION("trigFuncForceInstantenous");
    const SubjectView s = view(subject, kind);
    if (!s.velocity) return;
    forEachEnabledForce(trigger, [&](const Force& force) { *s.velocity = force.direction * force.strength; });
}

void trigFuncForceMultiDirPull(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt) {
    TRACE_LOCATION("trigFuncForceMultiDirPull");
    const SubjectView s = view(subject, kind);
    if (!s.velocity) return;
    forEachEnabledForce(trigger,
                        [&](const Force& force) { *s.velocity -= radialPush(force, *s.position, dt); });
}

void trigFuncForceMultiDirPush(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt) {
    TRACE_LOCATION("trigFuncForceMultiDirPush");
    const SubjectView s = view(subject, kind);
    if (!s.velocity) return;
    forEachEnabledForce(trigger,
                        [&](const Force& force) { *s.velocity += radialPush(force, *s.position, dt); });
}

void trigFuncParticleKill(Trigger&, void* subject, TriggerSubjectKind kind, float) {
    TRACE_LOCATION("trigFuncParticleKill");
    kill(subject, kind);
}

// A chance of half a second's worth of dying each frame.
void trigFuncParticleKillRandom(Trigger&, void* subject, TriggerSubjectKind kind, float dt) {
    TRACE_LOCATION("trigFuncParticleKillRandom");
    const double r = randomUnit();
    if (static_cast<double>(dt * killChancePerSecond) >= r) kill(subject, kind);
}

// Without a subject (a delayed event) one particle is counted.
void trigFuncLevelEnd(Trigger&, void* subject, TriggerSubjectKind kind, float) {
    TRACE_LOCATION("trigFuncLevelEnd");
    if (kind == subjectGroup && subject) {
        const auto* group = static_cast<const ParticleGroup*>(subject);
        GameRules::incrementEndOfLevelTriggerParticleCount(static_cast<uint32_t>(group->particles.size()));
        return;
    }
    GameRules::incrementEndOfLevelTriggerParticleCount(1);
}
