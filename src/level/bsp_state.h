// The BSP tree's file-level state, shared by its source files only.
#pragma once

#include <list>

#include "level/level.h"

namespace LevelBspTree::State {

constexpr int testRayCount = 256;
constexpr int testCastIterations = 2048;

extern BspNode* root;
extern BspNode* cursor;
extern bool nodeDraw, splitDraw, castDraw, walkDraw;
extern Vector2D testRayStart[testRayCount];
extern Vector2D testRayEnd[testRayCount];

void registerCommands();
void removeCommands();

}  // namespace LevelBspTree::State

namespace LevelBspTree::Build {

using NodeList = std::list<BspNode*>;

void buildInitialNodeList(NodeList& list);
void optimiseInitialNodeList(NodeList& list);
void removeCaulkNodes(NodeList& list);
// The end of the list when it is empty.
NodeList::iterator choosePartitionNode(NodeList& list);
void bspPartition(BspNode* node, NodeList& list);

}  // namespace LevelBspTree::Build
