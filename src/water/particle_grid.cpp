// The neighbour grid: 1024 by 1024 cells of 2 units, each the head of an
// intrusive list through the particles' own links. It moves with the view, so
// its cells are worked out from the view centre at each insertion.
#include <vector>

#include "console/console.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "water/water.h"

namespace ParticleMover {

namespace {

struct State {
    std::vector<Particle*> cells =
        std::vector<Particle*>(static_cast<size_t>(gridCells) * gridCells, nullptr);
};

State& state() {
    return singleInstance<State>();
}

// Further from the origin than this no cell can be in range, and the integer conversion stays defined.
constexpr float farBeyondGrid = 4096.0f;

Particle*& cellHead(uint32_t cellX, uint32_t cellY) {
    TRACE_LOCATION("ParticleMover::cellHead");
    return state().cells[static_cast<size_t>(cellX) * gridCells + cellY];
}

// The cell of one coordinate, or -1 outside the grid.
int cellCoordinate(float coordinate, float origin) {
    TRACE_LOCATION("ParticleMover::cellCoordinate");
    const float offset = coordinate - origin;
    if (!(offset > -farBeyondGrid && offset < farBeyondGrid)) return -1;
    const int cell = static_cast<int>(offset) / gridCellSize;
    return cell >= 0 && cell < gridCells ? cell : -1;
}

void clearCells() {
    TRACE_LOCATION("ParticleMover::clearCells");
    std::fill(state().cells.begin(), state().cells.end(), nullptr);
}
}  // namespace

void initialise() {
    TRACE_LOCATION("ParticleMover::initialise");
    GLConsole::print("\nInitialising particle mover..");
    clearCells();
}

void shutdown() {
    TRACE_LOCATION("ParticleMover::shutdown");
    GLConsole::print("\nShutting down particle mover..");
    clearCells();
}

void addGridParticle(Particle& particle) {
    TRACE_LOCATION("ParticleMover::addGridParticle");
    if (particle.inGrid) return;
    const Vector2D origin = Camera::getViewCentre() - Vector2D(gridOriginOffset, gridOriginOffset);
    const int cellX = cellCoordinate(particle.position.x, origin.x);
    const int cellY = cellCoordinate(particle.position.y, origin.y);
    if (cellX < 0 || cellY < 0) return;
    particle.cellX = static_cast<uint32_t>(cellX);
    particle.cellY = static_cast<uint32_t>(cellY);
    Particle*& head = cellHead(particle.cellX, particle.cellY);
    particle.gridPrevious = nullptr;
    particle.gridNext = head;
    if (head) head->gridPrevious = &particle;
    head = &particle;
    particle.inGrid = 1;
}

void removeGridParticle(Particle& particle) {
    TRACE_LOCATION("ParticleMover::removeGridParticle");
    if (!particle.inGrid) return;
    if (particle.gridPrevious)
        particle.gridPrevious->gridNext = particle.gridNext;
    else
        cellHead(particle.cellX, particle.cellY) = particle.gridNext;
    if (particle.gridNext) particle.gridNext->gridPrevious = particle.gridPrevious;
    particle.gridNext = nullptr;
    particle.gridPrevious = nullptr;
    particle.inGrid = 0;
}

void clearParticleGrid() {
    TRACE_LOCATION("ParticleMover::clearParticleGrid");
    clearCells();
    for (Particle& particle : ParticleManager::getParticles()) particle.inGrid = 0;
}

Particle* gridCell(int cellX, int cellY) {
    TRACE_LOCATION("ParticleMover::gridCell");
    if (cellX < 0 || cellY < 0 || cellX >= gridCells || cellY >= gridCells) return nullptr;
    return cellHead(static_cast<uint32_t>(cellX), static_cast<uint32_t>(cellY));
}

}  // namespace ParticleMover
