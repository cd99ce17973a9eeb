// Building the tree: every static edge that water can touch, oriented with its
// normal into the solid, then partitioned. The build may be slow (it runs while
// a level loads); the queries on the result must be fast.
#include <climits>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

#include "level/bsp_state.h"

namespace LevelBspTree::Build {

namespace {

constexpr float minimumLength = 0.01f;
constexpr float touching = 0.01f;

BspNode* makeNode(const Vector2D& start, const Vector2D& end, const BspNode& like) {
    BspNode* node = new BspNode(like);
    node->start = start;
    node->end = end;
    node->parent = node->negativeChild = node->positiveChild = nullptr;
    return node;
}

// Fresh direction, normal and length from the node's own ends.
void orient(BspNode& node) {
    node.direction = node.end - node.start;
    node.length = length(node.direction);
    normalise(node.direction);
    node.normal = Vector2D(-node.direction.y, node.direction.x);
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
void appendPiece(NodeList& list, const BspNode& from, const Vector2D& start, const Vector2D& end) {
    BspNode* piece = makeNode(start, end, from);
    piece->length = distance(start, end);
    list.push_back(piece);
}

// Edges on one line that overlap are replaced by what sticks out of each other.
bool cutOverlap(NodeList& list, const BspNode& a, const BspNode& b) {
    if (std::fabs(a.signedDistance(b.start)) >= touching || std::fabs(a.signedDistance(b.end)) >= touching)
        return false;
    const float aStartOnB = dot(a.start - b.start, b.direction);
    const float aEndOnB = dot(a.end - b.start, b.direction);
    const float bStartOnA = dot(b.start - a.start, a.direction);
    const float bEndOnA = dot(b.end - a.start, a.direction);
    if (!overlapsAlong(aStartOnB, b.length) && !overlapsAlong(aEndOnB, b.length) &&
        !overlapsAlong(bStartOnA, a.length) && !overlapsAlong(bEndOnA, a.length))
        return false;

    const bool aStartIn = insideAlong(aStartOnB, b.length), aEndIn = insideAlong(aEndOnB, b.length);
    if (aStartIn && aEndIn) {
        appendPiece(list, b, a.start, b.end);
        appendPiece(list, b, b.start, a.end);
    } else if (aStartIn) {
        appendPiece(list, b, a.start, b.end);
    } else if (aEndIn) {
        appendPiece(list, b, b.start, a.end);
    }
    const bool bStartIn = insideAlong(bStartOnA, a.length), bEndIn = insideAlong(bEndOnA, a.length);
    if (bStartIn && bEndIn) {
        appendPiece(list, a, b.start, a.end);
        appendPiece(list, a, a.start, b.end);
    } else if (bStartIn) {
        appendPiece(list, a, b.start, a.end);
    } else if (bEndIn) {
        appendPiece(list, a, a.start, b.end);
    }
    return true;
}

// As BspNode::signedDistance, from the offset of the point to the node's start.
inline float distanceTo(float dx, float dy, const Vector2D& normal) {
    return static_cast<float>(static_cast<double>(dx) * normal.x + static_cast<double>(dy) * normal.y);
}

bool isDestructable(const BspNode& node) { return node.polygon && node.polygon->destructable; }

// Compares the pair; when it removes A, a moves on to the node behind it.
bool resolvePair(NodeList& list, NodeList::iterator& a, NodeList::iterator b) {
    BspNode* first = *a;
    BspNode* second = *b;
    if (isDestructable(*first) || isDestructable(*second)) return false;
    bool removeSecond = false;
    if (near(first->end, second->start) && near(first->start, second->end)) {
        removeSecond = true;  // one line traversed both ways
    } else if (near(first->end, second->start) && dot(first->direction, second->direction) > 0.9999f) {
        second->start = first->start;  // first runs straight on into second
        second->length += first->length;
    } else if (cutOverlap(list, *first, *second)) {
        removeSecond = true;
    } else {
        return false;
    }
    if (removeSecond) {
        list.erase(b);
        delete second;
    }
    a = list.erase(a);
    delete first;
    return true;
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

BspNode* takeChild(BspNode* parent, NodeList& list) {
    if (list.empty()) return nullptr;
    auto chosen = choosePartitionNode(list);
    BspNode* child = *chosen;
    list.erase(chosen);
    child->parent = parent;
    bspPartition(child, list);
    return child;
}

}  // namespace

void buildInitialNodeList(NodeList& list) {
    TRACE_LOCATION("LevelBspTree::buildInitialNodeList");
    for (Polygon2D& polygon : Level::getPolygons()) {
        if (polygon.triangleCount == 0 || polygon.pointCount() < 2) continue;
        const bool caulk = !polygon.collideable && !polygon.visible;
        if (polygon.moveable || (!caulk && !polygon.collideable)) continue;
        const std::size_t n = polygon.pointCount();
        for (std::size_t i = 0; i < n; ++i) {
            const Vector2D from = polygon.point(i), to = polygon.point((i + 1) % n);
            BspNode node;
            node.start = polygon.clockwise ? from : to;
            node.end = polygon.clockwise ? to : from;
            orient(node);
            if (node.length <= minimumLength) continue;
            node.collideable = true;
            node.caulk = caulk;
            node.friction = polygon.friction;
            node.polygon = &polygon;
            list.push_front(new BspNode(node));
        }
    }
}

void optimiseInitialNodeList(NodeList& list) {
    TRACE_LOCATION("LevelBspTree::optimiseInitialNodeList");
    auto a = list.begin();
    while (a != list.end()) {
        auto b = std::next(a);
        while (b != list.end()) {
            if (resolvePair(list, a, b))
                b = a == list.end() ? list.end() : std::next(a);
            else
                ++b;
        }
        if (a != list.end()) ++a;
    }
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

// Lowest |balance| + splits wins, the first on a tie. A candidate is given up
// as soon as the rest of the list could no longer bring it below the best.
NodeList::iterator choosePartitionNode(NodeList& list) {
    TRACE_LOCATION("LevelBspTree::choosePartitionNode");
    if (list.size() <= 1) return list.begin();
    const std::size_t n = list.size();
    std::vector<float> ends(n * 4);
    std::size_t k = 0;
    for (const BspNode* node : list) {
        ends[k++] = node->start.x;
        ends[k++] = node->start.y;
        ends[k++] = node->end.x;
        ends[k++] = node->end.y;
    }
    long best = LONG_MAX;
    auto winner = list.begin();
    auto candidate = list.begin();
    for (std::size_t i = 0; i < n; ++i, ++candidate) {
        const Vector2D start = (*candidate)->start, normal = (*candidate)->normal;
        long balance = 0, splits = 0;
        std::size_t remaining = n - 1;
        bool givenUp = false;
        for (std::size_t j = 0; j < n && !givenUp; ++j) {
            if (j == i) continue;
            const float d1 = distanceTo(ends[j * 4] - start.x, ends[j * 4 + 1] - start.y, normal);
            const float d2 = distanceTo(ends[j * 4 + 2] - start.x, ends[j * 4 + 3] - start.y, normal);
            if (d1 >= 0.0f && d2 >= 0.0f)
                ++balance;
            else if (d1 < 0.0f && d2 < 0.0f)
                --balance;
            else
                ++splits;
            --remaining;
            givenUp = splits + std::max(0L, std::labs(balance) - static_cast<long>(remaining)) >= best;
        }
        if (givenUp) continue;
        const long score = std::labs(balance) + splits;
        if (score < best) {
            best = score;
            winner = candidate;
        }
    }
    return winner;
}

void bspPartition(BspNode* node, NodeList& list) {
    TRACE_LOCATION("LevelBspTree::bspPartition");
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
    node->negativeChild = takeChild(node, negative);
    node->positiveChild = takeChild(node, positive);
}

}  // namespace LevelBspTree::Build
