// Building the tree: every static edge that water can touch, oriented with its
// normal into the solid, then partitioned. The build may be slow (it runs while
// a level loads); the queries on the result must be fast.
#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <map>
#include <optional>
#include <tuple>

#include "level/bsp_state.h"

namespace LevelBspTree::Build {

constexpr float minimumLength = 0.01f;

// Fresh direction, normal and length from the node's own ends.
void orient(BspNode& node) {
    TRACE_LOCATION("LevelBspTree::Build::orient");
    node.direction = node.end - node.start;
    node.length = length(node.direction);
    normalise(node.direction);
    node.normal = Vector2D(-node.direction.y, node.direction.x);
}

namespace {

constexpr float touching = 0.01f;

BspNode* makeNode(const Vector2D& start, const Vector2D& end, const BspNode& like) {
    BspNode* node = new BspNode(like);
    node->start = start;
    node->end = end;
    node->parent = node->negativeChild = node->positiveChild = nullptr;
    return node;
}

bool near(const Vector2D& a, const Vector2D& b) {
    return std::fabs(a.x - b.x) <= touching && std::fabs(a.y - b.y) <= touching;
}

bool overlapsAlong(float projection, float edgeLength) {
    return projection >= 0.0001f && projection < edgeLength - 0.0001f;
}

bool insideAlong(float projection, float edgeLength) {
    return projection > 0.01f && projection < edgeLength - 0.01f;
}

// A copy of an edge over a part of its line; it keeps its direction and normal.
void appendPiece(std::vector<BspNode*>& pieces, const BspNode& from, const Vector2D& start,
                 const Vector2D& end) {
    BspNode* piece = makeNode(start, end, from);
    piece->length = distance(start, end);
    pieces.push_back(piece);
}

// Each end of the other edge that lies inside the edge (given by where it lies
// along it) adds a piece of the edge, from that end to the edge's opposite end.
void appendOutside(std::vector<BspNode*>& pieces, const BspNode& edge, const BspNode& other,
                   float otherStartAlong, float otherEndAlong) {
    if (insideAlong(otherStartAlong, edge.length)) appendPiece(pieces, edge, other.start, edge.end);
    if (insideAlong(otherEndAlong, edge.length)) appendPiece(pieces, edge, edge.start, other.end);
}

// Edges on one line that overlap are replaced by what sticks out of each other.
bool cutOverlap(std::vector<BspNode*>& pieces, const BspNode& a, const BspNode& b) {
    if (std::fabs(a.signedDistance(b.start)) >= touching || std::fabs(a.signedDistance(b.end)) >= touching)
        return false;
    const float aStartOnB = dot(a.start - b.start, b.direction);
    const float aEndOnB = dot(a.end - b.start, b.direction);
    const float bStartOnA = dot(b.start - a.start, a.direction);
    const float bEndOnA = dot(b.end - a.start, a.direction);
    if (!overlapsAlong(aStartOnB, b.length) && !overlapsAlong(aEndOnB, b.length) &&
        !overlapsAlong(bStartOnA, a.length) && !overlapsAlong(bEndOnA, a.length))
        return false;

    appendOutside(pieces, b, a, aStartOnB, aEndOnB);
    appendOutside(pieces, a, b, bStartOnA, bEndOnA);
    return true;
}

// As BspNode::signedDistance, from the offset of the point to the node's start.
float distanceTo(float dx, float dy, const Vector2D& normal) {
    return dot(Vector2D(dx, dy), normal);
}

bool isDestructable(const BspNode& node) {
    return node.polygon && node.polygon->destructable;
}

enum class PairOutcome { Kept, FirstRemoved, BothRemoved };

// What the pair does to the list: A goes in every action, B too unless A ran
// straight on into it. New pieces are appended to pieces.
PairOutcome resolvePair(BspNode& first, BspNode& second, std::vector<BspNode*>& pieces) {
    if (isDestructable(first) || isDestructable(second)) return PairOutcome::Kept;
    if (near(first.end, second.start) && near(first.start, second.end)) return PairOutcome::BothRemoved;
    if (near(first.end, second.start) && dot(first.direction, second.direction) > 0.9999f) {
        second.start = first.start;
        second.length += first.length;
        return PairOutcome::FirstRemoved;
    }
    return cutOverlap(pieces, first, second) ? PairOutcome::BothRemoved : PairOutcome::Kept;
}

// The list during optimisation: nodes in list order with removal marks, and
// their start points side by side for a quick test of every pair.
struct ScanList {
    std::vector<BspNode*> nodes;
    std::vector<char> removed;
    std::vector<float> startX, startY;

    void append(BspNode* node) {
        nodes.push_back(node);
        removed.push_back(0);
        startX.push_back(node->start.x);
        startY.push_back(node->start.y);
    }
    std::size_t nextLive(std::size_t i) const {
        do ++i;
        while (i < nodes.size() && removed[i]);
        return i;
    }
    void remove(std::size_t i) {
        delete nodes[i];
        removed[i] = 1;
    }
};

// Every action needs B's start by A's end or on A's line (the first test of
// each); a pair that passes neither is passed over without a closer look.
bool mayAct(const ScanList& scan, std::size_t b, const BspNode& first) {
    const float x = scan.startX[b], y = scan.startY[b];
    if (std::fabs(first.end.x - x) <= touching && std::fabs(first.end.y - y) <= touching) return true;
    return std::fabs(distanceTo(x - first.start.x, y - first.start.y, first.normal)) < touching;
}

// Compares A with each later node; true when A was removed and a moved on.
bool scanFrom(ScanList& scan, std::size_t& a) {
    BspNode& first = *scan.nodes[a];
    std::vector<BspNode*> pieces;
    for (std::size_t b = scan.nextLive(a); b < scan.nodes.size(); b = scan.nextLive(b)) {
        if (!mayAct(scan, b, first)) continue;
        const PairOutcome outcome = resolvePair(first, *scan.nodes[b], pieces);
        if (outcome == PairOutcome::Kept) continue;
        scan.startX[b] = scan.nodes[b]->start.x;
        scan.startY[b] = scan.nodes[b]->start.y;
        if (outcome == PairOutcome::BothRemoved) scan.remove(b);
        scan.remove(a);
        for (BspNode* piece : pieces) scan.append(piece);
        a = scan.nextLive(a);
        return true;
    }
    return false;
}

void classify(const BspNode& node, const BspNode& entry, float& d1, float& d2) {
    d1 = node.signedDistance(entry.start);
    d2 = node.signedDistance(entry.end);
}

// Splits an entry that straddles the node's line and files both parts.
void splitEntry(const BspNode& node, BspNode* entry, float d1, NodeList& positive, NodeList& negative) {
    Vector2D cut = entry->start;
    lineIntersection(entry->start, entry->end, node.start, node.end, cut);
    const float along = dot(cut - entry->start, entry->direction);
    if (along < 0.0f) cut = entry->start;
    if (along > entry->length) cut = entry->end;
    BspNode* head = makeNode(entry->start, cut, *entry);
    BspNode* tail = makeNode(cut, entry->end, *entry);
    delete entry;
    NodeList& headSide = d1 >= 0.0f ? positive : negative;
    NodeList& tailSide = d1 >= 0.0f ? negative : positive;
    for (auto [part, side] : {std::pair<BspNode*, NodeList*>{head, &headSide}, {tail, &tailSide}}) {
        orient(*part);
        if (part->length <= minimumLength) {
            delete part;
            continue;
        }
        side->push_back(part);
    }
}

// The ends of a list's nodes side by side, to score partition candidates.
//
// Upright and level edges are common in levels. For a candidate whose normal
// is exactly (0, +-1) or (+-1, 0) the sign of every signed distance depends on
// one coordinate of its start alone, so all candidates on one such line share
// one tally of the whole list; each then only takes its own part out again.
class PartitionScores {
public:
    explicit PartitionScores(const NodeList& list) {
        for (const BspNode* node : list) {
            starts.push_back(node->start);
            ends.push_back(node->end);
            normals.push_back(node->normal);
        }
    }
    std::size_t count() const { return starts.size(); }

    // |balance| + splits of candidate i over all other nodes, or limit as soon
    // as the rest of the list can no longer bring it below limit.
    long score(std::size_t i, long limit) {
        Tally tally;
        if (const auto key = lineKey(i)) {
            auto found = lineTallies.find(*key);
            if (found == lineTallies.end()) found = lineTallies.emplace(*key, tallyOver(i, 0, count())).first;
            tally = found->second;
            const Tally own = tallyOver(i, i, i + 1);
            tally.balance -= own.balance;
            tally.splits -= own.splits;
            return std::labs(tally.balance) + tally.splits;
        }
        const std::size_t n = count();
        constexpr std::size_t block = 64;
        for (std::size_t from = 0; from < n; from += block) {
            const std::size_t to = std::min(n, from + block);
            tally.add(tallyOver(i, from, std::min(to, i)));
            tally.add(tallyOver(i, std::max(from, i + 1), to));
            const long remaining = static_cast<long>(n - to);
            if (tally.splits + std::max(0L, std::labs(tally.balance) - remaining) >= limit) return limit;
        }
        return std::labs(tally.balance) + tally.splits;
    }

private:
    struct Tally {
        long balance = 0, splits = 0;
        void add(const Tally& other) {
            balance += other.balance;
            splits += other.splits;
        }
    };
    using LineKey = std::tuple<int, int, float>;

    std::optional<LineKey> lineKey(std::size_t i) const {
        const Vector2D normal = normals[i];
        if (normal.x == 0.0f && std::fabs(normal.y) == 1.0f)
            return LineKey{1, normal.y > 0 ? 1 : -1, starts[i].y};
        if (normal.y == 0.0f && std::fabs(normal.x) == 1.0f)
            return LineKey{0, normal.x > 0 ? 1 : -1, starts[i].x};
        return std::nullopt;
    }

    // Both ends on or in front: +1 balance; both behind: -1; else a split.
    Tally tallyOver(std::size_t i, std::size_t from, std::size_t to) const {
        const Vector2D start = starts[i], normal = normals[i];
        Tally tally;
        for (std::size_t j = from; j < to; ++j) {
            const float d1 = distanceTo(starts[j].x - start.x, starts[j].y - start.y, normal);
            const float d2 = distanceTo(ends[j].x - start.x, ends[j].y - start.y, normal);
            const bool front = d1 >= 0.0f && d2 >= 0.0f;
            const bool behind = d1 < 0.0f && d2 < 0.0f;
            tally.balance += static_cast<long>(front) - static_cast<long>(behind);
            tally.splits += static_cast<long>(!front && !behind);
        }
        return tally;
    }

    std::vector<Vector2D> starts, ends, normals;
    std::map<LineKey, Tally> lineTallies;
};

// A node still to be partitioned with the list that falls to it.
struct PendingPartition {
    BspNode* node;
    NodeList list;
};

// Chooses the child from its side's list and leaves the rest for later.
BspNode* takeChild(BspNode* parent, NodeList& list, std::vector<PendingPartition>& pending) {
    if (list.empty()) return nullptr;
    auto chosen = choosePartitionNode(list);
    BspNode* child = *chosen;
    list.erase(chosen);
    child->parent = parent;
    pending.push_back(PendingPartition{child, std::move(list)});
    return child;
}

void partitionOne(BspNode* node, NodeList& list, std::vector<PendingPartition>& pending) {
    NodeList positive, negative;
    for (BspNode* entry : list) {
        float d1, d2;
        classify(*node, *entry, d1, d2);
        if (d1 >= 0.0f && d2 >= -0.1f)
            positive.push_back(entry);
        else if (d1 < 0.0f && d2 < 0.1f)
            negative.push_back(entry);
        else
            splitEntry(*node, entry, d1, positive, negative);
    }
    list.clear();
    node->negativeChild = takeChild(node, negative, pending);
    node->positiveChild = takeChild(node, positive, pending);
}

}  // namespace

void buildInitialNodeList(NodeList& list) {
    TRACE_LOCATION("LevelBspTree::buildInitialNodeList");
    for (Polygon2D& polygon : Level::getPolygons()) {
        if (polygon.triangleCount == 0 || polygon.pointCount() < 2) continue;
        const bool caulk = !polygon.collideable && !polygon.visible;
        if (polygon.moveable || (!caulk && !polygon.collideable)) continue;
        for (BspNode& node : polygonEdges(polygon)) {
            node.caulk = caulk;
            list.push_front(new BspNode(node));
        }
    }
}

// Pieces cut from overlapping edges go to the end and are compared like any
// other node; after a removal the node behind A becomes the new A.
void optimiseInitialNodeList(NodeList& list) {
    TRACE_LOCATION("LevelBspTree::optimiseInitialNodeList");
    ScanList scan;
    for (BspNode* node : list) scan.append(node);
    std::size_t a = 0;
    while (a < scan.nodes.size()) {
        if (!scanFrom(scan, a)) a = scan.nextLive(a);
    }
    list.clear();
    for (std::size_t i = 0; i < scan.nodes.size(); ++i)
        if (!scan.removed[i]) list.push_back(scan.nodes[i]);
}

void removeCaulkNodes(NodeList& list) {
    TRACE_LOCATION("LevelBspTree::removeCaulkNodes");
    for (auto it = list.begin(); it != list.end();) {
        if ((*it)->caulk) {
            delete *it;
            it = list.erase(it);
        } else {
            ++it;
        }
    }
}

// Lowest |balance| + splits wins, the first on a tie.
NodeList::iterator choosePartitionNode(NodeList& list) {
    TRACE_LOCATION("LevelBspTree::choosePartitionNode");
    if (list.size() <= 1) return list.begin();
    PartitionScores scores(list);
    // A full score of a middle candidate first: later candidates are given up as
    // soon as they cannot reach it, which leaves the winner and its tie rule as
    // they would be without it.
    long best = scores.score(scores.count() / 2, LONG_MAX) + 1;
    std::size_t winner = 0;
    for (std::size_t i = 0; i < scores.count(); ++i) {
        const long score = scores.score(i, best);
        if (score < best) {
            best = score;
            winner = i;
        }
    }
    return std::next(list.begin(), static_cast<std::ptrdiff_t>(winner));
}

// Each side's list is partitioned on its own, so the subtrees can be built in
// any order: a stack of pending lists keeps the depth of a long chain of edges
// (a large convex outline) off the call stack.
void bspPartition(BspNode* node, NodeList& list) {
    TRACE_LOCATION("LevelBspTree::bspPartition");
    std::vector<PendingPartition> pending;
    pending.push_back(PendingPartition{node, std::move(list)});
    list.clear();
    while (!pending.empty()) {
        PendingPartition work = std::move(pending.back());
        pending.pop_back();
        partitionOne(work.node, work.list, pending);
    }
}

}  // namespace LevelBspTree::Build

namespace LevelBspTree {

std::vector<BspNode> polygonEdges(Polygon2D& polygon) {
    TRACE_LOCATION("LevelBspTree::polygonEdges");
    std::vector<BspNode> edges;
    const std::size_t n = polygon.pointCount();
    for (std::size_t i = 0; i < n; ++i) {
        const Vector2D from = polygon.point(i), to = polygon.point((i + 1) % n);
        BspNode node;
        node.start = polygon.clockwise ? from : to;
        node.end = polygon.clockwise ? to : from;
        Build::orient(node);
        if (node.length <= Build::minimumLength) continue;
        node.collideable = true;
        node.friction = polygon.friction;
        node.polygon = &polygon;
        edges.push_back(node);
    }
    return edges;
}

}  // namespace LevelBspTree
