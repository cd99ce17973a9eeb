// Once a simulation step every particle and ice body is tested against the
// triggers near the view. Triggers out of view or spent are left out first,
// so the inside test runs only where it can matter.
#include <algorithm>

#include "dynamics/dynamics.h"
#include "dynamics/trigger_state.h"
#include "game/game.h"
#include "water/water.h"

namespace TriggerManager {

ActiveBox activeBox() {
    TRACE_LOCATION("TriggerManager::activeBox");
    ActiveBox box;
    box.halfWidth = 0.55f * std::max(Game::getViewAreaX(), Game::getViewAreaY());
    const Vector2D centre = Camera::getViewCentre();
    box.centreX = centre.x;
    box.centreY = centre.y;
    return box;
}

}  // namespace TriggerManager

using TriggerManager::ActiveBox;
using TriggerManager::activeBox;
using TriggerManager::insideTrigger;
using TriggerManager::limitReached;
using TriggerManager::state;

namespace {

std::vector<Trigger*> collectActiveTriggers(float dt) {
    TRACE_LOCATION("TriggerManager::collectActiveTriggers");
    const ActiveBox box = activeBox();
    std::vector<Trigger*> active;
    for (Trigger& trigger : state().triggers) {
        if (limitReached(trigger) || !box.touches(trigger)) continue;
        if (trigger.cooldown <= 0.0f)
            active.push_back(&trigger);
        else
            trigger.cooldown -= dt;
    }
    return active;
}

void fire(Trigger& trigger, const Vector2D& point, void* subject, TriggerSubjectKind kind, float dt) {
    // Tested again here, so that a "_1" trigger fires once however many are inside it.
    if (limitReached(trigger)) return;
    if (!insideTrigger(point, trigger)) return;
    ++trigger.fireCount;
    trigger.cooldown = trigger.typeInfo->refireDelay;
    if (trigger.delay > 0.0f)
        state().delayedEvents.push_back({trigger.typeInfo->function, &trigger, dt, trigger.delay});
    else
        trigger.typeInfo->function(trigger, subject, kind, dt);
}

}  // namespace

namespace TriggerManager {

void runTriggers(float dt) {
    TRACE_LOCATION("TriggerManager::runTriggers");
    checkDelayedTriggerEvents(dt);
    const std::vector<Trigger*> active = collectActiveTriggers(dt);
    if (active.empty()) return;
    for (Particle& particle : ParticleManager::getParticles())
        for (Trigger* trigger : active) fire(*trigger, particle.position, &particle, subjectParticle, dt);
    for (ParticleGroup& group : ParticleGroupMover::getGroups())
        for (Trigger* trigger : active) fire(*trigger, group.position, &group, subjectGroup, dt);
}

void checkDelayedTriggerEvents(float dt) {
    TRACE_LOCATION("TriggerManager::checkDelayedTriggerEvents");
    for (auto event = state().delayedEvents.begin(); event != state().delayedEvents.end();) {
        event->remaining -= dt;
        if (event->remaining > 0.0f) {
            ++event;
            continue;
        }
        const DelayedTriggerEvent due = *event;
        event = state().delayedEvents.erase(event);
        due.function(*due.trigger, nullptr, subjectParticle, due.elapsed);
    }
}

}  // namespace TriggerManager
