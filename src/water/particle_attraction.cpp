// Cluster attraction: the water is split into clusters of particles linked by
// gaps of up to 40 units, and each particle is drawn a little towards its
// cluster's centre, with a touch of jitter. This holds a body of water together.
#include <algorithm>
#include <deque>

#include "foundation/foundation.h"
#include "water/cluster_candidates.h"
#include "water/water.h"

namespace ParticleMover {

namespace {
// A random order each step, so that cluster seeds and scan order change from step to step.
std::vector<Particle*> shuffledCandidates() {
    TRACE_LOCATION("ParticleMover::shuffledCandidates");
    std::deque<Particle*> candidates;
    for (Particle& particle : ParticleManager::getParticles()) {
        if (randomBits() % 2 == 0)
            candidates.push_front(&particle);
        else
            candidates.push_back(&particle);
    }
    return std::vector<Particle*>(candidates.begin(), candidates.end());
}

Vector2D randomJitter() {
    TRACE_LOCATION("ParticleMover::randomJitter");
    const float x = jitter * static_cast<float>(randomUnit() - 0.5);
    const float y = jitter * static_cast<float>(randomUnit() - 0.5);
    return Vector2D(x, y);
}

void drawTowards(Particle& particle, const Vector2D& centre, float dt) {
    TRACE_LOCATION("ParticleMover::drawTowards");
    const Vector2D towards = centre - particle.position;
    const float distanceToCentre = length(towards);
    if (!(distanceToCentre > attractionCentreLimit)) return;
    const Vector2D direction = towards / distanceToCentre;
    const float step =
        std::min((distanceToCentre - attractionRestDistance) * (dt / attractionTimeBase), attractionLimit);
    const Vector2D offset = randomJitter();
    if (!(step > 0.0f)) return;
    particle.position += direction * step + offset;
    CircleCollision::collisionTest(&particle.position, particleRadius);
}
}  // namespace

void runParticleAttractions(float dt) {
    TRACE_LOCATION("ParticleMover::runParticleAttractions");
    ClusterCandidates candidates(shuffledCandidates(), clusterRadius);
    std::vector<Particle*> cluster;
    while (!candidates.empty()) {
        cluster.assign(1, candidates.takeFirst());
        groupParticles(cluster, candidates, clusterRadius);
        Vector2D centre;
        getGroupCenter(cluster, centre);
        for (Particle* particle : cluster) drawTowards(*particle, centre, dt);
    }
}

}  // namespace ParticleMover
