#include "support/level_fixtures.h"
#include "water/water_state.h"

namespace {

class CircleCollisionTest : public LevelTest {
protected:
    void SetUp() override { load(squareText); }
    void TearDown() override {
        CircleCollision::state().collideableNodes.clear();
        LevelTest::TearDown();
    }
};

}  // namespace

TEST_F(CircleCollisionTest, ContactsOnTheEdgeBeyondItsEndAndFromInsideTheSolid) {
    Vector2D centre(50, -1.5f);
    EXPECT_TRUE(CircleCollision::collisionTest(&centre, 2.0f));
    EXPECT_EQ(centre, Vector2D(50, -2));
    // Point and line contact in the first pass; the line contact at exactly -r
    // goes on counting, without a push, in the two passes after it.
    EXPECT_EQ(std::tuple(CircleCollision::state().contactCount, CircleCollision::getCollisionNormal(),
                         CircleCollision::getCollisionFriction()),
              std::tuple(4u, Vector2D(0, 1), 1.0f));
    Vector2D corner(101, -1);
    EXPECT_TRUE(CircleCollision::collisionTest(&corner, 2.0f));
    EXPECT_NEAR(distance(corner, Vector2D(100, 0)), 2.0f, 1e-5);
    EXPECT_NEAR(corner.x - 100, -corner.y, 1e-5);  // straight out of the corner
    EXPECT_EQ(CircleCollision::state().contactCount, 1u);
    EXPECT_NEAR(CircleCollision::getCollisionNormal().x, -std::sqrt(0.5f), 1e-5);
    Vector2D inside(50, 1);
    EXPECT_TRUE(CircleCollision::collisionTest(&inside, 2.0f));
    EXPECT_LT(distance(inside, Vector2D(50, -2)), 1e-5f);
}

TEST_F(CircleCollisionTest, FrictionIsTheMeanOfTheContacts) {
    folder.write("cfg/surfaces.cfg", "surfaceFriction_wood = 0.5\nsurfaceFriction_stone = 1\n");
    SurfaceTypeManager::initialise();
    load(std::string(squareText) + "polygon surface stone\n100 0\n200 0\n200 100\n100 100\nend\n");
    Vector2D centre(50, -1.5f);  // against the wooden square only
    CircleCollision::collisionTest(&centre, 2.0f);
    EXPECT_FLOAT_EQ(CircleCollision::getCollisionFriction(), 0.5f);
    folder.write("cfg/surfaces.cfg",
                 "surfaceFriction_metal = 1\nsurfaceFriction_wood = 1\n"
                 "surfaceFriction_stone = 1\nsurfaceFriction_cloth = 1\nsurfaceFriction_sand = 1\n");
    SurfaceTypeManager::initialise();
}

TEST_F(CircleCollisionTest, EdgesOfANonCollideablePolygonGiveNoContact) {
    load(std::string(squareText) + "polygon id 2\n0 -50\n100 -50\n100 -10\n0 -10\nend\n");
    Level::setPolygonCollideable(&Level::getPolygons().front(), false);
    Vector2D centre(50, -1.5f);
    EXPECT_FALSE(CircleCollision::collisionTest(&centre, 2.0f));
    Vector2D below(50, -8.5f);  // still found through the tree
    EXPECT_TRUE(CircleCollision::collisionTest(&below, 2.0f));
    EXPECT_NEAR(below.y, -8.0f, 1e-5);
}

TEST_F(CircleCollisionTest, MovingEdgesCountOnlyInTheFullTest) {
    BspNode wall;
    wall.start = Vector2D(300, 0);
    wall.end = Vector2D(400, 0);
    wall.direction = Vector2D(1, 0);
    wall.normal = Vector2D(0, 1);
    wall.length = 100;
    wall.friction = 0.25f;
    wall.collideable = false;  // not read for moving edges
    CircleCollision::state().collideableNodes.push_back(wall);
    Vector2D centre(350, -1);
    EXPECT_FALSE(CircleCollision::collisionTestStatic(&centre, 2.0f));
    EXPECT_TRUE(CircleCollision::collisionTest(&centre, 2.0f));
    EXPECT_NEAR(centre.y, -2.0f, 1e-5);
    EXPECT_FLOAT_EQ(CircleCollision::getCollisionFriction(), 0.25f);
}
