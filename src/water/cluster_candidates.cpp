#include "water/cluster_candidates.h"

#include <algorithm>
#include <cmath>

#include "foundation/foundation.h"

namespace ParticleMover {

namespace {
// The index never grows beyond this many cells a side; cells grow instead.
constexpr int largestSide = 512;
// Cells a little wider than the reach, so that rounding never puts two particles in reach two cells apart.
constexpr float cellMargin = 1.001f;

// The same squared distance as lengthSquared(a - b), worked the same way.
float distanceSquared(const Vector2D& a, const Vector2D& b) {
    TRACE_LOCATION("ParticleMover::distanceSquared");
    const double x = a.x - b.x;
    const double y = a.y - b.y;
    return static_cast<float>(x * x + y * y);
}

int clampedCell(float offset, float cellSize, int cells) {
    TRACE_LOCATION("ParticleMover::clampedCell");
    const float cell = std::floor(offset / cellSize);
    if (!(cell > 0.0f)) return 0;
    return cell >= static_cast<float>(cells - 1) ? cells - 1 : static_cast<int>(cell);
}
}  // namespace

ClusterCandidates::ClusterCandidates(const std::vector<Particle*>& candidates, float reach)
    : order(candidates),
      taken(candidates.size(), 0),
      cellNext(candidates.size(), -1),
      cellPrevious(candidates.size(), -1),
      cellOfCandidate(candidates.size(), 0),
      cellSize(std::max(reach * cellMargin, 1.0f)),
      remaining(static_cast<int>(candidates.size())) {
    TRACE_LOCATION("ClusterCandidates::ClusterCandidates");
    queued.assign(candidates.size() / 64 + 1, 0);
    buildIndex();
}

void ClusterCandidates::buildIndex() {
    TRACE_LOCATION("ClusterCandidates::buildIndex");
    Vector2D low(INFINITY, INFINITY);
    Vector2D high(-INFINITY, -INFINITY);
    for (const Particle* particle : order) {
        low = Vector2D(std::fmin(low.x, particle->position.x), std::fmin(low.y, particle->position.y));
        high = Vector2D(std::fmax(high.x, particle->position.x), std::fmax(high.y, particle->position.y));
    }
    if (!(low.x <= high.x && low.y <= high.y)) low = high = Vector2D();
    origin = low;
    const float widest = std::fmax(high.x - low.x, high.y - low.y);
    if (widest / cellSize > static_cast<float>(largestSide - 1)) cellSize = widest / (largestSide - 1);
    if (!std::isfinite(cellSize)) cellSize = 1.0f;
    columns = clampedCell(high.x - low.x, cellSize, largestSide) + 1;
    rows = clampedCell(high.y - low.y, cellSize, largestSide) + 1;
    cellFirst.assign(static_cast<size_t>(columns) * rows, -1);
    for (int i = static_cast<int>(order.size()) - 1; i >= 0; --i) link(i);
}

int ClusterCandidates::cellOf(const Vector2D& position) const {
    TRACE_LOCATION("ClusterCandidates::cellOf");
    return clampedCell(position.x - origin.x, cellSize, columns) * rows +
           clampedCell(position.y - origin.y, cellSize, rows);
}

void ClusterCandidates::link(int candidate) {
    TRACE_LOCATION("ClusterCandidates::link");
    const int cell = cellOf(order[candidate]->position);
    cellOfCandidate[candidate] = cell;
    cellNext[candidate] = cellFirst[cell];
    if (cellFirst[cell] >= 0) cellPrevious[cellFirst[cell]] = candidate;
    cellFirst[cell] = candidate;
}

void ClusterCandidates::take(int candidate) {
    TRACE_LOCATION("ClusterCandidates::take");
    taken[candidate] = 1;
    --remaining;
    const int previous = cellPrevious[candidate];
    const int next = cellNext[candidate];
    if (previous >= 0)
        cellNext[previous] = next;
    else
        cellFirst[cellOfCandidate[candidate]] = next;
    if (next >= 0) cellPrevious[next] = previous;
}

bool ClusterCandidates::empty() const {
    TRACE_LOCATION("ClusterCandidates::empty");
    return remaining == 0;
}

Particle* ClusterCandidates::takeFirst() {
    TRACE_LOCATION("ClusterCandidates::takeFirst");
    while (first < static_cast<int>(order.size()) && taken[first]) ++first;
    if (first == static_cast<int>(order.size())) return nullptr;
    take(first);
    return order[first];
}

void ClusterCandidates::findNear(const Vector2D& position, int after, float radius) {
    TRACE_LOCATION("ClusterCandidates::findNear");
    const float radiusSquared = radius * radius;
    const int reach = static_cast<int>(std::ceil(radius / cellSize));
    const int centreX = clampedCell(position.x - origin.x, cellSize, columns);
    const int centreY = clampedCell(position.y - origin.y, cellSize, rows);
    for (int x = std::max(centreX - reach, 0); x <= std::min(centreX + reach, columns - 1); ++x) {
        for (int y = std::max(centreY - reach, 0); y <= std::min(centreY + reach, rows - 1); ++y) {
            for (int candidate = cellFirst[x * rows + y]; candidate >= 0;) {
                const int next = cellNext[candidate];
                if (candidate > after &&
                    distanceSquared(order[candidate]->position, position) <= radiusSquared) {
                    take(candidate);
                    enqueue(candidate);
                }
                candidate = next;
            }
        }
    }
}

void ClusterCandidates::enqueue(int candidate) {
    TRACE_LOCATION("ClusterCandidates::enqueue");
    queued[candidate >> 6] |= uint64_t{1} << (candidate & 63);
    ++queuedCount;
}

// Candidates are queued only beyond the last one taken from the queue, so one
// forward sweep of the bits finds them all in order.
int ClusterCandidates::nextQueued() {
    TRACE_LOCATION("ClusterCandidates::nextQueued");
    if (queuedCount == 0) {
        queueSweep = 0;
        return -1;
    }
    size_t word = static_cast<size_t>(queueSweep) >> 6;
    uint64_t bits = queued[word] & (~uint64_t{0} << (queueSweep & 63));
    while (bits == 0) bits = queued[++word];
    const int candidate = static_cast<int>(word * 64 + static_cast<size_t>(__builtin_ctzll(bits)));
    queued[word] &= ~(uint64_t{1} << (candidate & 63));
    --queuedCount;
    queueSweep = candidate + 1;
    return candidate;
}

// A candidate joins when some particle already in the group is within reach.
// The members present at the start reach every candidate; one that joins reaches
// only those after it, since the pass has gone by the others. Taking the queued
// candidates earliest first is therefore the same as the pass in list order.
void groupParticles(std::vector<Particle*>& group, ClusterCandidates& candidates, float radius) {
    TRACE_LOCATION("ParticleMover::groupParticles");
    const size_t founders = group.size();
    for (size_t i = 0; i < founders; ++i) candidates.findNear(group[i]->position, -1, radius);
    for (int joined = candidates.nextQueued(); joined >= 0; joined = candidates.nextQueued()) {
        group.push_back(candidates.order[joined]);
        candidates.findNear(candidates.order[joined]->position, joined, radius);
    }
}

void getGroupCenter(const std::vector<Particle*>& group, Vector2D& centre) {
    TRACE_LOCATION("ParticleMover::getGroupCenter");
    if (group.empty()) return;
    Vector2D sum;
    for (const Particle* particle : group) sum += particle->position;
    centre = sum / static_cast<float>(group.size());
}

}  // namespace ParticleMover
