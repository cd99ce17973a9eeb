// The life of the level's BSP tree: building it from the level's polygons,
// resetting it and tearing it down.
#include "console/console.h"
#include "level/bsp_state.h"

namespace LevelBspTree::State {
BspNode* root = nullptr;
BspNode* cursor = nullptr;
bool nodeDraw = false, splitDraw = false, castDraw = false, walkDraw = false;
Vector2D testRayStart[testRayCount];
Vector2D testRayEnd[testRayCount];
}  // namespace LevelBspTree::State

namespace {

using namespace LevelBspTree::State;

void clearDebugFlags() {
    nodeDraw = splitDraw = castDraw = walkDraw = false;
}

// Children before their parent, without recursion: trees of long edge chains are deep.
void deleteSubtree(BspNode* node) {
    std::vector<BspNode*> pending;
    if (node) pending.push_back(node);
    while (!pending.empty()) {
        BspNode* next = pending.back();
        pending.pop_back();
        if (next->negativeChild) pending.push_back(next->negativeChild);
        if (next->positiveChild) pending.push_back(next->positiveChild);
        delete next;
    }
}

// Negative subtree, node, positive subtree.
template <typename Visit>
void inOrder(BspNode* node, Visit&& visit) {
    std::vector<BspNode*> pending;
    while (node || !pending.empty()) {
        while (node) {
            pending.push_back(node);
            node = node->negativeChild;
        }
        node = pending.back();
        pending.pop_back();
        visit(node);
        node = node->positiveChild;
    }
}

}  // namespace

namespace LevelBspTree {

void create() {
    TRACE_LOCATION("LevelBspTree::create");
    clear();
    FrameClock clock;
    clock.update();
    clearDebugFlags();
    GLConsole::print("\nCreating the level bsp tree...");
    registerCommands();

    Build::NodeList list;
    Build::buildInitialNodeList(list);
    if (list.empty()) return;
    Build::optimiseInitialNodeList(list);
    Build::removeCaulkNodes(list);
    auto chosen = Build::choosePartitionNode(list);
    if (chosen != list.end()) {
        root = *chosen;
        list.erase(chosen);
        Build::bspPartition(root, list);
    }
    clock.update();
    GLConsole::print("\nBsp Tree created in ");
    GLConsole::print(clock.deltaSeconds);
    GLConsole::print(" seconds.");
    cursor = root;
}

void clear() {
    TRACE_LOCATION("LevelBspTree::clear");
    deleteSubtree(root);
    root = nullptr;
    cursor = nullptr;
    removeCommands();
}

void resetTree() {
    TRACE_LOCATION("LevelBspTree::resetTree");
    clearDebugFlags();
    inOrder(root, [](BspNode* node) { node->collideable = true; });
}

void getNodeList(std::vector<BspNode*>& nodes) {
    TRACE_LOCATION("LevelBspTree::getNodeList");
    inOrder(root, [&nodes](BspNode* node) { nodes.push_back(node); });
}

BspNode* getRoot() {
    TRACE_LOCATION("LevelBspTree::getRoot");
    return root;
}

}  // namespace LevelBspTree
