#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <iterator>

#include "level/bsp_state.h"

namespace {

using LevelBspTree::Build::NodeList;

// The partition choice written out plainly: every candidate against every other node.
std::size_t plainChoice(const NodeList& list) {
    long best = LONG_MAX;
    std::size_t winner = 0, index = 0;
    for (const BspNode* candidate : list) {
        long balance = 0, splits = 0;
        for (const BspNode* other : list) {
            if (other == candidate) continue;
            const float d1 = candidate->signedDistance(other->start);
            const float d2 = candidate->signedDistance(other->end);
            if (d1 >= 0.0f && d2 >= 0.0f)
                ++balance;
            else if (d1 < 0.0f && d2 < 0.0f)
                --balance;
            else
                ++splits;
        }
        if (std::labs(balance) + splits < best) {
            best = std::labs(balance) + splits;
            winner = index;
        }
        ++index;
    }
    return winner;
}

BspNode* edge(float x1, float y1, float x2, float y2) {
    BspNode* node = new BspNode;
    node->start = Vector2D(x1, y1);
    node->end = Vector2D(x2, y2);
    node->direction = node->end - node->start;
    node->length = length(node->direction);
    normalise(node->direction);
    node->normal = Vector2D(-node->direction.y, node->direction.x);
    return node;
}

// An edge on a grid of the given spacing, in one of five directions.
BspNode* randomEdge(float spacing, uint32_t cells, uint32_t lengths) {
    const float x = static_cast<float>(randomBits() % cells) * spacing,
                y = static_cast<float>(randomBits() % cells) * spacing;
    const float l = static_cast<float>(1 + randomBits() % lengths) * spacing;
    const Vector2D ends[5][2] = {{{x, y}, {x + l, y}},
                                 {{x + l, y}, {x, y}},
                                 {{x, y}, {x, y + l}},
                                 {{x, y + l}, {x, y}},
                                 {{x, y}, {x + l, y + l * 0.5f}}};
    const Vector2D* chosen = ends[randomBits() % 5];
    return edge(chosen[0].x, chosen[0].y, chosen[1].x, chosen[1].y);
}

}  // namespace

TEST(BspPartitionChoice, SameWinnerAsTryingEveryCandidatePlainlyAndForEmptyAndSingleLists) {
    setRandomSeed(4321);
    for (int round = 0; round < 40; ++round) {
        NodeList list;
        const int n = 2 + static_cast<int>(randomBits() % 300);
        for (int i = 0; i < n; ++i) list.push_back(randomEdge(5, 40, 6));
        const std::size_t expected = plainChoice(list);
        const auto chosen = LevelBspTree::Build::choosePartitionNode(list);
        EXPECT_EQ(static_cast<std::size_t>(std::distance(list.begin(), chosen)), expected)
            << "round " << round;
        for (BspNode* node : list) delete node;
    }
    NodeList empty;
    EXPECT_EQ(LevelBspTree::Build::choosePartitionNode(empty), empty.end());
    NodeList one{edge(0, 0, 1, 0)};
    EXPECT_EQ(LevelBspTree::Build::choosePartitionNode(one), one.begin());
    delete one.front();
}

namespace {

// The shared-edge pass written out plainly on a list, pair by pair.
bool nearPoint(const Vector2D& a, const Vector2D& b) {
    return std::fabs(a.x - b.x) <= 0.01f && std::fabs(a.y - b.y) <= 0.01f;
}

void plainPiece(NodeList& list, const BspNode& from, const Vector2D& start, const Vector2D& end) {
    BspNode* piece = new BspNode(from);
    piece->start = start;
    piece->end = end;
    piece->length = distance(start, end);
    list.push_back(piece);
}

bool plainCut(NodeList& list, const BspNode& a, const BspNode& b) {
    if (std::fabs(a.signedDistance(b.start)) >= 0.01f || std::fabs(a.signedDistance(b.end)) >= 0.01f)
        return false;
    const float p[4] = {dot(a.start - b.start, b.direction), dot(a.end - b.start, b.direction),
                        dot(b.start - a.start, a.direction), dot(b.end - a.start, a.direction)};
    const float l[4] = {b.length, b.length, a.length, a.length};
    bool overlap = false;
    for (int i = 0; i < 4; ++i) overlap = overlap || (p[i] >= 0.0001f && p[i] < l[i] - 0.0001f);
    if (!overlap) return false;
    bool in[4];
    for (int i = 0; i < 4; ++i) in[i] = p[i] > 0.01f && p[i] < l[i] - 0.01f;
    // The parts of each edge that stick out past the other's ends live on.
    if (in[0]) plainPiece(list, b, a.start, b.end);
    if (in[1]) plainPiece(list, b, b.start, a.end);
    if (in[2]) plainPiece(list, a, b.start, a.end);
    if (in[3]) plainPiece(list, a, a.start, b.end);
    return true;
}

void plainOptimise(NodeList& list) {
    auto a = list.begin();
    while (a != list.end()) {
        bool removed = false;
        for (auto b = std::next(a); b != list.end(); ++b) {
            BspNode& first = **a;
            BspNode& second = **b;
            bool both = false;
            if (nearPoint(first.end, second.start) && nearPoint(first.start, second.end)) {
                both = true;
            } else if (nearPoint(first.end, second.start) &&
                       dot(first.direction, second.direction) > 0.9999f) {
                second.start = first.start;
                second.length += first.length;
            } else if (plainCut(list, first, second)) {
                both = true;
            } else {
                continue;
            }
            if (both) {
                delete *b;
                list.erase(b);
            }
            delete *a;
            a = list.erase(a);
            removed = true;
            break;
        }
        if (!removed) ++a;
    }
}

}  // namespace

TEST(BspSharedEdges, SameResultAsComparingEveryPairPlainly) {
    setRandomSeed(777);
    int shortened = 0;
    for (int round = 0; round < 60; ++round) {
        NodeList fast, plain;
        const int n = 2 + static_cast<int>(randomBits() % 60);
        for (int i = 0; i < n; ++i) {
            fast.push_back(randomEdge(10, 6, 3));
            plain.push_back(new BspNode(*fast.back()));
        }
        LevelBspTree::Build::optimiseInitialNodeList(fast);
        plainOptimise(plain);
        shortened += fast.size() < static_cast<std::size_t>(n);
        ASSERT_EQ(fast.size(), plain.size()) << "round " << round;
        for (auto f = fast.begin(), p = plain.begin(); f != fast.end(); ++f, ++p) {
            EXPECT_EQ((*f)->start, (*p)->start) << "round " << round;
            EXPECT_EQ((*f)->end, (*p)->end) << "round " << round;
            EXPECT_EQ((*f)->length, (*p)->length) << "round " << round;
        }
        for (BspNode* node : fast) delete node;
        for (BspNode* node : plain) delete node;
    }
    EXPECT_GT(shortened, 30);
}
