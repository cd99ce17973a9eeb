// Ice: frozen particles leave the particle list and join rigid round bodies.
// A body moves and collides as one circle whose area is that of its members;
// the members only follow it to fixed places inside the circle. It does not
// rotate, it slides without friction, bodies that come close merge, and when
// a body warms above zero all its members go back to the water at once.
#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "console/console.h"
#include "foundation/foundation.h"
#include "graphics/window/window.h"
#include "water/water.h"

namespace ParticleGroupMover {

namespace {

constexpr float gatherDistanceSquared = 144.0f;
constexpr float viewMargin = 128.0f;
constexpr float moveLimitShare = 0.75f;
constexpr float mergeMargin = 2.0f;
// A body moving further than this many sub-steps in one step (thousands of
// units) takes longer ones, so that an absurd speed costs a bounded time.
constexpr float mostSubSteps = 1024.0f;
using ParticleMover::particleRadius;

struct State {
    std::list<ParticleGroup> groups;
    bool debugSwitch = false;
    float particleGroupInterpolation = 0.0f;
    float groupExpandSpeed = 0.0f;
    float iceGravityStrenght = 0.0f;
};

State& state() {
    return singleInstance<State>();
}

// The radius whose disc has the area of n particles.
float targetRadiusFor(std::size_t memberCount) {
    return std::sqrt(static_cast<float>(memberCount) * particleRadius * particleRadius * pi / pi);
}

// A random place on the disc, crowding towards the centre as new water does.
void placeInBody(Particle& particle) {
    particle.groupDirection = randomDirection();
    particle.groupDistance = static_cast<float>(randomUnit());
}

// Moves every particle within reach of the seed to the front of the members.
void gatherFrom(std::list<Particle>& source, const Particle& seed, std::list<Particle>& members,
                std::vector<Particle*>& found, bool inGrid) {
    for (auto it = source.begin(); it != source.end();) {
        auto next = std::next(it);
        if (lengthSquared(it->position - seed.position) <= gatherDistanceSquared) {
            if (inGrid) ParticleMover::removeGridParticle(*it);
            members.splice(members.begin(), source, it);
            placeInBody(*it);
            found.push_back(&*it);
        }
        it = next;
    }
}

void startBody(std::list<Particle>& freeIce, std::list<Particle>& particles) {
    state().groups.emplace_front();
    ParticleGroup& group = state().groups.front();
    group.particles.splice(group.particles.begin(), freeIce, freeIce.begin());
    Particle& seed = group.particles.front();
    group.radius = group.targetRadius = particleRadius;
    group.position = seed.position;
    group.velocity = seed.velocity;
    group.previousVelocity = seed.previousVelocity;
    group.impulse = seed.impulse;
    group.temperature = seed.temperature;
    group.dying = 0;
    seed.speed = 0.0f;
    placeInBody(seed);
    particleGroupRecursive(seed, group.particles, freeIce, particles);
    group.targetRadius = targetRadiusFor(group.particles.size());
}

// Members follow the body's move and slide towards their rest places.
void carryMembers(ParticleGroup& group, const Vector2D& moved, float follow) {
    for (Particle& member : group.particles) {
        member.position += moved;
        const Vector2D rest = group.position + member.groupDirection * (member.groupDistance * group.radius);
        member.position = member.position * follow + rest * (1.0f - follow);
        member.temperature = follow * member.temperature + (1.0f - follow) * group.temperature;
        member.dying = group.dying;
        member.killTimer = group.killTimer;
        member.impulse = group.impulse;
    }
}

// All members go back to the water at once, with the body's velocity.
void melt(ParticleGroup& group, std::list<Particle>& particles) {
    while (!group.particles.empty()) {
        Particle& member = group.particles.front();
        member.velocity = member.previousVelocity = group.velocity;
        member.impulse = Vector2D();
        member.temperature = group.temperature;
        member.speed = length(member.velocity);
        member.inGrid = 0;
        member.cellX = member.cellY = 0;
        member.gridNext = member.gridPrevious = nullptr;
        for (Vector2D& previous : member.previousPosition) previous = member.position;
        particles.splice(particles.begin(), group.particles, group.particles.begin());
    }
}

// True while the body lives on after this step's checks.
bool survivesChecks(ParticleGroup& group, const ParticleManager::ViewRectangle& view, float dt) {
    if (ParticleManager::distanceOutside(view, group.position) > group.radius + viewMargin) return false;
    if (!group.dying) return true;
    group.killTimer -= dt;
    return group.killTimer > 0.0f;
}

void moveInto(ParticleGroup& from, ParticleGroup& to) {
    to.particles.splice(to.particles.end(), from.particles);
    to.targetRadius = targetRadiusFor(to.particles.size());
}

int conCmdParticleGroupCount() {
    TRACE_LOCATION("ParticleGroupMover::conCmdParticleGroupCount");
    return static_cast<int>(state().groups.size());
}

const GLConsoleCommand commands[] = {
    {"ParticleGroupCount", conCmdParticleGroupCount},
    {"ParticleGroupDraw", GLConsole::settingCommand<state, &State::debugSwitch>},
};
const GLConsole::Subsystem console("\nInitialising grouped particle mover..",
                                   "\nShutting down grouped particle mover..", commands);

}  // namespace

void initialise() {
    TRACE_LOCATION("ParticleGroupMover::initialise");
    shutdown();
    GLConsole::startSubsystem(console);
    ConfigFile config("cfg\\water.cfg");
    state().particleGroupInterpolation =
        std::clamp(config.getVarAsFloat("particleGroupInterpolation"), 0.0f, 1.0f);
    state().groupExpandSpeed = std::clamp(config.getVarAsFloat("groupExpandSpeed"), 0.0f, 1.0f);
    state().iceGravityStrenght = config.getVarAsFloat("iceGravityStrenght");
}

void shutdown() {
    TRACE_LOCATION("ParticleGroupMover::shutdown");
    GLConsole::stopSubsystem(console);
    state() = State();
}

void doParticleGrouping(std::list<Particle>& particles) {
    TRACE_LOCATION("ParticleGroupMover::doParticleGrouping");
    std::list<Particle> freeIce;
    for (auto it = particles.begin(); it != particles.end();) {
        auto next = std::next(it);
        if (it->temperature <= ParticleManager::freezingTemperature) {
            ParticleMover::removeGridParticle(*it);
            freeIce.splice(freeIce.end(), particles, it);
        }
        it = next;
    }
    while (!freeIce.empty()) startBody(freeIce, particles);
}

// Freezing spreads through every particle linked by gaps of up to 12 units,
// water and steam alike: they take on the body's temperature as it moves.
void particleGroupRecursive(Particle& seed, std::list<Particle>& members, std::list<Particle>& freeIce,
                            std::list<Particle>& particles) {
    TRACE_LOCATION("ParticleGroupMover::particleGroupRecursive");
    std::vector<Particle*> found;
    gatherFrom(freeIce, seed, members, found, false);
    gatherFrom(particles, seed, members, found, true);
    for (Particle* particle : found) particleGroupRecursive(*particle, members, freeIce, particles);
}

void runSimulation(float dt, std::list<Particle>& particles) {
    TRACE_LOCATION("ParticleGroupMover::runSimulation");
    const Vector2D gravityVelocity = ParticleManager::gravityStep(dt);
    const float heatShare = 1.0f - std::pow(1.0f - ParticleManager::getSettings().heatTransferRate, dt);
    const float follow = std::pow(state().particleGroupInterpolation, dt);
    const float expand = std::pow(state().groupExpandSpeed, dt);
    const ParticleManager::ViewRectangle view = ParticleManager::viewRectangle();
    for (auto it = state().groups.begin(); it != state().groups.end();) {
        ParticleGroup& group = *it;
        group.previousVelocity = group.velocity;
        group.touching = 0;
        if (!survivesChecks(group, view, dt)) {
            it = state().groups.erase(it);
            continue;
        }
        group.velocity += gravityVelocity * state().iceGravityStrenght;
        group.temperature = (1.0f - heatShare) * group.temperature +
                            heatShare * ParticleManager::getSettings().roomTemperature;
        group.radius = expand * group.radius + (1.0f - expand) * group.targetRadius;
        const Vector2D before = group.position;
        moveGroup(group, dt);
        carryMembers(group, group.position - before, follow);
        group.impulse = Vector2D();
        if (group.temperature <= ParticleManager::freezingTemperature && !group.particles.empty()) {
            ++it;
            continue;
        }
        melt(group, particles);
        it = state().groups.erase(it);
    }
    doGroupMerging();
}

// As a particle's move, without repulsion and friction: ice slides, and there
// is no cap on the distance, only steps of three quarters of the radius.
void moveGroup(ParticleGroup& group, float dt) {
    TRACE_LOCATION("ParticleGroupMover::moveGroup");
    const Vector2D velocity = group.velocity + group.impulse;
    if (velocity.x == 0.0f && velocity.y == 0.0f) return;
    const Vector2D move = velocity * dt;
    const float moveLength = length(move);
    const float limit = group.radius * moveLimitShare;
    bool contact = false;
    if (moveLength > limit) {
        const Vector2D direction = move / moveLength;
        const float stride = std::max(limit, moveLength / mostSubSteps);
        float remaining = moveLength;
        while (remaining > 0.0f) {
            const float step = remaining > stride ? stride : remaining;
            group.position += direction * step;
            contact = CircleCollision::collisionTest(&group.position, group.radius) || contact;
            const float left = remaining - step;
            remaining = remaining > stride && left < remaining ? left : 0.0f;
        }
    } else {
        group.position += move;
        contact = CircleCollision::collisionTest(&group.position, group.radius);
    }
    if (contact) group.touching = 1;
    const Vector2D normal = CircleCollision::getCollisionNormal();
    group.velocity -= normal * dot(group.velocity, normal);
}

// Measured by the target radii. The smaller body (the earlier on a tie) gives
// its members to the other and stays, empty, until the next step erases it.
void doGroupMerging() {
    TRACE_LOCATION("ParticleGroupMover::doGroupMerging");
    for (auto a = state().groups.begin(); a != state().groups.end(); ++a) {
        for (auto b = std::next(a); b != state().groups.end(); ++b) {
            if (distance(a->position, b->position) >= a->targetRadius + b->targetRadius + mergeMargin)
                continue;
            if (a->targetRadius <= b->targetRadius)
                moveInto(*a, *b);
            else
                moveInto(*b, *a);
        }
    }
}

void killGroup(ParticleGroup& group) {
    TRACE_LOCATION("ParticleGroupMover::killGroup");
    if (group.dying) return;
    group.dying = 1;
    group.killTimer = ParticleManager::getSettings().particleKillTime;
}

void debugDraw() {
    TRACE_LOCATION("ParticleGroupMover::debugDraw");
    if (!state().debugSwitch || !GLWindow::contextAvailable()) return;
    GLWindow::glPushState();
    glDisable(GL_BLEND);
    glDisable(GL_TEXTURE_2D);
    glColor3f(1.0f, 0.0f, 0.0f);
    for (const ParticleGroup& group : state().groups)
        GLWindow::glCircle(group.position.x, group.position.y, group.radius, 64);
    GLWindow::glPopState();
}

void removeAllGroups() {
    TRACE_LOCATION("ParticleGroupMover::removeAllGroups");
    state().groups.clear();
}

std::list<ParticleGroup>& getGroups() {
    TRACE_LOCATION("ParticleGroupMover::getGroups");
    return state().groups;
}

}  // namespace ParticleGroupMover
