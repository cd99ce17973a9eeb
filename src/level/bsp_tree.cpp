// The life of the level's BSP tree: building it from the level's polygons,
// resetting it and tearing it down.
#include "console/console.h"
#include "level/bsp_state.h"

namespace LevelBspTree {
State& state() {
    return singleInstance<State>();
}
}  // namespace LevelBspTree

namespace {

using LevelBspTree::state;

void clearDebugFlags() {
    LevelBspTree::State& s = state();
    s.nodeDraw = s.splitDraw = s.castDraw = s.walkDraw = false;
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
        state().root = *chosen;
        list.erase(chosen);
        Build::bspPartition(state().root, list);
    }
    clock.update();
    GLConsole::print("\nBsp Tree created in ");
    GLConsole::print(clock.deltaSeconds);
    GLConsole::print(" seconds.");
    state().cursor = state().root;
}

void clear() {
    TRACE_LOCATION("LevelBspTree::clear");
    deleteSubtree(state().root);
    state().root = nullptr;
    state().cursor = nullptr;
    removeCommands();
}

void resetTree() {
    TRACE_LOCATION("LevelBspTree::resetTree");
    clearDebugFlags();
    inOrder(state().root, [](BspNode* node) { node->collideable = true; });
}

void getNodeList(std::vector<BspNode*>& nodes) {
    TRACE_LOCATION("LevelBspTree::getNodeList");
    inOrder(state().root, [&nodes](BspNode* node) { nodes.push_back(node); });
}

BspNode* getRoot() {
    TRACE_LOCATION("LevelBspTree::getRoot");
    return state().root;
}

}  // namespace LevelBspTree
