#include "console/console_state.h"
#include "level/bsp_state.h"
#include "level/level_state.h"
#include "support/level_fixtures.h"

namespace {

class BspTest : public LevelTest {
protected:
    static std::vector<BspNode*> nodes() {
        std::vector<BspNode*> list;
        LevelBspTree::getNodeList(list);
        return list;
    }
    // Nodes with a piece lying on the segment x = 100, 0 < y < 100.
    static int nodesOnSharedSide() {
        int count = 0;
        for (const BspNode* node : nodes())
            if (std::fabs(node->start.x - 100) < 0.01f && std::fabs(node->end.x - 100) < 0.01f) ++count;
        return count;
    }
};

const char* const twoSquares =
    "polygon id 1\n0 0\n100 0\n100 100\n0 100\nend\n"
    "polygon id 2\n100 0\n200 0\n200 100\n100 100\nend\n";

// Nearest crossing with any collideable edge, tested edge by edge.
float bruteForceHitDistance(const Vector2D& start, const Vector2D& end) {
    float best = INFINITY;
    std::vector<BspNode*> list;
    LevelBspTree::getNodeList(list);
    for (const BspNode* node : list) {
        if (!node->collideable || !edgesCross(start, end, node->start, node->end)) continue;
        Vector2D hit;
        lineIntersection(start, end, node->start, node->end, hit);
        best = std::min(best, distance(start, hit));
    }
    return best;
}

}  // namespace

TEST_F(BspTest, OneSquareGivesFourNodesWithNormalsIntoTheSolidInEitherWinding) {
    for (const char* text : {"polygon\n0 0\n0 100\n100 100\n100 0\nend\n", squareText}) {
        load(text);
        EXPECT_EQ(LevelBspTree::conCmdBspSize(), 4);
        EXPECT_LE(LevelBspTree::conCmdBspDepth(), 4);
        for (const BspNode* node : nodes()) {
            // The square's centre is solid: positive side of every edge.
            EXPECT_GT(node->signedDistance(Vector2D(50, 50)), 0.0f);
            EXPECT_EQ(node->polygon, &Level::getPolygons().front());
            EXPECT_FLOAT_EQ(node->length, 100.0f);
        }
        ASSERT_EQ(Level::state().polyNodeMap.size(), 1u);
        EXPECT_EQ(Level::state().polyNodeMap.begin()->second.size(), 4u);
    }
}

TEST_F(BspTest, RaysHitTheNearestEdgeEndExactlyOnCornersAndFromAnEdgeReturnItClamped) {
    load(squareText);
    Vector2D miss(-50, -60);
    EXPECT_EQ(LevelBspTree::raycast(Vector2D(-50, 50), miss), nullptr);
    EXPECT_EQ(miss, Vector2D(-50, -60));
    Vector2D same(-50, 50);
    EXPECT_EQ(LevelBspTree::raycast(Vector2D(-50, 50), same), nullptr);
    Vector2D end(-100, 50);
    BspNode* hit = LevelBspTree::raycast(Vector2D(0, 50), end);
    ASSERT_NE(hit, nullptr);
    EXPECT_FLOAT_EQ(hit->start.x, 0.0f);
    EXPECT_FLOAT_EQ(hit->end.x, 0.0f);
    EXPECT_NEAR(end.y, 50.0f, 1e-4);
    Vector2D nearCorner(-100, 0.01f);
    hit = LevelBspTree::raycast(Vector2D(0.01f, 0.01f), nearCorner);
    ASSERT_NE(hit, nullptr);
    EXPECT_NEAR(distance(nearCorner, Vector2D(0, 0)), 0.025f, 1e-4);
    // A ray ending on an edge's line crosses it only from the free side.
    Vector2D fromInside(50, 0);
    EXPECT_EQ(LevelBspTree::raycast(Vector2D(50, 50), fromInside), nullptr);
    Vector2D fromOutside(50, 0);
    ASSERT_NE(LevelBspTree::raycast(Vector2D(50, -50), fromOutside), nullptr);
    EXPECT_EQ(fromOutside, Vector2D(50, 0));
    // A ray aimed exactly at a corner ends exactly on it, whichever edge it names.
    const std::pair<Vector2D, Vector2D> cases[] = {
        {{-50, -50}, {0, 0}}, {{150, -30}, {100, 0}}, {{130, 170}, {100, 100}}, {{-7, 103}, {0, 100}}};
    for (const auto& [start, corner] : cases) {
        Vector2D aimed = corner + (corner - start);
        const BspNode* named = LevelBspTree::raycast(start, aimed);
        ASSERT_NE(named, nullptr);
        EXPECT_EQ(aimed, corner);
        EXPECT_TRUE(named->start == corner || named->end == corner);
    }
}

TEST_F(BspTest, RaysAgreeWithTestingEveryEdge) {
    std::string text;
    for (int i = 0; i < 12; ++i) {
        const int x = (i % 4) * 150 + (i * 37) % 40, y = (i / 4) * 150 + (i * 53) % 40;
        text += "polygon\n" + std::to_string(x) + " " + std::to_string(y) + "\n" + std::to_string(x + 90) +
                " " + std::to_string(y + 10) + "\n" + std::to_string(x + 60) + " " + std::to_string(y + 80) +
                "\n" + std::to_string(x + 20) + " " + std::to_string(y + 40) + "\nend\n";
    }
    load(text);
    setRandomSeed(99);
    int hits = 0;
    for (int ray = 0; ray < 2000; ++ray) {
        const Vector2D start(static_cast<float>(randomUnit() * 700 - 50),
                             static_cast<float>(randomUnit() * 550 - 50));
        const Vector2D target(static_cast<float>(randomUnit() * 700 - 50),
                              static_cast<float>(randomUnit() * 550 - 50));
        Vector2D end = target;
        BspNode* hit = LevelBspTree::raycast(start, end);
        const float expected = bruteForceHitDistance(start, target);
        if (!hit) {
            EXPECT_TRUE(std::isinf(expected)) << ray;
            continue;
        }
        ++hits;
        if (std::fabs(hit->signedDistance(start)) <= 0.025f) continue;  // started on an edge
        EXPECT_NEAR(distance(start, end), expected, 1e-2) << ray;
    }
    EXPECT_GT(hits, 200);
}

TEST_F(BspTest, ACollideableSwitchKeepsTheNodesAndResetBringsPolygonsBack) {
    load(std::string(squareText) + "polygon id 2\n300 0\n400 0\n400 100\nend\n");
    Polygon2D& square = Level::getPolygons().front();
    Level::setPolygonCollideable(&square, false);
    EXPECT_FALSE(square.collideable);
    Vector2D end(150, 50);
    EXPECT_EQ(LevelBspTree::raycast(Vector2D(-50, 50), end), nullptr);
    EXPECT_EQ(LevelBspTree::conCmdBspSize(), 7);  // still in the tree
    square.present = false;
    square.offset = Vector2D(5, 5);
    square.previousOffset = Vector2D(3, 3);
    LevelBspTree::state().nodeDraw = true;
    Level::state().drawTriangles = true;
    Level::reset();
    end = Vector2D(150, 50);
    EXPECT_NE(LevelBspTree::raycast(Vector2D(-50, 50), end), nullptr);
    EXPECT_EQ(std::tuple(square.present, square.offset, square.previousOffset, LevelBspTree::state().nodeDraw,
                         Level::state().drawTriangles),
              std::tuple(true, Vector2D(), Vector2D(), false, false));
    // A polygon without nodes changes its own flag only.
    Polygon2D loose;
    Level::setPolygonCollideable(&loose, false);
    EXPECT_FALSE(loose.collideable);
}

TEST_F(BspTest, WalkMovesTheCursorAndSaysWhatIsPossible) {
    load(squareText);
    LevelBspTree::conCmdBspWalk(" root ");
    EXPECT_EQ(console.take().rfind("\nAlready at root node.\nWalk options for current node: ", 0), 0u);
    LevelBspTree::conCmdBspWalk("parent");
    EXPECT_EQ(console.take().rfind("\nNo parent node at current node.", 0), 0u);
    LevelBspTree::conCmdBspWalk("sideways");
    EXPECT_EQ(console.take(), std::string("\nUnrecognised tree walk command. Valid commands are: \n") +
                                  "\nBspWalk LEFT\nBspWalk RIGHT\nBspWalk PARENT\nBspWalk ROOT\n" +
                                  "\nWalk options for current node: " +
                                  (LevelBspTree::getRoot()->negativeChild ? "LEFT " : "") +
                                  (LevelBspTree::getRoot()->positiveChild ? "RIGHT " : ""));
    const bool right = LevelBspTree::getRoot()->positiveChild != nullptr;
    LevelBspTree::conCmdBspWalk(right ? "RIGHT" : "LEFT");
    const std::string options = console.take();
    EXPECT_EQ(options.rfind("\nWalk options for current node: ROOT PARENT ", 0), 0u) << options;
    LevelBspTree::conCmdBspWalk("ROOT");
    EXPECT_EQ(console.take().rfind("\nWalk options for current node: ", 0), 0u);
    Level::clear();
    EXPECT_EQ(std::tuple(LevelBspTree::conCmdBspSize(), LevelBspTree::conCmdBspDepth()), std::tuple(0, 0));
    console.take();
    LevelBspTree::conCmdBspWalk("ROOT");
    EXPECT_EQ(console.take(), "") << "a cleared tree has nothing to walk";
}

TEST_F(BspTest, CastReportsAndDebugDrawingWithoutAContextDrawsNothingAndKeepsTheSwitches) {
    load(squareText);
    for (const char* bad : {"0", "1 x", "", "1 2 3"}) {
        LevelBspTree::conCmdBspCast(bad);
        EXPECT_EQ(console.take(), "\nUSAGE: BspCast < number > < number >") << bad;
    }
    ManualClock clock;
    LevelBspTree::conCmdBspCast("-20 50");
    const std::string report = console.take();
    EXPECT_NE(report.find("Test ray cast results"), std::string::npos);
    EXPECT_NE(report.find("\nTest cast rays:              256\nTest cast iterations:        2048\n"
                          "Total rays cast:             524288\nSeconds taken:               "),
              std::string::npos)
        << report;
    EXPECT_NE(report.find("\nRays per second (average):   "), std::string::npos);
    LevelBspTree::State& tree = LevelBspTree::state();
    tree.nodeDraw = tree.splitDraw = tree.walkDraw = tree.castDraw = true;
    LevelBspTree::debugDraw();
    Level::getPolygons().front().drawOutline();
    Level::getPolygons().front().drawTrianglesOutline();
    EXPECT_TRUE(tree.castDraw);
}
