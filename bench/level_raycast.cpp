// Rays through the BSP tree against testing every edge, on a level of 5,000
// edges, with the same rays as the console's BspCast.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include "level_fixture.h"
#include "level_tools/level_tools.h"

namespace {

constexpr int edgeCount = 5000;
constexpr int rayCount = 256;

struct Rays {
    Vector2D start[rayCount];
    Vector2D end[rayCount];
};

Rays makeRays() {
    Rays rays;
    setRandomSeed(7);
    for (int i = 0; i < rayCount; ++i) {
        rays.start[i] = Vector2D(static_cast<float>((randomUnit() - 0.5) * 1600),
                                 static_cast<float>((randomUnit() - 0.5) * 1600));
        rays.end[i] = rays.start[i] + Vector2D(static_cast<float>((randomUnit() - 0.5) * 100000),
                                               static_cast<float>((randomUnit() - 0.5) * 100000));
    }
    return rays;
}

// Shortens the ray to its crossing with the edge, if any.
bool crossEdge(const Vector2D& a1, Vector2D& a2, const BspNode& node) {
    const Vector2D r = a2 - a1, s = node.end - node.start;
    const double denominator = static_cast<double>(r.x) * s.y - static_cast<double>(r.y) * s.x;
    if (denominator == 0.0) return false;
    const Vector2D q = node.start - a1;
    const double t = (static_cast<double>(q.x) * s.y - static_cast<double>(q.y) * s.x) / denominator;
    const double u = (static_cast<double>(q.x) * r.y - static_cast<double>(q.y) * r.x) / denominator;
    if (t < 0.0 || t > 1.0 || u < 0.0 || u > 1.0) return false;
    a2 = a1 + r * static_cast<float>(t);
    return true;
}

class RayLevel : public benchmark::Fixture {
public:
    void SetUp(benchmark::State&) override {
        folder = new LevelBench::Folder;
        folder->write("maps/rays.rill", LevelFileFormat::write(LevelBench::gridOfSquares(edgeCount)));
        Level::load("maps/rays.rill");
        LevelBspTree::getNodeList(nodes);
        rays = makeRays();
    }
    void TearDown(benchmark::State&) override {
        nodes.clear();
        Level::clear();
        delete folder;
    }

    LevelBench::Folder* folder = nullptr;
    std::vector<BspNode*> nodes;
    Rays rays;
};

BENCHMARK_DEFINE_F(RayLevel, BspTree)(benchmark::State& state) {
    for (auto _ : state) {
        for (int i = 0; i < rayCount; ++i) {
            Vector2D end = rays.end[i];
            benchmark::DoNotOptimize(LevelBspTree::raycast(rays.start[i], end));
        }
    }
    state.SetItemsProcessed(state.iterations() * rayCount);
    state.counters["edges"] = static_cast<double>(nodes.size());
}

BENCHMARK_DEFINE_F(RayLevel, EveryEdge)(benchmark::State& state) {
    for (auto _ : state) {
        for (int i = 0; i < rayCount; ++i) {
            Vector2D end = rays.end[i];
            const BspNode* hit = nullptr;
            for (const BspNode* node : nodes)
                if (crossEdge(rays.start[i], end, *node)) hit = node;
            benchmark::DoNotOptimize(hit);
        }
    }
    state.SetItemsProcessed(state.iterations() * rayCount);
    state.counters["edges"] = static_cast<double>(nodes.size());
}

BENCHMARK_REGISTER_F(RayLevel, BspTree)->Unit(benchmark::kMicrosecond);
BENCHMARK_REGISTER_F(RayLevel, EveryEdge)->Unit(benchmark::kMicrosecond);

}  // namespace
