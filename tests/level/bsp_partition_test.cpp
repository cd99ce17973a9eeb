#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>

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

}  // namespace

TEST(BspPartitionChoice, SameWinnerAsTryingEveryCandidatePlainly) {
    setRandomSeed(4321);
    for (int round = 0; round < 40; ++round) {
        NodeList list;
        const int n = 2 + static_cast<int>(randomBits() % 300);
        for (int i = 0; i < n; ++i) {
            const float x = static_cast<float>(randomBits() % 40) * 5, y = static_cast<float>(randomBits() % 40) * 5;
            const float length = static_cast<float>(1 + randomBits() % 6) * 5;
            switch (randomBits() % 5) {
                case 0: list.push_back(edge(x, y, x + length, y)); break;
                case 1: list.push_back(edge(x, y, x, y - length)); break;
                case 2: list.push_back(edge(x + length, y, x, y)); break;
                case 3: list.push_back(edge(x, y, x, y + length)); break;
                default: list.push_back(edge(x, y, x + length, y + length * 0.5f)); break;
            }
        }
        const std::size_t expected = plainChoice(list);
        const auto chosen = LevelBspTree::Build::choosePartitionNode(list);
        EXPECT_EQ(static_cast<std::size_t>(std::distance(list.begin(), chosen)), expected) << "round " << round;
        for (BspNode* node : list) delete node;
    }
}

TEST(BspPartitionChoice, EmptyAndSingleLists) {
    NodeList empty;
    EXPECT_EQ(LevelBspTree::Build::choosePartitionNode(empty), empty.end());
    NodeList one{edge(0, 0, 1, 0)};
    EXPECT_EQ(LevelBspTree::Build::choosePartitionNode(one), one.begin());
    delete one.front();
}
