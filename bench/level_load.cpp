// Loading levels: one polygon of 2,000 points, and 10,000 edges. Each includes
// reading, triangulation, the BSP tree build and the node map (Level::load).
#include <benchmark/benchmark.h>
#include <unistd.h>

#include "console/console.h"
#include "level_fixture.h"
#include "level_tools/level_tools.h"

namespace {

void loadRepeatedly(benchmark::State& state, const LevelFile& level) {
    LevelBench::Folder folder;
    folder.write("maps/load.rill", LevelFileFormat::write(level));
    for (auto _ : state) {
        if (!Level::load("maps/load.rill")) state.SkipWithError("level did not load");
        state.PauseTiming();
        state.counters["triangles"] = static_cast<double>(Level::getPolygons().front().triangleCount);
        state.counters["bspNodes"] = LevelBspTree::conCmdBspSize();
        Level::clear();
        state.ResumeTiming();
    }
}

void LoadPolygonOf2000Points(benchmark::State& state) {
    loadRepeatedly(state, LevelBench::wavyDisc(2000, 3000));
}
void LoadLevelOf10000Edges(benchmark::State& state) {
    loadRepeatedly(state, LevelBench::gridOfSquares(10000));
}

// What triangulating after every point would cost, on a smaller outline.
void AddPointOneByOne(benchmark::State& state) {
    const LevelFile level = LevelBench::wavyDisc(static_cast<int>(state.range(0)), 3000);
    for (auto _ : state) {
        Polygon2D polygon;
        for (const LevelPoint& p : level.polygons[0].points)
            polygon.addPoint(static_cast<float>(p.x), static_cast<float>(p.y));
        benchmark::DoNotOptimize(polygon.triangleCount);
    }
}

void AddPointsAtOnce(benchmark::State& state) {
    const LevelFile level = LevelBench::wavyDisc(static_cast<int>(state.range(0)), 3000);
    std::vector<Vector2D> points;
    for (const LevelPoint& p : level.polygons[0].points)
        points.emplace_back(static_cast<float>(p.x), static_cast<float>(p.y));
    for (auto _ : state) {
        Polygon2D polygon;
        polygon.addPoints(points);
        benchmark::DoNotOptimize(polygon.triangleCount);
    }
}

BENCHMARK(LoadPolygonOf2000Points)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(LoadLevelOf10000Edges)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(AddPointOneByOne)->Arg(200)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(AddPointsAtOnce)->Arg(200)->Unit(benchmark::kMillisecond);

}  // namespace
