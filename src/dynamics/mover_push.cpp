// The push of moving polygons: a polygon's move is walked in strides shorter
// than a particle's diameter, and whatever an edge meets on the way is carried
// along, kept out of the static level, and killed if it ends up inside.
#include <algorithm>

#include "dynamics/dynamics.h"
#include "dynamics/mover_state.h"
#include "game/game.h"
#include "water/water.h"

using MoverManager::nearView;
using MoverManager::state;

namespace {

constexpr float pushReach = 520.0f;
constexpr float groupMargin = 0.25f;
constexpr float shortestStep = 1e-7f;
// A move longer than this many strides (over 1,700 units in one step) is walked
// in longer strides, so that an absurd speed costs a bounded time.
constexpr float mostStrides = 1024.0f;

using Candidates = std::list<Particle*>;
using GroupCandidates = std::list<ParticleGroup*>;

struct Touched {
    std::list<Particle*> particles;
    std::list<ParticleGroup*> groups;
};

bool touchesEdges(const DynamicPolygon& entry, const Vector2D& p, const Vector2D& point, float reach) {
    for (const BspNode& edge : entry.edges) {
        const Vector2D q = point - (p + edge.start);
        const float across = dot(q, edge.normal);
        const float along = dot(q, edge.direction);
        if (across >= -reach && across <= reach && along >= -reach && along <= edge.length + reach)
            return true;
    }
    return false;
}

void findTouchingParticles(const DynamicPolygon& entry, const Vector2D& p, Touched& touched,
                           Candidates& candidates, GroupCandidates& candidateGroups) {
    TRACE_LOCATION("MoverManager::findTouchingParticles");
    for (auto it = candidates.begin(); it != candidates.end();) {
        if (touchesEdges(entry, p, (*it)->position, MoverManager::touchDistance)) {
            touched.particles.push_front(*it);
            it = candidates.erase(it);
        } else {
            ++it;
        }
    }
    for (auto it = candidateGroups.begin(); it != candidateGroups.end();) {
        if (touchesEdges(entry, p, (*it)->position, (*it)->radius + groupMargin)) {
            touched.groups.push_front(*it);
            it = candidateGroups.erase(it);
        } else {
            ++it;
        }
    }
}

bool insideTriangle(const Polygon2D& polygon, uint32_t triangle, const Vector2D& point) {
    for (uint32_t v = 0; v < 3; ++v) {
        const uint32_t i = triangle * 3 + v;
        const Vector2D corner(polygon.triangleX[i], polygon.triangleY[i]);
        const Vector2D normal(polygon.normalX[i], polygon.normalY[i]);
        if (dot(point - corner, normal) <= 0.0f) return false;
    }
    return true;
}

// Measured against the polygon's offset at the end of this step, not against
// where the walk has brought it: water carried by a polygon that moves several
// strides in a step lies inside that final place and dies.
void killParticlesInsidePolygon(const DynamicPolygon& entry, const std::list<Particle*>& particles) {
    TRACE_LOCATION("MoverManager::killParticlesInsidePolygon");
    const Polygon2D& polygon = *entry.polygon;
    if (polygon.normalX.size() < polygon.triangleCount * 3) return;
    for (Particle* particle : particles) {
        const Vector2D local = particle->position - polygon.offset;
        for (uint32_t t = 0; t < polygon.triangleCount; ++t) {
            if (!insideTriangle(polygon, t, local)) continue;
            ParticleManager::killParticle(*particle);
            break;
        }
    }
}

void addNearbyParticles(std::list<Particle*>& touched, Candidates& candidates, float reach) {
    TRACE_LOCATION("MoverManager::addNearbyParticles");
    const float reachSquared = reach * reach;
    for (auto t = touched.begin(); t != touched.end(); ++t) {
        for (auto it = candidates.begin(); it != candidates.end();) {
            if (lengthSquared((*it)->position - (*t)->position) <= reachSquared) {
                touched.push_front(*it);
                it = candidates.erase(it);
            } else {
                ++it;
            }
        }
    }
}

void carry(Touched& touched, const Vector2D& m) {
    for (Particle* particle : touched.particles) particle->position += m;
    for (ParticleGroup* group : touched.groups) {
        group->position += m;
        for (Particle& member : group->particles) member.position += m;
    }
}

void push(const DynamicPolygon& entry, float dt, Candidates& candidates, GroupCandidates& candidateGroups) {
    const Polygon2D& polygon = *entry.polygon;
    const Vector2D delta = polygon.offset - polygon.previousOffset;
    float remaining = length(delta);
    if (remaining == 0.0f) return;
    const Vector2D velocity = delta / std::max(dt, shortestStep);
    const Vector2D dir = delta / remaining;
    Vector2D p = polygon.previousOffset;
    Touched touched;
    findTouchingParticles(entry, p, touched, candidates, candidateGroups);
    const float stride = std::max(MoverManager::pushStep, remaining / mostStrides);
    while (remaining > 0.0f) {
        const float step = remaining <= stride ? remaining : stride;
        const Vector2D m = dir * step;
        p += m;
        carry(touched, m);
        findTouchingParticles(entry, p, touched, candidates, candidateGroups);
        // A move so long that a stride no longer shortens it would never end.
        const float left = remaining - step;
        remaining = left < remaining ? left : 0.0f;
        for (Particle* particle : touched.particles)
            CircleCollision::collisionTestStatic(&particle->position, ParticleMover::particleRadius);
        killParticlesInsidePolygon(entry, touched.particles);
        addNearbyParticles(touched.particles, candidates, MoverManager::nearbyDistance);
        for (Particle* particle : touched.particles) particle->impulse += velocity;
    }
}

}  // namespace

namespace MoverManager {

void pushPolygonParticles(float dt) {
    TRACE_LOCATION("MoverManager::pushPolygonParticles");
    Candidates candidates;
    for (Particle& particle : ParticleManager::getParticles()) candidates.push_back(&particle);
    GroupCandidates candidateGroups;
    for (ParticleGroup& group : ParticleGroupMover::getGroups()) candidateGroups.push_back(&group);
    const float h = pushReach * Camera::getZoom();
    for (const DynamicPolygon& entry : state().dynamicPolygons) {
        if (entry.polygon->collideable && nearView(entry, h)) push(entry, dt, candidates, candidateGroups);
        entry.polygon->previousOffset = entry.polygon->offset;
    }
}

}  // namespace MoverManager
