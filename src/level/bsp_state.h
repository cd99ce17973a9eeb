// The BSP tree's file-level state, shared by its source files only.
#pragma once

#include <list>

#include "level/level.h"

namespace LevelBspTree {

constexpr int testRayCount = 256;
constexpr int testCastIterations = 2048;

struct State {
    BspNode* root = nullptr;
    BspNode* cursor = nullptr;
    bool nodeDraw = false, splitDraw = false, castDraw = false, walkDraw = false;
    Vector2D testRayStart[testRayCount];
    Vector2D testRayEnd[testRayCount];
};
State& state();

// The tree's commands come with the tree and go with it.
void registerCommands();
void removeCommands();

}  // namespace LevelBspTree

namespace LevelBspTree::Build {

using NodeList = std::list<BspNode*>;

void buildInitialNodeList(NodeList& list);
void optimiseInitialNodeList(NodeList& list);
void removeCaulkNodes(NodeList& list);
// The end of the list when it is empty.
NodeList::iterator choosePartitionNode(NodeList& list);
void bspPartition(BspNode* node, NodeList& list);

}  // namespace LevelBspTree::Build
