// One step of the free water, in the order that makes it behave as it does:
// gravity from the view's tilt, the grid refreshed, then each particle in list
// order, then attraction and ice.
#include <cmath>

#include "foundation/foundation.h"
#include "game/game.h"
#include "water/water.h"

namespace ParticleManager {

namespace {
// Water further than this outside the view is gone: the simulation exists only around the camera.
constexpr float eraseMargin = 130.0f;

void refreshGrid(std::list<Particle>& particles) {
    TRACE_LOCATION("ParticleManager::refreshGrid");
    for (Particle& particle : particles) {
        ParticleMover::removeGridParticle(particle);
        ParticleMover::addGridParticle(particle);
    }
}

// True if the particle's life ended in this step; the caller erases it. Water
// driven to an infinite or undefined place (by an absurd gravity typed on the
// console) is outside any view.
bool lifeEnds(Particle& particle, const ViewRectangle& view, float dt) {
    TRACE_LOCATION("ParticleManager::lifeEnds");
    if (!(distanceOutside(view, particle.position) <= eraseMargin)) return true;
    if (!particle.dying) return false;
    particle.killTimer -= dt;
    return particle.killTimer <= 0.0f;
}

void applyGravity(Particle& particle, const Vector2D& gravityVelocity) {
    TRACE_LOCATION("ParticleManager::applyGravity");
    if (particle.temperature < steamTemperature) {
        particle.velocity += gravityVelocity;
        return;
    }
    particle.velocity -= gravityVelocity * getSettings().steamRiseRate;
    Vector2D scatter = gravityVelocity * getSettings().steamScatterRate;
    rotate(scatter, static_cast<float>(randomUnit()) * fullTurn);
    particle.velocity += scatter;
}

void shiftHistory(Particle& particle) {
    TRACE_LOCATION("ParticleManager::shiftHistory");
    particle.previousPosition[2] = particle.previousPosition[1];
    particle.previousPosition[1] = particle.previousPosition[0];
    particle.previousPosition[0] = particle.position;
}

void stepParticle(Particle& particle, const Vector2D& gravityVelocity, float heatShare, float dt) {
    TRACE_LOCATION("ParticleManager::stepParticle");
    particle.previousVelocity = particle.velocity;
    applyGravity(particle, gravityVelocity);
    particle.temperature =
        heatShare * getSettings().roomTemperature + (1.0f - heatShare) * particle.temperature;
    shiftHistory(particle);
    ParticleMover::moveParticle(particle, dt);
    particle.speed = length(particle.velocity + particle.impulse);
    particle.impulse = Vector2D();
}
}  // namespace

Vector2D gravityStep(float dt) {
    TRACE_LOCATION("ParticleManager::gravityStep");
    Vector2D down(0.0f, 1.0f);
    rotate(down, Camera::getTilt() * degreesToRadians);
    return down * getSettings().gravity * dt;
}

ViewRectangle viewRectangle() {
    TRACE_LOCATION("ParticleManager::viewRectangle");
    const float w = Game::getViewAreaX() * Camera::getZoom() * 0.5f;
    const float h = Game::getViewAreaY() * Camera::getZoom() * 0.5f;
    ViewRectangle view{{Vector2D(-w, -h), Vector2D(w, -h), Vector2D(w, h), Vector2D(-w, h)},
                       {Vector2D(0, 1), Vector2D(-1, 0), Vector2D(0, -1), Vector2D(1, 0)}};
    const float angle = Camera::getTilt() * degreesToRadians;
    const Vector2D centre = Camera::getViewCentre();
    for (int i = 0; i < 4; ++i) {
        rotate(view.corners[i], angle);
        rotate(view.normals[i], angle);
        view.corners[i] += centre;
    }
    return view;
}

float distanceOutside(const ViewRectangle& view, const Vector2D& point) {
    TRACE_LOCATION("ParticleManager::distanceOutside");
    if (!isFinite(point)) return INFINITY;
    float outside = -INFINITY;
    for (int i = 0; i < 4; ++i) outside = std::fmax(outside, -dot(point - view.corners[i], view.normals[i]));
    return outside;
}

void runSimulation(float dt) {
    TRACE_LOCATION("ParticleManager::runSimulation");
    std::list<Particle>& particles = getParticles();
    const Vector2D gravityVelocity = gravityStep(dt);
    refreshGrid(particles);
    const ViewRectangle view = viewRectangle();
    const float heatShare = 1.0f - std::pow(1.0f - getSettings().heatTransferRate, dt);
    for (auto it = particles.begin(); it != particles.end();) {
        if (lifeEnds(*it, view, dt)) {
            ParticleMover::removeGridParticle(*it);
            it = particles.erase(it);
            continue;
        }
        stepParticle(*it, gravityVelocity, heatShare, dt);
        ++it;
    }
    ParticleMover::runParticleAttractions(dt);
    ParticleGroupMover::doParticleGrouping(particles);
    ParticleGroupMover::runSimulation(dt, particles);
}

}  // namespace ParticleManager
