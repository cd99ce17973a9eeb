#include "support/dynamics_fixture.h"

#include "dynamics/trigger_state.h"
#include "graphics/graphics.h"
#include "level/level.h"

void DynamicsTest::SetUp() {
    GLWindow::Headless::setClientSize(800, 600);
    Camera::setPosition(Vector2D());
    ParticleManager::getParticles().clear();
    ParticleGroupMover::getGroups().clear();
    Level::clear();
    ForceManager::initialise();
    MoverManager::initialise();
    TriggerManager::initialise();
    setRandomSeed(11);
}

void DynamicsTest::TearDown() {
    ParticleManager::getParticles().clear();
    ParticleGroupMover::getGroups().clear();
    Level::clear();
}

Particle& DynamicsTest::addParticle(const Vector2D& at, float temperature) {
    Particle particle;
    particle.position = at;
    for (Vector2D& previous : particle.previousPosition) previous = at;
    particle.temperature = temperature;
    ParticleManager::getParticles().push_back(particle);
    return ParticleManager::getParticles().back();
}

Trigger& DynamicsTest::addSquare(int32_t type, int32_t targetId, float x, float y, float size, float delay) {
    TriggerManager::addTrigger(type, targetId, delay, Vector2D(x, y), Vector2D(x + size, y),
                               Vector2D(x + size, y + size), Vector2D(x, y + size));
    return TriggerManager::state().triggers.front();
}
