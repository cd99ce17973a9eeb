// The attraction pass's candidate list. Clusters are gathered in one pass over
// the candidates in their order, a candidate joining if it lies within reach of
// a particle that joined before it. Scanning the whole list for every cluster
// and every member would cost the square of the water's size, so the list keeps
// a coarse spatial index of the candidates still free, and a cluster grows by
// taking, in list order, the candidates found near its members.
#pragma once

#include <cstdint>
#include <vector>

#include "water/water.h"

namespace ParticleMover {

class ClusterCandidates {
public:
    // The candidates in order; reach is the largest radius that will be asked for.
    ClusterCandidates(const std::vector<Particle*>& order, float reach);

    bool empty() const;
    // Takes the first remaining candidate out of the list.
    Particle* takeFirst();

private:
    friend void groupParticles(std::vector<Particle*>& group, ClusterCandidates& candidates, float radius);

    void buildIndex();
    int cellOf(const Vector2D& position) const;
    void link(int candidate);
    void take(int candidate);
    void enqueue(int candidate);
    // Queues every free candidate later than after and within radius of the position.
    void findNear(const Vector2D& position, int after, float radius);
    // The earliest queued candidate, or -1.
    int nextQueued();

    std::vector<Particle*> order;
    std::vector<uint8_t> taken;
    std::vector<int> cellNext;
    std::vector<int> cellPrevious;
    std::vector<int> cellOfCandidate;
    std::vector<int> cellFirst;
    std::vector<uint64_t> queued;  // one bit a candidate found near the growing cluster
    int queuedCount = 0;
    int queueSweep = 0;
    Vector2D origin;
    float cellSize = 1.0f;
    int columns = 1;
    int rows = 1;
    int first = 0;
    int remaining = 0;
};

}  // namespace ParticleMover
