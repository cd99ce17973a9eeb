// Ice bodies before freezing is written: the body list exists and can be
// emptied, but nothing freezes, so it stays empty.
#include "console/console.h"
#include "foundation/foundation.h"
#include "water/water.h"

namespace ParticleGroupMover {

namespace {
std::list<ParticleGroup> groups;
}  // namespace

void initialise() {
    TRACE_LOCATION("ParticleGroupMover::initialise");
    shutdown();
    GLConsole::print("\nInitialising grouped particle mover..");
}

void shutdown() {
    TRACE_LOCATION("ParticleGroupMover::shutdown");
    GLConsole::print("\nShutting down grouped particle mover..");
    groups.clear();
}

void doParticleGrouping(std::list<Particle>&) { TRACE_LOCATION("ParticleGroupMover::doParticleGrouping"); }

void particleGroupRecursive(Particle&, std::list<Particle>&, std::list<Particle>&, std::list<Particle>&) {
    TRACE_LOCATION("ParticleGroupMover::particleGroupRecursive");
}

void runSimulation(float, std::list<Particle>&) { TRACE_LOCATION("ParticleGroupMover::runSimulation"); }

void moveGroup(ParticleGroup&, float) { TRACE_LOCATION("ParticleGroupMover::moveGroup"); }

void doGroupMerging() { TRACE_LOCATION("ParticleGroupMover::doGroupMerging"); }

void killGroup(ParticleGroup& group) {
    TRACE_LOCATION("ParticleGroupMover::killGroup");
    if (group.dying) return;
    group.dying = 1;
    group.killTimer = ParticleManager::getParticleKillTime();
}

void debugDraw() { TRACE_LOCATION("ParticleGroupMover::debugDraw"); }

std::list<ParticleGroup>& getGroups() {
    TRACE_LOCATION("ParticleGroupMover::getGroups");
    return groups;
}

}  // namespace ParticleGroupMover
