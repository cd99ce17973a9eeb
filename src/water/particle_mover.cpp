// One particle's move: sub-steps of at most 1.7 units with a collision test
// after each, the loss of velocity into a contact, surface friction, and the
// push out of its neighbours, with whom it shares velocity and heat.
#include <algorithm>
#include <cmath>

#include "foundation/foundation.h"
#include "water/water.h"

namespace ParticleMover {

namespace {
// The seven cells searched around a particle's own: the cells straight above and below are not.
constexpr int neighbourOffsets[7][2] = {{0, 0}, {-1, 0}, {-1, 1}, {-1, -1}, {1, 0}, {1, 1}, {1, -1}};

void moveInSubSteps(Particle& particle, const Vector2D& move, float moveLength) {
    TRACE_LOCATION("ParticleMover::moveInSubSteps");
    const Vector2D direction = move / moveLength;
    float remaining = std::min(moveLength, longestMove);
    while (remaining > 0.0f) {
        const float step = remaining > stepLimit ? stepLimit : remaining;
        particle.position += direction * step;
        CircleCollision::collisionTest(&particle.position, particleRadius);
        remaining = remaining > stepLimit ? remaining - stepLimit : 0.0f;
    }
}

// Only the last test's contact counts: its normal component of velocity goes, then friction applies.
void applyContact(Particle& particle, float dt) {
    TRACE_LOCATION("ParticleMover::applyContact");
    const Vector2D normal = CircleCollision::getCollisionNormal();
    particle.velocity -= normal * dot(particle.velocity, normal);
    particle.velocity *= std::pow(CircleCollision::getCollisionFriction(), dt);
}

void repelFromNeighbours(Particle& particle, float dt) {
    TRACE_LOCATION("ParticleMover::repelFromNeighbours");
    Vector2D direction;
    float strength = 0.0f;
    doParticleRepulsions(particle, direction, strength);
    strength *= std::min(dt / repulsionTimeBase, 1.0f);
    if (!(strength > 0.0f)) return;
    particle.position += direction * std::min(strength, stepLimit);
    CircleCollision::collisionTest(&particle.position, particleRadius);
}
}  // namespace

void moveParticle(Particle& particle, float dt) {
    TRACE_LOCATION("ParticleMover::moveParticle");
    const Vector2D velocity = particle.velocity + particle.impulse;
    if (velocity.x == 0.0f && velocity.y == 0.0f) return;
    const Vector2D move = velocity * dt;
    const float moveLength = length(move);
    if (moveLength > stepLimit) {
        moveInSubSteps(particle, move, moveLength);
    } else {
        particle.position += move;
        CircleCollision::collisionTest(&particle.position, particleRadius);
    }
    applyContact(particle, dt);
    repelFromNeighbours(particle, dt);
}

void doParticleRepulsions(Particle& particle, Vector2D& direction, float& strength) {
    TRACE_LOCATION("ParticleMover::doParticleRepulsions");
    direction = Vector2D();
    strength = 0.0f;
    int count = 0;
    const int cellX = static_cast<int>(particle.cellX);
    const int cellY = static_cast<int>(particle.cellY);
    for (const auto& offset : neighbourOffsets) {
        for (Particle* other = gridCell(cellX + offset[0], cellY + offset[1]); other; other = other->gridNext)
            particleRepulse(particle, *other, direction, strength, count);
    }
    if (count == 0) return;
    direction /= static_cast<float>(count);
    strength /= static_cast<float>(count);
    normalise(direction);
}

void particleRepulse(Particle& a, Particle& b, Vector2D& direction, float& strength, int& count) {
    TRACE_LOCATION("ParticleMover::particleRepulse");
    if (&a == &b) return;
    const Vector2D away = a.position - b.position;
    const float distanceApart = length(away);
    if (!(distanceApart < repulsionRange)) return;
    if (distanceApart > coincidenceLimit) {
        direction += away / distanceApart;
        ++count;
        strength += repulsionRange - distanceApart;
    }
    a.velocity = b.velocity = (a.velocity + b.velocity) * 0.5f;
    a.impulse = b.impulse = (a.impulse + b.impulse) * 0.5f;
    a.temperature = b.temperature = (a.temperature + b.temperature) * 0.5f;
}

}  // namespace ParticleMover
