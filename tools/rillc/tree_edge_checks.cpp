// What the BSP tree keeps of each solid polygon's outline. The tree drops the
// parts of edges that lie against each other, so that water never tests edges
// it cannot reach: a side shared by two solids, or a solid's side against caulk
// outside it. The same rules cut a hole where the designer meant none:
//  - two solids that overlap with edges on one line running the same way lose
//    the overlap from both, and there is no solid left on the line;
//  - caulk inside a solid along its side cuts the side away;
//  - edges that run on almost straight (within 0.8 degrees) are joined into one
//    straight edge along the last one's direction, which on a smooth curve
//    leaves the outline far behind.
// Each is measured on the tree the game built: the outline is walked in short
// pieces, and a piece that no tree edge passes near, and that does not lie
// against another solid or caulk, is lost.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <unordered_map>

#include "level_checks.h"

namespace LevelChecks {

namespace {

// A piece of outline counts as kept when a tree edge passes within this
// distance: half a particle's radius.
constexpr float reach = 1.0f;
constexpr float pieceLength = 0.25f;
// An edge of a huge level is walked in no more pieces than this.
constexpr double mostPieces = 1024.0;
// Losses below a unit are rounding, not holes.
constexpr double smallestLoss = 1.0;

struct Segment {
    Vector2D start, end;
};

float distanceToSegment(const Vector2D& q, const Segment& s) {
    const Vector2D along = s.end - s.start;
    const float span = lengthSquared(along);
    float t = span > 0.0f ? dot(q - s.start, along) / span : 0.0f;
    t = std::clamp(t, 0.0f, 1.0f);
    return length(q - (s.start + along * t));
}

// The tree's edges, found by a grid of cells. An edge is what the water
// collides with: from its start along its direction for its length, which for
// edges joined into one is not where its end was.
class EdgeGrid {
public:
    explicit EdgeGrid(const std::vector<BspNode*>& nodes) {
        for (const BspNode* node : nodes) add({node->start, node->start + node->direction * node->length});
    }

    bool passesNear(const Vector2D& q) const {
        for (uint32_t i : everywhere)
            if (distanceToSegment(q, segments[i]) <= reach) return true;
        const auto found = cells.find(key(cellOf(q.x), cellOf(q.y)));
        if (found == cells.end()) return false;
        for (uint32_t i : found->second)
            if (distanceToSegment(q, segments[i]) <= reach) return true;
        return false;
    }

private:
    static constexpr float cell = 16.0f;
    static constexpr float stride = 8.0f;
    // Longer edges are tested against every piece rather than filed in cells.
    static constexpr float longest = 65536.0f;

    static int64_t cellOf(float v) {
        return static_cast<int64_t>(std::floor(std::clamp(v / cell, -2.0e9f, 2.0e9f)));
    }
    static uint64_t key(int64_t x, int64_t y) {
        return (static_cast<uint64_t>(static_cast<uint32_t>(x)) << 32) | static_cast<uint32_t>(y);
    }

    void add(const Segment& s) {
        const uint32_t id = static_cast<uint32_t>(segments.size());
        segments.push_back(s);
        const float span = length(s.end - s.start);
        if (!(span <= longest)) {
            everywhere.push_back(id);
            return;
        }
        const int steps = static_cast<int>(std::ceil(span / stride));
        const float margin = reach + stride;
        for (int k = 0; k <= steps; ++k) {
            const Vector2D p =
                s.start +
                (s.end - s.start) * (steps ? static_cast<float>(k) / static_cast<float>(steps) : 0.0f);
            for (int64_t x = cellOf(p.x - margin); x <= cellOf(p.x + margin); ++x)
                for (int64_t y = cellOf(p.y - margin); y <= cellOf(p.y + margin); ++y) {
                    std::vector<uint32_t>& list = cells[key(x, y)];
                    if (list.empty() || list.back() != id) list.push_back(id);
                }
        }
    }

    std::vector<Segment> segments;
    std::vector<uint32_t> everywhere;
    std::unordered_map<uint64_t, std::vector<uint32_t>> cells;
};

// A polygon whose edges enter the tree: a static solid, or caulk.
struct TreePolygon {
    std::size_t index;
    Polygon2D* polygon;
    bool caulk;
    std::vector<BspNode> edges;
    float minX, minY, maxX, maxY;
};

bool inside(const TreePolygon& shape, const Vector2D& q) {
    if (q.x < shape.minX || q.x > shape.maxX || q.y < shape.minY || q.y > shape.maxY) return false;
    return insideOutline(*shape.polygon, q);
}

// An edge of the other polygon on the edge's line that runs the same way and
// overlaps it. The tree cuts such a pair as if they ran opposite ways, which
// keeps the wrong pieces: of a long edge, little more than the overlap is left.
bool runsAlongSameWay(const TreePolygon& other, const BspNode& edge) {
    for (const BspNode& e : other.edges) {
        if (dot(e.direction, edge.direction) < 0.9999f) continue;
        if (std::fabs(edge.signedDistance(e.start)) > 0.05f || std::fabs(edge.signedDistance(e.end)) > 0.05f)
            continue;
        const float from = dot(e.start - edge.start, edge.direction), to = from + e.length;
        if (std::min(to, edge.length) - std::max(from, 0.0f) > 0.01f) return true;
    }
    return false;
}

struct Outline {
    double length = 0.0;
    double kept = 0.0;
    double ownLoss = 0.0;
    // Units lost where another polygon's edge runs along the same way, by that polygon.
    std::map<std::size_t, double> lostAlong;
};

Outline walkOutline(const TreePolygon& shape, const std::vector<TreePolygon>& all, const EdgeGrid& grid) {
    Outline outline;
    for (const BspNode& edge : shape.edges) {
        const auto along = std::find_if(all.begin(), all.end(), [&](const TreePolygon& other) {
            return other.polygon != shape.polygon && runsAlongSameWay(other, edge);
        });
        const double pieces =
            std::min(mostPieces, std::max(1.0, std::ceil(static_cast<double>(edge.length / pieceLength))));
        const double piece = static_cast<double>(edge.length) / pieces;
        outline.length += static_cast<double>(edge.length);
        for (double k = 0.5; k < pieces; k += 1.0) {
            const Vector2D q = edge.start + edge.direction * static_cast<float>(piece * k);
            if (grid.passesNear(q)) {
                outline.kept += piece;
                continue;
            }
            // Against another solid or caulk on the free side: dropped on purpose.
            const Vector2D free = q - edge.normal * 0.25f;
            if (std::any_of(all.begin(), all.end(), [&](const TreePolygon& other) {
                    return other.polygon != shape.polygon && inside(other, free);
                }))
                continue;
            if (along != all.end())
                outline.lostAlong[along->index] += piece;
            else
                outline.ownLoss += piece;
        }
    }
    return outline;
}

std::string units(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.0f", value);
    return text;
}

}  // namespace

void checkTreeEdges(Warnings& warnings) {
    std::vector<TreePolygon> all;
    std::size_t index = 0;
    for (Polygon2D& polygon : Level::getPolygons()) {
        const bool caulk = !polygon.collideable && !polygon.visible;
        const bool entersTree = polygon.triangleCount > 0 && polygon.pointCount() >= 2 && !polygon.moveable &&
                                (caulk || polygon.collideable);
        if (entersTree) {
            TreePolygon shape{index, &polygon, caulk, LevelBspTree::polygonEdges(polygon), 0, 0, 0, 0};
            shape.minX = *std::min_element(polygon.pointsX.begin(), polygon.pointsX.end());
            shape.maxX = *std::max_element(polygon.pointsX.begin(), polygon.pointsX.end());
            shape.minY = *std::min_element(polygon.pointsY.begin(), polygon.pointsY.end());
            shape.maxY = *std::max_element(polygon.pointsY.begin(), polygon.pointsY.end());
            all.push_back(std::move(shape));
        }
        ++index;
    }
    std::vector<BspNode*> nodes;
    LevelBspTree::getNodeList(nodes);
    const EdgeGrid grid(nodes);

    // Overlapping solids are told once a pair, on the later one.
    std::map<std::pair<std::size_t, std::size_t>, std::pair<double, double>> overlaps;
    std::map<std::size_t, const TreePolygon*> byIndex;
    for (const TreePolygon& shape : all) byIndex[shape.index] = &shape;
    for (const TreePolygon& shape : all) {
        if (shape.caulk) continue;
        const Outline outline = walkOutline(shape, all, grid);
        const std::string name = polygonName(shape.index, *shape.polygon);
        for (const auto& [other, lost] : outline.lostAlong) {
            if (lost < smallestLoss) continue;
            const TreePolygon& along = *byIndex[other];
            if (along.caulk) {
                warnings.add(polygonName(other, *along.polygon),
                             "this caulk lies inside solid " + name + " along its edges: the tree loses " +
                                 units(lost) + " units of " + name +
                                 "'s edges on those lines, and water falls "
                                 "through there");
            } else {
                auto& pair = overlaps[{std::min(other, shape.index), std::max(other, shape.index)}];
                (shape.index < other ? pair.first : pair.second) += lost;
            }
        }
        if (outline.ownLoss >= smallestLoss)
            warnings.add(name,
                         "edges that run on almost straight merge in the tree into straight edges "
                         "that leave the outline: the tree keeps " +
                             units(outline.kept) + " of its " + units(outline.length) +
                             " units of edge, and water passes through the rest");
    }
    for (const auto& [pair, lost] : overlaps) {
        const std::string first = polygonName(pair.first, *byIndex[pair.first]->polygon);
        const std::string second = polygonName(pair.second, *byIndex[pair.second]->polygon);
        warnings.add(second, "overlaps solid " + first +
                                 " with edges on one line that run the same way: the tree loses " +
                                 units(lost.first) + " units of " + first + "'s edges and " +
                                 units(lost.second) + " of " + second + "'s there, and water passes through");
    }
}

}  // namespace LevelChecks
